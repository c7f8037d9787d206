#include "command/pinch.h"

#include "store/storeReads.h"

namespace tq {

namespace {

constexpr unsigned int kFewestPinchedSpans = 4;

} // namespace

double bandPinch(unsigned int bandSpans)
{
    return bandSpans < kFewestPinchedSpans ? 0.0 : getPinch();
}

LoopShifts pinchShifts(unsigned int k, unsigned int bandSpans, double pinch)
{
    LoopShifts shifts;
    if (k == 0) {
        shifts.end = -pinch;
    } else if (k == 1) {
        shifts.start = -pinch;
    } else if (k + 2 == bandSpans) {
        shifts.end = pinch;
    } else if (k + 1 == bandSpans) {
        shifts.start = pinch;
    }
    return shifts;
}

} // namespace tq
