#pragma once
// The members shared by the array data function sets (int, double, float, point, vector,
// string arrays), written once over the data body type.

#include "dg/access.h"
#include "dg/fnMacros.h"

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <memory>

namespace host {

template <class Body, class Elem>
struct ArrayDataFn {
    static Body* body(const MObject& o) { return dynamic_cast<Body*>(Access::body(o).get()); }

    static unsigned int length(const MObject& o, MStatus* status)
    {
        Body* b = body(o);
        TQHOST_SET_STATUS(status, b ? MStatus::kSuccess : MStatus::kInvalidParameter);
        return b ? b->read().length() : 0u;
    }
    static Elem get(const MObject& o, unsigned int index)
    {
        Body* b = body(o);
        if (!b || index >= b->read().length())
            return Elem();
        return b->read()[index];
    }
    static Elem& ref(const MObject& o, unsigned int index)
    {
        static Elem dummy;
        Body* b = body(o);
        if (!b || index >= b->read().length()) {
            dummy = Elem();
            return dummy;
        }
        return b->write()[index];
    }
    static MStatus setElement(const MObject& o, const Elem& e, unsigned int index)
    {
        Body* b = body(o);
        if (!b || index >= b->read().length())
            return MStatus::kInvalidParameter;
        b->write()[index] = e;
        return MStatus::kSuccess;
    }
    template <class Array>
    static MStatus copyTo(const MObject& o, Array& dest)
    {
        Body* b = body(o);
        if (!b)
            return MStatus::kInvalidParameter;
        dest = b->read();
        return MStatus::kSuccess;
    }
    template <class Array>
    static MStatus set(const MObject& o, const Array& in)
    {
        Body* b = body(o);
        if (!b)
            return MStatus::kInvalidParameter;
        b->write() = in;
        return MStatus::kSuccess;
    }
    template <class Array>
    static Array array(const MObject& o, MStatus* status)
    {
        Body* b = body(o);
        TQHOST_SET_STATUS(status, b ? MStatus::kSuccess : MStatus::kInvalidParameter);
        return b ? b->read() : Array();
    }
    template <class Array>
    static MObject create(const Array* in)
    {
        auto b = std::make_shared<Body>();
        if (in)
            b->write() = *in;
        return Access::object(b);
    }
};

} // namespace host

#define TQHOST_DEFINE_ARRAY_DATA_FN(CLASS, BODY, ELEM, ARRAY, KIND, ELEMPARAM)                         \
    TQHOST_DEFINE_MFN(CLASS, KIND)                                                                   \
    using CLASS##Impl = host::ArrayDataFn<BODY, ELEM>;                                               \
    unsigned int CLASS::length(MStatus* ReturnStatus) const                                          \
    {                                                                                                \
        return CLASS##Impl::length(fObject, ReturnStatus);                                           \
    }                                                                                                \
    ELEM CLASS::operator[](unsigned int index) const { return CLASS##Impl::get(fObject, index); }    \
    ELEM& CLASS::operator[](unsigned int index) { return CLASS##Impl::ref(fObject, index); }         \
    MStatus CLASS::set(ELEMPARAM element, unsigned int index)                                         \
    {                                                                                                \
        return CLASS##Impl::setElement(fObject, element, index);                                     \
    }                                                                                                \
    MStatus CLASS::copyTo(ARRAY& dest) const { return CLASS##Impl::copyTo(fObject, dest); }          \
    MStatus CLASS::set(const ARRAY& newArray) { return CLASS##Impl::set(fObject, newArray); }        \
    ARRAY CLASS::array(MStatus* ReturnStatus) { return CLASS##Impl::array<ARRAY>(fObject, ReturnStatus); } \
    MObject CLASS::create(MStatus* ReturnStatus)                                                     \
    {                                                                                                \
        MObject o = CLASS##Impl::create<ARRAY>(nullptr);                                             \
        attach(o);                                                                                   \
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);                                          \
        return o;                                                                                    \
    }                                                                                                \
    MObject CLASS::create(const ARRAY& in, MStatus* ReturnStatus)                                    \
    {                                                                                                \
        MObject o = CLASS##Impl::create<ARRAY>(&in);                                                 \
        attach(o);                                                                                   \
        TQHOST_SET_STATUS(ReturnStatus, MStatus::kSuccess);                                          \
        return o;                                                                                    \
    }
