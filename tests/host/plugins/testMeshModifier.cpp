#include "testMeshModifier.h"

#include <maya/MDataBlock.h>
#include <maya/MDataHandle.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVector.h>
#include <maya/MFnMesh.h>
#include <maya/MFnMeshData.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>

const MTypeId TestMeshModifierNode::id(0x7F10A);
const char* const TestMeshModifierNode::typeName = "testMeshModifier";
MObject TestMeshModifierNode::inMesh;
MObject TestMeshModifierNode::outMesh;
MObject TestMeshModifierNode::offset;

void* TestMeshModifierNode::creator() { return new TestMeshModifierNode(); }

MStatus TestMeshModifierNode::initialize()
{
    MFnTypedAttribute typed;
    inMesh = typed.create("inMesh", "im", MFnData::kMesh);
    outMesh = typed.create("outMesh", "om", MFnData::kMesh);
    typed.setWritable(false);
    typed.setStorable(false);
    MFnNumericAttribute numeric;
    offset = numeric.create("offset", "off", MFnNumericData::k3Float, 0.0);
    for (MObject* a : {&inMesh, &outMesh, &offset})
        CHECK_MSTATUS_AND_RETURN_IT(addAttribute(*a));
    CHECK_MSTATUS_AND_RETURN_IT(attributeAffects(inMesh, outMesh));
    CHECK_MSTATUS_AND_RETURN_IT(attributeAffects(offset, outMesh));
    return MS::kSuccess;
}

// Rebuilds the input into new mesh data (create with the data as owner), then moves it.
MStatus TestMeshModifierNode::compute(const MPlug& plug, MDataBlock& block)
{
    if (plug != outMesh)
        return MS::kUnknownParameter;
    MStatus status;
    MObject input = block.inputValue(inMesh, &status).data();
    CHECK_MSTATUS_AND_RETURN_IT(status);
    const MFloatVector delta = block.inputValue(offset, &status).asFloatVector();
    CHECK_MSTATUS_AND_RETURN_IT(status);

    MFnMesh in(input, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    MFloatPointArray points;
    MIntArray counts, connects;
    CHECK_MSTATUS_AND_RETURN_IT(in.getPoints(points));
    CHECK_MSTATUS_AND_RETURN_IT(in.getVertices(counts, connects));
    for (MFloatPoint& p : points)
        p += delta;

    MFnMeshData dataFn;
    MObject output = dataFn.create(&status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    MFnMesh out;
    out.create(int(points.length()), int(counts.length()), points, counts, connects, output, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);

    MDataHandle handle = block.outputValue(outMesh, &status);
    CHECK_MSTATUS_AND_RETURN_IT(status);
    handle.set(output);
    block.setClean(plug);
    return MS::kSuccess;
}
