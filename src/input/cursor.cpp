// cursor.cpp - the cursor and the rubber band, drawn in XOR on every mouse
// move, and the status-line coordinates that follow them.
//
// What was drawn is kept in cursorMark, so erasing draws exactly the same
// lines again. Inside the active viewport the cursor is a crosshair or a pick
// box, with the rubber band from the base point; elsewhere a small arrow.
#include <cmath>
#include <cstdio>

#include "gfx/gfx.h"
#include "input/input.h"
#include "input/status_line.h"
#include "model/xform.h"
#include "scene/layers.h"
#include "state.h"
#include "ui/menu.h"
#include "view/viewport.h"

namespace {

constexpr double kDegrees = 57.29577951;
constexpr int kCircleSteps = 36;


// Pixel of a world point in the active viewport, kept inside int range.
void Pixel(Point3 p, int* x, int* y) {
    Viewport* vp = &g.view.Active_Viewport;
    View_Project(vp, p);
    auto clamp = [](double v) { return std::isfinite(v) ? (int)std::fmax(-1e5, std::fmin(1e5, v)) : 0; };
    *x = clamp(vp->screen_x);
    *y = clamp(vp->screen_y);
}

void Line(int x1, int y1, int x2, int y2) {
    X11_MoveTo(x1, y1);
    X11_LineTo(x2, y2);
}

void DrawArrow(int x, int y) {
    Line(x, y, x, y + 14);
    Line(x + 1, y + 1, x + 10, y + 10);
    Line(x + 1, y + 2, x + 8, y + 20);
}

void DrawPointer(const CursorMark& m) {
    const Viewport& v = g.view.Active_Viewport;
    const int style = g.input.cursorStyle;
    if (style >= 3) {
        const int h = style;
        Line(m.x - h, m.y - h, m.x + h, m.y - h);
        Line(m.x - h, m.y + h, m.x + h, m.y + h);
        Line(m.x - h, m.y - h + 1, m.x - h, m.y + h - 1);
        Line(m.x + h, m.y - h + 1, m.x + h, m.y + h - 1);
    } else if (g.config.Crosshairs_Full) {
        Line((int)v.rect_left, m.y, (int)v.rect_right, m.y);
        Line(m.x, (int)v.rect_top, m.x, (int)v.rect_bottom);
    } else {
        const int h = g.config.Crosshairs_Size;
        Line(m.x - h, m.y, m.x + h, m.y);
        Line(m.x, m.y - h, m.x, m.y + h);
    }
}

void DrawBand(const CursorMark& m) {
    const InputState& in = g.input;
    const bool pullDown = g.menus.bar.open >= 0;
    switch (in.rubberShape) {
        case RUBBER_RECT:
            Line(m.bx, m.by, m.cx, m.by);
            Line(m.cx, m.by, m.cx, m.cy);
            Line(m.cx, m.cy, m.bx, m.cy);
            Line(m.bx, m.cy, m.bx, m.by);
            return;
        case RUBBER_CIRCLE:
            if (!g.aids.Input_Line_Option || pullDown) return;
            {
                const double r = std::hypot(m.cx - m.bx, m.cy - m.by);
                for (int i = 0; i < kCircleSteps; i++) {
                    double a0 = 2 * M_PI * i / kCircleSteps, a1 = 2 * M_PI * (i + 1) / kCircleSteps;
                    Line(m.bx + (int)(r * std::cos(a0)), m.by + (int)(r * std::sin(a0)),
                         m.bx + (int)(r * std::cos(a1)), m.by + (int)(r * std::sin(a1)));
                }
            }
            Line(m.bx, m.by, m.cx, m.cy);
            return;
        case RUBBER_DRAG:
            // The selection as the edit would leave it, by the engine's own arithmetic.
            if (g.aids.Input_Line_Option && !pullDown && g.scene.Selected_Count > 0)
                Xform_DrawPreview(in.rubberTransform, m.base, m.second);
            if (in.rubberTransform == 5) return;   // GRAVITY: no line
            Line(m.bx, m.by, m.cx, m.cy);
            return;
        default: Line(m.bx, m.by, m.cx, m.cy); return;
    }
}

// Draws the mark in XOR (drawing it twice erases it).
void Paint(const CursorMark& m) {
    if (!g.screen.open) return;
    int keep = X11_GetColor(), mode = X11_GetWriteMode();
    X11_SetWriteMode(GFX_XOR);
    X11_SetColor(g.config.Crosshairs_Color);
    if (!m.inView) {
        DrawArrow(m.x, m.y);
    } else {
        DrawPointer(m);
        if (m.band) DrawBand(m);
    }
    X11_SetColor(keep);
    X11_SetWriteMode(mode);
}

void UpdateStatus() {
    if (!g.screen.open || g.menus.bar.shown) return;
    const InputState& in = g.input;
    const Layer* layer = g.scene.Current_Layer;
    char coords[64];
    const double p[3] = {in.cursorPoint.x, in.cursorPoint.y, in.cursorPoint.z};
    const double d[3] = {in.relDelta.x, in.relDelta.y, in.relDelta.z};
    Status_FormatCoords(coords, g.aids.coordsMode, in.rubberShape != RUBBER_NONE, p, d, in.polarDist,
                        in.polarAngle, in.polarDepth);
    Status_Draw({layer ? layer->name : "", layer ? (int)layer->color : 0, g.aids.orthoOn,
                 g.view.Active_Viewport.SNAP, coords});
}

}  // namespace

void Status_Refresh() { UpdateStatus(); }

void Cursor_Update(int x, int y) {
    InputState& in = g.input;
    Viewport* vp = &g.view.Active_Viewport;
    if (in.inActiveView && vp->VIEW != VIEW_3D) {
        View_ScreenToWorld(vp, x, y);
        in.cursorPoint = vp->picked_point;
        if (in.rubberShape != RUBBER_NONE) {
            if (g.aids.orthoOn && in.rubberShape != RUBBER_RECT)
                in.cursorPoint = Vec_Add(in.basePoint, Input_OrthoDelta(Vec_Sub(in.cursorPoint, in.basePoint)));
            in.relDelta = Vec_Sub(in.cursorPoint, in.basePoint);
            in.polarDist = std::sqrt(Vec_Dot(in.relDelta, in.relDelta));
            in.polarAngle = kDegrees * std::atan2(Vec_Dot(in.relDelta, vp->axis_v), Vec_Dot(in.relDelta, vp->axis_h));
            in.polarDepth = Vec_Dot(in.relDelta, vp->axis_d);
        }
    }
    in.cursorScreen[0] = x;
    in.cursorScreen[1] = y;
    UpdateStatus();
}

void Cursor_Draw() {
    InputState& in = g.input;
    if (!in.cursorHidden) return;
    CursorMark m{};
    m.x = in.lastMouse[0];
    m.y = in.lastMouse[1];
    m.inView = in.inActiveView;
    const Viewport& v = g.view.Active_Viewport;
    m.band = m.inView && in.rubberShape != RUBBER_NONE && v.VIEW != VIEW_3D;
    if (m.band) {
        Pixel(in.basePoint, &m.bx, &m.by);
        Pixel(in.cursorPoint, &m.cx, &m.cy);
        m.base = in.basePoint;
        m.second = in.cursorPoint;
    }
    in.cursorMark = m;
    Paint(m);
    in.cursorHidden = 0;
}

void Cursor_Erase() {
    InputState& in = g.input;
    if (in.cursorHidden) return;
    Paint(in.cursorMark);
    in.cursorHidden = 1;
}
