#pragma once
// The tool's settings: the host's option variables. The program creates none of them except
// through the setters here and the info lines; the panel's scripts write the rest. A
// variable that does not exist reads as the default its caller gives.

#include <maya/MString.h>

namespace tq {

namespace optionVar {
constexpr const char* kUSpans = "tq_uspan";
constexpr const char* kVSpans = "tq_vspan";
constexpr const char* kGlue = "tq_glue";
constexpr const char* kBridgeDivisions = "tq_bdiv";
constexpr const char* kRelaxIntensity = "tq_sarnIntens";
constexpr const char* kRelaxRadius = "tq_sarnRadius";
constexpr const char* kMoveRadius = "tq_sarnTweakR";
constexpr const char* kBackFaceCulling = "tq_sarnBackFace";
constexpr const char* kLazyActive = "tq_lazyActive";
constexpr const char* kLazyStrength = "tq_lazyStrength";
constexpr const char* kLazyDistance = "tq_lazyDistance";
constexpr const char* kDistanceSnap = "tq_distancesnap";
constexpr const char* kMergeThreshold = "tq_mergThreshold";
constexpr const char* kDepthPriority = "tqCutDp";
constexpr const char* kInfo1 = "tqSarn_info1";
constexpr const char* kInfo2 = "tqSarn_info2";
} // namespace optionVar

// Defaults of the variables whose default is the same wherever they are read. `tq_bdiv` has
// none: its readers differ (1 when a bridge is made, 0 in the previews).
namespace optionVarDefault {
constexpr int kSpans = 12;
constexpr double kRelaxIntensity = 50.0;
constexpr double kRelaxRadius = 50.0;
constexpr int kMoveRadius = 50;
constexpr bool kBackFaceCulling = true;
constexpr bool kLazyActive = false;
constexpr int kLazyStrength = 1;
constexpr int kLazyDistance = 1;
constexpr double kDistanceSnap = 100.0;
constexpr double kMergeThreshold = 0.001;
constexpr double kDepthPriority = 2.5;
} // namespace optionVarDefault

// The stored value, or `fallback` when the variable does not exist.
int optionVarIntOr(const MString& name, int fallback);
double optionVarDoubleOr(const MString& name, double fallback);
// An int read with `fallback` as 1 or 0; true only for the value 1, so a stored 2 is false.
bool optionVarBoolOr(const MString& name, bool fallback);

// Spans along and across the sarn; 12 when unset, and a stored 0 counts as 1.
int getUSpans();
int getVSpans();
// Store a span count, a value below 1 as 1. False when the host refused the write.
bool setUSpans(int spans);
bool setVSpans(int spans);

// Strokes snap to source vertices while `tq_glue` exists and is not 0.
bool isGlueOn();
bool setGlue(bool on);

} // namespace tq
