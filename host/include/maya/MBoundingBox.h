#pragma once
// Axis-aligned 3D bounding box. A default-constructed (or cleared) box is empty: it
// contains and intersects nothing, reports zero size with min() == max() == origin, and
// the first expand() makes it exactly the given point or box.

#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MMatrix;

class MBoundingBox
{
public:
    MBoundingBox();
    MBoundingBox(const MBoundingBox& src);
    // The smallest box containing both corners (in any order).
    MBoundingBox(const MPoint& corner1, const MPoint& corner2);
    ~MBoundingBox();

    void clear();
    // Replaces the box by the bounds of its eight transformed corners.
    void transformUsing(const MMatrix& matrix);
    void expand(const MPoint& point);
    void expand(const MBoundingBox& box);
    // Inclusive of the faces.
    bool contains(const MPoint& point) const;
    // Overlap (touching counts) after growing this box by `tol` on every side.
    bool intersects(const MBoundingBox& box, double tol = 0.0) const;
    double width() const;
    double height() const;
    double depth() const;
    MPoint center() const;
    MPoint min() const;
    MPoint max() const;

    MBoundingBox& operator=(const MBoundingBox& other);

    static const char* className();

private:
    MPoint fMin;
    MPoint fMax;
    bool fEmpty;
};
