// pov_shapes.cpp - pipes as cones and spheres, walls as boxes, Bezier meshes
// as bicubic patches.
//
// Each shape writes its member lines into the union that Pov_WriteMesh has
// opened; every line starts with Pov_Indent.
#include <cmath>
#include <vector>

#include "model/geometry.h"
#include "pov/pov.h"
#include "state.h"

namespace {

const double kDegPerRad = 57.29577951;

// The path a pipe or wall follows. A splined one (B-Spline set, at least 4
// points) is the curve sampled at the length fractions i/size_m, i = 0 ..
// size_m; `fraction` gives each point's share of the way from start to end.
// A closed spline's last sample is its first again and is left out, so that
// closing the path adds the last segment.
struct PipePath {
    std::vector<Point3> points;
    std::vector<double> fraction;
    bool closed;
};

PipePath PathOf(const PolylineData& p) {
    PipePath path;
    path.closed = (p.poly_flags & POLY_CLOSED) && p.count > 2;
    if ((p.poly_flags & POLY_BSPLINE) && p.count >= 4 && p.size_m >= 1) {
        int m = p.size_m < 4096 ? p.size_m : 4096;
        double length = Poly_Length(&p);
        int last = path.closed ? m - 1 : m;
        for (int i = 0; i <= last; i++) {
            path.points.push_back(Poly_PointAt(&p, length * i / m));
            path.fraction.push_back((double)i / m);
        }
        return path;
    }
    for (int i = 0; i < p.count; i++) {
        path.points.push_back(p.points[i]);
        path.fraction.push_back(p.count > 1 ? (double)i / (p.count - 1) : 0.0);
    }
    return path;
}

}  // namespace

void Pov_WriteWall(const Object* object) {
    const PolylineData& w = *(const PolylineData*)object->data;
    double h = w.param1.x, t = w.param1.y / 2;
    PipePath path = PathOf(w);
    int n = (int)path.points.size();
    int segments = path.closed ? n : n - 1;
    for (int i = 0; i < segments; i++) {
        Point3 a = path.points[i], b = path.points[(i + 1) % n];
        double dx = b.x - a.x, dz = b.z - a.z;
        double len = sqrt(dx * dx + dz * dz);
        double angle = atan2(dz, dx) * kDegPerRad;
        if (angle < 0) angle += 360;
        if (angle >= 360) angle -= 360;
        Pov_Indent();
        Pov_Printf("    box { <%g, %g, %g>, <%g, %g, %g>  rotate y*%g  translate <%g, %g, %g> }", -t, 0.0, -t,
                   len + t, h, t, -angle, a.x, a.y, a.z);
    }
}

namespace {


void Sphere(Point3 p, double r) {
    if (r == 0) return;
    Pov_Indent();
    Pov_Printf("    sphere { <%g, %g, %g>, %g }", p.x, p.y, p.z, r);
}

// The filler of a sharp bend at joint j between segment a-j and j-b: the
// two cones, each carried past the joint by r * tan(bend / 2), intersected.
void MitredBend(Point3 a, double ra, Point3 j, double rj, Point3 b, double rb) {
    Point3 d1 = Vec_Sub(j, a), d2 = Vec_Sub(b, j);
    double l1 = Vec_Length(d1), l2 = Vec_Length(d2);
    if (l1 == 0 || l2 == 0) return;
    double c = (d1.x * d2.x + d1.y * d2.y + d1.z * d2.z) / (l1 * l2);
    c = c > 1 ? 1 : c < -1 ? -1 : c;
    double bend = acos(c);
    double k = tan(bend / 2);
    if (k > 10) k = 10;   // a pipe that turns back on itself
    double ext = rj * k;
    Point3 e1 = Vec_AddScaled(j, d1, ext / l1), s2 = Vec_AddScaled(j, d2, -ext / l2);
    Pov_Indent();
    Pov_Printf("    intersection {");
    Pov_Indent();
    Pov_Printf("        cone { <%g, %g, %g>, %g, <%g, %g, %g>, %g }", a.x, a.y, a.z, ra, e1.x, e1.y, e1.z, rj);
    Pov_Indent();
    Pov_Printf("        cone { <%g, %g, %g>, %g, <%g, %g, %g>, %g }", s2.x, s2.y, s2.z, rj, b.x, b.y, b.z, rb);
    Pov_Indent();
    Pov_Printf("    }");
}

}  // namespace

void Pov_WritePipe(const Object* object) {
    const PolylineData& p = *(const PolylineData*)object->data;
    PipePath path = PathOf(p);
    int n = (int)path.points.size();
    if (n < 2) return;
    int closed = path.closed;
    double r1 = p.param1.x, r2 = p.param1.y;
    int edge = (int)p.param2.x, sphered = (int)p.param2.y;
    // Radius #1 at the first path point to Radius #2 at the last; a closed
    // pipe's closing segment goes back to Radius #1.
    auto radius = [&](int i) { return r1 + (r2 - r1) * path.fraction[(i % n + n) % n]; };
    auto at = [&](int i) { return path.points[(i % n + n) % n]; };

    int segments = closed ? n : n - 1;
    for (int i = 0; i < segments; i++) {
        Point3 a = at(i), b = at(i + 1);
        Pov_Indent();
        Pov_Printf("    cone { <%g, %g, %g>, %g, <%g, %g, %g>, %g }", a.x, a.y, a.z, radius(i), b.x, b.y, b.z,
                   radius((i + 1) % n));
    }
    // Joints between two segments: every inner point, and for a closed pipe
    // the last and the first point too.
    int first = closed ? 0 : 1, last = closed ? n - 1 : n - 2;
    for (int i = first; i <= last; i++) {
        if (edge == 0)
            Sphere(at(i), radius(i));
        else
            MitredBend(at(i - 1), radius((i - 1 + n) % n), at(i), radius(i), at(i + 1), radius((i + 1) % n));
    }
    if (!closed && edge == 0) {
        if (sphered == 1 || sphered == 3) Sphere(at(0), radius(0));
        if (sphered == 2 || sphered == 3) Sphere(at(n - 1), radius(n - 1));
    }
}

namespace {

// One patch from grid rows rows[0..3] and columns cols[0..3]; adjust[k] says
// whether border k (top, bottom, left, right) meets a neighbour.
void Patch(const PolylineData& m, const int rows[4], const int cols[4], const bool adjust[4]) {
    Point3 q[4][4];
    for (int r = 0; r < 4; r++)
        for (int c = 0; c < 4; c++) q[r][c] = m.points[rows[r] * (m.size_n + 1) + cols[c]];
    for (int c = 0; c < 4; c++) {
        if (adjust[0]) q[0][c] = Vec_Mid(q[0][c], q[1][c]);
        if (adjust[1]) q[3][c] = Vec_Mid(q[3][c], q[2][c]);
    }
    for (int r = 0; r < 4; r++) {
        if (adjust[2]) q[r][0] = Vec_Mid(q[r][0], q[r][1]);
        if (adjust[3]) q[r][3] = Vec_Mid(q[r][3], q[r][2]);
    }
    Pov_Indent();
    Pov_Printf("    bicubic_patch { type %d  flatness %g  u_steps %d  v_steps %d", g.config.Optimize_PovOut ? 0 : 1,
               m.param1.x, m.segments, (int)m.angle);
    for (int r = 0; r < 4; r++) {
        Pov_Indent();
        Pov_Printf("        ");
        for (int c = 0; c < 4; c++)
            Pov_Printf("<%3.8f, %3.8f, %3.8f>%s", q[r][c].x, q[r][c].y, q[r][c].z,
                       c < 3 ? ", " : (r < 3 ? "," : ""));
    }
    Pov_Indent();
    Pov_Printf("    }");
}

}  // namespace

void Pov_WritePatches(const Object* object) {
    const PolylineData& m = *(const PolylineData*)object->data;
    if (m.size_m < 3 || m.size_n < 3 || (long)m.count < (long)(m.size_m + 1) * (m.size_n + 1)) return;
    // Only patches whose four rows and columns exist: with the odd sizes the
    // mesh editor enforces that is size / 2 each way; an even size has one
    // grid line too few for its last patch, which is left out.
    int pm = (m.size_m - 1) / 2, pn = (m.size_n - 1) / 2;
    bool rows_closed = (m.poly_flags & POLY_M_CLOSED) != 0;   // border rows wrap
    bool cols_closed = (m.poly_flags & POLY_N_CLOSED) != 0;   // border columns wrap
    for (int i = 0; i < pm; i++)
        for (int j = 0; j < pn; j++) {
            int rows[4] = {2 * i, 2 * i + 1, 2 * i + 2, 2 * i + 3};
            int cols[4] = {2 * j, 2 * j + 1, 2 * j + 2, 2 * j + 3};
            bool adjust[4] = {i > 0 || rows_closed, i < pm - 1 || rows_closed, j > 0 || cols_closed,
                              j < pn - 1 || cols_closed};
            Patch(m, rows, cols, adjust);
        }
    // Seams: the last two grid rows (columns) joined to the first two.
    if (rows_closed)
        for (int j = 0; j < pn; j++) {
            int rows[4] = {m.size_m - 1, m.size_m, 0, 1};
            int cols[4] = {2 * j, 2 * j + 1, 2 * j + 2, 2 * j + 3};
            bool adjust[4] = {true, true, j > 0 || cols_closed, j < pn - 1 || cols_closed};
            Patch(m, rows, cols, adjust);
        }
    if (cols_closed)
        for (int i = 0; i < pm; i++) {
            int rows[4] = {2 * i, 2 * i + 1, 2 * i + 2, 2 * i + 3};
            int cols[4] = {m.size_n - 1, m.size_n, 0, 1};
            bool adjust[4] = {i > 0 || rows_closed, i < pm - 1 || rows_closed, true, true};
            Patch(m, rows, cols, adjust);
        }
}
