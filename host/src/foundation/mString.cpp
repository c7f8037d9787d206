#include <maya/MString.h>

#include <maya/MStringArray.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <ostream>
#include <system_error>

const MString MString::argUnused;

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t cp)
{
    if (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))
        cp = kReplacement;
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

std::string fromWide(const wchar_t* text, std::size_t count)
{
    std::string out;
    out.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        appendUtf8(out, static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(text[i])));
    return out;
}

// Malformed bytes decode to U+FFFD one byte at a time, so any byte string has a decoding.
std::wstring toWide(const std::string& text)
{
    std::wstring out;
    out.reserve(text.size());
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    const std::size_t n = text.size();
    std::size_t i = 0;
    while (i < n) {
        const unsigned char lead = bytes[i];
        int extra = 0;
        char32_t cp = 0;
        char32_t minimum = 0;
        if (lead < 0x80) {
            cp = lead;
        } else if ((lead & 0xE0) == 0xC0) {
            extra = 1;
            cp = lead & 0x1F;
            minimum = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            extra = 2;
            cp = lead & 0x0F;
            minimum = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            extra = 3;
            cp = lead & 0x07;
            minimum = 0x10000;
        } else {
            out += static_cast<wchar_t>(kReplacement);
            ++i;
            continue;
        }
        bool valid = i + static_cast<std::size_t>(extra) < n;
        for (int k = 1; valid && k <= extra; ++k) {
            const unsigned char next = bytes[i + k];
            if ((next & 0xC0) != 0x80)
                valid = false;
            else
                cp = (cp << 6) | (next & 0x3F);
        }
        if (valid && extra > 0 && (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)))
            valid = false;
        if (!valid) {
            out += static_cast<wchar_t>(kReplacement);
            ++i;
            continue;
        }
        out += static_cast<wchar_t>(cp);
        i += 1 + extra;
    }
    return out;
}

std::size_t wideLength(const wchar_t* text)
{
    std::size_t n = 0;
    while (text[n] != 0)
        ++n;
    return n;
}

// The host number rule; see MString.h.
std::string formatDouble(double value)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    if (value == 0.0)
        return "0";
    char buffer[64];
    if (std::fabs(value) < 1e15 && value == std::trunc(value)) {
        const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 0);
        return std::string(buffer, result.ptr);
    }
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 14);
    std::string text(buffer, result.ptr);
    const std::size_t e = text.find('e');
    if (e == std::string::npos || text[e + 1] == '-')
        return text;
    // A positive exponent only appears for magnitudes of 1e14 and up, where the 14
    // significant digits are all in the integer part: write them out and pad with zeros.
    int exponent = 0;
    std::from_chars(text.data() + e + 2, text.data() + text.size(), exponent);
    std::string digits;
    std::string sign;
    for (std::size_t i = 0; i < e; ++i) {
        if (text[i] == '-')
            sign = "-";
        else if (text[i] != '.')
            digits += text[i];
    }
    const std::size_t integerDigits = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() < integerDigits)
        digits.append(integerDigits - digits.size(), '0');
    return sign + digits;
}

std::string formatFixed(double value, int precision)
{
    if (std::isnan(value) || std::isinf(value))
        return formatDouble(value);
    precision = std::clamp(precision, 0, 64);
    std::string buffer(400, '\0');
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, precision);
    buffer.resize(static_cast<std::size_t>(result.ptr - buffer.data()));
    if (buffer.size() > 1 && buffer[0] == '-' && buffer.find_first_not_of("-0.") == std::string::npos)
        buffer.erase(0, 1);
    return buffer;
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; }

std::string_view trimmed(const std::string& text)
{
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    return std::string_view(text).substr(begin, end - begin);
}

// Reads an optionally signed decimal integer at the start of `text`, saturating at the
// limits of long long. `consumed` reports how many characters formed the number.
long long readInteger(std::string_view text, std::size_t& consumed, bool& sawDigits)
{
    std::size_t i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        negative = text[i] == '-';
        ++i;
    }
    const long long limit = std::numeric_limits<long long>::max();
    long long value = 0;
    sawDigits = false;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        sawDigits = true;
        const int digit = text[i] - '0';
        if (value > (limit - digit) / 10)
            value = limit;
        else
            value = value * 10 + digit;
    }
    consumed = sawDigits ? i : 0;
    return negative ? -value : value;
}

bool isWholeInteger(const std::string& text, long long low, long long high)
{
    const std::string_view body = trimmed(text);
    std::size_t consumed = 0;
    bool sawDigits = false;
    const long long value = readInteger(body, consumed, sawDigits);
    return sawDigits && consumed == body.size() && value >= low && value <= high;
}

long long leadingInteger(const std::string& text, long long low, long long high)
{
    std::string_view body(text);
    while (!body.empty() && isBlank(body.front()))
        body.remove_prefix(1);
    std::size_t consumed = 0;
    bool sawDigits = false;
    const long long value = readInteger(body, consumed, sawDigits);
    return std::clamp(value, low, high);
}

// Reads a floating-point number at the start of `text` (after an optional '+'), in the C
// locale. Overflow gives an infinity and underflow zero, as strtod would.
bool readDouble(std::string_view text, double& value, std::size_t& consumed)
{
    std::size_t skip = 0;
    if (!text.empty() && text.front() == '+' && text.size() > 1 && text[1] != '-' && text[1] != '+')
        skip = 1;
    const char* first = text.data() + skip;
    const char* last = text.data() + text.size();
    double parsed = 0.0;
    const auto result = std::from_chars(first, last, parsed, std::chars_format::general);
    if (result.ptr == first)
        return false;
    consumed = static_cast<std::size_t>(result.ptr - text.data());
    if (result.ec == std::errc::result_out_of_range) {
        const std::string_view matched(first, static_cast<std::size_t>(result.ptr - first));
        const std::size_t e = matched.find_first_of("eE");
        const bool underflow = e != std::string_view::npos && e + 1 < matched.size() && matched[e + 1] == '-';
        const bool negative = matched.front() == '-';
        parsed = underflow ? 0.0 : std::numeric_limits<double>::infinity();
        if (negative)
            parsed = -parsed;
    }
    value = parsed;
    return true;
}

bool isWholeDouble(const std::string& text, double& value)
{
    const std::string_view body = trimmed(text);
    std::size_t consumed = 0;
    return readDouble(body, value, consumed) && consumed == body.size() && std::isfinite(value);
}

double leadingDouble(const std::string& text)
{
    std::string_view body(text);
    while (!body.empty() && isBlank(body.front()))
        body.remove_prefix(1);
    double value = 0.0;
    std::size_t consumed = 0;
    return readDouble(body, value, consumed) ? value : 0.0;
}

void splitOn(const std::string& text, const std::string& delimiter, MStringArray& out)
{
    out.clear();
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t next = text.find(delimiter, start);
        if (next == std::string::npos)
            next = text.size();
        if (next > start)
            out.append(MString(text.data() + start, static_cast<int>(next - start)));
        start = next + delimiter.size();
    }
}

std::string expandVariables(const std::string& text)
{
    std::string out;
    std::size_t i = 0;
    if (!text.empty() && text[0] == '~' && (text.size() == 1 || text[1] == '/')) {
        if (const char* home = std::getenv("HOME")) {
            out = home;
            i = 1;
        }
    }
    auto isNameChar = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; };
    while (i < text.size()) {
        if (text[i] != '$') {
            out += text[i++];
            continue;
        }
        std::size_t nameBegin = i + 1;
        std::size_t nameEnd = nameBegin;
        std::size_t after = nameBegin;
        if (nameBegin < text.size() && text[nameBegin] == '{') {
            const std::size_t close = text.find('}', nameBegin + 1);
            if (close == std::string::npos) {
                out += text[i++];
                continue;
            }
            nameBegin += 1;
            nameEnd = close;
            after = close + 1;
        } else {
            while (nameEnd < text.size() && isNameChar(text[nameEnd]))
                ++nameEnd;
            after = nameEnd;
        }
        const std::string name = text.substr(nameBegin, nameEnd - nameBegin);
        const char* value = name.empty() ? nullptr : std::getenv(name.c_str());
        if (value != nullptr)
            out += value;
        else
            out.append(text, i, after - i);
        i = after;
    }
    return out;
}

// Replaces each "^Ns" for which `lookup(N, out)` appends an argument; others stay as written.
template <typename Lookup>
std::string applyFormat(const std::string& fmt, Lookup lookup)
{
    std::string out;
    std::size_t i = 0;
    while (i < fmt.size()) {
        if (fmt[i] == '^') {
            std::size_t j = i + 1;
            int number = 0;
            while (j < fmt.size() && j - i <= 3 && fmt[j] >= '0' && fmt[j] <= '9')
                number = number * 10 + (fmt[j++] - '0');
            if (j > i + 1 && j < fmt.size() && fmt[j] == 's' && lookup(number, out)) {
                i = j + 1;
                continue;
            }
        }
        out += fmt[i++];
    }
    return out;
}

} // namespace

MString::MString() = default;

MString::MString(const char* charString)
    : fText(charString != nullptr ? charString : "")
{
}

MString::MString(const wchar_t* charString)
    : fText(charString != nullptr ? fromWide(charString, wideLength(charString)) : std::string())
{
}

MString::MString(const char* charString, int charLength)
{
    set(charString, charLength);
}

MString::MString(const wchar_t* charString, int wcharLength)
{
    setWChar(charString, wcharLength);
}

MString::MString(const MString& other)
    : fText(other.fText)
{
}

MString::MString(MString&& other) noexcept
    : fText(std::move(other.fText))
{
    other.fText.clear();
    other.fWideValid = false;
}

MString::~MString() = default;

void MString::invalidateWide() { fWideValid = false; }

MString& MString::operator+=(const MString& other)
{
    fText += other.fText;
    invalidateWide();
    return *this;
}

MString& MString::operator+=(const char* other)
{
    if (other != nullptr)
        fText += other;
    invalidateWide();
    return *this;
}

MString& MString::operator+=(char other)
{
    fText += other;
    invalidateWide();
    return *this;
}

MString& MString::operator+=(double other)
{
    fText += formatDouble(other);
    invalidateWide();
    return *this;
}

MString& MString::operator+=(int other)
{
    fText += std::to_string(other);
    invalidateWide();
    return *this;
}

MString& MString::operator+=(unsigned int other)
{
    fText += std::to_string(other);
    invalidateWide();
    return *this;
}

MString& MString::operator+=(float other) { return *this += static_cast<double>(other); }

MString& MString::operator=(const MString& other)
{
    if (this != &other) {
        fText = other.fText;
        invalidateWide();
    }
    return *this;
}

MString& MString::operator=(MString&& other) noexcept
{
    if (this != &other) {
        fText = std::move(other.fText);
        other.fText.clear();
        other.fWideValid = false;
        invalidateWide();
    }
    return *this;
}

MString& MString::operator=(const char* other)
{
    set(other);
    return *this;
}

MString& MString::operator=(double value)
{
    set(value);
    return *this;
}

bool MString::operator==(const MString& other) const { return fText == other.fText; }
bool MString::operator==(const char* other) const { return fText == (other != nullptr ? other : ""); }
bool MString::operator!=(const MString& other) const { return !(*this == other); }
bool MString::operator!=(const char* other) const { return !(*this == other); }
bool MString::operator<(const MString& other) const { return fText < other.fText; }
bool MString::operator>(const MString& other) const { return fText > other.fText; }

MString MString::operator+(const MString& other) const
{
    MString result(*this);
    result += other;
    return result;
}

MString MString::operator+(const char* other) const
{
    MString result(*this);
    result += other;
    return result;
}

MString MString::operator+(double value) const
{
    MString result(*this);
    result += value;
    return result;
}

MString operator+(const char* left, const MString& right)
{
    MString result(left);
    result += right;
    return result;
}

MStatus MString::set(const char* charString)
{
    fText = charString != nullptr ? charString : "";
    invalidateWide();
    return MStatus::kSuccess;
}

MStatus MString::setUTF8(const char* utf8String) { return set(utf8String); }

MStatus MString::setWChar(const wchar_t* wcharString)
{
    fText = wcharString != nullptr ? fromWide(wcharString, wideLength(wcharString)) : std::string();
    invalidateWide();
    return MStatus::kSuccess;
}

MStatus MString::set(const char* charString, int charLength)
{
    invalidateWide();
    if (charString == nullptr) {
        fText.clear();
        return charLength > 0 ? MStatus::kInvalidParameter : MStatus::kSuccess;
    }
    if (charLength < 0)
        fText = charString;
    else
        fText.assign(charString, static_cast<std::size_t>(charLength));
    return MStatus::kSuccess;
}

MStatus MString::setWChar(const wchar_t* wcharString, int wcharLength)
{
    invalidateWide();
    if (wcharString == nullptr) {
        fText.clear();
        return wcharLength > 0 ? MStatus::kInvalidParameter : MStatus::kSuccess;
    }
    const std::size_t count = wcharLength < 0 ? wideLength(wcharString) : static_cast<std::size_t>(wcharLength);
    fText = fromWide(wcharString, count);
    return MStatus::kSuccess;
}

MStatus MString::set(double value)
{
    fText = formatDouble(value);
    invalidateWide();
    return MStatus::kSuccess;
}

MStatus MString::set(double value, int precision)
{
    fText = formatFixed(value, precision);
    invalidateWide();
    return MStatus::kSuccess;
}

const char* MString::asChar() const { return fText.c_str(); }

const char* MString::asChar(int& charLength) const
{
    charLength = static_cast<int>(fText.size());
    return fText.c_str();
}

const char* MString::asUTF8() const { return fText.c_str(); }

const char* MString::asUTF8(int& utf8Length) const { return asChar(utf8Length); }

const wchar_t* MString::asWChar() const
{
    if (!fWideValid) {
        fWide = toWide(fText);
        fWideValid = true;
    }
    return fWide.c_str();
}

const wchar_t* MString::asWChar(int& numChars) const
{
    const wchar_t* wide = asWChar();
    numChars = static_cast<int>(fWide.size());
    return wide;
}

unsigned int MString::length() const { return static_cast<unsigned int>(fText.size()); }

unsigned int MString::numChars() const
{
    asWChar();
    return static_cast<unsigned int>(fWide.size());
}

bool MString::isEmpty() const { return fText.empty(); }

void MString::clear()
{
    fText.clear();
    invalidateWide();
}

int MString::index(char c) const
{
    const std::size_t at = fText.find(c);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int MString::rindex(char c) const
{
    const std::size_t at = fText.rfind(c);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

int MString::indexW(char c) const
{
    // A byte of 0x80 and up is never a whole character on its own in UTF-8.
    if (static_cast<unsigned char>(c) >= 0x80)
        return -1;
    return indexW(static_cast<wchar_t>(c));
}

int MString::indexW(wchar_t c) const
{
    asWChar();
    const std::size_t at = fWide.find(c);
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int MString::indexW(const MString& text) const
{
    if (text.isEmpty())
        return -1;
    asWChar();
    const std::size_t at = fWide.find(text.asWChar());
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int MString::rindexW(char c) const
{
    if (static_cast<unsigned char>(c) >= 0x80)
        return -1;
    return rindexW(static_cast<wchar_t>(c));
}

int MString::rindexW(wchar_t c) const
{
    asWChar();
    const std::size_t at = fWide.rfind(c);
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int MString::rindexW(const MString& text) const
{
    if (text.isEmpty())
        return -1;
    asWChar();
    const std::size_t at = fWide.rfind(text.asWChar());
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

MStatus MString::split(char delimiter, MStringArray& out) const
{
    splitOn(fText, std::string(1, delimiter), out);
    return MStatus::kSuccess;
}

MStatus MString::split(wchar_t delimiter, MStringArray& out) const
{
    std::string encoded;
    appendUtf8(encoded, static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(delimiter)));
    splitOn(fText, encoded, out);
    return MStatus::kSuccess;
}

MString MString::substring(int start, int end) const
{
    const int size = static_cast<int>(fText.size());
    start = std::max(start, 0);
    end = std::min(end, size - 1);
    if (start > end)
        return MString();
    return MString(fText.data() + start, end - start + 1);
}

MString MString::substringW(int start, int end) const
{
    asWChar();
    const int size = static_cast<int>(fWide.size());
    start = std::max(start, 0);
    end = std::min(end, size - 1);
    if (start > end)
        return MString();
    return MString(fWide.data() + start, end - start + 1);
}

MString& MString::toUpperCase()
{
    for (char& c : fText)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    invalidateWide();
    return *this;
}

MString& MString::toLowerCase()
{
    for (char& c : fText)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    invalidateWide();
    return *this;
}

bool MString::isShort() const { return isWholeInteger(fText, SHRT_MIN, SHRT_MAX); }
short MString::asShort() const { return static_cast<short>(leadingInteger(fText, SHRT_MIN, SHRT_MAX)); }
bool MString::isInt() const { return isWholeInteger(fText, INT_MIN, INT_MAX); }
int MString::asInt() const { return static_cast<int>(leadingInteger(fText, INT_MIN, INT_MAX)); }
bool MString::isUnsigned() const { return isWholeInteger(fText, 0, UINT_MAX); }
unsigned int MString::asUnsigned() const { return static_cast<unsigned int>(leadingInteger(fText, 0, UINT_MAX)); }

bool MString::isFloat() const
{
    double value = 0.0;
    return isWholeDouble(fText, value) && std::fabs(value) <= std::numeric_limits<float>::max();
}

float MString::asFloat() const { return static_cast<float>(leadingDouble(fText)); }

bool MString::isDouble() const
{
    double value = 0.0;
    return isWholeDouble(fText, value);
}

double MString::asDouble() const { return leadingDouble(fText); }

MString MString::expandEnvironmentVariablesAndTilde(MStatus* ReturnStatus) const
{
    if (ReturnStatus != nullptr)
        *ReturnStatus = MStatus::kSuccess;
    const std::string expanded = expandVariables(fText);
    return MString(expanded.data(), static_cast<int>(expanded.size()));
}

MString MString::expandFilePath(MStatus* ReturnStatus) const
{
    return expandEnvironmentVariablesAndTilde(ReturnStatus);
}

MStatus MString::format(const MString& fmt, const MStringArray& args)
{
    const std::string result = applyFormat(fmt.fText, [&args](int n, std::string& out) {
        if (n < 1 || static_cast<unsigned int>(n) > args.length())
            return false;
        const MString arg = args[static_cast<unsigned int>(n - 1)];
        int size = 0;
        const char* text = arg.asChar(size);
        out.append(text, static_cast<std::size_t>(size));
        return true;
    });
    fText = result;
    invalidateWide();
    return MStatus::kSuccess;
}

MStatus MString::format(const MString& fmt,
                        const MString& arg1,
                        const MString& arg2,
                        const MString& arg3,
                        const MString& arg4,
                        const MString& arg5,
                        const MString& arg6,
                        const MString& arg7,
                        const MString& arg8,
                        const MString& arg9,
                        const MString& arg10)
{
    const MString* args[] = {&arg1, &arg2, &arg3, &arg4, &arg5, &arg6, &arg7, &arg8, &arg9, &arg10};
    const std::string result = applyFormat(fmt.fText, [&args](int n, std::string& out) {
        if (n < 1 || n > 10 || args[n - 1] == &argUnused)
            return false;
        out += args[n - 1]->fText;
        return true;
    });
    fText = result;
    invalidateWide();
    return MStatus::kSuccess;
}

MStatus MString::substitute(const MString& src, const MString& target)
{
    if (src.isEmpty())
        return MStatus::kInvalidParameter;
    const std::string from = src.fText;
    const std::string to = target.fText;
    std::string out;
    std::size_t start = 0;
    for (std::size_t at = fText.find(from); at != std::string::npos; at = fText.find(from, start)) {
        out.append(fText, start, at - start);
        out += to;
        start = at + from.size();
    }
    out.append(fText, start, std::string::npos);
    fText = std::move(out);
    invalidateWide();
    return MStatus::kSuccess;
}

MStatus MString::substituteFirst(const MString& src, const MString& target)
{
    if (src.isEmpty())
        return MStatus::kInvalidParameter;
    const std::size_t at = fText.find(src.fText);
    if (at != std::string::npos) {
        fText.replace(at, src.fText.size(), target.fText);
        invalidateWide();
    }
    return MStatus::kSuccess;
}

std::ostream& operator<<(std::ostream& os, const MString& text) { return os << text.fText; }
