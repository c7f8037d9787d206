#pragma once
// The harness: the host's own API for tests and tools. It drives the scene the way a user
// or a script would in Maya (new scene, load a plug-in, create and connect nodes, set and
// read values, select) and reaches nothing a plug-in could not observe through the API.

#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>

#include <string>
#include <vector>

namespace host {

// Starts a new, empty scene: every node is deleted (plug-in nodes too), the selection is
// emptied and the default nodes are made. Loaded plug-ins, option variables and the log stay.
void newScene();

// ---- Plug-ins ---------------------------------------------------------------------------

using PluginEntryPoint = MStatus (*)(MObject);

// Loads a plug-in library by path: dlopen, then its initializePlugin. The plug-in's name is
// the file name without directory and extension. A failed initialize leaves what it
// registered in place and reports the failure, as Maya does with a half-loaded plug-in.
MStatus loadPlugin(const std::string& path, std::string* pluginName = nullptr);
// Initializes a plug-in whose code is linked into the running program.
MStatus loadLinkedPlugin(const std::string& pluginName, PluginEntryPoint initialize,
                         PluginEntryPoint uninitialize);
// Calls uninitializePlugin; on success the library is closed and the plug-in forgotten.
// On failure the plug-in stays loaded with whatever is still registered.
MStatus unloadPlugin(const std::string& pluginName);
bool isPluginLoaded(const std::string& pluginName);
std::vector<std::string> loadedPlugins();

// What a plug-in has registered, each list in registration order.
struct PluginRegistrations {
    std::string vendor;
    std::string version;
    std::string apiVersion;
    std::vector<std::string> nodeTypes;
    std::vector<std::string> commands;        // plain commands
    std::vector<std::string> contextCommands; // context commands
    std::vector<std::string> toolCommands;    // tool commands of those contexts
    std::vector<std::string> drawOverrides;   // "classification|registrantId"
};
PluginRegistrations pluginRegistrations(const std::string& pluginName);

// ---- Nodes and plugs ------------------------------------------------------------------

// Creates a node by type name. A shape with no parent gets a new transform, as createNode
// does in Maya; the returned object is the node of the given type.
MObject createNode(const std::string& type, const std::string& name = "", const std::string& parent = "",
                   MStatus* status = nullptr);
MObject findNode(const std::string& nameOrPath);
MStatus deleteNode(const std::string& nameOrPath);
std::string nodeName(const MObject& node);
std::vector<std::string> nodeNames(const std::string& typeName = "");

// A plug by its name, "node.attr", "node.arr[3]", "node.comp.child", "node.arr[2].child",
// long or short attribute names.
MPlug findPlug(const std::string& plugName, MStatus* status = nullptr);
MStatus connect(const std::string& source, const std::string& destination, bool force = false);
MStatus disconnect(const std::string& source, const std::string& destination);

MStatus setDouble(const std::string& plugName, double value);
MStatus setInt(const std::string& plugName, int value);
MStatus setBool(const std::string& plugName, bool value);
MStatus setString(const std::string& plugName, const std::string& value);
MStatus setData(const std::string& plugName, const MObject& data);
double getDouble(const std::string& plugName, MStatus* status = nullptr);
int getInt(const std::string& plugName, MStatus* status = nullptr);
bool getBool(const std::string& plugName, MStatus* status = nullptr);
std::string getString(const std::string& plugName, MStatus* status = nullptr);
MObject getData(const std::string& plugName, MStatus* status = nullptr);
bool isDirty(const std::string& plugName);

// ---- Selection and events ---------------------------------------------------------------

// Replaces the active selection with the named items (names, paths, plugs, components).
MStatus select(const std::vector<std::string>& items);
// The active selection as selection strings.
std::vector<std::string> selection();

// Sends a named event to its MEventMessage callbacks.
void sendEvent(const std::string& eventName);

// ---- Mesh history ------------------------------------------------------------------------

// What `delete -ch` does to a mesh: the shape (or every visible mesh shape directly under the
// transform) keeps its current geometry as its own, its inMesh is disconnected and the
// upstream nodes that fed only it are deleted. A mesh without history is left as it is.
// Fails, with an error line, when the name matches nothing or no mesh shape.
MStatus deleteHistory(const std::string& shapeOrTransformName);

} // namespace host
