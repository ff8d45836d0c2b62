// surface_geom.cpp - generators of the polyline surfaces and polygon solids:
// extrusion, revolution, cone sweep, mesh, pipe, wall, cube, wedge, pyramid.
//
// Extrusions, revolutions and cone sweeps follow the path of their
// polyline (Poly_PathPoints: the points, or a B-spline sampled with
// `segments` steps per span), the same points the profile is drawn through,
// so that the surface meets its drawn profile exactly. Pipes and walls take
// a splined path at size_m even length fractions instead, as the
// scene-file writer does. Edge masks are chosen so that on screen each
// edge shared by two facets is drawn by one of them only, and edges that lie
// on the profile are left to the profile drawing.
#include <algorithm>
#include <cmath>
#include <vector>

#include "model/geometry.h"
#include "model/output.h"

namespace {

const double kPi = 3.14159265358979323846;
const double kDeg = 180.0 / kPi;


bool Closed(const PolylineData& p) { return (p.poly_flags & POLY_CLOSED) != 0; }
bool Spline(const PolylineData& p) { return (p.poly_flags & POLY_BSPLINE) && p.count > 3; }


// Angle in degrees brought into [0, 360), returned in radians.
double NormRad(double rad) {
    double deg = std::fmod(rad * kDeg, 360.0);
    if (deg < 0) deg += 360.0;
    return deg / kDeg;
}

// The revolution axis as a frame: heading a (x-y plane) and elevation b.
struct Axis {
    Point3 base;
    double ca, sa, cb, sb;
};

Axis MakeAxis(const PolylineData& p) {
    Point3 d = Vec_Sub(p.param2, p.param1);
    double a = NormRad(std::atan2(d.y, d.x));
    double b = NormRad(std::atan2(d.z, std::sqrt(d.x * d.x + d.y * d.y)));
    return Axis{p.param1, std::cos(a), std::sin(a), std::cos(b), std::sin(b)};
}

Point3 Turn(const Axis& ax, Point3 p, double c, double s) {
    Point3 q = Vec_Sub(p, ax.base);
    // Remove the heading (x-y), then the elevation (x-z): the axis lies along x.
    double x = q.x * ax.ca + q.y * ax.sa;
    double y = -q.x * ax.sa + q.y * ax.ca;
    double z = q.z;
    double x2 = x * ax.cb + z * ax.sb;
    z = -x * ax.sb + z * ax.cb;
    x = x2;
    // Turn about x.
    double y2 = y * c - z * s;
    z = y * s + z * c;
    y = y2;
    // Put the elevation back, then the heading.
    x2 = x * ax.cb - z * ax.sb;
    z = x * ax.sb + z * ax.cb;
    x = x2;
    return Point3{x * ax.ca - y * ax.sa + ax.base.x, x * ax.sa + y * ax.ca + ax.base.y, z + ax.base.z};
}

// Path of a pipe or wall with each point's share of the way from start to
// end (the pipe's radius runs from Radius #1 to Radius #2 by it). A plain
// path shares by point number, as the scene-file writer does; a closed one
// ends where it started, with Radius #1. A splined path is the curve
// sampled at the length fractions i/size_m; closed, it also ends at its
// start with Radius #1.
void SweptPath(const PolylineData& p, std::vector<Point3>& path, std::vector<double>& frac) {
    path.clear();
    frac.clear();
    if (!p.points || p.count < 2) return;
    if (Spline(p)) {
        const int m = std::clamp(p.size_m, 1, (int)GEOM_MAX_SEGMENTS);
        PathSampler sampler;
        const bool fast = PathSampler_Init(&sampler, &p);   // without memory: one walk per sample
        const double len = fast ? sampler.length : Poly_Length(&p);
        for (int i = 0; i <= m; i++) {
            const double d = len * i / m;
            path.push_back(fast ? PathSampler_At(&sampler, d) : Poly_PointAt(&p, d));
            frac.push_back(i == m && Closed(p) ? 0.0 : (double)i / m);
        }
        if (fast) PathSampler_Free(&sampler);
        return;
    }
    for (int k = 0; k < p.count; k++) {
        path.push_back(p.points[k]);
        frac.push_back((double)k / (p.count - 1));
    }
    if (Closed(p)) {
        path.push_back(p.points[0]);
        frac.push_back(0.0);
    }
}

Point3 Unit(Point3 v) {
    const double l = Vec_Length(v);
    return l > 0 ? Vec_Scale(v, 1 / l) : Point3{0, 0, 0};
}

// A sphere of radius r about c: `sides` meridians, half as many bands
// (at least 2), the poles on the y axis. Each edge is drawn once: a facet
// draws its meridian edge and the parallel below it.
int Sphere(Point3 c, double r, int sides) {
    if (!(r > 0)) return 0;
    const int bands = std::max(2, sides / 2);
    auto at = [&](int b, int s) {
        const double lat = kPi * b / bands, lon = 2 * kPi * s / sides;
        return Point3{c.x + r * std::sin(lat) * std::cos(lon), c.y + r * std::cos(lat),
                      c.z + r * std::sin(lat) * std::sin(lon)};
    };
    const Point3 north{c.x, c.y + r, c.z}, south{c.x, c.y - r, c.z};
    for (int s = 0; s < sides; s++) {
        if (Output_Triangle(north, at(1, s), at(1, s + 1), 1 | 2)) return 1;
        for (int b = 1; b < bands - 1; b++)
            if (Output_Quad(at(b, s), at(b + 1, s), at(b + 1, s + 1), at(b, s + 1), 1 | 2)) return 1;
        if (Output_Triangle(at(bands - 1, s), south, at(bands - 1, s + 1), 1)) return 1;
    }
    return 0;
}

// The flat end of an open pipe: a fan over its ring.
int Cap(const std::vector<Point3>& ring, Point3 centre) {
    for (size_t i = 0; i + 1 < ring.size(); i++)
        if (Output_Triangle(centre, ring[i + 1], ring[i], 2)) return 1;
    return 0;
}

// Moves the ring points of a segment end at joint j along the segment's
// direction `dir` onto the mitre plane through j (normal `mitre`), so that
// the two segments of a sharpened bend meet without gap or overlap. The
// move is limited to 10 radii, as the scene-file writer limits its bends.
void Mitre(std::vector<Point3>& ring, Point3 j, Point3 dir, Point3 mitre, double r) {
    const double along = Vec_Dot(mitre, dir);
    if (!(along > 1e-9)) return;   // a pipe that turns straight back: left as it is
    const double limit = 10 * std::fabs(r);
    for (Point3& q : ring) {
        double t = -Vec_Dot(mitre, Vec_Sub(q, j)) / along;
        t = std::clamp(t, -limit, limit);
        q = Vec_AddScaled(q, dir, t);
    }
}

// Eight points as two faces P0..P3 and P4..P7 joined by four sides; each
// side draws only its edge P(k+1) -> P(k+5), the faces draw their rims.
int Solid8(const Point3 P[8]) {
    if (Output_Quad(P[0], P[1], P[2], P[3], 15)) return 1;
    if (Output_Quad(P[4], P[5], P[6], P[7], 15)) return 1;
    for (int k = 0; k < 4; k++) {
        int k1 = (k + 1) % 4;
        if (Output_Quad(P[k], P[k1], P[k1 + 4], P[k + 4], 2)) return 1;
    }
    return 0;
}

}  // namespace

Point3 Revolution_Turn(const PolylineData* poly, Point3 p, double theta) {
    return Turn(MakeAxis(*poly), p, std::cos(theta), std::sin(theta));
}

int Poly_DrawExtrusion(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    const PolylineData& p = *poly;
    const Point3 v = Vec_Sub(p.param2, p.param1);
    if (Output_Line(p.param1, p.param2)) return 1;
    if (Poly_DrawPlain(poly)) return 1;
    std::vector<Point3> path;
    Poly_Path(p, path);
    for (size_t k = 1; k < path.size(); k++) {
        int mask = 2 | 4 | (k == 1 && !Closed(p) ? 8 : 0);
        if (Output_Quad(path[k - 1], path[k], Vec_Add(path[k], v), Vec_Add(path[k - 1], v), mask)) return 1;
    }
    return 0;
}

int Poly_DrawRevolution(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    const PolylineData& p = *poly;
    if (Poly_DrawPlain(poly)) return 1;
    if (Output_Line(p.param1, p.param2)) return 1;
    if (p.size_n < 1 || !std::isfinite(p.angle)) return 0;
    const int steps = std::min(p.size_n, (int)GEOM_MAX_SEGMENTS);
    const double step = p.angle / kDeg / steps;
    const double turns = p.angle / 360.0;
    const bool full = p.angle != 0 && turns == std::floor(turns);   // last ring is the profile again
    const Axis ax = MakeAxis(p);
    std::vector<Point3> base, prev, cur;
    Poly_Path(p, base);
    prev = base;
    cur.resize(base.size());
    for (int j = 1; j <= steps; j++) {
        const double c = std::cos(j * step), s = std::sin(j * step);
        for (size_t k = 0; k < base.size(); k++) cur[k] = Turn(ax, base[k], c, s);
        for (size_t k = 1; k < base.size(); k++) {
            int mask = 2 | (j == steps && full ? 0 : 4) | (k == 1 && !Closed(p) ? 8 : 0);
            if (Output_Quad(prev[k - 1], prev[k], cur[k], cur[k - 1], mask)) return 1;
        }
        prev.swap(cur);
    }
    return 0;
}

int Poly_DrawConeSweep(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    const PolylineData& p = *poly;
    if (Poly_DrawPlain(poly)) return 1;
    std::vector<Point3> path;
    Poly_Path(p, path);
    for (size_t k = 1; k < path.size(); k++) {
        int mask = 2 | (k == 1 && !Closed(p) ? 4 : 0);
        if (Output_Triangle(path[k - 1], path[k], p.param1, mask)) return 1;
    }
    return 0;
}

// Rows of size_n + 1 points, size_m + 1 rows (only the whole rows the point
// array really holds). N Closed joins the last column to the first, M Closed
// the last row to the first.
int Poly_DrawMesh(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    const PolylineData& p = *poly;
    if (p.size_m < 1 || p.size_n < 1 || p.size_n >= p.count) return 0;
    const int cols = p.size_n + 1;
    const int rows = (int)std::min<long long>((long long)p.size_m + 1, p.count / cols);
    if (rows < 2) return 0;
    const bool wrap_cols = (p.poly_flags & POLY_N_CLOSED) && cols > 2;
    const bool wrap_rows = (p.poly_flags & POLY_M_CLOSED) && rows > 2;
    const int cell_rows = rows - 1 + (wrap_rows ? 1 : 0);
    const int cell_cols = cols - 1 + (wrap_cols ? 1 : 0);
    const Point3* P = p.points;
    for (int i = 0; i < cell_rows; i++) {
        const Point3* r0 = P + (long long)i * cols;
        const Point3* r1 = P + (long long)((i + 1) % rows) * cols;
        for (int j = 0; j < cell_cols; j++) {
            const int j1 = (j + 1) % cols;
            int mask = Output_GridMask(i, j);
            if (wrap_cols && j == cols - 1) mask &= ~4;   // column 0 draws it
            if (wrap_rows && i == rows - 1) mask &= ~2;   // row 0 draws it
            if (Output_Quad(r0[j], r1[j], r1[j1], r0[j1], mask)) return 1;
        }
    }
    return 0;
}

// Each path segment A -> B is a frustum of size_n sides: rings of radius rA
// at A and rB at B, laid along x, turned by the elevation about z and the
// heading about y, moved to A. The joints and ends follow what the
// scene-file writer makes of the pipe:
//   - Edge type 0 (spheres): a sphere of the pipe's radius at every joint
//     (inner points, and the start of a closed pipe), and at the first and
//     last point of an open pipe when the Sphered type asks for it;
//   - any other Edge type (sharpened): the two rings of each joint lie in
//     the plane that halves the bend, so the frustums meet in a mitre;
//   - an open end without a sphere is closed by a flat cap, as the writer's
//     cones are.
// The wireframe leaves out joint spheres and flat caps, which only hide
// edges of the pipe there; end spheres, which change its outline, are drawn.
int Poly_DrawPipe(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    const PolylineData& p = *poly;
    if (p.size_n < 1) return 0;
    const int sides = std::min(p.size_n, (int)GEOM_MAX_SEGMENTS);
    const double r1 = p.param1.x, r2 = p.param1.y;
    const bool spheres = p.param2.x == 0;
    const double st = p.param2.y;   // Sphered type: bit 1 start, bit 2 end
    const int sphered = !spheres ? 0 : st == 1 ? 1 : st == 2 ? 2 : st == 3 ? 3 : 0;
    const bool screen = Output_ToScreen() != 0;
    std::vector<Point3> path;
    std::vector<double> frac;
    SweptPath(p, path, frac);
    const size_t n = path.size();
    if (n < 2) return 0;
    const bool closed = Closed(p) && n > 2;
    auto radius = [&](size_t k) { return r1 + (r2 - r1) * frac[k]; };
    std::vector<Point3> dir(n);   // dir[k]: unit direction of segment k-1 -> k
    for (size_t k = 1; k < n; k++) dir[k] = Unit(Vec_Sub(path[k], path[k - 1]));
    // The segment after point k and the one before it, across a closed pipe's seam.
    auto next_dir = [&](size_t k) { return k + 1 < n ? dir[k + 1] : dir[1]; };
    auto prev_dir = [&](size_t k) { return k > 0 ? dir[k] : dir[n - 1]; };
    auto is_joint = [&](size_t k) { return (k > 0 && k + 1 < n) || closed; };

    std::vector<Point3> ring_a(sides + 1), ring_b(sides + 1);
    for (size_t k = 1; k < n; k++) {
        const Point3 A = path[k - 1], d = Vec_Sub(path[k], A);
        const double L = std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
        const double phi = std::atan2(d.z, d.x), psi = std::atan2(d.y, std::sqrt(d.x * d.x + d.z * d.z));
        const double cf = std::cos(phi), sf = std::sin(phi), cp = std::cos(psi), sp = std::sin(psi);
        const double ra = radius(k - 1), rb = radius(k);
        auto place = [&](double x, double y, double z) {
            double x1 = x * cp - y * sp, y1 = x * sp + y * cp;   // elevation about z
            return Point3{x1 * cf - z * sf + A.x, y1 + A.y, x1 * sf + z * cf + A.z};   // heading about y
        };
        for (int i = 0; i <= sides; i++) {
            const double a = 2 * kPi * i / sides, c = std::cos(a), s = std::sin(a);
            ring_a[i] = place(0, ra * c, ra * s);
            ring_b[i] = place(L, rb * c, rb * s);
        }
        if (!spheres) {
            if (is_joint(k - 1)) Mitre(ring_a, A, dir[k], Unit(Vec_Add(prev_dir(k - 1), dir[k])), ra);
            if (is_joint(k)) Mitre(ring_b, path[k], dir[k], Unit(Vec_Add(dir[k], next_dir(k))), rb);
        }
        for (int i = 0; i < sides; i++)
            if (Output_Quad(ring_a[i], ring_b[i], ring_b[i + 1], ring_a[i + 1], 2 | 4 | 8)) return 1;
        if (!closed && !screen) {   // flat ends where no sphere closes the pipe
            if (k == 1 && !(sphered & 1) && Cap(ring_a, A)) return 1;
            if (k == n - 1 && !(sphered & 2) && Cap(ring_b, path[k])) return 1;
        }
    }
    if (spheres) {
        for (size_t k = 0; k + 1 < n && !screen; k++)   // the last point of a closed pipe is its first
            if (is_joint(k) && Sphere(path[k], radius(k), sides)) return 1;
        if (!closed && (sphered & 1) && Sphere(path[0], radius(0), sides)) return 1;
        if (!closed && (sphered & 2) && Sphere(path[n - 1], radius(n - 1), sides)) return 1;
    }
    return 0;
}

// Each path segment A -> B is a box standing on the x-z plane at A's height,
// reaching w/2 beyond both ends so that neighbouring boxes overlap.
int Poly_DrawWall(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    const PolylineData& p = *poly;
    const double h = p.param1.x, w = p.param1.y, t = w / 2;
    std::vector<Point3> path;
    std::vector<double> frac;
    SweptPath(p, path, frac);
    for (size_t k = 1; k < path.size(); k++) {
        const Point3 A = path[k - 1], d = Vec_Sub(path[k], A);
        const double L = std::sqrt(d.x * d.x + d.z * d.z);
        const double phi = std::atan2(d.z, d.x), c = std::cos(phi), s = std::sin(phi);
        const Point3 local[4] = {{-t, 0, -t}, {L + t, 0, -t}, {L + t, 0, t}, {-t, 0, t}};
        Point3 box[8];
        for (int i = 0; i < 4; i++) {
            box[i] = Point3{local[i].x * c - local[i].z * s + A.x, A.y, local[i].x * s + local[i].z * c + A.z};
            box[i + 4] = Point3{box[i].x, box[i].y + h, box[i].z};
        }
        if (Solid8(box)) return 1;
    }
    return 0;
}

// The bottom is emitted as P0, P3, P2, P1 (the same facet, the same split
// along P0-P2) so that it faces away from the top like the other faces.
int Poly_DrawCube(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 8) return 0;
    const Point3* P = poly->points;
    if (Output_Quad(P[0], P[3], P[2], P[1], 15)) return 1;
    if (Output_Quad(P[4], P[5], P[6], P[7], 15)) return 1;
    for (int k = 0; k < 4; k++) {
        int k1 = (k + 1) % 4;
        if (Output_Quad(P[k], P[k1], P[k1 + 4], P[k + 4], 2)) return 1;
    }
    return 0;
}

// End triangles P0 P1 P2 and P4 P5 P6, three sides along the extrusion.
int Poly_DrawWedge(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 8) return 0;
    const Point3* P = poly->points;
    if (Output_Triangle(P[0], P[2], P[1], 7)) return 1;   // facing away from the far end
    if (Output_Triangle(P[4], P[5], P[6], 7)) return 1;
    for (int k = 0; k < 3; k++) {
        int k1 = (k + 1) % 3;
        if (Output_Quad(P[k], P[k1], P[k1 + 4], P[k + 4], 2)) return 1;
    }
    return 0;
}

// The base P0..P3 (emitted P0, P3, P2, P1: facing away from the tip) and
// four triangles to the tip P4.
int Poly_DrawPyramid(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 8) return 0;
    const Point3* P = poly->points;
    if (Output_Quad(P[0], P[3], P[2], P[1], 15)) return 1;
    for (int k = 0; k < 4; k++)
        if (Output_Triangle(P[k], P[(k + 1) % 4], P[4], 2)) return 1;
    return 0;
}
