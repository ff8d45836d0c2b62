// selection.cpp - selection marks and their count; the drawing of an object
// in its layer's colour, the highlight colour or the background.
#include "model/selection.h"

#include "gfx/gfx.h"
#include "model/geometry.h"
#include "model/output.h"
#include "state.h"

int Selection_LayerColour(const Layer* layer) {
    if (!layer) return 0;
    return layer->color == g.config.colors.view_bkcolor ? 0 : layer->color;
}

int Selection_ColourOf(const Object* obj, const Layer* layer) {
    return obj->selected ? g.config.colors.general_color : Selection_LayerColour(layer);
}

void Selection_DrawObject(const Object* obj, const Layer* layer, int colour) {
    X11_SetColor(colour);
    Output_UseLayer(layer);
    Object_Draw(obj);
    Output_UseLayer(nullptr);
}

void Object_SetSelected(Object* obj, int on, Layer* layer) {
    if (!obj) return;
    u8 mark = on ? 1 : 0;
    if (obj->selected != mark) {
        obj->selected = mark;
        g.scene.Selected_Count += mark ? 1 : -1;
    }
    Selection_DrawObject(obj, layer, Selection_ColourOf(obj, layer));
}

void Selection_Clear() {
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        for (Object* o = l->first_object; o; o = o->next)
            if (o->selected) {
                if (l->on) Object_SetSelected(o, 0, l);
                else o->selected = 0;   // not drawn: its layer is off
            }
    g.scene.Selected_Count = 0;
}

int Selection_Redraw() {
    for (Layer* l = g.scene.First_Layer; l; l = l->next) {
        if (!l->on) continue;
        for (Object* o = l->first_object; o; o = o->next) {
            if (g.view.user_interrupt) return 0;
            if (o->selected) Selection_DrawObject(o, l, g.config.colors.general_color);
        }
    }
    return 1;
}

Object* Selection_First() {
    for (Layer* l = g.scene.First_Layer; l; l = l->next) {
        if (!l->on) continue;
        for (Object* o = l->first_object; o; o = o->next)
            if (o->selected) {
                g.selection.first_layer = l;
                g.selection.first_colour = Selection_LayerColour(l);
                return o;
            }
    }
    return nullptr;
}
