#pragma once
// An RGBA color of floats. Arithmetic is component-wise over all four channels (alpha
// included). Other color models convert on the way in and out: HSV takes hue in degrees
// [0, 360) with saturation and value in [0, 1]; CMY is 1 - RGB, and CMYK is treated as CMY.
// The integer constructors scale each channel by the type's maximum (255 or 65535), hue
// included (so hue 255 of an unsigned char means 360 degrees).

#include <maya/MTypes.h>

#include <iosfwd>

class MColor
{
public:
    enum MColorType { kRGB, kHSV, kCMY, kCMYK };

    constexpr MColor()
        : r(0.0f), g(0.0f), b(0.0f), a(1.0f)
    {
    }
    constexpr MColor(const MColor& src) = default;
    constexpr MColor(float rr, float gg, float bb = 0.0, float aa = 1.0)
        : r(rr), g(gg), b(bb), a(aa)
    {
    }
    // Opaque color from (r, g, b); a null array gives opaque black.
    MColor(const float d[3]);
    // Black with the given alpha.
    constexpr MColor(float alpha)
        : r(0.0f), g(0.0f), b(0.0f), a(alpha)
    {
    }
    MColor(MColorType colorModel, unsigned char c1, unsigned char c2, unsigned char c3, unsigned char alpha = 255U);
    MColor(MColorType colorModel, unsigned short c1, unsigned short c2, unsigned short c3,
           unsigned short alpha = 65535U);
    MColor(MColorType colorModel, float c1, float c2, float c3, float alpha = 1.0);
    MColor(MColorType colorModel, double c1, double c2, double c3, double alpha = 1.0);
    ~MColor() = default;

    MColor& operator=(const MColor& src) = default;
    // Index 0 is r, 1 is g, 2 is b, anything else is a.
    float operator()(unsigned int i) const;
    float operator[](unsigned int i) const;
    MColor& operator*=(float scalar);
    MColor operator*(float scalar) const;
    MColor& operator*=(const MColor& other);
    MColor operator*(const MColor& other) const;
    MColor& operator/=(float scalar);
    MColor operator/(float scalar) const;
    MColor& operator+=(const MColor& other);
    MColor operator+(const MColor& other) const;
    MColor operator-() const;
    MColor operator-(const MColor& other) const;
    bool operator==(const MColor& other) const;
    bool operator!=(const MColor& other) const;

    // False only for a null array.
    bool get(float d[3]) const;
    bool get(MColorType colorModel, float&, float&, float&) const;
    bool get(MColorType colorModel, float&, float&, float&, float& alpha) const;
    bool set(MColorType colorModel, float, float, float, float alpha = 1.0);

    float& operator()(unsigned int i);
    float& operator[](unsigned int i);

    friend MColor operator*(float scalar, const MColor& other);
    friend std::ostream& operator<<(std::ostream& os, const MColor& c);

    static const MColor kOpaqueBlack;

    float r;
    float g;
    float b;
    float a;
};

inline MColor::MColor(const float d[3])
    : r(d != nullptr ? d[0] : 0.0f), g(d != nullptr ? d[1] : 0.0f), b(d != nullptr ? d[2] : 0.0f), a(1.0f)
{
}

inline float MColor::operator()(unsigned int i) const { return i == 0 ? r : (i == 1 ? g : (i == 2 ? b : a)); }
inline float MColor::operator[](unsigned int i) const { return (*this)(i); }
inline float& MColor::operator()(unsigned int i) { return i == 0 ? r : (i == 1 ? g : (i == 2 ? b : a)); }
inline float& MColor::operator[](unsigned int i) { return (*this)(i); }
