#pragma once
// Shared by the attribute function sets: making a new attribute body and reaching the one a
// set is attached to.

#include "dg/access.h"
#include "dg/attributeBody.h"

#include <maya/MString.h>

namespace host {

// A new attribute of the kind, named, and the object that holds it.
MObject makeAttribute(AttrKind kind, const MString& fullName, const MString& briefName,
                      std::shared_ptr<AttributeBody>* made = nullptr);

inline AttributeBody* attributeOf(const MObject& object) { return Access::attribute(object); }

} // namespace host
