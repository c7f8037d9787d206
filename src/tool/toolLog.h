#pragma once
// The tool's log lines: a failed host status is reported under the module name users and
// support know the tool by, with the source line, and handed back so a caller can go on or
// return it.

#include "store/logModules.h"

#include <maya/MStatus.h>

namespace tq::tool {

inline MStatus logged(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(logModule::kTool, line);
    return status;
}

// A refusal of the tool's own. Deliberate: the text stays in the source and nobody sees it;
// the status alone goes back.
inline MStatus failWith(const char* /*message*/) { return MStatus::kInvalidParameter; }

} // namespace tq::tool
