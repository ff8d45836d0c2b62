// zoom.cpp - the per-slot zoom stacks and the commands that change what a
// viewport shows: redraw, zoom to a window, zoom out, zoom all, unzoom, pan.
//
// Each slot 1..4 keeps a doubly linked list of saved views, oldest first,
// one heap node per save and no depth limit. Zoom_ResetAll leaves exactly
// one node per slot, and UNZOOM never removes the last node, so a stack is
// empty only before the first reset or after Zoom_FreeAll.
#include <cmath>
#include <initializer_list>
#include <cstdlib>

#include "input/input.h"
#include "input/message.h"
#include "scene/mem.h"
#include "state.h"
#include "view/view_commands.h"
#include "view/view_draw.h"

namespace {


int ClampSlot(int n) { return n < 1 ? 1 : (n > 4 ? 4 : n); }

// Pushes `vp` onto the stack of `slot`; 0 when out of memory.
int Push(int slot, const Viewport& vp) {
    ZoomNode* z = (ZoomNode*)Mem_Alloc(sizeof(ZoomNode));
    if (!z) {
        Msg_Printf("Out of Memory in \"SaveZoom()\"");
        return 0;
    }
    z->VIEW = vp.VIEW;
    z->WORLD = vp.WORLD;
    z->AREA = vp.AREA;
    z->PITCH = vp.PITCH;
    z->HEADING = vp.HEADING;
    z->centre = View_GetCentre(&vp);
    z->next = nullptr;
    z->prev = g.view.zoom_last[slot];
    if (z->prev) z->prev->next = z;
    else g.view.zoom_first[slot] = z;
    g.view.zoom_last[slot] = z;
    return 1;
}

void FreeStack(int slot) {
    for (ZoomNode* z = g.view.zoom_first[slot]; z;) {
        ZoomNode* next = z->next;
        Mem_Free(z);
        z = next;
    }
    g.view.zoom_first[slot] = g.view.zoom_last[slot] = nullptr;
}

// Asks for a point, with a rubber band from `base` when one is given; 0
// when a command replaced the input, else 1 with *got set when a point came.
int AskPoint(const char* prompt, const Point3* base, const char* shape, Point3* out, int* got) {
    Input_SetMask(16);
    if (base) Input_SetRubberBand(base, shape, nullptr);
    if (!Input_Get(prompt, out)) return 0;
    *got = g.input.InputResult.kind == 0;
    return 1;
}

}  // namespace

// --- the stack ---

void SaveZoom() { Push(ClampSlot(g.view.Current_Viewport), g.view.Active_Viewport); }

void Zoom_FreeAll() {
    for (int slot = 1; slot <= 4; slot++) FreeStack(slot);
}

// Each slot starts again from the view it shows now.
void Zoom_ResetAll() {
    Zoom_FreeAll();
    ViewState& v = g.view;
    Views_StoreActive();
    for (int slot = 1; slot <= 4; slot++) Push(slot, v.Viewports[slot]);
}

int Zoom_Depth(int slot) {
    int n = 0;
    for (ZoomNode* z = g.view.zoom_first[ClampSlot(slot)]; z; z = z->next) n++;
    return n;
}

// --- view arithmetic shared by the commands ---

void View_ZoomWindow(Point3 p1, Point3 p2) {
    Viewport* vp = &g.view.Active_Viewport;
    Point3 centre{p1.x + (p2.x - p1.x) / 2, p1.y + (p2.y - p1.y) / 2, p1.z + (p2.z - p1.z) / 2};
    if (vp->VIEW == 7 || vp->VIEW == VIEW_3D || vp->half_height_px <= 0) return;
    double aspect = (double)vp->half_width_px / vp->half_height_px;
    if (vp->WORLD) {
        // Measure the window on the screen: back to plane points of the
        // unturned view through the pixels the turned view gives them.
        for (Point3* p : {&p1, &p2}) {
            View_Project(vp, *p);
            double h = (vp->screen_x - vp->screen_cx) / vp->pixels_per_unit;
            double v = (vp->screen_cy - vp->screen_y) / vp->pixels_per_unit;
            Point3 c = View_GetCentre(vp);
            *p = {c.x + h * vp->axis_h.x + v * vp->axis_v.x, c.y + h * vp->axis_h.y + v * vp->axis_v.y,
                  c.z + h * vp->axis_h.z + v * vp->axis_v.z};
        }
    }
    double hw = std::fabs(Vec_Dot(p1, vp->axis_h) - Vec_Dot(p2, vp->axis_h)) / 2;
    double hh = std::fabs(Vec_Dot(p1, vp->axis_v) - Vec_Dot(p2, vp->axis_v)) / 2;
    View_SetArea(vp, (hh == 0 || hw / hh > aspect) ? hw / aspect : hh);
    View_SetCentre(vp, centre);
    SaveZoom();
}

void View_PanBy(Point3 base, Point3 offset) {
    Viewport* vp = &g.view.Active_Viewport;
    Point3 c = View_GetCentre(vp);
    View_SetCentre(vp, {c.x - (offset.x - base.x), c.y - (offset.y - base.y), c.z - (offset.z - base.z)});
    SaveZoom();
}

// --- commands ---

int Com_Redraw() {
    Msg_Printf("\nRedrawing...");
    View_Refresh();
    return 1;
}

int Com_RedrawAll() {
    Msg_Printf("\nRedrawing...");
    Views_RedrawAll();
    return 1;
}

int Com_ZoomIn() {
    Point3 p1, p2;
    int got = 0;
    if (!AskPoint("\nZOOMIN>> Upper/Left Corner: ", nullptr, nullptr, &p1, &got)) return 0;
    if (!got) return 1;
    if (!AskPoint("\nZOOMIN>> Lower/Right Corner: ", &p1, "RECT", &p2, &got)) return 0;
    if (!got) return 1;
    View_ZoomWindow(p1, p2);
    View_Refresh();
    return 1;
}

int Com_ZoomOut() {
    Viewport* vp = &g.view.Active_Viewport;
    View_SetArea(vp, vp->AREA * 2);
    SaveZoom();
    View_Refresh();
    return 1;
}

int Com_Unzoom() {
    int slot = ClampSlot(g.view.Current_Viewport);
    ZoomNode* last = g.view.zoom_last[slot];
    if (!last) {
        Msg_Printf("\nNo previouse Zoom settings!");
        return 1;
    }
    if (!last->prev) {
        Msg_Printf("\nNo previouse Zoom settings.");
        return 1;
    }
    Msg_Printf("\nUnzooming...");
    const ZoomNode* z = last->prev;
    Viewport* vp = &g.view.Active_Viewport;
    View_SetKind(vp, z->VIEW);
    View_SetArea(vp, z->AREA);
    View_SetPitch(vp, z->PITCH);
    View_SetHeading(vp, z->HEADING);
    View_SetCentre(vp, z->centre);
    vp->WORLD = z->WORLD;
    last->prev->next = nullptr;
    g.view.zoom_last[slot] = last->prev;
    Mem_Free(last);
    View_Refresh();
    return 1;
}

int Com_ZoomAll() {
    Viewport* vp = &g.view.Active_Viewport;
    if (vp->VIEW == VIEW_3D) {
        Msg_Printf("\nCan't ZoomAll in 3D view!");
        return 1;
    }
    Msg_Printf("\nPlease Wait!...");
    View_ResetExtents(vp);
    vp->extents_mode = 1;
    View_Refresh();
    vp->extents_mode = 0;
    if (!vp->extents_found) {
        Msg_Printf("\nUnable to ZoomAll");
        View_Refresh();
        return 1;
    }
    int snap = vp->SNAP;
    vp->SNAP = 0;
    View_ScreenToWorld(vp, (int)vp->ext_min_x, (int)vp->ext_min_y);
    Point3 p1 = vp->picked_point;
    View_ScreenToWorld(vp, (int)vp->ext_max_x, (int)vp->ext_max_y);
    Point3 p2 = vp->picked_point;
    vp->SNAP = snap;
    View_ZoomWindow(p1, p2);
    View_SetArea(vp, vp->AREA / 0.95);   // a 5% margin
    View_Refresh();
    return 1;
}

int Com_Pan() {
    Point3 base, offset;
    int got = 0;
    if (!AskPoint("\nPAN>> Set Base Point: ", nullptr, nullptr, &base, &got)) return 0;
    if (!got) return 1;
    if (!AskPoint("\nPAN>> Set offset Point: ", &base, "LINE", &offset, &got)) return 0;
    if (!got) return 1;
    View_PanBy(base, offset);
    View_Refresh();
    return 1;
}
