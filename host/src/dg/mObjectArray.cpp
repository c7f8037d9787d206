#include <maya/MObjectArray.h>

#include "dg/handleArrays.h"

TQHOST_DEFINE_HANDLE_ARRAY_CORE(MObjectArray, MObject, const MObject&)

MObjectArray::MObjectArray(unsigned int initialSize, const MObject& initialValue) : fItems(initialSize, initialValue)
{
}

const MObject& MObjectArray::operator[](unsigned int index) const
{
    return index < fItems.size() ? fItems[index] : MObject::kNullObj;
}

MStatus MObjectArray::set(const MObject& element, unsigned int index)
{
    if (index >= fItems.size())
        return MStatus::kInvalidParameter;
    fItems[index] = element;
    return MStatus::kSuccess;
}

MStatus MObjectArray::copy(const MObjectArray& source)
{
    fItems = source.fItems;
    return MStatus::kSuccess;
}

MStatus MObjectArray::clear()
{
    fItems.clear();
    return MStatus::kSuccess;
}

void MObjectArray::setSizeIncrement(unsigned int newIncrement) { fIncrement = newIncrement; }
unsigned int MObjectArray::sizeIncrement() const { return fIncrement; }
