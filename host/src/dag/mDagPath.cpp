#include <maya/MDagPath.h>

#include "dag/dagMatrices.h"
#include "dg/access.h"
#include "dg/evaluation.h"
#include "dg/fnMacros.h"
#include "dg/scene.h"

#include <maya/MDagPathArray.h>

using host::Access;
using host::NodeBody;

namespace {

NodeBody* tip(const std::vector<MObject>& nodes) { return nodes.empty() ? nullptr : Access::node(nodes.back()); }

bool intermediate(NodeBody* n)
{
    const host::AttributeBody* a = n->type->findAttribute("intermediateObject");
    return a && host::readValue(n, host::PlugKey{a, {}}).num[0] != 0.0;
}

std::vector<NodeBody*> shapesBelow(NodeBody* n)
{
    std::vector<NodeBody*> out;
    if (n)
        for (NodeBody* c : n->children)
            if (c->isAlive && c->type->isShape && !intermediate(c))
                out.push_back(c);
    return out;
}

} // namespace

MDagPath::MDagPath() = default;
MDagPath::MDagPath(const MDagPath& src) = default;
MDagPath::~MDagPath() = default;
MDagPath& MDagPath::operator=(const MDagPath& src) = default;
bool MDagPath::operator==(const MDagPath& other) const { return fNodes == other.fNodes; }

MStatus MDagPath::getAPathTo(const MObject& node, MDagPath& path)
{
    NodeBody* n = Access::node(node);
    if (!n || !n->type->isDag || n == host::Scene::current().world()) {
        path = MDagPath();
        return MStatus::kInvalidParameter;
    }
    path = Access::pathTo(n);
    return MStatus::kSuccess;
}

MDagPath MDagPath::getAPathTo(const MObject& node, MStatus* ReturnStatus)
{
    MDagPath p;
    MStatus st = getAPathTo(node, p);
    TQHOST_SET_STATUS(ReturnStatus, st);
    return p;
}

MStatus MDagPath::getAllPathsTo(const MObject& node, MDagPathArray& allPaths)
{
    allPaths.clear();
    MDagPath p;
    MStatus st = getAPathTo(node, p);
    if (st)
        allPaths.append(p);
    return st;
}

bool MDagPath::hasFn(MFn::Type type, MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, isValid() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return !fNodes.empty() && fNodes.back().hasFn(type);
}

MFn::Type MDagPath::apiType(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, isValid() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return fNodes.empty() ? MFn::kInvalid : fNodes.back().apiType();
}

bool MDagPath::isValid(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    if (fNodes.empty())
        return false;
    NodeBody* above = host::Scene::current().world();
    for (const MObject& o : fNodes) {
        NodeBody* n = Access::node(o);
        if (!n || n->parent != above)
            return false;
        above = n;
    }
    return true;
}

MObject MDagPath::node(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, fNodes.empty() ? MStatus::kInvalidParameter : MStatus::kSuccess);
    return fNodes.empty() ? MObject() : fNodes.back();
}

MObject MDagPath::transform(MStatus* ReturnStatus) const
{
    for (auto it = fNodes.rbegin(); it != fNodes.rend(); ++it)
        if (NodeBody* n = Access::node(*it))
            if (n->type->isTransform) {
                TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
                return *it;
            }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
    return MObject();
}

unsigned int MDagPath::length(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return static_cast<unsigned int>(fNodes.size());
}

MStatus MDagPath::extendToShape()
{
    NodeBody* n = tip(fNodes);
    if (!n)
        return MStatus::kInvalidParameter;
    if (n->type->isShape)
        return MStatus::kSuccess;
    std::vector<NodeBody*> shapes = shapesBelow(n);
    if (shapes.size() != 1)
        return MStatus::kFailure; // none, or more than one: ambiguous
    fNodes.push_back(Access::object(shapes[0]->shared_from_this()));
    return MStatus::kSuccess;
}

MStatus MDagPath::extendToShapeDirectlyBelow(unsigned int index)
{
    std::vector<NodeBody*> shapes = shapesBelow(tip(fNodes));
    if (index >= shapes.size())
        return MStatus::kInvalidParameter;
    fNodes.push_back(Access::object(shapes[index]->shared_from_this()));
    return MStatus::kSuccess;
}

MStatus MDagPath::numberOfShapesDirectlyBelow(unsigned int& num) const
{
    NodeBody* n = tip(fNodes);
    if (!n)
        return MStatus::kInvalidParameter;
    num = static_cast<unsigned int>(shapesBelow(n).size());
    return MStatus::kSuccess;
}

unsigned int MDagPath::childCount(MStatus* ReturnStatus) const
{
    NodeBody* n = tip(fNodes);
    TQHOST_SET_STATUS(ReturnStatus, n ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return n ? static_cast<unsigned int>(n->children.size()) : 0u;
}

MObject MDagPath::child(unsigned int i, MStatus* ReturnStatus) const
{
    NodeBody* n = tip(fNodes);
    if (!n || i >= n->children.size()) {
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kInvalidParameter);
        return MObject();
    }
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return Access::object(n->children[i]->shared_from_this());
}

MStatus MDagPath::push(const MObject& child)
{
    NodeBody* n = tip(fNodes);
    NodeBody* c = Access::node(child);
    if (!c || !c->type->isDag || c->parent != (n ? n : host::Scene::current().world()))
        return MStatus::kInvalidParameter;
    fNodes.push_back(child);
    return MStatus::kSuccess;
}

MStatus MDagPath::pop(unsigned int num)
{
    if (num > fNodes.size())
        return MStatus::kInvalidParameter;
    fNodes.resize(fNodes.size() - num);
    return MStatus::kSuccess;
}

MStatus MDagPath::set(const MDagPath& src)
{
    fNodes = src.fNodes;
    return MStatus::kSuccess;
}

unsigned int MDagPath::instanceNumber(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return 0;
}

bool MDagPath::isInstanced(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return false;
}

bool MDagPath::isVisible(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, isValid() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    for (const MObject& o : fNodes) {
        NodeBody* n = Access::node(o);
        const host::AttributeBody* v = n ? n->type->findAttribute("visibility") : nullptr;
        if (!n || (v && host::readValue(n, host::PlugKey{v, {}}).num[0] == 0.0))
            return false;
    }
    return true;
}

MMatrix MDagPath::inclusiveMatrix(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, isValid() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return host::worldMatrix(tip(fNodes));
}

MMatrix MDagPath::exclusiveMatrix(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, isValid() ? MStatus::kSuccess : MStatus::kInvalidParameter);
    NodeBody* n = tip(fNodes);
    if (!n)
        return MMatrix();
    // Shapes have no transform of their own; a transform's own matrix is excluded.
    return n->type->isTransform ? host::worldMatrix(n->parent) : host::worldMatrix(n);
}

MMatrix MDagPath::inclusiveMatrixInverse(MStatus* ReturnStatus) const
{
    return inclusiveMatrix(ReturnStatus).inverse();
}

MMatrix MDagPath::exclusiveMatrixInverse(MStatus* ReturnStatus) const
{
    return exclusiveMatrix(ReturnStatus).inverse();
}

MString MDagPath::fullPathName(MStatus* ReturnStatus) const
{
    TQHOST_SET_STATUS(ReturnStatus, fNodes.empty() ? MStatus::kInvalidParameter : MStatus::kSuccess);
    std::string out;
    for (const MObject& o : fNodes) {
        out += '|';
        if (NodeBody* n = dynamic_cast<NodeBody*>(Access::body(o).get()))
            out += n->name;
    }
    return MString(out.c_str());
}

MString MDagPath::partialPathName(MStatus* ReturnStatus) const
{
    // Names are unique in this host's scenes, so the node's own name is the shortest
    // unique path.
    TQHOST_SET_STATUS(ReturnStatus, fNodes.empty() ? MStatus::kInvalidParameter : MStatus::kSuccess);
    NodeBody* n = fNodes.empty() ? nullptr : dynamic_cast<NodeBody*>(Access::body(fNodes.back()).get());
    return n ? MString(n->name.c_str()) : MString();
}
