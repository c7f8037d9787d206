#pragma once
// MDGModifier: records graph edits (create, delete, rename, connect, disconnect, plug
// values, command text) and applies them on doIt; undoIt takes them back in reverse.

#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

#include <memory>
#include <vector>

namespace host {
struct ModifierOp;
}

class MDGModifier {
public:
    MDGModifier();
    virtual ~MDGModifier();

    MObject createNode(const MTypeId& typeId, MStatus* ReturnStatus = nullptr);
    MObject createNode(const MString& type, MStatus* ReturnStatus = nullptr);
    MStatus deleteNode(const MObject& node, bool includeParents = true);
    MStatus renameNode(const MObject& node, const MString& newName);
    MStatus connect(const MObject& sourceNode, const MObject& sourceAttr, const MObject& destNode,
                    const MObject& destAttr);
    MStatus connect(const MPlug& source, const MPlug& dest);
    MStatus disconnect(const MObject& sourceNode, const MObject& sourceAttr, const MObject& destNode,
                       const MObject& destAttr);
    MStatus disconnect(const MPlug& source, const MPlug& dest);
    MStatus newPlugValue(const MPlug& plug, MObject& plugValue);
    MStatus newPlugValueBool(const MPlug& plug, bool plugValue);
    MStatus newPlugValueInt(const MPlug& plug, int plugValue);
    MStatus newPlugValueFloat(const MPlug& plug, float plugValue);
    MStatus newPlugValueDouble(const MPlug& plug, double plugValue);
    MStatus newPlugValueShort(const MPlug& plug, short plugValue);
    MStatus newPlugValueString(const MPlug& plug, const MString& plugValue);
    MStatus commandToExecute(const MString& command);

    MStatus doIt();
    MStatus undoIt();

protected:
    MObject createNodeUnder(const MString& type, const MObject& parent, MStatus* ReturnStatus);
    MObject createNodeUnder(const MTypeId& typeId, const MObject& parent, MStatus* ReturnStatus);
    void record(std::shared_ptr<host::ModifierOp> op);

private:
    MDGModifier(const MDGModifier&) = delete;
    MDGModifier& operator=(const MDGModifier&) = delete;
    std::vector<std::shared_ptr<host::ModifierOp>> fOps;
    std::size_t fDone = 0; // operations applied so far
};
