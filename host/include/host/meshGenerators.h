#pragma once
// Procedural meshes for tests and benchmarks, laid out as Maya's poly primitives are: the
// same vertex and face counts for the same subdivisions, Y up, centred at the origin,
// polygons wound so their normals face outwards. The same arguments give the same mesh.
// Arguments out of range write an error to the host log and give an empty mesh.

#include <host/meshArrays.h>

namespace host {

// A plane in XZ facing +Y: (subdivX + 1) * (subdivY + 1) vertices, subdivX * subdivY quads,
// width along X and height along Z, UVs spanning 0..1. Subdivisions at least 1.
MeshArrays gridPlane(float width, float height, int subdivX, int subdivY);

// A sphere of subdivHeight bands of subdivAxis faces: quads, with a fan of triangles around
// each pole, which is one vertex. subdivAxis at least 3, subdivHeight at least 2.
MeshArrays uvSphere(float radius, int subdivAxis, int subdivHeight);

// A torus around the Y axis: subdivAxis quads around the axis by subdivHeight around the
// tube, both at least 3.
MeshArrays torus(float majorRadius, float minorRadius, int subdivAxis, int subdivHeight);

// A closed, dense triangle surface like a sculpt or a scan: a sphere of about unit radius
// displaced along its normal by several octaves of smooth noise, bumpy at many scales. It
// has within 1% of triangleCount triangles from a thousand up (a few percent below that,
// at least 12) and no UVs; the seed picks the bumps. Linear in the triangle count.
MeshArrays sculptSurface(int triangleCount, unsigned seed = 1);

} // namespace host

namespace host {

// A real scan made denser: the polygons are fanned into triangles, then every triangle is
// split into four at its edge midpoints (neighbours share the new points) until there are at
// least `triangleTarget` triangles. The surface keeps its shape exactly; UVs are dropped.
// An invalid mesh writes an error to the host log and gives an empty mesh.
MeshArrays densify(const MeshArrays& mesh, int triangleTarget);
// As densify, but landing on `triangleTarget` triangles (one below when the difference left
// is odd), for scale figures that name a size: the four-way splits stop before they would
// pass it, then triangles spread evenly over the list are split into three at their
// centroids, which changes no neighbour and so opens no crack. The surface keeps its shape
// exactly. A scan that already has the target or more comes back fanned, unsplit.
MeshArrays densifyExactly(const MeshArrays& mesh, int triangleTarget);

} // namespace host
