#include <maya/MEvent.h>

namespace {

void ok(MStatus* status)
{
    if (status)
        *status = MStatus::kSuccess;
}

} // namespace

MEvent::MEvent() = default;
MEvent::~MEvent() = default;

MStatus MEvent::getPosition(short& x_pos, short& y_pos) const
{
    x_pos = fX;
    y_pos = fY;
    return MStatus::kSuccess;
}

MStatus MEvent::setPosition(short x_pos, short y_pos)
{
    fX = x_pos;
    fY = y_pos;
    return MStatus::kSuccess;
}

MStatus MEvent::getWindowPosition(short& x_pos, short& y_pos) const { return getPosition(x_pos, y_pos); }

MEvent::MouseButtonType MEvent::mouseButton(MStatus* ReturnStatus) const
{
    if (ReturnStatus)
        *ReturnStatus = fButton ? MStatus::kSuccess : MStatus::kFailure;
    return MouseButtonType(fButton);
}

bool MEvent::isModifierKeyRelease(MStatus* ReturnStatus) const
{
    ok(ReturnStatus);
    return false;
}

MEvent::ModifierType MEvent::modifiers(MStatus* ReturnStatus) const
{
    ok(ReturnStatus);
    return ModifierType(fModifiers);
}

MStatus MEvent::setModifiers(const ModifierType& modType)
{
    fModifiers = int(modType) & (shiftKey | controlKey);
    return MStatus::kSuccess;
}

bool MEvent::isModifierNone(MStatus* ReturnStatus) const
{
    ok(ReturnStatus);
    return fModifiers == 0 && fOtherButtons == 0;
}

bool MEvent::isModifierShift(MStatus* ReturnStatus) const
{
    ok(ReturnStatus);
    return (fModifiers & shiftKey) != 0;
}

bool MEvent::isModifierControl(MStatus* ReturnStatus) const
{
    ok(ReturnStatus);
    return (fModifiers & controlKey) != 0;
}

bool MEvent::isModifierLeftMouseButton(MStatus* ReturnStatus) const
{
    ok(ReturnStatus);
    return (fOtherButtons & kLeftMouse) != 0;
}

bool MEvent::isModifierMiddleMouseButton(MStatus* ReturnStatus) const
{
    ok(ReturnStatus);
    return (fOtherButtons & kMiddleMouse) != 0;
}

const char* MEvent::className() { return "MEvent"; }
