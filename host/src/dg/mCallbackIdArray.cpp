#include <maya/MCallbackIdArray.h>

#include "dg/handleArrays.h"

TQHOST_DEFINE_HANDLE_ARRAY_CORE(MCallbackIdArray, MCallbackId, MCallbackId)

MCallbackId MCallbackIdArray::operator[](unsigned int index) const
{
    return index < fItems.size() ? fItems[index] : MCallbackId(0);
}

MStatus MCallbackIdArray::clear()
{
    fItems.clear();
    return MStatus::kSuccess;
}
