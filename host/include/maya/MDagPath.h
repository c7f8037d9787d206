#pragma once
// MDagPath: the path from the world to one DAG node. Its matrices are the products of the
// transforms along it.

#include <maya/MFn.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

class MDagPathArray;

class MDagPath {
public:
    MDagPath();
    MDagPath(const MDagPath& src);
    ~MDagPath();
    MDagPath& operator=(const MDagPath& src);
    bool operator==(const MDagPath& other) const;

    static MStatus getAPathTo(const MObject& node, MDagPath& path);
    static MDagPath getAPathTo(const MObject& node, MStatus* ReturnStatus = nullptr);
    static MStatus getAllPathsTo(const MObject& node, MDagPathArray& allPaths);

    bool hasFn(MFn::Type type, MStatus* ReturnStatus = nullptr) const;
    MFn::Type apiType(MStatus* ReturnStatus = nullptr) const;
    bool isValid(MStatus* ReturnStatus = nullptr) const;
    MObject node(MStatus* ReturnStatus = nullptr) const;
    MObject transform(MStatus* ReturnStatus = nullptr) const;
    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    MStatus extendToShape();
    MStatus extendToShapeDirectlyBelow(unsigned int index);
    MStatus numberOfShapesDirectlyBelow(unsigned int& num) const;
    unsigned int childCount(MStatus* ReturnStatus = nullptr) const;
    MObject child(unsigned int i, MStatus* ReturnStatus = nullptr) const;
    MStatus push(const MObject& child);
    MStatus pop(unsigned int num = 1);
    MStatus set(const MDagPath& src);
    unsigned int instanceNumber(MStatus* ReturnStatus = nullptr) const;
    bool isInstanced(MStatus* ReturnStatus = nullptr) const;
    bool isVisible(MStatus* ReturnStatus = nullptr) const;

    MMatrix inclusiveMatrix(MStatus* ReturnStatus = nullptr) const;
    MMatrix exclusiveMatrix(MStatus* ReturnStatus = nullptr) const;
    MMatrix inclusiveMatrixInverse(MStatus* ReturnStatus = nullptr) const;
    MMatrix exclusiveMatrixInverse(MStatus* ReturnStatus = nullptr) const;

    MString fullPathName(MStatus* ReturnStatus = nullptr) const;
    MString partialPathName(MStatus* ReturnStatus = nullptr) const;

private:
    friend class host::Access;
    std::vector<MObject> fNodes; // from the top-level node down to the tip
};
