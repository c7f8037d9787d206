#include <maya/MFnDoubleArrayData.h>

#include "dg/arrayDataFn.h"
#include "dg/dataTypes.h"

TQHOST_DEFINE_ARRAY_DATA_FN(MFnDoubleArrayData, host::DoubleArrayDataBody, double, MDoubleArray, MFn::kDoubleArrayData, double)
