// cmd_poly_edit.cpp - the POLYLINE Edit machine (plain polylines, pipes and
// walls) and the SWEEP Edit machine (extrusions, revolutions, cone sweeps).
//
// Both run one keyword prompt in a loop with a vertex cursor, marked by the
// XOR cross while the prompt waits. Every change erases the object (drawn
// in the background colour), changes it and draws it again. Another command
// ends the edit (0); the edit command itself (302, also what an empty Enter
// repeats) is ignored.
//
//   POLYLINE Edit: cursor 0 .. count-1, N and P wrap round.
//   SWEEP Edit:    cursor 0 .. count-1 on the profile, then -2 (param2; not
//                  for cone sweeps) and -1 (param1); N runs
//                  0 -> .. -> count-1 -> -2 -> -1 -> 0, P the other way.
//
// Choices: A inserts the point before the current vertex and the cursor
// stays on that vertex (now one place up), so repeated A lays points one
// after another before it. B makes the two pieces in the polyline's own
// layer and removes the polyline (its pieces replace it); when a piece
// cannot be made nothing is added and the polyline stays. BP ends the
// SWEEP Edit, as there is no sweep left to edit. Counts typed at the value
// prompts are taken as at most GEOM_MAX_SEGMENTS.
#include <cstdio>

#include "base/message.h"
#include "cmd/cmd.h"
#include "cmd/codes.h"
#include "cmd/poly_support.h"
#include "input/input.h"
#include "model/geometry.h"
#include "scene/mem.h"
#include "state.h"
#include "ui/menu.h"

namespace {

const int MASK_MAIN = 17;   // keywords only; Enter repeats (the edit command: ignored)
const int SIDE_POLY_EDIT = 1030, SIDE_SWEEP_EDIT = 1031;   // side menus of the keywords
const int MAX_COUNT = GEOM_MAX_SEGMENTS;

// What an action leaves the machine to do.
enum Next { GO_ON, END_DONE, END_REPLACED };

struct Edit {
    Object* obj;
    Layer* layer;
    int cursor;
    PolylineData* p() const { return (PolylineData*)obj->data; }

    // Erases the object, runs the change, draws it again.
    template <typename F>
    void Change(F f) {
        PolyCmd_Erase(obj, layer);
        f();
        PolyCmd_Draw(obj, layer);
    }
};

// A Yes/No question of a machine: 1 answered (*yes), 0 replaced, -1 the
// edit command arrived (ignored: no answer).
int AskYes(const char* keywords, const char* prompt, int* yes) {
    if (Ask_YesNo(keywords, prompt, 1, yes)) return 1;
    if (g.input.InputResult.code != CMD_EDIT) return 0;
    g.input.InputResult.code = CMD_NONE;
    return -1;
}

// --- actions both machines share; `cur` is a profile vertex ---

void SetClosed(Edit& e, bool closed) {
    e.Change([&] {
        if (closed) e.p()->poly_flags |= POLY_CLOSED;
        else e.p()->poly_flags &= (u8)~POLY_CLOSED;
    });
    Msg_Printf(closed ? "\npolyline Closed" : "\npolyline Opened");
}

void Toggle(Edit& e, u8 bit, const char* on, const char* off) {
    e.Change([&] { e.p()->poly_flags ^= bit; });
    Msg_Printf("%s", (e.p()->poly_flags & bit) ? on : off);
}

// R, NS, MS, TS, TR, WR: a count with its lower bound.
Next AskCount(Edit& e, const char* format, int mask, int32_t* field, int lo) {
    int v = *field;
    if (!PolyCmd_AskInt(format, mask, &v, lo, MAX_COUNT)) return END_REPLACED;
    e.Change([&] { *field = v < lo ? lo : v; });
    return GO_ON;
}

Next AskValue(Edit& e, const char* format, int mask, double* field) {
    double v = *field;
    if (!PolyCmd_AskDouble(format, mask, &v)) return END_REPLACED;
    e.Change([&] { *field = v; });
    return GO_ON;
}

// M: the point replaced by one picked or typed, with a LINE band from it.
Next MovePoint(Edit& e, Point3* point) {
    char prompt[200];
    snprintf(prompt, sizeof prompt, "\nPoint <%g,%g,%g>: ", point->x, point->y, point->z);
    Point3 base = *point;
    Input_SetRubberBand(&base, "LINE", nullptr);
    AskAnswer a;
    if (!PolyCmd_Ask(prompt, nullptr, 0, 0, &a)) return END_REPLACED;
    if (a.kind == 0) e.Change([&] { *point = a.point; });
    return GO_ON;
}

Next InsertPoint(Edit& e) {
    AskAnswer a;
    if (!PolyCmd_Ask("\nInsert/Add a Point: ", nullptr, 0, ASK_ENTER_REPEATS, &a)) return END_REPLACED;
    if (a.kind != 0) return GO_ON;
    bool ok = true;
    e.Change([&] { ok = Poly_InsertPoint(e.p(), a.point, e.cursor) != 0; });
    if (!ok) {
        Msg_Printf("Out Of Memory");
        return END_DONE;
    }
    e.cursor++;
    return GO_ON;
}

Next DeletePoint(Edit& e) {
    if (e.p()->count <= 2) {
        Msg_Printf("Sorry...Can't Delete point with only 2 votrex's");
        return GO_ON;
    }
    bool ok = true;
    e.Change([&] { ok = Poly_DeletePoint(e.p(), e.cursor) != 0; });
    if (!ok) {
        Msg_Printf("Unable to Remove Point");
        return END_DONE;
    }
    if (e.cursor >= e.p()->count) e.cursor = e.p()->count - 1;
    return GO_ON;
}

// Unlinks a polyline object and frees it with its record and points.
void Remove(Object* obj, Layer* layer) {
    PolylineData* p = (PolylineData*)obj->data;
    Object_Unlink(obj, layer);
    Mem_Free(p->points);
    Mem_Free(p);
}

// B: points 0..cursor and cursor..count-1 as two new open polylines in the
// polyline's layer, which they replace.
Next Break(Edit& e) {
    PolylineData* p = e.p();
    if (e.cursor <= 0 || e.cursor >= p->count - 1) {
        Msg_Printf("\nCan't BREAK edge of polyline");
        return GO_ON;
    }
    int yes;
    int s = AskYes("N,Y", "\nSure you want to Seporate into 2 polylines? <Y,N> (Y): ", &yes);
    if (s <= 0 || !yes) return s == 0 ? END_REPLACED : GO_ON;
    PolylineData piece[2] = {Poly_Default(), Poly_Default()};
    piece[0].points = p->points;
    piece[0].count = e.cursor + 1;
    piece[1].points = p->points + e.cursor;
    piece[1].count = p->count - e.cursor;
    Layer* keep = g.scene.Current_Layer;
    g.scene.Current_Layer = e.layer;
    Object* made[2] = {Poly_AddToScene(&piece[0]), nullptr};
    if (made[0]) made[1] = Poly_AddToScene(&piece[1]);
    g.scene.Current_Layer = keep;
    if (!made[1]) {
        Msg_Printf(made[0] ? "\nUnable to make Polyline #2" : "\nUnable to make Polyline #1");
        if (made[0]) Remove(made[0], e.layer);
        return END_DONE;
    }
    PolyCmd_Erase(e.obj, e.layer);
    Remove(e.obj, e.layer);
    e.obj = nullptr;
    for (Object* o : made) PolyCmd_Draw(o, e.layer);
    return END_DONE;
}

// --- POLYLINE Edit ---

enum PolyKey {
    PK_E = 1, PK_C, PK_O, PK_S, PK_F, PK_R, PK_M, PK_N, PK_P, PK_A, PK_D, PK_B,
    PK_PI, PK_R1, PK_R2, PK_TS, PK_TR, PK_TN, PK_ED, PK_ST, PK_W, PK_H, PK_WI, PK_WR,
};
const char kPolyKeys[] = "E,C,O,S,F,R,M,N,P,A,D,B,PI,R1,R2,TS,TR,TN,ED,ST,W,H,WI,WR";
const char kPolyPrompt[] = "\nPOLYLINE Edit <PI,ED,ST,TN,W,H,WI,WR,R1,R2,TS,TR,C,O,S,F,R,M,N,P,A,D,B,E>: ";
const int VALUE_MASK = 1;

Next PolyAction(Edit& e, int key) {
    PolylineData* p = e.p();
    const bool pipe = p->form == FORM_POLY_PIPE, wall = p->form == FORM_POLY_WALL;
    if (key >= PK_R1 && key <= PK_ST && !pipe) {
        Msg_Printf("\nPolyline not Pipened. Type \"PI\" to enable.");
        return GO_ON;
    }
    if (key >= PK_H && key <= PK_WR && !wall) {
        Msg_Printf("\nPolyline not a Wall. Type \"W\" to enable.");
        return GO_ON;
    }
    switch (key) {
        case PK_E: return END_DONE;
        case PK_C: SetClosed(e, true); return GO_ON;
        case PK_O: SetClosed(e, false); return GO_ON;
        case PK_S: Toggle(e, POLY_BSPLINE, "\nB-Spline = ON", "\nB-Spline = OFF"); return GO_ON;
        case PK_F: Toggle(e, POLY_FRAME, "\nFrame = ON", "\nFrame = OFF"); return GO_ON;
        case PK_R: return AskCount(e, "\nSet New Resolution/Segments <%d>: ", VALUE_MASK, &p->segments, 1);
        case PK_M: return MovePoint(e, &p->points[e.cursor]);
        case PK_N: e.cursor = e.cursor + 1 >= p->count ? 0 : e.cursor + 1; return GO_ON;
        case PK_P: e.cursor = e.cursor <= 0 ? p->count - 1 : e.cursor - 1; return GO_ON;
        case PK_A: return InsertPoint(e);
        case PK_D: return DeletePoint(e);
        case PK_B: return Break(e);
        case PK_PI:
            e.Change([&] {
                if (pipe) {
                    p->form = FORM_POLYLINE;
                    return;
                }
                p->form = FORM_POLY_PIPE;
                p->size_m = 16;
                p->size_n = 8;
                p->segments = 8;
                p->param1 = Point3{0.2, 0.2, 0};
                p->param2.x = p->param2.y = 0;
            });
            Msg_Printf(pipe ? "PolyPIPE disabled" : "PolyPIPE enabled");
            return GO_ON;
        case PK_R1: return AskValue(e, "\nSet Radius #1 value <%g>: ", VALUE_MASK, &p->param1.x);
        case PK_R2: return AskValue(e, "\nSet Radius #2 value <%g>: ", VALUE_MASK, &p->param1.y);
        case PK_TS: return AskCount(e, "\nSet Pipe Segments <%d>: ", VALUE_MASK, &p->size_n, 2);
        case PK_TR: return AskCount(e, "\nSet Pipe Resolution (Splined only) <%d>: ", VALUE_MASK, &p->size_m, 1);
        case PK_TN: Msg_Printf("\nThis option disabled for release 3"); return GO_ON;
        case PK_ED: {   // 0 stays 0, any other number is 1
            char prompt[80];
            snprintf(prompt, sizeof prompt, "\nSet Edge type (0=Spheres, 1=Sharpened) <%d>: ", p->param2.x != 0);
            AskAnswer a;
            if (!PolyCmd_Ask(prompt, nullptr, 1, VALUE_MASK, &a)) return END_REPLACED;
            if (a.kind == -3) e.Change([&] { p->param2.x = a.number != 0 ? 1 : 0; });
            return GO_ON;
        }
        case PK_ST: {
            int v = PolyCmd_Int(p->param2.y, 0, 3);
            if (!PolyCmd_AskInt("\nSet Sphered type (0=None, 1=Start, 2=End, 3=Both) <%d>: ", VALUE_MASK, &v, 0, 3))
                return END_REPLACED;
            e.Change([&] { p->param2.y = v; });
            return GO_ON;
        }
        case PK_W:
            e.Change([&] {
                if (wall) {
                    p->form = FORM_POLYLINE;
                    return;
                }
                p->form = FORM_POLY_WALL;
                p->size_m = 16;
                p->size_n = 8;
                p->segments = 8;
                p->param1 = Point3{4.0, 0.25, 0};
            });
            Msg_Printf(wall ? "PolyWALL disabled" : "PolyWALL enabled");
            return GO_ON;
        case PK_H: return AskValue(e, "\nSet Height of Wall <%g>: ", VALUE_MASK, &p->param1.x);
        case PK_WI: return AskValue(e, "\nSet Width of Wall <%g>: ", VALUE_MASK, &p->param1.y);
        case PK_WR: return AskCount(e, "\nSet Wall Resolution (Splined only) <%d>: ", VALUE_MASK, &p->size_m, 2);
        default: return GO_ON;
    }
}

// --- SWEEP Edit ---

enum SweepKey { SK_E = 1, SK_C, SK_O, SK_S, SK_F, SK_R, SK_M, SK_N, SK_P, SK_A, SK_D, SK_NS, SK_MS, SK_BP, SK_ANG };
const int SWEEP_VALUE_MASK = 3;
const int CURSOR_PARAM2 = -2, CURSOR_PARAM1 = -1;

Point3* CursorPoint(Edit& e) {
    PolylineData* p = e.p();
    if (e.cursor == CURSOR_PARAM1) return &p->param1;
    if (e.cursor == CURSOR_PARAM2) return &p->param2;
    return &p->points[e.cursor];
}

Next SweepAction(Edit& e, int key) {
    PolylineData* p = e.p();
    const bool cone = p->form == FORM_CONE_SWEEP;
    const bool profile = e.cursor >= 0;
    switch (key) {
        case SK_E: return END_DONE;
        case SK_C: SetClosed(e, true); return GO_ON;
        case SK_O: SetClosed(e, false); return GO_ON;
        case SK_S: Toggle(e, POLY_BSPLINE, "\nB-Spline = ON", "\nB-Spline = OFF"); return GO_ON;
        case SK_F: Toggle(e, POLY_FRAME, "\nFrame = ON", "\nFrame = OFF"); return GO_ON;
        case SK_R: return AskCount(e, "\nSet New Resolution/Segments <%d>: ", SWEEP_VALUE_MASK, &p->segments, 1);
        case SK_M: return MovePoint(e, CursorPoint(e));
        case SK_N:
            if (e.cursor == CURSOR_PARAM1) e.cursor = 0;
            else if (e.cursor == CURSOR_PARAM2) e.cursor = CURSOR_PARAM1;
            else if (e.cursor >= p->count - 1) e.cursor = cone ? CURSOR_PARAM1 : CURSOR_PARAM2;
            else e.cursor++;
            return GO_ON;
        case SK_P:
            if (e.cursor == 0) e.cursor = CURSOR_PARAM1;
            else if (e.cursor == CURSOR_PARAM1) e.cursor = cone ? p->count - 1 : CURSOR_PARAM2;
            else if (e.cursor == CURSOR_PARAM2) e.cursor = p->count - 1;
            else e.cursor--;
            return GO_ON;
        case SK_A:
            if (profile) return InsertPoint(e);
            Msg_Printf("Can't Insert Here");
            return GO_ON;
        case SK_D:
            if (profile) return DeletePoint(e);
            Msg_Printf("Can't Delete this point");
            return GO_ON;
        case SK_NS: return AskCount(e, "\nSet N segments <%d>: ", SWEEP_VALUE_MASK, &p->size_m, 1);
        case SK_MS: return AskCount(e, "\nSet M segments <%d>: ", SWEEP_VALUE_MASK, &p->size_n, 1);
        case SK_BP: {
            int yes;
            int s = AskYes("Y,N", "\nChange SWEEP back to Polyline? <Y,N> (Y): ", &yes);
            if (s <= 0 || !yes) return s == 0 ? END_REPLACED : GO_ON;
            e.Change([&] { p->form = FORM_POLYLINE; });
            return END_DONE;
        }
        case SK_ANG: return AskValue(e, "\nSet new Angle <%g>: ", SWEEP_VALUE_MASK, &p->angle);
        default: return GO_ON;
    }
}

// The machine's loop: the cross on the cursor point while the prompt waits.
template <typename Action, typename Where>
int RunMachine(Edit& e, const char* keywords, const char* prompt, Action action, Where where) {
    for (;;) {
        if ((!e.p()->points || e.p()->count < 1) && e.cursor >= 0) return 1;   // nothing to point at
        PolyCmd_MarkShow(where(e), e.layer);
        AskAnswer a;
        const int ok = PolyCmd_Ask(prompt, keywords, 0, MASK_MAIN, &a);
        PolyCmd_MarkHide();
        if (!ok) return 0;
        if (a.kind < 1) continue;
        switch (action(e, a.kind)) {
            case GO_ON: break;
            case END_DONE: return 1;
            case END_REPLACED: return 0;
        }
    }
}

}  // namespace

int Poly_Edit(Object* obj, Layer* layer) {
    Edit e{obj, layer, 0};
    const int menu = g.menus.side.shown;
    SideMenu_Show(SIDE_POLY_EDIT);
    const int r = RunMachine(e, kPolyKeys, kPolyPrompt, PolyAction, [](Edit& x) { return x.p()->points[x.cursor]; });
    SideMenu_Show(menu);
    return r;
}

int Sweep_Edit(Object* obj, Layer* layer) {
    Edit e{obj, layer, 0};
    const bool revolution = e.p()->form == FORM_REVOLUTION;
    const int menu = g.menus.side.shown;
    SideMenu_Show(SIDE_SWEEP_EDIT);
    const int r = RunMachine(e, revolution ? "E,C,O,S,F,R,M,N,P,A,D,NS,MS,BP,ANG" : "E,C,O,S,F,R,M,N,P,A,D,NS,MS,BP",
                             revolution ? "\nSWEEP Edit <C,O,NS,MS,S,F,R,M,N,P,A,D,ANG,E>: "
                                        : "\nSWEEP Edit <C,O,NS,MS,S,F,R,M,N,P,A,D,E>: ",
                             SweepAction, [](Edit& x) { return *CursorPoint(x); });
    SideMenu_Show(menu);
    return r;
}
