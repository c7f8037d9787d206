#include "tool/tqSarnContextCmd.h"

#include "tool/tqSarnContext.h"

const MString tqSarnContextCmd::commandName("tqSarnContext");

void* tqSarnContextCmd::creator() { return new tqSarnContextCmd(); }

tqSarnContextCmd::tqSarnContextCmd() = default;

tqSarnContextCmd::~tqSarnContextCmd() = default;

MPxContext* tqSarnContextCmd::makeObj()
{
    // Nothing may escape to the host: a context that cannot be made is no context.
    try {
        context = new tqSarnContext();
    } catch (...) {
        context = nullptr;
    }
    return context;
}
