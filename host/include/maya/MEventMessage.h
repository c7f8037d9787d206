#pragma once
// MEventMessage: callbacks on named events ("Undo", "Redo", "ToolChanged",
// "SelectionChanged", "modelEditorChanged", ...).

#include <maya/MMessage.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

class MEventMessage : public MMessage {
public:
    static MCallbackId addEventCallback(const MString& event, MMessage::MBasicFunction func,
                                        void* clientData = nullptr, MStatus* ReturnStatus = nullptr);
    static MStatus getEventNames(MStringArray& names);
};
