// surface_geom.cpp - generators of the polyline surfaces and polygon solids:
// extrusion, revolution, cone sweep, mesh, pipe, wall, cube, wedge, pyramid.
//
// Surfaces follow the path of their polyline (Poly_PathPoints: the points,
// or the sampled B-spline). Edge masks are chosen so that on screen each
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

// Path of a pipe or wall with the radius (pipe) at each point: a splined
// path is sampled at the fractions i/size_m of its length.
void SweptPath(const PolylineData& p, std::vector<Point3>& path, std::vector<double>& frac) {
    path.clear();
    frac.clear();
    if (!p.points || p.count < 2) return;
    if (Spline(p)) {
        int m = std::clamp(p.size_m, 1, (int)GEOM_MAX_SEGMENTS);
        double len = Poly_Length(&p);
        for (int i = 0; i <= m; i++) {
            path.push_back(Poly_PointAt(&p, len * i / m));
            frac.push_back((double)i / m);
        }
        return;
    }
    for (int k = 0; k < p.count; k++) {
        path.push_back(p.points[k]);
        frac.push_back((double)k / (p.count - 1));
    }
    if (Closed(p)) {   // back to the start, where the radius is Radius #1 again
        path.push_back(p.points[0]);
        frac.push_back(0.0);
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
// heading about y, moved to A.
int Poly_DrawPipe(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    const PolylineData& p = *poly;
    if (p.size_n < 1) return 0;
    const int sides = std::min(p.size_n, (int)GEOM_MAX_SEGMENTS);
    const double r1 = p.param1.x, r2 = p.param1.y;
    std::vector<Point3> path;
    std::vector<double> frac;
    SweptPath(p, path, frac);
    std::vector<Point3> ring_a(sides + 1), ring_b(sides + 1);
    for (size_t k = 1; k < path.size(); k++) {
        const Point3 A = path[k - 1], d = Vec_Sub(path[k], A);
        const double L = std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
        const double phi = std::atan2(d.z, d.x), psi = std::atan2(d.y, std::sqrt(d.x * d.x + d.z * d.z));
        const double cf = std::cos(phi), sf = std::sin(phi), cp = std::cos(psi), sp = std::sin(psi);
        const double ra = r1 + (r2 - r1) * frac[k - 1], rb = r1 + (r2 - r1) * frac[k];
        auto place = [&](double x, double y, double z) {
            double x1 = x * cp - y * sp, y1 = x * sp + y * cp;   // elevation about z
            return Point3{x1 * cf - z * sf + A.x, y1 + A.y, x1 * sf + z * cf + A.z};   // heading about y
        };
        for (int i = 0; i <= sides; i++) {
            const double a = 2 * kPi * i / sides, c = std::cos(a), s = std::sin(a);
            ring_a[i] = place(0, ra * c, ra * s);
            ring_b[i] = place(L, rb * c, rb * s);
        }
        for (int i = 0; i < sides; i++)
            if (Output_Quad(ring_a[i], ring_b[i], ring_b[i + 1], ring_a[i + 1], 2 | 4 | 8)) return 1;
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

int Poly_DrawCube(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 8) return 0;
    return Solid8(poly->points);
}

// End triangles P0 P1 P2 and P4 P5 P6, three sides along the extrusion.
int Poly_DrawWedge(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 8) return 0;
    const Point3* P = poly->points;
    if (Output_Triangle(P[0], P[1], P[2], 7)) return 1;
    if (Output_Triangle(P[4], P[5], P[6], 7)) return 1;
    for (int k = 0; k < 3; k++) {
        int k1 = (k + 1) % 3;
        if (Output_Quad(P[k], P[k1], P[k1 + 4], P[k + 4], 2)) return 1;
    }
    return 0;
}

// The base P0..P3 and four triangles to the tip P4.
int Poly_DrawPyramid(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 8) return 0;
    const Point3* P = poly->points;
    if (Output_Quad(P[0], P[1], P[2], P[3], 15)) return 1;
    for (int k = 0; k < 4; k++)
        if (Output_Triangle(P[k], P[(k + 1) % 4], P[4], 2)) return 1;
    return 0;
}
