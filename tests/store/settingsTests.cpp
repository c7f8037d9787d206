// Settings through option variables, the info lines with their heavy-source warning, and
// the panel's widgets as the store reaches them by name.

#include "storeTest.h"

#include "store/hostWidgets.h"
#include "store/infoLines.h"
#include "store/optionVars.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"

#include <host/meshGenerators.h>
#include <host/widgets.h>

#include <maya/MFnMesh.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>

namespace {

using namespace storetest;

class Settings : public StoreTest {};

std::string str(const MString& s) { return s.asChar(); }

TEST_F(Settings, OptionVariablesReadWithTheirRules)
{
    EXPECT_EQ(tq::getUSpans(), 12);
    MGlobal::setOptionVarValue("tq_uspan", 0);
    EXPECT_EQ(tq::getUSpans(), 1);
    EXPECT_TRUE(tq::setVSpans(-3));
    EXPECT_EQ(MGlobal::optionVarIntValue("tq_vspan"), 1); // spans stay at 1 or more
    EXPECT_FALSE(tq::isGlueOn());
    MGlobal::setOptionVarValue("tq_glue", 3);
    EXPECT_TRUE(tq::isGlueOn());
    // A bool reads true only for a stored 1; absent, the default.
    EXPECT_TRUE(tq::optionVarBoolOr("tq_sarnBackFace", true));
    MGlobal::setOptionVarValue("tq_sarnBackFace", 2);
    EXPECT_FALSE(tq::optionVarBoolOr("tq_sarnBackFace", true));
    MGlobal::setOptionVarValue("tq_sarnRadius", 12.5);
    EXPECT_EQ(tq::optionVarDoubleOr("tq_sarnRadius", 50.0), 12.5);
}

TEST_F(Settings, InfoLinesTheDisplaySwitchAndTheHeavySourceWarning)
{
    EXPECT_EQ(str(tq::getInfo1()) + str(tq::getInfo2()), "... 1... 2"); // nothing stored yet
    makeStore();
    tq::setInfos("help text", "outcome"); // line 2 first, line 1 second
    EXPECT_EQ(str(tq::getInfo1()) + "|" + str(tq::getInfo2()), "outcome|help text");
    ASSERT_TRUE(host::setInt("store.displayInfo", 0));
    EXPECT_EQ(str(tq::getInfo1()) + str(tq::getInfo2()), "");
    EXPECT_EQ(str(MGlobal::optionVarStringValue("tqSarn_info2")), "help text"); // hidden, not lost
    ASSERT_TRUE(host::setInt("store.displayInfo", 1));

    addSourceMesh(host::gridPlane(1.0f, 1.0f, 1000, 500)); // 500000 quads: not yet heavy
    tq::setInfo1("x");
    EXPECT_EQ(str(tq::getInfo1()), "x");
    MStatus status;
    MFnMesh source(tq::getSourceMeshPath(status));
    ASSERT_FALSE(source.addPolygon(points({{0, 1, 0}, {1, 1, 0}, {1, 2, 0}}), false).isNull());
    tq::setInfo1("x");
    EXPECT_EQ(str(tq::getInfo1()),
              "x,The source mesh density is high (500001 polys) you may decimate and/or split then import the mesh "
              "as a reference for a better performance.");
    tq::setInfo2("y"); // line 2 carries no warning
    EXPECT_EQ(str(tq::getInfo2()), "y");
    EXPECT_FALSE(loggedError());
}

TEST_F(Settings, PinchFollowsTheSliderUnlessLocked)
{
    makeStore();
    ASSERT_TRUE(tq::setPinch(0.5));
    EXPECT_EQ(tq::getPinch(), 0.5); // no panel
    {
        host::WidgetPanel panel("tqSarnPanel");
        QCheckBox* lock = panel.addCheckBox("lockedPinchChk", false);
        ASSERT_TRUE(lock && panel.addSlider("pinchSlid", -95, 95, 37));
        EXPECT_NEAR(tq::getPinch(), 0.37, 1e-12);
        lock->setChecked(true);
        EXPECT_EQ(tq::getPinch(), 0.5);
    }
    host::WidgetPanel panel("tqSarnPanel");
    panel.addSlider("pinchSlid", -95, 95, 37); // no lock box: counts as locked
    EXPECT_EQ(tq::getPinch(), 0.5);
}

TEST_F(Settings, ClearingMarkersUnchecksTheirButtons)
{
    makeStore();
    host::WidgetPanel panel("tqSarnPanel");
    QPushButton* freeze = panel.addPushButton("freezeBtn", "Freeze", true, true);
    QPushButton* freezeMedian = panel.addPushButton("freezeSymBtn", "Median", true, true);
    ASSERT_TRUE(freeze && freezeMedian);
    EXPECT_TRUE(tq::clearFreePoints());
    EXPECT_FALSE(freeze->isChecked());
    EXPECT_TRUE(freezeMedian->isChecked());
    EXPECT_TRUE(tq::clearFreezeMedian());
    EXPECT_FALSE(freezeMedian->isChecked());
}

} // namespace
