// view_object.cpp - one object in every viewport.
//
// Each slot of the layout is loaded into the working record in turn, as the
// full redraw does, and the object goes through the facet sink's screen
// consumer placed by its layer's transforms; the working record is then
// reloaded from the current slot, so nothing of the view changes.
#include "view/view_object.h"

#include "gfx/gfx.h"
#include "model/selection.h"
#include "state.h"
#include "view/viewport.h"

int Layer_Shown(const Layer* layer) {
    if (!layer || !layer->on) return 0;
    int level = layer->level;   // parents are the nearest earlier layers of smaller level
    for (const Layer* p = layer->prev; p && level > 0; p = p->prev)
        if (p->level < level) {
            if (!p->on) return 0;
            level = p->level;
        }
    return 1;
}

void Views_DrawObject(const Object* obj, const Layer* layer, int colour) {
    if (!obj || !Layer_Shown(layer)) return;
    ViewState& v = g.view;
    const int mode = X11_GetWriteMode(), keep = X11_GetColor();
    X11_SetWriteMode(GFX_COPY);
    if (v.Viewport_Layout <= 1) {
        Selection_DrawObject(obj, layer, colour);
    } else {
        static const int kLastSlot[8] = {0, 1, 2, 2, 3, 3, 4, 4};
        const int layout = v.Viewport_Layout > 7 ? 7 : v.Viewport_Layout;
        const int current = v.Current_Viewport;
        Views_StoreActive();
        for (int slot = kLastSlot[layout]; slot >= 1; slot--) {
            v.Active_Viewport = v.Viewports[slot];
            Selection_DrawObject(obj, layer, colour);
        }
        v.Active_Viewport = v.Viewports[current >= 1 && current <= 4 ? current : 1];
    }
    X11_SetWriteMode(mode);
    X11_SetColor(keep);
}
