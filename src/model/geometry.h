// geometry.h - the geometry generators of every object kind and Object_Draw.
//
// Each kind (and each polyline form) has one generator. It enumerates its
// wire segments and facets into the facet sink (output.h) and never asks who
// consumes them. Every generator returns 1 when the consumer asked to stop
// (interrupted drawing, a pick-box hit), else 0. Records with too few points,
// zero or negative counts, or sizes that do not fit their point array yield
// nothing or only what fits; counts are capped so that no input can make a
// generator loop for ever.
//
// Point layouts of the polygon solids (8 points each):
//   Poly_Cube:    P0..P3 the bottom face, P4..P7 the top face, P(k+4) over P(k).
//   Poly_Wedge:   P0, P1 the ends of triangle edge #1 and P2 the tip of that
//                 end triangle, P3 = P2 (unused); P4..P7 = P0..P3 moved by the
//                 extrusion, so P(k+4) is the far end of P(k).
//   Poly_Pyramid: P0..P3 the base corners in order round the base, P4 the tip;
//                 P5..P7 repeat the tip (unused).
#pragma once
#include <vector>

#include "scene/object.h"

struct Viewport;

// Caps that keep hostile records finite.
enum GeometryLimits : int {
    GEOM_MAX_SEGMENTS = 4096,   // spline steps per span, sweep steps, pipe sides
    GEOM_MAX_PRIM_AUX = 1024,   // primitive wireframe segments
};

// --- Object_Draw: dispatch by kind (object_draw.cpp) ---
int Object_Draw(const Object* obj);
int Light_Draw(const LightData* light);

// --- primitives (prim_geom.cpp) ---
int Prim_Draw(const PrimitiveData* prim);
// The primitive's own transform: scale, rotate (X, Z, Y one after another,
// or X, Y, Z with PRIM_ROT_XYZ; the Y angle taken as 360 minus its value),
// then translate.
Point3 Prim_Transform(const PrimitiveData* prim, Point3 p);

// --- polylines and paths (poly_path.cpp) ---
int Poly_DrawPlain(const PolylineData* poly);
Point3 Poly_ToView(const Viewport* vp, Point3 local);
double Poly_Length(const PolylineData* poly);
Point3 Poly_PointAt(const PolylineData* poly, double s);
bool Points_Match(Point3 a, Point3 b);
// Number of points of the path a surface generator follows: the sampled
// B-spline (B-Spline set and count >= 4, `segments` steps per span) or the
// points themselves, closed by repeating the first when Closed. With `out`
// it also fills out[0 .. result-1]. 0 when the polyline has fewer than 2 points.
int Poly_PathPoints(const PolylineData* poly, Point3* out);
// The same path as a vector.
void Poly_Path(const PolylineData& poly, std::vector<Point3>& out);
// The point of one uniform cubic B-spline span at t (0..1).
Point3 BSpline_Point(Point3 q0, Point3 q1, Point3 q2, Point3 q3, double t);

// A path prepared for many points by arc length: the path points with the
// length run up to each (blocks from Mem_Alloc). Points asked for in
// increasing order move a cursor on; an earlier one is found by bisection.
// Each gives what Poly_PointAt gives.
struct PathSampler {
    Point3* points;   // the path (Poly_PathPoints)
    double* at;       // at[i]: length from the start to points[i]
    int count;        // path points; 0 when the polyline has fewer than 2
    int cursor;       // piece of the last point found
    double length;    // Poly_Length
    Point3 single;    // the answer before the start (the first point)
};
// 0 when memory ran out (nothing held then).
int PathSampler_Init(PathSampler* s, const PolylineData* poly);
Point3 PathSampler_At(PathSampler* s, double dist);
void PathSampler_Free(PathSampler* s);

// --- meshes from boundaries (mesh_build.cpp) ---
// Both fill out[(n + 1) * (m + 1)], row after row: row i has the parameter
// v = i/n, column j the parameter u = j/m, each boundary sampled at the
// arc-length fraction of its parameter. 0 when memory for the samples ran
// out (out untouched).
// RULSURF: the point u along polyline a blended by v towards the point u
// along polyline b.
int Mesh_Ruled(const PolylineData* a, const PolylineData* b, int n, int m, Point3* out);
// COONS: the bilinearly blended patch of four boundaries given in loop
// order (#1 runs from corner (u, v) = (0, 0) to (1, 0), #2 on to (1, 1), #3
// on to (0, 1), #4 back to (0, 0)); reversed[k] says that polyline k runs
// against the loop. The corners are taken from boundaries #1 and #3.
int Mesh_Coons(const PolylineData* const boundary[4], const int reversed[4], int n, int m, Point3* out);

// --- surfaces and solids (surface_geom.cpp) ---
int Poly_DrawExtrusion(const PolylineData* poly);
int Poly_DrawRevolution(const PolylineData* poly);
int Poly_DrawConeSweep(const PolylineData* poly);
int Poly_DrawMesh(const PolylineData* poly);
int Poly_DrawPipe(const PolylineData* poly);
int Poly_DrawWall(const PolylineData* poly);
int Poly_DrawCube(const PolylineData* poly);
int Poly_DrawWedge(const PolylineData* poly);
int Poly_DrawPyramid(const PolylineData* poly);
// A point turned by theta radians about the revolution axis param1 -> param2.
Point3 Revolution_Turn(const PolylineData* poly, Point3 p, double theta);
