#include "store/hostWidgets.h"

#include <maya/MQtUtil.h>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QWidget>

namespace tq {

namespace {

// The control of that name as a `T`, or null. QMetaObject::cast checks the class through
// Qt's own type information, which holds across the host's library boundary.
template <class T>
T* findAs(const MString& name)
{
    QWidget* control = MQtUtil::findControl(name);
    if (!control)
        return nullptr;
    return static_cast<T*>(T::staticMetaObject.cast(control));
}

} // namespace

void setButtonChecked(const MString& name, bool on)
{
    if (QAbstractButton* button = findAs<QAbstractButton>(name))
        button->setChecked(on);
}

bool isButtonChecked(const MString& name)
{
    QAbstractButton* button = findAs<QAbstractButton>(name);
    return !button || button->isChecked();
}

void setSpinValue(const MString& name, int value)
{
    if (QSpinBox* spin = findAs<QSpinBox>(name))
        spin->setValue(value);
}

bool readSliderValue(const MString& name, int& value)
{
    QAbstractSlider* slider = findAs<QAbstractSlider>(name);
    if (!slider)
        return false;
    value = slider->value();
    return true;
}

} // namespace tq
