#include "nodes/tqSarnContextCmd.h"

#include "tool/tqSarnContext.h"
#include "tool/fusePreview.h"

#include "kernel/entryBarrier.h"
#include "store/infoLines.h"
#include "store/infoTexts.h"
#include "store/logModules.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/storeReads.h"
#include "store/storeWrites.h"
#include "store/tqSarn.h"

#include <maya/MArgParser.h>
#include <maya/MSyntax.h>

#include <algorithm>
#include <limits>

namespace {

using namespace tq;

constexpr const char* kModule = logModule::kTweakNode;

struct Flag {
    const char* shortName;
    const char* longName;
    MSyntax::MArgType type;
};

// The syntax, in the order the scripts know it. Deliberate: -figure is a boolean here although
// the figure mode has four values; the scripts send it so, and the edit reads it as an int.
constexpr Flag kUSpan{"-u", "-uspan", MSyntax::kUnsigned};
constexpr Flag kVSpan{"-v", "-vspan", MSyntax::kUnsigned};
constexpr Flag kRelax{"-r", "-relax", MSyntax::kBoolean};
constexpr Flag kRelaxBrush{"-rb", "-relaxBrush", MSyntax::kBoolean};
constexpr Flag kRefresh{"-re", "-refresh", MSyntax::kBoolean};
constexpr Flag kRefreshPlayer{"-rp", "-refreshPlayer", MSyntax::kBoolean};
constexpr Flag kMergeThreshold{"-mt", "-mergeThreshold", MSyntax::kDouble};
constexpr Flag kRadius{"-rad", "-radius", MSyntax::kDouble};
constexpr Flag kIntensity{"-i", "-intensity", MSyntax::kDouble};
constexpr Flag kSlice{"-slc", "-slice", MSyntax::kBoolean};
constexpr Flag kFreeze{"-fr", "-freeze", MSyntax::kBoolean};
constexpr Flag kFreezeMedian{"-fm", "-freezeMedian", MSyntax::kBoolean};
constexpr Flag kBevel{"-b", "-bevel", MSyntax::kBoolean};
constexpr Flag kFigure{"-fig", "-figure", MSyntax::kBoolean};
constexpr Flag kMoveBrush{"-mvb", "-moveBrush", MSyntax::kBoolean};
constexpr Flag kDisplayDistance{"-dd", "-displayDistance", MSyntax::kDouble};
constexpr Flag kReverseBridge{"-rv", "-reverseBridge", MSyntax::kBoolean};
constexpr Flag kPinch{"-pch", "-pinch", MSyntax::kDouble};
constexpr Flag kRadiusMove{"-rmi", "-radiusmoveinter", MSyntax::kDouble};
constexpr Flag kRadiusRelax{"-rri", "-radiusrelaxinter", MSyntax::kDouble};
constexpr Flag kIntensityRelax{"-iri", "-intensityrelativeinteractive", MSyntax::kDouble};
constexpr Flag kSublines{"-sbl", "-sublines", MSyntax::kBoolean};
constexpr Flag kComplete{"-cmp", "-complete", MSyntax::kBoolean};

constexpr Flag kFlags[] = {kUSpan,  kVSpan,       kRelax,     kRelaxBrush,  kRefresh,         kRefreshPlayer,
                           kMergeThreshold, kRadius, kIntensity, kSlice,    kFreeze,          kFreezeMedian,
                           kBevel,  kFigure,      kMoveBrush, kDisplayDistance, kReverseBridge, kPinch,
                           kRadiusMove, kRadiusRelax, kIntensityRelax, kSublines, kComplete};

// The interactive sizes below this are no size: the message shows, nothing is written.
constexpr double kSmallestInteractive = 0.1;
constexpr double kPinchLimit = 0.95;
constexpr unsigned int kLargestSpans = static_cast<unsigned int>(std::numeric_limits<int>::max());
constexpr double kPinchLimitStored = static_cast<double>(0.95f);

MStatus logged(const MStatus& status, int line)
{
    if (!status)
        status.pAPIerror(kModule, line);
    return status;
}

bool isSet(const MArgParser& parser, const Flag& flag)
{
    return parser.isFlagSet(flag.shortName) || parser.isFlagSet(flag.longName);
}

// Arguments are read by the short name, which the host answers for either form.
template <class T>
T argument(const MArgParser& parser, const Flag& flag, T fallback, int line)
{
    T value = fallback;
    if (!logged(parser.getFlagArgument(flag.shortName, 0, value), line))
        return fallback;
    return value;
}

MString withNumber(const MString& text, double value)
{
    MString out = text;
    out += value;
    return out;
}

} // namespace

const MString tqSarnContextCmd::commandName("tqSarnContext");

void* tqSarnContextCmd::creator() { return new tqSarnContextCmd(); }

tqSarnContextCmd::tqSarnContextCmd() = default;

tqSarnContextCmd::~tqSarnContextCmd() = default;

MPxContext* tqSarnContextCmd::makeObj()
{
    // Nothing may escape to the host: a context that cannot be made is no context.
    context = tq::guardValue<tqSarnContext*>(kModule, "tqSarnContext makeObj", nullptr,
                                             [] { return new tqSarnContext(); });
    return context;
}

MStatus tqSarnContextCmd::appendSyntax()
{
    return guardEntryPoint(kModule, "tqSarnContext appendSyntax", [&]() -> MStatus {
        MSyntax mySyntax = syntax();
        for (const Flag& flag : kFlags)
            logged(mySyntax.addFlag(flag.shortName, flag.longName, flag.type), __LINE__);
        return MStatus::kSuccess;
    });
}

double tqSarnContextCmd::clampPinch(double value)
{
    if (value > kPinchLimit)
        return kPinchLimitStored;
    if (value <= -kPinchLimit)
        return -kPinchLimitStored;
    return value;
}

MStatus tqSarnContextCmd::doEditFlags()
{
    return guardEntryPoint(kModule, "tqSarnContext doEditFlags", [&]() { return editFlags(); });
}

MStatus tqSarnContextCmd::doQueryFlags()
{
    return guardEntryPoint(kModule, "tqSarnContext doQueryFlags", [&]() { return queryFlags(); });
}

MStatus tqSarnContextCmd::editFlags()
{
    MStatus status;
    const MArgParser args = parser(&status);
    logged(status, __LINE__);
    const MObject store = findStoreNode();

    // Deliberate: either span flag reads both arguments; the scripts always send the pair,
    // and one alone sets the other from an argument that was not given (a failed read, 0,
    // which the setter raises to 1).
    if (isSet(args, kVSpan) || isSet(args, kUSpan)) {
        unsigned int u = 0;
        unsigned int v = 0;
        logged(args.getFlagArgument(kUSpan.shortName, 0, u), __LINE__);
        logged(args.getFlagArgument(kVSpan.shortName, 0, v), __LINE__);
        setUSpans(static_cast<int>(std::min(u, kLargestSpans)));
        setVSpans(static_cast<int>(std::min(v, kLargestSpans)));
    }
    if (isSet(args, kRefresh) && context)
        logged(context->refreshFromPanel(), __LINE__);
    if (isSet(args, kRefreshPlayer)) {
        // The anchor chain's points follow its vertices after an edit outside the tool.
        if (context && context->hasAnchorSelection())
            logged(writePlayersFromVertices(readPlayerVertices(status)), __LINE__);
    }
    if (isSet(args, kFreeze)) {
        if (context)
            context->setFreezeBorder(argument(args, kFreeze, false, __LINE__));
        setInfo1(infoText::kFreezeBorder);
    }
    if (isSet(args, kFreezeMedian)) {
        if (context)
            context->setFreezeMedian(argument(args, kFreezeMedian, false, __LINE__));
        setInfo1(infoText::kFreezeMedian);
    }
    if (isSet(args, kRelaxBrush)) {
        const double intensity = isSet(args, kIntensity) ? argument(args, kIntensity, 0.0, __LINE__) : 0.0;
        const double radius = isSet(args, kRadius) ? argument(args, kRadius, 0.0, __LINE__) : 0.0;
        if (context)
            context->setRelaxBrush(intensity, radius);
        setInfo1(infoText::kRelaxBrush);
    }
    if (isSet(args, kDisplayDistance))
        logged(writeDoubleAttr(argument(args, kDisplayDistance, 1.0, __LINE__), storeAttr::kDisplaySize, store),
               __LINE__);
    if (isSet(args, kSlice) && context)
        context->setSlice();
    if (isSet(args, kBevel) && context)
        context->bevelRows(); // a refusal is the routine's answer, not the panel's
    if (isSet(args, kFigure) && context)
        context->setFigure(argument(args, kFigure, 0, __LINE__));
    if (isSet(args, kMoveBrush)) {
        if (context)
            context->setMoveBrush(argument(args, kMoveBrush, false, __LINE__));
        setInfo1(infoText::kMoveBrush);
    }
    if (isSet(args, kReverseBridge)) {
        if (context)
            logged(context->reverseBridgeDirection(), __LINE__);
        setInfo1(infoText::kReverseDirection);
    }
    if (isSet(args, kPinch)) {
        logged(setPinch(clampPinch(argument(args, kPinch, 0.0, __LINE__))), __LINE__);
        if (context)
            context->rebuildWithPinch();
        setInfo1(withNumber(infoText::kPinchValue, getPinch()));
    }
    if (isSet(args, kRadiusMove)) {
        const double value = argument(args, kRadiusMove, 0.0, __LINE__);
        if (value > kSmallestInteractive)
            logged(writeDoubleAttr(value, storeAttr::kRadiusMoveInteractive, store), __LINE__);
        setInfo1(withNumber(infoText::kMoveRadius, value));
    }
    if (isSet(args, kRadiusRelax)) {
        const double value = argument(args, kRadiusRelax, 0.0, __LINE__);
        if (value > kSmallestInteractive)
            logged(writeDoubleAttr(value, storeAttr::kRadiusRelaxInteractive, store), __LINE__);
        setInfo1(withNumber(infoText::kRelaxRadius, value));
    }
    if (isSet(args, kIntensityRelax)) {
        const double value = argument(args, kIntensityRelax, 0.0, __LINE__);
        if (value > kSmallestInteractive)
            logged(writeDoubleAttr(value, storeAttr::kIntensityRelaxInteractive, store), __LINE__);
        setInfo1(withNumber(infoText::kRelaxIntensity, value));
    }
    if (isSet(args, kSublines))
        logged(refreshSublines(), __LINE__);
    if (isSet(args, kComplete) && context)
        context->completeAction();
    return MStatus::kSuccess;
}

MStatus tqSarnContextCmd::queryFlags()
{
    MStatus status;
    const MArgParser args = parser(&status);
    logged(status, __LINE__);
    // Short names only; of several flags the last one's answer stands.
    if (args.isFlagSet(kVSpan.shortName))
        setResult(getVSpans());
    if (args.isFlagSet(kUSpan.shortName))
        setResult(getUSpans());
    if (args.isFlagSet(kFigure.shortName))
        setResult(context ? context->figure() : 0);
    return MStatus::kSuccess;
}
