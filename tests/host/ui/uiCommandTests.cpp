// The UI commands: windows, layouts and controls as named Qt widgets that MQtUtil finds,
// queried and edited from scripts, running their commands when a user changes them.

#include <host/commands.h>
#include <host/log.h>
#include <host/widgets.h>

#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

#include <QtCore/QPointer>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class UiCommandTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        host::clearLog();
        MGlobal::removeOptionVar("uiTest");
        run("if (`window -exists uiTestWin`) deleteUI uiTestWin;"
            "window -t \"Test\" uiTestWin;"
            "columnLayout -adj 1 uiTestCol;"
            "  frameLayout -l \"Group\";"
            "    rowLayout -nc 2;"
            "      iconTextCheckBox -l \"Toggle\" -onc \"optionVar -sv uiTest on\" -ofc \"optionVar -sv uiTest off\" uiToggle;"
            "      checkBox -l \"Check\" -v 1 -cc \"optionVar -iv uiTest `checkBox -q -v uiCheck`\" uiCheck;"
            "    setParent ..;"
            "  setParent ..;"
            "  intSlider -min -10 -max 10 -v 3 -cc \"optionVar -iv uiTest `intSlider -q -v uiSlider`\" uiSlider;"
            "  intField -min 0 -max 9 -v 4 -cc \"optionVar -iv uiTest `intField -q -v uiSpin`\" uiSpin;"
            "  floatField -pre 2 -v 1.25 -cc \"optionVar -fv uiTest `floatField -q -v uiFloat`\" uiFloat;"
            "  button -l \"Close\" -c \"deleteUI uiTestWin\" uiClose;"
            "showWindow uiTestWin;");
    }
    void TearDown() override { host::runCommand("if (`window -exists uiTestWin`) deleteUI uiTestWin;"); }

    static host::CommandOutput run(const std::string& text)
    {
        host::CommandOutput out = host::runCommand(text);
        EXPECT_TRUE(out.status) << text << "\n" << host::logText();
        return out;
    }
    template <typename T>
    static T* control(const char* name)
    {
        return qobject_cast<T*>(MQtUtil::findControl(name));
    }
    static std::string option() { return MGlobal::optionVarStringValue("uiTest").asChar(); }
};

TEST_F(UiCommandTest, ControlsAreQtWidgetsOfTheirKind)
{
    ASSERT_NE(control<QPushButton>("uiToggle"), nullptr);
    EXPECT_TRUE(control<QPushButton>("uiToggle")->isCheckable());
    EXPECT_NE(control<QCheckBox>("uiCheck"), nullptr);
    EXPECT_NE(control<QSlider>("uiSlider"), nullptr);
    EXPECT_NE(control<QSpinBox>("uiSpin"), nullptr);
    EXPECT_NE(control<QDoubleSpinBox>("uiFloat"), nullptr);
    EXPECT_NE(MQtUtil::findLayout("uiTestCol"), nullptr);
    EXPECT_TRUE(MQtUtil::findControl("uiTestWin")->isVisible());
    EXPECT_EQ(run("intSlider -q -max uiSlider").text, "10");
    EXPECT_EQ(control<QSpinBox>("uiSpin")->value(), 4);
    EXPECT_NE(host::runCommand("window uiTestWin").status, MStatus::kSuccess) << "a window name is unique";
    EXPECT_NE(host::runCommand("intField -q -v uiToggle").status, MStatus::kSuccess)
        << "a control is queried by the command that made it";
}

TEST_F(UiCommandTest, ScriptEditsDoNotRunCommandsButUserChangesDo)
{
    run("intField -e -v 7 uiSpin; checkBox -e -v 0 uiCheck; iconTextCheckBox -e -v 1 uiToggle");
    EXPECT_EQ(control<QSpinBox>("uiSpin")->value(), 7);
    EXPECT_EQ(run("checkBox -q -v uiCheck").text, "0");
    EXPECT_EQ(run("iconTextCheckBox -q -v uiToggle").text, "1");
    EXPECT_FALSE(MGlobal::optionVarExists("uiTest")) << "an edit from a script runs no command";

    control<QPushButton>("uiToggle")->click(); // on -> off
    EXPECT_EQ(option(), "off");
    control<QPushButton>("uiToggle")->click();
    EXPECT_EQ(option(), "on");
    control<QCheckBox>("uiCheck")->click();
    EXPECT_EQ(option(), "1");
    control<QSlider>("uiSlider")->setValue(-6);
    EXPECT_EQ(option(), "-6");
    control<QSpinBox>("uiSpin")->setValue(12);
    EXPECT_EQ(option(), "9") << "the field keeps to its range";
    control<QDoubleSpinBox>("uiFloat")->setValue(2.5);
    EXPECT_EQ(option(), "2.5");
}

TEST_F(UiCommandTest, AButtonMayCloseItsOwnWindow)
{
    QPointer<QPushButton> close = control<QPushButton>("uiClose");
    ASSERT_TRUE(close);
    close->click();
    EXPECT_EQ(run("window -exists uiTestWin").text, "0");
    EXPECT_FALSE(close) << "the window goes once no control's command runs";
    EXPECT_EQ(MQtUtil::findControl("uiSpin"), nullptr);
    EXPECT_NE(host::runCommand("button -l orphan").status, MStatus::kSuccess) << "no window to put it in";
}

TEST_F(UiCommandTest, AWindowRendersToAPicture)
{
    const auto png = std::filesystem::temp_directory_path() / "uiCommandTest.png";
    ASSERT_TRUE(host::grabWidget("uiTestWin", png.string()));
    EXPECT_GT(std::filesystem::file_size(png), 100u);
    std::filesystem::remove(png);
    EXPECT_FALSE(host::grabWidget("noSuchWindow", png.string()));
}

} // namespace
