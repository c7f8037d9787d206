#include "store/infoLines.h"

#include "store/infoTexts.h"
#include "store/logModules.h"
#include "store/optionVars.h"
#include "store/storeAttributes.h"
#include "store/storeLookup.h"
#include "store/tqSarn.h"

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>

namespace tq {

namespace {

constexpr const char* kModule = logModule::kFunctions;

// Reads `displayInfo` and drops the value. Deliberate: the read is there only to make the
// store current after a line changed; nothing uses what it returns.
void touchDisplayInfo()
{
    MStatus status;
    readIntAttr(storeAttr::kDisplayInfo, findStoreNode(), status);
}

bool infoShown()
{
    MStatus status;
    return readIntAttr(storeAttr::kDisplayInfo, findStoreNode(), status) != 0;
}

MString storedLine(const char* name, const char* fallback)
{
    bool exists = false;
    const MString text = MGlobal::optionVarStringValue(name, &exists);
    return exists ? text : MString(fallback);
}

} // namespace

void setInfo1(const MString& text)
{
    MString line = text;
    MStatus status;
    const MDagPath source = getSourceMeshPath(status);
    if (source.isValid()) {
        MFnMesh mesh(source, &status);
        const int count = status ? mesh.numPolygons(&status) : 0;
        if (!status)
            status.pAPIerror(kModule, __LINE__, "source mesh");
        MFnDependencyNode node(source.node());
        if (count > kHeavySourcePolygons && !node.isFromReferencedFile()) {
            line += infoText::kHeavySourceHead;
            line += count;
            line += infoText::kHeavySourceTail;
        }
    }
    MGlobal::setOptionVarValue(optionVar::kInfo1, line);
    touchDisplayInfo();
}

void setInfo2(const MString& text)
{
    MGlobal::setOptionVarValue(optionVar::kInfo2, text);
    touchDisplayInfo();
}

void setInfos(const MString& line2, const MString& line1)
{
    setInfo2(line2);
    setInfo1(line1);
}

MString getInfo1() { return infoShown() ? storedLine(optionVar::kInfo1, "... 1") : MString(); }

MString getInfo2() { return infoShown() ? storedLine(optionVar::kInfo2, "... 2") : MString(); }

} // namespace tq
