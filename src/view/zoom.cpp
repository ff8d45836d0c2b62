// zoom.cpp - the per-slot zoom stacks and the arithmetic of the zoom
// commands: zoom to a window, pan, step back, frame the extents.
//
// Each slot 1..4 keeps a doubly linked list of saved views, oldest first,
// one heap node per save and no depth limit. Zoom_ResetAll leaves exactly
// one node per slot, and UNZOOM never removes the last node, so a stack is
// empty only before the first reset or after Zoom_FreeAll.
#include <cmath>
#include <initializer_list>
#include <cstdlib>

#include "base/message.h"
#include "scene/mem.h"
#include "state.h"
#include "view/view_commands.h"
#include "view/view_draw.h"
#include "view/viewport.h"

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

// --- stepping back and framing ---

int Zoom_Back() {
    int slot = ClampSlot(g.view.Current_Viewport);
    ZoomNode* last = g.view.zoom_last[slot];
    if (!last) return ZOOM_NO_STACK;
    if (!last->prev) return ZOOM_NO_PREVIOUS;
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
    return ZOOM_DONE;
}

int View_MeasureExtents(Point3* p1, Point3* p2) {
    Viewport* vp = &g.view.Active_Viewport;
    View_ResetExtents(vp);
    vp->extents_mode = 1;
    View_Refresh();
    vp->extents_mode = 0;
    if (!vp->extents_found) return 0;
    int snap = vp->SNAP;
    vp->SNAP = 0;
    View_ScreenToWorld(vp, (int)vp->ext_min_x, (int)vp->ext_min_y);
    *p1 = vp->picked_point;
    View_ScreenToWorld(vp, (int)vp->ext_max_x, (int)vp->ext_max_y);
    *p2 = vp->picked_point;
    vp->SNAP = snap;
    return 1;
}
