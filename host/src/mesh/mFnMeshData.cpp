#include <maya/MFnMeshData.h>

#include "dg/fnMacros.h"
#include "mesh/meshData.h"

TQHOST_DEFINE_MFN(MFnMeshData, MFn::kMeshData)

MObject MFnMeshData::create(MStatus* ReturnStatus)
{
    MObject data = host::makeMeshData();
    MStatus st = attach(data);
    TQHOST_SET_STATUS(ReturnStatus, st);
    return st ? data : MObject();
}
