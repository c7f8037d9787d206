#include <maya/MPointArray.h>

#include <ostream>

namespace {
template <typename Scalar>
MPoint fromRow(const Scalar* row)
{
    return MPoint(static_cast<double>(row[0]), static_cast<double>(row[1]), static_cast<double>(row[2]),
                  static_cast<double>(row[3]));
}

template <typename Scalar>
void toRow(const MPoint& p, Scalar (&row)[4])
{
    row[0] = static_cast<Scalar>(p.x);
    row[1] = static_cast<Scalar>(p.y);
    row[2] = static_cast<Scalar>(p.z);
    row[3] = static_cast<Scalar>(p.w);
}
} // namespace

MPointArray::MPointArray(const MPoint points[], unsigned int count)
    : fArray(points, count, [](const MPoint& p) { return p; })
{
}

MPointArray::MPointArray(const double points[][4], unsigned int count)
    : fArray(points, count, [](const double (&row)[4]) { return fromRow(row); })
{
}

MPointArray::MPointArray(const float points[][4], unsigned int count)
    : fArray(points, count, [](const float (&row)[4]) { return fromRow(row); })
{
}

MPointArray::MPointArray(unsigned int initialSize, const MPoint& initialValue)
    : fArray(initialSize, initialValue)
{
}

MStatus MPointArray::set(const MPoint& element, unsigned int index) { return fArray.set(element, index); }

MStatus MPointArray::set(unsigned int index, double x, double y, double z, double w)
{
    return fArray.set(MPoint(x, y, z, w), index);
}

MStatus MPointArray::set(double element[4], unsigned int index)
{
    if (element == nullptr)
        return MStatus::kInvalidParameter;
    return fArray.set(fromRow(element), index);
}

MStatus MPointArray::set(float element[4], unsigned int index)
{
    if (element == nullptr)
        return MStatus::kInvalidParameter;
    return fArray.set(fromRow(element), index);
}

MStatus MPointArray::append(double x, double y, double z, double w) { return fArray.append(MPoint(x, y, z, w)); }

MStatus MPointArray::get(double dest[][4]) const
{
    return fArray.get(dest, [](const MPoint& p, double (&row)[4]) { toRow(p, row); });
}

MStatus MPointArray::get(float dest[][4]) const
{
    return fArray.get(dest, [](const MPoint& p, float (&row)[4]) { toRow(p, row); });
}

MPointArray::MPointArray() = default;
MPointArray::MPointArray(const MPointArray& other) = default;
MPointArray::MPointArray(MPointArray&& other) noexcept = default;
MPointArray::~MPointArray() = default;
MPointArray& MPointArray::operator=(const MPointArray& other) = default;
MPointArray& MPointArray::operator=(MPointArray&& other) noexcept = default;

MStatus MPointArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MPointArray::length() const { return fArray.length(); }
MStatus MPointArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MPointArray::clear() { return fArray.clear(); }
void MPointArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MPointArray::sizeIncrement() const { return fArray.sizeIncrement(); }

MPoint& MPointArray::operator[](unsigned int index) { return fArray.at(index); }
const MPoint& MPointArray::operator[](unsigned int index) const { return fArray.at(index); }

MPointArray::iterator MPointArray::begin() { return fArray.begin(); }
MPointArray::iterator MPointArray::end() { return fArray.end(); }
MPointArray::const_iterator MPointArray::begin() const { return fArray.begin(); }
MPointArray::const_iterator MPointArray::end() const { return fArray.end(); }
MPointArray::const_iterator MPointArray::cbegin() const { return fArray.begin(); }
MPointArray::const_iterator MPointArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MPointArray& array)
{
    os << '[';
    for (unsigned int i = 0; i < array.length(); ++i)
        os << (i == 0 ? "" : ", ") << array[i];
    return os << ']';
}

const char* MPointArray::className() { return "MPointArray"; }

MStatus MPointArray::insert(const MPoint& element, unsigned int index) { return fArray.insert(element, index); }
MStatus MPointArray::append(const MPoint& element) { return fArray.append(element); }

MStatus MPointArray::copy(const MPointArray& source)
{
    *this = source;
    return MStatus::kSuccess;
}
