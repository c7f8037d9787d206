#pragma once
// The plug-ins of the session and what each registered: node types, commands, context
// commands with their tool commands, draw overrides. Commands and draw overrides are looked
// up here by the command interpreter and the viewport.

#include "dg/objectBody.h"

#include <maya/MStatus.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

class MObject;
class MSyntax;

namespace host {

using CreatorFunction = void* (*)();
using SyntaxFunction = MSyntax (*)();
using EntryPoint = MStatus (*)(MObject);

struct PluginRecord;

// What MFnPlugin attaches to.
class PluginBody : public ObjectBody {
public:
    explicit PluginBody(PluginRecord* r) : record(r) {}
    MFn::Type apiType() const override { return MFn::kPlugin; }
    PluginRecord* record;
};

struct PluginRecord {
    std::string name;
    std::string path;
    std::string vendor = "Unknown";
    std::string version = "Unknown";
    std::string apiVersion = "Any";
    void* library = nullptr; // dlopen handle; null for plug-ins linked into the program
    EntryPoint initialize = nullptr;
    EntryPoint uninitialize = nullptr;
    bool initializing = false;
    std::shared_ptr<PluginBody> body;
    std::vector<std::string> nodeTypes;
    std::vector<std::string> commands;
    std::vector<std::string> contextCommands;
    std::vector<std::string> toolCommands;
    std::vector<std::string> drawOverrides;
};

enum class CommandKind { kCommand, kContextCommand, kToolCommand };

struct CommandRecord {
    std::string name;
    CommandKind kind = CommandKind::kCommand;
    CreatorFunction creator = nullptr;
    SyntaxFunction syntax = nullptr;
    std::string toolCommand; // a context command's tool command
    std::string plugin;
};

struct DrawOverrideRecord {
    std::string classification;
    std::string registrantId;
    void* creator = nullptr; // MHWRender::MDrawRegistry::DrawOverrideCreator
    std::string plugin;
};

class PluginRegistry {
public:
    static PluginRegistry& instance();

    PluginRecord* find(const std::string& name);
    PluginRecord* add(const std::string& name);
    void remove(const std::string& name);
    std::vector<std::string> names() const;

    // The plug-in whose initializePlugin or uninitializePlugin is running.
    PluginRecord* active = nullptr;

    std::map<std::string, CommandRecord> commands;
    std::vector<DrawOverrideRecord> drawOverrides;

private:
    std::vector<std::unique_ptr<PluginRecord>> fPlugins;
};

} // namespace host
