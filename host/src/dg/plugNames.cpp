#include "dg/plugNames.h"

#include "dg/access.h"
#include "dg/componentBody.h"
#include "dg/scene.h"
#include "mesh/meshGeometry.h"
#include "mesh/meshNode.h"

#include <cstdlib>
#include <limits>

namespace host {
namespace {

bool parseIndex(const std::string& s, unsigned int& out)
{
    if (s.empty() || s.size() > 10)
        return false;
    for (char c : s)
        if (c < '0' || c > '9')
            return false;
    // Indices are ints in the API (MIntArray, component elements): one past INT_MAX would
    // come back negative.
    unsigned long v = std::strtoul(s.c_str(), nullptr, 10);
    if (v > static_cast<unsigned long>(std::numeric_limits<int>::max()))
        return false;
    out = static_cast<unsigned int>(v);
    return true;
}

// Splits "name[3]" into "name" and 3.
bool splitIndex(const std::string& part, std::string& name, bool& hasIndex, std::string& index)
{
    auto open = part.find('[');
    hasIndex = open != std::string::npos;
    if (!hasIndex) {
        name = part;
        return !name.empty();
    }
    if (part.back() != ']')
        return false;
    name = part.substr(0, open);
    index = part.substr(open + 1, part.size() - open - 2);
    return !name.empty();
}

} // namespace

NodeBody* findNodeByPath(const std::string& nameOrPath)
{
    if (nameOrPath.empty())
        return nullptr;
    std::string last = nameOrPath.substr(nameOrPath.find_last_of('|') == std::string::npos
                                             ? 0
                                             : nameOrPath.find_last_of('|') + 1);
    NodeBody* node = Scene::current().findByName(last);
    if (!node)
        return nullptr;
    // Every name on the path must be the chain of parents.
    std::string rest = nameOrPath.substr(0, nameOrPath.size() - last.size());
    NodeBody* above = node->parent;
    while (!rest.empty() && rest.back() == '|') {
        rest.pop_back();
        if (rest.empty())
            return above == Scene::current().world() ? node : nullptr;
        std::string name = rest.substr(rest.find_last_of('|') == std::string::npos ? 0 : rest.find_last_of('|') + 1);
        if (!above || above->name != name)
            return nullptr;
        rest.resize(rest.size() - name.size());
        above = above->parent;
    }
    return node;
}

bool parsePlug(const std::string& text, MPlug& plug, std::string* error)
{
    auto fail = [&](const std::string& why) {
        if (error)
            *error = why;
        plug = MPlug();
        return false;
    };
    auto dot = text.find('.');
    if (dot == std::string::npos || dot == 0)
        return fail("'" + text + "' is not a plug name (node.attribute)");
    NodeBody* node = findNodeByPath(text.substr(0, dot));
    if (!node)
        return fail("No object matches name: " + text.substr(0, dot));
    std::vector<std::string> parts;
    std::string rest = text.substr(dot + 1);
    for (std::size_t start = 0;;) {
        auto next = rest.find('.', start);
        parts.push_back(rest.substr(start, next == std::string::npos ? std::string::npos : next - start));
        if (next == std::string::npos)
            break;
        start = next + 1;
    }
    PlugKey key;
    const AttributeBody* current = nullptr;
    for (const std::string& part : parts) {
        std::string name, index;
        bool hasIndex = false;
        if (!splitIndex(part, name, hasIndex, index))
            return fail("Invalid plug name: " + text);
        const AttributeBody* a = nullptr;
        if (!current) {
            a = node->type->findAttribute(name);
        } else {
            for (const auto& c : current->children)
                if (c->hasName(name))
                    a = c.get();
        }
        if (!a)
            return fail("No attribute '" + name + "' on " + node->name);
        if (current && a->parent != current)
            return fail("Invalid plug name: " + text);
        // Children of a compound that is itself unindexed keep the indices so far.
        key.attr = a;
        if (hasIndex) {
            unsigned int i = 0;
            if (!a->flags.array || !parseIndex(index, i))
                return fail("Invalid index in plug name: " + text);
            key.indices.push_back(i);
        }
        current = a;
    }
    // A child named directly ("node.translateX") is fine; an element needs all its indices.
    if (int(key.indices.size()) < key.attr->arrayDepth() - (key.attr->flags.array ? 1 : 0))
        return fail("Missing array index in plug name: " + text);
    plug = Access::plug(node, key);
    return true;
}

bool parseComponent(const std::string& text, MDagPath& path, MObject& component, std::string* error)
{
    auto dot = text.rfind('.');
    if (dot == std::string::npos)
        return false;
    std::string kindName, index;
    bool hasIndex = false;
    if (!splitIndex(text.substr(dot + 1), kindName, hasIndex, index) || !hasIndex)
        return false;
    MFn::Type kind;
    if (kindName == "vtx")
        kind = MFn::kMeshVertComponent;
    else if (kindName == "e")
        kind = MFn::kMeshEdgeComponent;
    else if (kindName == "f")
        kind = MFn::kMeshPolygonComponent;
    else
        return false;
    NodeBody* node = findNodeByPath(text.substr(0, dot));
    if (!node || !node->type->isDag) {
        if (error)
            *error = "No object matches name: " + text.substr(0, dot);
        return false;
    }
    path = Access::pathTo(node);
    if (!node->type->isShape && !path.extendToShape()) {
        if (error)
            *error = "No shape below " + node->name + " for " + text;
        return false;
    }
    auto body = std::make_shared<ComponentBody>(kind);
    if (index == "*") {
        body->complete = true;
    } else {
        auto colon = index.find(':');
        unsigned int from = 0, to = 0;
        bool ok = colon == std::string::npos ? parseIndex(index, from) && (to = from, true)
                                             : parseIndex(index.substr(0, colon), from) &&
                                                   parseIndex(index.substr(colon + 1), to) && from <= to;
        if (!ok) {
            if (error)
                *error = "Invalid component index: " + text;
            return false;
        }
        // Checked against the mesh before anything is made, so the size of what is made is
        // the mesh's, never a number from the text.
        NodeBody* shape = Access::node(path.node());
        const MeshGeometry* geometry = isMeshShape(shape) ? shapeGeometry(shape) : nullptr;
        if (!geometry) {
            if (error)
                *error = "No mesh for component: " + text;
            return false;
        }
        const int count = kind == MFn::kMeshVertComponent ? geometry->numVertices()
                          : kind == MFn::kMeshEdgeComponent ? geometry->numEdges()
                                                             : geometry->numPolygons();
        if (to >= static_cast<unsigned int>(count)) {
            if (error)
                *error = "No object matches name: " + text + " (it does not exist: the mesh has " +
                         std::to_string(count) + " " +
                         (kind == MFn::kMeshVertComponent ? "vertices"
                          : kind == MFn::kMeshEdgeComponent ? "edges"
                                                             : "faces") +
                         ")";
            return false;
        }
        body->elements.reserve(std::size_t(to - from) + 1);
        for (unsigned int i = from; i <= to; ++i)
            body->elements.push_back(static_cast<int>(i));
    }
    component = Access::object(body);
    return true;
}

} // namespace host
