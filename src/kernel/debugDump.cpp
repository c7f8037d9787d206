#include "kernel/debugDump.h"

namespace tq {

MString dumpIndices(const MIntArray& indices, const MString& label)
{
    MString text = label;
    text += " (len: ";
    text += indices.length();
    text += ")";
    if (indices.length() == 0)
        text += " o-o empty o-o";
    for (int index : indices) {
        text += " ";
        text += index;
    }
    return text;
}

MString dumpPoints(const MPointArray& points, const MString& label)
{
    MString text = label;
    text += " (len: ";
    text += points.length();
    text += ") [";
    if (points.length() == 0)
        text += " o-o empty o-o";
    for (const MPoint& p : points) {
        text += " (";
        text += p.x;
        text += ", ";
        text += p.y;
        text += ", ";
        text += p.z;
        text += "), ";
    }
    text += "]";
    return text;
}

} // namespace tq
