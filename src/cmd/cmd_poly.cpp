// cmd_poly.cpp - the commands that draw plain polylines: POLYLINE, CIRCLE
// and ARC.
//
// POLYLINE builds a working record point by point (drawn as it grows, in
// the current layer's colour) and adds a copy to the scene when it is
// closed or when another command arrives (Enter and Space, which repeat
// POLYLINE, included); Ctrl-C cancels: the working polyline is wiped off
// the screen and nothing is added. The working record is freed on every
// way out. The object is drawn over the working drawing in the same
// colour, so that drawing is not erased first. CIRCLE and ARC lay their
// points in the plane of the current view (Poly_ToView).
#include <cmath>

#include "base/message.h"
#include "cmd/cmd.h"
#include "cmd/codes.h"
#include "cmd/poly_support.h"
#include "input/input.h"
#include "model/geometry.h"
#include "model/selection.h"
#include "scene/mem.h"
#include "state.h"

namespace {

const double kPi = 3.141592653589793;
const int MASK_RADIUS = 22;    // points and numbers; Enter repeats the command
const int MASK_SEGMENTS = 7;   // numbers only
const int MASK_START = 4;
const int MASK_END = 6;
const int MAX_ROUND_SEGMENTS = GEOM_MAX_SEGMENTS;   // a larger count is taken as this

// A finished polyline into the scene, shown; the caller frees its record.
// "\nOut of Memory" when it cannot be added.
void AddAndShow(const PolylineData* poly) {
    Object* obj = Poly_AddToScene(poly);
    if (!obj) {
        Msg_Printf("\nOut of Memory");
        return;
    }
    PolyCmd_Show(obj, g.scene.Current_Layer);
}

void FreeWork(PolylineData* work) {
    Mem_Free(work->points);
    work->points = nullptr;
    work->count = 0;
}

// Centre and radius of CIRCLE and ARC: 1 with both, 0 replaced, -1 given up.
int AskCentreRadius(const char* centre_prompt, const char* radius_prompt, Point3* centre, double* radius) {
    int got;
    if (!Ask_Point(centre_prompt, ASK_ENTER_REPEATS, centre, &got)) return 0;
    if (!got) return -1;
    Input_SetRubberBand(centre, "CIRCLE", nullptr);
    AskAnswer a;
    if (!Ask_Any(radius_prompt, nullptr, 1, MASK_RADIUS, &a)) return 0;
    if (a.kind == 0) *radius = Vec_Length(Vec_Sub(a.point, *centre));
    else if (a.kind == -3) *radius = a.number;
    else return -1;
    return 1;
}

// The segment question: anything but a number gives 16; a number must be
// greater than 2, else `refusal` and the question again. 0 when replaced.
int AskSegments(const char* prompt, const char* refusal, int* n) {
    for (;;) {
        AskAnswer a;
        if (!Ask_Any(prompt, nullptr, 1, MASK_SEGMENTS, &a)) return 0;
        if (a.kind != -3) {
            *n = 16;
            return 1;
        }
        *n = PolyCmd_Int(a.number, -1, MAX_ROUND_SEGMENTS);
        if (*n > 2) return 1;
        Msg_Printf("%s", refusal);
    }
}

// A polyline of `count` points at the given angles (degrees) on the circle
// of radius r round c in the view plane, added to the scene and shown.
void MakeRound(Point3 c, double r, double start, double sweep, int steps, int count, u8 flags) {
    PolylineData poly = Poly_Default();
    poly.poly_flags = flags;
    poly.points = (Point3*)Mem_Alloc(sizeof(Point3) * (size_t)count);
    if (!poly.points) {
        Msg_Printf("\nOut Of Memory");
        return;
    }
    const Viewport* vp = &g.view.Active_Viewport;
    for (int i = 0; i < count; i++) {
        const double a = (start + sweep * i / steps) * kPi / 180.0;
        poly.points[i] = Vec_Add(Poly_ToView(vp, Point3{r * std::cos(a), r * std::sin(a), 0}), c);
    }
    poly.count = count;
    AddAndShow(&poly);
    FreeWork(&poly);
}

}  // namespace

int Com_Polyline() {   // 201
    PolylineData work = Poly_Default();
    for (;;) {   // each pass draws one polyline
        Point3 p;
        int got;
        if (!Ask_Point("\nPOLYLINE> From: ", ASK_ENTER_REPEATS, &p, &got)) return 0;
        if (!got) return 1;
        if (!Poly_InsertPoint(&work, p, 0)) {
            Msg_Printf("\nOut Of Memory");
            return 1;
        }
        const int colour = Selection_LayerColour(g.scene.Current_Layer);
        for (;;) {
            const bool close = work.count > 2;
            Point3 last = work.points[work.count - 1];
            Input_SetRubberBand(&last, "LINE", nullptr);
            AskAnswer a;
            if (!Ask_Any(close ? "\nPOLYLINE> <Undo,Close> to: " : "\nPOLYLINE> <Undo> to: ", close ? "U,C" : "U", 0,
                         ASK_ENTER_REPEATS, &a)) {
                if (g.input.InputResult.code == CMD_CANCEL) PolyCmd_DrawRecord(&work, g.config.colors.view_bkcolor);
                else if (work.count >= 2) AddAndShow(&work);
                FreeWork(&work);
                return 0;
            }
            if (a.kind == 0) {
                if (!Poly_InsertPoint(&work, a.point, work.count)) {
                    Msg_Printf("\nOut Of Memory");
                    FreeWork(&work);
                    return 1;
                }
                PolyCmd_DrawRecord(&work, colour);
            } else if (a.kind == 1 && work.count == 1) {   // Undo of the only point: start again
                FreeWork(&work);
                break;
            } else if (a.kind == 1) {
                PolyCmd_DrawRecord(&work, g.config.colors.view_bkcolor);
                if (!Poly_DeletePoint(&work, work.count - 1)) {
                    Msg_Printf("\nOut Of Memory");
                    FreeWork(&work);
                    return 1;
                }
                PolyCmd_DrawRecord(&work, colour);
            } else if (a.kind == 2) {
                work.poly_flags |= POLY_CLOSED;
                AddAndShow(&work);
                Msg_Printf("\nPolyline Closed ");
                FreeWork(&work);
                work = Poly_Default();
                break;
            }
        }
    }
}

int Com_Circle() {   // 213
    Point3 c;
    double r;
    int s = AskCentreRadius("\nCIRCLE> Set center point: ", "\nCIRCLE> Set Radius: ", &c, &r);
    if (s <= 0) return s < 0 ? 1 : 0;
    int n;
    if (!AskSegments("\nCENTER> Set Segment value <16>: ", "\nMust be greater than 2.", &n)) return 0;
    MakeRound(c, r, 0, 360, n, n, POLY_CLOSED);
    return 1;
}

int Com_Arc() {   // 212
    Point3 c;
    double r;
    int s = AskCentreRadius("\nARC> Set center point: ", "\nARC> Set Radius: ", &c, &r);
    if (s <= 0) return s < 0 ? 1 : 0;
    AskAnswer a;
    if (!Ask_Any("\nARC> Set Start Angle <0>: ", nullptr, 1, MASK_START, &a)) return 0;
    double start = a.kind == -3 ? a.number : 0;
    if (start >= 360) start = 0;
    if (!Ask_Any("\nARC> Set End Angle <360>: ", nullptr, 1, MASK_END, &a)) return 0;
    double end = a.kind == -3 ? a.number : 360;
    if (end > 360) end = 360;
    int n;   // 3 is taken although the refusal says otherwise
    if (!AskSegments("\nARC> Set Segment value <16>: ", "\nMust be greater than 3.", &n)) return 0;
    const double sweep = end >= start ? end - start : 360 - (start - end);
    MakeRound(c, r, start, sweep, n, n + 1, 0);
    return 1;
}
