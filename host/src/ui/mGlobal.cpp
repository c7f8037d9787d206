#include <maya/MGlobal.h>

#include "dg/access.h"
#include "dg/messages.h"
#include "dg/scene.h"
#include "command/commandAccess.h"
#include "command/interpreter.h"
#include "ui/selectionState.h"

#include "host/log.h"

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MRichSelection.h>
#include <maya/MSelectionList.h>

#include <cstdlib>

namespace {

MGlobal::MSelectionMode gSelectionMode = MGlobal::kSelectObjectMode;

void adjust(MSelectionList& active, const MSelectionList& list, MGlobal::ListAdjustment how)
{
    switch (how) {
    case MGlobal::kReplaceList: active = list; break;
    case MGlobal::kXORWithList: active.merge(list, MSelectionList::kXORWithList); break;
    case MGlobal::kRemoveFromList: active.merge(list, MSelectionList::kRemoveFromList); break;
    case MGlobal::kAddToHeadOfList: {
        MSelectionList head = list;
        head.merge(active);
        active = head;
        break;
    }
    default: active.merge(list); break;
    }
}

MStatus applySelection(const MSelectionList& list, MGlobal::ListAdjustment how)
{
    MSelectionList next = host::activeSelection();
    adjust(next, list, how);
    host::setActiveSelection(next);
    return MStatus::kSuccess;
}

} // namespace

MGlobal::MMayaState MGlobal::mayaState(MStatus* ReturnStatus)
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    return kInteractive;
}

MString MGlobal::mayaVersion() { return MString("2025"); }
int MGlobal::apiVersion() { return 20250000; }

MStatus MGlobal::getActiveSelectionList(MSelectionList& dest, bool)
{
    // Items whose nodes were deleted since they were selected drop out.
    dest.clear();
    const MSelectionList& active = host::activeSelection();
    for (unsigned int i = 0; i < active.length(); ++i) {
        MObject node;
        if (!active.getDependNode(i, node))
            continue;
        MDagPath path;
        MObject component;
        MPlug plug;
        if (active.getDagPath(i, path, component))
            dest.add(path, component);
        else if (active.getPlug(i, plug))
            dest.add(plug);
        else
            dest.add(node);
    }
    return MStatus::kSuccess;
}

MStatus MGlobal::setActiveSelectionList(const MSelectionList& src, ListAdjustment listAdjustment)
{
    return applySelection(src, listAdjustment);
}

MStatus MGlobal::getRichSelection(MRichSelection& dest, bool defaultToActiveSelection)
{
    MSelectionList list;
    if (defaultToActiveSelection)
        getActiveSelectionList(list);
    return dest.setSelection(list);
}

MStatus MGlobal::setRichSelection(const MRichSelection& src)
{
    MSelectionList list;
    src.getSelection(list);
    return applySelection(list, kReplaceList);
}

MStatus MGlobal::getSelectionListByName(const MString& name, MSelectionList& list)
{
    list.clear();
    return list.add(name);
}

MStatus MGlobal::selectByName(const MString& name, ListAdjustment listAdjustment)
{
    MSelectionList list;
    MStatus st = list.add(name);
    if (!st)
        return st;
    return applySelection(list, listAdjustment);
}

MStatus MGlobal::select(MObject& object, ListAdjustment listAdjustment)
{
    MSelectionList list;
    MStatus st = list.add(object);
    return st ? applySelection(list, listAdjustment) : st;
}

MStatus MGlobal::select(const MDagPath& object, const MObject& component, ListAdjustment listAdjustment)
{
    MSelectionList list;
    MStatus st = list.add(object, component);
    return st ? applySelection(list, listAdjustment) : st;
}

MStatus MGlobal::select(const MSelectionList& list, ListAdjustment listAdjustment)
{
    return applySelection(list, listAdjustment);
}

MStatus MGlobal::unselect(MObject& object)
{
    MSelectionList list;
    MStatus st = list.add(object);
    return st ? applySelection(list, kRemoveFromList) : st;
}

MStatus MGlobal::unselect(const MDagPath& object, const MObject& component)
{
    MSelectionList list;
    MStatus st = list.add(object, component);
    return st ? applySelection(list, kRemoveFromList) : st;
}

// Deletes at once, outside the undo queue: an undoable deletion goes through MDGModifier or
// the `delete` command. A DAG node takes its children with it.
MStatus MGlobal::deleteNode(MObject& node)
{
    MStatus st;
    host::NodeBody* body = host::Access::node(node, &st);
    if (!body) {
        return MStatus::kInvalidParameter;
    }
    return host::Scene::current().deleteNode(body);
}

MStatus MGlobal::clearSelectionList()
{
    host::setActiveSelection(MSelectionList());
    return MStatus::kSuccess;
}

MGlobal::MSelectionMode MGlobal::selectionMode(MStatus* ReturnStatus)
{
    if (ReturnStatus)
        *ReturnStatus = MStatus::kSuccess;
    return gSelectionMode;
}

MStatus MGlobal::setSelectionMode(MSelectionMode mode)
{
    if (gSelectionMode != mode) {
        gSelectionMode = mode;
        host::sendEvent("SelectModeChanged");
    }
    return MStatus::kSuccess;
}

void MGlobal::displayInfo(const MString& theMessage) { host::writeLog(host::LogLevel::kInfo, theMessage.asChar()); }

void MGlobal::displayWarning(const MString& theWarning)
{
    host::writeLog(host::LogLevel::kWarning, theWarning.asChar());
}

void MGlobal::displayError(const MString& theError) { host::writeLog(host::LogLevel::kError, theError.asChar()); }

// ---- Option variables --------------------------------------------------------------------
// Reads convert as the optionVar command does: a string that holds a number reads as that
// number; a number read as a string is its text.

int MGlobal::optionVarIntValue(const MString& name, bool* exists)
{
    auto& vars = host::optionVariables();
    auto it = vars.find(name.asChar());
    if (exists)
        *exists = it != vars.end();
    if (it == vars.end())
        return 0;
    if (auto* i = std::get_if<int>(&it->second))
        return *i;
    if (auto* d = std::get_if<double>(&it->second))
        return static_cast<int>(*d);
    return std::atoi(std::get<std::string>(it->second).c_str());
}

double MGlobal::optionVarDoubleValue(const MString& name, bool* exists)
{
    auto& vars = host::optionVariables();
    auto it = vars.find(name.asChar());
    if (exists)
        *exists = it != vars.end();
    if (it == vars.end())
        return 0.0;
    if (auto* i = std::get_if<int>(&it->second))
        return *i;
    if (auto* d = std::get_if<double>(&it->second))
        return *d;
    return std::atof(std::get<std::string>(it->second).c_str());
}

MString MGlobal::optionVarStringValue(const MString& name, bool* exists)
{
    auto& vars = host::optionVariables();
    auto it = vars.find(name.asChar());
    if (exists)
        *exists = it != vars.end();
    if (it == vars.end())
        return MString();
    if (auto* s = std::get_if<std::string>(&it->second))
        return MString(s->c_str());
    MString out;
    if (auto* i = std::get_if<int>(&it->second))
        out += *i;
    else
        out += std::get<double>(it->second);
    return out;
}

bool MGlobal::setOptionVarValue(const MString& name, int value)
{
    if (name.length() == 0)
        return false;
    host::optionVariables()[name.asChar()] = value;
    return true;
}

bool MGlobal::setOptionVarValue(const MString& name, double value)
{
    if (name.length() == 0)
        return false;
    host::optionVariables()[name.asChar()] = value;
    return true;
}

bool MGlobal::setOptionVarValue(const MString& name, const MString& value)
{
    if (name.length() == 0)
        return false;
    host::optionVariables()[name.asChar()] = std::string(value.asChar());
    return true;
}

bool MGlobal::optionVarExists(const MString& name) { return host::optionVariables().count(name.asChar()) > 0; }

void MGlobal::removeOptionVar(const MString& name) { host::optionVariables().erase(name.asChar()); }

// ---- Commands ----------------------------------------------------------------------------
// The typed overloads read the interpreter's result: an array result fills an array element
// by element, a scalar fills an array of one, and a numeric read of a non-numeric result is 0.

namespace {

host::CommandRun runText(const MString& command, bool displayEnabled, bool undoEnabled)
{
    return host::interpret(command.asChar(), undoEnabled, displayEnabled);
}

} // namespace

MStatus MGlobal::executeCommand(const MString& command, bool displayEnabled, bool undoEnabled)
{
    return runText(command, displayEnabled, undoEnabled).status;
}

MStatus MGlobal::executeCommand(const MString& command, MCommandResult& result, bool displayEnabled,
                                bool undoEnabled)
{
    host::CommandRun run = runText(command, displayEnabled, undoEnabled);
    host::CommandAccess::setValue(result, run.result);
    return run.status;
}

MStatus MGlobal::executeCommand(const MString& command, MString& result, bool displayEnabled, bool undoEnabled)
{
    host::CommandRun run = runText(command, displayEnabled, undoEnabled);
    result = MString(run.result.text().c_str());
    return run.status;
}

MStatus MGlobal::executeCommand(const MString& command, int& result, bool displayEnabled, bool undoEnabled)
{
    host::CommandRun run = runText(command, displayEnabled, undoEnabled);
    double v = 0.0;
    result = run.result.asNumber(v) ? static_cast<int>(v) : 0;
    return run.status;
}

MStatus MGlobal::executeCommand(const MString& command, double& result, bool displayEnabled, bool undoEnabled)
{
    host::CommandRun run = runText(command, displayEnabled, undoEnabled);
    double v = 0.0;
    result = run.result.asNumber(v) ? v : 0.0;
    return run.status;
}

MStatus MGlobal::executeCommand(const MString& command, MStringArray& result, bool displayEnabled, bool undoEnabled)
{
    host::CommandRun run = runText(command, displayEnabled, undoEnabled);
    result.clear();
    for (const std::string& item : run.result.items())
        result.append(MString(item.c_str()));
    return run.status;
}

MStatus MGlobal::executeCommand(const MString& command, MIntArray& result, bool displayEnabled, bool undoEnabled)
{
    host::CommandRun run = runText(command, displayEnabled, undoEnabled);
    result.clear();
    for (const std::string& item : run.result.items()) {
        double v = 0.0;
        result.append(host::parseNumber(item, v) ? static_cast<int>(v) : 0);
    }
    return run.status;
}

MStatus MGlobal::executeCommand(const MString& command, MDoubleArray& result, bool displayEnabled,
                                bool undoEnabled)
{
    host::CommandRun run = runText(command, displayEnabled, undoEnabled);
    result.clear();
    for (const std::string& item : run.result.items()) {
        double v = 0.0;
        result.append(host::parseNumber(item, v) ? v : 0.0);
    }
    return run.status;
}

MString MGlobal::executeCommandStringResult(const MString& command, bool displayEnabled, bool undoEnabled,
                                            MStatus* ReturnStatus)
{
    host::CommandRun run = runText(command, displayEnabled, undoEnabled);
    if (ReturnStatus)
        *ReturnStatus = run.status;
    return MString(run.result.text().c_str());
}
