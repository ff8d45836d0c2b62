// cmd_layers.cpp - the layers dialog (layers.dlg): the list with its
// right-click option box, the error boxes of the nesting and instancing
// rules, and the two transform dialogs (trans.dlg).
//
// The rules themselves are the scene's (Layer_ApplyOption); this file only
// shows the list, asks, and reports. The list is GRAPH 4: row 0 is a
// heading, row r >= 1 shows the layer at position r + the scroll offset.
#include <cstdio>
#include <cstring>

#include "base/field.h"
#include "cmd/cmd.h"
#include "gfx/gfx.h"
#include "input/input.h"
#include "scene/layers.h"
#include "state.h"
#include "ui/dialog.h"
#include "ui/form.h"
#include "ui/texture_dialogs.h"
#include "view/view_commands.h"
#include "view/view_draw.h"

namespace {

enum {
    ID_CLOSE = 1,
    ID_NEW = 2,
    ID_DELETE = 3,
    ID_LIST = 4,
    ID_ON = 5,
    ID_COLOUR = 6,
    ID_TEXTURE = 7,
    ID_TRANSFORM = 8,
    ID_CSG = 9,
    ID_NAME = 10,
    ID_UP = 11,
    ID_DOWN = 12,
    ID_TEXTURE_TRANSFORM = 13,
};

const char* const kCsgWords[5] = {"", "UNION", "MERGE", "INTERSECTION", "DIFFERENCE"};
const char* const kCsgLetters[5] = {"?", "U", "M", "I", "D"};

void Beep() {
    if (g.config.Beep_Sounds) X11_Beep();
}

int Csg(const Layer* l) { return l->csg >= 1 && l->csg <= 4 ? l->csg : 0; }

int ListRows(const Dialog* d) {
    for (const DlgGraph& a : d->graphs)
        if (a.id == ID_LIST) return a.bottom - a.top;
    return 0;
}

void DrawRow(Dialog* d, int row, const Layer* l) {
    const int text = g.config.colors.view_text;
    const int colour = View_LayerColour(l);
    if (l == g.scene.Current_Layer) Dialog_GraphText(d, ID_LIST, 0, row, g.config.colors.general_color, ">");
    const int x = 4 * l->level + 2;
    Dialog_GraphText(d, ID_LIST, x, row, text, "[ ]");
    Dialog_GraphText(d, ID_LIST, x + 1, row, colour, kCsgLetters[Csg(l)]);
    Dialog_GraphText(d, ID_LIST, x + 3, row, text, " - ");
    if (!l->on) Dialog_GraphText(d, ID_LIST, x - 1, row, text, "*");
    Dialog_GraphText(d, ID_LIST, x + 6, row, colour, l->name);
    if (const Layer* inst = l->instance) {
        const int after = x + 6 + (int)strlen(l->name);
        Dialog_GraphText(d, ID_LIST, after, row, text, " + {");
        Dialog_GraphText(d, ID_LIST, after + 4, row, View_LayerColour(inst), inst->name);
        Dialog_GraphText(d, ID_LIST, after + 4 + (int)strlen(inst->name), row, text, "}");
    }
}

void ShowLayers(Dialog* d, int offset) {
    Dialog_GraphText(d, ID_LIST, 0, 0, -1, "");
    Dialog_GraphText(d, ID_LIST, 1, 0, g.config.colors.view_text, "Left click: current   Right click: options");
    const int rows = ListRows(d);
    for (int r = 1; r <= rows; r++) {
        const Layer* l = Layer_At(offset + r);
        if (!l) break;
        DrawRow(d, r, l);
    }
    const Layer* c = g.scene.Current_Layer;
    if (!c) return;
    char number[16];
    snprintf(number, sizeof number, "%d", (int)c->color);
    Dialog_SetCheck(d, ID_ON, c->on);
    Dialog_SetText(d, ID_COLOUR, number);
    Dialog_SetText(d, ID_TEXTURE, c->texture);
    Dialog_SetText(d, ID_CSG, kCsgWords[Csg(c)]);
    Dialog_SetText(d, ID_NAME, c->name);
}

// The list was clicked at `value` (row, negative for a right click).
int ListClick(int value, int offset) {
    const int row = value < 0 ? -value : value;
    if (row < 1) return 0;
    Layer* l = Layer_At(row + offset);
    if (!l) return 0;
    if (value > 0) {
        g.scene.Current_Layer = l;
        return 0;
    }
    return Layer_Options(l);
}

// One reaction of the dialog; 1 when what the views show changed.
int React(Dialog* d, int id, int value, int* offset) {
    Layer* c = g.scene.Current_Layer;
    switch (id) {
        case ID_NEW:
            if (!Layer_NewFirst()) Beep();
            *offset = 0;   // the new layer is first: show it
            return 0;
        case ID_DELETE:
            if (!Layer_Delete(c)) {
                Beep();
                return 0;
            }
            return 1;
        case ID_LIST: return ListClick(value, *offset);
        case ID_ON: c->on = !c->on; return 1;
        case ID_COLOUR: {
            if (!Dialog_EditText(d, ID_COLOUR)) return 0;
            X11_ModeInfo mode;
            X11_GetModeInfo(&mode);
            int n = Form_ReadInt(d->editBuffer);
            if (n < 0) n = 0;
            if (n > mode.colours - 1) n = mode.colours - 1;   // the largest index there is
            c->color = n;
            return 1;
        }
        case ID_TEXTURE:   // OK with an empty name takes the layer's texture away
            if (const char* name = Texture_ChooseName()) CopyCut(c->texture, sizeof c->texture, name);
            return 0;
        case ID_TRANSFORM: return Layer_EditTransform(c);
        case ID_TEXTURE_TRANSFORM: Layer_EditTextureTransform(c); return 0;
        case ID_CSG: c->csg = Csg(c) % 4 + 1; return 0;
        case ID_NAME:
            if (Dialog_EditText(d, ID_NAME)) CopyCut(c->name, sizeof c->name, d->editBuffer);
            return 0;
        case ID_UP:
            if (*offset > 0) --*offset;
            return 0;
        case ID_DOWN:
            if (*offset + 1 < Layer_Count()) ++*offset;
            return 0;
    }
    return 0;
}

int EditTransform(Point3* translate, Point3* scale, Point3* rotate) {
    Dialog d;
    if (!Dialog_Open(&d, "trans.dlg")) return 0;
    Point3 t = *translate, s = *scale, r = *rotate;
    const FormField fields[] = {
        {2, FORM_DOUBLE, &t.x, "%g", nullptr, 0},        {3, FORM_DOUBLE, &t.y, "%g", nullptr, 0},
        {4, FORM_DOUBLE, &t.z, "%g", nullptr, 0},        {5, FORM_DOUBLE, &s.x, "%g", nullptr, 0},
        {6, FORM_DOUBLE, &s.y, "%g", nullptr, 0},        {7, FORM_DOUBLE, &s.z, "%g", nullptr, 0},
        {8, FORM_DOUBLE, &r.x, "%g", Form_AngleRule, 0}, {9, FORM_DOUBLE, &r.y, "%g", Form_AngleRule, 0},
        {10, FORM_DOUBLE, &r.z, "%g", Form_AngleRule, 0},
    };
    if (!Form_Run(&d, fields, (int)(sizeof fields / sizeof fields[0]))) return 0;
    *translate = t;
    *scale = s;
    *rotate = r;
    return 1;
}

}  // namespace

void Layer_ErrorMessage(int n) {
    const LayerErrorBox* box = Layer_ErrorBox(n);
    if (!box) return;
    Beep();
    Dialog d;
    Dialog_Init(&d);
    if (Dialog_Caption(&d, box->columns, box->rows) != DIALOG_OK) {
        Dialog_Close(&d);
        return;
    }
    Dialog_AddText(&d, "Error Message!", 13, 1);
    for (int i = 0; i < box->line_count; i++) Dialog_AddText(&d, box->lines[i], 3, 3 + i);
    Dialog_AddButton(&d, "    OK    ", 14, box->rows - 1, 1);   // the last row but one
    DialogResult r;
    do Dialog_Run(&d, &r);
    while (r.id != 1 && r.id != -1);
    Dialog_Close(&d);
}

int Layer_Options(Layer* target) {
    if (!target || target == g.scene.Current_Layer) return 0;
    Dialog d;
    Dialog_Init(&d);
    if (Dialog_Caption(&d, 64, 14) != DIALOG_OK) {
        Dialog_Close(&d);
        return 0;
    }
    struct Line {
        const char* text;
        int column, row;
    };
    const Line kTexts[] = {
        {"This: ", 4, 1},
        {"Choose an Option:", 31, 1},
        {"Select this button to make this Layer", 21, 3},
        {"an \"Instance\" of the Current Layer.", 21, 4},
        {"Delete the \"instance\" of this Layer.", 21, 5},
        {"Hit this button to Nest the Current", 21, 7},
        {"Layer under this Layer.", 21, 8},
        {"Move the Current Layer Above this Layer.", 21, 10},
        {"I didn't mean to Right-Click the mouse.", 21, 12},
    };
    for (const Line& l : kTexts) Dialog_AddText(&d, l.text, l.column, l.row);
    Dialog_AddText(&d, target->name, 10, 1);
    Dialog_AddButton(&d, "   Instance   ", 4, 3, LAYER_OPT_INSTANCE);
    Dialog_AddButton(&d, " Del Instance ", 4, 5, LAYER_OPT_DEL_INSTANCE);
    Dialog_AddButton(&d, "  Nest Layer  ", 4, 7, LAYER_OPT_NEST);
    Dialog_AddButton(&d, "   Slide to   ", 4, 10, LAYER_OPT_SLIDE);
    Dialog_AddButton(&d, "    Cancel    ", 4, 12, LAYER_OPT_CANCEL);
    DialogResult r;
    do Dialog_Run(&d, &r);
    while (r.id != -1 && (r.id < LAYER_OPT_INSTANCE || r.id > LAYER_OPT_DEL_INSTANCE));
    Dialog_Close(&d);
    if (r.id == LAYER_OPT_CANCEL) return 0;
    int box = 0;
    const int changed = Layer_ApplyOption(target, r.id, &box);
    if (box) Layer_ErrorMessage(box);
    return changed;
}

int Layer_EditTransform(Layer* l) {
    return l && EditTransform(&l->translate, &l->scale, &l->rotate);
}

int Layer_EditTextureTransform(Layer* l) {
    return l && EditTransform(&l->texture_translate, &l->texture_scale, &l->texture_rotate);
}

int Layers_Dialog() {
    Dialog d;
    if (!Dialog_Open(&d, "layers.dlg")) return 0;
    int offset = 0;
    ShowLayers(&d, offset);
    DialogResult r;
    for (;;) {
        Dialog_Run(&d, &r);
        if (r.id == ID_CLOSE || r.id == 0 || r.id == -1) break;
        if (React(&d, r.id, r.value, &offset)) g.cmd.sceneChanged = 1;
        ShowLayers(&d, offset);
    }
    Dialog_Close(&d);
    Status_Refresh();   // the current layer's name and colour
    return 1;
}

int Com_Layers() {
    g.input.InputResult.code = 0;
    g.cmd.sceneChanged = 0;
    if (Layers_Dialog() && g.cmd.sceneChanged && g.aids.Auto_Regen) Views_RedrawAll();
    return 1;
}
