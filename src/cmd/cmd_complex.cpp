// cmd_complex.cpp - the complex shapes: STAIRCASE, SCREWTHREAD, SPRING,
// the Bezier shapes B_TORUS, B_DISH, B_SPHERE, B_CYLINDER and
// B_CYLINDER2, and the two picture choosers that reach them (complex.dlg,
// bezier.dlg).
//
// Choices where the shapes are open (model/shapes.h has the layouts):
// - STAIRCASE: one turn of n stair blocks standing on the picked plane,
//   each one step higher than the last, between the two radii.
// - SCREWTHREAD: the thread's pitch is height / (revolutions + 1), so the
//   helical band fills the height; "Threads width" is how far the thread
//   stands out from the inner radius, "Threads height" the crest's extent
//   along the axis, which must stay below the pitch (else the message and
//   the thread height is asked again).
// - SPRING: "Vertical Dist between windings" is the gap between
//   neighbouring windings, so the pitch is the wire diameter plus that gap
//   (a negative gap counts as none) and windings never cut into each
//   other; "Horizontal Dist between windings" widens the coil's radius by
//   that much per winding (0: a straight coil spring); "Degree resolution"
//   is the turn between neighbouring points of the centre line.
// - Bezier shapes carry the Bezier flag (poly_flags 0x02) so that the scene
//   writer emits their patches. The closed direction of B_CYLINDER2 runs
//   along size_m (8 rows round the axis): its flag is M Closed 0x80, the
//   flag that wraps rows here. B_CYLINDER's 10 rows run once round with the
//   first row repeated (no wrap flag).
#include <cmath>
#include <cstdio>

#include "base/message.h"
#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "cmd/shape_support.h"
#include "model/geometry.h"
#include "state.h"
#include "ui/dialog.h"

namespace {

const int MAX_STAIRS = 1024;
const int MAX_SCREW_SEGMENTS = GEOM_MAX_SEGMENTS;
const long MAX_SHAPE_POINTS = 1000000;   // a larger shape is taken as out of memory

// A Bezier mesh record with the settings every Bezier shape shares.
PolylineData BezierMesh(Point3* points, int size_m, int size_n, u8 flags) {
    PolylineData p = Poly_Default();
    p.form = FORM_POLY_MESH;
    p.poly_flags = flags;
    p.segments = 8;
    p.angle = 8.0;
    p.size_m = size_m;
    p.size_n = size_n;
    p.points = points;
    p.count = (size_m + 1) * (size_n + 1);
    return p;
}

// B_CYLINDER and B_CYLINDER2: k patches along the height give 2k + 1 (the
// number clamped to 1..4; anything else 1 patch).
int Cylinder(const char* name, bool closed, double radius_factor) {
    char prompt[120];
    Point3 c;
    double height, r, k = 1;
    snprintf(prompt, sizeof prompt, "\n%s> Center point: ", name);
    ShapeGot got = Shape_AskPoint(prompt, &c);
    snprintf(prompt, sizeof prompt, "\n%s> Height of Cylinder: ", name);
    if (got == SHAPE_VALUE) got = Shape_AskLength(prompt, c, false, &height);
    snprintf(prompt, sizeof prompt, "\n%s> Set Radius: ", name);
    if (got == SHAPE_VALUE) got = Shape_AskLength(prompt, c, true, &r);
    snprintf(prompt, sizeof prompt, "\n%s> Number of Patchs for M direction <1, 2, 3 or 4>?: ", name);
    if (got == SHAPE_VALUE && (got = Shape_AskNumber(prompt, &k)) == SHAPE_NONE) {
        k = 1;
        got = SHAPE_VALUE;
    }
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    const int patches = k >= 4 ? 4 : k >= 1 ? (int)k : 1;
    const int size_n = 2 * patches + 1, rows = closed ? 8 : 10;
    snprintf(prompt, sizeof prompt, "\nCan't create %s...Out Of Memory", closed ? "B_Cylinder2" : "B_Cylinder");
    Point3* pts = Shape_Points((long)rows * (size_n + 1), prompt);
    if (!pts) return 1;
    Shape_BezierCylinder(Shape_ViewFrame(c), r * radius_factor, height, size_n + 1, closed, pts);
    PolylineData mesh = BezierMesh(pts, rows - 1, size_n, closed ? POLY_M_CLOSED | POLY_BSPLINE : POLY_BSPLINE);
    if (closed) mesh.param1.x = 0.01;
    return Shape_Add(&mesh);
}

// A picture chooser: the id of the picture clicked (1..count), or 0.
int Choose(const char* file, const char* failure, int count) {
    g.input.InputResult.code = 0;
    Dialog d;
    if (!Dialog_Open(&d, file, failure)) return 0;
    DialogResult r;
    do Dialog_Run(&d, &r);
    while (r.id != 0 && r.id != -1 && (r.id < 1 || r.id > count));
    Dialog_Close(&d);
    return r.id >= 1 && r.id <= count ? r.id : 0;
}

}  // namespace

int Com_Staircase() {   // 209
    Point3 c;
    double step, inner, outer, n = 16;
    ShapeGot got = Shape_AskPoint("\nSTAIRCASE> Center point: ", &c);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nSTAIRCASE> Height of a single stair step: ", c, false, &step);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nSTAIRCASE> Inner Radius: ", c, true, &inner);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nSTAIRCASE> Outter Radius: ", c, true, &outer);
    if (got == SHAPE_VALUE && (got = Shape_AskNumber("\nSTAIRCASE> Enter n (to draw n stairs): ", &n)) == SHAPE_NONE) {
        n = 16;
        got = SHAPE_VALUE;
    }
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    const int stairs = n <= 2 ? 3 : n >= MAX_STAIRS ? MAX_STAIRS : (int)n;
    const int rows = Shape_StairRows(stairs);
    Point3* pts = Shape_Points(4L * rows, "\nCan't create Staircase...Out Of Memory");
    if (!pts) return 1;
    Shape_Staircase(Shape_ViewFrame(c), step, inner, outer, stairs, pts);
    PolylineData mesh = Poly_Default();
    mesh.form = FORM_POLY_MESH;
    mesh.poly_flags = 0;
    mesh.segments = 8;
    mesh.angle = 8.0;
    mesh.param1.x = 0.01;
    mesh.size_m = rows - 1;
    mesh.size_n = 3;
    mesh.points = pts;
    mesh.count = 4 * rows;
    return Shape_Add(&mesh);
}

int Com_ScrewThread() {   // 210
    Point3 c;
    double height, inner, width, thread = 0, revs = 0;
    ShapeGot got = Shape_AskPoint("\nSCREWTHREAD> Center point: ", &c);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nSCREWTHREAD> Height: ", c, false, &height);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nSCREWTHREAD> Inner Radius of screw: ", c, true, &inner);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nSCREWTHREAD> Threads width: ", c, false, &width);
    while (got == SHAPE_VALUE) {
        got = Shape_AskLength("\nSCREWTHREAD> Threads height: ", c, false, &thread);
        if (got == SHAPE_VALUE) got = Shape_AskNumber("\nSCREWTHREAD> Number of Revolutions: ", &revs);
        if (got != SHAPE_VALUE) break;
        if (!(revs > 0)) return 1;
        thread = std::fabs(thread);
        if (thread < Shape_ScrewPitch(std::fabs(height), revs)) break;
        Msg_Printf("\nThreads Height value is to large!");
    }
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    AskAnswer a;
    if (!Ask_Any("\nSCREWTHREAD> Finally, Number of Segments <16>: ", nullptr, 1, 7, &a)) return 0;
    int segments = 16;
    if (a.kind == -3) segments = a.number < 3 ? 3 : a.number > MAX_SCREW_SEGMENTS ? MAX_SCREW_SEGMENTS : (int)a.number;
    const char* failure = "\nCan't create Screwthread...Out Of Memory";
    if (revs * segments > MAX_SHAPE_POINTS) {
        Msg_Printf("%s", failure);
        return 1;
    }
    const int rows = Shape_ScrewRows(revs, segments);
    Point3* pts = Shape_Points(4L * rows, failure);
    if (!pts) return 1;
    Shape_Screw(Shape_ViewFrame(c), std::fabs(height), inner, width, thread, revs, segments, pts);
    PolylineData mesh = Poly_Default();
    mesh.form = FORM_POLY_MESH;
    mesh.poly_flags = 0;
    mesh.segments = 8;
    mesh.angle = 8.0;
    mesh.size_m = rows - 1;
    mesh.size_n = 3;
    mesh.points = pts;
    mesh.count = 4 * rows;
    return Shape_Add(&mesh);
}

int Com_Spring() {   // 211
    Point3 c;
    double diameter, wire, vertical, horizontal, revs, degrees;
    ShapeGot got = Shape_AskPoint("\nStart point for spring: ", &c);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nSPRING> Spring Diameter: ", c, false, &diameter);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nSPRING> Wire Diameter: ", c, false, &wire);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nSPRING> Vertical Dist between windings: ", c, false, &vertical);
    if (got == SHAPE_VALUE)
        got = Shape_AskLength("\nSPRING> Horizontal Dist between windings: ", c, false, &horizontal);
    if (got == SHAPE_VALUE) got = Shape_AskNumber("\nSPRING> Revolutions: ", &revs);
    if (got == SHAPE_VALUE) got = Shape_AskNumber("\nSPRING> Degree resolution: ", &degrees);
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    if (!(revs > 0) || !(degrees > 0)) return 1;
    if (revs * 360.0 / degrees > MAX_SHAPE_POINTS) {
        Msg_Printf("Out of Memory!");
        return 1;
    }
    wire = std::fabs(wire);
    const int count = Shape_SpringPoints(revs, degrees);
    Point3* pts = Shape_Points(count, "Out of Memory!");
    if (!pts) return 1;
    Shape_Spring(Shape_ViewFrame(c), diameter, wire + (vertical > 0 ? vertical : 0), horizontal, revs, degrees, pts);
    PolylineData pipe = Poly_Default();
    pipe.form = FORM_POLY_PIPE;
    pipe.segments = 8;
    pipe.size_m = 32;
    pipe.size_n = 8;
    pipe.param1 = {wire / 2, wire / 2, 0};
    pipe.points = pts;
    pipe.count = count;
    return Shape_Add(&pipe);
}

int Com_BTorus() {
    Point3 c, inner_at;
    double major, minor;
    ShapeGot got = Shape_AskPoint("\nB_TORUS> Center point: ", &c);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nB_TORUS> Set Inner Radius: ", c, true, &major, &inner_at);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nB_TORUS> Set Radius of donut: ", inner_at, true, &minor);
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    Point3* pts = Shape_Points(80, "\nCan't create B_Torus...Out Of Memory");
    if (!pts) return 1;
    Shape_BezierTorus(Shape_ViewFrame(c), major, minor, pts);
    PolylineData mesh = BezierMesh(pts, 9, 7, POLY_N_CLOSED | POLY_BSPLINE);
    return Shape_Add(&mesh);
}

int Com_BDish() {
    Point3 c;
    double r;
    ShapeGot got = Shape_AskPoint("\nB_DISH> Center point: ", &c);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nB_DISH> Set Radius: ", c, true, &r);
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    Point3* pts = Shape_Points(32, "\nCan't create B_Dish...Out Of Memory");
    if (!pts) return 1;
    Shape_BezierDish(Shape_ViewFrame(c), r, pts);
    PolylineData mesh = BezierMesh(pts, 7, 3, POLY_M_CLOSED | POLY_BSPLINE);
    return Shape_Add(&mesh);
}

int Com_BSphere() {
    Point3 c;
    double r;
    ShapeGot got = Shape_AskPoint("\nB_SPHERE> Center point: ", &c);
    if (got == SHAPE_VALUE) got = Shape_AskLength("\nB_SPHERE> Set Radius: ", c, true, &r);
    if (got != SHAPE_VALUE) return Shape_Stop(got);
    Point3* pts = Shape_Points(48, "\nCan't create B_Sphere...Out Of Memory");
    if (!pts) return 1;
    Shape_BezierSphere(Shape_ViewFrame(c), r, pts);
    PolylineData mesh = BezierMesh(pts, 7, 5, POLY_M_CLOSED | POLY_BSPLINE);
    return Shape_Add(&mesh);
}

int Com_BCylinder() { return Cylinder("B_CYLINDER", false, 1.5); }
int Com_BCylinder2() { return Cylinder("B_CYLINDER2", true, 1.0); }

int Com_Bezier() {   // 208
    static const CommandFn kShapes[] = {Com_BTorus, Com_BDish, Com_BSphere, Com_BCylinder, Com_BCylinder2};
    const int id = Choose("bezier.dlg", "Can't find bezier.dlg, or Out of Memory.", 5);
    return id ? kShapes[id - 1]() : 1;
}

int Com_Complex() {   // 219
    static const CommandFn kShapes[] = {Com_PCube,     Com_Pyramid,     Com_Wedge, Com_Staircase,
                                        Com_ScrewThread, Com_Spring, Com_Bezier};
    const int id = Choose("complex.dlg", nullptr, 7);
    return id ? kShapes[id - 1]() : 1;
}
