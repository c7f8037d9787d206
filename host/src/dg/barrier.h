#pragma once
// The exception barrier: every call from the host into plug-in code goes through it. A
// throw becomes an error line naming the callback and a failed status; the host never
// unwinds through a plug-in, and a plug-in never sees a host exception.

#include <maya/MStatus.h>

#include <exception>
#include <string>

namespace host {

void reportCallbackException(const std::string& callback, const char* what);

template <class F>
MStatus guardedStatus(const std::string& callback, F&& f)
{
    try {
        return f();
    } catch (const std::exception& e) {
        reportCallbackException(callback, e.what());
    } catch (...) {
        reportCallbackException(callback, nullptr);
    }
    return MStatus(MStatus::kFailure);
}

// For callbacks that return something other than a status: `fallback` on a throw.
template <class R, class F>
R guarded(const std::string& callback, R fallback, F&& f)
{
    try {
        return f();
    } catch (const std::exception& e) {
        reportCallbackException(callback, e.what());
    } catch (...) {
        reportCallbackException(callback, nullptr);
    }
    return fallback;
}

template <class F>
bool guardedVoid(const std::string& callback, F&& f)
{
    try {
        f();
        return true;
    } catch (const std::exception& e) {
        reportCallbackException(callback, e.what());
    } catch (...) {
        reportCallbackException(callback, nullptr);
    }
    return false;
}

} // namespace host
