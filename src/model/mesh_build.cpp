// mesh_build.cpp - the point grids of RULSURF and COONS.
//
// Each boundary is sampled once at the arc-length fractions the grid needs
// (through a PathSampler, so a boundary of k points costs O(k + samples),
// not a walk per sample); the grid is then a blend of those samples. The
// sample arrays come from Mem_Alloc like all working data of a command, so
// that running out of memory is reported and nothing is half made.
#include "model/geometry.h"
#include "scene/mem.h"

namespace {

// count samples of poly at the length fractions k/(count-1); with
// `backwards` out[k] holds the fraction 1 - k/(count-1) instead. Samples
// are taken in increasing distance so that the sampler's cursor only moves
// on. 0 out of memory.
int Sample(const PolylineData* poly, int count, bool backwards, Point3* out) {
    PathSampler s;
    if (!PathSampler_Init(&s, poly)) return 0;
    for (int k = 0; k < count; k++) {
        const double t = count > 1 ? (double)k / (count - 1) : 0.0;
        out[backwards ? count - 1 - k : k] = PathSampler_At(&s, k == count - 1 ? s.length : t * s.length);
    }
    PathSampler_Free(&s);
    return 1;
}

Point3 Blend(Point3 a, Point3 b, double t) { return Vec_Add(a, Vec_Scale(Vec_Sub(b, a), t)); }

}  // namespace

int Mesh_Ruled(const PolylineData* a, const PolylineData* b, int n, int m, Point3* out) {
    if (n < 1 || m < 1) return 0;
    Point3* A = (Point3*)Mem_Alloc(sizeof(Point3) * 2 * ((size_t)m + 1));
    if (!A) return 0;
    Point3* B = A + m + 1;
    if (!Sample(a, m + 1, false, A) || !Sample(b, m + 1, false, B)) {
        Mem_Free(A);
        return 0;
    }
    for (int i = 0; i <= n; i++) {
        const double v = (double)i / n;
        Point3* row = out + (size_t)i * (m + 1);
        for (int j = 0; j <= m; j++) row[j] = Blend(A[j], B[j], v);
    }
    Mem_Free(A);
    return 1;
}

int Mesh_Coons(const PolylineData* const boundary[4], const int reversed[4], int n, int m, Point3* out) {
    if (n < 1 || m < 1) return 0;
    // Along u: #1 as it runs, #3 against the loop (from (0, 1) to (1, 1)).
    // Along v: #2 as it runs, #4 against the loop (from (0, 0) to (0, 1)).
    const size_t nu = (size_t)m + 1, nv = (size_t)n + 1;
    Point3* bottom = (Point3*)Mem_Alloc(sizeof(Point3) * 2 * (nu + nv));
    if (!bottom) return 0;
    Point3* top = bottom + nu;
    Point3* right = top + nu;
    Point3* left = right + nv;
    if (!Sample(boundary[0], m + 1, reversed[0] != 0, bottom) || !Sample(boundary[2], m + 1, reversed[2] == 0, top) ||
        !Sample(boundary[1], n + 1, reversed[1] != 0, right) || !Sample(boundary[3], n + 1, reversed[3] == 0, left)) {
        Mem_Free(bottom);
        return 0;
    }
    const Point3 c00 = bottom[0], c10 = bottom[m], c01 = top[0], c11 = top[m];
    for (int i = 0; i <= n; i++) {
        const double v = (double)i / n;
        Point3* row = out + (size_t)i * nu;
        for (int j = 0; j <= m; j++) {
            const double u = (double)j / m;
            const Point3 ruled_v = Blend(bottom[j], top[j], v);   // between the u-boundaries
            const Point3 ruled_u = Blend(left[i], right[i], u);   // between the v-boundaries
            const Point3 corners = Blend(Blend(c00, c10, u), Blend(c01, c11, u), v);
            row[j] = Vec_Sub(Vec_Add(ruled_v, ruled_u), corners);
        }
    }
    Mem_Free(bottom);
    return 1;
}
