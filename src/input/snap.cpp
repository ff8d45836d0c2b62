// snap.cpp - the edge lookup behind End point and Mid point: the first
// object edge that passes through a pick box around a pixel.
//
// Objects are run through their wireframe drawing with the active viewport's
// pen in hit-test mode; the pen stops at the first segment that enters the
// box, and that segment (the pen's previous and last points) is the edge.
#include "input/input.h"
#include "model/geometry.h"
#include "scene/layers.h"
#include "state.h"

int Snap_FindEdge(int x, int y, int half, Point3* a, Point3* b) {
    Viewport* vp = &g.view.Active_Viewport;
    const int keepMode = vp->line_mode, keepOutput = g.output.Output_Mode;
    int keepBox[4];
    for (int i = 0; i < 4; i++) keepBox[i] = vp->pick_box[i];
    vp->line_mode = LINE_HIT_TEST;
    vp->pick_box[0] = x - half;
    vp->pick_box[1] = y - half;
    vp->pick_box[2] = x + half;
    vp->pick_box[3] = y + half;
    g.output.Output_Mode = OUTPUT_SCREEN;
    int found = 0;
    for (Layer* l = g.scene.First_Layer; l && !found; l = l->next) {
        if (!l->on) continue;
        for (Object* o = l->first_object; o && !found; o = o->next) found = Object_Draw(o);
    }
    if (found) {
        *a = g.view.prev_point;
        *b = g.view.last_point;
    }
    vp->line_mode = keepMode;
    for (int i = 0; i < 4; i++) vp->pick_box[i] = keepBox[i];
    g.output.Output_Mode = keepOutput;
    return found;
}
