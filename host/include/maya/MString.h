#pragma once
// A string class holding UTF-8 text. All char-based members (asChar, length, index,
// substring, split) work on UTF-8 bytes; the W members work on characters (code points).
//
// Numbers appended or assigned as text follow one host-wide rule, so results are
// reproducible across machines and locales (the decimal separator is always '.'):
//   - int and unsigned int are written in decimal.
//   - float is widened to double first, then written as a double; so 0.1f becomes
//     "0.10000000149012" (the widened value at 14 significant digits).
//   - A double is written with up to 14 significant digits, like printf("%.14g"), except
//     that it never uses a positive exponent: 3.0 -> "3", 2.5 -> "2.5", 0.1 -> "0.1",
//     1e20 -> "100000000000000000000". Whole numbers below 1e15 in magnitude are written
//     exactly ("123456789012345"); beyond that they are rounded to 14 significant digits
//     and padded with zeros. Small magnitudes keep the %g exponent (1e-05 -> "1e-05").
//   - -0.0 is written "0"; infinities "inf" / "-inf"; NaN "nan".

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>
#include <string>

class MStringArray;

class MString
{
public:
    // Null pointers give an empty string; a negative length reads up to the terminating null.
    MString();
    MString(const char* charString);
    MString(const wchar_t* charString);
    MString(const char* charString, int charLength);
    MString(const wchar_t* charString, int wcharLength);
    MString(const MString& other);
    MString(MString&& other) noexcept;
    ~MString();

    MString& operator+=(const MString& other);
    MString& operator+=(const char* other);
    MString& operator+=(char other);
    MString& operator+=(double other);
    MString& operator+=(int other);
    MString& operator+=(unsigned int other);
    MString& operator+=(float other);
    MString& operator=(const MString& other);
    MString& operator=(MString&& other) noexcept;
    MString& operator=(const char* other);
    MString& operator=(double value);
    bool operator==(const MString& other) const;
    bool operator==(const char* other) const;
    bool operator!=(const MString& other) const;
    bool operator!=(const char* other) const;
    // Byte-wise ordering, so MString can key ordered containers.
    bool operator<(const MString& other) const;
    bool operator>(const MString& other) const;
    MString operator+(const MString& other) const;
    MString operator+(const char* other) const;
    MString operator+(double value) const;

    MStatus set(const char* charString);
    MStatus setUTF8(const char* utf8String);
    MStatus setWChar(const wchar_t* wcharString);
    MStatus set(const char* charString, int charLength);
    MStatus setWChar(const wchar_t* wcharString, int wcharLength);
    MStatus set(double value);
    // Fixed notation with `precision` digits after the decimal point (clamped to 0..64).
    MStatus set(double value, int precision);

    const char* asChar() const;
    const char* asChar(int& charLength) const;
    const char* asUTF8() const;
    const char* asUTF8(int& utf8Length) const;
    const wchar_t* asWChar() const;
    const wchar_t* asWChar(int& numChars) const;
    // Bytes of the UTF-8 text.
    unsigned int length() const;
    // Characters (code points).
    unsigned int numChars() const;
    bool isEmpty() const;
    void clear();

    // Byte positions, or -1 when absent.
    int index(char) const;
    int rindex(char) const;
    // Character positions, or -1 when absent.
    int indexW(char) const;
    int indexW(wchar_t) const;
    int indexW(const MString&) const;
    int rindexW(char) const;
    int rindexW(wchar_t) const;
    int rindexW(const MString&) const;

    // Replaces the array's contents with the pieces between delimiters; empty pieces
    // (from leading, trailing or repeated delimiters) are left out.
    MStatus split(char, MStringArray&) const;
    MStatus split(wchar_t, MStringArray&) const;
    // Inclusive byte range [start, end]; clipped to the string, empty when start > end.
    MString substring(int start, int end) const;
    // Inclusive character range, clipped like substring.
    MString substringW(int start, int end) const;
    // ASCII letters only; other characters are left as they are.
    MString& toUpperCase();
    MString& toLowerCase();

    // The is* tests accept the whole string only (surrounding blanks allowed); the as*
    // conversions read a leading number, saturate at the type's limits, and give 0 when
    // there is none.
    bool isShort() const;
    short asShort() const;
    bool isInt() const;
    int asInt() const;
    bool isUnsigned() const;
    unsigned int asUnsigned() const;
    bool isFloat() const;
    float asFloat() const;
    bool isDouble() const;
    double asDouble() const;

    // Expands $NAME and ${NAME} from the environment (unset names are left as written) and a
    // leading "~" to $HOME.
    MString expandEnvironmentVariablesAndTilde(MStatus* ReturnStatus = NULL) const;
    MString expandFilePath(MStatus* ReturnStatus = NULL) const;

    // Sets this string to fmt with each "^Ns" (N = 1..10) replaced by the Nth argument.
    // Placeholders naming an argument that was not supplied are left as written.
    MStatus format(const MString& fmt, const MStringArray& args);
    MStatus format(const MString& fmt,
                   const MString& arg1 = MString::argUnused,
                   const MString& arg2 = MString::argUnused,
                   const MString& arg3 = MString::argUnused,
                   const MString& arg4 = MString::argUnused,
                   const MString& arg5 = MString::argUnused,
                   const MString& arg6 = MString::argUnused,
                   const MString& arg7 = MString::argUnused,
                   const MString& arg8 = MString::argUnused,
                   const MString& arg9 = MString::argUnused,
                   const MString& arg10 = MString::argUnused);
    // Replace every (or the first) occurrence of src by target; an empty src is rejected.
    MStatus substitute(const MString& src, const MString& target);
    MStatus substituteFirst(const MString& src, const MString& target);

    friend std::ostream& operator<<(std::ostream&, const MString&);
    friend MString operator+(const char*, const MString&);

private:
    void invalidateWide();

    std::string fText;
    mutable std::wstring fWide;
    mutable bool fWideValid = false;

    // Marks a format() argument as not supplied; compared by address only.
    static const MString argUnused;
};
