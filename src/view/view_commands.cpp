// view_commands.cpp - the commands that change a viewport's settings (view
// kinds, WORLD, DUPLICATE, AREA, ELEVATION, VPOINT), maximise and restore,
// the viewport switch by click, the pick handler and the interactive drag.
//
// Every view change ends with SaveZoom so that UNZOOM can step back over it.
// The drag measures the pointer from the screen centre (where it is first
// placed) and rebuilds the view from the record it started with, so that a
// long drag does not accumulate rounding.
#include "view/view_commands.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "gfx/gfx.h"
#include "input/input.h"
#include "input/message.h"
#include "input/settings.h"
#include "state.h"
#include "view/view_draw.h"

namespace {

const double RAD_PER_DEG = 3.141592653589793 / 180.0;
const double DRAG_POLL_INTERVAL = 0.002;   // seconds: a drag stops drawing within about this


Viewport* Active() { return &g.view.Active_Viewport; }

int SetKind(int kind) {
    View_SetKind(Active(), kind);
    SaveZoom();
    View_Refresh();
    return 1;
}

// Asks for a number with `prompt`; 0 when a command replaced the input,
// else 1 with *got set when a number came (Enter keeps the value).
int AskNumber(const char* prompt, double* value, int* got) {
    Input_SetMask(1);
    Input_SetKeywords(nullptr, 1, 0);
    *got = 0;
    if (!Input_Get(prompt, nullptr)) return 0;
    if (g.input.InputResult.kind == -3) {
        char* end;
        double v = strtod(g.input.InputResult.text, &end);
        if (end != g.input.InputResult.text && std::isfinite(v)) {
            *value = v;
            *got = 1;
        }
    }
    return 1;
}

int SlotsOfLayout(int layout) {
    static const int kSlots[8] = {0, 1, 2, 2, 3, 3, 4, 4};
    return kSlots[layout < 1 ? 1 : (layout > 7 ? 7 : layout)];
}

bool Inside(const Viewport& vp, int x, int y) {
    return x >= vp.rect_left && x <= vp.rect_right && y >= vp.rect_top && y <= vp.rect_bottom;
}

void Outline(const Viewport& vp, int colour) {
    int keep = X11_GetColor();
    X11_SetWriteMode(GFX_COPY);
    X11_SetColor(colour);
    X11_Rectangle(0, (int)vp.rect_left - 1, (int)vp.rect_top - 1, (int)vp.rect_right + 1,
                  (int)vp.rect_bottom + 1);
    X11_SetColor(keep);
}

// World point under a pixel of `vp`, in doubles and without snap.
Point3 PlanePoint(const Viewport& vp, double sx, double sy) {
    Viewport copy = vp;
    copy.SNAP = 0;
    View_ScreenToWorld(&copy, (int)sx, (int)sy);
    return copy.picked_point;
}

// --- drag ---

struct DragStart {
    Viewport view;   // the active record when the drag began
    Point3 cam, tar;
    double fov;
    double cx, cy;   // reference pixel: the screen centre
};

void DragFlat(const DragStart& s, int bits, double dx, double dy) {
    Viewport* vp = Active();
    if (bits & 8) {
        Point3 moved = Vec_Sub(PlanePoint(s.view, s.cx + dx, s.cy + dy), PlanePoint(s.view, s.cx, s.cy));
        View_SetCentre(vp, Vec_Sub(View_GetCentre(&s.view), moved));
    }
    if (bits & 4) View_SetArea(vp, s.view.AREA + (s.view.AREA / 1.5) * (dy / s.cy));
    if (bits & 3) {
        vp->WORLD = 1;
        View_SetPitch(vp, 89.9999998 * (dy / s.cy));
        View_SetHeading(vp, 180 * (dx / s.cx));
    }
}

// 3D view: pan moves camera and target across the view, zoom changes the
// field of view, rotate swings the camera round the target.
void Drag3D(const DragStart& s, int bits, double dx, double dy) {
    Point3 cam = s.cam, tar = s.tar;
    double fov = s.fov;
    Point3 off = Vec_Sub(s.cam, s.tar);
    double r = std::sqrt(Vec_Dot(off, off));
    if (bits & 8) {
        double k = r * std::tan(fov / 2 * RAD_PER_DEG) / s.cy;   // world units per pixel at the target
        Point3 shift = Vec_Add(Vec_Scale(g.view.row_x, dx * k), Vec_Scale(g.view.row_y, -dy * k));
        cam = Vec_Sub(cam, shift);
        tar = Vec_Sub(tar, shift);
    }
    if (bits & 4) {
        fov = s.fov + (s.fov / 1.5) * (dy / s.cy);
        fov = fov < 1 ? 1 : (fov > 170 ? 170 : fov);
    }
    if ((bits & 3) && r > 0) {
        double yaw = std::atan2(off.x, off.z) + 180 * (dx / s.cx) * RAD_PER_DEG;
        double pitch = std::asin(off.y / r) + 89.9999998 * (dy / s.cy) * RAD_PER_DEG;
        const double lim = 89.9 * RAD_PER_DEG;
        pitch = pitch > lim ? lim : (pitch < -lim ? -lim : pitch);
        cam = Vec_Add(tar, {r * std::cos(pitch) * std::sin(yaw), r * std::sin(pitch),
                        r * std::cos(pitch) * std::cos(yaw)});
    }
    Var_SetPoint("TAR", &tar);
    Var_SetPoint("CAM", &cam);
    Var_SetDouble("FOV", &fov);
}

}  // namespace

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
    if (!AskNumber(prompt, &a, &got)) return 0;
    if (!got) return 1;
    View_SetArea(Active(), a);
    SaveZoom();
    if (g.aids.Auto_Regen) View_Refresh();
    return 1;
}

int Com_Elevation() {
    Viewport* vp = Active();
    Point3 c = View_GetCentre(vp);
    char prompt[80];
    snprintf(prompt, sizeof prompt, "\nSet Elevation value <%g>: ", Vec_Dot(c, vp->axis_d));
    double e = 0;
    int got;
    if (!AskNumber(prompt, &e, &got)) return 0;
    if (!got) return 1;
    c = Vec_Add(Vec_Add(Vec_Scale(vp->axis_h, Vec_Dot(c, vp->axis_h)), Vec_Scale(vp->axis_v, Vec_Dot(c, vp->axis_v))),
            Vec_Scale(vp->axis_d, e));
    View_SetCentre(vp, c);
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
    if (!AskNumber(prompt, &pitch, &got)) return 0;
    snprintf(prompt, sizeof prompt, "\nVPOINT>> Set Heading rotation value <%g>: ", heading);
    if (!AskNumber(prompt, &heading, &got)) return 0;
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
    Input_SetMask(1);
    int ok = Input_Get("\nDUPLICATE> Select a Viewport: ", nullptr);
    v.select_viewport = 0;
    if (!ok) return 0;
    if (v.Current_Viewport == from) return 1;   // no other viewport was picked
    Viewport* vp = &v.Active_Viewport;
    double l = vp->rect_left, t = vp->rect_top, r = vp->rect_right, b = vp->rect_bottom;
    *vp = source;
    View_SetRect(vp, l, t, r, b);
    Views_StoreActive();
    View_Refresh();
    return 1;
}

// --- the viewport side of the prompt ---

int Views_ToggleMaximise() {
    ViewState& v = g.view;
    if (v.Viewport_Layout == 1) {
        if (v.saved_layout > 1) {
            int n = v.saved_layout;
            v.saved_layout = 1;
            Views_SetLayout(n, 1);
        }
        return 1;
    }
    v.saved_layout = v.Viewport_Layout;
    View_SetRect(&v.Active_Viewport, 0, v.area_top, v.area_width - 1, v.area_bottom - 1);
    v.Viewport_Layout = 1;
    Views_StoreActive();
    Views_RedrawAll();
    return 1;
}

int Views_SwitchAt(int x, int y) {
    ViewState& v = g.view;
    if (v.Viewport_Layout == 1) return 0;
    Views_StoreActive();
    int count = SlotsOfLayout(v.Viewport_Layout);
    for (int slot = 1; slot <= count; slot++) {
        if (!Inside(v.Viewports[slot], x, y)) continue;
        if (slot == v.Current_Viewport) return 0;
        Outline(v.Viewports[v.Current_Viewport], g.config.colors.view_fgcolor);
        Views_SelectSlot(slot);
        Outline(v.Active_Viewport, g.config.colors.view_boarder);
        return 1;
    }
    return 0;
}

int View_PickHandler(int x, int y) {
    View_ScreenToWorld(Active(), x, y);
    g.input.cursorPoint = Active()->picked_point;
    return Input_AcceptPoint();
}

// --- drag ---

int View_DragBits(int buttons, int shift_flags) {
    if (!(shift_flags & SHIFT_CTRL)) return 0;
    if (buttons & MOUSE_LEFT) return 8;
    if (buttons & MOUSE_RIGHT) return 4;
    if (buttons & MOUSE_MIDDLE) return 2;
    return 0;
}

int View_Drag(int bits) {
    ViewState& v = g.view;
    Viewport* vp = Active();
    DragStart s{*vp, vp->CAM, vp->TAR, vp->FOV, v.screen_width / 2.0, v.screen_height / 2.0};
    X11_WarpMouse((int)s.cx, (int)s.cy);
    v.drag_active = 1;
    double keep_interval = v.poll_interval;
    v.poll_interval = DRAG_POLL_INTERVAL;
    int lastX = (int)s.cx, lastY = (int)s.cy;
    for (;;) {
        int x, y, b;
        X11_ReadMouse(&x, &y, &b);
        bool moved = x != lastX || y != lastY;
        if (moved) {   // the release position counts too
            lastX = x;
            lastY = y;
            if (vp->VIEW == VIEW_3D) Drag3D(s, bits, x - s.cx, y - s.cy);
            else DragFlat(s, bits, x - s.cx, y - s.cy);
        }
        if (!b) break;
        if (!moved) {
            X11_WaitEvent();
            continue;
        }
        View_Draw(vp);
        X11_SetWriteMode(GFX_COPY);
        Scene_DrawObjectsInterruptible();
        X11_Flush();
    }
    v.drag_active = 0;
    v.poll_interval = keep_interval;
    SaveZoom();
    View_Refresh();
    return 1;
}
