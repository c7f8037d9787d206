#include "host/harness.h"

#include "dg/access.h"
#include "dg/dataTypes.h"
#include "dg/evaluation.h"
#include "dg/plugNames.h"
#include "dg/scene.h"
#include "mesh/meshHistory.h"
#include "mesh/meshNode.h"
#include "ui/selectionState.h"

#include "host/log.h"

#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

namespace host {
namespace {

void setStatus(MStatus* status, MStatus value)
{
    if (status)
        *status = value;
}

bool plugFor(const std::string& name, MPlug& plug)
{
    std::string error;
    if (parsePlug(name, plug, &error))
        return true;
    writeLog(LogLevel::kError, error);
    return false;
}

} // namespace

void newScene()
{
    Scene::current().reset();
    setActiveSelection(MSelectionList());
    sendEvent("NewSceneOpened");
}

MObject createNode(const std::string& type, const std::string& name, const std::string& parent, MStatus* status)
{
    const NodeType* t = NodeTypeRegistry::instance().find(type);
    if (!t) {
        writeLog(LogLevel::kError, "Unknown node type: " + type);
        setStatus(status, MStatus::kInvalidParameter);
        return MObject();
    }
    NodeBody* p = nullptr;
    if (!parent.empty() && !(p = findNodeByPath(parent))) {
        writeLog(LogLevel::kError, "No object matches name: " + parent);
        setStatus(status, MStatus::kInvalidParameter);
        return MObject();
    }
    MStatus st;
    NodePtr node = Scene::current().createNode(t, name, p, &st);
    setStatus(status, st);
    return node ? Access::object(node) : MObject();
}

MObject findNode(const std::string& nameOrPath)
{
    NodeBody* n = findNodeByPath(nameOrPath);
    return n ? Access::object(n->shared_from_this()) : MObject();
}

MStatus deleteNode(const std::string& nameOrPath)
{
    NodeBody* n = findNodeByPath(nameOrPath);
    if (!n) {
        writeLog(LogLevel::kError, "No object matches name: " + nameOrPath);
        return MStatus::kInvalidParameter;
    }
    return Scene::current().deleteNode(n);
}

std::string nodeName(const MObject& node)
{
    NodeBody* n = Access::node(node);
    return n ? n->name : std::string();
}

std::vector<std::string> nodeNames(const std::string& typeName)
{
    std::vector<std::string> out;
    for (const NodePtr& n : Scene::current().nodes())
        if (typeName.empty() || n->type->isA(typeName))
            out.push_back(n->name);
    return out;
}

MPlug findPlug(const std::string& plugName, MStatus* status)
{
    MPlug plug;
    setStatus(status, plugFor(plugName, plug) ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return plug;
}

MStatus connect(const std::string& source, const std::string& destination, bool force)
{
    MPlug s, d;
    if (!plugFor(source, s) || !plugFor(destination, d))
        return MStatus::kInvalidParameter;
    std::string error;
    MStatus st = connectPlugs(Access::plugRef(s), Access::plugRef(d), force, &error);
    if (!st)
        writeLog(LogLevel::kError, error);
    return st;
}

MStatus disconnect(const std::string& source, const std::string& destination)
{
    MPlug s, d;
    if (!plugFor(source, s) || !plugFor(destination, d))
        return MStatus::kInvalidParameter;
    std::string error;
    MStatus st = disconnectPlugs(Access::plugRef(s), Access::plugRef(d), &error);
    if (!st)
        writeLog(LogLevel::kError, error);
    return st;
}

namespace {

// Setting a value from outside (as setAttr does) is refused on a connected destination.
MStatus settable(const std::string& name, MPlug& plug)
{
    if (!plugFor(name, plug))
        return MStatus::kInvalidParameter;
    if (plug.isDestination()) {
        writeLog(LogLevel::kError, "The attribute '" + name + "' is locked or connected and cannot be modified");
        return MStatus::kFailure;
    }
    return MStatus::kSuccess;
}

} // namespace

MStatus setDouble(const std::string& plugName, double value)
{
    MPlug p;
    MStatus st = settable(plugName, p);
    return st ? p.setDouble(value) : st;
}

MStatus setInt(const std::string& plugName, int value)
{
    MPlug p;
    MStatus st = settable(plugName, p);
    return st ? p.setInt(value) : st;
}

MStatus setBool(const std::string& plugName, bool value)
{
    MPlug p;
    MStatus st = settable(plugName, p);
    return st ? p.setBool(value) : st;
}

MStatus setString(const std::string& plugName, const std::string& value)
{
    MPlug p;
    MStatus st = settable(plugName, p);
    return st ? p.setString(MString(value.c_str())) : st;
}

MStatus setData(const std::string& plugName, const MObject& data)
{
    MPlug p;
    MStatus st = settable(plugName, p);
    return st ? p.setMObject(data) : st;
}

double getDouble(const std::string& plugName, MStatus* status)
{
    MPlug p;
    if (!plugFor(plugName, p)) {
        setStatus(status, MStatus::kInvalidParameter);
        return 0.0;
    }
    return p.asDouble(status);
}

int getInt(const std::string& plugName, MStatus* status)
{
    MPlug p;
    if (!plugFor(plugName, p)) {
        setStatus(status, MStatus::kInvalidParameter);
        return 0;
    }
    return p.asInt(status);
}

bool getBool(const std::string& plugName, MStatus* status)
{
    MPlug p;
    if (!plugFor(plugName, p)) {
        setStatus(status, MStatus::kInvalidParameter);
        return false;
    }
    return p.asBool(status);
}

std::string getString(const std::string& plugName, MStatus* status)
{
    MPlug p;
    if (!plugFor(plugName, p)) {
        setStatus(status, MStatus::kInvalidParameter);
        return std::string();
    }
    return p.asString(status).asChar();
}

MObject getData(const std::string& plugName, MStatus* status)
{
    MPlug p;
    if (!plugFor(plugName, p)) {
        setStatus(status, MStatus::kInvalidParameter);
        return MObject();
    }
    return p.asMObject(status);
}

bool isDirty(const std::string& plugName)
{
    MPlug p;
    if (!plugFor(plugName, p))
        return false;
    return !isClean(Access::plugNode(p), Access::plugKey(p));
}

MStatus select(const std::vector<std::string>& items)
{
    MSelectionList list;
    for (const std::string& item : items) {
        MStatus st = list.add(MString(item.c_str()));
        if (!st)
            return st;
    }
    setActiveSelection(list);
    return MStatus::kSuccess;
}

std::vector<std::string> selection()
{
    MStringArray strings;
    activeSelection().getSelectionStrings(strings);
    std::vector<std::string> out;
    for (unsigned int i = 0; i < strings.length(); ++i)
        out.push_back(strings[i].asChar());
    return out;
}

MStatus deleteHistory(const std::string& shapeOrTransformName)
{
    NodeBody* n = findNodeByPath(shapeOrTransformName);
    if (!n) {
        writeLog(LogLevel::kError, "No object matches name: " + shapeOrTransformName);
        return MStatus::kInvalidParameter;
    }
    std::vector<NodeBody*> shapes;
    if (isMeshShape(n)) {
        shapes.push_back(n);
    } else if (n->type->isTransform) {
        for (NodeBody* child : n->children) {
            if (!isMeshShape(child))
                continue;
            const AttributeBody* io = child->type->findAttribute("intermediateObject");
            if (!io || readValue(child, PlugKey{io, {}}).num[0] == 0.0)
                shapes.push_back(child);
        }
    }
    if (shapes.empty()) {
        writeLog(LogLevel::kError, "No mesh to delete the history of: " + shapeOrTransformName);
        return MStatus::kInvalidParameter;
    }
    for (NodeBody* shape : shapes) {
        MStatus st = deleteConstructionHistory(shape);
        if (!st)
            return st;
    }
    return MStatus::kSuccess;
}

} // namespace host
