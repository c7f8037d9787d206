#pragma once
// Pieces of the store suites on top of the shared plug-in fixture: meshes made from the
// harness's mesh arrays, and builders from brace lists.

#include "../support/pluginTest.h"

#include <host/meshArrays.h>
#include <host/meshFiles.h>

#include <maya/MFnDagNode.h>

#include <initializer_list>

namespace storetest {

using plugintest::ensurePluginLoaded;
using plugintest::kPluginName;
using plugintest::forgetOptionVars;
using plugintest::samePoints;

class StoreTest : public plugintest::PluginTest {
protected:
    // A mesh in the scene under a transform of that name; returns the shape's name.
    static std::string addMeshShape(const host::MeshArrays& mesh, const std::string& name)
    {
        MFnDagNode transform(host::addMesh(mesh, name));
        return host::nodeName(transform.child(0));
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

inline MIntArray ints(std::initializer_list<int> list)
{
    MIntArray out;
    for (int v : list)
        out.append(v);
    return out;
}

inline std::vector<int> toVector(const MIntArray& a) { return plugintest::ints(a); }

} // namespace storetest
