#pragma once
// MNodeMessage: callbacks on one node: attribute changes, dirty plugs, renames.

#include <maya/MMessage.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

class MNodeMessage : public MMessage {
public:
    enum AttributeMessage {
        kConnectionMade = 0x01,
        kConnectionBroken = 0x02,
        kAttributeEval = 0x04,
        kAttributeSet = 0x08,
        kAttributeLocked = 0x10,
        kAttributeUnlocked = 0x20,
        kAttributeAdded = 0x40,
        kAttributeRemoved = 0x80,
        kAttributeRenamed = 0x100,
        kAttributeKeyable = 0x200,
        kAttributeUnkeyable = 0x400,
        kIncomingDirection = 0x800,
        kAttributeArrayAdded = 0x1000,
        kAttributeArrayRemoved = 0x2000,
        kOtherPlugSet = 0x4000,
        kLast = 0x8000
    };

    typedef void (*MAttr2PlugFunction)(MNodeMessage::AttributeMessage msg, MPlug& plug, MPlug& otherPlug,
                                       void* clientData);
    typedef void (*MNodePlugFunction)(MObject& node, MPlug& plug, void* clientData);
    typedef void (*MNodeStringFunction)(MObject& node, const MString& str, void* clientData);

    static MCallbackId addAttributeChangedCallback(MObject& node, MAttr2PlugFunction func,
                                                   void* clientData = nullptr, MStatus* ReturnStatus = nullptr);
    static MCallbackId addNodeDirtyPlugCallback(MObject& node, MNodePlugFunction func,
                                                void* clientData = nullptr, MStatus* ReturnStatus = nullptr);
    static MCallbackId addNameChangedCallback(MObject& node, MNodeStringFunction func,
                                              void* clientData = nullptr, MStatus* ReturnStatus = nullptr);
};
