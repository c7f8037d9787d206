#include <maya/MFnMatrixAttribute.h>

#include "dg/attributeFns.h"
#include "dg/fnMacros.h"

using host::AttributeBody;

TQHOST_DEFINE_MFN(MFnMatrixAttribute, MFn::kMatrixAttribute)

MObject MFnMatrixAttribute::create(const MString& fullName, const MString& briefName, Type matrixType,
                                   MStatus* ReturnStatus)
{
    std::shared_ptr<AttributeBody> body;
    MObject object = host::makeAttribute(host::AttrKind::kMatrix, fullName, briefName, &body);
    body->floatMatrix = matrixType == kFloat;
    body->defaultValue = host::Value::ofMatrix(MMatrix());
    attach(object);
    TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);
    return object;
}

MStatus MFnMatrixAttribute::getDefault(MMatrix& defaultValue)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    defaultValue = a->defaultValue.matrix;
    return MStatus::kSuccess;
}

MStatus MFnMatrixAttribute::getDefault(MFloatMatrix& defaultValue)
{
    MMatrix m;
    MStatus s = getDefault(m);
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            defaultValue.matrix[r][c] = static_cast<float>(m.matrix[r][c]);
    return s;
}

MStatus MFnMatrixAttribute::setDefault(const MMatrix& defaultValue)
{
    AttributeBody* a = host::attributeOf(fObject);
    if (!a)
        return MStatus::kInvalidParameter;
    a->defaultValue = host::Value::ofMatrix(defaultValue);
    return MStatus::kSuccess;
}

MStatus MFnMatrixAttribute::setDefault(const MFloatMatrix& defaultValue)
{
    MMatrix m;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            m.matrix[r][c] = defaultValue.matrix[r][c];
    return setDefault(m);
}
