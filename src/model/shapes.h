// shapes.h - the point layouts of the ready-made shapes: polygon solids,
// the staircase, the screw thread, the spring's helix and the control
// meshes of the Bezier shapes.
//
// Every shape is laid out in a frame: `o` the picked centre or corner, `h`
// and `v` the active view's screen axes and `d` its depth axis (local x, y
// and height). The builders only compute points into arrays the caller
// owns; the *_Rows and *_Points counts say how large those arrays must be.
//
// Facets face outwards: the solids' corner rings run anticlockwise about
// the direction in which the solid grows (the generators emit the first
// face of each solid reversed), and the round shapes turn about `d`
// anticlockwise in the right-handed sense whatever the view's handedness.
#pragma once

#include "scene/point3.h"

struct ShapeFrame {
    Point3 o;   // origin: the picked point
    Point3 h;   // local x
    Point3 v;   // local y
    Point3 d;   // local height
};

// The Bezier shapes' inner control points lie 0.55 x the radius along the
// tangent of their quarter arcs.
constexpr double kBezierArc = 0.55;

// P0..P3 the bottom, P4..P7 the top (P(k+4) over P(k)): x along h, y along
// v, z along d from the corner o.
void Shape_Cube(const ShapeFrame& f, double x, double y, double z, Point3 out[8]);
// The base centred on o (length along h, width along v), the tip at
// `height` along d; P5..P7 repeat the tip.
void Shape_Pyramid(const ShapeFrame& f, double length, double width, double height, Point3 out[8]);
// Triangle edge #1 of `width` centred on o along h, the tip at `height`
// along d over its middle, the triangle extruded by `length` along v.
void Shape_Wedge(const ShapeFrame& f, double height, double width, double length, Point3 out[8]);
// The (n + 1) x (m + 1) grid between four corners (#1 at row 0 column 0,
// #2 at row 0 column m, #3 at row n column m, #4 at row n column 0), rows
// blended linearly.
void Shape_Mesh(const Point3 corner[4], int n, int m, Point3* out);

// A spiral staircase of n stairs over one turn round o: each stair a block
// from the ground (o's plane) to its tread, k + 1 steps high, between the
// two radii. Rows of 4 points (outer ground, outer tread, inner tread,
// inner ground) turn about d.
int Shape_StairRows(int n);
void Shape_Staircase(const ShapeFrame& f, double step, double inner, double outer, int n, Point3* out);

// A screw of `height` along d: one helical band of rows of 4 points, the
// thread profile across one pitch (root, crest start, crest end, next
// root); the pitch is height / (revolutions + 1) so that the band fills
// the height. `thread_height` is the crest's extent along the axis and
// must be below the pitch. `segments` rows per revolution.
double Shape_ScrewPitch(double height, double revolutions);
int Shape_ScrewRows(double revolutions, int segments);
void Shape_Screw(const ShapeFrame& f, double height, double inner, double width, double thread_height,
                 double revolutions, int segments, Point3* out);

// The centre line of a coiled spring starting at o: coil radius
// diameter / 2 growing by `horizontal` per winding, rising by `pitch` per
// winding, one point every `degrees`.
int Shape_SpringPoints(double revolutions, double degrees);
void Shape_Spring(const ShapeFrame& f, double diameter, double pitch, double horizontal, double revolutions,
                  double degrees, Point3* out);

// Control meshes of the Bezier shapes, rows of (size_n + 1) points, (size_m
// + 1) rows, for the scene writer's patches (pairs of tangent control
// points meet in the middle; a closed direction has 8 lines, an open full
// turn 10 with its first line repeated at the end).
// Torus: 10 rows round the main axis (open), 8 columns round the tube
// (closed); `major` from o to the tube's centre line, `minor` the tube's.
void Shape_BezierTorus(const ShapeFrame& f, double major, double minor, Point3 out[80]);
// Sphere: 8 rows round d (closed), 6 columns from pole to pole.
void Shape_BezierSphere(const ShapeFrame& f, double r, Point3 out[48]);
// Dish: a half-sphere bowl resting on o, its rim r high and r wide: 8 rows
// round d (closed), 4 columns from the bottom to the rim.
void Shape_BezierDish(const ShapeFrame& f, double r, Point3 out[32]);
// Cylinder of `height` along d: rows round d (8 closed, or 10 open with
// the first repeated), `columns` (>= 2) columns spaced height / (columns - 1).
void Shape_BezierCylinder(const ShapeFrame& f, double r, double height, int columns, bool closed, Point3* out);
