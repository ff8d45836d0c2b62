// shapes.cpp - point layouts of the polygon solids, the staircase, the
// screw thread, the spring and the Bezier control meshes (see shapes.h).
//
// The round shapes turn from h towards w = d x h, so that (h, w, d) is
// right-handed: with rows that advance anticlockwise about d and columns
// chosen for it, every mesh facet's normal (row step x column step) points
// out of the shape. The solids instead take the view's own v and swap two
// corners when the view's frame would wind their base the wrong way.
#include "model/shapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

const double kPi = 3.14159265358979323846;

Point3 Cross(Point3 a, Point3 b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }

Point3 At(const ShapeFrame& f, Point3 w, double x, double y, double z) {
    return {f.o.x + x * f.h.x + y * w.x + z * f.d.x, f.o.y + x * f.h.y + y * w.y + z * f.d.y,
            f.o.z + x * f.h.z + y * w.z + z * f.d.z};
}

Point3 InPlane(const ShapeFrame& f) { return Cross(f.d, f.h); }

// A point at radius r and angle a (radians) about d, `z` along it.
Point3 Round(const ShapeFrame& f, double r, double a, double z) {
    return At(f, InPlane(f), r * std::cos(a), r * std::sin(a), z);
}

// When the ring P0, P1, P2 winds clockwise about `grow` (the way from the
// first face to the second), swaps corners a and b of both faces.
void Wind(Point3 P[8], Point3 grow, int a, int b) {
    const Point3 n = Cross(Vec_Sub(P[1], P[0]), Vec_Sub(P[2], P[0]));
    if (Vec_Dot(n, grow) >= 0) return;
    std::swap(P[a], P[b]);
    std::swap(P[a + 4], P[b + 4]);
}

// Control points (cos-like, sin-like) of a unit circle in quarter arcs from
// angle a0 (radians): closed, 8 points, two at each quarter point A, A - k t
// and A + k t; open over `quarters` quarters, A0, A0 + k t0, the pairs of the
// inner quarter points, A_end - k t_end, A_end (2 * quarters + 2 points).
int Arc(double a0, int quarters, bool closed, double out[][2]) {
    int n = 0;
    auto put = [&](int q, double sign) {
        const double a = a0 + q * kPi / 2, c = std::cos(a), s = std::sin(a);
        out[n][0] = c - sign * kBezierArc * s;   // A + sign * k * t, t = (-s, c)
        out[n][1] = s + sign * kBezierArc * c;
        n++;
    };
    if (closed) {
        for (int q = 0; q < 4; q++) put(q, -1), put(q, 1);
        return n;
    }
    put(0, 0);
    put(0, 1);
    for (int q = 1; q < quarters; q++) put(q, -1), put(q, 1);
    put(quarters, -1);
    put(quarters, 0);
    return n;
}

}  // namespace

void Shape_Cube(const ShapeFrame& f, double x, double y, double z, Point3 out[8]) {
    const Point3 corner[4] = {{0, 0, 0}, {x, 0, 0}, {x, y, 0}, {0, y, 0}};
    for (int k = 0; k < 4; k++) {
        out[k] = At(f, f.v, corner[k].x, corner[k].y, 0);
        out[k + 4] = At(f, f.v, corner[k].x, corner[k].y, z);
    }
    Wind(out, Vec_Sub(out[4], out[0]), 1, 3);
}

void Shape_Pyramid(const ShapeFrame& f, double length, double width, double height, Point3 out[8]) {
    const double a = length / 2, b = width / 2;
    out[0] = At(f, f.v, -a, -b, 0);
    out[1] = At(f, f.v, a, -b, 0);
    out[2] = At(f, f.v, a, b, 0);
    out[3] = At(f, f.v, -a, b, 0);
    for (int k = 4; k < 8; k++) out[k] = At(f, f.v, 0, 0, height);
    const Point3 n = Cross(Vec_Sub(out[1], out[0]), Vec_Sub(out[2], out[0]));
    if (Vec_Dot(n, Vec_Sub(out[4], out[0])) < 0) std::swap(out[1], out[3]);
}

void Shape_Wedge(const ShapeFrame& f, double height, double width, double length, Point3 out[8]) {
    const double a = width / 2;
    out[0] = At(f, f.v, -a, 0, 0);
    out[1] = At(f, f.v, a, 0, 0);
    out[2] = out[3] = At(f, f.v, 0, 0, height);
    for (int k = 0; k < 4; k++) out[k + 4] = Vec_AddScaled(out[k], f.v, length);
    Wind(out, Vec_Sub(out[4], out[0]), 0, 1);
}

void Shape_Mesh(const Point3 c[4], int n, int m, Point3* out) {
    for (int i = 0; i <= n; i++) {
        const double v = n > 0 ? (double)i / n : 0;
        const Point3 a = Vec_Add(c[0], Vec_Scale(Vec_Sub(c[3], c[0]), v));   // #1 towards #4
        const Point3 b = Vec_Add(c[1], Vec_Scale(Vec_Sub(c[2], c[1]), v));   // #2 towards #3
        for (int j = 0; j <= m; j++) {
            const double u = m > 0 ? (double)j / m : 0;
            out[i * (m + 1) + j] = Vec_Add(a, Vec_Scale(Vec_Sub(b, a), u));
        }
    }
}

// A wide tread is split into pieces of at most 22.5 degrees so that it
// keeps close to the circle.
namespace {
int TreadPieces(int n) { return std::max(1, (int)std::ceil(360.0 / n / 22.5 - 1e-9)); }

}  // namespace

int Shape_StairRows(int n) { return n * (TreadPieces(n) + 1) + 2; }

void Shape_Staircase(const ShapeFrame& f, double step, double inner, double outer, int n, Point3* out) {
    const int pieces = TreadPieces(n);
    const double turn = 2 * kPi / n;
    int row = 0;
    auto put = [&](double a, double top) {
        Point3* r = out + 4 * row++;
        r[0] = Round(f, outer, a, 0);
        r[1] = Round(f, outer, a, top);
        r[2] = Round(f, inner, a, top);
        r[3] = Round(f, inner, a, 0);
    };
    for (int k = 0; k < n; k++) {
        put(k * turn, k * step);         // foot of the riser
        put(k * turn, (k + 1) * step);   // its top: the tread begins
        for (int s = 1; s < pieces; s++) put((k + (double)s / pieces) * turn, (k + 1) * step);
    }
    put(2 * kPi, n * step);   // the last tread ends
    put(2 * kPi, 0);          // and its block comes down to the ground
}

double Shape_ScrewPitch(double height, double revolutions) { return height / (revolutions + 1); }

int Shape_ScrewRows(double revolutions, int segments) {
    return std::max(2, (int)std::lround(revolutions * segments) + 1);
}

void Shape_Screw(const ShapeFrame& f, double height, double inner, double width, double thread_height,
                 double revolutions, int segments, Point3* out) {
    const double pitch = Shape_ScrewPitch(height, revolutions);
    const double flank = (pitch - thread_height) / 2;
    const int rows = Shape_ScrewRows(revolutions, segments);
    const double outer = inner + width;
    for (int i = 0; i < rows; i++) {
        const double a = 2 * kPi * i / segments, z = pitch * i / segments;
        Point3* r = out + 4 * i;
        r[0] = Round(f, inner, a, z);
        r[1] = Round(f, outer, a, z + flank);
        r[2] = Round(f, outer, a, z + flank + thread_height);
        r[3] = Round(f, inner, a, z + pitch);   // the next winding's root starts here
    }
}

int Shape_SpringPoints(double revolutions, double degrees) {
    return std::max(2, (int)std::lround(revolutions * 360.0 / degrees) + 1);
}

void Shape_Spring(const ShapeFrame& f, double diameter, double pitch, double horizontal, double revolutions,
                  double degrees, Point3* out) {
    const int count = Shape_SpringPoints(revolutions, degrees);
    for (int i = 0; i < count; i++) {
        const double turns = i * degrees / 360.0;
        out[i] = Round(f, diameter / 2 + horizontal * turns, 2 * kPi * turns, pitch * turns);
    }
}

void Shape_BezierTorus(const ShapeFrame& f, double major, double minor, Point3 out[80]) {
    double ring[10][2], tube[8][2];
    Arc(0, 4, false, ring);
    Arc(0, 4, true, tube);
    const Point3 w = InPlane(f);
    for (int i = 0; i < 10; i++)
        for (int j = 0; j < 8; j++) {
            const double r = major + minor * tube[j][0];
            out[i * 8 + j] = At(f, w, r * ring[i][0], r * ring[i][1], minor * tube[j][1]);
        }
}

// A surface of revolution about d from profile control points (radius,
// height) and the closed ring: rows round d, columns along the profile.
namespace {
void Revolve(const ShapeFrame& f, const double profile[][2], int columns, double scale, Point3* out) {
    double ring[8][2];
    Arc(0, 4, true, ring);
    const Point3 w = InPlane(f);
    for (int i = 0; i < 8; i++)
        for (int j = 0; j < columns; j++) {
            const double r = scale * profile[j][0];
            out[i * columns + j] = At(f, w, r * ring[i][0], r * ring[i][1], scale * profile[j][1]);
        }
}

}  // namespace

void Shape_BezierSphere(const ShapeFrame& f, double r, Point3 out[48]) {
    double profile[6][2];
    Arc(-kPi / 2, 2, false, profile);   // south pole, equator, north pole
    Revolve(f, profile, 6, r, out);
}

void Shape_BezierDish(const ShapeFrame& f, double r, Point3 out[32]) {
    double profile[4][2];
    Arc(-kPi / 2, 1, false, profile);   // from the bottom to the rim of a unit sphere
    for (double* p : profile) p[1] += 1;  // resting on o
    Revolve(f, profile, 4, r, out);
}

void Shape_BezierCylinder(const ShapeFrame& f, double r, double height, int columns, bool closed, Point3* out) {
    double ring[10][2];
    const int rows = Arc(0, 4, closed, ring);
    const Point3 w = InPlane(f);
    for (int i = 0; i < rows; i++)
        for (int j = 0; j < columns; j++)
            out[i * columns + j] = At(f, w, r * ring[i][0], r * ring[i][1], height * j / (columns - 1));
}
