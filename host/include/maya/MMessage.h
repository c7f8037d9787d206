#pragma once
// MMessage: the base of the message classes; removes callbacks by id.

#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MCallbackIdArray;
class MObject;

class MMessage {
public:
    typedef void (*MBasicFunction)(void* clientData);

    static MStatus removeCallback(MCallbackId id);
    static MStatus removeCallbacks(MCallbackIdArray& ids);
    static MStatus nodeCallbacks(MObject& node, MCallbackIdArray& ids);
};
