// view_commands.cpp - what the prompt does to the viewports: maximise and
// restore, the viewport switch by click and the interactive drag.
//
// The drag measures the pointer from the screen centre (where it is first
// placed) and rebuilds the view from the record it started with, so that a
// long drag does not accumulate rounding.
#include "view/view_commands.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "gfx/gfx.h"
#include "state.h"
#include "view/view_draw.h"
#include "view/viewport.h"

namespace {

const double RAD_PER_DEG = 3.141592653589793 / 180.0;


Viewport* Active() { return &g.view.Active_Viewport; }

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
    Views_SetTar(tar);
    Views_SetCam(cam);
    Views_SetFov(fov);
}

}  // namespace

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
    SaveZoom();
    View_Refresh();
    return 1;
}
