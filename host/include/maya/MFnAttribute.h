#pragma once
// MFnAttribute: the flags and names every attribute has. Derived sets create attributes of
// one kind; this set reads and changes what they share.

#include <maya/MFnBase.h>
#include <maya/MFnData.h>
#include <maya/MString.h>

class MFnAttribute : public MFnBase {
    TQHOST_DECLARE_MFN(MFnAttribute, MFnBase)

    enum DisconnectBehavior { kDelete, kReset, kNothing };

    bool isReadable(MStatus* ReturnStatus = nullptr) const;
    bool isWritable(MStatus* ReturnStatus = nullptr) const;
    bool isConnectable(MStatus* ReturnStatus = nullptr) const;
    bool isStorable(MStatus* ReturnStatus = nullptr) const;
    bool isCached(MStatus* ReturnStatus = nullptr) const;
    bool isArray(MStatus* ReturnStatus = nullptr) const;
    bool indexMatters(MStatus* ReturnStatus = nullptr) const;
    bool isKeyable(MStatus* ReturnStatus = nullptr) const;
    bool isChannelBoxFlagSet(MStatus* ReturnStatus = nullptr) const;
    bool isHidden(MStatus* ReturnStatus = nullptr) const;
    bool isUsedAsColor(MStatus* ReturnStatus = nullptr) const;
    bool isIndeterminant(MStatus* ReturnStatus = nullptr) const;
    bool isRenderSource(MStatus* ReturnStatus = nullptr) const;
    bool isDynamic(MStatus* ReturnStatus = nullptr) const;
    bool isWorldSpace(MStatus* ReturnStatus = nullptr) const;
    bool isAffectsWorldSpace(MStatus* ReturnStatus = nullptr) const;
    bool isUsedAsFilename(MStatus* ReturnStatus = nullptr) const;
    bool affectsAppearance(MStatus* ReturnStatus = nullptr) const;
    bool usesArrayDataBuilder(MStatus* ReturnStatus = nullptr) const;
    bool internal(MStatus* ReturnStatus = nullptr) const;
    DisconnectBehavior disconnectBehavior(MStatus* ReturnStatus = nullptr) const;
    bool accepts(MFnData::Type type, MStatus* ReturnStatus = nullptr) const;

    MStatus setReadable(bool state);
    MStatus setWritable(bool state);
    MStatus setConnectable(bool state);
    MStatus setStorable(bool state);
    MStatus setCached(bool state);
    MStatus setArray(bool state);
    MStatus setIndexMatters(bool state);
    MStatus setKeyable(bool state);
    MStatus setChannelBox(bool state);
    MStatus setHidden(bool state);
    MStatus setUsedAsColor(bool state);
    MStatus setIndeterminant(bool state);
    MStatus setRenderSource(bool state);
    MStatus setWorldSpace(bool state);
    MStatus setAffectsWorldSpace(bool state);
    MStatus setUsedAsFilename(bool state);
    MStatus setAffectsAppearance(bool state);
    MStatus setUsesArrayDataBuilder(bool state);
    MStatus setInternal(bool state);
    MStatus setDisconnectBehavior(DisconnectBehavior behavior);
    MStatus setNiceNameOverride(const MString& localizedName);

    MString name(MStatus* ReturnStatus = nullptr) const;
    MString shortName(MStatus* ReturnStatus = nullptr) const;
    MObject parent(MStatus* ReturnStatus = nullptr) const;
};
