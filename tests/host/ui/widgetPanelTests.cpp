#include <host/widgets.h>
#include <maya/MQtUtil.h>

#include <QtCore/QPointer>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>

#include <gtest/gtest.h>

#include <memory>

namespace {

// ---- the window and its lifetime ------------------------------------------------------------

TEST(WidgetPanel, IsATopLevelWindowWhoseControlsAreNamedChildrenInItsLayout)
{
    host::WidgetPanel panel("shapePanel");
    QPushButton* button = panel.addPushButton("shapeButton");
    QSlider* slider = panel.addSlider("shapeSlider", 0, 1, 0);
    QWidget* window = panel.widget();

    ASSERT_TRUE(window && button && slider);
    EXPECT_TRUE(window->isWindow());
    EXPECT_EQ(window->objectName(), QStringLiteral("shapePanel"));
    EXPECT_EQ(button->objectName(), QStringLiteral("shapeButton"));
    EXPECT_EQ(slider->parentWidget(), window);
    EXPECT_EQ(window->layout()->indexOf(button), 0);
    EXPECT_EQ(window->layout()->indexOf(slider), 1);
    EXPECT_FALSE(window->isVisible());
    panel.show();
    EXPECT_TRUE(button->isVisible());
}

TEST(WidgetPanel, DestroyingThePanelDestroysItsWindowAndControls)
{
    auto panel = std::make_unique<host::WidgetPanel>("doomedPanel");
    QPointer<QWidget> window = panel->widget();
    QPointer<QSpinBox> spin = panel->addSpinBox("doomedSpin", 0, 9, 3);

    panel.reset();

    EXPECT_TRUE(window.isNull());
    EXPECT_TRUE(spin.isNull());
}

TEST(WidgetPanel, SurvivesItsWindowOrLayoutBeingDestroyedElsewhere)
{
    host::WidgetPanel layoutless("layoutlessPanel");
    delete layoutless.widget()->layout();
    QPushButton* button = layoutless.addPushButton("layoutlessButton");
    EXPECT_NE(button, nullptr);
    EXPECT_EQ(MQtUtil::findControl("layoutlessPanel|layoutlessButton"), button);

    auto closed = std::make_unique<host::WidgetPanel>("closedPanel");
    delete closed->widget();
    EXPECT_EQ(closed->widget(), nullptr);
    EXPECT_EQ(closed->addRadioButton("closedRadio", true, "group"), nullptr);
    closed->show();
    closed.reset();

    host::WidgetPanel unnamed("");
    EXPECT_NE(unnamed.addPushButton(""), nullptr);
}

// ---- initial state of the controls ----------------------------------------------------------

TEST(WidgetPanelControls, StartInTheStateAskedFor)
{
    host::WidgetPanel panel("statePanel");
    QPushButton* toggled = panel.addPushButton("stateToggled", "Apply ✓", true, true);
    QPushButton* plain = panel.addPushButton("statePlain", "", false, true);
    QCheckBox* box = panel.addCheckBox("stateBox", true, "On");
    QSlider* slider = panel.addSlider("stateSlider", -5, 15, 99);
    QSpinBox* spin = panel.addSpinBox("stateSpin", 1, 8, -4);
    QDoubleSpinBox* fine = panel.addDoubleSpinBox("stateDouble", 0.0, 1.0, 0.123456, 4);
    QLineEdit* edit = panel.addLineEdit("stateEdit", "pSphere1 — ½");
    QComboBox* combo = panel.addComboBox("stateCombo", {"quads", "triangles", "ngons"}, 1);
    QComboBox* noneCurrent = panel.addComboBox("stateComboNone", {"a", "b"}, 5);

    EXPECT_EQ(toggled->text(), QStringLiteral("Apply ✓"));
    EXPECT_TRUE(toggled->isChecked());
    EXPECT_FALSE(plain->isCheckable() || plain->isChecked());
    EXPECT_TRUE(box->isChecked());
    EXPECT_EQ(box->text(), QStringLiteral("On"));
    EXPECT_EQ(slider->minimum(), -5);
    EXPECT_EQ(slider->value(), 15);
    EXPECT_EQ(slider->orientation(), Qt::Horizontal);
    EXPECT_EQ(spin->maximum(), 8);
    EXPECT_EQ(spin->value(), 1);
    EXPECT_DOUBLE_EQ(fine->value(), 0.1235);
    EXPECT_EQ(edit->text(), QStringLiteral("pSphere1 — ½"));
    EXPECT_EQ(combo->currentText(), QStringLiteral("triangles"));
    EXPECT_EQ(noneCurrent->currentIndex(), -1);
}

TEST(WidgetPanelControls, RadioButtonsAreExclusiveWithinTheirGroup)
{
    host::WidgetPanel panel("radioPanel");
    QRadioButton* modeA = panel.addRadioButton("radioModeA", true, "mode");
    QRadioButton* modeB = panel.addRadioButton("radioModeB", false, "mode");
    QRadioButton* axisX = panel.addRadioButton("radioAxisX", true, "axis");
    QRadioButton* looseA = panel.addRadioButton("radioLooseA", true);
    QRadioButton* looseB = panel.addRadioButton("radioLooseB");

    modeB->setChecked(true);
    looseB->setChecked(true);

    EXPECT_FALSE(modeA->isChecked());
    EXPECT_TRUE(axisX->isChecked());
    EXPECT_FALSE(looseA->isChecked());
    EXPECT_TRUE(modeB->isChecked() && looseB->isChecked());
}

} // namespace
