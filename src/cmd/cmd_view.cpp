// cmd_view.cpp - the view commands: redraw, zoom, pan, view kinds, WORLD,
// DUPLICATE, AREA, ELEVATION, VPOINT.
//
// All of them are transparent: they may run inside a waiting prompt of
// another command. The arithmetic is in the view layer; these functions ask
// and report. Every view change ends with SaveZoom so that UNZOOM can step
// back over it.
#include <cstdio>

#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "input/input.h"
#include "base/message.h"
#include "state.h"
#include "view/view_commands.h"
#include "view/viewport.h"

namespace {

Viewport* Active() { return &g.view.Active_Viewport; }

int SetKind(int kind) {
    View_SetKind(Active(), kind);
    SaveZoom();
    View_Refresh();
    return 1;
}

// Two corners or two points: the first without a rubber band, the second
// with `shape` from the first. 0 replaced; else 1 with *got when both came.
int AskTwoPoints(const char* first, const char* second, const char* shape, Point3* p1, Point3* p2,
                 int* got) {
    if (!Ask_Point(first, ASK_ENTER_REPEATS, p1, got)) return 0;
    if (!*got) return 1;
    Input_SetRubberBand(p1, shape, nullptr);
    return Ask_Point(second, ASK_ENTER_REPEATS, p2, got);
}

}  // namespace

// --- redraw and zoom ---

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
    int got;
    if (!AskTwoPoints("\nZOOMIN>> Upper/Left Corner: ", "\nZOOMIN>> Lower/Right Corner: ", "RECT", &p1,
                      &p2, &got))
        return 0;
    if (!got) return 1;
    View_ZoomWindow(p1, p2);
    View_Refresh();
    return 1;
}

int Com_ZoomOut() {
    Viewport* vp = Active();
    View_SetArea(vp, vp->AREA * 2);
    SaveZoom();
    View_Refresh();
    return 1;
}

int Com_Unzoom() {
    switch (Zoom_Back()) {
        case ZOOM_NO_STACK: Msg_Printf("\nNo previouse Zoom settings!"); return 1;
        case ZOOM_NO_PREVIOUS: Msg_Printf("\nNo previouse Zoom settings."); return 1;
        default: break;
    }
    Msg_Printf("\nUnzooming...");
    View_Refresh();
    return 1;
}

int Com_ZoomAll() {
    Viewport* vp = Active();
    if (vp->VIEW == VIEW_3D) {
        Msg_Printf("\nCan't ZoomAll in 3D view!");
        return 1;
    }
    Msg_Printf("\nPlease Wait!...");
    Point3 p1, p2;
    if (!View_MeasureExtents(&p1, &p2)) {
        Msg_Printf("\nUnable to ZoomAll");
        View_Refresh();
        return 1;
    }
    View_ZoomWindow(p1, p2);
    View_SetArea(vp, vp->AREA / 0.95);   // a 5% margin
    View_Refresh();
    return 1;
}

int Com_Pan() {
    Point3 base, offset;
    int got;
    if (!AskTwoPoints("\nPAN>> Set Base Point: ", "\nPAN>> Set offset Point: ", "LINE", &base, &offset,
                      &got))
        return 0;
    if (!got) return 1;
    View_PanBy(base, offset);
    View_Refresh();
    return 1;
}

// --- view kinds ---

int Com_View3D() {
    if (!Active()->camera_valid) {
        Msg_Printf("Camera Not Defined!");
        return 1;
    }
    Msg_Printf("\nSwitching to 3D perspective view");
    return SetKind(VIEW_3D);
}

int Com_ToggleWorld() {
    Active()->WORLD = !Active()->WORLD;
    SaveZoom();
    View_Refresh();
    return 1;
}

int Com_ViewTop() { return SetKind(VIEW_TOP); }
int Com_ViewBottom() { return SetKind(VIEW_BOTTOM); }
int Com_ViewRight() { return SetKind(VIEW_RIGHT); }
int Com_ViewLeft() { return SetKind(VIEW_LEFT); }
int Com_ViewFront() { return SetKind(VIEW_FRONT); }
int Com_ViewBack() { return SetKind(VIEW_BACK); }

// --- settings of the active viewport ---

int Com_Area() {
    char prompt[80];
    snprintf(prompt, sizeof prompt, "\nSet drawing Area <%g>: ", Active()->AREA);
    double a = Active()->AREA;
    int got;
    if (!Ask_Number(prompt, &a, &got)) return 0;
    if (!got) return 1;
    View_SetArea(Active(), a);
    SaveZoom();
    if (g.aids.Auto_Regen) View_Refresh();
    return 1;
}

int Com_Elevation() {
    Viewport* vp = Active();
    char prompt[80];
    snprintf(prompt, sizeof prompt, "\nSet Elevation value <%g>: ", View_GetElevation(vp));
    double e = 0;
    int got;
    if (!Ask_Number(prompt, &e, &got)) return 0;
    if (!got) return 1;
    View_SetElevation(vp, e);
    SaveZoom();
    if (vp->WORLD && g.aids.Auto_Regen) View_Refresh();
    return 1;
}

int Com_Vpoint() {
    Viewport* vp = Active();
    char prompt[80];
    double pitch = vp->PITCH, heading = vp->HEADING;
    int got;
    snprintf(prompt, sizeof prompt, "\nVPOINT>> Set Pitch rotation value <%g>: ", pitch);
    if (!Ask_Number(prompt, &pitch, &got)) return 0;
    snprintf(prompt, sizeof prompt, "\nVPOINT>> Set Heading rotation value <%g>: ", heading);
    if (!Ask_Number(prompt, &heading, &got)) return 0;
    View_SetPitch(vp, pitch);
    View_SetHeading(vp, heading);
    SaveZoom();
    vp->WORLD = 1;
    if (g.aids.Auto_Regen) View_Refresh();
    return 1;
}

int Com_Duplicate() {
    ViewState& v = g.view;
    if (v.Viewport_Layout == 1) {
        Msg_Printf("\nCan't duplicate, only one viewport on screen.");
        return 1;
    }
    Viewport source = v.Active_Viewport;
    int from = v.Current_Viewport;
    v.select_viewport = 1;
    Point3 unused;
    int got;
    int ok = Ask_Point("\nDUPLICATE> Select a Viewport: ", ASK_NO_POINT, &unused, &got);
    v.select_viewport = 0;
    if (!ok) return 0;
    if (v.Current_Viewport == from) return 1;   // no other viewport was picked
    View_CopyInto(&v.Active_Viewport, &source);
    Views_StoreActive();
    View_Refresh();
    return 1;
}
