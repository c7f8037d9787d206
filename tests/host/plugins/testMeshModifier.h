#pragma once
// A poly modifier for the mesh history tests: outMesh is inMesh with every vertex moved by
// `offset`. Built on the API only (MFnMesh, MFnMeshData), as a plug-in's modifier would be.

#include <maya/MObject.h>
#include <maya/MPxNode.h>
#include <maya/MTypeId.h>

class TestMeshModifierNode : public MPxNode {
public:
    static void* creator();
    static MStatus initialize();
    MStatus compute(const MPlug& plug, MDataBlock& block) override;

    static const MTypeId id;
    static const char* const typeName;
    static MObject inMesh;
    static MObject outMesh;
    static MObject offset;
};
