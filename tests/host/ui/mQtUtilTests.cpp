#include <host/widgets.h>
#include <maya/MQtUtil.h>
#include <maya/MString.h>

#include <QtCore/QPointer>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

namespace {

// Puts into `parent`'s layout a widget `name` laid out by a layout `layoutName`.
QWidget* addColumn(QWidget* parent, const char* name, const char* layoutName)
{
    auto* column = new QWidget(parent);
    column->setObjectName(name);
    new QVBoxLayout(column);
    column->layout()->setObjectName(layoutName);
    parent->layout()->addWidget(column);
    return column;
}

QPushButton* addButton(QWidget* holder, const char* name)
{
    auto* button = new QPushButton(holder);
    button->setObjectName(name);
    holder->layout()->addWidget(button);
    return button;
}

// ---- findControl ------------------------------------------------------------------------

TEST(MQtUtilFindControl, FindsByNameOrByPathThroughTheNamedWindow)
{
    host::WidgetPanel first("pathFirst");
    host::WidgetPanel second("pathSecond");
    QPushButton* firstShared = first.addPushButton("pathShared");
    QPushButton* secondShared = second.addPushButton("pathShared");
    QCheckBox* only = first.addCheckBox("pathOnlyFirst");

    EXPECT_EQ(MQtUtil::findControl("pathOnlyFirst"), only);
    EXPECT_EQ(MQtUtil::findControl("pathFirst|pathOnlyFirst"), only);
    EXPECT_EQ(MQtUtil::findControl("pathFirst|pathShared"), firstShared);
    EXPECT_EQ(MQtUtil::findControl("pathSecond|pathShared"), secondShared);
    EXPECT_EQ(MQtUtil::findControl("pathSecond|pathOnlyFirst"), nullptr);
    EXPECT_EQ(MQtUtil::findControl("noSuchWindow|pathOnlyFirst"), nullptr);
}

TEST(MQtUtilFindControl, UnknownEmptyAndPartialNamesFindNothing)
{
    host::WidgetPanel panel("unknownPanel");
    panel.addPushButton("");
    panel.addPushButton("unknownButton");

    EXPECT_EQ(MQtUtil::findControl("noSuchControlAnywhere"), nullptr);
    EXPECT_EQ(MQtUtil::findControl(""), nullptr);
    EXPECT_EQ(MQtUtil::findControl("|"), nullptr);
    EXPECT_EQ(MQtUtil::findControl("unknownButto"), nullptr);
    EXPECT_EQ(MQtUtil::findControl("unknownButton|unknownPanel"), nullptr);
}

TEST(MQtUtilFindControl, PathsMayNameTheLayoutsAndWidgetsBetweenInOrder)
{
    host::WidgetPanel panel("deepPanel");
    QPushButton* deep = addButton(addColumn(panel.widget(), "deepColumn", "deepColumnLayout"), "deepButton");
    auto* row = new QHBoxLayout;
    row->setObjectName("deepRow");
    static_cast<QBoxLayout*>(panel.widget()->layout())->addLayout(row);
    auto* inRow = new QPushButton(panel.widget());
    inRow->setObjectName("rowButton");
    row->addWidget(inRow);

    EXPECT_EQ(MQtUtil::findControl("deepPanel|deepColumn|deepColumnLayout|deepButton"), deep);
    EXPECT_EQ(MQtUtil::findControl("deepPanel|deepColumnLayout|deepButton"), deep);
    EXPECT_EQ(MQtUtil::findControl("deepColumn|deepButton"), deep);
    EXPECT_EQ(MQtUtil::findControl("deepPanel|deepRow|rowButton"), inRow);
    EXPECT_EQ(MQtUtil::findControl("deepColumn|deepPanel|deepButton"), nullptr);
    EXPECT_EQ(MQtUtil::findControl("deepRow|deepPanel|rowButton"), nullptr);
    EXPECT_EQ(MQtUtil::findControl("deepRow|deepButton"), nullptr);
}

TEST(MQtUtilFindControl, FindsNonAsciiNames)
{
    host::WidgetPanel panel("unicodePanel");
    QPushButton* button = panel.addPushButton("knöpfchen_ß_日本");

    EXPECT_EQ(MQtUtil::findControl("unicodePanel|knöpfchen_ß_日本"), button);
}

TEST(MQtUtilFindControl, FindsNothingOnceThePanelIsDestroyed)
{
    auto panel = std::make_unique<host::WidgetPanel>("shortLivedPanel");
    panel->addSlider("shortLivedSlider", 0, 10, 5);
    ASSERT_NE(MQtUtil::findControl("shortLivedSlider"), nullptr);

    panel.reset();

    EXPECT_EQ(MQtUtil::findControl("shortLivedSlider"), nullptr);
    EXPECT_EQ(MQtUtil::findWindow("shortLivedPanel"), nullptr);
}

TEST(MQtUtilFindControl, SearchUnderAParentSeesOnlyItsDescendants)
{
    host::WidgetPanel first("scopeFirst");
    host::WidgetPanel second("scopeSecond");
    QWidget* column = addColumn(first.widget(), "scopeColumn", "scopeColumnLayout");
    QPushButton* deep = addButton(column, "scopeShared");
    QPushButton* secondShared = second.addPushButton("scopeShared");

    EXPECT_EQ(MQtUtil::findControl("scopeShared", first.widget()), deep);
    EXPECT_EQ(MQtUtil::findControl("scopeShared", second.widget()), secondShared);
    EXPECT_EQ(MQtUtil::findControl("scopeFirst|scopeColumn|scopeShared", column), deep);
    EXPECT_EQ(MQtUtil::findControl("scopeColumn", second.widget()), nullptr);
    EXPECT_EQ(MQtUtil::findControl("scopeColumn", column), nullptr);
}

// ---- what a plug-in does with what it finds ---------------------------------------------

TEST(MQtUtilControls, ChangesThroughFoundControlsReachTheRealWidgets)
{
    host::WidgetPanel panel("usePanel");
    QPushButton* toggle = panel.addPushButton("useToggle", "Toggle", true, false);
    QCheckBox* box = panel.addCheckBox("useBox", true);
    QSlider* slider = panel.addSlider("useSlider", -20, 20, 7);
    QSpinBox* spin = panel.addSpinBox("useSpin", 0, 50, 10);
    int reported = -1;
    QObject::connect(spin, &QSpinBox::valueChanged, [&reported](int value) { reported = value; });

    auto* foundToggle = qobject_cast<QAbstractButton*>(MQtUtil::findControl("useToggle"));
    auto* foundBox = qobject_cast<QAbstractButton*>(MQtUtil::findControl("useBox"));
    auto* foundSlider = qobject_cast<QAbstractSlider*>(MQtUtil::findControl("useSlider"));
    auto* foundSpin = qobject_cast<QSpinBox*>(MQtUtil::findControl("usePanel|useSpin"));
    ASSERT_TRUE(foundToggle && foundBox && foundSlider && foundSpin);

    foundToggle->setChecked(true);
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_TRUE(foundBox->isChecked());
    box->setChecked(false);
    EXPECT_FALSE(foundBox->isChecked());
    EXPECT_EQ(foundSlider->value(), 7);
    foundSlider->setValue(100);
    EXPECT_EQ(slider->value(), 20);
    foundSpin->setValue(42);
    EXPECT_EQ(spin->value(), 42);
    EXPECT_EQ(reported, 42);
}

// ---- findLayout -------------------------------------------------------------------------

TEST(MQtUtilFindLayout, FindsTheWidgetHoldingTheNamedLayoutOrANamedWidgetWithALayout)
{
    host::WidgetPanel panel("layoutPanel");
    QWidget* column = addColumn(panel.widget(), "layoutColumn", "layoutColumnLayout");
    auto* row = new QHBoxLayout;
    row->setObjectName("layoutRow");
    static_cast<QBoxLayout*>(panel.widget()->layout())->addLayout(row);
    panel.addPushButton("layoutButton");

    EXPECT_EQ(MQtUtil::findLayout("layoutPanel|layoutColumnLayout"), column);
    EXPECT_EQ(MQtUtil::findLayout("layoutColumn"), column);
    EXPECT_EQ(MQtUtil::findLayout("layoutRow"), panel.widget());
    EXPECT_EQ(MQtUtil::findLayout("otherWindow|layoutColumnLayout"), nullptr);
    EXPECT_EQ(MQtUtil::findLayout("layoutButton"), nullptr);
    EXPECT_EQ(MQtUtil::findLayout(""), nullptr);
}

TEST(MQtUtilFindLayout, SearchUnderAParentIncludesTheParentsOwnLayout)
{
    host::WidgetPanel first("layoutScopeFirst");
    host::WidgetPanel second("layoutScopeSecond");
    first.widget()->layout()->setObjectName("layoutScopeTop");
    QWidget* column = addColumn(second.widget(), "layoutScopeColumn", "layoutScopeColumnLayout");

    EXPECT_EQ(MQtUtil::findLayout("layoutScopeTop", first.widget()), first.widget());
    EXPECT_EQ(MQtUtil::findLayout("layoutScopeTop", second.widget()), nullptr);
    EXPECT_EQ(MQtUtil::findLayout("layoutScopeColumnLayout", second.widget()), column);
    EXPECT_EQ(MQtUtil::findLayout("layoutScopeColumnLayout", first.widget()), nullptr);
}

// ---- findWindow and mainWindow ----------------------------------------------------------

TEST(MQtUtilFindWindow, FindsWindowsAndWindowsParentedToOthersButNotControls)
{
    host::WidgetPanel panel("windowPanel");
    panel.addPushButton("windowPanelButton");
    auto* tool = new QWidget(MQtUtil::mainWindow(), Qt::Window);
    tool->setObjectName("parentedToolWindow");
    auto* toolButton = new QPushButton(tool);
    toolButton->setObjectName("parentedToolButton");
    QPointer<QWidget> guard(tool);

    EXPECT_EQ(MQtUtil::findWindow("windowPanel"), panel.widget());
    EXPECT_EQ(MQtUtil::findWindow("MayaWindow|parentedToolWindow"), tool);
    EXPECT_EQ(MQtUtil::findControl("MayaWindow|parentedToolWindow|parentedToolButton"), toolButton);
    EXPECT_EQ(MQtUtil::findWindow("windowPanelButton"), nullptr);
    EXPECT_EQ(MQtUtil::findWindow(""), nullptr);
    delete guard.data();
}

TEST(MQtUtilMainWindow, IsOneHiddenMainWindowNamedMayaWindow)
{
    QWidget* main = MQtUtil::mainWindow();

    ASSERT_NE(main, nullptr);
    EXPECT_NE(qobject_cast<QApplication*>(QCoreApplication::instance()), nullptr);
    EXPECT_NE(qobject_cast<QMainWindow*>(main), nullptr);
    EXPECT_EQ(main->objectName(), QStringLiteral("MayaWindow"));
    EXPECT_FALSE(main->isVisible());
    EXPECT_EQ(MQtUtil::mainWindow(), main);
    EXPECT_EQ(MQtUtil::findWindow("MayaWindow"), main);
}

// ---- string conversion ------------------------------------------------------------------

TEST(MQtUtilStrings, NonAsciiTextConvertsByCharacterAndRoundTripsByteForByte)
{
    const char* text = "Grüße, 日本, 😀";
    const QString converted = MQtUtil::toQString(MString(text));
    const MString back = MQtUtil::toMString(converted);

    EXPECT_EQ(converted, QString::fromUtf8(text));
    // Eleven characters, then one emoji as a surrogate pair.
    EXPECT_EQ(converted.size(), 13);
    EXPECT_EQ(back.length(), std::strlen(text));
    EXPECT_STREQ(back.asChar(), text);
    EXPECT_TRUE(MQtUtil::toQString(MString()).isEmpty());
    EXPECT_STREQ(MQtUtil::toMString(QString()).asChar(), "");
}

} // namespace
