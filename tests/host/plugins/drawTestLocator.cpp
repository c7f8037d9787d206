#include "drawTestLocator.h"

#include <maya/MColor.h>
#include <maya/MDagPath.h>
#include <maya/MEvaluationNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MUserData.h>
#include <maya/MViewport2Renderer.h>

#include <stdexcept>

const MTypeId DrawTestLocator::id(0x7F1A0);
const char* const DrawTestLocator::typeName = "drawTestLocator";
const char* const DrawTestLocator::drawClassification = "drawdb/geometry/drawTestLocator";
const char* const DrawTestLocator::drawRegistrant = "drawTestPluginOverride";

MObject DrawTestLocator::lineStart;
MObject DrawTestLocator::lineEnd;
MObject DrawTestLocator::lineColor;
MObject DrawTestLocator::lineWidth;
MObject DrawTestLocator::lineStyle;
MObject DrawTestLocator::xray;
MObject DrawTestLocator::label;
MObject DrawTestLocator::labelPosition;
MObject DrawTestLocator::alwaysDirty;
MObject DrawTestLocator::markDirty;
MObject DrawTestLocator::throwIn;

void* DrawTestLocator::creator() { return new DrawTestLocator; }

MStatus DrawTestLocator::initialize()
{
    MStatus status;
    MFnNumericAttribute n;
    lineStart = n.createPoint("lineStart", "ls", &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    lineEnd = n.createPoint("lineEnd", "le", &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    n.setDefault(1.0, 0.0, 0.0);
    lineColor = n.createColor("lineColor", "lc", &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    n.setDefault(1.0f, 0.0f, 0.0f);
    lineWidth = n.create("lineWidth", "lw", MFnNumericData::kDouble, 3.0, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    lineStyle = n.create("lineStyle", "lst", MFnNumericData::kInt, 0, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    xray = n.create("xray", "xr", MFnNumericData::kBoolean, 0, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    labelPosition = n.createPoint("labelPosition", "lp2", &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    alwaysDirty = n.create("alwaysDirty", "ad", MFnNumericData::kBoolean, 1, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    markDirty = n.create("markDirty", "md", MFnNumericData::kBoolean, 1, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    throwIn = n.create("throwIn", "thr", MFnNumericData::kInt, 0, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    MFnTypedAttribute t;
    label = t.create("label", "lbl", MFnData::kString, MObject::kNullObj, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    for (const MObject* a : {&lineStart, &lineEnd, &lineColor, &lineWidth, &lineStyle, &xray, &label, &labelPosition,
                             &alwaysDirty, &markDirty, &throwIn}) {
        status = addAttribute(*a);
        CHECK_MSTATUS_AND_RETURN_IT(status);
    }
    return MS::kSuccess;
}

MStatus DrawTestLocator::preEvaluation(const MDGContext&, const MEvaluationNode& evaluationNode)
{
    // Under the evaluation manager nothing else tells Viewport 2.0 that this node changed.
    if (evaluationNode.dirtyPlugCount() > 0 && MPlug(thisMObject(), markDirty).asBool())
        MHWRender::MRenderer::setGeometryDrawDirty(thisMObject());
    return MS::kSuccess;
}

namespace {

struct DrawData : public MUserData {
    int prepared = 0;
    MPoint start, end, labelAt;
    MColor color;
    double width = 1.0;
    int style = 0;
    bool xray = false;
    MString label;
    int throwIn = 0;
};

MPoint pointOf(const MObject& node, const MObject& attribute)
{
    MPlug p(node, attribute);
    return MPoint(p.child(0).asDouble(), p.child(1).asDouble(), p.child(2).asDouble());
}

class DrawTestOverride : public MHWRender::MPxDrawOverride {
public:
    DrawTestOverride(const MObject& obj, bool alwaysDirty)
        : MPxDrawOverride(obj, nullptr, alwaysDirty), fNode(obj)
    {
        MGlobal::displayInfo("drawTestOverride made for " + MFnDependencyNode(obj).name());
    }
    ~DrawTestOverride() override { MGlobal::displayInfo("drawTestOverride destroyed"); }

    MHWRender::DrawAPI supportedDrawAPIs() const override { return MHWRender::kAllDevices; }
    bool hasUIDrawables() const override { return true; }

    MUserData* prepareForDraw(const MDagPath& objPath, const MDagPath&, const MHWRender::MFrameContext&,
                              MUserData* oldData) override
    {
        auto* data = dynamic_cast<DrawData*>(oldData);
        if (!data)
            data = new DrawData;
        const MObject node = objPath.node();
        ++data->prepared;
        data->start = pointOf(node, DrawTestLocator::lineStart);
        data->end = pointOf(node, DrawTestLocator::lineEnd);
        data->labelAt = pointOf(node, DrawTestLocator::labelPosition);
        MPlug colour(node, DrawTestLocator::lineColor);
        data->color = MColor(colour.child(0).asFloat(), colour.child(1).asFloat(), colour.child(2).asFloat());
        data->width = MPlug(node, DrawTestLocator::lineWidth).asDouble();
        data->style = MPlug(node, DrawTestLocator::lineStyle).asInt();
        data->xray = MPlug(node, DrawTestLocator::xray).asBool();
        data->label = MPlug(node, DrawTestLocator::label).asString();
        data->throwIn = MPlug(node, DrawTestLocator::throwIn).asInt();
        if (data->throwIn == 1)
            throw std::runtime_error("prepareForDraw was told to throw");
        return data;
    }

    void addUIDrawables(const MDagPath&, MHWRender::MUIDrawManager& dm, const MHWRender::MFrameContext&,
                        const MUserData* userData) override
    {
        const auto* data = dynamic_cast<const DrawData*>(userData);
        if (!data)
            return;
        if (data->throwIn == 2)
            throw std::runtime_error("addUIDrawables was told to throw");
        if (data->xray)
            dm.beginDrawInXray();
        else
            dm.beginDrawable(MHWRender::MUIDrawManager::kSelectable, 7);
        dm.setColor(data->color);
        dm.setLineWidth(float(data->width));
        dm.setLineStyle(static_cast<MHWRender::MUIDrawManager::LineStyle>(data->style));
        dm.line(data->start, data->end);
        if (data->xray)
            dm.endDrawInXray();
        else
            dm.endDrawable();

        if (data->label.length() > 0) {
            dm.beginDrawable(MHWRender::MUIDrawManager::kNonSelectable);
            dm.setColor(MColor(1.0f, 1.0f, 0.0f));
            dm.setFontName("DejaVu Sans");
            dm.setFontSize(20);
            dm.setDepthPriority(990);
            dm.setLineStyle(1, 0xFF00);
            dm.setPointSize(6.0f);
            dm.text2d(data->labelAt, data->label);
            dm.point2d(data->labelAt);
            dm.endDrawable();
        }

        dm.beginDrawable(MHWRender::MUIDrawManager::kNonSelectable);
        MString count("prepared ");
        count += data->prepared;
        dm.text2d(MPoint(2.0, 2.0), count);
        dm.endDrawable();
    }

private:
    MObject fNode;
};

} // namespace

MHWRender::MPxDrawOverride* createDrawTestOverride(const MObject& obj)
{
    return new DrawTestOverride(obj, MPlug(obj, DrawTestLocator::alwaysDirty).asBool());
}
