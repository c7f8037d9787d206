#include "dg/messages.h"

#include "dg/access.h"
#include "dg/barrier.h"
#include "dg/nodeBody.h"
#include "dg/scene.h"

#include <maya/MCallbackIdArray.h>
#include <maya/MEventMessage.h>
#include <maya/MNodeMessage.h>

#include <algorithm>
#include <vector>

namespace host {
namespace {

enum class CallbackKind { kEvent, kAttributeChanged, kDirtyPlug, kNameChanged };

struct Callback {
    MCallbackId id = 0;
    CallbackKind kind;
    std::string event;               // kEvent
    const NodeBody* node = nullptr;  // node callbacks
    void* function = nullptr;
    void* clientData = nullptr;
};

std::vector<Callback>& callbacks()
{
    static std::vector<Callback> list;
    return list;
}

MCallbackId nextId()
{
    static MCallbackId next = 1;
    return next++;
}

MCallbackId add(Callback cb, MStatus* status)
{
    if (status)
        *status = MStatus::kSuccess;
    if (!cb.function) {
        if (status)
            *status = MStatus::kInvalidParameter;
        return 0;
    }
    cb.id = nextId();
    callbacks().push_back(cb);
    return cb.id;
}

// A snapshot, so that a callback may add or remove callbacks while we run them.
std::vector<Callback> matching(CallbackKind kind, const NodeBody* node, const std::string& event)
{
    std::vector<Callback> out;
    for (const Callback& cb : callbacks())
        if (cb.kind == kind && cb.node == node && cb.event == event)
            out.push_back(cb);
    return out;
}

bool stillRegistered(MCallbackId id)
{
    for (const Callback& cb : callbacks())
        if (cb.id == id)
            return true;
    return false;
}

// Events the host sends.
const char* kEventNames[] = {"Undo", "Redo", "ToolChanged", "PostToolChanged", "SelectionChanged",
                             "ActiveViewChanged", "modelEditorChanged", "NewSceneOpened",
                             "constructionHistoryChanged", "SelectModeChanged",
                             // Deliberate: accepted so that plug-ins written for an interactive session
                             // register without error, but never sent: the host has no time line,
                             // no file saving, no units to change, no idle loop and no channel box.
                             "SceneOpened", "SceneSaved", "DagObjectCreated", "NameChanged", "deleteAll", "idle", "idleHigh", "idleVeryLow", "timeChanged",
                             "playbackRangeChanged", "playbackRangeSliderChanged", "ChannelBoxLabelSelected",
                             "DisplayRGBColorChanged", "linearUnitChanged", "angularUnitChanged",
                             "timeUnitChanged", "quitApplication", "SelectTypeChanged",
                             "SelectPreferenceChanged", "DisplayPreferenceChanged", "ToolSettingsChanged",
                             "ToolDirtyChanged", "RecentCommandChanged", "UndoSupressed", "PreFileNewOrOpened",
                             "PostSceneRead", "workspaceChanged", "softSelectOptionsChanged",
                             "symmetricModellingOptionsChanged", "snapModeChanged", "EditModeChanged",
                             "ModelPanelSetFocus", "DragRelease", "gridDisplayChanged",
                             "xformConstraintOptionsChanged", "renderLayerChange", "displayLayerChange"};

} // namespace

void sendEvent(const std::string& eventName)
{
    for (const Callback& cb : matching(CallbackKind::kEvent, nullptr, eventName)) {
        if (!stillRegistered(cb.id))
            continue;
        auto fn = reinterpret_cast<MMessage::MBasicFunction>(cb.function);
        guardedVoid("event callback '" + eventName + "'", [&] { fn(cb.clientData); });
    }
}

void notifyAttributeChanged(NodeBody* node, MNodeMessage::AttributeMessage message, const PlugKey& plug,
                            NodeBody* otherNode, const PlugKey* otherPlug)
{
    if (!node)
        return;
    auto list = matching(CallbackKind::kAttributeChanged, node, "");
    if (list.empty())
        return;
    MPlug p = Access::plug(node, plug);
    MPlug other = otherNode && otherPlug ? Access::plug(otherNode, *otherPlug) : MPlug();
    // Callbacks test this bit before they read the other plug, as the reference asks.
    if (!other.isNull())
        message = static_cast<MNodeMessage::AttributeMessage>(message | MNodeMessage::kOtherPlugSet);
    for (const Callback& cb : list) {
        if (!stillRegistered(cb.id))
            continue;
        auto fn = reinterpret_cast<MNodeMessage::MAttr2PlugFunction>(cb.function);
        guardedVoid("attribute changed callback of " + node->name, [&] { fn(message, p, other, cb.clientData); });
    }
}

void notifyDirtyPlug(NodeBody* node, const PlugKey& plug)
{
    auto list = matching(CallbackKind::kDirtyPlug, node, "");
    if (list.empty())
        return;
    MObject n = Access::object(Scene::current().shared(node));
    MPlug p = Access::plug(node, plug);
    for (const Callback& cb : list) {
        if (!stillRegistered(cb.id))
            continue;
        auto fn = reinterpret_cast<MNodeMessage::MNodePlugFunction>(cb.function);
        guardedVoid("dirty plug callback of " + node->name, [&] { fn(n, p, cb.clientData); });
    }
}

void notifyNameChanged(NodeBody* node, const std::string& previousName)
{
    auto list = matching(CallbackKind::kNameChanged, node, "");
    if (list.empty())
        return;
    MObject n = Access::object(Scene::current().shared(node));
    MString prev(previousName.c_str());
    for (const Callback& cb : list) {
        if (!stillRegistered(cb.id))
            continue;
        auto fn = reinterpret_cast<MNodeMessage::MNodeStringFunction>(cb.function);
        guardedVoid("name changed callback of " + node->name, [&] { fn(n, prev, cb.clientData); });
    }
}

void forgetNodeCallbacks(const NodeBody* node)
{
    auto& list = callbacks();
    list.erase(std::remove_if(list.begin(), list.end(), [&](const Callback& cb) { return cb.node == node; }),
               list.end());
}

} // namespace host

MStatus MMessage::removeCallback(MCallbackId id)
{
    auto& list = host::callbacks();
    auto it = std::find_if(list.begin(), list.end(), [&](const host::Callback& cb) { return cb.id == id; });
    if (it == list.end())
        return MStatus::kInvalidParameter;
    list.erase(it);
    return MStatus::kSuccess;
}

MStatus MMessage::removeCallbacks(MCallbackIdArray& ids)
{
    MStatus result;
    for (unsigned int i = 0; i < ids.length(); ++i)
        if (!removeCallback(ids[i]))
            result = MStatus::kInvalidParameter;
    return result;
}

MStatus MMessage::nodeCallbacks(MObject& node, MCallbackIdArray& ids)
{
    host::NodeBody* body = host::Access::node(node);
    if (!body)
        return MStatus::kInvalidParameter;
    ids.clear();
    for (const host::Callback& cb : host::callbacks())
        if (cb.node == body)
            ids.append(cb.id);
    return MStatus::kSuccess;
}

MCallbackId MEventMessage::addEventCallback(const MString& event, MMessage::MBasicFunction func, void* clientData,
                                            MStatus* ReturnStatus)
{
    bool known = false;
    for (const char* n : host::kEventNames)
        known = known || event == n;
    if (!known) {
        if (ReturnStatus)
            *ReturnStatus = MStatus::kInvalidParameter;
        return 0;
    }
    host::Callback cb;
    cb.kind = host::CallbackKind::kEvent;
    cb.event = event.asChar();
    cb.function = reinterpret_cast<void*>(func);
    cb.clientData = clientData;
    return host::add(cb, ReturnStatus);
}

MStatus MEventMessage::getEventNames(MStringArray& names)
{
    names.clear();
    for (const char* n : host::kEventNames)
        names.append(MString(n));
    return MStatus::kSuccess;
}

namespace {

MCallbackId addNodeCallback(MObject& node, host::CallbackKind kind, void* fn, void* clientData, MStatus* status)
{
    host::NodeBody* body = host::Access::node(node);
    if (!body) {
        if (status)
            *status = MStatus::kInvalidParameter;
        return 0;
    }
    host::Callback cb;
    cb.kind = kind;
    cb.node = body;
    cb.function = fn;
    cb.clientData = clientData;
    return host::add(cb, status);
}

} // namespace

MCallbackId MNodeMessage::addAttributeChangedCallback(MObject& node, MAttr2PlugFunction func, void* clientData,
                                                      MStatus* ReturnStatus)
{
    return addNodeCallback(node, host::CallbackKind::kAttributeChanged, reinterpret_cast<void*>(func), clientData,
                           ReturnStatus);
}

MCallbackId MNodeMessage::addNodeDirtyPlugCallback(MObject& node, MNodePlugFunction func, void* clientData,
                                                   MStatus* ReturnStatus)
{
    return addNodeCallback(node, host::CallbackKind::kDirtyPlug, reinterpret_cast<void*>(func), clientData,
                           ReturnStatus);
}

MCallbackId MNodeMessage::addNameChangedCallback(MObject& node, MNodeStringFunction func, void* clientData,
                                                 MStatus* ReturnStatus)
{
    return addNodeCallback(node, host::CallbackKind::kNameChanged, reinterpret_cast<void*>(func), clientData,
                           ReturnStatus);
}
