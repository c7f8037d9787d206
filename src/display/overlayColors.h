#pragma once
// The overlay's named colours. Deliberate: each is a base colour times 2.20022, alpha
// included, passed to the draw manager as it stands (values above 1); the look of the
// overlay depends on it.

#include <maya/MColor.h>

namespace tq::overlay {

constexpr float kGain = 2.20022f;

inline MColor named(float r, float g, float b) { return MColor(r * kGain, g * kGain, b * kGain, kGain); }

inline const MColor kGoldenYellow = named(0.77f, 0.77f, 0.12f);
inline const MColor kCobalt = named(0.21f, 0.25f, 0.9f);
inline const MColor kCrimson = named(0.77f, 0.2f, 0.2f);
inline const MColor kMagenta = named(1.0f, 0.1f, 0.9f);
inline const MColor kSilver = named(0.7f, 0.7f, 0.74f);
inline const MColor kMidGrey = named(0.5f, 0.5f, 0.54f);
inline const MColor kSlate = named(0.2f, 0.2f, 0.24f);
inline const MColor kOrange = named(1.0f, 0.3f, 0.2f);
inline const MColor kOlive = named(0.4f, 0.4f, 0.1f);
inline const MColor kNearBlack = named(0.05f, 0.05f, 0.05f);
inline const MColor kDeepRed = named(0.703f, 0.05f, 0.0625f);
inline const MColor kLime = named(0.61f, 1.0f, 0.1f);

} // namespace tq::overlay
