#include <maya/MFnStringArrayData.h>

#include "dg/arrayDataFn.h"
#include "dg/dataTypes.h"

TQHOST_DEFINE_ARRAY_DATA_FN(MFnStringArrayData, host::StringArrayDataBody, MString, MStringArray, MFn::kStringArrayData, const MString&)
