// cmd_prim_edit.cpp - editing primitives: the keyword menu of each kind
// (Primitive_Edit, the edit machine 302 runs for a primitive), the
// transform dialog (trans.dlg) and the general-properties dialog
// (general.dlg), and those two dialogs for the selection (313, 314).
//
// A menu asks its prompt until E (1) or another command (0); every other
// keyword asks one value, opens a dialog, or asks the order of rotation. A
// change erases the primitive from the views (drawn in the background
// colour) and draws it again; an answer that changes nothing draws nothing.
// Both dialogs edit copies and write them back only on OK.
//
// 313 opens trans.dlg once for each selected primitive in turn (Cancel
// skips one, Ctrl-C ends the walk); the other kinds have no transform of
// their own. 314 opens general.dlg once for the whole selection, showing
// the first selected object's values, and gives every selected object
// (lights have no texture and are left out) only what was changed in it:
// the texture when another was chosen, each check box that ended in another
// state, and the segments, which only primitives have.
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

#include "base/field.h"
#include "base/message.h"
#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "input/input.h"
#include "input/settings.h"
#include "model/selection.h"
#include "state.h"
#include "ui/texture_dialogs.h"
#include "ui/dialog.h"
#include "ui/form.h"
#include "ui/menu.h"

namespace {

const int MASK_MENU = 17;    // keywords only; Enter repeats the command
const int MASK_VALUE = 7;    // no points; Enter keeps the value

enum Field { F_P1, F_P2, F_P3, F_SIZE_X, F_SIZE_Y, F_SIZE_Z, F_SCALE_X, F_SCALE_Y, F_SCALE_Z, F_OPEN, F_FILE, F_TYPE };

struct Question {
    Field field;
    const char* prompt;   // shows the current value
};

// The menu of one kind: its own questions first, in keyword order, then
// the shared T, G, OR and E.
struct EditMenu {
    int type;
    const char* name;
    const char* keywords;
    const char* menu;
    const char* order;
    int count;
    Question q[6];
};

const EditMenu kMenus[] = {
    {PRIM_SPHERE, "SPHERE", "R,T,G,OR,E", "\nSPHERE Edit <Radius,Transform,General,OR,Exit>: ",
     "\nSHPERE> Order of Rotation? (0=X-Z-Y, 1=X-Y-Z) <%d>: ", 1, {{F_P1, "\nSPHERE> Set Radius <%g>: "}}},
    {PRIM_TORUS, "TORUS", "I,O,T,G,OR,E", "\nTORUS Edit <Inner,Outer,Transform,General,OR,Exit>: ",
     "\nTORUS> Order of Rotation? (0=X-Z-Y, 1=X-Y-Z) <%d>: ", 2,
     {{F_P1, "\nTORUS> Set Inner Radius <%g>: "}, {F_P2, "\nTORUS> Set Outer Radius <%g>: "}}},
    {PRIM_DISC, "DISC", "I,O,T,G,OR,E", "\nDISC Edit <Inner,Outer,Transform,General,OR,Exit>: ",
     "\nDISC> Order of Rotation? (0=X-Z-Y, 1=X-Y-Z) <%d>: ", 2,
     {{F_P1, "\nDISC> Set Inner Radius <%g>: "}, {F_P2, "\nDISC> Set Outer Radius <%g>: "}}},
    {PRIM_CONE, "CONE", "R1,R2,L,C,T,G,OR,E",
     "\nCONE Edit <Radius1,Radius2,Length,Close,Transform,General,OR,Exit>: ",
     "\nCONE> Order of Rotation? (0=X-Z-Y, 1=X-Y-Z) <%d>: ", 4,
     {{F_P1, "\nCONE> Set Radius #1 <%g>: "},
      {F_P2, "\nCONE> Set Radius #2 <%g>: "},
      {F_P3, "\nCONE> Set Length of cone <%g>: "},
      {F_OPEN, "\nCONE> Opened or Closed? (0=Closed, 1=Opened) <%s>: "}}},
    {PRIM_BOX, "CUBE", "X,Y,Z,T,G,OR,E", "\nCUBE Edit <Xlength,Ylength,Zlength,Transform,General,OR,Exit>: ",
     "\nCUBE> Order of Rotation? (0=X-Z-Y, 1=X-Y-Z) <%d>: ", 3,
     {{F_SIZE_X, "\nCUBE> Set X Length <%g>: "},
      {F_SIZE_Y, "\nCUBE> Set Y Length <%g>: "},
      {F_SIZE_Z, "\nCUBE> Set Z Length <%g>: "}}},
    {PRIM_HEIGHT_FIELD, "HEIGHTFIELD", "X,Y,Z,F,FT,W,T,G,OR,E",
     "\nHEIGHTFIELD Edit <X,Y,Z,Filename,FileType,Water_level,Transform,General,OR,Exit>: ",
     "\nHEIGHTFIELD> Order of Rotation? (0=X-Z-Y, 1=X-Y-Z) <%d>: ", 6,
     {{F_SCALE_X, "\nHEIGHTFIELD> Set X Length <%g>: "},
      {F_SCALE_Y, "\nHEIGHTFIELD> Set Y Length <%g>: "},
      {F_SCALE_Z, "\nHEIGHTFIELD> Set Z Length <%g>: "},
      {F_FILE, "\nHEIGHTFIELD> Enter Filename (without DIR!) <%s>: "},
      {F_TYPE, "\nHEIGHTFIELD> Enter FileType (0=GIF,1=TGA,2=POT) <%d>: "},
      {F_P1, "\nHEIGHTFIELD> Set \"water_level\" (0.0 to 1.0) <%g>: "}}},
};

const char* const kPrimNames[8] = {"PRIMITIVE", "SPHERE", "CONE", "TORUS", "DISC", "PLANE", "CUBE", "HEIGHTFIELD"};

const EditMenu* MenuOf(int type) {
    for (const EditMenu& m : kMenus)
        if (m.type == type) return &m;
    return nullptr;
}

double* Number(PrimitiveData& p, Field f) {
    switch (f) {
        case F_P1: return &p.p1;
        case F_P2: return &p.p2;
        case F_P3: return &p.p3;
        case F_SIZE_X: return &p.size.x;
        case F_SIZE_Y: return &p.size.y;
        case F_SIZE_Z: return &p.size.z;
        case F_SCALE_X: return &p.scale.x;
        case F_SCALE_Y: return &p.scale.y;
        case F_SCALE_Z: return &p.scale.z;
        default: return nullptr;
    }
}

// |number| as an int (truncated, kept in range).
int AbsInt(double v) {
    v = std::trunc(std::fabs(v));
    return v > INT_MAX ? INT_MAX : (int)v;
}

// A number question under the value mask: 1 with *number when one was
// typed, 0 for anything else; -1 when the prompt was replaced.
int AskTyped(const char* prompt, double* number) {
    AskAnswer a;
    if (!Ask_Any(prompt, nullptr, 1, MASK_VALUE, &a)) return -1;
    if (a.kind != -3) return 0;
    *number = a.number;
    return 1;
}

// One value question of a menu on p; 0 when the prompt was replaced.
int AskField(const Question& q, PrimitiveData& p) {
    char prompt[200];
    double v;
    int got;
    switch (q.field) {
        case F_OPEN:
            snprintf(prompt, sizeof prompt, q.prompt, (p.prim_flags & PRIM_OPEN) ? "Opened" : "Closed");
            if ((got = AskTyped(prompt, &v)) < 0) return 0;
            if (got) p.prim_flags = (u8)(AbsInt(v) ? p.prim_flags | PRIM_OPEN : p.prim_flags & ~PRIM_OPEN);
            return 1;
        case F_TYPE:
            snprintf(prompt, sizeof prompt, q.prompt, p.hf_type);
            if ((got = AskTyped(prompt, &v)) < 0) return 0;
            if (got) p.hf_type = AbsInt(v);
            return 1;
        case F_FILE:   // a word, not a number
            snprintf(prompt, sizeof prompt, q.prompt, p.file);
            Input_SetKeywords(nullptr, 0, 1);
            Input_SetMask(MASK_VALUE);
            if (!Input_Get(prompt, nullptr)) return 0;
            if (g.input.InputResult.kind == -2) CopyCut(p.file, sizeof p.file, g.input.InputResult.text);
            return 1;
        default: {
            double* field = Number(p, q.field);
            snprintf(prompt, sizeof prompt, q.prompt, *field);
            if ((got = AskTyped(prompt, &v)) < 0) return 0;
            if (got) *field = std::fabs(v);
            return 1;
        }
    }
}

// The record replaced by p, erased from the views before and drawn after.
void Change(Object* obj, Layer* layer, const PrimitiveData& p) {
    PrimitiveData* rec = (PrimitiveData*)obj->data;
    if (memcmp(rec, &p, sizeof p) == 0) return;
    Edit_DrawObject(obj, layer, 1);
    *rec = p;
    Edit_DrawObject(obj, layer, 0);
}

// The side menu of an edit's keywords while it asks, the one before it
// again afterwards.
const int kEditSideMenus = 1150;   // + prim_type
struct SideMenuFor {
    int before;
    explicit SideMenuFor(int number) : before(g.menus.side.shown) { SideMenu_Show(number); }
    ~SideMenuFor() {
        if (before) SideMenu_Show(before);
    }
    SideMenuFor(const SideMenuFor&) = delete;
    SideMenuFor& operator=(const SideMenuFor&) = delete;
};

// Runs a dialog over its form until OK (1), Cancel (0) or Ctrl-C (-1) and
// closes it; ids that are no field go to `extra`. The closing id.
int RunForm(Dialog* d, const FormField* fields, int count, void (*extra)(Dialog*, int, void*), void* data) {
    Form_Show(d, fields, count);
    DialogResult r;
    do {
        Dialog_Run(d, &r);
        if (!Form_React(d, fields, count, r.id) && extra) extra(d, r.id, data);
    } while (r.id != 1 && r.id != 0 && r.id != -1);
    Dialog_Close(d);
    return r.id;
}

// trans.dlg on p: the closing id, -2 when the file is missing; p changes on OK only.
int TransformRun(PrimitiveData* p) {
    Dialog d;
    if (!Dialog_Open(&d, "trans.dlg")) return -2;
    PrimitiveData c = *p;
    const FormField fields[] = {
        {2, FORM_DOUBLE, &c.translate.x, "%g", nullptr, 0}, {3, FORM_DOUBLE, &c.translate.y, "%g", nullptr, 0},
        {4, FORM_DOUBLE, &c.translate.z, "%g", nullptr, 0}, {5, FORM_DOUBLE, &c.scale.x, "%g", nullptr, 0},
        {6, FORM_DOUBLE, &c.scale.y, "%g", nullptr, 0},     {7, FORM_DOUBLE, &c.scale.z, "%g", nullptr, 0},
        {8, FORM_DOUBLE, &c.rotate.x, "%g", nullptr, 0},    {9, FORM_DOUBLE, &c.rotate.y, "%g", nullptr, 0},
        {10, FORM_DOUBLE, &c.rotate.z, "%g", nullptr, 0},
    };
    const int id = RunForm(&d, fields, (int)(sizeof fields / sizeof fields[0]), nullptr, nullptr);
    if (id == 1) *p = c;
    return id;
}

// --- general.dlg -------------------------------------------------------------------

enum { ID_NO_SHADOW = 2, ID_SEGMENTS = 3, ID_TEXTURE = 4, ID_CHOOSE = 5, ID_SMOOTH = 6 };

struct GeneralProps {
    char texture[21];
    int no_shadow, smooth;   // the flag bits as check-box states
    int segments;
};

void ShowSegments(Dialog* d, int n) {
    char text[16];
    snprintf(text, sizeof text, "%d", n);
    Dialog_SetText(d, ID_SEGMENTS, text);
}

void GeneralExtra(Dialog* d, int id, void* data) {
    GeneralProps* c = static_cast<GeneralProps*>(data);
    if (id == ID_SEGMENTS) {   // absolute, truncated, at least 2
        if (Dialog_EditText(d, ID_SEGMENTS)) {
            const double v = atof(d->editBuffer);
            if (std::isfinite(v)) c->segments = AbsInt(v) < 2 ? 2 : AbsInt(v);
        }
        ShowSegments(d, c->segments);
    } else if (id == ID_CHOOSE) {
        if (const char* name = Texture_ChooseName()) {
            CopyCut(c->texture, sizeof c->texture, name);
            Dialog_SetText(d, ID_TEXTURE, c->texture);
        } else {
            Msg_Printf("\nNo texture chosen.");
        }
    }
}

// general.dlg on p with `text` in item 5: 1 on OK (p then holds the edits).
int GeneralRun(GeneralProps* p, const char* text) {
    Dialog d;
    if (!Dialog_Open(&d, "general.dlg")) return 0;
    GeneralProps c = *p;
    const FormField fields[] = {
        {ID_NO_SHADOW, FORM_CHECK, &c.no_shadow, nullptr, nullptr, 0},
        {ID_SMOOTH, FORM_CHECK, &c.smooth, nullptr, nullptr, 0},
    };
    ShowSegments(&d, c.segments);
    Dialog_SetText(&d, ID_TEXTURE, c.texture);
    Dialog_SetText(&d, ID_CHOOSE, text);
    if (RunForm(&d, fields, 2, GeneralExtra, &c) != 1) return 0;
    *p = c;
    return 1;
}

GeneralProps PropsOf(const Object* obj, int segments) {
    GeneralProps p{};
    CopyCut(p.texture, sizeof p.texture, obj->texture);
    p.no_shadow = (obj->flags & No_shadow) != 0;
    p.smooth = (obj->flags & Smooth_triangle) != 0;
    p.segments = segments;
    return p;
}

u8 SetBit(u8 flags, u8 bit, int on) { return (u8)(on ? flags | bit : flags & ~bit); }

const char* KindName(const Object* obj) {
    switch (obj->kind) {
        case KIND_PRIMITIVE: {
            const int t = ((const PrimitiveData*)obj->data)->prim_type;
            return kPrimNames[t >= 1 && t <= 7 ? t : 0];
        }
        case KIND_POLYLINE: return "POLYLINE";
        case KIND_TRIANGLE: return "TRIANGLE";
        case KIND_3DFACE: return "FACE";
        default: return "LIGHT";
    }
}

struct Picked {
    Object* obj;
    Layer* layer;
};

// The selected objects of the visible layers that `want` accepts.
std::vector<Picked> SelectedWhere(bool (*want)(const Object*)) {
    std::vector<Picked> out;
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        if (l->on)
            for (Object* o = l->first_object; o; o = o->next)
                if (o->selected && want(o)) out.push_back({o, l});
    return out;
}

// The selection a dialog command works on: 1 there is one; else *ret is
// the command's result.
int NeedSelection(int* ret) {
    const int s = Edit_UseSelection();
    if (s > 0) return 1;
    *ret = s < 0 ? 0 : 1;
    return 0;
}

void AfterSelectionEdit() {
    if (g.aids.Auto_Deselect) Selection_Clear();
}

}  // namespace

int Transform_Dialog(PrimitiveData* record) { return TransformRun(record) == 1; }

int General_Dialog(Object* object, int* segments, const char* text) {
    GeneralProps p = PropsOf(object, *segments);
    if (!GeneralRun(&p, text)) return 0;
    CopyCut(object->texture, sizeof object->texture, p.texture);
    object->flags = SetBit(SetBit(object->flags, No_shadow, p.no_shadow), Smooth_triangle, p.smooth);
    *segments = p.segments;
    return 1;
}

int Primitive_Edit(Object* obj, Layer* layer) {
    const EditMenu* m = MenuOf(((const PrimitiveData*)obj->data)->prim_type);
    if (!m) return 1;   // the plane has nothing to edit
    SideMenuFor keywords(kEditSideMenus + m->type);
    for (;;) {
        AskAnswer a;
        if (!Ask_Any(m->menu, m->keywords, 0, MASK_MENU, &a)) return 0;
        const int k = a.kind;
        if (k < 1) continue;
        PrimitiveData p = *(const PrimitiveData*)obj->data;
        if (k <= m->count) {
            if (!AskField(m->q[k - 1], p)) return 0;
        } else if (k == m->count + 1) {   // T
            Transform_Dialog(&p);
        } else if (k == m->count + 2) {   // G
            General_Dialog(obj, &p.prim_aux, m->name);
        } else if (k == m->count + 3) {   // OR
            char prompt[120];
            double v;
            snprintf(prompt, sizeof prompt, m->order, (p.prim_flags & PRIM_ROT_XYZ) ? 1 : 0);
            const int got = AskTyped(prompt, &v);
            if (got < 0) return 0;
            if (got) p.prim_flags = SetBit(p.prim_flags, PRIM_ROT_XYZ, AbsInt(v) != 0);
        } else {   // E
            return 1;
        }
        Change(obj, layer, p);
    }
}

int Com_TransformDialog() {   // 313
    int ret;
    if (!NeedSelection(&ret)) return ret;
    const std::vector<Picked> prims = SelectedWhere([](const Object* o) { return o->kind == KIND_PRIMITIVE; });
    if (prims.empty()) Msg_Printf("\nTRANSFORM> No primitive among the selected objects.");
    int n = 0;
    for (const Picked& p : prims) {
        Msg_Printf("\nTRANSFORM> %s, %d of %d", KindName(p.obj), ++n, (int)prims.size());
        PrimitiveData rec = *(const PrimitiveData*)p.obj->data;
        const int id = TransformRun(&rec);
        if (id == 1) Change(p.obj, p.layer, rec);
        if (id < 0) break;   // Ctrl-C, or no dialog file
    }
    AfterSelectionEdit();
    return 1;
}

int Com_GeneralDialog() {   // 314
    int ret;
    if (!NeedSelection(&ret)) return ret;
    const std::vector<Picked> objs = SelectedWhere([](const Object* o) { return o->kind != KIND_LIGHT; });
    if (objs.empty()) {
        Msg_Printf("\nPROPERTIES> Lights have no texture, shadow or smoothing to set.");
        AfterSelectionEdit();
        return 1;
    }
    int segments = 8;
    Var_GetInt("SEG_VALUE", &segments);   // shown when no primitive gives its own
    for (const Picked& p : objs)
        if (p.obj->kind == KIND_PRIMITIVE) {
            segments = ((const PrimitiveData*)p.obj->data)->prim_aux;
            break;
        }
    const GeneralProps before = PropsOf(objs[0].obj, segments);
    GeneralProps after = before;
    char text[40];
    if (objs.size() == 1) snprintf(text, sizeof text, "%s", KindName(objs[0].obj));
    else snprintf(text, sizeof text, "%d objects", (int)objs.size());
    if (GeneralRun(&after, text)) {
        for (const Picked& p : objs) {
            Object* o = p.obj;
            if (strcmp(after.texture, before.texture) != 0) CopyCut(o->texture, sizeof o->texture, after.texture);
            if (after.no_shadow != before.no_shadow) o->flags = SetBit(o->flags, No_shadow, after.no_shadow);
            if (after.smooth != before.smooth) o->flags = SetBit(o->flags, Smooth_triangle, after.smooth);
            if (after.segments != before.segments && o->kind == KIND_PRIMITIVE) {
                PrimitiveData rec = *(const PrimitiveData*)o->data;
                rec.prim_aux = after.segments;
                Change(o, p.layer, rec);
            }
        }
    }
    AfterSelectionEdit();
    return 1;
}
