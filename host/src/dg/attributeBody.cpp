#include "dg/attributeBody.h"

#include "dg/access.h"

namespace host {

MFn::Type AttributeBody::apiType() const
{
    switch (kind) {
    case AttrKind::kNumeric:
        return isUnitAttribute ? MFn::kUnitAttribute : MFn::kNumericAttribute;
    case AttrKind::kTyped: return MFn::kTypedAttribute;
    case AttrKind::kGeneric: return MFn::kGenericAttribute;
    case AttrKind::kCompound: return MFn::kCompoundAttribute;
    case AttrKind::kEnum: return MFn::kEnumAttribute;
    case AttrKind::kMatrix: return floatMatrix ? MFn::kFloatMatrixAttribute : MFn::kMatrixAttribute;
    case AttrKind::kMessage: return MFn::kMessageAttribute;
    }
    return MFn::kAttribute;
}

int AttributeBody::arrayDepth() const
{
    int depth = 0;
    for (const AttributeBody* a = this; a; a = a->parent)
        if (a->flags.array)
            ++depth;
    return depth;
}

const AttributeBody* AttributeBody::root() const
{
    const AttributeBody* a = this;
    while (a->parent)
        a = a->parent;
    return a;
}

AttributeBody* Access::attribute(const MObject& object)
{
    return dynamic_cast<AttributeBody*>(object.fBody.get());
}

} // namespace host
