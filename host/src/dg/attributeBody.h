#pragma once
// AttributeBody: the definition of one attribute, shared by every node of the types that
// added it. Plug values live on the nodes, keyed by the body's address.

#include "dg/objectBody.h"
#include "dg/value.h"

#include <maya/MFnData.h>
#include <maya/MFnNumericData.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace host {

struct NodeType;

enum class AttrKind { kNumeric, kTyped, kGeneric, kCompound, kEnum, kMatrix, kMessage };

struct AttrFlags {
    bool readable = true;
    bool writable = true;
    bool connectable = true;
    bool storable = true;
    bool cached = true;
    bool array = false;
    bool indexMatters = true;
    bool keyable = false;
    bool hidden = false;
    bool usedAsColor = false;
    bool usedAsFilename = false;
    bool indeterminant = false;
    bool renderSource = false;
    bool worldSpace = false;
    bool affectsWorldSpace = false;
    bool affectsAppearance = false;
    bool usesArrayDataBuilder = false;
    bool channelBox = false;
    bool internal = false;
    bool dynamic = false;
    bool proxy = false;
    short disconnectBehavior = 2; // MFnAttribute::kNothing
};

class AttributeBody : public ObjectBody, public std::enable_shared_from_this<AttributeBody> {
public:
    MFn::Type apiType() const override;

    AttrKind kind = AttrKind::kNumeric;
    std::string longName;
    std::string shortName;
    std::string niceName;
    AttrFlags flags;

    // Numeric: the type and component count; numeric compounds (k3Double, createPoint, or
    // built from three numeric children) keep all components in the parent's one value.
    MFnNumericData::Type numericType = MFnNumericData::kInvalid;
    int components = 1;
    bool isNumericCompound = false;
    bool isUnitAttribute = false;

    // Typed and generic: the accepted data kinds.
    MFnData::Type dataType = MFnData::kInvalid;
    std::vector<MFnData::Type> acceptedData;
    std::vector<MFnNumericData::Type> acceptedNumeric;
    bool floatMatrix = false;

    Value defaultValue;
    bool hasMin = false, hasMax = false, hasSoftMin = false, hasSoftMax = false;
    double minValue[4] = {0, 0, 0, 0};
    double maxValue[4] = {0, 0, 0, 0};
    double softMin = 0.0, softMax = 0.0;

    std::vector<std::pair<std::string, short>> enumFields;

    std::vector<std::shared_ptr<AttributeBody>> children;
    AttributeBody* parent = nullptr;
    int childIndex = -1; // position under the parent, the component for numeric compounds

    // The node type whose initialize added it (null until added).
    const NodeType* owner = nullptr;

    // The number of array levels on the way from the root attribute to this one.
    int arrayDepth() const;
    // True when this attribute's value is a component of its parent's value.
    bool isNumericComponent() const { return parent != nullptr && parent->isNumericCompound; }
    // The root of the compound chain.
    const AttributeBody* root() const;
    bool hasName(const std::string& name) const { return name == longName || name == shortName; }
};

using AttributePtr = std::shared_ptr<AttributeBody>;

} // namespace host
