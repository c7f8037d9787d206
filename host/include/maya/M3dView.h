#pragma once
// M3dView: a 3-D model view. The host's views are made by the harness, each with a size in
// pixels and a camera; one of them is the active view. A view lives while its camera does.
//
// View coordinates are pixels with the origin at the bottom left and y up. Pixel (x, y)
// sits at that point of the view; worldToView rounds to the nearest pixel, and
// viewToWorld gives the ray through the pixel, starting on the near clip plane.

#include <maya/MObject.h>
#include <maya/MStatus.h>

class MDagPath;
class MMatrix;
class MPoint;
class MVector;

namespace host {
class ViewAccess;
} // namespace host

class M3dView {
public:
    M3dView();
    virtual ~M3dView();

    static M3dView active3dView(MStatus* ReturnStatus = nullptr);
    static unsigned int numberOf3dViews();
    static MStatus get3dView(const unsigned int index, M3dView& view);

    int portWidth(MStatus* ReturnStatus = nullptr);
    int portHeight(MStatus* ReturnStatus = nullptr);
    bool isVisible(MStatus* ReturnStatus = nullptr);

    MStatus getCamera(MDagPath& camera);
    MStatus setCamera(MDagPath& camera);

    // Refreshes are counted per view; the harness reads the counts.
    static MStatus scheduleRefreshAllViews();
    MStatus scheduleRefresh();
    MStatus refresh(bool all = false, bool force = false);

    MStatus viewToWorld(short x_pos, short y_pos, MPoint& worldPt, MVector& worldVector) const;
    MStatus viewToWorld(short x_pos, short y_pos, MPoint& nearClipPt, MPoint& farClipPt) const;
    MStatus viewToObjectSpace(short x_pos, short y_pos, const MMatrix& localMatrixInverse, MPoint& oPt,
                              MVector& oVector) const;
    // True when the point's pixel is one of the port's and the point is not nearer than the
    // near clip plane. The pixel is given either way unless the point is behind the eye of a
    // perspective camera; it is clamped to 16 bits.
    bool worldToView(const MPoint& worldPt, short& x_pos, short& y_pos, MStatus* ReturnStatus = nullptr) const;

    MStatus projectionMatrix(MMatrix& projectionMatrix) const;
    MStatus modelViewMatrix(MMatrix& modelViewMatrix) const;

private:
    friend class host::ViewAccess;
    unsigned int fViewId; // 0: no view
};
