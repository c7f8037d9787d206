#include "tool/toolRegistry.h"

#include "command/builtinArgs.h"
#include "command/commandAccess.h"
#include "command/pluginCommands.h"
#include "command/syntaxData.h"
#include "dg/barrier.h"
#include "dg/messages.h"
#include "plugin/pluginRegistry.h"
#include "tool/toolAccess.h"

#include "host/log.h"

#include <algorithm>

namespace host {
namespace {

// Flags every context command has besides the plug-in's own.
const char* const kImageFlags[] = {"i1", "i2", "i3"};

bool isHostFlag(const FlagDefinition* f)
{
    return f->shortName == "ex" || f->shortName == "i1" || f->shortName == "i2" || f->shortName == "i3";
}

// The plug-in's edit handler runs only for invocations that carry flags of its own.
bool hasPluginFlags(const ParsedArgs& parsed)
{
    return std::any_of(parsed.uses.begin(), parsed.uses.end(),
                       [](const ParsedArgs::FlagUse& u) { return !isHostFlag(u.flag); });
}

void applyImages(MPxContext* context, const ParsedArgs& parsed)
{
    for (int i = 0; i < 3; ++i) {
        if (const ParsedArgs::FlagUse* use = parsed.use(kImageFlags[i])) {
            MString image;
            use->args.get(0, image);
            context->setImage(image, MPxContext::ImageIndex(i));
        }
    }
}

MStatus contextError(const std::string& commandName, const std::string& text,
                     MStatus::MStatusCode code = MStatus::kInvalidParameter)
{
    writeLog(LogLevel::kError, commandName + ": " + text);
    return code;
}

} // namespace

const char* const ToolRegistry::kSelectTool = "selectSuperContext";

ToolRegistry& ToolRegistry::instance()
{
    // Lives for the process: contexts are plug-in objects whose code may run at exit.
    static ToolRegistry* registry = new ToolRegistry();
    return *registry;
}

ToolRegistry::ToolRegistry()
{
    auto select = std::make_unique<ContextEntry>();
    select->name = kSelectTool;
    select->context = std::make_unique<MPxContext>();
    ToolAccess::setEntry(select->context.get(), select.get());
    fActive = select.get();
    fEntries.push_back(std::move(select));
}

ContextEntry* ToolRegistry::find(const std::string& name)
{
    for (auto& e : fEntries)
        if (e->name == name)
            return e.get();
    return nullptr;
}

MStatus ToolRegistry::setToolTo(const std::string& name)
{
    ContextEntry* next = find(name);
    if (!next)
        return MStatus::kNotFound;
    if (ContextEntry* previous = fActive) {
        guardedVoid(previous->name + ".toolOffCleanup", [&] { previous->context->toolOffCleanup(); });
        dropPending(previous);
    }
    fActive = next;
    MEvent event;
    guardedVoid(next->name + ".toolOnSetup", [&] { next->context->toolOnSetup(event); });
    sendEvent("ToolChanged");
    sendEvent("PostToolChanged");
    return MStatus::kSuccess;
}

MStatus ToolRegistry::runContextCommand(const std::string& commandName, const CommandCall& call,
                                        CommandValue& result)
{
    // The context a call edits or queries is named by its last argument.
    if (!call.args.empty() && !call.args.back().isFlag() && !call.args.back().isArray()) {
        ContextEntry* target = find(call.args.back().text);
        if (target && target->commandName == commandName)
            return editOrQuery(target, call, result);
    }
    return createContext(commandName, call, result);
}

MStatus ToolRegistry::createContext(const std::string& commandName, const CommandCall& call, CommandValue& result)
{
    auto registered = PluginRegistry::instance().commands.find(commandName);
    if (registered == PluginRegistry::instance().commands.end())
        return contextError(commandName, "the context command is not registered", MStatus::kNotFound);
    CommandRecord record = registered->second;
    void* made = guarded<void*>(commandName + " creator", nullptr, [&] { return record.creator(); });
    if (!made)
        return contextError(commandName, "the creator made no context command", MStatus::kFailure);
    std::unique_ptr<MPxContextCommand> command(static_cast<MPxContextCommand*>(made));

    MSyntax& syntax = ToolAccess::syntax(command.get());
    syntax.enableEdit();
    syntax.enableQuery();
    syntax.setObjectType(MSyntax::kStringObjects, 0, 1);
    syntax.addFlag("-ex", "-exists");
    syntax.addFlag("-i1", "-image1", MSyntax::kString);
    syntax.addFlag("-i2", "-image2", MSyntax::kString);
    syntax.addFlag("-i3", "-image3", MSyntax::kString);
    MStatus st = guardedStatus(commandName + ".appendSyntax", [&] { return command->appendSyntax(); });
    if (!st)
        writeLog(LogLevel::kWarning, commandName + ": appendSyntax failed; the flags added so far are used");

    MArgList args = CommandAccess::makeList(call.args);
    auto parsed = parseArguments(CommandAccess::data(syntax), args, commandName, &st);
    if (!parsed)
        return st;
    std::string named = parsed->objects.empty() ? std::string() : parsed->objects.front();
    bool exists = parsed->useCount("ex") > 0;
    if (exists && !parsed->edit) {
        result = CommandValue::ofInt(0);
        return MStatus::kSuccess;
    }
    if (parsed->query || parsed->edit)
        return contextError(commandName, named.empty() ? std::string("needs the name of a context to ") +
                                                             (parsed->query ? "query" : "edit")
                                                       : "no " + commandName + " context named '" + named + "'");
    std::string name = named;
    if (name.empty()) {
        do {
            name = commandName + std::to_string(++fCounters[commandName]);
        } while (find(name));
    } else if (find(name)) {
        return contextError(commandName, "a tool context named '" + name + "' exists already");
    }

    MPxContext* context = guarded<MPxContext*>(commandName + ".makeObj", nullptr, [&] { return command->makeObj(); });
    if (!context)
        return contextError(commandName, "makeObj made no context", MStatus::kFailure);
    auto entry = std::make_unique<ContextEntry>();
    entry->name = name;
    entry->commandName = commandName;
    entry->plugin = record.plugin;
    entry->context.reset(context);
    entry->command = std::move(command);
    ToolAccess::setEntry(context, entry.get());
    ContextEntry* created = entry.get();
    fEntries.push_back(std::move(entry));

    applyImages(context, *parsed);
    // Flags given at creation act as edits of the new context.
    if (hasPluginFlags(*parsed)) {
        MArgParser parser;
        CommandAccess::setParsed(parser, parsed);
        ToolAccess::setParser(created->command.get(), parser);
        CommandValue ignored;
        ResultScope scope(ignored);
        st = guardedStatus(commandName + ".doEditFlags", [&] { return created->command->doEditFlags(); });
        if (!st)
            writeLog(LogLevel::kError, commandName + ": doEditFlags failed on the new context " + name);
    }
    result = CommandValue::ofString(name);
    return MStatus::kSuccess;
}

MStatus ToolRegistry::editOrQuery(ContextEntry* entry, const CommandCall& call, CommandValue& result)
{
    MArgList args = CommandAccess::makeList(call.args);
    MStatus st;
    auto parsed = parseArguments(CommandAccess::data(ToolAccess::syntax(entry->command.get())), args,
                                 entry->commandName, &st);
    if (!parsed)
        return st;
    MArgParser parser;
    CommandAccess::setParsed(parser, parsed);
    MPxContextCommand* command = entry->command.get();
    std::string label = entry->commandName;
    if (parsed->useCount("ex") > 0 && !parsed->edit) {
        result = CommandValue::ofInt(1);
        return MStatus::kSuccess;
    }
    if (parsed->query) {
        for (int i = 0; i < 3; ++i) {
            if (parsed->useCount(kImageFlags[i]) > 0) {
                result = CommandValue::ofString(entry->context->image(MPxContext::ImageIndex(i)).asChar());
                return MStatus::kSuccess;
            }
        }
        ToolAccess::setParser(command, parser);
        ResultScope scope(result);
        return guardedStatus(label + ".doQueryFlags", [&] { return command->doQueryFlags(); });
    }
    if (!parsed->edit)
        return contextError(label, "a tool context named '" + entry->name + "' exists already");
    applyImages(entry->context.get(), *parsed);
    if (!hasPluginFlags(*parsed))
        return MStatus::kSuccess;
    ToolAccess::setParser(command, parser);
    ResultScope scope(result);
    return guardedStatus(label + ".doEditFlags", [&] { return command->doEditFlags(); });
}

MPxToolCommand* ToolRegistry::newToolCommand(ContextEntry* entry)
{
    if (!entry || entry->commandName.empty()) {
        writeLog(LogLevel::kError, "newToolCommand: the context has no tool command");
        return nullptr;
    }
    auto& commands = PluginRegistry::instance().commands;
    auto owner = commands.find(entry->commandName);
    if (owner == commands.end() || owner->second.toolCommand.empty()) {
        writeLog(LogLevel::kError, "newToolCommand: no tool command is registered with " + entry->commandName);
        return nullptr;
    }
    auto tool = commands.find(owner->second.toolCommand);
    if (tool == commands.end()) {
        writeLog(LogLevel::kError, "newToolCommand: the tool command " + owner->second.toolCommand +
                                       " is not registered");
        return nullptr;
    }
    MPxCommand* made = createPluginCommand(tool->second);
    if (!made)
        return nullptr;
    auto* command = dynamic_cast<MPxToolCommand*>(made);
    if (!command) {
        writeLog(LogLevel::kError, "newToolCommand: " + tool->first + " does not make an MPxToolCommand");
        delete made;
        return nullptr;
    }
    CommandAccess::setOwner(command, CommandOwner::kContext);
    entry->pendingToolCommands.emplace_back(command);
    return command;
}

std::unique_ptr<MPxToolCommand> ToolRegistry::takePending(MPxToolCommand* command)
{
    for (auto& e : fEntries) {
        auto& pending = e->pendingToolCommands;
        for (auto it = pending.begin(); it != pending.end(); ++it) {
            if (it->get() == command) {
                std::unique_ptr<MPxToolCommand> out = std::move(*it);
                pending.erase(it);
                return out;
            }
        }
    }
    return nullptr;
}

void ToolRegistry::dropPending(ContextEntry* entry)
{
    if (!entry)
        return;
    // Destructors run after the list is empty, in case one reaches the registry.
    std::vector<std::unique_ptr<MPxToolCommand>> old;
    old.swap(entry->pendingToolCommands);
}

MStatus ToolRegistry::deleteContext(const std::string& name)
{
    ContextEntry* entry = find(name);
    if (!entry)
        return MStatus::kNotFound;
    if (name == kSelectTool)
        return contextError("deleteUI", "the select tool cannot be deleted");
    if (fActive == entry)
        setToolTo(kSelectTool);
    dropPending(entry);
    for (auto it = fEntries.begin(); it != fEntries.end(); ++it) {
        if (it->get() == entry) {
            std::unique_ptr<ContextEntry> gone = std::move(*it);
            fEntries.erase(it);
            break;
        }
    }
    return MStatus::kSuccess;
}

void ToolRegistry::releasePlugin(const std::string& pluginName)
{
    if (fActive && fActive->plugin == pluginName)
        setToolTo(kSelectTool);
    std::vector<std::unique_ptr<ContextEntry>> gone;
    for (auto it = fEntries.begin(); it != fEntries.end();) {
        if ((*it)->plugin == pluginName) {
            gone.push_back(std::move(*it));
            it = fEntries.erase(it);
        } else {
            ++it;
        }
    }
}

MStatus drawToolFeedback(MHWRender::MUIDrawManager& drawManager, const MHWRender::MFrameContext& frameContext)
{
    ContextEntry* active = ToolRegistry::instance().active();
    if (!active)
        return MStatus::kSuccess;
    return guardedStatus(active->name + ".drawFeedback",
                         [&] { return active->context->drawFeedback(drawManager, frameContext); });
}

namespace {

MStatus setToolToCommand(const CommandCall& call, CommandValue&)
{
    BuiltinArgs a;
    if (!a.parse(call, {}))
        return MStatus::kInvalidParameter;
    if (a.operands().size() != 1)
        return commandError(call, "needs the name of one tool context");
    std::string name = a.operands().front().text;
    MStatus st = ToolRegistry::instance().setToolTo(name);
    if (!st)
        return commandError(call, "no tool context named '" + name + "'", st.statusCode());
    return st;
}

MStatus currentCtxCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {}))
        return MStatus::kInvalidParameter;
    if (!a.operands().empty())
        return commandError(call, "takes no arguments");
    ContextEntry* active = ToolRegistry::instance().active();
    result = CommandValue::ofString(active ? active->name : std::string());
    return MStatus::kSuccess;
}

// contextInfo -exists name: 1 when a tool context of that name exists (the host's own
// selection tool included).
MStatus contextInfoCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"ex", "exists", 0}}))
        return MStatus::kInvalidParameter;
    if (!a.has("exists") || a.operands().size() != 1)
        return commandError(call, "only -exists with one context name is available");
    const std::string name = a.operands().front().text;
    result = CommandValue::ofInt(ToolRegistry::instance().find(name) ? 1 : 0);
    return MStatus::kSuccess;
}

struct Registrar {
    Registrar()
    {
        registerBuiltinCommand("contextInfo", contextInfoCommand);
        registerBuiltinCommand("setToolTo", setToolToCommand);
        registerBuiltinCommand("currentCtx", currentCtxCommand);
        setContextCommandRunner([](const std::string& name, const CommandCall& call, CommandValue& result) {
            return ToolRegistry::instance().runContextCommand(name, call, result);
        });
        addPluginReleaseHook([](const std::string& plugin) { ToolRegistry::instance().releasePlugin(plugin); });
    }
} gRegistrar;

} // namespace
} // namespace host
