#include <maya/MFnPointArrayData.h>

#include "dg/arrayDataFn.h"
#include "dg/dataTypes.h"

TQHOST_DEFINE_ARRAY_DATA_FN(MFnPointArrayData, host::PointArrayDataBody, MPoint, MPointArray, MFn::kPointArrayData, const MPoint&)
