#pragma once
// The data kinds of the dependency graph, each a copy-on-write body over its payload.

#include "dg/dataBody.h"

#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFnNumericData.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MPointArray.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MVectorArray.h>

namespace host {

struct NumericPayload {
    MFnNumericData::Type type = MFnNumericData::kInvalid;
    double v[4] = {0.0, 0.0, 0.0, 0.0};
};

using NumericDataBody = TypedDataBody<NumericPayload, MFn::kNumericData, MFnData::kNumeric>;
using StringDataBody = TypedDataBody<MString, MFn::kStringData, MFnData::kString>;
using MatrixDataBody = TypedDataBody<MMatrix, MFn::kMatrixData, MFnData::kMatrix>;
using IntArrayDataBody = TypedDataBody<MIntArray, MFn::kIntArrayData, MFnData::kIntArray>;
using DoubleArrayDataBody = TypedDataBody<MDoubleArray, MFn::kDoubleArrayData, MFnData::kDoubleArray>;
using FloatArrayDataBody = TypedDataBody<MFloatArray, MFn::kFloatArrayData, MFnData::kFloatArray>;
using PointArrayDataBody = TypedDataBody<MPointArray, MFn::kPointArrayData, MFnData::kPointArray>;
using VectorArrayDataBody = TypedDataBody<MVectorArray, MFn::kVectorArrayData, MFnData::kVectorArray>;
using StringArrayDataBody = TypedDataBody<MStringArray, MFn::kStringArrayData, MFnData::kStringArray>;

// The number of components of a numeric type (1 for single numbers).
int componentCount(MFnNumericData::Type type);

} // namespace host
