#include <maya/MFnPlugin.h>

#include "dg/access.h"
#include "dg/nodeTypes.h"
#include "dg/scene.h"
#include "plugin/pluginRegistry.h"

#include "host/log.h"

#include <algorithm>

using host::PluginRecord;
using host::PluginRegistry;

namespace {

PluginRecord* recordOf(const MObject& o)
{
    auto body = host::Access::as<host::PluginBody>(o);
    return body ? body->record : nullptr;
}

void erase(std::vector<std::string>& list, const std::string& item)
{
    list.erase(std::remove(list.begin(), list.end(), item), list.end());
}

MStatus fail(const std::string& text, MStatus::MStatusCode code = MStatus::kFailure)
{
    host::writeLog(host::LogLevel::kError, text);
    return code;
}

} // namespace

MFnPlugin::MFnPlugin() = default;

MFnPlugin::MFnPlugin(MObject& object, const char* vendor, const char* version, const char* requiredApiVersion,
                     MStatus* ReturnStatus)
{
    MStatus st = attach(object);
    PluginRecord* r = recordOf(fObject);
    // Only the set made while the plug-in initializes names it; the one made at unload
    // ("Unknown") leaves the identity alone.
    if (r && r->initializing) {
        r->vendor = vendor ? vendor : "Unknown";
        r->version = version ? version : "Unknown";
        r->apiVersion = requiredApiVersion ? requiredApiVersion : "Any";
    }
    if (ReturnStatus)
        *ReturnStatus = st;
}

MFnPlugin::~MFnPlugin() = default;

MFn::Type MFnPlugin::type() const { return MFn::kPlugin; }
const char* MFnPlugin::className() const { return "MFnPlugin"; }

#define TQHOST_PLUGIN_TEXT(METHOD, FIELD)                                                  \
    MString MFnPlugin::METHOD(MStatus* ReturnStatus) const                               \
    {                                                                                    \
        PluginRecord* r = recordOf(fObject);                                             \
        if (ReturnStatus)                                                                \
            *ReturnStatus = r ? MStatus::kSuccess : MStatus::kInvalidParameter;          \
        return r ? MString(r->FIELD.c_str()) : MString();                                \
    }

TQHOST_PLUGIN_TEXT(vendor, vendor)
TQHOST_PLUGIN_TEXT(version, version)
TQHOST_PLUGIN_TEXT(apiVersion, apiVersion)
TQHOST_PLUGIN_TEXT(name, name)

#undef TQHOST_PLUGIN_TEXT

MString MFnPlugin::loadPath(MStatus* ReturnStatus) const
{
    // The folder the plug-in was loaded from, as Maya reports it.
    PluginRecord* r = recordOf(fObject);
    if (ReturnStatus)
        *ReturnStatus = r ? MStatus::kSuccess : MStatus::kInvalidParameter;
    if (!r)
        return MString();
    auto slash = r->path.find_last_of('/');
    return MString(slash == std::string::npos ? r->path.c_str() : r->path.substr(0, slash).c_str());
}

MStatus MFnPlugin::setName(const MString& newName, bool)
{
    PluginRecord* r = recordOf(fObject);
    if (!r || newName.length() == 0)
        return MStatus::kInvalidParameter;
    r->name = newName.asChar();
    return MStatus::kSuccess;
}

MStatus MFnPlugin::setVersion(const MString& newVersion)
{
    PluginRecord* r = recordOf(fObject);
    if (!r)
        return MStatus::kInvalidParameter;
    r->version = newVersion.asChar();
    return MStatus::kSuccess;
}

MStatus MFnPlugin::registerNode(const MString& typeName, const MTypeId& typeId, MCreatorFunction creatorFunction,
                                MInitializeFunction initFunction, MPxNode::Type type, const MString* classification)
{
    PluginRecord* r = recordOf(fObject);
    if (!r || !creatorFunction || typeName.length() == 0)
        return fail("registerNode: invalid arguments for node type '" + std::string(typeName.asChar()) + "'",
                    MStatus::kInvalidParameter);
    auto creator = [creatorFunction]() { return static_cast<MPxNode*>(creatorFunction()); };
    std::function<MStatus()> init;
    if (initFunction)
        init = initFunction;
    MStatus st = host::registerNodeType(typeName.asChar(), typeId, creator, init, type, host::apiTypeFor(type),
                                        host::baseTypeFor(type), classification ? classification->asChar() : "",
                                        r->name);
    if (st)
        r->nodeTypes.push_back(typeName.asChar());
    return st;
}

MStatus MFnPlugin::deregisterNode(const MTypeId& typeId)
{
    PluginRecord* r = recordOf(fObject);
    host::NodeType* t = host::NodeTypeRegistry::instance().find(typeId);
    if (!r || !t || t->pluginName != r->name)
        return fail("deregisterNode: no node type with that id belongs to this plug-in", MStatus::kInvalidParameter);
    if (t->liveNodes > 0)
        return fail("Cannot deregister node type '" + t->name + "': " + std::to_string(t->liveNodes) +
                    " node(s) of this type exist in the scene");
    host::Scene::current().dropDeadImplementations(r->name);
    erase(r->nodeTypes, t->name);
    host::NodeTypeRegistry::instance().remove(t);
    return MStatus::kSuccess;
}

MStatus MFnPlugin::registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                   MCreateSyntaxFunction createSyntaxFunction)
{
    PluginRecord* r = recordOf(fObject);
    auto& commands = PluginRegistry::instance().commands;
    if (!r || !creatorFunction || commandName.length() == 0)
        return fail("registerCommand: invalid arguments", MStatus::kInvalidParameter);
    if (commands.count(commandName.asChar()))
        return fail("Failed to register command '" + std::string(commandName.asChar()) +
                    "': the name is already in use");
    host::CommandRecord c;
    c.name = commandName.asChar();
    c.creator = creatorFunction;
    c.syntax = createSyntaxFunction;
    c.plugin = r->name;
    commands[c.name] = c;
    r->commands.push_back(c.name);
    return MStatus::kSuccess;
}

MStatus MFnPlugin::deregisterCommand(const MString& commandName)
{
    PluginRecord* r = recordOf(fObject);
    auto& commands = PluginRegistry::instance().commands;
    auto it = commands.find(commandName.asChar());
    if (!r || it == commands.end() || it->second.plugin != r->name || it->second.kind != host::CommandKind::kCommand)
        return fail("deregisterCommand: '" + std::string(commandName.asChar()) + "' is not a command of this plug-in",
                    MStatus::kInvalidParameter);
    commands.erase(it);
    erase(r->commands, commandName.asChar());
    return MStatus::kSuccess;
}

MStatus MFnPlugin::registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction)
{
    return registerContextCommand(commandName, creatorFunction, MString(), nullptr, nullptr);
}

MStatus MFnPlugin::registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                          const MString& toolCmdName, MCreatorFunction toolCmdCreator,
                                          MCreateSyntaxFunction toolCmdSyntax)
{
    PluginRecord* r = recordOf(fObject);
    auto& commands = PluginRegistry::instance().commands;
    if (!r || !creatorFunction || commandName.length() == 0 || (toolCmdName.length() > 0 && !toolCmdCreator))
        return fail("registerContextCommand: invalid arguments", MStatus::kInvalidParameter);
    std::string name = commandName.asChar();
    std::string tool = toolCmdName.asChar();
    if (commands.count(name) || (!tool.empty() && commands.count(tool)))
        return fail("Failed to register context command '" + name + "': a command of that name exists");
    host::CommandRecord c;
    c.name = name;
    c.kind = host::CommandKind::kContextCommand;
    c.creator = creatorFunction;
    c.toolCommand = tool;
    c.plugin = r->name;
    commands[name] = c;
    r->contextCommands.push_back(name);
    if (!tool.empty()) {
        host::CommandRecord t;
        t.name = tool;
        t.kind = host::CommandKind::kToolCommand;
        t.creator = toolCmdCreator;
        t.syntax = toolCmdSyntax;
        t.plugin = r->name;
        commands[tool] = t;
        r->toolCommands.push_back(tool);
    }
    return MStatus::kSuccess;
}

MStatus MFnPlugin::deregisterContextCommand(const MString& commandName)
{
    return deregisterContextCommand(commandName, MString());
}

MStatus MFnPlugin::deregisterContextCommand(const MString& commandName, const MString& toolCmdName)
{
    PluginRecord* r = recordOf(fObject);
    auto& commands = PluginRegistry::instance().commands;
    auto it = commands.find(commandName.asChar());
    if (!r || it == commands.end() || it->second.plugin != r->name ||
        it->second.kind != host::CommandKind::kContextCommand)
        return fail("deregisterContextCommand: '" + std::string(commandName.asChar()) +
                        "' is not a context command of this plug-in",
                    MStatus::kInvalidParameter);
    std::string tool = toolCmdName.length() ? toolCmdName.asChar() : it->second.toolCommand;
    commands.erase(it);
    erase(r->contextCommands, commandName.asChar());
    auto t = commands.find(tool);
    if (t != commands.end() && t->second.kind == host::CommandKind::kToolCommand && t->second.plugin == r->name) {
        commands.erase(t);
        erase(r->toolCommands, tool);
    }
    return MStatus::kSuccess;
}

MObject MFnPlugin::findPlugin(const MString& pluginName)
{
    PluginRecord* r = PluginRegistry::instance().find(pluginName.asChar());
    return r ? host::Access::object(r->body) : MObject();
}

bool MFnPlugin::isNodeRegistered(const MString& typeName)
{
    return host::NodeTypeRegistry::instance().find(typeName.asChar()) != nullptr;
}
