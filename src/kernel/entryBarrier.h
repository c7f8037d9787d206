#pragma once
// The barrier around every entry point the host calls (doIt, undoIt, redoIt, compute, the
// event handlers, creators, initialize, callbacks): code inside may throw, nothing crosses
// into the host. An exception becomes
// one error line naming the module and the entry point, and the entry point fails.

#include <maya/MStatus.h>
#include <maya/MString.h>

#include <exception>

namespace tq {

namespace detail {

inline void reportEscapedException(const char* module, const char* entryPoint, const char* what) noexcept
{
    try {
        MString message(entryPoint);
        message += ": ";
        message += what;
        MStatus(MStatus::kFailure).pAPIerror(module, 0, message.asChar());
    } catch (...) {
        // Nothing more can be said; the failed status still tells the host.
    }
}

} // namespace detail

template <class Body>
MStatus guardEntryPoint(const char* module, const char* entryPoint, Body&& body) noexcept
{
    try {
        return body();
    } catch (const std::exception& error) {
        detail::reportEscapedException(module, entryPoint, error.what());
    } catch (...) {
        detail::reportEscapedException(module, entryPoint, "unknown exception");
    }
    return MStatus::kFailure;
}

// For entry points that hand back something other than a status (creators, syntax
// functions): `fallback` when the body throws, which the host takes as a failure.
template <class R, class Body>
R guardValue(const char* module, const char* entryPoint, R fallback, Body&& body) noexcept
{
    try {
        return body();
    } catch (const std::exception& error) {
        detail::reportEscapedException(module, entryPoint, error.what());
    } catch (...) {
        detail::reportEscapedException(module, entryPoint, "unknown exception");
    }
    return fallback;
}

// For callbacks that return nothing (message callbacks).
template <class Body>
void guardCallback(const char* module, const char* entryPoint, Body&& body) noexcept
{
    guardEntryPoint(module, entryPoint, [&]() -> MStatus {
        body();
        return MStatus::kSuccess;
    });
}

} // namespace tq
