#include "store/optionVars.h"

#include <maya/MGlobal.h>

namespace tq {

namespace {

// A span count is what every sarn, redraw and span change sizes its arrays by. The variable
// is the UI's to write, so a value no spin box gives (negative, or millions) would make a
// hang or an allocation past memory: below 1 counts as 1 (as a stored 0 does), above
// kMaxSpans as kMaxSpans.
constexpr int kMaxSpans = 200;

int readSpans(const char* name)
{
    const int spans = optionVarIntOr(name, optionVarDefault::kSpans);
    return spans < 1 ? 1 : spans > kMaxSpans ? kMaxSpans : spans;
}

bool writeSpans(const char* name, int spans) { return MGlobal::setOptionVarValue(name, spans < 1 ? 1 : spans); }

} // namespace

int optionVarIntOr(const MString& name, int fallback)
{
    bool exists = false;
    const int value = MGlobal::optionVarIntValue(name, &exists);
    return exists ? value : fallback;
}

double optionVarDoubleOr(const MString& name, double fallback)
{
    bool exists = false;
    const double value = MGlobal::optionVarDoubleValue(name, &exists);
    return exists ? value : fallback;
}

bool optionVarBoolOr(const MString& name, bool fallback) { return optionVarIntOr(name, fallback ? 1 : 0) == 1; }

int getUSpans() { return readSpans(optionVar::kUSpans); }

int getVSpans() { return readSpans(optionVar::kVSpans); }

bool setUSpans(int spans) { return writeSpans(optionVar::kUSpans, spans); }

bool setVSpans(int spans) { return writeSpans(optionVar::kVSpans, spans); }

bool isGlueOn() { return optionVarIntOr(optionVar::kGlue, 0) != 0; }

bool setGlue(bool on) { return MGlobal::setOptionVarValue(optionVar::kGlue, on ? 1 : 0); }

} // namespace tq
