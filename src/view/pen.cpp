// pen.cpp - the 3D pen: projects world points and draws, measures or hit-tests
// the segments between them.
//
// One pen, four jobs chosen by the record: extents_mode measures the screen
// extents (nothing drawn, no clipping); otherwise the segment is clipped to
// the viewport rectangle and then drawn (line_mode 0), drawn with a poll for
// waiting events every poll_interval of drawing (line_mode 1 or the global
// interruptible flag), or walked pixel by pixel against pick_box
// (line_mode 2). In the 3D view a segment is first cut at the camera plane.
// Pixels that are not finite numbers (from NaN or overflowing input) end the
// segment before anything is converted to an integer, and every walk is
// bounded by the clipped segment's length.
#include <cmath>
#include <cstdlib>

#include "gfx/gfx.h"
#include "state.h"
#include "view/viewport.h"

namespace {

const double NEAR_DEPTH = 1e-7;   // depth a segment crossing the camera plane is cut at
const double REDRAW_GRACE = 0.1;  // seconds a redraw runs before a key or click can stop it

// Horizontal scale of the 3D view: screen shape over camera shape, with W and
// H the largest pixel coordinates (639 and 479), so (W + 1)/(H + 1) is 4:3.
double PerspectiveScale(const Viewport* vp) {
    float aspect = (float)g.view.camera_aspect;
    if (!(aspect > 0) || !std::isfinite(aspect)) aspect = 1.3333333f;
    float f = ((float)g.view.screen_width / (float)g.view.screen_height) *
              (float)vp->half_height_px / aspect;
    return f;
}

// Camera-space point to pixel (depth must be positive).
void EyeToPixel(const Viewport* vp, double f, Point3 e, double* x, double* y) {
    *x = vp->screen_cx - f * e.x / e.z;
    *y = vp->half_height_px * e.y / e.z + vp->screen_cy;
}

// Moves `a` along the segment towards `b` onto the near plane.
void CutAtNearPlane(Point3* a, Point3 b) {
    double dz = b.z - a->z;
    if (dz == 0) dz += NEAR_DEPTH;
    a->x += (b.x - a->x) / dz * (0 - a->z);
    a->y += (b.y - a->y) / dz * (0 - a->z);
    a->z = NEAR_DEPTH;
}

bool Finite4(double a, double b, double c, double d) {
    return std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d);
}

// Cuts the segment to the rectangle; false when nothing of it is inside.
bool ClipToRect(const Viewport* vp, double* x1, double* y1, double* x2, double* y2) {
    const double L = vp->rect_left, R = vp->rect_right, T = vp->rect_top, B = vp->rect_bottom;
    if ((*x1 < L && *x2 < L) || (*x1 > R && *x2 > R) || (*y1 < T && *y2 < T) ||
        (*y1 > B && *y2 > B))
        return false;

    // x edges: right, then left; the end beyond moves along the line.
    const double xEdges[2] = {R, L};
    for (int i = 0; i < 2; i++) {
        double edge = xEdges[i];
        bool beyond1 = i == 0 ? *x1 > edge : *x1 < edge;
        bool beyond2 = i == 0 ? *x2 > edge : *x2 < edge;
        if (beyond1) {
            *y1 += (*y2 - *y1) / (*x2 - *x1) * (edge - *x1);
            *x1 = edge;
        }
        if (beyond2) {
            *y2 += (*y1 - *y2) / (*x1 - *x2) * (edge - *x2);
            *x2 = edge;
        }
    }
    // y edges: bottom, then top.
    const double yEdges[2] = {B, T};
    for (int i = 0; i < 2; i++) {
        double edge = yEdges[i];
        bool beyond1 = i == 0 ? *y1 > edge : *y1 < edge;
        bool beyond2 = i == 0 ? *y2 > edge : *y2 < edge;
        if (beyond1) {
            *x1 += (*x2 - *x1) / (*y2 - *y1) * (edge - *y1);
            *y1 = edge;
        }
        if (beyond2) {
            *x2 += (*x1 - *x2) / (*y1 - *y2) * (edge - *y2);
            *y2 = edge;
        }
    }
    // Rounding may leave an end a hair outside after the second cut.
    const double eps = 1e-9;
    if (*x1 > R + eps || *x1 < L - eps || *x2 > R + eps || *x2 < L - eps) return false;
    if (!Finite4(*x1, *y1, *x2, *y2)) return false;
    return true;
}

// A clipped coordinate as a pixel; the clamp only matters for corrupt rectangles.
int ToPixel(double v) {
    if (v > 1e7) return 10000000;
    if (v < -1e7) return -10000000;
    return (int)v;
}

bool InPickBox(const Viewport* vp, int x, int y) {
    return x >= vp->pick_box[0] && x <= vp->pick_box[2] && y >= vp->pick_box[1] &&
           y <= vp->pick_box[3];
}

// Bresenham walk from (x1, y1) to (x2, y2), start pixel first. The minor axis
// steps when the doubled error passes the major length, i.e. at the pixel
// nearest the true line (ties stay on the major axis).
int HitTest(const Viewport* vp, int x1, int y1, int x2, int y2) {
    long dx = std::labs((long)x2 - x1), dy = std::labs((long)y2 - y1);
    int sx = x2 >= x1 ? 1 : -1, sy = y2 >= y1 ? 1 : -1;
    bool xMajor = dx >= dy;
    long dMajor = xMajor ? dx : dy, dMinor = xMajor ? dy : dx;
    long err = 0;   // doubled: grows by 2 dMinor per step, paid back 2 dMajor per minor step
    int x = x1, y = y1;
    for (long i = 0; i <= dMajor; i++) {
        if (InPickBox(vp, x, y)) return 1;
        if (xMajor) x += sx; else y += sy;
        err += 2 * dMinor;
        if (err > dMajor) {
            if (xMajor) y += sy; else x += sx;
            err -= 2 * dMajor;
        }
    }
    return 0;
}

// A key, or a mouse that moved or clicked since interruptible drawing began.
// The display is asked at most once per poll interval of drawing (0: after
// every segment): under X each question flushes the request buffer, which
// costs a hundred times the line.
int EventWaiting() {
    ViewState& v = g.view;
    if (v.poll_interval > 0) {
        double now = X11_Clock();
        if (now - v.poll_last < v.poll_interval) return 0;
        v.poll_last = now;
    }
    if (X11_KeyPressed()) return 1;
    int x, y, b;
    X11_ReadMouse(&x, &y, &b);
    if (!v.poll_armed) {
        v.poll_armed = 1;
        v.poll_mouse_x = x;
        v.poll_mouse_y = y;
        v.poll_mouse_buttons = b;
        return 0;
    }
    return x != v.poll_mouse_x || y != v.poll_mouse_y || b != v.poll_mouse_buttons;
}

// During a redraw: a key or a mouse button asks to stop it. Typed-ahead
// input does not cut a quick redraw short: only one that has run for
// REDRAW_GRACE seconds listens, once per poll interval.
int UserStop() {
    ViewState& v = g.view;
    if (!v.redraw_depth || v.user_interrupt) return v.user_interrupt;
    double now = X11_Clock();
    if (now - v.redraw_start < REDRAW_GRACE || now - v.poll_last < v.poll_interval) return 0;
    v.poll_last = now;
    int x, y, b;
    X11_ReadMouse(&x, &y, &b);
    if (X11_KeyPressed() || b) v.user_interrupt = 1;
    return v.user_interrupt;
}

}  // namespace

double View_PerspectiveScale(const Viewport* vp) { return PerspectiveScale(vp); }

int View_PollStop() { return g.view.Active_Viewport.line_mode == LINE_HIT_TEST ? 0 : UserStop(); }

void View_BeginInterruptible() {
    ViewState& v = g.view;
    X11_ReadMouse(&v.poll_mouse_x, &v.poll_mouse_y, &v.poll_mouse_buttons);
    v.poll_armed = 1;
    v.poll_last = X11_Clock();
}

void View_MoveTo(Viewport* vp, Point3 p) {
    g.view.last_point = p;
    View_Project(vp, p);
    if (vp->VIEW == VIEW_3D) {
        if (vp->eye_point.z > 0)
            EyeToPixel(vp, PerspectiveScale(vp), vp->eye_point, &vp->pen_x, &vp->pen_y);
        return;
    }
    vp->pen_x = vp->screen_x;
    vp->pen_y = vp->screen_y;
}

int View_LineTo(Viewport* vp, Point3 p) {
    ViewState& v = g.view;
    v.prev_point = v.last_point;
    v.last_point = p;

    double x1, y1, x2, y2;
    if (vp->VIEW == VIEW_3D) {
        Point3 e1 = vp->eye_point;
        View_Project(vp, p);
        Point3 e2 = vp->eye_point;
        if (e1.z <= 0 && e2.z <= 0) return 0;   // wholly behind the camera
        if (e1.z <= 0) CutAtNearPlane(&e1, e2);
        if (e2.z <= 0) CutAtNearPlane(&e2, e1);
        double f = PerspectiveScale(vp);
        EyeToPixel(vp, f, e1, &x1, &y1);
        EyeToPixel(vp, f, e2, &x2, &y2);
    } else {
        x1 = vp->pen_x;
        y1 = vp->pen_y;
        View_Project(vp, p);
        x2 = vp->screen_x;
        y2 = vp->screen_y;
    }
    vp->pen_x = x2;
    vp->pen_y = y2;
    // A line that draws nothing still lets the user stop the drawing: a
    // scene can be all off-screen or degenerate lines.
    const bool may_stop = vp->line_mode != LINE_HIT_TEST;
    if (!Finite4(x1, y1, x2, y2)) return may_stop ? UserStop() : 0;

    if (vp->extents_mode) {
        vp->ext_max_x = std::fmax(vp->ext_max_x, std::fmax(x1, x2));
        vp->ext_min_x = std::fmin(vp->ext_min_x, std::fmin(x1, x2));
        vp->ext_max_y = std::fmax(vp->ext_max_y, std::fmax(y1, y2));
        vp->ext_min_y = std::fmin(vp->ext_min_y, std::fmin(y1, y2));
        vp->extents_found = 1;
        return 0;
    }

    if (!ClipToRect(vp, &x1, &y1, &x2, &y2)) return may_stop ? UserStop() : 0;
    int ix1 = ToPixel(x1), iy1 = ToPixel(y1), ix2 = ToPixel(x2), iy2 = ToPixel(y2);

    if (vp->line_mode == LINE_HIT_TEST) return HitTest(vp, ix1, iy1, ix2, iy2);
    X11_MoveTo(ix1, iy1);
    X11_LineTo(ix2, iy2);
    if (vp->line_mode == LINE_INTERRUPTIBLE || v.interruptible) return EventWaiting();
    return UserStop();
}

// The rectangle's corners are pixels, not world points, so the pen's global
// last and previous points are left as they were.
int View_DrawPixelRect(Viewport* vp, int x1, int y1, int x2, int y2) {
    ViewState& v = g.view;
    Point3 last = v.last_point, prev = v.prev_point;
    int kind = vp->VIEW;
    vp->VIEW = VIEW_SCREEN;
    const Point3 corners[4] = {{(double)x2, (double)y1, 0},
                               {(double)x2, (double)y2, 0},
                               {(double)x1, (double)y2, 0},
                               {(double)x1, (double)y1, 0}};
    View_MoveTo(vp, {(double)x1, (double)y1, 0});
    int stop = 0;
    for (const Point3& c : corners)
        if ((stop = View_LineTo(vp, c))) break;
    vp->VIEW = kind;
    v.last_point = last;
    v.prev_point = prev;
    return stop;
}
