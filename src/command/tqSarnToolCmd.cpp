#include "command/tqSarnToolCmd.h"

#include "kernel/debugDump.h"
#include "kernel/entryBarrier.h"
#include "kernel/commandTexts.h"
#include "kernel/patchPlumbing.h"
#include "kernel/shadowRows.h"
#include "store/logModules.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storeWrites.h"
#include "store/tqSarn.h"

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MItGeometry.h>

namespace {

using namespace tq;

constexpr const char* kModule = logModule::kToolCommand;

constexpr const char* kUndoLabel = "undo";
constexpr const char* kRedoLabel = "redo";

constexpr const char* kUSpanFlag = "-u";
constexpr const char* kUSpanFlagLong = "-uspan";
constexpr const char* kVSpanFlag = "-v";
constexpr const char* kVSpanFlagLong = "-vspan";
constexpr const char* kCloseFlag = "-c";
constexpr const char* kCloseFlagLong = "-close";
constexpr const char* kRelaxFlag = "-r";
constexpr const char* kRelaxFlagLong = "-relax";
constexpr const char* kFreezeFlag = "-fr";
constexpr const char* kFreezeFlagLong = "-freeze";
constexpr const char* kFreezeMedianFlag = "-fm";
constexpr const char* kFreezeMedianFlagLong = "-freezeMedian";
constexpr const char* kFigureFlag = "-fig";
constexpr const char* kFigureFlagLong = "-figure";
constexpr const char* kGlueFlag = "-gu";
constexpr const char* kGlueFlagLong = "-glue";
constexpr const char* kHelpFlag = "-h";
constexpr const char* kHelpFlagLong = "-help";

// A refusal of the command's own. Deliberate: the message is kept in the source and shown to
// nobody; the status alone goes back.
MStatus failWith(const char* /*message*/) { return MStatus::kInvalidParameter; }

MStatus reported(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kModule, line);
    return status;
}

const char* journalText(tqSarnToolCmd::Mode mode)
{
    switch (mode) {
    case tqSarnToolCmd::kRedrawScratch: return "tqSarn_redrawScratch";
    case tqSarnToolCmd::kAppendPatch: return "tqSarn_appendPatch";
    case tqSarnToolCmd::kRedrawBoundary: return "tqSarn_redrawBoundary";
    case tqSarnToolCmd::kRedrawPatch: return "tqSarn_redrawPatch";
    case tqSarnToolCmd::kChangeSpans: return "tqSarn_changeSpans";
    case tqSarnToolCmd::kBrushRelax: return "tqSarn_brushRelax";
    case tqSarnToolCmd::kScratchNewMesh: return "tqSarn_scratch";
    case tqSarnToolCmd::kScratchOrphan: return "tqSarn_scratch_orphan";
    case tqSarnToolCmd::kTweak: return "tqSarn_tweak";
    case tqSarnToolCmd::kTwist: return "tqSarn_twist";
    default: return "";
    }
}

bool isFlagSet(const MArgDatabase& args, const char* shortName, const char* longName)
{
    return args.isFlagSet(shortName) || args.isFlagSet(longName);
}

const char* setFlagName(const MArgDatabase& args, const char* shortName, const char* longName)
{
    return args.isFlagSet(shortName) ? shortName : longName;
}

} // namespace

const MString tqSarnToolCmd::commandName("tqSarnCmd");

void* tqSarnToolCmd::creator() { return new tqSarnToolCmd(); }

MSyntax tqSarnToolCmd::newSyntax()
{
    MSyntax syntax;
    syntax.addFlag(kUSpanFlag, kUSpanFlagLong, MSyntax::kUnsigned);
    syntax.addFlag(kVSpanFlag, kVSpanFlagLong, MSyntax::kUnsigned);
    syntax.addFlag(kCloseFlag, kCloseFlagLong, MSyntax::kBoolean);
    syntax.addFlag(kRelaxFlag, kRelaxFlagLong, MSyntax::kBoolean);
    syntax.addFlag(kFreezeFlag, kFreezeFlagLong, MSyntax::kBoolean);
    syntax.addFlag(kFreezeMedianFlag, kFreezeMedianFlagLong, MSyntax::kBoolean);
    syntax.addFlag(kFigureFlag, kFigureFlagLong, MSyntax::kUnsigned);
    syntax.addFlag(kGlueFlag, kGlueFlagLong, MSyntax::kBoolean);
    syntax.addFlag(kHelpFlag, kHelpFlagLong, MSyntax::kBoolean);
    return syntax;
}

tqSarnToolCmd::tqSarnToolCmd() { setCommandString(commandName); }

tqSarnToolCmd::~tqSarnToolCmd() = default;

bool tqSarnToolCmd::isUndoable() const { return true; }

MStatus tqSarnToolCmd::doIt(const MArgList& args)
{
    return guardEntryPoint(kModule, "tqSarnCmd doIt", [&]() -> MStatus {
        MStatus status;
        MArgDatabase parsed(syntax(), args, &status);
        if (!status)
            return reported(status, __LINE__);

        if (isFlagSet(parsed, kGlueFlag, kGlueFlagLong)) {
            bool glue = false;
            status = parsed.getFlagArgument(setFlagName(parsed, kGlueFlag, kGlueFlagLong), 0, glue);
            if (!status)
                return reported(status, __LINE__);
            setGlue(glue);
            return MStatus::kSuccess;
        }
        if (isFlagSet(parsed, kUSpanFlag, kUSpanFlagLong) || isFlagSet(parsed, kVSpanFlag, kVSpanFlagLong)) {
            unsigned int uSpans = 0;
            unsigned int vSpans = 0;
            status = parsed.getFlagArgument(setFlagName(parsed, kUSpanFlag, kUSpanFlagLong), 0, uSpans);
            if (!status)
                return reported(status, __LINE__);
            status = parsed.getFlagArgument(setFlagName(parsed, kVSpanFlag, kVSpanFlagLong), 0, vSpans);
            if (!status)
                return reported(status, __LINE__);
            return changeSpansFromFlags(uSpans, vSpans);
        }
        if (isFlagSet(parsed, kCloseFlag, kCloseFlagLong)) {
            fMode = kCloseStrokes;
            return closeStrokes();
        }
        if (isFlagSet(parsed, kHelpFlag, kHelpFlagLong)) {
            setResult(MString("tqSarnCmd: the undoable step of the tqSarn retopology tool"));
            return MStatus::kSuccess;
        }
        return redoIt();
    });
}

MStatus tqSarnToolCmd::finalize()
{
    return guardEntryPoint(kModule, "tqSarnCmd finalize", [&]() -> MStatus {
        MArgList command;
        command.addArg(MString(journalText(fMode)));
        return doFinalize(command);
    });
}

// ---- redo and undo

MStatus tqSarnToolCmd::redoIt()
{
    return guardEntryPoint(kModule, "tqSarnCmd redoIt", [&]() -> MStatus {
        const MDagPath mesh = getActiveMeshPath();
        if (mesh.length() == 0 && fMode != kScratchNewMesh)
            return MStatus::kInvalidParameter;
        MStatus status = runRedo(mesh);
        if (!status)
            return status;
        // The mesh acted on stays the selection, so that the next gesture finds it.
        const MDagPath selected = fMode == kScratchNewMesh ? meshPath : mesh;
        MGlobal::selectByName(selected.fullPathName(), MGlobal::kReplaceList);
        return status;
    });
}

MStatus tqSarnToolCmd::runRedo(const MDagPath& mesh)
{
    MStatus status;
    switch (fMode) {
    case kAppendPatch:
    case kReservedAppend:
    case kScratchOrphan:
        if (!(status = attachAndFeed(mesh)))
            return status;
        return restoreStoreState(kRedoLabel);
    case kScratchNewMesh:
        meshPath = createMeshShape(status);
        if (!(status = attachAndFeed(meshPath)))
            return status;
        return restoreStoreState(kRedoLabel);
    case kRedrawBoundary:
        return applyPositions(mesh, afterPositions);
    case kRedrawPatch:
    case kRedrawScratch:
        if (!(status = applyPositions(mesh, afterPositions)))
            return status;
        return restoreStoreState(kRedoLabel);
    case kChangeSpans:
        if (!(status = feedActivePatchNode(afterFeed)))
            return status;
        return restoreIndices(kUndoLabel);
    case kTweak:
    case kBrushRelax:
        if (!(status = applyPositions(mesh, afterPositions)))
            return status;
        return refreshPlayerAndShadows();
    case kTwist:
        if (!(status = attachAndFeed(mesh)))
            return status;
        return restoreIndices(kUndoLabel);
    default:
        return MStatus::kSuccess;
    }
}

MStatus tqSarnToolCmd::undoIt()
{
    return guardEntryPoint(kModule, "tqSarnCmd undoIt", [&]() -> MStatus { return runUndo(getActiveMeshPath()); });
}

MStatus tqSarnToolCmd::runUndo(const MDagPath& mesh)
{
    MStatus status;
    switch (fMode) {
    case kAppendPatch:
    case kReservedAppend:
    case kScratchOrphan:
        if (!(status = detachPatchNode(patchName)))
            return reported(status, __LINE__);
        return restoreStoreState(kUndoLabel);
    case kScratchNewMesh: {
        if (!(status = MGlobal::executeCommand(deleteIfExistsCommand(meshPath.fullPathName()))))
            return reported(status, __LINE__);
        return restoreStoreState(kUndoLabel);
    }
    case kRedrawBoundary: {
        if (!(status = applyPositions(mesh, beforePositions)))
            return status;
        // Deliberate: undo clears the player row although redo leaves the store alone; the
        // boundary redraw starts again from no anchor chain.
        const MObject store = findStoreNode();
        writePointArrayAttr(MPointArray(), storeAttr::kPlayerPoints, store);
        writePointArrayAttr(MPointArray(), storeAttr::kPlayersLine, store);
        return writeIntArrayAttr(MIntArray(), storeAttr::kPlayerVertices, store);
    }
    case kRedrawPatch:
    case kRedrawScratch:
        if (!(status = applyPositions(mesh, beforePositions)))
            return status;
        return restoreStoreState(kUndoLabel);
    case kChangeSpans:
    case kTwist:
        if (!(status = feedActivePatchNode(beforeFeed)))
            return status;
        return restoreIndices(kRedoLabel);
    case kTweak:
    case kBrushRelax:
        if (!(status = applyPositions(mesh, beforePositions)))
            return status;
        return refreshPlayerAndShadows();
    default:
        return MStatus::kSuccess;
    }
}

MStatus tqSarnToolCmd::attachAndFeed(const MDagPath& mesh)
{
    MObject node;
    if (!attachPatchNode(patchName, mesh, node))
        return MStatus::kInvalidParameter;
    clearTweaks();
    return writeAfterFeed(node);
}

MStatus tqSarnToolCmd::feedActivePatchNode(const PatchFeed& feed)
{
    MObject node;
    MStatus status;
    if (!patchNodeOfActiveMesh(node, status))
        return MStatus::kInvalidParameter;
    clearTweaks();
    return writePatchFeed(feed, node);
}

// ---- hand-over

MStatus tqSarnToolCmd::setCommandText(const MString& text)
{
    fMode = kCommandText;
    commandText = text;
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::setPositions(Mode mode, const MPointArray& before, const MPointArray& after)
{
    fMode = mode;
    beforePositions = before;
    afterPositions = after;
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::setRedrawPatchPositions(const MPointArray& before, const MPointArray& after)
{
    return setPositions(kRedrawPatch, before, after);
}

MStatus tqSarnToolCmd::setRedrawBoundaryPositions(const MPointArray& before, const MPointArray& after)
{
    return setPositions(kRedrawBoundary, before, after);
}

MStatus tqSarnToolCmd::setRedrawScratchPositions(const MPointArray& before, const MPointArray& after)
{
    return setPositions(kRedrawScratch, before, after);
}

MStatus tqSarnToolCmd::setBeforeFeed(const PatchFeed& feed)
{
    fMode = kChangeSpans;
    beforeFeed = feed;
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::setAfterFeed(const PatchFeed& feed)
{
    fMode = kChangeSpans;
    afterFeed = feed;
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::setTweakPositions(const MPointArray& before, const MPointArray& after)
{
    return setPositions(kTweak, before, after);
}

MStatus tqSarnToolCmd::setSpanIndices(const MIntArray& beforePlayerVertices, const MIntArray& beforeShadow1,
                                      const MIntArray& beforeShadow2, const MIntArray& beforeShadow3,
                                      const MIntArray& afterPlayerVertices, const MIntArray& afterShadow1,
                                      const MIntArray& afterShadow2, const MIntArray& afterShadow3)
{
    beforeIndices = SpanIndices{beforePlayerVertices, beforeShadow1, beforeShadow2, beforeShadow3};
    afterIndices = SpanIndices{afterPlayerVertices, afterShadow1, afterShadow2, afterShadow3};
    return MStatus::kSuccess;
}

MStatus tqSarnToolCmd::setBrushRelaxData(const MPointArray& before, const MPointArray& after,
                                         const MIntArray& playerVertices, const MIntArray& shadowIndices)
{
    setPositions(kBrushRelax, before, after);
    redoState.playerVertices = playerVertices;
    redoState.shadowIndices1 = shadowIndices;
    redoState.shadowIndices2 = shadowIndices;
    redoState.shadowIndices3 = shadowIndices;
    return MStatus::kSuccess;
}

// ---- further operations

MStatus tqSarnToolCmd::appendStroke(const MPointArray& points) { return tq::appendStroke(points); }

MStatus tqSarnToolCmd::closeStrokes()
{
    const MObject store = findStoreNode();
    if (store.isNull())
        return MStatus::kSuccess;
    MPointArray points;
    MIntArray sizes;
    readPointArrayAttr(storeAttr::kStrokes, points, store);
    readIntArrayAttr(storeAttr::kSizes, sizes, store);
    MPointArray closed(points);
    unsigned int start = 0;
    for (const int size : sizes) {
        if (size <= 0)
            continue;
        const unsigned int end = start + static_cast<unsigned int>(size);
        // A damaged pair whose sizes run past the points closes what is there.
        if (end > closed.length())
            break;
        closed[end - 1] = closed[start];
        start = end;
    }
    return writePointArrayAttr(closed, storeAttr::kStrokes, store);
}

void tqSarnToolCmd::clearAfterFeed() { afterFeed.clear(); }

MStatus tqSarnToolCmd::clearTweaks()
{
    const MDagPath mesh = getActiveMeshPath();
    if (!mesh.isValid())
        return MStatus::kInvalidParameter;
    return writePointArrayAttr(MPointArray(), "pnts", mesh.node());
}

double tqSarnToolCmd::mergeThreshold()
{
    return optionVarDoubleOr(optionVar::kMergeThreshold, optionVarDefault::kMergeThreshold);
}

double tqSarnToolCmd::distanceSnap()
{
    return optionVarDoubleOr(optionVar::kDistanceSnap, optionVarDefault::kDistanceSnap);
}

MStatus tqSarnToolCmd::saveStoreState(const MString& label)
{
    if (label == kUndoLabel)
        return readStoreState(undoState);
    if (label == kRedoLabel)
        return readStoreState(redoState);
    return failWith("unknown store state label");
}

MStatus tqSarnToolCmd::restoreStoreState(const MString& label)
{
    // Deliberate: both labels are refused on an empty undoState player row, also when
    // redoState is full. An operation that saved no "before" (an append along one stroke)
    // restores nothing on either side.
    if (label != kUndoLabel && label != kRedoLabel)
        return failWith("unknown store state label");
    if (undoState.playerVertices.length() == 0)
        return MStatus::kInvalidParameter;
    return writeStoreState(label == kUndoLabel ? undoState : redoState);
}

MStatus tqSarnToolCmd::saveFeed(const MString& label)
{
    const MDagPath mesh = getActiveMeshPath();
    if (!mesh.isValid())
        return MStatus::kInvalidParameter;
    MStatus status;
    MFnMesh fnMesh(mesh, &status);
    if (!status)
        return reported(status, __LINE__);
    fnMesh.updateSurface();
    if (label == kRedoLabel)
        status = readPatchFeed(fnMesh, beforeFeed);
    else if (label == kUndoLabel)
        status = readPatchFeed(fnMesh, afterFeed);
    else
        return failWith("unknown feed label");
    dumpPoints(beforeFeed.vertices, "vertextArry in save feed");
    return status;
}

MStatus tqSarnToolCmd::writeAfterFeed(const MObject& node)
{
    clearTweaks();
    return writePatchFeed(afterFeed, node);
}

MStatus tqSarnToolCmd::writeBeforeFeed(const MObject& node)
{
    clearTweaks();
    return writePatchFeed(beforeFeed, node);
}

MStatus tqSarnToolCmd::applyPositions(const MDagPath& path, const MPointArray& positions)
{
    MStatus status;
    MItGeometry it(path, &status);
    if (!status)
        return reported(status, __LINE__);
    if (it.count() != static_cast<int>(positions.length()))
        return MStatus::kInvalidParameter;
    return reported(it.setAllPositions(positions, MSpace::kWorld), __LINE__);
}

MStatus tqSarnToolCmd::restoreIndices(const MString& label)
{
    if (label != kUndoLabel && label != kRedoLabel)
        return failWith("unknown index label");
    const SpanIndices& indices = label == kUndoLabel ? afterIndices : beforeIndices;
    dumpIndices(indices.playerVertices, "restore this one ");
    const MStatus status = writeSpanIndices(indices);
    if (!status)
        return status;
    return refreshPlayerAndShadows();
}

MStatus tqSarnToolCmd::refreshPlayerAndShadows()
{
    const MDagPath mesh = getActiveMeshPath();
    if (!mesh.isValid())
        return failWith("invalid mesh");
    const MStatus status = refreshPlayerLine(mesh);
    if (!status)
        return status;
    return refreshShadowRows();
}
