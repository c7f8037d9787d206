// Loading and unloading plug-ins: dlopen, initializePlugin with the plug-in's object,
// and at unload uninitializePlugin, then dlclose. A failed initialize leaves what it
// registered, as Maya leaves a half-loaded plug-in.

#include "plugin/pluginRegistry.h"

#include "command/interpreter.h"
#include "dg/access.h"
#include "dg/barrier.h"
#include "dg/scene.h"

#include "host/harness.h"
#include "host/log.h"

#include <algorithm>
#include <dlfcn.h>

namespace host {
namespace {

std::string stemOf(const std::string& path)
{
    std::string file = path.substr(path.find_last_of('/') == std::string::npos ? 0 : path.find_last_of('/') + 1);
    auto dot = file.find('.');
    return dot == std::string::npos ? file : file.substr(0, dot);
}

EntryPoint findEntry(void* library, const char* cxxName, const char* cName)
{
    // Plug-ins export the entry points with C++ linkage; older ones with C linkage.
    if (void* sym = dlsym(library, cxxName))
        return reinterpret_cast<EntryPoint>(sym);
    if (void* sym = dlsym(library, cName))
        return reinterpret_cast<EntryPoint>(sym);
    return nullptr;
}

MStatus runInitialize(PluginRecord* record)
{
    PluginRegistry& registry = PluginRegistry::instance();
    registry.active = record;
    record->initializing = true;
    MObject object = Access::object(record->body);
    EntryPoint init = record->initialize;
    MStatus st = guardedStatus(record->name + " initializePlugin", [&] { return init(object); });
    record->initializing = false;
    registry.active = nullptr;
    if (!st)
        writeLog(LogLevel::kError, "initializePlugin function failed (" + record->name + "): " +
                                       st.errorString().asChar());
    return st;
}

} // namespace

MStatus loadLinkedPlugin(const std::string& pluginName, PluginEntryPoint initialize, PluginEntryPoint uninitialize)
{
    PluginRegistry& registry = PluginRegistry::instance();
    if (pluginName.empty() || !initialize || !uninitialize) {
        writeLog(LogLevel::kError, "loadPlugin: a linked plug-in needs a name and both entry points");
        return MStatus::kInvalidParameter;
    }
    if (registry.find(pluginName)) {
        writeLog(LogLevel::kError, "Plug-in '" + pluginName + "' is already loaded");
        return MStatus::kFailure;
    }
    PluginRecord* record = registry.add(pluginName);
    record->path = "(linked)";
    record->initialize = initialize;
    record->uninitialize = uninitialize;
    return runInitialize(record);
}

MStatus loadPlugin(const std::string& path, std::string* pluginName)
{
    PluginRegistry& registry = PluginRegistry::instance();
    std::string name = stemOf(path);
    if (pluginName)
        *pluginName = name;
    if (registry.find(name)) {
        writeLog(LogLevel::kError, "Plug-in '" + name + "' is already loaded");
        return MStatus::kFailure;
    }
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* why = dlerror();
        writeLog(LogLevel::kError, "Cannot load plug-in " + path + ": " + (why ? why : "unknown error"));
        return MStatus::kFailure;
    }
    EntryPoint init = findEntry(library, "_Z16initializePlugin7MObject", "initializePlugin");
    EntryPoint uninit = findEntry(library, "_Z18uninitializePlugin7MObject", "uninitializePlugin");
    if (!init || !uninit) {
        writeLog(LogLevel::kError, "Plug-in " + path + " has no initializePlugin/uninitializePlugin");
        dlclose(library);
        return MStatus::kFailure;
    }
    PluginRecord* record = registry.add(name);
    record->path = path;
    record->library = library;
    record->initialize = init;
    record->uninitialize = uninit;
    return runInitialize(record);
}

MStatus unloadPlugin(const std::string& pluginName)
{
    PluginRegistry& registry = PluginRegistry::instance();
    PluginRecord* record = registry.find(pluginName);
    if (!record) {
        writeLog(LogLevel::kError, "Plug-in '" + pluginName + "' is not loaded");
        return MStatus::kInvalidParameter;
    }
    // Undo entries, contexts and tool commands may hold the plug-in's objects: they go
    // before its code can be unmapped.
    releasePluginObjects(pluginName);
    registry.active = record;
    MObject object = Access::object(record->body);
    EntryPoint uninit = record->uninitialize;
    MStatus st = guardedStatus(record->name + " uninitializePlugin", [&] { return uninit(object); });
    registry.active = nullptr;
    if (!st) {
        writeLog(LogLevel::kError, "uninitializePlugin function failed (" + pluginName + "): " +
                                       st.errorString().asChar());
        return st;
    }
    // What it left registered goes now: its code is about to be unmapped.
    Scene::current().dropDeadImplementations(pluginName);
    for (const std::string& t : record->nodeTypes) {
        if (NodeType* type = NodeTypeRegistry::instance().find(t)) {
            if (type->liveNodes > 0) {
                writeLog(LogLevel::kError, "Cannot unload plug-in '" + pluginName + "': nodes of type '" + t +
                                               "' exist in the scene");
                return MStatus::kFailure;
            }
            NodeTypeRegistry::instance().remove(type);
        }
    }
    for (auto it = registry.commands.begin(); it != registry.commands.end();)
        it = it->second.plugin == pluginName ? registry.commands.erase(it) : std::next(it);
    auto& overrides = registry.drawOverrides;
    overrides.erase(std::remove_if(overrides.begin(), overrides.end(),
                                   [&](const DrawOverrideRecord& d) { return d.plugin == pluginName; }),
                    overrides.end());
    void* library = record->library;
    registry.remove(pluginName);
    if (library)
        dlclose(library);
    return MStatus::kSuccess;
}

bool isPluginLoaded(const std::string& pluginName) { return PluginRegistry::instance().find(pluginName) != nullptr; }

std::vector<std::string> loadedPlugins() { return PluginRegistry::instance().names(); }

PluginRegistrations pluginRegistrations(const std::string& pluginName)
{
    PluginRegistrations out;
    if (PluginRecord* r = PluginRegistry::instance().find(pluginName)) {
        out.vendor = r->vendor;
        out.version = r->version;
        out.apiVersion = r->apiVersion;
        out.nodeTypes = r->nodeTypes;
        out.commands = r->commands;
        out.contextCommands = r->contextCommands;
        out.toolCommands = r->toolCommands;
        out.drawOverrides = r->drawOverrides;
    }
    return out;
}

} // namespace host
