// The module's scripts run in the host as in Maya: the launch script on a scan, the panel
// with every control the plug-in reaches by name, each control driving the tool, and the
// brush keys.

#include "../tool/toolTest.h"

#include "store/storeWrites.h"
#include "store/hostWidgets.h"
#include "store/optionVars.h"

#include <host/widgets.h>

#include <maya/MQtUtil.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>

#include <cstdlib>

namespace {

class ModuleTest : public tooltest::ToolTest {
protected:
    void SetUp() override
    {
        ToolTest::SetUp();
        host::addScriptDirectory(TQSARN_SCRIPT_DIR);
        for (const char* name : {"tq_sarnIntens", "tq_sarnTweakR", "tq_lazyActive"})
            MGlobal::removeOptionVar(name);
    }
    void TearDown() override
    {
        host::runCommand("if (`window -exists tqSarnPanelWin`) deleteUI tqSarnPanelWin;");
        ToolTest::TearDown();
    }

    static host::CommandOutput run(const std::string& text)
    {
        host::CommandOutput out = host::runCommand(text, false);
        EXPECT_TRUE(out.status) << text << "\n" << host::logText();
        return out;
    }

    // The panel open and the tool started from the scan, as a user does it.
    std::string launch()
    {
        run("tqSarnPanel");
        host::select({"scan"});
        return run("tqSarnLaunch").text;
    }

    template <typename T>
    static T* control(const char* name)
    {
        return qobject_cast<T*>(MQtUtil::findControl(name));
    }

    static MString sourceMesh()
    {
        MStatus status;
        return tq::getSourceMeshPath(status).partialPathName();
    }
    static std::vector<std::string> stores() { return host::nodeNames("tqSarn"); }
};

TEST_F(ModuleTest, LaunchMakesTheStoreLinksTheScanAndStartsTheTool)
{
    const std::string context = launch();
    ASSERT_FALSE(context.empty());
    EXPECT_EQ(run("currentCtx").text, context);
    ASSERT_EQ(stores().size(), 1u);
    EXPECT_EQ(sourceMesh(), scan.partialPathName());
    EXPECT_TRUE(host::selection().empty()) << "the scan is no retopo mesh for the tool";
    EXPECT_TRUE(control<QPushButton>("tqSarnLaunchBtn")->isChecked()) << "the tool shows it is on";

    // Again, with the store there: the same store and context, the tool still on.
    host::select({"scan"});
    EXPECT_EQ(run("tqSarnLaunch").text, context);
    EXPECT_EQ(stores().size(), 1u);
    run("setToolTo selectSuperContext");
    EXPECT_FALSE(control<QPushButton>("tqSarnLaunchBtn")->isChecked());
}

TEST_F(ModuleTest, LaunchUsesAStoreThatIsThere)
{
    makeStore("myStore");
    host::select({"scan"});
    run("tqSarnLaunch");
    EXPECT_EQ(stores(), std::vector<std::string>{"myStore"});
    EXPECT_EQ(sourceMesh(), scan.partialPathName());
    // With nothing selected and no scan linked the tool starts and says there is no source.
    host::newScene();
    host::select({});
    EXPECT_TRUE(host::runCommand("tqSarnLaunch", false).status);
    EXPECT_EQ(stores().size(), 1u);
}

TEST_F(ModuleTest, ThePanelHasEveryControlThePluginReaches)
{
    run("tqSarnPanel");
    for (const char* name : {tq::widget::kLaunchButton, tq::widget::kFreezeButton, tq::widget::kFreezeMedianButton}) {
        auto* button = control<QPushButton>(name);
        ASSERT_NE(button, nullptr) << name;
        EXPECT_TRUE(button->isCheckable()) << name;
    }
    EXPECT_NE(control<QCheckBox>(tq::widget::kLockedPinchCheck), nullptr);
    EXPECT_NE(control<QSlider>(tq::widget::kPinchSlider), nullptr);
    EXPECT_NE(control<QSpinBox>(tq::widget::kBridgeSpin), nullptr);
    if (const char* png = std::getenv("TQSARN_PANEL_PNG")) {
        EXPECT_TRUE(host::grabWidget("tqSarnPanelWin", png));
    }
}

// What the tool reads from the panel: the spans and brush settings through their option
// variables, the pinch from the slider once the lock is off, the bridge divisions.
TEST_F(ModuleTest, PanelControlsDriveTheTool)
{
    const std::string context = launch();
    control<QSpinBox>("tqSarnUSpanField")->setValue(7);
    control<QSpinBox>("tqSarnVSpanField")->setValue(5);
    EXPECT_EQ(tq::getUSpans(), 7);
    EXPECT_EQ(tq::getVSpans(), 5);

    control<QPushButton>("tqSarnFigCircleBtn")->click();
    EXPECT_TRUE(control<QPushButton>("tqSarnFigCircleBtn")->isChecked());
    EXPECT_FALSE(control<QPushButton>("tqSarnFigFreeBtn")->isChecked()) << "one figure at a time";
    EXPECT_NE(run("tqSarnContext -q -fig " + context).text, "0") << "the figure reached the tool";
    control<QPushButton>("tqSarnMoveBtn")->click();
    EXPECT_EQ(info1(), "Move Brush");
    control<QPushButton>("tqSarnMoveBtn")->click();

    control<QDoubleSpinBox>("tqSarnIntensField")->setValue(60.0);
    control<QDoubleSpinBox>("tqSarnRadiusField")->setValue(20.0);
    EXPECT_EQ(tq::optionVarDoubleOr("tq_sarnIntens", 0.0), 60.0);
    EXPECT_EQ(tq::optionVarDoubleOr("tq_sarnRadius", 0.0), 20.0);
    control<QSpinBox>("tqSarnTweakField")->setValue(80);
    EXPECT_EQ(tq::optionVarIntOr("tq_sarnTweakR", 0), 80);
    control<QCheckBox>("tqSarnBackFaceChk")->click();
    EXPECT_EQ(tq::optionVarIntOr("tq_sarnBackFace", 1), 0);

    // The slider sends its hundredths to the tool, which stores them. Locked, the stored pinch
    // counts; unlocked, the slider's.
    control<QSlider>(tq::widget::kPinchSlider)->setValue(40);
    EXPECT_NEAR(tq::getPinch(), 0.4, 1e-12);
    ASSERT_TRUE(tq::setPinch(0.1));
    EXPECT_NEAR(tq::getPinch(), 0.1, 1e-12);
    control<QCheckBox>(tq::widget::kLockedPinchCheck)->click();
    EXPECT_NEAR(tq::getPinch(), 0.4, 1e-12);

    control<QSpinBox>(tq::widget::kBridgeSpin)->setValue(3);
    EXPECT_EQ(tq::optionVarIntOr("tq_bdiv", 0), 3);

    // The freeze buttons are the tool's: it unchecks them when it stops.
    control<QPushButton>(tq::widget::kFreezeButton)->click();
    EXPECT_EQ(info1(), "Freeze Border");
    run("setToolTo selectSuperContext");
    EXPECT_FALSE(control<QPushButton>(tq::widget::kFreezeButton)->isChecked());
}

TEST_F(ModuleTest, BrushKeysGrowAndShrinkTheBrushes)
{
    launch();
    run("source tqSarnHotkeys.mel; tqSarnBrushKey n 0");
    EXPECT_NEAR(tq::optionVarDoubleOr("tq_sarnIntens", 0.0), 55.0, 1e-9);
    EXPECT_NEAR(control<QDoubleSpinBox>("tqSarnIntensField")->value(), 55.0, 1e-9) << "the panel follows";
    run("tqSarnBrushKey b 1");
    EXPECT_NEAR(tq::optionVarDoubleOr("tq_sarnRadius", 0.0), 50.0 / 1.1, 1e-9);
    run("tqSarnBrushKey m 0; tqSarnBrushKey m 0");
    EXPECT_EQ(tq::optionVarIntOr("tq_sarnTweakR", 0), 60);
    EXPECT_EQ(control<QSpinBox>("tqSarnTweakField")->value(), 60);
    EXPECT_FALSE(host::runCommand("tqSarnBrushKey x 0").status);
}

} // namespace
