#pragma once
// The members shared by the arrays of handles (MObjectArray, MPlugArray, MDagPathArray,
// MCallbackIdArray): a vector with Maya's array interface. Out-of-range access is refused
// with kInvalidParameter; element access past the end yields a dummy element.

#define TQHOST_DEFINE_HANDLE_ARRAY_CORE(ARRAY, ELEM, CONSTREF)                             \
    ARRAY::ARRAY() = default;                                                             \
    ARRAY::ARRAY(const ARRAY& other) = default;                                           \
    ARRAY::~ARRAY() = default;                                                            \
    ARRAY& ARRAY::operator=(const ARRAY& other) = default;                                \
    ELEM& ARRAY::operator[](unsigned int index)                                           \
    {                                                                                     \
        static ELEM dummy;                                                                \
        if (index >= fItems.size()) {                                                     \
            dummy = ELEM();                                                               \
            return dummy;                                                                 \
        }                                                                                 \
        return fItems[index];                                                             \
    }                                                                                     \
    MStatus ARRAY::setLength(unsigned int length)                                         \
    {                                                                                     \
        fItems.resize(length);                                                            \
        return MStatus::kSuccess;                                                         \
    }                                                                                     \
    unsigned int ARRAY::length() const { return static_cast<unsigned int>(fItems.size()); } \
    MStatus ARRAY::remove(unsigned int index)                                             \
    {                                                                                     \
        if (index >= fItems.size())                                                       \
            return MStatus::kInvalidParameter;                                            \
        fItems.erase(fItems.begin() + index);                                             \
        return MStatus::kSuccess;                                                         \
    }                                                                                     \
    MStatus ARRAY::insert(CONSTREF element, unsigned int index)                           \
    {                                                                                     \
        if (index > fItems.size())                                                        \
            return MStatus::kInvalidParameter;                                            \
        fItems.insert(fItems.begin() + index, element);                                   \
        return MStatus::kSuccess;                                                         \
    }                                                                                     \
    MStatus ARRAY::append(CONSTREF element)                                               \
    {                                                                                     \
        fItems.push_back(element);                                                        \
        return MStatus::kSuccess;                                                         \
    }
