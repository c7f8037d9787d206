#include <maya/MFnIntArrayData.h>

#include "dg/arrayDataFn.h"
#include "dg/dataTypes.h"

TQHOST_DEFINE_ARRAY_DATA_FN(MFnIntArrayData, host::IntArrayDataBody, int, MIntArray, MFn::kIntArrayData, int)
