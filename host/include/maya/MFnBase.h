#pragma once
// MFnBase: the root of all function sets. A function set attaches to an MObject of a
// compatible kind (hasFn of the set's type) and operates on it; attaching to anything else
// fails with kInvalidParameter and leaves the set unattached.

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

class MFnBase {
public:
    MFnBase();
    virtual ~MFnBase();

    virtual MFn::Type type() const;
    bool hasObj(MFn::Type fs) const;
    bool hasObj(const MObject& obj) const;
    MObject object(MStatus* ReturnStatus = nullptr) const;
    virtual MStatus setObject(MObject& object);
    virtual MStatus setObject(const MObject& object);

protected:
    virtual const char* className() const;
    // Attaches after checking the kind; shared by every derived set.
    MStatus attach(const MObject& object);

    MObject fObject;

private:
    MFnBase(const MFnBase&) = delete;
    MFnBase& operator=(const MFnBase&) = delete;
};

// The standard constructors and kind query of a function set, as every set declares them.
#define TQHOST_DECLARE_MFN(CLASS, BASE)                                   \
public:                                                                   \
    CLASS();                                                              \
    CLASS(MObject& object, MStatus* ReturnStatus = nullptr);              \
    CLASS(const MObject& object, MStatus* ReturnStatus = nullptr);        \
    ~CLASS() override;                                                    \
    MFn::Type type() const override;                                      \
                                                                          \
protected:                                                                \
    const char* className() const override;                               \
                                                                          \
public:
