// recorder.h - recording consumers for the facet sink, installed in place of
// a mode's consumer, so that tests see exactly what a generator hands over.
#pragma once
#include <cmath>
#include <string>
#include <vector>

#include "model/geometry.h"
#include "model/output.h"
#include "test_support.h"

struct RecFacet {
    Point3 c[4];
    int n;
    int mask;
};
struct RecSegment {
    Point3 a, b;
};

struct Recording {
    std::vector<RecFacet> facets;
    std::vector<RecSegment> segments;   // lines, from the pen position
    std::vector<Point3> moves;
    Point3 pen{0, 0, 0};
    int stop_after_lines = -1;          // line_to answers 1 once this many were drawn
};

inline Recording& Rec() {
    static Recording r;
    return r;
}

namespace rec_hooks {
inline void Move(Point3 p) {
    Rec().moves.push_back(p);
    Rec().pen = p;
}
inline int Line(Point3 p) {
    Rec().segments.push_back({Rec().pen, p});
    Rec().pen = p;
    return Rec().stop_after_lines >= 0 && (int)Rec().segments.size() >= Rec().stop_after_lines;
}
inline int Facet(const Point3* c, int n, int mask) {
    RecFacet f{};
    for (int k = 0; k < n; k++) f.c[k] = c[k];
    f.n = n;
    f.mask = mask;
    Rec().facets.push_back(f);
    return 0;
}
// A recording consumer: lines always, facets when `facet` is given.
inline OutputConsumer Consumer(int on_screen, int (*facet)(const Point3*, int, int)) {
    OutputConsumer c{};
    c.on_screen = on_screen;
    c.move_to = Move;
    c.line_to = Line;
    c.facet = facet;
    return c;
}
}  // namespace rec_hooks

// Fixture: a layer to receive objects, a fresh recording.
class GeomTest : public QmrTest {
  protected:
    void SetUp() override {
        QmrTest::SetUp();
        Rec() = Recording{};
        ASSERT_NE(Layer_NewFirst(), nullptr);
    }
    // Facets as they are (like DXF), lines recorded too, mode 2.
    void UseFacets() {
        g.output.consumer[OUTPUT_DXF] = rec_hooks::Consumer(0, rec_hooks::Facet);
        g.output.Output_Mode = OUTPUT_DXF;
    }
    // Edges through the pen, as on screen, mode 0.
    void UseScreen() {
        g.output.consumer[OUTPUT_SCREEN] = rec_hooks::Consumer(1, nullptr);
        g.output.Output_Mode = OUTPUT_SCREEN;
    }
};

inline bool Near(Point3 a, Point3 b, double tol = 1e-9) {
    return std::fabs(a.x - b.x) <= tol && std::fabs(a.y - b.y) <= tol && std::fabs(a.z - b.z) <= tol;
}

inline std::string Str(Point3 p) {
    char buf[96];
    snprintf(buf, sizeof buf, "(%g, %g, %g)", p.x, p.y, p.z);
    return buf;
}

#define EXPECT_PT(actual, ex, ey, ez)                                                          \
    EXPECT_TRUE(Near((actual), Point3{(double)(ex), (double)(ey), (double)(ez)}, 1e-9))       \
        << "got " << Str(actual) << " want " << Str(Point3{(double)(ex), (double)(ey), (double)(ez)})

// Corners got[0..] against the points of `want`, in order.
inline void ExpectCorners(const Point3* got, std::initializer_list<Point3> want, int line) {
    int k = 0;
    for (Point3 w : want) {
        EXPECT_TRUE(Near(got[k], w, 1e-9))
            << "line " << line << ", corner " << k << ": got " << Str(got[k]) << " want " << Str(w);
        k++;
    }
}
#define EXPECT_CORNERS(facet, ...) ExpectCorners((facet).c, {__VA_ARGS__}, __LINE__)

// Count of drawn segments between a and b, either direction.
inline int SegmentCount(const std::vector<RecSegment>& segs, Point3 a, Point3 b) {
    int n = 0;
    for (const RecSegment& s : segs)
        if ((Near(s.a, a, 1e-9) && Near(s.b, b, 1e-9)) || (Near(s.a, b, 1e-9) && Near(s.b, a, 1e-9))) n++;
    return n;
}
