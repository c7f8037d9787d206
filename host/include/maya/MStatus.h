#pragma once
// Result of an API call: a status code plus a success flag. Failures are reported to the
// host log by perror(), pAPIerror() and the CHECK_MSTATUS family of macros.

#include <maya/MTypes.h>

#include <iosfwd>

class MString;

class MStatus
{
public:
    enum MStatusCode {
        kSuccess = 0,
        kFailure,
        kInsufficientMemory,
        kInvalidParameter,
        kLicenseFailure,
        kUnknownParameter,
        kNotImplemented,
        kNotFound,
        kEndOfFile
    };

    MStatus();
    MStatus(MStatusCode);
    MStatus(const MStatus&);

    MStatus& operator=(const MStatus& rhs);
    bool operator==(const MStatus& rhs) const;
    bool operator==(const MStatusCode rhs) const;
    bool operator!=(const MStatus& rhs) const;
    bool operator!=(const MStatusCode rhs) const;
    bool error() const;
    void clear();
    MStatusCode statusCode() const;
    MString errorString() const;

    // Both write "<message>: <errorString>" (just the errorString when the message is empty)
    // to the host log as an error.
    void perror(const char*) const;
    void perror(const MString&) const;

    // Writes one error line to the host log, naming the source location:
    //   "API error at <file>:<line>: <errorString>"
    //   "API error at <file>:<line>: <message>: <errorString>"
    // where <errorString> reads like "(kInvalidParameter): Invalid parameter".
    void pAPIerror(const char* file, int line) const;
    void pAPIerror(const char* file, int line, const char* message) const;

    // For the host's own use, as in the devkit; codes outside MStatusCode become kFailure.
    void set(bool status, unsigned char statusCode, unsigned char internalStatusCode);
    void setSuccess();

    operator bool() const { return fStatus; }

    friend std::ostream& operator<<(std::ostream&, MStatus&);
    friend inline bool operator==(const MStatus::MStatusCode code, const MStatus& status)
    {
        return status.fStatusCode == code;
    }
    friend inline bool operator!=(const MStatus::MStatusCode code, const MStatus& status)
    {
        return status.fStatusCode != code;
    }

private:
    MStatusCode fStatusCode;
    unsigned char fInternalStatusCode;
    bool fStatus;
};

inline MStatus::MStatus()
    : fStatusCode(kSuccess)
    , fInternalStatusCode(0xff)
    , fStatus(true)
{
}

inline MStatus::MStatus(MStatusCode code)
    : fStatusCode(code)
    , fInternalStatusCode(0xff)
    , fStatus(code == kSuccess)
{
}

inline MStatus::MStatus(const MStatus& other) = default;
inline MStatus& MStatus::operator=(const MStatus& rhs) = default;

inline bool MStatus::operator==(const MStatus& rhs) const { return fStatusCode == rhs.fStatusCode; }
inline bool MStatus::operator==(const MStatusCode rhs) const { return fStatusCode == rhs; }
inline bool MStatus::operator!=(const MStatus& rhs) const { return fStatusCode != rhs.fStatusCode; }
inline bool MStatus::operator!=(const MStatusCode rhs) const { return fStatusCode != rhs; }
inline bool MStatus::error() const { return !fStatus; }
inline MStatus::MStatusCode MStatus::statusCode() const { return fStatusCode; }

inline void MStatus::clear()
{
    fStatusCode = kSuccess;
    fInternalStatusCode = 0xff;
    fStatus = true;
}

inline void MStatus::setSuccess() { clear(); }

inline void MStatus::set(bool status, unsigned char statusCode, unsigned char internalStatusCode)
{
    fStatus = status;
    fStatusCode = statusCode <= kEndOfFile ? static_cast<MStatusCode>(statusCode) : kFailure;
    fInternalStatusCode = internalStatusCode;
}

// Plug-in code writes MS::kSuccess and MS::MStatusCode.
namespace MS {
using MStatusCode = MStatus::MStatusCode;
inline constexpr MStatusCode kSuccess = MStatus::kSuccess;
inline constexpr MStatusCode kFailure = MStatus::kFailure;
inline constexpr MStatusCode kInsufficientMemory = MStatus::kInsufficientMemory;
inline constexpr MStatusCode kInvalidParameter = MStatus::kInvalidParameter;
inline constexpr MStatusCode kLicenseFailure = MStatus::kLicenseFailure;
inline constexpr MStatusCode kUnknownParameter = MStatus::kUnknownParameter;
inline constexpr MStatusCode kNotImplemented = MStatus::kNotImplemented;
inline constexpr MStatusCode kNotFound = MStatus::kNotFound;
inline constexpr MStatusCode kEndOfFile = MStatus::kEndOfFile;
} // namespace MS

// The checking macros log through pAPIerror, so a failure shows up in the host log with the
// plug-in's file and line. They keep the devkit's brace-block shape (no do/while) because
// plug-in code sometimes uses them without a trailing semicolon.
#define CHECK_MSTATUS_AND_RETURN(_status, _retVal)          \
    {                                                       \
        MStatus _maya_status = (_status);                   \
        if (MStatus::kSuccess != _maya_status) {            \
            _maya_status.pAPIerror(__FILE__, __LINE__);     \
            return (_retVal);                               \
        }                                                   \
    }

// Evaluates its argument once and returns the captured status.
#define CHECK_MSTATUS_AND_RETURN_IT(_status)                \
    {                                                       \
        MStatus _maya_status = (_status);                   \
        if (MStatus::kSuccess != _maya_status) {            \
            _maya_status.pAPIerror(__FILE__, __LINE__);     \
            return _maya_status;                            \
        }                                                   \
    }

#define CHECK_MSTATUS(_status)                              \
    {                                                       \
        MStatus _maya_status = (_status);                   \
        if (MStatus::kSuccess != _maya_status) {            \
            _maya_status.pAPIerror(__FILE__, __LINE__);     \
        }                                                   \
    }

#define MFAIL(_status) (MStatus::kSuccess != (_status))
