// Cameras and views: the pixel <-> world round trips Maya's tools rely on, under perspective
// and orthographic cameras, MFnCamera's directions, and the views' life.

#include "viewTest.h"

#include <maya/MDagModifier.h>
#include <maya/MDoubleArray.h>
#include <maya/MDrawContext.h>
#include <maya/MFnCamera.h>
#include <maya/MMatrix.h>

#include <vector>

using viewtest::near;
using viewtest::ViewTest;

namespace {

constexpr double kPi = 3.14159265358979323846;

MFnCamera cameraOf(M3dView& view)
{
    MDagPath path;
    EXPECT_TRUE(view.getCamera(path));
    return MFnCamera(path);
}

// pixel -> ray -> a point along it -> the same pixel, over the corners, edges and inside.
void expectRoundTrips(M3dView& view)
{
    const int w = view.portWidth(), h = view.portHeight();
    const std::vector<int> xs = {0, 1, 17, w / 2, w - 2, w - 1};
    const std::vector<int> ys = {0, 1, 33, h / 2, h - 2, h - 1};
    for (int x : xs)
        for (int y : ys) {
            MPoint nearPt, farPt, source;
            MVector direction;
            ASSERT_TRUE(view.viewToWorld(short(x), short(y), nearPt, farPt));
            ASSERT_TRUE(view.viewToWorld(short(x), short(y), source, direction));
            EXPECT_TRUE(near(source, nearPt, 1e-9)) << "pixel " << x << ", " << y;
            EXPECT_TRUE(near(direction, (farPt - nearPt).normal(), 1e-9)) << "pixel " << x << ", " << y;
            EXPECT_NEAR(direction.length(), 1.0, 1e-12);
            for (double along : {0.0, 3.0, 40.0}) {
                short px = -1, py = -1;
                EXPECT_TRUE(view.worldToView(source + direction * along, px, py))
                    << "pixel " << x << ", " << y << " at " << along;
                EXPECT_EQ(px, x) << "pixel " << x << ", " << y << " at " << along;
                EXPECT_EQ(py, y) << "pixel " << x << ", " << y << " at " << along;
            }
        }
}

} // namespace

TEST_F(ViewTest, perspectivePixelsRoundTripThroughTheWorld)
{
    lookFrom(MPoint(3.0, 4.0, 10.0), MPoint(0.5, 0.0, -1.0), 640, 480, 50.0);
    M3dView view = M3dView::active3dView();
    expectRoundTrips(view);

    // The centre pixel looks down the view direction, from the near clip plane.
    MFnCamera camera = cameraOf(view);
    MPoint source;
    MVector direction;
    ASSERT_TRUE(view.viewToWorld(320, 240, source, direction));
    EXPECT_TRUE(near(direction, camera.viewDirection(MSpace::kWorld), 1e-12));
    EXPECT_TRUE(near(source, camera.eyePoint(MSpace::kWorld) + direction * camera.nearClippingPlane(), 1e-9));

    // Origin at the bottom left, y up: what is up and right of the target lands up and right.
    const MPoint target(0.5, 0.0, -1.0);
    short cx, cy, ux, uy, rx, ry;
    ASSERT_TRUE(view.worldToView(target, cx, cy));
    ASSERT_TRUE(view.worldToView(target + camera.upDirection(MSpace::kWorld), ux, uy));
    ASSERT_TRUE(view.worldToView(target + camera.rightDirection(MSpace::kWorld), rx, ry));
    EXPECT_EQ(cx, 320);
    EXPECT_EQ(cy, 240);
    EXPECT_GT(uy, cy + 20);
    EXPECT_NEAR(ux, cx, 2);
    EXPECT_GT(rx, cx + 20);
    EXPECT_NEAR(ry, cy, 2);

    // The horizontal field of view spans the port's width.
    short lx, ly;
    const double half = std::tan(25.0 * kPi / 180.0);
    const double distance = (target - camera.eyePoint(MSpace::kWorld)).length();
    view.worldToView(target + camera.rightDirection(MSpace::kWorld) * (half * distance), lx, ly);
    EXPECT_NEAR(lx, 640, 1);
}

TEST_F(ViewTest, orthographicPixelsAreEvenlySpacedAndRaysParallel)
{
    MObject camera = host::makeOrthoCamera(MPoint(0.0, 0.0, 20.0), MPoint::origin, 20.0);
    ASSERT_FALSE(camera.isNull()) << host::logText();
    ASSERT_NE(host::makeView(400, 200, camera), 0u);
    M3dView view = M3dView::active3dView();
    expectRoundTrips(view);

    // 20 units across 400 pixels, 10 up 200; the view's centre is the camera's axis.
    short x, y;
    EXPECT_TRUE(view.worldToView(MPoint(5.0, 2.5, 0.0), x, y));
    EXPECT_EQ(x, 300);
    EXPECT_EQ(y, 150);
    EXPECT_TRUE(view.worldToView(MPoint(-10.0, -5.0, -7.0), x, y));
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 0);
    for (short px : {0, 123, 399}) {
        MPoint source;
        MVector direction;
        ASSERT_TRUE(view.viewToWorld(px, 77, source, direction));
        EXPECT_TRUE(near(direction, MVector(0.0, 0.0, -1.0), 1e-12)) << px;
        EXPECT_NEAR(source.x, -10.0 + px * 0.05, 1e-9);
        EXPECT_NEAR(source.y, -5.0 + 77 * 0.05, 1e-9);
    }

    MFnCamera fn(camera);
    EXPECT_TRUE(fn.isOrtho());
    EXPECT_DOUBLE_EQ(fn.orthoWidth(), 20.0);
}

TEST_F(ViewTest, pointsOutsideThePortOrBehindTheEyeAreNotInView)
{
    lookFrom(MPoint(0.0, 0.0, 10.0), MPoint::origin, 200, 100, 90.0);
    M3dView view = M3dView::active3dView();
    short x = 7, y = 7;
    MStatus status;
    // Off to the side: the pixel is still given, past the port's edge.
    EXPECT_FALSE(view.worldToView(MPoint(30.0, 0.0, 0.0), x, y, &status));
    EXPECT_TRUE(status);
    EXPECT_GT(x, 200);
    EXPECT_FALSE(view.worldToView(MPoint(0.0, 0.0, 11.0), x, y, &status));
    EXPECT_FALSE(view.worldToView(MPoint(NAN, 0.0, 0.0), x, y, &status));
    EXPECT_EQ(status.statusCode(), MStatus::kInvalidParameter);
    // Far beyond 16 bits of pixels: clamped, not wrapped.
    EXPECT_FALSE(view.worldToView(MPoint(1e9, 0.0, 0.0), x, y));
    EXPECT_EQ(x, 32767);
}

TEST_F(ViewTest, cameraDirectionsFollowItsTransforms)
{
    MObject shape = host::makeCamera(MPoint(1.0, 2.0, 3.0), MPoint(1.0, 2.0, -5.0), 54.43, "cam");
    ASSERT_FALSE(shape.isNull()) << host::logText();
    MFnCamera fn(shape);
    // Object space never changes: down -Z, +Y up, +X right.
    EXPECT_TRUE(near(fn.viewDirection(), MVector(0, 0, -1)));
    EXPECT_TRUE(near(fn.upDirection(), MVector(0, 1, 0)));
    EXPECT_TRUE(near(fn.rightDirection(), MVector(1, 0, 0)));
    EXPECT_TRUE(near(fn.eyePoint(), MPoint::origin));
    EXPECT_NEAR(fn.centerOfInterest(), 8.0, 1e-9);

    // A quarter turn about Y turns -Z into -X; the eye stays at the transform's position.
    ASSERT_TRUE(host::setDouble("cam.rotateX", 0.0));
    ASSERT_TRUE(host::setDouble("cam.rotateY", kPi / 2));
    ASSERT_TRUE(host::setDouble("cam.rotateZ", 0.0));
    EXPECT_TRUE(near(fn.viewDirection(MSpace::kWorld), MVector(-1, 0, 0), 1e-9));
    EXPECT_TRUE(near(fn.rightDirection(MSpace::kWorld), MVector(0, 0, -1), 1e-9));
    EXPECT_TRUE(near(fn.upDirection(MSpace::kWorld), MVector(0, 1, 0), 1e-9));
    EXPECT_TRUE(near(fn.eyePoint(MSpace::kWorld), MPoint(1, 2, 3), 1e-9));
    EXPECT_TRUE(near(fn.centerOfInterestPoint(MSpace::kWorld), MPoint(-7, 2, 3), 1e-9));

    // A parent turned a quarter about X lifts the camera's gaze from -Z to +Y.
    MObject rig = host::createNode("transform", "rig");
    ASSERT_TRUE(host::setDouble("rig.rotateX", kPi / 2));
    ASSERT_TRUE(host::setDouble("cam.rotateY", 0.0));
    MDagModifier reparent;
    ASSERT_TRUE(reparent.reparentNode(host::findNode("cam"), rig));
    ASSERT_TRUE(reparent.doIt());
    MDagPath path;
    ASSERT_TRUE(MDagPath::getAPathTo(shape, path));
    EXPECT_EQ(hosttest::str(path.fullPathName()), "|rig|cam|camShape");
    EXPECT_TRUE(near(fn.viewDirection(MSpace::kWorld), MVector(0, 1, 0), 1e-9));
    EXPECT_TRUE(near(fn.upDirection(MSpace::kWorld), MVector(0, 0, 1), 1e-9));
    EXPECT_TRUE(near(fn.eyePoint(MSpace::kWorld), MPoint(1, -3, 2), 1e-9));

    // set() places and aims it in world space whatever the parent does.
    ASSERT_TRUE(fn.set(MPoint(4, 5, 6), MVector(0, 0, 2), MVector(0, 1, 0), 1.2, 2.0));
    EXPECT_TRUE(near(fn.eyePoint(MSpace::kWorld), MPoint(4, 5, 6), 1e-9));
    EXPECT_TRUE(near(fn.viewDirection(MSpace::kWorld), MVector(0, 0, 1), 1e-9));
    EXPECT_TRUE(near(fn.upDirection(MSpace::kWorld), MVector(0, 1, 0), 1e-9));
    EXPECT_NEAR(fn.horizontalFieldOfView(), 1.2, 1e-12);
    EXPECT_NEAR(fn.aspectRatio(), 2.0, 1e-12);
}

TEST_F(ViewTest, cameraSettingsRefuseValuesNoLensHas)
{
    MObject shape = host::makeCamera(MPoint(0, 0, 5), MPoint::origin, 40.0, "lens");
    MFnCamera fn(shape);
    const double fov = fn.horizontalFieldOfView();
    EXPECT_NEAR(fov, 40.0 * kPi / 180.0, 1e-9);
    EXPECT_FALSE(fn.setHorizontalFieldOfView(0.0));
    EXPECT_FALSE(fn.setHorizontalFieldOfView(kPi));
    EXPECT_FALSE(fn.setFocalLength(-3.0));
    EXPECT_FALSE(fn.setNearFarClippingPlanes(10.0, 1.0));
    EXPECT_FALSE(fn.setEyePoint(MPoint(NAN, 0, 0), MSpace::kWorld));
    EXPECT_NEAR(fn.horizontalFieldOfView(), fov, 1e-12);

    // A function set on something that is not a camera fails rather than inventing one.
    MStatus status;
    MFnCamera wrong(host::findNode("lens"), &status);
    EXPECT_FALSE(status);
    wrong.horizontalFieldOfView(&status);
    EXPECT_FALSE(status);
    EXPECT_TRUE(host::makeCamera(MPoint(1, 1, 1), MPoint(1, 1, 1)).isNull());
    EXPECT_TRUE(host::logContains(host::LogLevel::kError, "position and target"));
}

TEST_F(ViewTest, viewsLiveWithTheirCamerasAndOneIsActive)
{
    MStatus status;
    M3dView::active3dView(&status);
    EXPECT_FALSE(status) << "a new scene has no view";
    short x, y;
    EXPECT_FALSE(M3dView().worldToView(MPoint::origin, x, y, &status));
    EXPECT_FALSE(status);

    MObject a = host::makeCamera(MPoint(0, 0, 10), MPoint::origin, 54.43, "camA");
    MObject b = host::makeOrthoCamera(MPoint(0, 10, 0), MPoint::origin, 8.0, "camB");
    const host::ViewId first = host::makeView(320, 200, a);
    const host::ViewId second = host::makeView(100, 50, b);
    EXPECT_EQ(host::activeView(), first) << "the first view made is active";
    EXPECT_EQ(M3dView::numberOf3dViews(), 2u);
    M3dView active = M3dView::active3dView();
    EXPECT_EQ(active.portWidth(), 320);
    EXPECT_EQ(active.portHeight(), 200);

    ASSERT_TRUE(host::setActiveView(second));
    MDagPath path;
    ASSERT_TRUE(M3dView::active3dView().getCamera(path));
    EXPECT_EQ(hosttest::str(path.partialPathName()), "camBShape");
    M3dView byIndex;
    EXPECT_TRUE(M3dView::get3dView(0, byIndex));
    EXPECT_EQ(byIndex.portWidth(), 320);
    EXPECT_FALSE(M3dView::get3dView(2, byIndex));

    // Refreshes are counted where they were asked for.
    M3dView::active3dView().refresh(false, false);
    M3dView::active3dView().refresh();
    EXPECT_EQ(host::refreshCount(second), 2u);
    EXPECT_EQ(host::refreshCount(first), 0u);
    M3dView::active3dView().refresh(true, true);
    EXPECT_EQ(host::refreshCount(first), 1u);
    EXPECT_EQ(host::refreshCount(second), 3u);

    // Deleting the active view's camera drops the view; the other becomes active.
    ASSERT_TRUE(host::deleteNode("camB"));
    EXPECT_EQ(M3dView::numberOf3dViews(), 1u);
    EXPECT_EQ(host::activeView(), first);
    host::newScene();
    EXPECT_TRUE(host::views().empty());
}

TEST_F(ViewTest, frameContextDescribesTheViewItsMatricesAgreeWithThePixels)
{
    const host::ViewId id = lookFrom(MPoint(2, 3, 9), MPoint(0, 1, 0), 300, 200, 60.0);
    const MHWRender::MFrameContext& context = host::frameContext();
    int ox = -1, oy = -1, w = 0, h = 0;
    ASSERT_TRUE(context.getViewportDimensions(ox, oy, w, h));
    EXPECT_EQ(ox, 0);
    EXPECT_EQ(oy, 0);
    EXPECT_EQ(w, 300);
    EXPECT_EQ(h, 200);
    MDagPath camera, viewCamera;
    ASSERT_TRUE(M3dView::active3dView().getCamera(viewCamera));
    camera = context.getCurrentCameraPath();
    EXPECT_TRUE(camera == viewCamera);

    // World -> clip by the view-projection matrix lands on the pixel worldToView gives.
    const MMatrix viewProjection = context.getMatrix(MHWRender::MFrameContext::kViewProjMtx);
    M3dView view = M3dView::active3dView();
    for (const MPoint& p : {MPoint(0, 1, 0), MPoint(1.5, 0.2, -2), MPoint(-1, 2.5, 3)}) {
        const MPoint clip = p * viewProjection;
        const double u = (clip.x / clip.w + 1.0) * 0.5 * w, v = (clip.y / clip.w + 1.0) * 0.5 * h;
        short x, y;
        ASSERT_TRUE(view.worldToView(p, x, y));
        EXPECT_NEAR(u, x, 0.5) << p;
        EXPECT_NEAR(v, y, 0.5) << p;
        EXPECT_GT(clip.z / clip.w, -1.0);
        EXPECT_LT(clip.z / clip.w, 1.0);
    }
    const MDoubleArray eye = context.getTuple(MHWRender::MFrameContext::kViewPosition);
    ASSERT_EQ(eye.length(), 3u);
    EXPECT_TRUE(near(MPoint(eye[0], eye[1], eye[2]), MPoint(2, 3, 9), 1e-9));

    EXPECT_FALSE(MHWRender::MFrameContext::userChangingViewContext());
    host::setUserChangingView(true);
    EXPECT_TRUE(MHWRender::MFrameContext::userChangingViewContext());
    host::setUserChangingView(false);

    // A context follows its view: resizing shows at once.
    ASSERT_TRUE(host::resizeView(id, 64, 32));
    ASSERT_TRUE(context.getViewportDimensions(ox, oy, w, h));
    EXPECT_EQ(w, 64);
}
