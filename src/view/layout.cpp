// layout.cpp - the seven screen layouts, the stored slots and the start-up views.
//
// The working record and the slots follow one copy rule: before the current
// slot changes (or the slots are rearranged) Active_Viewport is stored back
// into its slot, then the new slot is loaded into it, whole records each way.
#include "view/viewport.h"

#include "state.h"
#include "view/view_commands.h"

namespace {

int ClampInt(int v, int lo, int hi) { return v < lo ? lo : (v > hi ? hi : v); }

// Rectangles are written in terms of these values of the drawing area.
struct LayoutFrame {
    int T, B, R, mx, my, cw, y3, y6;
};

LayoutFrame Frame() {
    LayoutFrame f;
    f.T = g.view.area_top;
    f.B = g.view.area_bottom - 1;
    f.R = g.view.area_width - 1;
    f.mx = f.R / 2;
    f.my = f.T + (f.B - f.T) / 2;
    f.cw = (int)(f.R / 3.5);
    f.y3 = f.T + (f.B - f.T) / 3;
    f.y6 = f.y3 + (f.B - f.y3) / 2;
    return f;
}

// Where each coordinate of a slot's rectangle comes from.
enum Ref { ZERO, ONE, T1, B1, R1, MX_2, MX2, MY_2, MY2, CW_2, CW2, Y3_2, Y32, Y6_2, Y62, TT, BB, RR };

int Resolve(Ref r, const LayoutFrame& f) {
    switch (r) {
        case ZERO: return 0;
        case ONE: return 1;
        case T1: return f.T + 1;
        case B1: return f.B - 1;
        case R1: return f.R - 1;
        case MX_2: return f.mx - 2;
        case MX2: return f.mx + 2;
        case MY_2: return f.my - 2;
        case MY2: return f.my + 2;
        case CW_2: return f.cw - 2;
        case CW2: return f.cw + 2;
        case Y3_2: return f.y3 - 2;
        case Y32: return f.y3 + 2;
        case Y6_2: return f.y6 - 2;
        case Y62: return f.y6 + 2;
        case TT: return f.T;
        case BB: return f.B;
        case RR: return f.R;
    }
    return 0;
}

struct SlotRect {
    bool used;
    Ref left, top, right, bottom;
};

const SlotRect NONE = {false, ZERO, ZERO, ZERO, ZERO};

// [layout - 1][slot - 1]
const SlotRect kLayouts[7][4] = {
    {{true, ZERO, TT, RR, BB}, NONE, NONE, NONE},
    {{true, MX2, T1, R1, B1}, {true, ONE, T1, MX_2, B1}, NONE, NONE},
    {{true, ONE, MY2, R1, B1}, {true, ONE, T1, R1, MY_2}, NONE, NONE},
    {{true, MX2, T1, R1, B1}, {true, ONE, T1, MX_2, MY_2}, {true, ONE, MY2, MX_2, B1}, NONE},
    {{true, ONE, MY2, R1, B1}, {true, ONE, T1, MX_2, MY_2}, {true, MX2, T1, R1, MY_2}, NONE},
    {{true, MX2, MY2, R1, B1}, {true, ONE, T1, MX_2, MY_2}, {true, MX2, T1, R1, MY_2},
     {true, ONE, MY2, MX_2, B1}},
    {{true, ONE, T1, CW_2, Y3_2}, {true, ONE, Y32, CW_2, Y6_2}, {true, ONE, Y62, CW_2, B1},
     {true, CW2, T1, R1, B1}},
};

}  // namespace

void Views_SetScreen(int width, int height, int area_top, int area_bottom) {
    ViewState& v = g.view;
    v.screen_width = width > 1 ? width : 1;
    v.screen_height = height > 1 ? height : 1;
    v.area_top = ClampInt(area_top, 0, v.screen_height);
    v.area_bottom = ClampInt(area_bottom, v.area_top, v.screen_height);
    v.area_width = v.screen_width;
}

void Views_SetAreaWidth(int x) { g.view.area_width = ClampInt(x, 1, g.view.screen_width); }

int Views_LayoutRect(int n, int slot, double rect[4]) {
    if (n < 1 || n > 7 || slot < 1 || slot > 4) return 0;
    const SlotRect& s = kLayouts[n - 1][slot - 1];
    if (!s.used) return 0;
    LayoutFrame f = Frame();
    rect[0] = Resolve(s.left, f);
    rect[1] = Resolve(s.top, f);
    rect[2] = Resolve(s.right, f);
    rect[3] = Resolve(s.bottom, f);
    return 1;
}

void Views_StoreActive() {
    ViewState& v = g.view;
    v.Current_Viewport = ClampInt(v.Current_Viewport, 1, 4);
    v.Viewports[v.Current_Viewport] = v.Active_Viewport;
}

void Views_SelectSlot(int n) {
    if (n < 1 || n > 4) return;
    Views_StoreActive();
    g.view.Active_Viewport = g.view.Viewports[n];
    g.view.Current_Viewport = n;
}

// Rearranges the slots, then (unless suppressed) starts every zoom stack
// afresh and redraws.
void Views_SetLayout(int n, int keep) {
    ViewState& v = g.view;
    n = ClampInt(n, 1, 7);
    if (keep) {
        Views_StoreActive();
    } else {
        for (int i = 1; i <= 4; i++) v.Viewports[i] = v.Active_Viewport;
    }
    for (int slot = 1; slot <= 4; slot++) {
        double r[4];
        if (Views_LayoutRect(n, slot, r)) View_SetRect(&v.Viewports[slot], r[0], r[1], r[2], r[3]);
    }
    if (!keep) v.Current_Viewport = 1;
    v.Active_Viewport = v.Viewports[ClampInt(v.Current_Viewport, 1, 4)];
    v.Viewport_Layout = n;
    if (v.suppress_redraw) return;
    Zoom_ResetAll();
    Views_RedrawAll();
}

// The start-up views: a camera at (0, 5, -20) looking at the origin with Y up
// and a 45 degree field of view (aimed, but not yet "defined" by the user, so
// the 3D view still asks for CAMERA first), and four views side by side:
// TOP, RIGHT and FRONT as drawn, and a turned WORLD [FRONT] in slot 1.
void Views_Reset() {
    ViewState& v = g.view;
    Viewport base;
    View_Init(&base);
    base.UP = {0, 1, 0};
    View_SetFov(&base, 45.0);
    View_LookAt(&base, {0, 5, -20}, {0, 0, 0});
    base.camera_valid = 0;

    static const int kinds[5] = {0, VIEW_FRONT, VIEW_TOP, VIEW_RIGHT, VIEW_FRONT};
    for (int i = 1; i <= 4; i++) {
        v.Viewports[i] = base;
        View_SetKind(&v.Viewports[i], kinds[i]);
    }
    Viewport& turned = v.Viewports[1];
    turned.WORLD = 1;
    View_SetPitch(&turned, 30);
    View_SetHeading(&turned, 30);

    v.Current_Viewport = 1;
    v.Active_Viewport = v.Viewports[1];
    int keep = v.suppress_redraw;
    v.suppress_redraw = 1;   // nothing to draw on yet: the frame comes next
    Views_SetLayout(6, 1);
    v.suppress_redraw = keep;
    Zoom_ResetAll();
}
