// poly_support.cpp - drawing, the vertex cross and the edit machines'
// questions, shared by the polyline commands (see poly_support.h).
#include "cmd/poly_support.h"

#include <cmath>
#include <cstdio>

#include "cmd/codes.h"
#include "gfx/gfx.h"
#include "input/input.h"
#include "model/geometry.h"
#include "model/output.h"
#include "model/selection.h"
#include "state.h"
#include "view/view_draw.h"
#include "view/viewport.h"

namespace {

const int MARK_ARM = 14;   // half-size of the vertex cross in pixels, as the redraw draws it

void CrossIn(Viewport* vp, Point3 p) {
    View_Project(vp, p);
    const int x = (int)vp->screen_x, y = (int)vp->screen_y;
    X11_MoveTo(x - MARK_ARM, y);
    X11_LineTo(x + MARK_ARM, y);
    X11_MoveTo(x, y - MARK_ARM);
    X11_LineTo(x, y + MARK_ARM);
}

// Toggles the cross at p (a drawn point) in every viewport the layout shows.
void Cross(Point3 p) {
    ViewState& v = g.view;
    const int mode = X11_GetWriteMode(), colour = X11_GetColor();
    X11_SetWriteMode(GFX_XOR);
    X11_SetColor(v.marker_color);
    static const int kSlots[8] = {0, 1, 2, 2, 3, 3, 4, 4};   // slots each layout shows
    const int slots = v.Viewport_Layout <= 1 ? 1 : kSlots[v.Viewport_Layout > 7 ? 7 : v.Viewport_Layout];
    for (int s = 1; s <= slots; s++) {
        if (slots == 1 || s == v.Current_Viewport) {
            CrossIn(&v.Active_Viewport, p);
        } else {
            Viewport vp = v.Viewports[s];
            CrossIn(&vp, p);
        }
    }
    X11_SetColor(colour);
    X11_SetWriteMode(mode);
}

Point3 Placed(Point3 p, const Layer* layer) {
    View_UseLayerTransform(layer);
    const Point3 q = View_LayerPoint(p);
    View_UseLayerTransform(nullptr);
    return q;
}

}  // namespace

void PolyCmd_Draw(const Object* obj, const Layer* layer) {
    Selection_DrawObject(obj, layer, Selection_LayerColour(layer));
}

void PolyCmd_Erase(const Object* obj, const Layer* layer) {
    Selection_DrawObject(obj, layer, g.config.colors.view_bkcolor);
}

void PolyCmd_Highlight(const Object* obj, const Layer* layer) {
    Selection_DrawObject(obj, layer, g.config.colors.general_color);
}

void PolyCmd_DrawRecord(const PolylineData* poly, int colour) {
    Object tmp{};
    tmp.kind = KIND_POLYLINE;
    tmp.data = const_cast<PolylineData*>(poly);
    Selection_DrawObject(&tmp, g.scene.Current_Layer, colour);
}

void PolyCmd_Show(const Object* obj, const Layer* layer) {
    if (g.aids.Auto_Redraw) Output_RedrawScreen();
    else PolyCmd_Draw(obj, layer);
}

void PolyCmd_MarkShow(Point3 p, const Layer* layer) {
    ViewState& v = g.view;
    if (v.marker_pending) PolyCmd_MarkHide();
    v.marker_point = Placed(p, layer);
    v.marker_color = g.config.colors.general_color;
    v.marker_pending = 1;
    Cross(v.marker_point);
}

void PolyCmd_MarkHide() {
    ViewState& v = g.view;
    if (!v.marker_pending) return;
    Cross(v.marker_point);
    v.marker_pending = 0;
}

void PolyCmd_Pixel(Point3 p, const Layer* layer, double* x, double* y) {
    Viewport* vp = &g.view.Active_Viewport;
    View_Project(vp, Placed(p, layer));
    *x = vp->screen_x;
    *y = vp->screen_y;
}

int PolyCmd_Int(double value, int lo, int hi) {
    if (!(value >= lo)) return lo;   // also NaN
    if (value >= hi) return hi;
    return (int)value;
}

int PolyCmd_Ask(const char* prompt, const char* keywords, int allowNumber, int mask, AskAnswer* answer) {
    if (Ask_Any(prompt, keywords, allowNumber, mask, answer)) return 1;
    if (g.input.InputResult.code != CMD_EDIT) return 0;
    g.input.InputResult.code = CMD_NONE;
    answer->kind = -1;
    return 1;
}

int PolyCmd_AskDouble(const char* format, int mask, double* value) {
    char prompt[160];
    snprintf(prompt, sizeof prompt, format, *value);
    AskAnswer a;
    if (!PolyCmd_Ask(prompt, nullptr, 1, mask, &a)) return 0;
    if (a.kind == -3) *value = a.number;
    return 1;
}

int PolyCmd_AskInt(const char* format, int mask, int* value, int lo, int hi) {
    char prompt[160];
    snprintf(prompt, sizeof prompt, format, *value);
    AskAnswer a;
    if (!PolyCmd_Ask(prompt, nullptr, 1, mask, &a)) return 0;
    if (a.kind == -3) *value = PolyCmd_Int(a.number, lo, hi);
    return 1;
}
