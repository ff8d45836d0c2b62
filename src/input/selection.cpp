// selection.cpp - selection marks and their count; the drawing of an object
// in its layer's colour, the highlight colour or the background.
#include "input/selection.h"

#include "gfx/gfx.h"
#include "model/geometry.h"
#include "state.h"

int Selection_LayerColour(const Layer* layer) {
    if (!layer) return 0;
    return layer->color == g.config.colors.view_bkcolor ? 0 : layer->color;
}

void Selection_DrawObject(const Object* obj, int colour) {
    X11_SetColor(colour);
    Object_Draw(obj);
}

void Object_SetSelected(Object* obj, int on, Layer* layer) {
    if (!obj) return;
    u8 mark = on ? 1 : 0;
    if (obj->selected != mark) {
        obj->selected = mark;
        g.scene.Selected_Count += mark ? 1 : -1;
    }
    Selection_DrawObject(obj, mark ? g.config.colors.general_color : Selection_LayerColour(layer));
}
