#include <maya/MPlugArray.h>

#include "dg/handleArrays.h"

TQHOST_DEFINE_HANDLE_ARRAY_CORE(MPlugArray, MPlug, const MPlug&)

MPlugArray::MPlugArray(unsigned int initialSize, const MPlug& initialValue) : fItems(initialSize, initialValue) {}

const MPlug& MPlugArray::operator[](unsigned int index) const
{
    static const MPlug null;
    return index < fItems.size() ? fItems[index] : null;
}

MStatus MPlugArray::set(const MPlug& element, unsigned int index)
{
    if (index >= fItems.size())
        return MStatus::kInvalidParameter;
    fItems[index] = element;
    return MStatus::kSuccess;
}

MStatus MPlugArray::copy(const MPlugArray& source)
{
    fItems = source.fItems;
    return MStatus::kSuccess;
}

MStatus MPlugArray::clear()
{
    fItems.clear();
    return MStatus::kSuccess;
}
void MPlugArray::setSizeIncrement(unsigned int newIncrement) { fIncrement = newIncrement; }
unsigned int MPlugArray::sizeIncrement() const { return fIncrement; }
