// The `file` command for scene files: -open, -rename, -save (Maya ASCII only), -new and the
// query of the scene's name. Opening and saving are not undoable, as in Maya.

#include "command/builtinArgs.h"

#include "host/harness.h"
#include "host/sceneFiles.h"

namespace host {
namespace {

// The name -save writes to: the file opened or named last; empty after -new.
std::string& sceneName()
{
    static std::string name;
    return name;
}

MStatus fileCommand(const CommandCall& call, CommandValue& result)
{
    BuiltinArgs a;
    if (!a.parse(call, {{"o", "open", 0},
                        {"s", "save", 0},
                        {"rn", "rename", 1},
                        {"new", "newFile", 0},
                        {"f", "force", 0},
                        {"typ", "type", 1},
                        {"q", "query", 0},
                        {"sn", "sceneName", 0}}))
        return MStatus::kInvalidParameter;
    const std::vector<std::string> operands = a.operandTexts();
    if (a.has("query")) {
        if (!a.has("sceneName"))
            return commandError(call, "the host answers -q -sceneName only");
        result = CommandValue::ofString(sceneName());
        return MStatus::kSuccess;
    }
    const int actions = int(a.has("open")) + int(a.has("save")) + int(a.has("rename")) + int(a.has("newFile"));
    if (actions != 1)
        return commandError(call, "give one of -open, -save, -rename and -new");
    std::string error;
    if (a.has("open") || a.has("newFile")) {
        // Deliberate: like undo, opening refuses to run after statements of the same call
        // that changed the scene; their undo entry would name nodes the new scene lacks.
        if (callHasPendingChanges())
            return commandError(call, "run file -open and -new as a call of their own", MStatus::kFailure);
        if (a.has("newFile")) {
            newScene();
            sceneName().clear();
            return MStatus::kSuccess;
        }
        if (operands.size() != 1)
            return commandError(call, "-open needs the file to open");
        if (!openScene(operands[0], &error))
            return commandError(call, error, MStatus::kFailure);
        sceneName() = operands[0];
        result = CommandValue::ofString(operands[0]);
        return MStatus::kSuccess;
    }
    if (a.has("rename")) {
        sceneName() = a.text("rename");
        result = CommandValue::ofString(sceneName());
        return MStatus::kSuccess;
    }
    if (a.has("type") && a.text("type") != "mayaAscii")
        return commandError(call, "the host saves -type \"mayaAscii\" only, not '" + a.text("type") + "'");
    if (sceneName().empty())
        return commandError(call, "the scene has no name: give one with file -rename first", MStatus::kFailure);
    if (!saveScene(sceneName(), &error))
        return commandError(call, error, MStatus::kFailure);
    result = CommandValue::ofString(sceneName());
    return MStatus::kSuccess;
}

struct Registrar {
    Registrar() { registerBuiltinCommand("file", fileCommand); }
} gRegistrar;

} // namespace
} // namespace host
