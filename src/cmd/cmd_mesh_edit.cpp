// cmd_mesh_edit.cpp - the MESH Edit machine and its reduced form for the
// polygon solids, PRIMPOLY Edit.
//
// Points of the mesh are selected (W by window, P one at a time, SM
// switches between adding and removing) and then moved, scaled or turned
// with the transform engine's point arithmetic (M, S, R: modes 2, 3, 11).
// Selected points are shown as small squares in the selection colour while
// the machine runs; they are not kept in the record.
//
// Where a mesh keeps its Bezier settings (what the scene-file writer reads
// for "bicubic_patch"): the Bezier flag is the B-Spline bit 0x02 of
// poly_flags, U SIZE is `segments` (u_steps), V SIZE is `angle` taken as a
// whole number (v_steps), the flatness is param1.x. A mesh made by RULSURF
// or COONS has V SIZE 0 and flatness 0; switching Bezier on then gives the
// values the Bezier shapes are made with: V SIZE 8, flatness 0.01.
//
// Choices for the keywords left open: D drops the point selection; C
// changes the mesh's size: it asks new N and M numbers (the current ones
// shown) and samples the old grid bilinearly at the new rows and columns,
// so the mesh keeps its shape with more or fewer points (the selection is
// dropped, a closed direction stays closed). A point picked at the MESH Edit
// prompt itself selects like P.
#include <cmath>
#include <cstring>
#include <utility>

#include "base/message.h"
#include "cmd/cmd.h"
#include "cmd/codes.h"
#include "cmd/poly_support.h"
#include "gfx/gfx.h"
#include "input/input.h"
#include "model/geometry.h"
#include "model/xform.h"
#include "scene/mem.h"
#include "state.h"
#include "ui/menu.h"
#include "view/viewport.h"

namespace {

const int MASK_MAIN = 16;      // keywords and points; Enter repeats (ignored)
const int SIDE_MESH_EDIT = 1032;   // side menu of the keywords
const int MASK_VALUE = 1;
const int MARK_HALF = 2;       // half-size of a selected point's square in pixels
const double PICK_REACH = 6;   // pixels from a point that P still takes it
const int MAX_STEPS = 16;      // U and V SIZE above this are taken as this
const int MAX_SIZE = GEOM_MAX_SEGMENTS;
const double BEZIER_V_SIZE = 8.0, BEZIER_FLATNESS = 0.01;

enum MeshKey { MK_E = 1, MK_MC, MK_NC, MK_B, MK_F, MK_U, MK_V, MK_M, MK_S, MK_R, MK_W, MK_P, MK_D, MK_SM, MK_FL, MK_C };
const char kMeshKeys[] = "E,MC,NC,B,F,U,V,M,S,R,W,P,D,SM,FL,C";
// PRIMPOLY Edit's keywords "E,M,S,R,W,P,D,SM" as MESH Edit actions.
const int kPrimPolyKeys[] = {0, MK_E, MK_M, MK_S, MK_R, MK_W, MK_P, MK_D, MK_SM};

enum Next { GO_ON, END_DONE, END_REPLACED };

struct MeshEdit {
    Object* obj;
    Layer* layer;
    u8* marks;      // one per point: selected
    int removing;   // SM: picks remove instead of add
    PolylineData* p() const { return (PolylineData*)obj->data; }

    int Selected() const {
        int n = 0;
        for (int i = 0; i < p()->count; i++) n += marks[i];
        return n;
    }
    void DrawMarks(int colour) const {
        const int keep = X11_GetColor();
        X11_SetColor(colour);
        for (int i = 0; i < p()->count; i++) {
            if (!marks[i]) continue;
            double x, y;
            PolyCmd_Pixel(p()->points[i], layer, &x, &y);
            X11_Rectangle(0, (int)x - MARK_HALF, (int)y - MARK_HALF, (int)x + MARK_HALF, (int)y + MARK_HALF);
        }
        X11_SetColor(keep);
    }
    void ShowMarks() const { DrawMarks(g.config.colors.general_color); }
    // Takes the squares away and draws the mesh again where they covered it.
    void HideMarks() const {
        DrawMarks(g.config.colors.view_bkcolor);
        PolyCmd_Draw(obj, layer);
    }
    template <typename F>
    void Change(F f) {
        DrawMarks(g.config.colors.view_bkcolor);
        PolyCmd_Erase(obj, layer);
        f();
        PolyCmd_Draw(obj, layer);
        ShowMarks();
    }
};

void PrintSelected(const MeshEdit& e) { Msg_Printf("\nNumber of Selected Points: %d", e.Selected()); }

// Marks (or, removing, unmarks) the points whose screen position lies in
// the rectangle x1..x2, y1..y2.
void MarkIn(MeshEdit& e, double x1, double y1, double x2, double y2) {
    if (x1 > x2) std::swap(x1, x2);
    if (y1 > y2) std::swap(y1, y2);
    e.HideMarks();
    for (int i = 0; i < e.p()->count; i++) {
        double x, y;
        PolyCmd_Pixel(e.p()->points[i], e.layer, &x, &y);
        if (x >= x1 && x <= x2 && y >= y1 && y <= y2) e.marks[i] = e.removing ? 0 : 1;
    }
    e.ShowMarks();
}

// P (and a point at the main prompt): the point nearest to `at` on screen,
// when it lies within reach.
void PickPoint(MeshEdit& e, Point3 at) {
    Viewport* vp = &g.view.Active_Viewport;
    View_Project(vp, at);
    const double px = vp->screen_x, py = vp->screen_y;
    int best = -1;
    double best_d = PICK_REACH * PICK_REACH;
    for (int i = 0; i < e.p()->count; i++) {
        double x, y;
        PolyCmd_Pixel(e.p()->points[i], e.layer, &x, &y);
        const double d = (x - px) * (x - px) + (y - py) * (y - py);
        if (d <= best_d) best_d = d, best = i;
    }
    if (best >= 0) {
        e.HideMarks();
        e.marks[best] = e.removing ? 0 : 1;
        e.ShowMarks();
    }
    PrintSelected(e);
}

Next Window(MeshEdit& e) {
    AskAnswer a, b;
    if (!PolyCmd_Ask("\nWindow> Upper/Left corner <Cancel>: ", "C", 0, 0, &a)) return END_REPLACED;
    if (a.kind == 1) Msg_Printf("*Cancle*");
    if (a.kind != 0) return GO_ON;
    Input_SetRubberBand(&a.point, "RECT", nullptr);
    if (!PolyCmd_Ask("\nWindow> Lower/Right corner <Cancle>: ", "C", 0, 0, &b)) return END_REPLACED;
    if (b.kind == 1) Msg_Printf("*Cancle*");
    if (b.kind != 0) return GO_ON;
    Viewport* vp = &g.view.Active_Viewport;
    View_Project(vp, a.point);
    const double x1 = vp->screen_x, y1 = vp->screen_y;
    View_Project(vp, b.point);
    MarkIn(e, x1, y1, vp->screen_x, vp->screen_y);
    PrintSelected(e);
    return GO_ON;
}

// M, S, R: the selected points through the engine's arithmetic of `mode`.
Next Modify(MeshEdit& e, int mode) {
    if (e.Selected() == 0) {
        Msg_Printf("\nNo Points selected...use keyword \"W\"");
        return GO_ON;
    }
    AskAnswer a, b;
    if (!PolyCmd_Ask("\nSet BASE Point: ", nullptr, 0, 0, &a)) return END_REPLACED;
    if (a.kind != 0) return GO_ON;
    Input_SetRubberBand(&a.point, "LINE", nullptr);
    if (!PolyCmd_Ask("\nSet offset Point: ", nullptr, 0, 0, &b)) return END_REPLACED;
    if (b.kind != 0) return GO_ON;
    PolylineData* p = e.p();
    Point3* moved = (Point3*)Mem_Alloc(sizeof(Point3) * (size_t)p->count);
    if (!moved) {
        Msg_Printf("\nNot enough memory for Modifying");
        return GO_ON;
    }
    const XformState keep = g.xform;
    Xform_Setup(a.point, b.point, mode);
    for (int i = 0; i < p->count; i++) moved[i] = e.marks[i] ? Transform_Point(p->points[i]) : p->points[i];
    g.xform = keep;
    e.Change([&] {
        Mem_Free(p->points);
        p->points = moved;
    });
    return GO_ON;
}

// Rows and columns of the grid the point array really holds.
void GridOf(const PolylineData* p, int* rows, int* cols) {
    *cols = p->size_n + 1;
    *rows = *cols > 0 ? p->count / *cols : 0;
    if (*rows > p->size_m + 1) *rows = p->size_m + 1;
}

// C: the grid sampled at new rows and columns.
Next Resize(MeshEdit& e) {
    PolylineData* p = e.p();
    int n = p->size_m, m = p->size_n;
    int rows, cols;
    GridOf(p, &rows, &cols);
    if (rows < 2 || cols < 2) return GO_ON;   // no grid to sample
    for (int k = 0; k < 2; k++) {
        int* v = k == 0 ? &n : &m;
        for (;;) {
            if (!PolyCmd_AskInt(k == 0 ? "\nSet N Number <%d>: " : "\nSet M Number <%d>: ", 7, v, 0, MAX_SIZE))
                return END_REPLACED;
            if (*v > 0) break;
            Msg_Printf("\nMust be greater than ZERO.");
            *v = k == 0 ? p->size_m : p->size_n;
        }
    }
    const size_t count = (size_t)(n + 1) * (size_t)(m + 1);
    Point3* grid = (Point3*)Mem_Alloc(sizeof(Point3) * count);
    u8* marks = (u8*)Mem_Alloc(count);
    if (!grid || !marks) {
        Mem_Free(grid);
        Mem_Free(marks);
        Msg_Printf("\nNot enough memory");
        return GO_ON;
    }
    memset(marks, 0, count);
    const Point3* P = p->points;
    for (int i = 0; i <= n; i++) {
        const double fr = (double)i * (rows - 1) / n;
        const int r = fr >= rows - 1 ? rows - 2 : (int)fr;
        const double tr = fr - r;
        for (int j = 0; j <= m; j++) {
            const double fc = (double)j * (cols - 1) / m;
            const int c = fc >= cols - 1 ? cols - 2 : (int)fc;
            const double tc = fc - c;
            auto at = [&](int rr, int cc) { return P[(size_t)rr * cols + cc]; };
            const Point3 lo = Vec_AddScaled(at(r, c), Vec_Sub(at(r, c + 1), at(r, c)), tc);
            const Point3 hi = Vec_AddScaled(at(r + 1, c), Vec_Sub(at(r + 1, c + 1), at(r + 1, c)), tc);
            grid[(size_t)i * (m + 1) + j] = Vec_AddScaled(lo, Vec_Sub(hi, lo), tr);
        }
    }
    e.Change([&] {
        Mem_Free(p->points);
        p->points = grid;
        p->count = (int)count;
        p->size_m = n;
        p->size_n = m;
        Mem_Free(e.marks);
        e.marks = marks;
    });
    return GO_ON;
}

bool Bezier(const PolylineData* p) { return (p->poly_flags & POLY_BSPLINE) != 0; }

// MC and NC: a closed direction, refused while the other one is closed
// and smoothing is on.
void ToggleClosed(MeshEdit& e, u8 bit, u8 other, const char* refusal, const char* closed, const char* opened) {
    PolylineData* p = e.p();
    if (!(p->poly_flags & bit) && (p->poly_flags & other) && Bezier(p)) {
        Msg_Printf("%s", refusal);
        return;
    }
    e.Change([&] { p->poly_flags ^= bit; });
    Msg_Printf("%s", (p->poly_flags & bit) ? closed : opened);
}

void ToggleBezier(MeshEdit& e) {
    PolylineData* p = e.p();
    if (Bezier(p)) {
        e.Change([&] { p->poly_flags &= (u8)~POLY_BSPLINE; });
        Msg_Printf("\nBezier_Patch = OFF");
        return;
    }
    if (p->size_m <= 2 || p->size_n <= 2) {
        Msg_Printf("\nMesh size must be greater than 2x2 and of ODD values");
        return;
    }
    if (p->size_m % 2 == 0 || p->size_n % 2 == 0) {
        Msg_Printf("\nMesh size must be of ODD values...currently it's <%dx%d>", p->size_m, p->size_n);
        return;
    }
    if ((p->poly_flags & POLY_M_CLOSED) && (p->poly_flags & POLY_N_CLOSED)) {
        Msg_Printf("\nSorry, N and M can't both be closed while smoothing is ON");
        return;
    }
    e.Change([&] {
        p->poly_flags |= POLY_BSPLINE;
        if (!(p->angle >= 1)) p->angle = BEZIER_V_SIZE;   // never set (or not a number)
        if (!(p->param1.x > 0)) p->param1.x = BEZIER_FLATNESS;
    });
    Msg_Printf("\nBezier_Patch = ON");
}

Next MeshAction(MeshEdit& e, int key) {
    PolylineData* p = e.p();
    if ((key == MK_F || key == MK_U || key == MK_V || key == MK_FL) && !Bezier(p)) {
        Msg_Printf("\nBezier smoothing is not selected");
        return GO_ON;
    }
    switch (key) {
        case MK_E: return END_DONE;
        case MK_MC:
            ToggleClosed(e, POLY_M_CLOSED, POLY_N_CLOSED, "\nSorry, N and M can't both be closed while smoothing is ON",
                         "\nM Closed", "\nM Opened");
            return GO_ON;
        case MK_NC:
            ToggleClosed(e, POLY_N_CLOSED, POLY_M_CLOSED, "\nSorry, M and N can't both be closed while smoothing is ON",
                         "\nN Closed", "\nN Opened");
            return GO_ON;
        case MK_B: ToggleBezier(e); return GO_ON;
        case MK_F:
            e.Change([&] { p->poly_flags ^= POLY_FRAME; });
            Msg_Printf((p->poly_flags & POLY_FRAME) ? "\nFrame = ON" : "\nFrame = OFF");
            return GO_ON;
        case MK_U: {
            int v = p->segments;
            if (!PolyCmd_AskInt("\nSet U SIZE <%d>: ", MASK_VALUE, &v, 1, MAX_STEPS)) return END_REPLACED;
            p->segments = v;
            return GO_ON;
        }
        case MK_V: {
            int v = PolyCmd_Int(p->angle, 0, MAX_STEPS);
            if (!PolyCmd_AskInt("\nSet V SIZE <%d>: ", MASK_VALUE, &v, 1, MAX_STEPS)) return END_REPLACED;
            p->angle = v;
            return GO_ON;
        }
        case MK_FL: {
            double v = p->param1.x;
            if (!PolyCmd_AskDouble("\nSet Flatness value <%g>: ", MASK_VALUE, &v)) return END_REPLACED;
            p->param1.x = v > 0 ? v : 0;
            return GO_ON;
        }
        case MK_M: return Modify(e, XFORM_MOVE);
        case MK_S: return Modify(e, XFORM_SCALE);
        case MK_R: return Modify(e, XFORM_ROTATE);
        case MK_W: return Window(e);
        case MK_P: {
            AskAnswer a;
            if (!PolyCmd_Ask("\nSelect Point: ", nullptr, 0, 0, &a)) return END_REPLACED;
            if (a.kind == 0) PickPoint(e, a.point);
            return GO_ON;
        }
        case MK_D:
            e.HideMarks();
            memset(e.marks, 0, (size_t)p->count);
            PrintSelected(e);
            return GO_ON;
        case MK_SM:
            e.removing = !e.removing;
            Msg_Printf("\nSelection Mode now equals: %s Points", e.removing ? "REMOVING" : "ADDING");
            return GO_ON;
        case MK_C: return Resize(e);
        default: return GO_ON;
    }
}

int RunMesh(Object* obj, Layer* layer, const char* keywords, const char* prompt, const int* key_map) {
    MeshEdit e{obj, layer, nullptr, 0};
    const int count = e.p()->count;
    if (!e.p()->points || count < 1) return 1;
    e.marks = (u8*)Mem_Alloc((size_t)count);
    if (!e.marks) {
        Msg_Printf("\nNot enough memory for Modifying");
        return 1;
    }
    memset(e.marks, 0, (size_t)count);
    const int menu = g.menus.side.shown;
    SideMenu_Show(SIDE_MESH_EDIT);
    int result = -1;
    while (result < 0) {
        AskAnswer a;
        if (!PolyCmd_Ask(prompt, keywords, 0, MASK_MAIN, &a)) {
            result = 0;
            break;
        }
        if (a.kind == 0) {
            PickPoint(e, a.point);
            continue;
        }
        if (a.kind < 1) continue;
        switch (MeshAction(e, key_map ? key_map[a.kind] : a.kind)) {
            case GO_ON: break;
            case END_DONE: result = 1; break;
            case END_REPLACED: result = 0; break;
        }
    }
    e.HideMarks();
    Mem_Free(e.marks);
    SideMenu_Show(menu);
    return result;
}

}  // namespace

int Mesh_Edit(Object* obj, Layer* layer) {
    return RunMesh(obj, layer, kMeshKeys, "\nMESH Edit <E,MC,NC,B,F,U,V,FL,M,S,R,W,P,D,SM,C>: ", nullptr);
}

int PrimPoly_Edit(Object* obj, Layer* layer) {
    return RunMesh(obj, layer, "E,M,S,R,W,P,D,SM", "\nPRIMPOLY Edit <E,M,S,R,W,P,D,SM>: ", kPrimPolyKeys);
}
