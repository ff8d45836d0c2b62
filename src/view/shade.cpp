// shade.cpp - the shaded view: lighting, projection, clipping and the
// depth-buffered fill of each polygon.
//
// A polygon is lit by its normal against the active viewport's UP vector,
// projected (camera space in the 3D view, View_Project elsewhere), cut to
// the camera's near plane and to the viewport rectangle, and then drawn in
// two steps. Its outline is walked with Bresenham steps: each row keeps
// its leftmost and rightmost outline pixel in the edge tables, and every
// outline pixel nearer than the depth buffer is plotted - in the edge
// colour for the facet's visible edges, in the face colour for the others
// and for the cuts along the rectangle. Then each row is filled between
// its two ends where the face is nearer.
//
// Invariants: every pixel touched lies inside the viewport rectangle
// (clipping comes first, so no walk is longer than the rectangle); a pixel
// on a polygon's own outline carries that polygon's serial in the stamp
// buffer and its fill leaves it alone, so rounding between the outline's
// depths and the span's depths can never eat the polygon's edges. Depths
// are smaller for nearer points; the buffer starts at 999999.
#include "view/shade.h"

#include <cmath>
#include <cstdlib>

#include "gfx/gfx.h"
#include "gfx/screen.h"
#include "scene/mem.h"
#include "state.h"
#include "view/view_draw.h"
#include "view/viewport.h"

namespace {

const float FAR_DEPTH = 999999.0f;
const double NEAR_DEPTH = 1e-7;     // camera-space depth the 3D view cuts polygons at
const unsigned PROGRESS_EVERY = 11; // polygons per progress mark
const char kSpinner[] = "|/-\\";
const int CLIP_MAX = 1024;          // corners after five cuts of a SHADE_POLY_MAX polygon (at most 16 x 2^5)

// A corner on its way to the screen: pixel position (camera x and y before
// the 3D view's projection), depth, and whether the edge leaving it is drawn.
struct Corner {
    double x, y, d;
    int edge;
};

Corner Lerp(const Corner& a, const Corner& b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, a.d + (b.d - a.d) * t, a.edge};
}

// Keeps the part of the polygon where value(corner) >= limit (sign 1) or
// <= limit (sign -1). A cut that leaves the polygon starts an edge along
// the boundary, which is never drawn; one that enters keeps the flag of the
// edge it lies on.
int Clip(const Corner* in, int n, Corner* out, int axis, double limit, int sign) {
    auto value = [axis](const Corner& c) { return axis == 0 ? c.x : axis == 1 ? c.y : c.d; };
    int m = 0;
    for (int i = 0; i < n && m + 2 <= CLIP_MAX; i++) {
        const Corner& s = in[i];
        const Corner& e = in[(i + 1) % n];
        const double vs = value(s), ve = value(e);
        const bool sIn = sign * (vs - limit) >= 0, eIn = sign * (ve - limit) >= 0;
        if (sIn) out[m++] = s;
        if (sIn != eIn) {
            Corner c = Lerp(s, e, (limit - vs) / (ve - vs));
            if (axis == 0) c.x = limit;   // exactly on the boundary despite rounding
            else if (axis == 1) c.y = limit;
            else c.d = limit;
            c.edge = sIn ? 0 : s.edge;
            out[m++] = c;
        }
    }
    return m;
}

// The world direction towards the viewer of a flat view: axis_d, turned
// by PITCH and HEADING in a WORLD view the way View_Project turns points.
Point3 ViewerAxis(const Viewport* vp) {
    if (!vp->WORLD) return vp->axis_d;
    const double sh = vp->sin_heading, ch = vp->cos_heading;
    const Point3 up = Vec_Add(Vec_Scale(vp->axis_h, sh), Vec_Scale(vp->axis_v, ch));
    return Vec_Sub(Vec_Scale(vp->axis_d, vp->cos_pitch), Vec_Scale(up, vp->sin_pitch));
}

// Normal of the polygon (Newell's sum, which is the cross product of two
// edges for a triangle and stays right for a quad with a repeated corner),
// normalised unless its length is 1e-10 or less.
Point3 Normal(const Point3* p, int n) {
    Point3 s{0, 0, 0};
    for (int i = 0; i < n; i++) {
        const Point3& a = p[i];
        const Point3& b = p[(i + 1) % n];
        s.x += (a.y - b.y) * (a.z + b.z);
        s.y += (a.z - b.z) * (a.x + b.x);
        s.z += (a.x - b.x) * (a.y + b.y);
    }
    double len = Vec_Length(s);
    if (!(len > 1e-10)) len = 1;
    return Vec_Scale(s, 1 / len);
}

// Draws into the screen and the buffers of one run.
class Painter {
  public:
    explicit Painter(ShadeRun& r) : r_(r) {}

    // One outline edge, plotted in `colour` where it is nearest.
    void Walk(const Corner& a, const Corner& b, int colour) {
        int x0 = Column(a.x), y0 = Row(a.y);
        const int x1 = Column(b.x), y1 = Row(b.y);
        const int dx = std::abs(x1 - x0), dy = std::abs(y1 - y0);
        const int sx = x1 >= x0 ? 1 : -1, sy = y1 >= y0 ? 1 : -1;
        const int steps = dx > dy ? dx : dy;
        int err = dx - dy;
        for (int i = 0;; i++) {
            const double d = steps ? a.d + (b.d - a.d) * i / steps : a.d;
            Outline(x0, y0, d, colour);
            if (i >= steps) break;
            const int e2 = 2 * err;
            if (e2 > -dy) {
                err -= dy;
                x0 += sx;
            }
            if (e2 < dx) {
                err += dx;
                y0 += sy;
            }
        }
    }

    // Fills every recorded row between its ends, then clears the tables.
    void Fill(int colour) {
        for (int y = top_; y <= bottom_; y++) {
            ShadeSpan& L = r_.left[y];
            ShadeSpan& R = r_.right[y];
            if (L.x <= R.x) FillRow(y, L, R, colour);
            L.x = r_.stride;
            R.x = -1;
        }
        ResetRows();
    }

  private:
    int Column(double x) const { return Clamp((int)x, r_.rect[0], r_.rect[2]); }
    int Row(double y) const { return Clamp((int)y, r_.rect[1], r_.rect[3]); }
    static int Clamp(int v, int lo, int hi) { return v < lo ? lo : v > hi ? hi : v; }

    void Outline(int x, int y, double d, int colour) {
        ShadeSpan& L = r_.left[y];
        ShadeSpan& R = r_.right[y];
        if (x < L.x) L = {x, d};
        if (x > R.x) R = {x, d};
        if (y < top_) top_ = y;
        if (y > bottom_) bottom_ = y;
        const size_t at = (size_t)y * r_.stride + x;
        if (r_.stamp[at] == r_.serial) return;   // drawn already by an edge of this polygon
        r_.stamp[at] = r_.serial;
        if ((float)d < r_.depth[at]) {
            r_.depth[at] = (float)d;
            Plot(x, y, colour);
        }
    }

    void FillRow(int y, const ShadeSpan& L, const ShadeSpan& R, int colour) {
        const double slope = R.x > L.x ? (R.depth - L.depth) / (R.x - L.x) : 0;
        float* depth = r_.depth + (size_t)y * r_.stride;
        const unsigned* stamp = r_.stamp + (size_t)y * r_.stride;
        int run = -1;   // first column of the run being filled
        for (int x = L.x; x <= R.x; x++) {
            const float d = (float)(L.depth + slope * (x - L.x));
            if (stamp[x] != r_.serial && d < depth[x]) {
                depth[x] = d;
                if (run < 0) run = x;
            } else if (run >= 0) {
                Span(run, x - 1, y, colour);
                run = -1;
            }
        }
        if (run >= 0) Span(run, R.x, y, colour);
    }

    void Plot(int x, int y, int colour) {
        SetColour(colour);
        X11_PutPixel(x, y);
    }
    // A row of pixels in one call: one request to the X server.
    void Span(int x1, int x2, int y, int colour) {
        SetColour(colour);
        X11_Rectangle(3, x1, y, x2, y);
    }
    void SetColour(int colour) {
        if (colour != current_) X11_SetColor(colour);
        current_ = colour;
    }
    void ResetRows() { top_ = r_.rows, bottom_ = -1; }

    ShadeRun& r_;
    int top_ = 1 << 30, bottom_ = -1;   // rows the outline touched
    int current_ = -1;                  // colour last set
};

void ShowProgress(ShadeRun& r) {
    if (!g.screen.open) return;
    const int x = g.screen.msgColumn, y = Screen_MessageLineY(1);
    const int w = X11_TextWidth("|");
    if (x + w > g.screen.width) return;
    const char mark[2] = {kSpinner[r.spinner % 4], '\0'};
    Screen_Fill(g.config.colors.background, x, y, x + w - 1, y + SCREEN_LINE - 1);
    Screen_Text(g.config.colors.foreground, x, y + 1, mark);
    r.spinner++;
}

void HideProgress(const ShadeRun& r) {
    if (!g.screen.open || r.spinner == 0) return;
    const int x = g.screen.msgColumn, y = Screen_MessageLineY(1);
    const int w = X11_TextWidth("|");
    if (x + w <= g.screen.width)
        Screen_Fill(g.config.colors.background, x, y, x + w - 1, y + SCREEN_LINE - 1);
}

}  // namespace

int Shade_Index(Point3 normal, int colour) {
    Point3 L = g.view.Active_Viewport.UP;
    const double len = Vec_Length(L);
    L = len > 0 && std::isfinite(len) ? Vec_Scale(L, 1 / len) : Point3{0, 1, 0};
    int ramp = colour == 0 ? 15 : colour > 15 ? colour >> 4 : colour;
    if (ramp < 1 || ramp > 15) ramp = 15;
    double lit = 7.5 * Vec_Dot(normal, L) + 7.75;
    if (!(lit >= 0)) lit = 0;   // NaN too
    int shade = (int)lit;
    if (shade > 15) shade = 15;
    return shade + 16 * ramp;
}

int Shade_Begin() {
    ShadeRun& r = g.shading;
    Shade_End();
    const int W = g.screen.width, H = g.screen.height;
    const size_t cells = (size_t)(W + 1) * (size_t)(H + 1);
    r.depth = (float*)Mem_Alloc(cells * sizeof(float));
    r.stamp = (unsigned*)Mem_Alloc(cells * sizeof(unsigned));
    r.left = (ShadeSpan*)Mem_Alloc((size_t)(H + 1) * sizeof(ShadeSpan));
    r.right = (ShadeSpan*)Mem_Alloc((size_t)(H + 1) * sizeof(ShadeSpan));
    if (!r.depth || !r.stamp || !r.left || !r.right) {
        Shade_End();
        return 0;
    }
    r.stride = W + 1;
    r.rows = H + 1;
    for (size_t i = 0; i < cells; i++) {
        r.depth[i] = FAR_DEPTH;
        r.stamp[i] = 0;
    }
    for (int y = 0; y <= H; y++) {
        r.left[y] = {W + 1, 0};
        r.right[y] = {-1, 0};
    }
    const Viewport& vp = g.view.Active_Viewport;
    auto clamp = [](double v, int hi) { return v < 0 ? 0 : v > hi ? hi : (int)v; };
    r.rect[0] = clamp(vp.rect_left, W - 1);
    r.rect[1] = clamp(vp.rect_top, H - 1);
    r.rect[2] = clamp(vp.rect_right, W - 1);
    r.rect[3] = clamp(vp.rect_bottom, H - 1);
    r.serial = 0;
    r.spinner = 0;
    r.poly_mask = -1;
    return 1;
}

void Shade_End() {
    ShadeRun& r = g.shading;
    HideProgress(r);
    Mem_Free(r.depth);
    Mem_Free(r.stamp);
    Mem_Free(r.left);
    Mem_Free(r.right);
    r.depth = nullptr;
    r.stamp = nullptr;
    r.left = r.right = nullptr;
    r.spinner = 0;
}

void Shade_Polygon(int n) {
    ShadeRun& r = g.shading;
    if (!r.depth || n < 3) return;
    if (n > SHADE_POLY_MAX) n = SHADE_POLY_MAX;
    if (++r.serial % PROGRESS_EVERY == 0) ShowProgress(r);

    Viewport* vp = &g.view.Active_Viewport;
    const ShadeSettings& s = g.shade;
    const int layer = X11_GetColor();   // the traversal set the layer's drawing colour
    Point3 normal = Normal(r.poly, n);

    static Corner a[CLIP_MAX], b[CLIP_MAX];
    int m = n;
    int lit;
    if (vp->VIEW == VIEW_3D) {
        Point3 c{0, 0, 0};
        for (int i = 0; i < n; i++) c = Vec_Add(c, r.poly[i]);
        c = Vec_Scale(c, 1.0 / n);
        if (Vec_Dot(normal, Vec_Sub(c, vp->CAM)) > 0) normal = Vec_Scale(normal, -1);
        lit = Shade_Index(normal, layer);
        for (int i = 0; i < n; i++) {
            View_Project(vp, r.poly[i]);
            a[i] = {vp->eye_point.x, vp->eye_point.y, vp->eye_point.z, (r.poly_mask >> i) & 1};
        }
        m = Clip(a, m, b, 2, NEAR_DEPTH, 1);
        const double f = View_PerspectiveScale(vp);
        for (int i = 0; i < m; i++) {
            a[i] = b[i];
            a[i].x = vp->screen_cx - f * b[i].x / b[i].d;
            a[i].y = vp->screen_cy + vp->half_height_px * b[i].y / b[i].d;
        }
    } else {
        const Point3 D = ViewerAxis(vp);
        const int front = Shade_Index(normal, layer), back = Shade_Index(Vec_Scale(normal, -1), layer);
        lit = Vec_Dot(normal, D) >= 0 ? front : back;
        for (int i = 0; i < n; i++) {
            View_Project(vp, r.poly[i]);
            a[i] = {vp->screen_x, vp->screen_y, -Vec_Dot(r.poly[i], D), (r.poly_mask >> i) & 1};
        }
    }
    for (int i = 0; i < m; i++)
        if (!std::isfinite(a[i].x) || !std::isfinite(a[i].y) || !std::isfinite(a[i].d)) return;

    m = Clip(a, m, b, 0, r.rect[0], 1);
    m = Clip(b, m, a, 0, r.rect[2], -1);
    m = Clip(a, m, b, 1, r.rect[1], 1);
    m = Clip(b, m, a, 1, r.rect[3], -1);
    if (m == 0) return;

    int face, edge;
    switch (s.Shade_Type) {
        case 0: face = lit, edge = s.Shade_UseEdge ? s.Edge_Color : layer; break;
        case 1: face = edge = lit; break;
        case 3: face = layer, edge = s.Edge_Color; break;
        default: face = s.Face_Color, edge = layer; break;
    }
    Painter p(r);
    // Drawn edges first, so that where they meet the others they win.
    for (int i = 0; i < m; i++)
        if (a[i].edge) p.Walk(a[i], a[(i + 1) % m], edge);
    for (int i = 0; i < m; i++)
        if (!a[i].edge) p.Walk(a[i], a[(i + 1) % m], face);
    p.Fill(face);
    X11_SetColor(layer);
}

int Shade_Facet(const Point3* corner, int n, int mask) {
    ShadeRun& r = g.shading;
    if (n > SHADE_POLY_MAX) n = SHADE_POLY_MAX;
    for (int i = 0; i < n; i++) r.poly[i] = View_LayerPoint(corner[i]);
    r.poly_mask = mask;
    Shade_Polygon(n);
    return 0;
}
