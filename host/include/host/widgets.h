#pragma once
// Widget panels: real Qt windows that tests and tools fill with named controls, standing
// in for UI a Maya user would have open. A plug-in reaches the controls by name through
// MQtUtil exactly as it reaches Maya's own. Only forward declarations of Qt here; code
// that uses the returned widgets includes their Qt headers and links Qt6::Widgets itself.

#include <memory>
#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSlider;
class QSpinBox;
class QWidget;

namespace host {

// A top-level window named `name`, its controls laid out in a column. Each add* makes a
// control with the given object name; names need not be unique (lookups take the first).
// Destroying the panel destroys its window and controls. If the window was destroyed
// some other way, add* return null and show() does nothing.
class WidgetPanel {
public:
    explicit WidgetPanel(const std::string& name);
    ~WidgetPanel();
    WidgetPanel(const WidgetPanel&) = delete;
    WidgetPanel& operator=(const WidgetPanel&) = delete;

    QPushButton* addPushButton(const std::string& name, const std::string& text = "",
                               bool checkable = false, bool checked = false);
    QCheckBox* addCheckBox(const std::string& name, bool checked = false, const std::string& text = "");
    // Radio buttons with the same non-empty group are exclusive among themselves; those
    // without a group are exclusive among the panel's other ungrouped ones, as in Qt.
    QRadioButton* addRadioButton(const std::string& name, bool checked = false,
                                 const std::string& group = "", const std::string& text = "");
    // Ranges and values behave as the Qt setters do: the value is clamped into the range.
    // The slider is horizontal.
    QSlider* addSlider(const std::string& name, int minimum, int maximum, int value);
    QSpinBox* addSpinBox(const std::string& name, int minimum, int maximum, int value);
    QDoubleSpinBox* addDoubleSpinBox(const std::string& name, double minimum, double maximum,
                                     double value, int decimals = 3);
    QLineEdit* addLineEdit(const std::string& name, const std::string& text = "");
    QComboBox* addComboBox(const std::string& name, const std::vector<std::string>& items,
                           int currentIndex = 0);

    // The window; null once it has been destroyed.
    QWidget* widget() const;
    // Shows the window (offscreen when there is no display).
    void show();

private:
    struct Impl;
    std::unique_ptr<Impl> fImpl;
};

// Renders the window or control that the UI commands made under that name (offscreen when
// there is no display) into a PNG file; false when there is no such control or the file
// cannot be written.
bool grabWidget(const std::string& name, const std::string& pngPath);

} // namespace host
