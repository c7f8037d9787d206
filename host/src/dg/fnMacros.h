#pragma once
// The boilerplate every function set defines: constructors that attach and check the kind,
// the kind query and the class name.

#define TQHOST_DEFINE_MFN(CLASS, KIND)                                        \
    CLASS::CLASS() = default;                                                 \
    CLASS::CLASS(MObject& object, MStatus* ReturnStatus)                      \
    {                                                                         \
        MStatus s = attach(object);                                           \
        if (ReturnStatus)                                                     \
            *ReturnStatus = s;                                                \
    }                                                                         \
    CLASS::CLASS(const MObject& object, MStatus* ReturnStatus)                \
    {                                                                         \
        MStatus s = attach(object);                                           \
        if (ReturnStatus)                                                     \
            *ReturnStatus = s;                                                \
    }                                                                         \
    CLASS::~CLASS() = default;                                                \
    MFn::Type CLASS::type() const { return KIND; }                            \
    const char* CLASS::className() const { return #CLASS; }

// Sets the optional out-status of an API call.
#define TQHOST_SET_STATUS(PTR, VALUE)                                         \
    do {                                                                      \
        if (PTR)                                                              \
            *(PTR) = (VALUE);                                                 \
    } while (0)
