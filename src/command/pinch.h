#pragma once
// Pinch of a band: the second edge loop from each end of a band moves towards that end by a
// fraction of a step, which tightens the quads at the band's borders. Only those two loops
// move; the loops between them stay evenly spaced.

namespace tq {

// Where the two loops of quad k of a band stand, as shifts in steps added to their even
// places k and k + 1: `start` for the loop at k, `end` for the loop at k + 1.
struct LoopShifts {
    double start = 0.0;
    double end = 0.0;
};

// The pinch a band of `bandSpans` quads gets: the panel's or the store's value (getPinch),
// read once per call; 0 for a band of fewer than 4 spans, which has no inner loop to spare.
double bandPinch(unsigned int bandSpans);

// The shifts of quad `k` (0 to bandSpans - 1) of a band pinched by `pinch`. Loop 1 moves by
// -pinch and loop bandSpans - 1 by +pinch, and both quads that share a moved loop get the
// same shift for it, so their corners meet. Quads 0 and 1 take precedence over the end pair,
// which a band of fewer than 4 spans would otherwise also match (such bands have pinch 0).
LoopShifts pinchShifts(unsigned int k, unsigned int bandSpans, double pinch);

} // namespace tq
