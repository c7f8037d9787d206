#include "patchnode/patchDiagnostics.h"

#include <maya/MGlobal.h>
#include <maya/MString.h>

namespace tq {

MStatus logIfFailed(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kPatchModule, line);
    return status;
}

void reportEscapedException(const char* entryPoint, const char* what) noexcept
{
    try {
        MString text(entryPoint);
        text += ": exception: ";
        text += what ? what : "";
        MGlobal::displayError(text);
    } catch (...) {
        // Nothing left to report with: the host must still get its failed status.
    }
}

} // namespace tq
