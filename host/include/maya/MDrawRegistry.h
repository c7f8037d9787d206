#pragma once
// MHWRender::MDrawRegistry: ties draw overrides to node types by draw classification.

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

namespace MHWRender {

class MPxDrawOverride;

class MDrawRegistry {
public:
    typedef MPxDrawOverride* (*DrawOverrideCreator)(const MObject& obj);

    static MStatus registerDrawOverrideCreator(const MString& drawClassification, const MString& registrantId,
                                               DrawOverrideCreator creator);
    static MStatus deregisterDrawOverrideCreator(const MString& drawClassification, const MString& registrantId);
};

} // namespace MHWRender
