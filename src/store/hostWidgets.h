#pragma once
// The host widgets the tool touches, reached by object name through MQtUtil at each use.
// The panel that owns them is built by the tool's scripts, not here; a widget that cannot
// be found, or is not of the expected class, is not an error: the action is skipped.

#include <maya/MString.h>

namespace tq {

// Named widgets of the panel.
namespace widget {
constexpr const char* kFreezeButton = "freezeBtn";
constexpr const char* kFreezeMedianButton = "freezeSymBtn";
constexpr const char* kLaunchButton = "tqSarnLaunchBtn";
constexpr const char* kLockedPinchCheck = "lockedPinchChk";
constexpr const char* kPinchSlider = "pinchSlid";
constexpr const char* kBridgeSpin = "bridgeSpin";
} // namespace widget

// Checks or unchecks a button (push button or check box).
void setButtonChecked(const MString& name, bool on);
// Whether a button is checked. A button that cannot be found reads as checked: the pinch
// lock, the one button read, then leaves the stored pinch in charge.
bool isButtonChecked(const MString& name);
// Sets a spin box's value (clamped by the box to its range).
void setSpinValue(const MString& name, int value);
// A slider's value in `value`; false, and `value` untouched, when there is no such slider.
bool readSliderValue(const MString& name, int& value);

} // namespace tq
