// cmd_edit.cpp - the edit commands: MOVE, COPY, MIRROR, SCALE, ROTATE,
// ARRAY, GRAVITY, ERASE, EXPLODE, ASSIGN, the change of layer and the
// object-edit dispatch.
//
// Each command works on the current selection, or asks for one first, and
// only collects its points and values; the transform engine (model/xform)
// does the rest. While the second point is dragged the rubber band "OBJECT"
// shows the selection as the engine would leave it. A command whose prompt
// is replaced by another command code returns 0 at once; an empty Enter
// where the prompt does not repeat the command ends it without a change.
#include <cmath>
#include <cstdio>

#include "base/message.h"
#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "input/input.h"
#include "model/selection.h"
#include "model/xform.h"
#include "state.h"
#include "ui/texture_dialogs.h"

namespace {

const double kPi = 3.141592653589793;
const int MAX_ARRAY_COPIES = 1000000;   // copies per object; more is surely a typing slip

// Prompt masks as the questions need them (bits beyond 1 and 16 are kept
// for the prompt as given).
const int MASK_SCALE = 20;
const int MASK_COUNT = 23;
const int MASK_CHOICE = 17;

// Outcome of a group of questions: go on, stop quietly (1), or the input
// was replaced (0).
enum Asked { ASKED_OK, ASKED_DECLINED, ASKED_REPLACED };

int Return(Asked a) { return a == ASKED_REPLACED ? 0 : 1; }

// A base point (Enter repeats the command), then a second point dragged
// with the selection transformed by `transform`.
Asked AskTwoPoints(const char* first, const char* second, const char* transform, Point3* base, Point3* p2) {
    int got;
    if (!Ask_Point(first, ASK_ENTER_REPEATS, base, &got)) return ASKED_REPLACED;
    if (!got) return ASKED_DECLINED;
    Input_SetRubberBand(base, "OBJECT", transform);
    if (!Ask_Point(second, 0, p2, &got)) return ASKED_REPLACED;
    return got ? ASKED_OK : ASKED_DECLINED;
}

// The SCALE loop: R, X, Y, Z switch the axes, a number s gives the point
// base + (s, 0, 0), a point is taken as it is; the factor is its distance
// from the base.
Asked AskScale(const char* prompt, Point3 base, Point3* second) {
    XformState& x = g.xform;
    for (;;) {
        Input_SetRubberBand(&base, "OBJECT", "SCALE");
        AskAnswer a;
        if (!Ask_Any(prompt, "R,X,Y,Z", 1, MASK_SCALE, &a)) return ASKED_REPLACED;
        switch (a.kind) {
            case 0: *second = a.point; return ASKED_OK;
            case -3: *second = Vec_Add(base, Point3{a.number, 0, 0}); return ASKED_OK;
            case 1:
                x.scale_off = 0;
                Msg_Printf("\nX, Y and Z scaling = ON");
                break;
            case 2:
            case 3:
            case 4: {
                const int bit = 1 << (a.kind - 2);
                x.scale_off ^= bit;
                Msg_Printf("\n%c scaling = %s", "XYZ"[a.kind - 2], (x.scale_off & bit) ? "OFF" : "ON");
                break;
            }
            default: return ASKED_DECLINED;
        }
    }
}

// A value question with the current value shown; a number replaces it,
// anything else keeps it.
Asked AskValue(const char* format, double* value) {
    char prompt[160];
    snprintf(prompt, sizeof prompt, format, *value);
    AskAnswer a;
    if (!Ask_Any(prompt, nullptr, 1, ASK_NO_POINT, &a)) return ASKED_REPLACED;
    if (a.kind == -3) *value = a.number;
    return ASKED_OK;
}

// 0/1 question with the current value shown; Enter keeps it, a number
// other than 0 means 1.
Asked AskFlag(const char* format, int* value) {
    char prompt[160];
    snprintf(prompt, sizeof prompt, format, *value);
    AskAnswer a;
    if (!Ask_Any(prompt, nullptr, 1, ASK_NO_POINT, &a)) return ASKED_REPLACED;
    if (a.kind == -3) *value = a.number != 0;
    return ASKED_OK;
}

// Selection first: 1 there is one; otherwise the command's return value.
int NoSelection(int* ret) {
    int s = Edit_UseSelection();
    if (s > 0) return 0;
    *ret = s < 0 ? 0 : 1;
    return 1;
}

// --- the object-edit dispatch ---

using EditMachine = int (*)(Object* obj, Layer* layer);

// The edit machine of each kind (and polyline form); a kind whose machine
// is not there yet says so.
struct EditEntry {
    int kind;
    int form_first, form_last;   // polylines: the forms it edits
    const char* name;
    EditMachine run;
};
const EditEntry kEditMachines[] = {
    {KIND_POLYLINE, FORM_POLYLINE, FORM_POLYLINE, "POLYLINE", Poly_Edit},
    {KIND_POLYLINE, FORM_POLY_PIPE, FORM_POLY_WALL, "POLYLINE", Poly_Edit},
    {KIND_POLYLINE, FORM_EXTRUSION, FORM_CONE_SWEEP, "SWEEP", Sweep_Edit},
    {KIND_POLYLINE, FORM_POLY_MESH, FORM_POLY_MESH, "MESH", Mesh_Edit},
    {KIND_POLYLINE, FORM_POLY_CUBE, FORM_POLY_PYRAMID, "PRIMPOLY", PrimPoly_Edit},
    {KIND_TRIANGLE, 0, 0, "TRIANGLE", Triangle_Edit},
    {KIND_3DFACE, 0, 0, "FACE", Face_Edit},
    {KIND_PRIMITIVE, 0, 0, "PRIMITIVE", Primitive_Edit},
    {KIND_LIGHT, 0, 0, "LIGHT", Light_Edit},
};

const EditEntry* EditMachineOf(const Object* obj) {
    const int form = obj->kind == KIND_POLYLINE ? ((const PolylineData*)obj->data)->form : 0;
    for (const EditEntry& e : kEditMachines)
        if (e.kind == obj->kind && form >= e.form_first && form <= e.form_last) return &e;
    return nullptr;
}

}  // namespace

int Com_Move() {   // 303
    int ret;
    if (NoSelection(&ret)) return ret;
    Point3 base, second;
    Asked a = AskTwoPoints("\nMOVE> Set Base point: ", "\nMOVE> Set Offset point: ", "MOVE", &base, &second);
    if (a != ASKED_OK) return Return(a);
    Xform_Run(base, second, XFORM_MOVE);
    return 1;
}

int Com_Copy() {   // 304
    int ret;
    if (NoSelection(&ret)) return ret;
    Point3 base, second;
    Asked a = AskTwoPoints("\nCOPY> Set Base point: ", "\nCOPY> Set Copy point: ", "MOVE", &base, &second);
    if (a != ASKED_OK) return Return(a);
    Xform_Run(base, second, XFORM_COPY);
    return 1;
}

int Com_Mirror() {   // 317
    int ret;
    if (NoSelection(&ret)) return ret;
    Point3 base, second;
    Asked a = AskTwoPoints("\nMIRROR> Set Base point: ", "\nMIRROR> Set Mirror point: ", "MIRROR", &base, &second);
    if (a != ASKED_OK) return Return(a);
    int yes;
    if (!Ask_YesNo("Y,N", "\nMIRROR> Erase Original objects <Yes,No>? <N>:", 0, &yes)) return 0;
    g.xform.mirror_erase = yes;
    Xform_Run(base, second, XFORM_MIRROR);
    return 1;
}

int Com_Scale() {   // 306
    int ret;
    if (NoSelection(&ret)) return ret;
    Point3 base, second;
    int got;
    if (!Ask_Point("\nSCALE> Set Base point: ", ASK_ENTER_REPEATS, &base, &got)) return 0;
    if (!got) return 1;
    Asked a = AskScale("\nSCALE> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: ", base, &second);
    if (a != ASKED_OK) return Return(a);
    Xform_Run(base, second, XFORM_SCALE);
    return 1;
}

int Com_Rotate() {   // 305
    int ret;
    if (NoSelection(&ret)) return ret;
    Point3 base;
    int got;
    if (!Ask_Point("\nROTATE> Set Base point: ", ASK_ENTER_REPEATS, &base, &got)) return 0;
    if (!got) return 1;
    Input_SetRubberBand(&base, "OBJECT", "ZROT");
    AskAnswer a;
    if (!Ask_Any("\nROTATE> Set Angle: ", nullptr, 1, 0, &a)) return 0;
    Point3 second = a.point;
    if (a.kind == -3) {   // degrees: the point at that angle from the base in the view plane
        double deg = std::fmod(a.number, 360.0);
        if (deg < 0) deg += 360.0;
        const double rad = deg * kPi / 180.0;
        const Viewport& vp = g.view.Active_Viewport;
        second = Vec_Add(base, Vec_Add(Vec_Scale(vp.axis_h, std::cos(rad)), Vec_Scale(vp.axis_v, std::sin(rad))));
    } else if (a.kind != 0) {
        return 1;
    }
    Xform_Run(base, second, XFORM_ROTATE);
    return 1;
}

int Com_Array() {   // 310
    int ret;
    if (NoSelection(&ret)) return ret;
    XformState& x = g.xform;
    AskAnswer a;
    if (!Ask_Any("\nARRAY> Set Array type <Polar/Rectangular/Scale>: ", "R,P,S", 0, MASK_CHOICE, &a)) return 0;
    if (a.kind < 1) return 1;
    const int type = a.kind == 1 ? ARRAY_RECT : a.kind == 2 ? ARRAY_POLAR : ARRAY_SCALE;
    for (;;) {
        if (!Ask_Any("\nARRAY> Set Number of Copies: ", nullptr, 1, MASK_COUNT, &a)) return 0;
        if (a.kind != -3) return 1;
        if (a.number >= 1) break;
        Msg_Printf("\nMust be greater than ZERO.");
    }
    const int count = a.number > MAX_ARRAY_COPIES ? MAX_ARRAY_COPIES : (int)a.number;
    Point3 base, second;
    int got;
    if (!Ask_Point("\nARRAY> Set Base point: ", ASK_ENTER_REPEATS, &base, &got)) return 0;
    if (!got) return 1;
    second = base;
    double angle = 360;
    if (type == ARRAY_POLAR) {
        if (!Ask_Any("\nARRAY> Set circle angle <Full/Half>: ", "F,H", 1, ASK_NO_POINT, &a)) return 0;
        if (a.kind == 2) angle = 180;
        else if (a.kind == -3) angle = a.number;
    } else if (type == ARRAY_RECT) {
        Input_SetRubberBand(&base, "OBJECT", "MOVE");
        if (!Ask_Point("\nARRAY> Set Offset point: ", 0, &second, &got)) return 0;
        if (!got) return 1;
    } else {
        Asked s = AskScale("\nARRAY> Set Scale <Reset,Xstatus,Ystatus,Zstatus>: ", base, &second);
        if (s != ASKED_OK) return Return(s);
    }
    x.array_type = type;
    x.array_count = count;
    x.array_angle = angle;
    Xform_Run(base, second, XFORM_ARRAY);
    return 1;
}

int Com_Gravity() {   // 309
    int ret;
    if (NoSelection(&ret)) return ret;
    XformState& x = g.xform;
    Asked s = AskValue("\nSet Gravity value <%g> (+/- = Attract/Repell): ", &x.Gravity);
    if (s == ASKED_OK) s = AskValue("\nSet Power value <%g>: ", &x.Power);
    if (s != ASKED_OK) return Return(s);
    for (;;) {
        Input_SetRubberBand(nullptr, "OBJECT", "GRAVITY");   // the attractor is the cursor itself
        AskAnswer a;
        if (!Ask_Any("\nGRAVITY> Set point <Gravity/Scale>: ", "G,S", 0, ASK_ENTER_REPEATS, &a)) return 0;
        if (a.kind == 0) {
            Xform_Run(a.point, a.point, XFORM_GRAVITY);
            return 1;
        }
        if (a.kind == 1) s = AskValue("\nGRAVITY> Set Gravity value <%g> (+/- = Attract/Repell): ", &x.Gravity);
        else if (a.kind == 2) s = AskValue("\nGRAVITY> Set Power value <%g>: ", &x.Power);
        else return 1;
        if (s != ASKED_OK) return Return(s);
    }
}

int Com_Erase() {   // 301
    int ret;
    if (NoSelection(&ret)) return ret;
    if (!g.aids.Erase_No_Confirm) {
        int yes;
        if (!Ask_YesNo("Y,N", "\nERASE> Erase Objects <Yes,No>? <Y>:", 1, &yes)) return 0;
        if (!yes) {
            Selection_Clear();
            return 1;
        }
    }
    Msg_Printf("\nErasing...");
    Xform_Run(Point3{0, 0, 0}, Point3{0, 0, 0}, XFORM_ERASE);
    return 1;
}

int Com_Explode() {   // 311
    int ret;
    if (NoSelection(&ret)) return ret;
    int yes;
    if (!Ask_YesNo("Y,N", "\nEXPLODE> Erase orignal Objects <Yes,No>? (Y): ", 1, &yes)) return 0;
    g.xform.explode_erase = yes;
    Xform_Explode();
    return 1;
}

int Com_Assign() {   // 308
    int ret;
    if (NoSelection(&ret)) return ret;
    XformState& x = g.xform;
    AskAnswer a;
    if (!Ask_Any("\nASSIGN> Change what properties <Texture/No_shadow/Smooth_triangle>?: ", "T,N,S", 0,
                 MASK_CHOICE, &a))
        return 0;
    const Point3 zero{0, 0, 0};
    switch (a.kind) {
        case 1: {
            const char* name = Texture_ChooseName();
            if (!name) {
                Msg_Printf("\nASSIGN> No texture chosen: nothing changed");
                return 1;
            }
            snprintf(x.assign_texture, sizeof x.assign_texture, "%s", name);
            Xform_Run(zero, zero, XFORM_TEXTURE);
            return 1;
        }
        case 2:
            if (AskFlag("\nASSIGN> Set No_Shadow value for the selected objects (1=ON;0=OFF) <%d>: ",
                        &x.assign_no_shadow) != ASKED_OK)
                return 0;
            Xform_Run(zero, zero, XFORM_NO_SHADOW);
            return 1;
        case 3:
            if (AskFlag("\nASSIGN> Set Smooth_Triangle value for the selected objects (1=ON;0=OFF) <%d>: ",
                        &x.assign_smooth) != ASKED_OK)
                return 0;
            Xform_Run(zero, zero, XFORM_SMOOTH);
            return 1;
        default: return 1;
    }
}

int Com_ChangeLayer() {   // 318
    int ret;
    if (NoSelection(&ret)) return ret;
    Xform_Run(Point3{0, 0, 0}, Point3{0, 0, 0}, XFORM_LAYER);
    return 1;
}

int Com_EditObject() {   // 302
    g.selection.Select_Single = 1;
    if (Select_Objects() <= 0) return g.input.InputResult.code > 0 ? 0 : 1;
    Object* obj = Selection_First();
    Layer* layer = g.selection.first_layer;
    if (!obj) return 1;
    const EditEntry* e = EditMachineOf(obj);
    Object_SetSelected(obj, 0, layer);   // before the machine, which may replace the object
    if (e && e->run) return e->run(obj, layer);
    Msg_Printf("\n%s Edit is not available yet: nothing changed.", e ? e->name : "Object");
    return 1;
}
