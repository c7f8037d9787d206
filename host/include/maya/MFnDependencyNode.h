#pragma once
// MFnDependencyNode: creates dependency nodes and reads and edits what every node has:
// name, type, uuid, attributes, plugs and connections.

#include <maya/MFnBase.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>
#include <maya/MUuid.h>

class MPlugArray;
class MPxNode;

class MFnDependencyNode : public MFnBase {
    TQHOST_DECLARE_MFN(MFnDependencyNode, MFnBase)

    MObject create(const MTypeId& typeId, MStatus* ReturnStatus = nullptr);
    MObject create(const MTypeId& typeId, const MString& name, MStatus* ReturnStatus = nullptr);
    MObject create(const MString& type, MStatus* ReturnStatus = nullptr);
    MObject create(const MString& type, const MString& name, MStatus* ReturnStatus = nullptr);

    MTypeId typeId(MStatus* ReturnStatus = nullptr) const;
    MString typeName(MStatus* ReturnStatus = nullptr) const;
    MString name(MStatus* ReturnStatus = nullptr) const;
    MString absoluteName(MStatus* ReturnStatus = nullptr) const;
    MString setName(const MString& name, bool createNamespace = false, MStatus* ReturnStatus = nullptr);
    MUuid uuid(MStatus* ReturnStatus = nullptr) const;
    MString pluginName(MStatus* ReturnStatus = nullptr) const;
    MPxNode* userNode(MStatus* ReturnStatus = nullptr) const;
    bool isDefaultNode(MStatus* ReturnStatus = nullptr) const;
    // The host has no file references: every live node is the scene's own, so false.
    bool isFromReferencedFile(MStatus* ReturnStatus = nullptr) const;

    MStatus getConnections(MPlugArray& array) const;
    unsigned int attributeCount(MStatus* ReturnStatus = nullptr) const;
    MObject attribute(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MObject attribute(const MString& attrName, MStatus* ReturnStatus = nullptr) const;
    bool hasAttribute(const MString& name, MStatus* ReturnStatus = nullptr) const;
    MStatus getAffectedAttributes(const MObject& attr, MObjectArray& affectedAttributes) const;
    MStatus getAffectingAttributes(const MObject& attr, MObjectArray& affectingAttributes) const;

    MPlug findPlug(const MObject& attr, bool wantNetworkedPlug, MStatus* ReturnStatus = nullptr) const;
    MPlug findPlug(const MString& attrName, bool wantNetworkedPlug, MStatus* ReturnStatus = nullptr) const;
    MPlug findPlug(const MObject& attr, MStatus* ReturnStatus = nullptr) const;
    MPlug findPlug(const MString& attrName, MStatus* ReturnStatus = nullptr) const;

    static MString classification(const MString& nodeTypeName);
};
