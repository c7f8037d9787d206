#pragma once
// MEvent: one interaction event delivered to the active context: the pointer position in
// port pixels (origin bottom left, y up), the mouse button of the gesture and the modifier
// keys held when the event happened.

#include <maya/MStatus.h>

namespace host {
class ToolAccess;
}

class MEvent {
public:
    enum ModifierType { shiftKey = 1 << 0, controlKey = 1 << 2 };
    enum MouseButtonType { kLeftMouse = 1 << 6, kMiddleMouse = kLeftMouse << 1 };

    MEvent();
    virtual ~MEvent();

    MStatus getPosition(short& x_pos, short& y_pos) const;
    MStatus setPosition(short x_pos, short y_pos);
    MStatus getWindowPosition(short& x_pos, short& y_pos) const;
    MouseButtonType mouseButton(MStatus* ReturnStatus = nullptr) const;
    bool isModifierKeyRelease(MStatus* ReturnStatus = nullptr) const;
    ModifierType modifiers(MStatus* ReturnStatus = nullptr) const;
    MStatus setModifiers(const ModifierType& modType);
    bool isModifierNone(MStatus* ReturnStatus = nullptr) const;
    bool isModifierShift(MStatus* ReturnStatus = nullptr) const;
    bool isModifierControl(MStatus* ReturnStatus = nullptr) const;
    bool isModifierLeftMouseButton(MStatus* ReturnStatus = nullptr) const;
    bool isModifierMiddleMouseButton(MStatus* ReturnStatus = nullptr) const;

    static const char* className();

private:
    friend class host::ToolAccess;
    short fX = 0;
    short fY = 0;
    int fButton = 0;    // a MouseButtonType, or 0 when no button takes part
    int fModifiers = 0; // ModifierType bits
    int fOtherButtons = 0; // buttons held besides fButton
};
