#pragma once
// MFnData: the parent of the data function sets; its Type names every kind of data object
// that can flow through a plug.

#include <maya/MFnBase.h>

class MFnData : public MFnBase {
    TQHOST_DECLARE_MFN(MFnData, MFnBase)

    enum Type {
        kInvalid,
        kNumeric,
        kPlugin,
        kPluginGeometry,
        kString,
        kMatrix,
        kStringArray,
        kDoubleArray,
        kFloatArray,
        kIntArray,
        kPointArray,
        kVectorArray,
        kMatrixArray,
        kComponentList,
        kMesh,
        kLattice,
        kNurbsCurve,
        kNurbsSurface,
        kSphere,
        kDynArrayAttrs,
        kDynSweptGeometry,
        kSubdSurface,
        kNObject,
        kNId,
        kAny,
        kLast
    };
};
