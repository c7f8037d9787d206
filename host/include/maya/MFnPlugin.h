#pragma once
// MFnPlugin: what a plug-in's initializePlugin and uninitializePlugin use to register and
// deregister node types, commands, context commands and their identity.

#include <maya/MFnBase.h>
#include <maya/MPxNode.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

class MSyntax;

typedef void* (*MCreatorFunction)();
typedef MStatus (*MInitializeFunction)();
typedef MSyntax (*MCreateSyntaxFunction)();

#ifndef PLUGIN_EXPORT
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

// The two entry points every plug-in defines.
PLUGIN_EXPORT MStatus initializePlugin(MObject obj);
PLUGIN_EXPORT MStatus uninitializePlugin(MObject obj);

class MFnPlugin : public MFnBase {
public:
    MFnPlugin();
    MFnPlugin(MObject& object, const char* vendor = "Unknown", const char* version = "Unknown",
              const char* requiredApiVersion = "Any", MStatus* ReturnStatus = nullptr);
    ~MFnPlugin() override;

    MFn::Type type() const override;

    MString vendor(MStatus* ReturnStatus = nullptr) const;
    MString version(MStatus* ReturnStatus = nullptr) const;
    MString apiVersion(MStatus* ReturnStatus = nullptr) const;
    MString name(MStatus* ReturnStatus = nullptr) const;
    MString loadPath(MStatus* ReturnStatus = nullptr) const;
    MStatus setName(const MString& newName, bool allowRename = true);
    MStatus setVersion(const MString& newVersion);

    MStatus registerNode(const MString& typeName, const MTypeId& typeId, MCreatorFunction creatorFunction,
                         MInitializeFunction initFunction, MPxNode::Type type = MPxNode::kDependNode,
                         const MString* classification = nullptr);
    MStatus deregisterNode(const MTypeId& typeId);
    MStatus registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                            MCreateSyntaxFunction createSyntaxFunction = nullptr);
    MStatus deregisterCommand(const MString& commandName);
    MStatus registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction);
    MStatus registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                   const MString& toolCmdName, MCreatorFunction toolCmdCreator,
                                   MCreateSyntaxFunction toolCmdSyntax = nullptr);
    MStatus deregisterContextCommand(const MString& commandName);
    MStatus deregisterContextCommand(const MString& commandName, const MString& toolCmdName);

    static MObject findPlugin(const MString& pluginName);
    static bool isNodeRegistered(const MString& typeName);

protected:
    const char* className() const override;
};
