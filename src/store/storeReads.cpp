#include "store/storeReads.h"

#include "store/hostWidgets.h"
#include "store/logModules.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/tqSarn.h"

namespace tq {

namespace {

constexpr const char* kModule = logModule::kFunctions;

template <class Array, class Reader>
Array readFromStore(const char* name, MStatus& status, Reader reader)
{
    Array out;
    MObject store = findStoreNode();
    if (store.isNull()) {
        status = MStatus::kInvalidParameter;
        return out;
    }
    status = reader(name, out, store);
    return out;
}

} // namespace

MStatus readSizes(const MObject& store, MIntArray& out)
{
    return readIntArrayAttr(storeAttr::kSizes, out, store);
}

MStatus readShadowSizes(const MObject& store, MIntArray& out)
{
    return readIntArrayAttr(storeAttr::kSizesShadow, out, store);
}

MStatus readStrokes(const MObject& store, MPointArray& out)
{
    if (store.isNull()) {
        out.clear();
        return MStatus::kSuccess;
    }
    return readPointArrayAttr(storeAttr::kStrokes, out, store);
}

MStatus readShadowStrokes(MPointArray& out)
{
    MStatus status;
    out = readFromStore<MPointArray>(storeAttr::kStrokesShadow, status, readPointArrayAttr);
    return status;
}

MIntArray readPlayerVertices(MStatus& status)
{
    return readFromStore<MIntArray>(storeAttr::kPlayerVertices, status, readIntArrayAttr);
}

MPointArray readPlayerPoints(MStatus& status)
{
    return readFromStore<MPointArray>(storeAttr::kPlayerPoints, status, readPointArrayAttr);
}

MIntArray readNewFaces()
{
    MStatus status;
    return readFromStore<MIntArray>(storeAttr::kNewFaces, status, readIntArrayAttr);
}

MStatus readShadowIndices(MIntArray& out1, MIntArray& out2, MIntArray& out3)
{
    MObject store = findStoreNode();
    MStatus result;
    MIntArray* outs[] = {&out1, &out2, &out3};
    const char* names[] = {storeAttr::kShadowIndices1, storeAttr::kShadowIndices2, storeAttr::kShadowIndices3};
    for (int i = 0; i < 3; ++i) {
        MStatus status = readIntArrayAttr(names[i], *outs[i], store);
        if (!status) {
            status.pAPIerror(kModule, __LINE__, names[i]);
            if (result)
                result = status;
        }
    }
    return result;
}

double getPinch()
{
    double pinch = 0.0;
    readDoubleAttr(storeAttr::kPinch, pinch, findStoreNode());
    int sliderValue = 0;
    if (!isButtonChecked(widget::kLockedPinchCheck) && readSliderValue(widget::kPinchSlider, sliderValue))
        return sliderValue * 0.01;
    return pinch;
}

} // namespace tq
