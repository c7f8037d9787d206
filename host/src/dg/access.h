#pragma once
// Access: the host's one door into the private parts of the API classes. API headers name
// it as a friend; nothing outside the host includes this header.

#include "dg/nodeBody.h"
#include "dg/objectBody.h"
#include "dg/plugKey.h"

#include <maya/MArrayDataBuilder.h>
#include <maya/MArrayDataHandle.h>
#include <maya/MDagPath.h>
#include <maya/MDataBlock.h>
#include <maya/MDataHandle.h>
#include <maya/MEvaluationNode.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPxNode.h>
#include <maya/MSelectionList.h>

#include <memory>
#include <vector>

namespace host {

class AttributeBody;

class Access {
public:
    // MObject
    static const BodyPtr& body(const MObject& object) { return object.fBody; }
    static MObject object(BodyPtr body)
    {
        MObject o;
        o.fBody = std::move(body);
        return o;
    }
    template <class T>
    static std::shared_ptr<T> as(const MObject& object)
    {
        return std::dynamic_pointer_cast<T>(object.fBody);
    }
    static NodeBody* node(const MObject& object)
    {
        auto* n = dynamic_cast<NodeBody*>(object.fBody.get());
        return n && n->isAlive ? n : nullptr;
    }
    // The live node behind a function set's object, reporting kInvalidParameter when none.
    static NodeBody* node(const MObject& object, MStatus* status)
    {
        NodeBody* n = node(object);
        if (status)
            *status = n ? MStatus::kSuccess : MStatus::kInvalidParameter;
        return n;
    }
    static AttributeBody* attribute(const MObject& object);

    // MPlug
    static MPlug plug(NodeBody* node, const PlugKey& key);
    static NodeBody* plugNode(const MPlug& plug) { return node(plug.fNode); }
    static PlugKey plugKey(const MPlug& plug);
    static PlugRef plugRef(const MPlug& plug) { return PlugRef{plugNode(plug), plugKey(plug)}; }

    // MPxNode
    static NodeBody* nodeOf(const MPxNode* px) { return px ? px->fNode : nullptr; }
    static void bind(MPxNode* px, NodeBody* node) { px->fNode = node; }

    // MDagPath
    static std::vector<MObject>& nodes(MDagPath& path) { return path.fNodes; }
    static const std::vector<MObject>& nodes(const MDagPath& path) { return path.fNodes; }
    static MDagPath pathTo(NodeBody* node);

    // Data block and handles
    static MDataBlock dataBlock(NodeBody* node)
    {
        MDataBlock b;
        b.fNode = node;
        return b;
    }
    static MDataHandle handle(NodeBody* node, const PlugKey& key, Value* value, int component = -1);
    static MDataHandle ownedHandle(const AttributeBody* attr, const Value& value);
    static Value* handleValue(const MDataHandle& h) { return h.value(); }
    static const AttributeBody* handleAttribute(const MDataHandle& h) { return h.fAttr; }
    static NodeBody* handleNode(const MDataHandle& h) { return h.fNode; }
    static const std::vector<unsigned int>& handleIndices(const MDataHandle& h) { return h.fIndices; }
    static MArrayDataHandle arrayHandle(NodeBody* node, const PlugKey& arrayKey);
    static MArrayDataBuilder builder(NodeBody* node, const PlugKey& arrayKey);

    static MEvaluationNode evaluationNode(NodeBody* node, const std::vector<PlugKey>& dirty);

    static auto& selectionItems(MSelectionList& list) { return list.fItems; }
    static const auto& selectionItems(const MSelectionList& list) { return list.fItems; }
};

} // namespace host
