#include <maya/MFnVectorArrayData.h>

#include "dg/arrayDataFn.h"
#include "dg/dataTypes.h"

TQHOST_DEFINE_ARRAY_DATA_FN(MFnVectorArrayData, host::VectorArrayDataBody, MVector, MVectorArray, MFn::kVectorArrayData, const MVector&)
