#include "patchnode/patchDiagnostics.h"


namespace tq {

MStatus logIfFailed(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kPatchModule, line);
    return status;
}

} // namespace tq
