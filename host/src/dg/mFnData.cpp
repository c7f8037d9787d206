#include <maya/MFnData.h>

#include "dg/fnMacros.h"

TQHOST_DEFINE_MFN(MFnData, MFn::kData)
