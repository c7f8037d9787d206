#include <maya/MBoundingBox.h>

#include <maya/MMatrix.h>

#include <algorithm>

namespace {

MPoint cartesian(const MPoint& p)
{
    MPoint result(p);
    result.cartesianize();
    return result;
}

} // namespace

MBoundingBox::MBoundingBox()
    : fEmpty(true)
{
}

MBoundingBox::MBoundingBox(const MBoundingBox& src) = default;

MBoundingBox::MBoundingBox(const MPoint& corner1, const MPoint& corner2)
    : MBoundingBox()
{
    expand(corner1);
    expand(corner2);
}

MBoundingBox::~MBoundingBox() = default;

MBoundingBox& MBoundingBox::operator=(const MBoundingBox& other) = default;

void MBoundingBox::clear()
{
    fMin = MPoint::origin;
    fMax = MPoint::origin;
    fEmpty = true;
}

void MBoundingBox::transformUsing(const MMatrix& matrix)
{
    if (fEmpty)
        return;
    const MPoint low = fMin;
    const MPoint high = fMax;
    clear();
    for (int corner = 0; corner < 8; ++corner) {
        const MPoint p((corner & 1) ? high.x : low.x, (corner & 2) ? high.y : low.y, (corner & 4) ? high.z : low.z);
        expand(p * matrix);
    }
}

void MBoundingBox::expand(const MPoint& point)
{
    const MPoint p = cartesian(point);
    if (fEmpty) {
        fMin = MPoint(p.x, p.y, p.z);
        fMax = fMin;
        fEmpty = false;
        return;
    }
    fMin = MPoint(std::min(fMin.x, p.x), std::min(fMin.y, p.y), std::min(fMin.z, p.z));
    fMax = MPoint(std::max(fMax.x, p.x), std::max(fMax.y, p.y), std::max(fMax.z, p.z));
}

void MBoundingBox::expand(const MBoundingBox& box)
{
    if (box.fEmpty)
        return;
    expand(box.fMin);
    expand(box.fMax);
}

bool MBoundingBox::contains(const MPoint& point) const
{
    if (fEmpty)
        return false;
    const MPoint p = cartesian(point);
    return p.x >= fMin.x && p.x <= fMax.x && p.y >= fMin.y && p.y <= fMax.y && p.z >= fMin.z && p.z <= fMax.z;
}

bool MBoundingBox::intersects(const MBoundingBox& box, double tol) const
{
    if (fEmpty || box.fEmpty)
        return false;
    return fMin.x - tol <= box.fMax.x && box.fMin.x <= fMax.x + tol && fMin.y - tol <= box.fMax.y &&
           box.fMin.y <= fMax.y + tol && fMin.z - tol <= box.fMax.z && box.fMin.z <= fMax.z + tol;
}

double MBoundingBox::width() const { return fMax.x - fMin.x; }
double MBoundingBox::height() const { return fMax.y - fMin.y; }
double MBoundingBox::depth() const { return fMax.z - fMin.z; }

MPoint MBoundingBox::center() const
{
    return MPoint((fMin.x + fMax.x) * 0.5, (fMin.y + fMax.y) * 0.5, (fMin.z + fMax.z) * 0.5);
}

MPoint MBoundingBox::min() const { return fMin; }
MPoint MBoundingBox::max() const { return fMax; }

const char* MBoundingBox::className() { return "MBoundingBox"; }
