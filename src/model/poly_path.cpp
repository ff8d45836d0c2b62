// poly_path.cpp - plain polylines: drawing with the uniform cubic B-spline,
// the path that surfaces follow, its length and the point at a distance.
//
// A B-spline polyline (B-Spline set, at least 4 points) has count - 1 spans
// when open and count spans when closed; span k uses the control points
// P[k-1] .. P[k+2] (an open curve mirrors its end points, 2 P0 - P1 and
// 2 P[n-1] - P[n-2], so it starts at P0 and ends at P[n-1]; a closed one
// takes the indices cyclically). Anything with fewer points is straight.
//
// The path is walked point by point without being stored: drawing, length
// and one point at a distance cost no allocation. Code that wants many
// points along one path prepares a PathSampler once (its running lengths
// make each sample cost a step of a cursor, not a walk).
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "model/geometry.h"
#include "model/output.h"
#include "scene/mem.h"
#include "view/view_state.h"

namespace {

const int64_t kMaxPathPoints = 1 << 24;   // samples of one path, whatever the record says

double Dist(Point3 a, Point3 b) {
    Point3 d = Vec_Sub(b, a);
    return std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
}

bool IsSpline(const PolylineData& p) { return (p.poly_flags & POLY_BSPLINE) && p.count > 3; }
bool IsClosed(const PolylineData& p) { return (p.poly_flags & POLY_CLOSED) != 0; }
int SpanCount(const PolylineData& p) { return IsClosed(p) ? p.count : p.count - 1; }
int Steps(const PolylineData& p) { return std::clamp(p.segments, 1, (int)GEOM_MAX_SEGMENTS); }

// Control points of span s (0-based) of a B-spline polyline.
void SpanControls(const PolylineData& p, int s, Point3 q[4]) {
    const Point3* P = p.points;
    const int n = p.count;
    if (IsClosed(p)) {
        int k = s + 1;   // spans k = 1..count
        for (int i = 0; i < 4; i++) q[i] = P[(k - 1 + i) % n];
        return;
    }
    int k = s;           // spans k = 0..count-2
    q[0] = k == 0 ? Vec_Sub(Vec_Scale(P[0], 2), P[1]) : P[k - 1];
    q[1] = P[k];
    q[2] = P[k + 1];
    q[3] = k == n - 2 ? Vec_Sub(Vec_Scale(P[n - 1], 2), P[n - 2]) : P[k + 2];
}

// Steps per span for a path, lowered when the record would ask for a path
// longer than any drawing needs.
int PathSteps(const PolylineData& p) {
    int64_t steps = Steps(p);
    int64_t spans = SpanCount(p);
    if (spans * steps + 1 > kMaxPathPoints) steps = std::max<int64_t>(1, (kMaxPathPoints - 1) / spans);
    return (int)steps;
}

// Calls visit(point) for each point of the path in order, computing the
// B-spline samples on the way; stops early when visit returns true.
template <typename Visit>
void WalkPath(const PolylineData& p, Visit visit) {
    if (!p.points || p.count < 2) return;
    if (!IsSpline(p)) {
        for (int k = 0; k < p.count; k++)
            if (visit(p.points[k])) return;
        if (IsClosed(p)) visit(p.points[0]);
        return;
    }
    const int steps = PathSteps(p);
    const int spans = SpanCount(p);
    for (int s = 0; s < spans; s++) {
        Point3 q[4];
        SpanControls(p, s, q);
        // A span starts where the one before it ended: skip that point.
        for (int i = s == 0 ? 0 : 1; i <= steps; i++)
            if (visit(BSpline_Point(q[0], q[1], q[2], q[3], (double)i / steps))) return;
    }
}

}  // namespace

void Poly_Path(const PolylineData& p, std::vector<Point3>& out) {
    out.clear();
    int n = Poly_PathPoints(&p, nullptr);
    if (n <= 0) return;
    out.resize(n);
    Poly_PathPoints(&p, out.data());
}

Point3 BSpline_Point(Point3 q0, Point3 q1, Point3 q2, Point3 q3, double t) {
    auto one = [t](double c0, double c1, double c2, double c3) {
        double a3 = (3 * (c1 - c2) - c0 + c3) / 6;
        double a2 = (c0 - 2 * c1 + c2) / 2;
        double a1 = (c2 - c0) / 2;
        double a0 = (4 * c1 + c0 + c2) / 6;
        return a0 + t * (a1 + t * (a2 + t * a3));
    };
    return Point3{one(q0.x, q1.x, q2.x, q3.x), one(q0.y, q1.y, q2.y, q3.y), one(q0.z, q1.z, q2.z, q3.z)};
}

int Poly_DrawPlain(const PolylineData* poly) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    const PolylineData& p = *poly;
    if (IsSpline(p)) {   // each span from t = 0 to 1, as drawn; the path skips the repeated joints
        const int steps = PathSteps(p);
        bool first = true;
        for (int s = 0; s < SpanCount(p); s++) {
            Point3 q[4];
            SpanControls(p, s, q);
            for (int i = 0; i <= steps; i++) {
                Point3 pt = BSpline_Point(q[0], q[1], q[2], q[3], (double)i / steps);
                if (first) {
                    Output_MoveTo(pt);
                    first = false;
                } else if (Output_LineTo(pt)) {
                    return 1;
                }
            }
        }
        if (!(p.poly_flags & POLY_FRAME)) return 0;
    }
    Output_MoveTo(p.points[0]);
    for (int k = 1; k < p.count; k++)
        if (Output_LineTo(p.points[k])) return 1;
    if (IsClosed(p) && Output_LineTo(p.points[0])) return 1;
    return 0;
}

int Poly_PathPoints(const PolylineData* poly, Point3* out) {
    if (!poly || !poly->points || poly->count < 2) return 0;
    const PolylineData& p = *poly;
    if (out) {
        int at = 0;
        WalkPath(p, [&](Point3 pt) {
            out[at++] = pt;
            return false;
        });
    }
    return IsSpline(p) ? SpanCount(p) * PathSteps(p) + 1 : p.count + (IsClosed(p) ? 1 : 0);
}

double Poly_Length(const PolylineData* poly) {
    if (!poly) return 0;
    double len = 0;
    bool first = true;
    Point3 last{0, 0, 0};
    WalkPath(*poly, [&](Point3 pt) {
        if (!first) len += Dist(last, pt);
        first = false;
        last = pt;
        return false;
    });
    return len;
}

Point3 Poly_PointAt(const PolylineData* poly, double s) {
    if (!poly || !poly->points || poly->count < 1) return Point3{0, 0, 0};
    Point3 last = poly->points[0];   // a single point is its own path
    bool first = true;
    WalkPath(*poly, [&](Point3 pt) {
        if (first) {
            first = false;
            last = pt;
            return !(s > 0);   // before the start (or NaN): the first point
        }
        const double d = Dist(last, pt);
        if (s <= d && d > 0) {
            last = Vec_Add(last, Vec_Scale(Vec_Sub(pt, last), s / d));
            return true;
        }
        s -= d;
        last = pt;
        return false;
    });
    return last;
}

int PathSampler_Init(PathSampler* s, const PolylineData* poly) {
    *s = PathSampler{};
    const int n = Poly_PathPoints(poly, nullptr);
    if (n <= 0) {   // fewer than 2 points: every sample is the point (or the origin)
        s->single = poly && poly->points && poly->count > 0 ? poly->points[0] : Point3{0, 0, 0};
        return 1;
    }
    s->points = (Point3*)Mem_Alloc(sizeof(Point3) * (size_t)n);
    if (s->points) s->at = (double*)Mem_Alloc(sizeof(double) * (size_t)n);
    if (!s->at) {
        PathSampler_Free(s);
        return 0;
    }
    Poly_PathPoints(poly, s->points);
    s->count = n;
    s->at[0] = 0;
    for (int i = 1; i < n; i++) s->at[i] = s->at[i - 1] + Dist(s->points[i - 1], s->points[i]);
    s->length = s->at[n - 1];
    s->single = s->points[0];
    return 1;
}

// The same rule as Poly_PointAt: the first piece of positive length whose
// end lies at or beyond d. The cursor only moves forward for samples taken
// in order; an earlier one is found by bisection.
Point3 PathSampler_At(PathSampler* s, double d) {
    if (s->count < 2 || !(d > 0)) return s->single;
    if (d > s->length) return s->points[s->count - 1];
    const int last = s->count - 2;   // pieces 0..last
    int i = s->cursor;
    if (i > 0 && d <= s->at[i]) {
        int lo = 0, hi = i;   // the piece lies in [lo, hi]
        while (lo < hi) {
            int mid = lo + (hi - lo) / 2;
            if (s->at[mid + 1] >= d) hi = mid;
            else lo = mid + 1;
        }
        i = lo;
    }
    while (i < last && (s->at[i + 1] < d || s->at[i + 1] == s->at[i])) i++;
    s->cursor = i;
    const double len = s->at[i + 1] - s->at[i];
    if (!(len > 0)) return s->points[i + 1];
    return Vec_Add(s->points[i], Vec_Scale(Vec_Sub(s->points[i + 1], s->points[i]), (d - s->at[i]) / len));
}

void PathSampler_Free(PathSampler* s) {
    Mem_Free(s->points);
    Mem_Free(s->at);
    s->points = nullptr;
    s->at = nullptr;
    s->count = 0;
}

bool Points_Match(Point3 a, Point3 b) {
    const double tol = 1e-6;
    return std::fabs(a.x - b.x) <= tol && std::fabs(a.y - b.y) <= tol && std::fabs(a.z - b.z) <= tol;
}

Point3 Poly_ToView(const Viewport* vp, Point3 local) {
    return Point3{local.x * vp->axis_h.x + local.y * vp->axis_v.x + local.z * vp->axis_d.x,
                  local.x * vp->axis_h.y + local.y * vp->axis_v.y + local.z * vp->axis_d.y,
                  local.x * vp->axis_h.z + local.y * vp->axis_v.z + local.z * vp->axis_d.z};
}
