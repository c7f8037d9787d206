#include <host/widgets.h>

#include "ui/application.h"

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

namespace host {

namespace {

QString fromUtf8(const std::string& text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

struct WidgetPanel::Impl {
    // Weak, so a window destroyed from elsewhere is noticed instead of deleted twice.
    QPointer<QWidget> window;

    // Puts a new control named `name` into the window's column; null without a window.
    template <typename Control>
    Control* add(const std::string& name)
    {
        if (!window)
            return nullptr;
        auto* control = new Control(window);
        control->setObjectName(fromUtf8(name));
        // Someone may have taken the window's layout away.
        if (!window->layout())
            new QVBoxLayout(window);
        window->layout()->addWidget(control);
        return control;
    }

    // The exclusive group of that name, made on first use; owned by the window.
    QButtonGroup* group(const std::string& name)
    {
        const QString groupName = fromUtf8(name);
        for (QButtonGroup* existing : window->findChildren<QButtonGroup*>(Qt::FindDirectChildrenOnly))
            if (existing->objectName() == groupName)
                return existing;
        auto* made = new QButtonGroup(window);
        made->setObjectName(groupName);
        return made;
    }
};

WidgetPanel::WidgetPanel(const std::string& name)
    : fImpl(std::make_unique<Impl>())
{
    ensureApplication();
    fImpl->window = new QWidget;
    fImpl->window->setObjectName(fromUtf8(name));
    fImpl->window->setWindowTitle(fromUtf8(name));
    new QVBoxLayout(fImpl->window);
}

WidgetPanel::~WidgetPanel()
{
    delete fImpl->window.data();
}

QPushButton* WidgetPanel::addPushButton(const std::string& name, const std::string& text, bool checkable,
                                        bool checked)
{
    auto* button = fImpl->add<QPushButton>(name);
    if (!button)
        return nullptr;
    button->setText(fromUtf8(text));
    button->setCheckable(checkable);
    button->setChecked(checked);
    return button;
}

QCheckBox* WidgetPanel::addCheckBox(const std::string& name, bool checked, const std::string& text)
{
    auto* box = fImpl->add<QCheckBox>(name);
    if (!box)
        return nullptr;
    box->setText(fromUtf8(text));
    box->setChecked(checked);
    return box;
}

QRadioButton* WidgetPanel::addRadioButton(const std::string& name, bool checked, const std::string& group,
                                          const std::string& text)
{
    auto* button = fImpl->add<QRadioButton>(name);
    if (!button)
        return nullptr;
    button->setText(fromUtf8(text));
    if (!group.empty())
        fImpl->group(group)->addButton(button);
    button->setChecked(checked);
    return button;
}

QSlider* WidgetPanel::addSlider(const std::string& name, int minimum, int maximum, int value)
{
    auto* slider = fImpl->add<QSlider>(name);
    if (!slider)
        return nullptr;
    slider->setOrientation(Qt::Horizontal);
    slider->setRange(minimum, maximum);
    slider->setValue(value);
    return slider;
}

QSpinBox* WidgetPanel::addSpinBox(const std::string& name, int minimum, int maximum, int value)
{
    auto* box = fImpl->add<QSpinBox>(name);
    if (!box)
        return nullptr;
    box->setRange(minimum, maximum);
    box->setValue(value);
    return box;
}

QDoubleSpinBox* WidgetPanel::addDoubleSpinBox(const std::string& name, double minimum, double maximum,
                                              double value, int decimals)
{
    auto* box = fImpl->add<QDoubleSpinBox>(name);
    if (!box)
        return nullptr;
    // Decimals first: the range and value are rounded to them.
    box->setDecimals(decimals);
    box->setRange(minimum, maximum);
    box->setValue(value);
    return box;
}

QLineEdit* WidgetPanel::addLineEdit(const std::string& name, const std::string& text)
{
    auto* edit = fImpl->add<QLineEdit>(name);
    if (!edit)
        return nullptr;
    edit->setText(fromUtf8(text));
    return edit;
}

QComboBox* WidgetPanel::addComboBox(const std::string& name, const std::vector<std::string>& items,
                                    int currentIndex)
{
    auto* box = fImpl->add<QComboBox>(name);
    if (!box)
        return nullptr;
    for (const std::string& item : items)
        box->addItem(fromUtf8(item));
    // Out of range leaves no item current (-1), as QComboBox does.
    box->setCurrentIndex(currentIndex);
    return box;
}

QWidget* WidgetPanel::widget() const
{
    return fImpl->window.data();
}

void WidgetPanel::show()
{
    if (fImpl->window)
        fImpl->window->show();
}

} // namespace host
