#include <maya/MFnFloatArrayData.h>

#include "dg/arrayDataFn.h"
#include "dg/dataTypes.h"

TQHOST_DEFINE_ARRAY_DATA_FN(MFnFloatArrayData, host::FloatArrayDataBody, float, MFloatArray, MFn::kFloatArrayData, float)
