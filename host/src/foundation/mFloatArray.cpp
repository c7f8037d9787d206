#include <maya/MFloatArray.h>

#include <ostream>

namespace {
template <typename From>
float toElement(From value) { return static_cast<float>(value); }
} // namespace

MFloatArray::MFloatArray(const float src[], unsigned int count)
    : fArray(src, count, [](float v) { return v; })
{
}

MFloatArray::MFloatArray(const double src[], unsigned int count)
    : fArray(src, count, [](double v) { return toElement(v); })
{
}

MFloatArray::MFloatArray(unsigned int initialSize, float initialValue)
    : fArray(initialSize, initialValue)
{
}

MFloatArray::MFloatArray() = default;
MFloatArray::MFloatArray(const MFloatArray& other) = default;
MFloatArray::MFloatArray(MFloatArray&& other) noexcept = default;
MFloatArray::~MFloatArray() = default;
MFloatArray& MFloatArray::operator=(const MFloatArray& other) = default;
MFloatArray& MFloatArray::operator=(MFloatArray&& other) noexcept = default;

MStatus MFloatArray::setLength(unsigned int length) { return fArray.setLength(length); }
unsigned int MFloatArray::length() const { return fArray.length(); }
MStatus MFloatArray::remove(unsigned int index) { return fArray.remove(index); }
MStatus MFloatArray::clear() { return fArray.clear(); }
void MFloatArray::setSizeIncrement(unsigned int newIncrement) { fArray.setSizeIncrement(newIncrement); }
unsigned int MFloatArray::sizeIncrement() const { return fArray.sizeIncrement(); }

float& MFloatArray::operator[](unsigned int index) { return fArray.at(index); }
float MFloatArray::operator[](unsigned int index) const { return fArray.at(index); }

MFloatArray::iterator MFloatArray::begin() { return fArray.begin(); }
MFloatArray::iterator MFloatArray::end() { return fArray.end(); }
MFloatArray::const_iterator MFloatArray::begin() const { return fArray.begin(); }
MFloatArray::const_iterator MFloatArray::end() const { return fArray.end(); }
MFloatArray::const_iterator MFloatArray::cbegin() const { return fArray.begin(); }
MFloatArray::const_iterator MFloatArray::cend() const { return fArray.end(); }

std::ostream& operator<<(std::ostream& os, const MFloatArray& array)
{
    os << '[';
    for (unsigned int i = 0; i < array.length(); ++i)
        os << (i == 0 ? "" : ", ") << array[i];
    return os << ']';
}

const char* MFloatArray::className() { return "MFloatArray"; }

MStatus MFloatArray::set(float element, unsigned int index) { return fArray.set(element, index); }
MStatus MFloatArray::set(double element, unsigned int index) { return fArray.set(toElement(element), index); }
MStatus MFloatArray::insert(float element, unsigned int index) { return fArray.insert(element, index); }
MStatus MFloatArray::append(float element) { return fArray.append(element); }

MStatus MFloatArray::copy(const MFloatArray& source)
{
    *this = source;
    return MStatus::kSuccess;
}

MStatus MFloatArray::get(float dest[]) const
{
    return fArray.get(dest, [](float from, float& to) { to = static_cast<float>(from); });
}

MStatus MFloatArray::get(double dest[]) const
{
    return fArray.get(dest, [](float from, double& to) { to = static_cast<double>(from); });
}
