#include <maya/MPxDrawOverride.h>

#include "dag/dagMatrices.h"
#include "dg/access.h"

MHWRender::MPxDrawOverride::MPxDrawOverride(const MObject& obj, GeometryDrawOverrideCb callback, bool isAlwaysDirty)
    : fCallback(callback), fAlwaysDirty(isAlwaysDirty), fObject(obj)
{
}

MHWRender::MPxDrawOverride::~MPxDrawOverride() = default;

MHWRender::DrawAPI MHWRender::MPxDrawOverride::supportedDrawAPIs() const { return kOpenGL; }

bool MHWRender::MPxDrawOverride::hasUIDrawables() const { return false; }

MMatrix MHWRender::MPxDrawOverride::transform(const MDagPath& objPath, const MDagPath&) const
{
    return objPath.inclusiveMatrix();
}

MBoundingBox MHWRender::MPxDrawOverride::boundingBox(const MDagPath& objPath, const MDagPath&) const
{
    MBoundingBox box;
    if (host::NodeBody* node = host::Access::node(objPath.node()))
        host::shapeBounds(node, box);
    return box;
}

bool MHWRender::MPxDrawOverride::isBounded(const MDagPath&, const MDagPath&) const { return false; }

bool MHWRender::MPxDrawOverride::disableInternalBoundingBoxDraw() const { return false; }

bool MHWRender::MPxDrawOverride::excludedFromPostEffects() const { return true; }

bool MHWRender::MPxDrawOverride::isTransparent() const { return false; }

void MHWRender::MPxDrawOverride::addUIDrawables(const MDagPath&, MUIDrawManager&, const MFrameContext&,
                                                const MUserData*)
{
}

const char* MHWRender::MPxDrawOverride::className() { return "MPxDrawOverride"; }
