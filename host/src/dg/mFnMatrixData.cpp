#include <maya/MFnMatrixData.h>

#include "dg/access.h"
#include "dg/dataTypes.h"
#include "dg/fnMacros.h"

TQHOST_DEFINE_MFN(MFnMatrixData, MFn::kMatrixData)

const MMatrix& MFnMatrixData::matrix(MStatus* ReturnStatus) const
{
    static const MMatrix identity;
    auto b = host::Access::as<host::MatrixDataBody>(fObject);
    TQHOST_SET_STATUS(ReturnStatus, b ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return b ? b->read() : identity;
}

MStatus MFnMatrixData::set(const MMatrix& matrix)
{
    auto b = host::Access::as<host::MatrixDataBody>(fObject);
    if (!b)
        return MStatus::kInvalidParameter;
    b->write() = matrix;
    return MStatus::kSuccess;
}

MObject MFnMatrixData::create(const MMatrix& in, MStatus* ReturnStatus)
{
    auto b = std::make_shared<host::MatrixDataBody>();
    b->write() = in;
    MObject o = host::Access::object(b);
    attach(o);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return o;
}

MObject MFnMatrixData::create(MStatus* ReturnStatus) { return create(MMatrix(), ReturnStatus); }
