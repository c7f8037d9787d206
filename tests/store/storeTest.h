#pragma once
// The store suites' fixture on top of the shared plug-in one: meshes made from the harness's
// mesh arrays, and point arrays from brace lists.

#include "../support/pluginTest.h"

#include <host/meshArrays.h>
#include <host/meshFiles.h>

#include <maya/MFnDagNode.h>

#include <initializer_list>

namespace storetest {

using plugintest::intArray;
using plugintest::ints;
using plugintest::samePoints;
using Ints = std::vector<int>;

class StoreTest : public plugintest::PluginTest {
protected:
    // A mesh under a transform of that name; returns the shape's name.
    static std::string addMeshShape(const host::MeshArrays& mesh, const std::string& name)
    {
        return host::nodeName(MFnDagNode(host::addMesh(mesh, name)).child(0));
    }

    // A mesh connected to the store as its source; returns the shape's name.
    static std::string addSourceMesh(const host::MeshArrays& mesh)
    {
        const std::string shape = addMeshShape(mesh, "source");
        EXPECT_TRUE(host::connect(shape + ".outMesh", "store.tqSarnMesh"));
        return shape;
    }
};

inline MPointArray points(std::initializer_list<MPoint> list)
{
    MPointArray out;
    for (const MPoint& p : list)
        out.append(p);
    return out;
}

} // namespace storetest
