#include "patchnode/tqPatchNode.h"

#include "patchnode/patchDiagnostics.h"

#include "kernel/patchPlumbing.h"

#include <maya/MDataHandle.h>
#include <maya/MFloatArray.h>
#include <maya/MFnData.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnFloatArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnMeshData.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MFnVectorArrayData.h>
#include <maya/MIntArray.h>
#include <maya/MItGeometry.h>
#include <maya/MPointArray.h>
#include <maya/MVectorArray.h>

using tq::logIfFailed;

const MTypeId tqPatchNode::id(0x80026);
const MString tqPatchNode::typeName(tq::kPatchNodeTypeName);
const MString tqPatchNode::drawDbClassification("drawdb/geometry/tqPatch");

MObject tqPatchNode::numpolys;
MObject tqPatchNode::numverts;
MObject tqPatchNode::polycount;
MObject tqPatchNode::polyconnect;
MObject tqPatchNode::uarray;
MObject tqPatchNode::varray;
MObject tqPatchNode::vertexarray;
MObject tqPatchNode::polycountUV;
MObject tqPatchNode::polyconnUV;
MObject tqPatchNode::normalsin;
MObject tqPatchNode::facelist;
MObject tqPatchNode::vertexlist;
MObject tqPatchNode::hardenvalues;
MObject tqPatchNode::edgesharden;
MObject tqPatchNode::inMesh;
MObject tqPatchNode::outMesh;

namespace {

// The mesh as the node stores it, read in the order the attributes are listed.
struct StoredMesh {
    int numPolygons = 0;
    int numVertices = 0;
    MIntArray polygonCounts;
    MIntArray polygonConnects;
    MPointArray vertices;
    MFloatArray u;
    MFloatArray v;
    MVectorArray faceVertexNormals;
    MIntArray faceList;
    MIntArray vertexList;
    MIntArray smoothFlags;
    MIntArray edgeIds;
    MIntArray uvCounts;
    MIntArray uvIds;

    bool empty() const
    {
        return numPolygons == 0 && numVertices == 0 && uvIds.length() == 0 && vertices.length() == 0 &&
               polygonConnects.length() == 0;
    }
};

// Reads one stored array. An attribute never written holds no data: that is an empty array,
// not a failure. Data the function set refuses is logged and leaves `out` empty.
template <class DataFn, class Array>
void readArray(MDataBlock& block, const MObject& attribute, Array& out, int line)
{
    MStatus status;
    MDataHandle handle = block.inputValue(attribute, &status);
    if (!logIfFailed(status, line))
        return;
    MObject data = handle.data();
    if (data.isNull())
        return;
    DataFn fn(data, &status);
    if (!logIfFailed(status, line))
        return;
    out = fn.array(&status);
    logIfFailed(status, line);
}

int readInt(MDataBlock& block, const MObject& attribute, int line)
{
    MStatus status;
    MDataHandle handle = block.inputValue(attribute, &status);
    if (!logIfFailed(status, line))
        return 0;
    return handle.asInt();
}

StoredMesh readStoredMesh(MDataBlock& block)
{
    StoredMesh m;
    m.numPolygons = readInt(block, tqPatchNode::numpolys, __LINE__);
    m.numVertices = readInt(block, tqPatchNode::numverts, __LINE__);
    readArray<MFnIntArrayData>(block, tqPatchNode::polycount, m.polygonCounts, __LINE__);
    readArray<MFnIntArrayData>(block, tqPatchNode::polyconnect, m.polygonConnects, __LINE__);
    readArray<MFnPointArrayData>(block, tqPatchNode::vertexarray, m.vertices, __LINE__);
    readArray<MFnFloatArrayData>(block, tqPatchNode::uarray, m.u, __LINE__);
    readArray<MFnFloatArrayData>(block, tqPatchNode::varray, m.v, __LINE__);
    readArray<MFnVectorArrayData>(block, tqPatchNode::normalsin, m.faceVertexNormals, __LINE__);
    readArray<MFnIntArrayData>(block, tqPatchNode::facelist, m.faceList, __LINE__);
    readArray<MFnIntArrayData>(block, tqPatchNode::vertexlist, m.vertexList, __LINE__);
    readArray<MFnIntArrayData>(block, tqPatchNode::hardenvalues, m.smoothFlags, __LINE__);
    readArray<MFnIntArrayData>(block, tqPatchNode::edgesharden, m.edgeIds, __LINE__);
    readArray<MFnIntArrayData>(block, tqPatchNode::polycountUV, m.uvCounts, __LINE__);
    readArray<MFnIntArrayData>(block, tqPatchNode::polyconnUV, m.uvIds, __LINE__);
    return m;
}

// Builds the stored mesh into new mesh data and hands it to `output`. A mesh the host will
// not make leaves `output` as it was; a failed UV or smoothing step is logged and the mesh
// goes out without it.
MStatus rebuild(const StoredMesh& m, MDataHandle& output)
{
    MStatus status;
    MFnMeshData dataFn;
    MObject data = dataFn.create(&status);
    if (!logIfFailed(status, __LINE__))
        return status;
    MFnMesh meshFn;
    meshFn.create(m.numVertices, m.numPolygons, m.vertices, m.polygonCounts, m.polygonConnects, m.u, m.v, data,
                  &status);
    if (!logIfFailed(status, __LINE__))
        return status;
    MStatus result = logIfFailed(meshFn.assignUVs(m.uvCounts, m.uvIds), __LINE__);
    status = logIfFailed(meshFn.setEdgeSmoothings(m.edgeIds, m.smoothFlags), __LINE__);
    if (!status)
        result = status;
    status = logIfFailed(meshFn.cleanupEdgeSmoothing(), __LINE__);
    if (!status)
        result = status;
    status = logIfFailed(meshFn.updateSurface(), __LINE__);
    if (!status)
        result = status;
    status = logIfFailed(output.set(data), __LINE__);
    return status ? result : status;
}

MObject createTypedArray(MFnTypedAttribute& fn, const char* longName, const char* shortName, MFnData::Type type,
                         int line)
{
    MStatus status;
    MObject attribute = fn.create(longName, shortName, type, MObject::kNullObj, &status);
    logIfFailed(status, line);
    fn.setStorable(true);
    fn.setWritable(true);
    fn.setHidden(true);
    return attribute;
}

} // namespace

tqPatchNode::tqPatchNode() = default;
tqPatchNode::~tqPatchNode() = default;

void* tqPatchNode::creator() { return new tqPatchNode(); }

MStatus tqPatchNode::initialize()
{
    MFnNumericAttribute nAttr;
    MFnTypedAttribute tAttr;
    MStatus status;

    numpolys = nAttr.create("numpolys", "np", MFnNumericData::kInt, 0, &status);
    logIfFailed(status, __LINE__);
    nAttr.setStorable(true);
    nAttr.setKeyable(true);
    nAttr.setHidden(true);
    numverts = nAttr.create("numverts", "nv", MFnNumericData::kInt, 0, &status);
    logIfFailed(status, __LINE__);
    nAttr.setStorable(true);
    nAttr.setKeyable(true);
    nAttr.setHidden(true);

    polycount = createTypedArray(tAttr, "polycount", "pcu", MFnData::kIntArray, __LINE__);
    polyconnect = createTypedArray(tAttr, "polyconnect", "pcn", MFnData::kIntArray, __LINE__);
    uarray = createTypedArray(tAttr, "uarray", "us", MFnData::kFloatArray, __LINE__);
    varray = createTypedArray(tAttr, "varray", "vs", MFnData::kFloatArray, __LINE__);

    vertexarray = tAttr.create("vertexarray", "va", MFnData::kPointArray, MObject::kNullObj, &status);
    logIfFailed(status, __LINE__);
    tAttr.setStorable(true);
    tAttr.setKeyable(true);
    tAttr.setHidden(true);

    polycountUV = createTypedArray(tAttr, "polycountUV", "pcuv", MFnData::kIntArray, __LINE__);
    polyconnUV = createTypedArray(tAttr, "polyconnUV", "pcov", MFnData::kIntArray, __LINE__);
    normalsin = createTypedArray(tAttr, "normalsin", "ni", MFnData::kVectorArray, __LINE__);
    facelist = createTypedArray(tAttr, "facelist", "fl", MFnData::kIntArray, __LINE__);
    vertexlist = createTypedArray(tAttr, "vertexlist", "vl", MFnData::kIntArray, __LINE__);
    hardenvalues = createTypedArray(tAttr, "hardenvalues", "hv", MFnData::kIntArray, __LINE__);
    edgesharden = createTypedArray(tAttr, "edgesharden", "eh", MFnData::kIntArray, __LINE__);

    inMesh = tAttr.create("inMesh", "im", MFnData::kMesh, MObject::kNullObj, &status);
    logIfFailed(status, __LINE__);
    tAttr.setStorable(true);
    tAttr.setKeyable(true);
    tAttr.setHidden(true);
    outMesh = tAttr.create("outMesh", "om", MFnData::kMesh, MObject::kNullObj, &status);
    logIfFailed(status, __LINE__);
    tAttr.setStorable(false);
    tAttr.setKeyable(true);
    tAttr.setHidden(true);

    // Saved scenes list the attributes in this order, which is not the order of creation.
    for (const MObject* attribute :
         {&outMesh, &inMesh, &uarray, &varray, &vertexarray, &polyconnect, &polycount, &numpolys, &numverts,
          &hardenvalues, &edgesharden, &vertexlist, &normalsin, &facelist, &polyconnUV, &polycountUV}) {
        status = addAttribute(*attribute);
        logIfFailed(status, __LINE__);
    }

    // Deliberate: of the stored arrays only vertexarray affects the output here; polyconnUV
    // does through setDependentsDirty, and the others not at all. The feed writes polyconnUV
    // last, so its write is the one that makes the rebuilt mesh show.
    status = attributeAffects(vertexarray, outMesh);
    logIfFailed(status, __LINE__);
    status = attributeAffects(inMesh, outMesh);
    logIfFailed(status, __LINE__);
    status = attributeAffects(state, outMesh);
    logIfFailed(status, __LINE__);
    return MS::kSuccess;
}

MStatus tqPatchNode::compute(const MPlug& plug, MDataBlock& dataBlock)
{
    return tq::guardEntryPoint("tqPatchNode::compute", [&] { return computeOutput(plug, dataBlock); });
}

MStatus tqPatchNode::computeOutput(const MPlug& plug, MDataBlock& dataBlock) const
{
    MStatus status;
    const short nodeState = dataBlock.outputValue(state, &status).asShort();
    logIfFailed(status, __LINE__);

    if (nodeState == 1) {
        // Has no effect: the input goes through, moved to the stored positions while the tool
        // edits the shape. A list of another length than the input's vertices is refused by
        // the iterator and the input goes through as it is.
        MDataHandle input = dataBlock.inputValue(inMesh, &status);
        logIfFailed(status, __LINE__);
        MDataHandle output = dataBlock.outputValue(outMesh, &status);
        logIfFailed(status, __LINE__);
        logIfFailed(output.set(input.asMesh()), __LINE__);
        MPointArray positions;
        readArray<MFnPointArrayData>(dataBlock, vertexarray, positions, __LINE__);
        if (positions.length() > 0) {
            // Moved on the output's share of the mesh: moving the input's would change this
            // block's cached input, and a later pass would start from moved points.
            // A list of another length is the normal case while the tool generates a patch
            // again (the stored mesh has the patch, the input not): the iterator would refuse
            // it, and the input goes through as it is, without an error line per drag event.
            MItGeometry vertices(output, false, &status);
            if (logIfFailed(status, __LINE__) && vertices.count() == static_cast<int>(positions.length()))
                logIfFailed(vertices.setAllPositions(positions, MSpace::kObject), __LINE__);
        }
        // Deliberate: the output is not set clean here, so every read while the node is
        // suspended passes the input through again; the tool's direct edits of the shape
        // rely on nothing being kept from an earlier pass.
        return MS::kSuccess;
    }

    if (plug == outMesh) {
        MDataHandle input = dataBlock.inputValue(inMesh, &status);
        logIfFailed(status, __LINE__);
        MDataHandle output = dataBlock.outputValue(outMesh, &status);
        logIfFailed(status, __LINE__);
        MString downstream;
        // Deliberate: asked and not used; the question costs one look at the connections.
        patchDownstreamName(downstream);

        const StoredMesh stored = readStoredMesh(dataBlock);
        if (stored.empty())
            status = logIfFailed(output.set(input.asMesh()), __LINE__);
        else
            status = rebuild(stored, output);
    }
    // Deliberate: any plug is declared clean, not only outMesh; no other plug is computed.
    dataBlock.setClean(plug);
    return status;
}

MStatus tqPatchNode::setDependentsDirty(const MPlug& plug, MPlugArray& affected)
{
    return tq::guardEntryPoint("tqPatchNode::setDependentsDirty", [&] {
        // polyconnUV has no attributeAffects of its own: this is how its write reaches outMesh.
        if (plug == polyconnUV || plug == state || plug == vertexarray)
            affected.append(MPlug(thisMObject(), outMesh));
        return MStatus(MS::kSuccess);
    });
}

MString tqPatchNode::patchDownstreamName(MString& name) const
{
    name.clear();
    MPlug output(thisMObject(), outMesh);
    MPlugArray destinations;
    MStatus status;
    if (output.destinations(destinations, &status) && destinations.length() > 0) {
        MObject node = destinations[0].node();
        MFnDependencyNode nodeFn(node, &status);
        if (status)
            name = nodeFn.name();
    }
    return name;
}
