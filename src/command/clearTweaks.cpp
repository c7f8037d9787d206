#include "command/clearTweaks.h"

#include "store/storeAttributes.h"
#include "store/storeLookup.h"

#include <maya/MDagPath.h>
#include <maya/MPointArray.h>

namespace tq {

MStatus clearTweaks()
{
    const MDagPath meshPath = getActiveMeshPath();
    if (!meshPath.isValid())
        return MStatus::kInvalidParameter;
    return writePointArrayAttr(MPointArray(), "pnts", meshPath.node());
}

} // namespace tq
