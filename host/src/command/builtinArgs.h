#pragma once
// What the built-in commands share: their arguments, split into flags and operands by a
// small flag table (flags may stand anywhere among the operands; an unknown flag, or a flag
// without the arguments it takes, fails with a log line that names the command and the
// flag), error lines, node names and undoable selection changes.

#include "command/interpreter.h"

#include <maya/MSelectionList.h>
#include <maya/MStatus.h>

#include <string>
#include <vector>

namespace host {

struct FlagRule {
    const char* shortName;
    const char* longName;
    // The arguments that follow the flag; kOptionalArgument takes one when the next
    // argument reads as a boolean (boolean flags: "-tgl" or "-tgl false"); any other word
    // after it is an operand.
    int argumentCount;
};
constexpr int kOptionalArgument = -1;

class BuiltinArgs {
public:
    bool parse(const CommandCall& call, const std::vector<FlagRule>& flags);

    bool has(const char* longName) const { return uses(longName) > 0; }
    unsigned uses(const char* longName) const;
    // The k-th argument of the n-th use of the flag; null when absent.
    const ArgValue* value(const char* longName, unsigned k = 0, unsigned use = 0) const;
    std::string text(const char* longName, unsigned k = 0, unsigned use = 0) const;
    // Operands in order, arrays expanded into their elements.
    const std::vector<ArgValue>& operands() const { return fOperands; }
    std::vector<std::string> operandTexts() const;

private:
    struct Use {
        const FlagRule* flag;
        std::vector<ArgValue> values;
    };
    std::vector<FlagRule> fFlags;
    std::vector<Use> fUses;
    std::vector<ArgValue> fOperands;
};

// Logs "<command>: <text>" as an error and returns the code.
MStatus commandError(const CommandCall& call, const std::string& text,
                     MStatus::MStatusCode code = MStatus::kInvalidParameter);

class NodeBody;

// "|parent|node" for DAG nodes, the name for the others.
std::string nodePathName(const NodeBody* node);
// Replaces the active selection and records the change for undo.
void changeSelection(const MSelectionList& next);
// The active selection as selection strings: what a command acts on when given no operands.
std::vector<std::string> selectionNames();

// Whether construction history is on (constructionHistory -toggle); on in a new session.
bool& constructionHistoryOn();

} // namespace host
