#pragma once
// MPxNode: the base of every plug-in dependency node. The host owns the instance made by
// the registered creator, attaches it to its node and calls the virtuals below; the static
// members are the attributes every node has.

#include <maya/MObject.h>
#include <maya/MDGContext.h>
#include <maya/MDataBlock.h>
#include <maya/MDataHandle.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>
#include <maya/MTypes.h>

class MPlug;
class MPlugArray;
class MDataBlock;
class MDGContext;
class MEvaluationNode;

namespace host {
class NodeBody;
}

class MPxNode {
public:
    enum Type {
        kDependNode,
        kLocatorNode,
        kDeformerNode,
        kManipContainer,
        kSurfaceShape,
        kFieldNode,
        kEmitterNode,
        kSpringNode,
        kIkSolverNode,
        kHardwareShader,
        kHwShaderNode,
        kTransformNode,
        kObjectSet,
        kFluidEmitterNode,
        kImagePlaneNode,
        kParticleAttributeMapperNode,
        kCameraSetNode,
        kConstraintNode,
        kManipulatorNode,
        kMotionPathNode,
        kClientDeviceNode,
        kThreadedDeviceNode,
        kAssembly,
        kSkinCluster,
        kGeometryFilter,
        kBlendShape,
        kLast
    };

    enum SchedulingType {
        kParallel,
        kSerial,
        kGloballySerial,
        kUntrusted,
        kDefaultScheduling = kSerial,
        kSerialize = kSerial,
        kUnsafe = kUntrusted
    };

    enum PostEvaluationEnum { kEvaluatedIndirectly = 0, kEvaluatedDirectly = 1, kLeaveDirty = 2 };
    typedef unsigned int PostEvaluationType;

    MPxNode();
    virtual ~MPxNode();

    virtual void postConstructor();
    virtual MStatus compute(const MPlug& plug, MDataBlock& dataBlock);
    virtual MStatus setDependentsDirty(const MPlug& plug, MPlugArray& plugArray);
    virtual MStatus preEvaluation(const MDGContext& context, const MEvaluationNode& evaluationNode);
    virtual MStatus postEvaluation(const MDGContext& context, const MEvaluationNode& evaluationNode,
                                   PostEvaluationType evalType);
    virtual MStatus connectionMade(const MPlug& plug, const MPlug& otherPlug, bool asSrc);
    virtual MStatus connectionBroken(const MPlug& plug, const MPlug& otherPlug, bool asSrc);
    virtual SchedulingType schedulingType() const;
    virtual Type type() const;
    virtual bool isAbstractClass() const;

    virtual MTypeId typeId() const;
    virtual MString typeName() const;
    virtual MString name() const;
    MObject thisMObject() const;

    static MStatus addAttribute(const MObject& attr);
    static MStatus attributeAffects(const MObject& whenChanges, const MObject& isAffected);
    static MStatus inheritAttributesFrom(const MString& parentClassName);

    static MObject message;
    static MObject isHistoricallyInteresting;
    static MObject caching;
    static MObject state;
    static MObject frozen;

private:
    friend class host::Access;
    host::NodeBody* fNode = nullptr;
    MPxNode(const MPxNode&) = delete;
    MPxNode& operator=(const MPxNode&) = delete;
};
