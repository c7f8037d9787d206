#include <maya/MColorArray.h>

#include "foundation/arrayOps.h"

#include <ostream>

namespace arrayOps = host::arrayOps;

namespace {
template <typename Scalar>
MColor fromRow(const Scalar* row)
{
    return MColor(static_cast<float>(row[0]), static_cast<float>(row[1]), static_cast<float>(row[2]),
                  static_cast<float>(row[3]));
}
} // namespace

MColorArray::MColorArray(const MColor src[], unsigned int count)
    : fArray(src, count, arrayOps::MakeElement<MColor>())
{
}

MColorArray::MColorArray(const float src[][4], unsigned int count)
    : fArray(src, count, [](const float (&row)[4]) { return fromRow(row); })
{
}

MColorArray::MColorArray(const double src[][4], unsigned int count)
    : fArray(src, count, [](const double (&row)[4]) { return fromRow(row); })
{
}

MColorArray::MColorArray(unsigned int initialSize, const MColor& initialValue)
    : fArray(initialSize, initialValue)
{
}

MStatus MColorArray::set(const MColor& element, unsigned int index) { return fArray.set(element, index); }

MStatus MColorArray::set(unsigned int index, float r, float g, float b, float a)
{
    return fArray.set(MColor(r, g, b, a), index);
}

MStatus MColorArray::set(float val[4], unsigned int index)
{
    if (val == nullptr)
        return MStatus::kInvalidParameter;
    return fArray.set(fromRow(val), index);
}

MStatus MColorArray::set(float elements[][4], unsigned int size)
{
    if (elements == nullptr && size != 0)
        return MStatus::kInvalidParameter;
    *this = MColorArray(elements, size);
    return MStatus::kSuccess;
}

MStatus MColorArray::set(double elements[][4], unsigned int size)
{
    if (elements == nullptr && size != 0)
        return MStatus::kInvalidParameter;
    *this = MColorArray(elements, size);
    return MStatus::kSuccess;
}

MStatus MColorArray::append(float r, float g, float b, float a) { return fArray.append(MColor(r, g, b, a)); }

MStatus MColorArray::get(float dest[][4]) const
{
    return fArray.get(dest, [](const MColor& c, float (&row)[4]) {
        row[0] = c.r;
        row[1] = c.g;
        row[2] = c.b;
        row[3] = c.a;
    });
}

MColorArray::MColorArray() = default;
MColorArray::MColorArray(const MColorArray& other) = default;
MColorArray::MColorArray(MColorArray&& other) noexcept = default;
MColorArray::~MColorArray() = default;
MColorArray& MColorArray::operator=(const MColorArray& other) = default;
MColorArray& MColorArray::operator=(MColorArray&& other) noexcept = default;

MStatus MColorArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MColorArray::length() const { return fArray.length(); }
MStatus MColorArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MColorArray::clear() { return fArray.clear(); }
void MColorArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MColorArray::sizeIncrement() const { return fArray.sizeIncrement(); }

MColor& MColorArray::operator[](unsigned int index) { return fArray.at(index); }
const MColor& MColorArray::operator[](unsigned int index) const { return fArray.at(index); }

MColorArray::iterator MColorArray::begin() { return fArray.begin(); }
MColorArray::iterator MColorArray::end() { return fArray.end(); }
MColorArray::const_iterator MColorArray::begin() const { return fArray.begin(); }
MColorArray::const_iterator MColorArray::end() const { return fArray.end(); }
MColorArray::const_iterator MColorArray::cbegin() const { return fArray.begin(); }
MColorArray::const_iterator MColorArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MColorArray& array) { return arrayOps::print(os, array); }

const char* MColorArray::className() { return "MColorArray"; }

MStatus MColorArray::insert(const MColor& element, unsigned int index) { return fArray.insert(element, index); }
MStatus MColorArray::append(const MColor& element) { return fArray.append(element); }

MStatus MColorArray::copy(const MColorArray& source) { return arrayOps::copy(*this, source); }
