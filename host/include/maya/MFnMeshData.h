#pragma once
// MFnMeshData: mesh data objects (kMeshData), what flows through mesh plugs. A new object is
// empty; MFnMesh::create or addPolygon with the object as parentOrOwner fills it.

#include <maya/MFnData.h>

class MFnMeshData : public MFnData {
    TQHOST_DECLARE_MFN(MFnMeshData, MFnData)

    MObject create(MStatus* ReturnStatus = nullptr);
};
