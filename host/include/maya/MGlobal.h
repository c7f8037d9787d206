#pragma once
// MGlobal: the application-wide calls: the active selection, messages to the script editor,
// option variables and command execution.

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

class MSelectionList;
class MRichSelection;
class MIntArray;
class MDoubleArray;
class MCommandResult;

class MGlobal {
public:
    enum ListAdjustment { kReplaceList, kXORWithList, kAddToList, kRemoveFromList, kAddToHeadOfList };
    enum MSelectionMode {
        kSelectObjectMode,
        kSelectComponentMode,
        kSelectRootMode,
        kSelectLeafMode,
        kSelectTemplateMode
    };
    enum MMayaState { kBatch, kInteractive, kLibraryApp, kBaseUIMode };

    static MMayaState mayaState(MStatus* ReturnStatus = nullptr);
    static MString mayaVersion();
    static int apiVersion();

    static MStatus getActiveSelectionList(MSelectionList& dest, bool orderedSelectionIfAvailable = false);
    static MStatus setActiveSelectionList(const MSelectionList& src, ListAdjustment listAdjustment = kReplaceList);
    static MStatus getRichSelection(MRichSelection& dest, bool defaultToActiveSelection = true);
    static MStatus setRichSelection(const MRichSelection& src);
    static MStatus getSelectionListByName(const MString& name, MSelectionList& list);
    static MStatus selectByName(const MString& name, ListAdjustment listAdjustment = kAddToList);
    static MStatus select(MObject& object, ListAdjustment listAdjustment = kAddToList);
    static MStatus select(const MDagPath& object, const MObject& component,
                          ListAdjustment listAdjustment = kAddToList);
    static MStatus select(const MSelectionList& list, ListAdjustment listAdjustment = kAddToList);
    static MStatus unselect(MObject& object);
    static MStatus unselect(const MDagPath& object, const MObject& component);
    static MStatus clearSelectionList();
    static MStatus deleteNode(MObject& node);
    static MSelectionMode selectionMode(MStatus* ReturnStatus = nullptr);
    static MStatus setSelectionMode(MSelectionMode mode);

    static void displayInfo(const MString& theMessage);
    static void displayWarning(const MString& theWarning);
    static void displayError(const MString& theError);

    static int optionVarIntValue(const MString& name, bool* exists = nullptr);
    static double optionVarDoubleValue(const MString& name, bool* exists = nullptr);
    static MString optionVarStringValue(const MString& name, bool* exists = nullptr);
    static bool setOptionVarValue(const MString& name, int value);
    static bool setOptionVarValue(const MString& name, double value);
    static bool setOptionVarValue(const MString& name, const MString& value);
    static bool optionVarExists(const MString& name);
    static void removeOptionVar(const MString& name);

    static MStatus executeCommand(const MString& command, bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MCommandResult& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, int& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MIntArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, double& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MDoubleArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MString& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MStringArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MString executeCommandStringResult(const MString& command, bool displayEnabled = false,
                                              bool undoEnabled = false, MStatus* ReturnStatus = nullptr);
};
