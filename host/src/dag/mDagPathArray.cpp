#include <maya/MDagPathArray.h>

#include "dg/handleArrays.h"

TQHOST_DEFINE_HANDLE_ARRAY_CORE(MDagPathArray, MDagPath, const MDagPath&)

const MDagPath& MDagPathArray::operator[](unsigned int index) const
{
    static const MDagPath null;
    return index < fItems.size() ? fItems[index] : null;
}

MStatus MDagPathArray::set(const MDagPath& element, unsigned int index)
{
    if (index >= fItems.size())
        return MStatus::kInvalidParameter;
    fItems[index] = element;
    return MStatus::kSuccess;
}

MStatus MDagPathArray::copy(const MDagPathArray& source)
{
    fItems = source.fItems;
    return MStatus::kSuccess;
}

MStatus MDagPathArray::clear()
{
    fItems.clear();
    return MStatus::kSuccess;
}
