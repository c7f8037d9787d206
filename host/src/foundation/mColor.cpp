#include <maya/MColor.h>

#include <algorithm>
#include <cmath>
#include <ostream>

const MColor MColor::kOpaqueBlack(0.0f, 0.0f, 0.0f, 1.0f);

namespace {

void hsvToRgb(double h, double s, double v, float& r, float& g, float& b)
{
    if (!std::isfinite(h))
        h = 0.0;
    h = std::fmod(h, 360.0);
    if (h < 0.0)
        h += 360.0;
    const double sector = h / 60.0;
    const int index = std::min(static_cast<int>(sector), 5);
    const double f = sector - index;
    const double p = v * (1.0 - s);
    const double q = v * (1.0 - s * f);
    const double t = v * (1.0 - s * (1.0 - f));
    double rr = v, gg = v, bb = v;
    switch (index) {
    case 0: rr = v, gg = t, bb = p; break;
    case 1: rr = q, gg = v, bb = p; break;
    case 2: rr = p, gg = v, bb = t; break;
    case 3: rr = p, gg = q, bb = v; break;
    case 4: rr = t, gg = p, bb = v; break;
    default: rr = v, gg = p, bb = q; break;
    }
    r = static_cast<float>(rr);
    g = static_cast<float>(gg);
    b = static_cast<float>(bb);
}

void rgbToHsv(float r, float g, float b, float& h, float& s, float& v)
{
    const float maxC = std::max({r, g, b});
    const float minC = std::min({r, g, b});
    const float delta = maxC - minC;
    v = maxC;
    s = maxC > 0.0f ? delta / maxC : 0.0f;
    if (delta <= 0.0f) {
        h = 0.0f;
        return;
    }
    float hue;
    if (maxC == r)
        hue = 60.0f * std::fmod((g - b) / delta, 6.0f);
    else if (maxC == g)
        hue = 60.0f * ((b - r) / delta + 2.0f);
    else
        hue = 60.0f * ((r - g) / delta + 4.0f);
    if (hue < 0.0f)
        hue += 360.0f;
    h = hue;
}

// Components in the model's own units (hue in degrees, everything else 0..1).
void fromModel(MColor::MColorType model, double c1, double c2, double c3, float& r, float& g, float& b)
{
    switch (model) {
    case MColor::kHSV: hsvToRgb(c1, c2, c3, r, g, b); return;
    case MColor::kCMY:
    case MColor::kCMYK:
        r = static_cast<float>(1.0 - c1);
        g = static_cast<float>(1.0 - c2);
        b = static_cast<float>(1.0 - c3);
        return;
    case MColor::kRGB: break;
    }
    r = static_cast<float>(c1);
    g = static_cast<float>(c2);
    b = static_cast<float>(c3);
}

// Integer channels are fractions of the type's maximum; hue is a fraction of 360 degrees.
double scaledChannel(MColor::MColorType model, int channel, double value, double maximum)
{
    const double fraction = value / maximum;
    return model == MColor::kHSV && channel == 0 ? fraction * 360.0 : fraction;
}

} // namespace

MColor::MColor(MColorType colorModel, unsigned char c1, unsigned char c2, unsigned char c3, unsigned char alpha)
    : a(alpha / 255.0f)
{
    fromModel(colorModel, scaledChannel(colorModel, 0, c1, 255.0), scaledChannel(colorModel, 1, c2, 255.0),
              scaledChannel(colorModel, 2, c3, 255.0), r, g, b);
}

MColor::MColor(MColorType colorModel, unsigned short c1, unsigned short c2, unsigned short c3, unsigned short alpha)
    : a(alpha / 65535.0f)
{
    fromModel(colorModel, scaledChannel(colorModel, 0, c1, 65535.0), scaledChannel(colorModel, 1, c2, 65535.0),
              scaledChannel(colorModel, 2, c3, 65535.0), r, g, b);
}

MColor::MColor(MColorType colorModel, float c1, float c2, float c3, float alpha)
    : a(alpha)
{
    fromModel(colorModel, c1, c2, c3, r, g, b);
}

MColor::MColor(MColorType colorModel, double c1, double c2, double c3, double alpha)
    : a(static_cast<float>(alpha))
{
    fromModel(colorModel, c1, c2, c3, r, g, b);
}

MColor& MColor::operator*=(float s)
{
    r *= s;
    g *= s;
    b *= s;
    a *= s;
    return *this;
}

MColor MColor::operator*(float s) const
{
    MColor result(*this);
    return result *= s;
}

MColor& MColor::operator*=(const MColor& o)
{
    r *= o.r;
    g *= o.g;
    b *= o.b;
    a *= o.a;
    return *this;
}

MColor MColor::operator*(const MColor& o) const
{
    MColor result(*this);
    return result *= o;
}

MColor& MColor::operator/=(float s)
{
    r /= s;
    g /= s;
    b /= s;
    a /= s;
    return *this;
}

MColor MColor::operator/(float s) const
{
    MColor result(*this);
    return result /= s;
}

MColor& MColor::operator+=(const MColor& o)
{
    r += o.r;
    g += o.g;
    b += o.b;
    a += o.a;
    return *this;
}

MColor MColor::operator+(const MColor& o) const
{
    MColor result(*this);
    return result += o;
}

MColor MColor::operator-() const { return MColor(-r, -g, -b, -a); }
MColor MColor::operator-(const MColor& o) const { return MColor(r - o.r, g - o.g, b - o.b, a - o.a); }
bool MColor::operator==(const MColor& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
bool MColor::operator!=(const MColor& o) const { return !(*this == o); }

MColor operator*(float scalar, const MColor& other) { return other * scalar; }

bool MColor::get(float d[3]) const
{
    if (d == nullptr)
        return false;
    d[0] = r;
    d[1] = g;
    d[2] = b;
    return true;
}

bool MColor::get(MColorType colorModel, float& c1, float& c2, float& c3) const
{
    switch (colorModel) {
    case kHSV: rgbToHsv(r, g, b, c1, c2, c3); return true;
    case kCMY:
    case kCMYK:
        c1 = 1.0f - r;
        c2 = 1.0f - g;
        c3 = 1.0f - b;
        return true;
    case kRGB: break;
    }
    c1 = r;
    c2 = g;
    c3 = b;
    return true;
}

bool MColor::get(MColorType colorModel, float& c1, float& c2, float& c3, float& alpha) const
{
    alpha = a;
    return get(colorModel, c1, c2, c3);
}

bool MColor::set(MColorType colorModel, float c1, float c2, float c3, float alpha)
{
    fromModel(colorModel, c1, c2, c3, r, g, b);
    a = alpha;
    return true;
}

std::ostream& operator<<(std::ostream& os, const MColor& c)
{
    return os << '[' << c.r << ", " << c.g << ", " << c.b << ", " << c.a << ']';
}
