#pragma once
// The affine map between a mesh's object space and the space a query is asked in. Maya's
// matrices act on row vectors (p' = p * M), so the translation is the last row. The last
// column is taken as (0, 0, 0, 1).
//
// Rays map as lines: source through the inverse, direction through the inverse's linear
// part, so source + t * direction lands on the same point in both spaces with the same t;
// t stays in the caller's units whatever the matrix scales.

#include <maya/MMatrix.h>
#include <maya/MVector.h>

#include <cmath>

namespace host {

class SpaceTransform {
public:
    // False when the matrix has no usable inverse (singular, infinite or NaN).
    bool set(const MMatrix& objectToSpace)
    {
        // Object-space queries are the common case; they need no elimination.
        if (objectToSpace == MMatrix::identity) {
            fTo = fFrom = objectToSpace;
            fIdentity = true;
            fReach = 1.0;
            return true;
        }
        if (objectToSpace.isSingular())
            return false;
        fTo = objectToSpace;
        fFrom = objectToSpace.inverse();
        fIdentity = false;
        double sum = 0;
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 3; ++c)
                sum += fFrom.matrix[r][c] * fFrom.matrix[r][c];
        // The Frobenius norm bounds the largest stretch; the factor covers its rounding.
        fReach = std::sqrt(sum) * (1.0 + 1.0e-9);
        return std::isfinite(fReach);
    }

    bool identity() const { return fIdentity; }

    void pointToObject(const double in[3], double out[3]) const { apply(fFrom, in, out, true); }
    void vectorToObject(const double in[3], double out[3]) const { apply(fFrom, in, out, false); }
    void pointFromObject(const double in[3], double out[3]) const { apply(fTo, in, out, true); }

    // Normals go by the inverse transpose, renormalised.
    MVector normalFromObject(const MVector& n) const
    {
        if (fIdentity)
            return n;
        const auto& a = fFrom.matrix;
        MVector out(n.x * a[0][0] + n.y * a[0][1] + n.z * a[0][2], n.x * a[1][0] + n.y * a[1][1] + n.z * a[1][2],
                    n.x * a[2][0] + n.y * a[2][1] + n.z * a[2][2]);
        const double len = out.length();
        return len > 0.0 ? out / len : out;
    }

    // An upper bound of the object-space distance between two points per unit of their
    // distance in the query's space.
    double objectReach() const { return fReach; }

private:
    void apply(const MMatrix& m, const double in[3], double out[3], bool point) const
    {
        if (fIdentity) {
            out[0] = in[0];
            out[1] = in[1];
            out[2] = in[2];
            return;
        }
        for (int c = 0; c < 3; ++c)
            out[c] = in[0] * m.matrix[0][c] + in[1] * m.matrix[1][c] + in[2] * m.matrix[2][c] +
                     (point ? m.matrix[3][c] : 0.0);
    }

    MMatrix fTo, fFrom;
    bool fIdentity = true;
    double fReach = 1.0;
};

} // namespace host
