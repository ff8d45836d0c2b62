// pov_triangles.cpp - triangle and smooth_triangle statements, vertex normals.
//
// The plain normal pass compares every vertex with every other triangle. In
// memory a sorted table of vertex cells finds the same candidates near
// linearly: with Vertex_Tolerance t = 0 a cell is the exact position, else
// a cube of side 4t, so every point within t of a vertex lies in the at most
// 2 x 2 x 2 cells that [v - 2t, v + 2t] touches. Candidates are then checked
// with Point_Same and summed in list order, so the results are those of the
// plain pass bit for bit. Without memory the plain pass reads the file.
#include "pov/pov_triangles.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/message.h"
#include "pov/pov.h"
#include "state.h"

namespace {

int Finite(Point3 p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

int TriFinite(const PovTri& t) { return Finite(t.v[0]) && Finite(t.v[1]) && Finite(t.v[2]); }

struct Source {
    const PovTriangleList& list;
    PovTri Get(long j) const {
        if (list.tris) return list.tris[j];
        PovTri t;
        fseek(list.file, j * 72L, SEEK_SET);
        if (fread(&t, sizeof t, 1, list.file) != 1) memset(&t, 0, sizeof t);
        return t;
    }
    long Group(long j) const { return list.group ? list.group[j] : j; }
    int Member(long j) const { return list.member ? list.member[j] : 1; }
    const Object* Owner(long j) const { return list.owner ? list.owner[j] : list.object; }
};

// A triangle that takes part in the normal pass.
int Contributes(const Source& s, long j, const PovTri& t) {
    return s.Member(j) && TriFinite(t) && !Triangle_IsDegenerate(t.v[0], t.v[1], t.v[2]);
}

uint64_t Mix(uint64_t h, double d) {
    uint64_t bits;
    d += 0.0;   // -0 and +0 share a cell
    memcpy(&bits, &d, sizeof bits);
    h ^= bits + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2);
    return h;
}

uint64_t CellHash(double cx, double cy, double cz) { return Mix(Mix(Mix(0, cx), cy), cz); }

struct CellEntry {
    uint64_t hash;
    long tri;
    bool operator<(const CellEntry& o) const { return hash < o.hash || (hash == o.hash && tri < o.tri); }
};

class VertexIndex {
  public:
    VertexIndex(const Source& s, double tol) : tol_(tol), cell_(4 * tol) {
        for (long j = 0; j < s.list.count; j++) {
            PovTri t = s.Get(j);
            if (!Contributes(s, j, t)) continue;
            for (const Point3& v : t.v) entries_.push_back({CellOf(v.x, v.y, v.z), j});
        }
        std::sort(entries_.begin(), entries_.end());
    }

    // Triangles with a vertex in a cell that a point within tolerance of v
    // can occupy, ascending, each once.
    void Candidates(Point3 v, std::vector<long>* out) const {
        out->clear();
        if (tol_ == 0) {
            Collect(CellHash(v.x, v.y, v.z), out);
        } else {
            double lo[3];
            int span[3];   // 1 or 2 cells per axis
            const double c[3] = {v.x, v.y, v.z};
            for (int k = 0; k < 3; k++) {
                lo[k] = std::floor((c[k] - 2 * tol_) / cell_);
                double hi = std::floor((c[k] + 2 * tol_) / cell_);
                span[k] = hi > lo[k] && lo[k] + 1 != lo[k] ? 2 : 1;
            }
            for (int a = 0; a < span[0]; a++)
                for (int b = 0; b < span[1]; b++)
                    for (int d = 0; d < span[2]; d++) Collect(CellHash(lo[0] + a, lo[1] + b, lo[2] + d), out);
        }
        std::sort(out->begin(), out->end());
        out->erase(std::unique(out->begin(), out->end()), out->end());
    }

  private:
    uint64_t CellOf(double x, double y, double z) const {
        if (tol_ == 0) return CellHash(x, y, z);
        return CellHash(std::floor(x / cell_), std::floor(y / cell_), std::floor(z / cell_));
    }
    void Collect(uint64_t h, std::vector<long>* out) const {
        auto it = std::lower_bound(entries_.begin(), entries_.end(), CellEntry{h, -1});
        for (; it != entries_.end() && it->hash == h; ++it) out->push_back(it->tri);
    }
    double tol_, cell_;
    std::vector<CellEntry> entries_;
};

// One triangle statement built in a buffer and written at once. Numbers are
// written as "%g" writes them, through std::to_chars with precision 6, which
// the C++ standard defines as printf's conversion and which is several times
// faster than it; these numbers are most of an exported surface's text.
class Statement {
  public:
    Statement& Text(const char* s) {
        size_t n = std::min(strlen(s), (size_t)(end_ - at_));
        memcpy(at_, s, n);
        at_ += n;
        return *this;
    }
    Statement& G(double v) {
        at_ = std::to_chars(at_, end_, v, std::chars_format::general, 6).ptr;
        return *this;
    }
    Statement& Vec(Point3 p) { return Text("<").G(p.x).Text(", ").G(p.y).Text(", ").G(p.z).Text(">"); }
    void Write() {
        Pov_Write(buf_, (size_t)(at_ - buf_));
        at_ = buf_;
    }

  private:
    char buf_[2048];   // three indented lines of six numbers, a texture name
    char* at_ = buf_;
    char* const end_ = buf_ + sizeof buf_;
};

// The "." shown per triangle written goes out in groups: a message is drawn
// and flushed to the display, which costs more than the triangle's text.
// The dots and where they wrap are the same as one message each.
class Progress {
  public:
    ~Progress() { Flush(); }
    void Dot() {
        if (++pending_ == kGroup) Flush();
    }
    void Flush() {
        if (pending_) Msg_Printf("%.*s", pending_, kDots);
        pending_ = 0;
    }

  private:
    static constexpr int kGroup = 64;   // well inside one 255-character message
    static constexpr char kDots[kGroup + 1] =
        "................................................................";
    static_assert(kDots[kGroup - 1] == '.', "a dot for every triangle of a group");
    int pending_ = 0;
};

int TouchesVertex(const PovTri& t, Point3 v) {
    return Point_Same(t.v[0], v) || Point_Same(t.v[1], v) || Point_Same(t.v[2], v);
}

Point3 VertexNormal(const Source& s, const VertexIndex* index, long i, const PovTri& ti, Point3 v,
                    std::vector<long>* scratch) {
    Point3 sum = Pov_FaceNormal(ti);
    int count = 1;
    auto add = [&](const PovTri& tj) {
        Point3 n = Pov_FaceNormal(tj);
        sum.x += n.x;
        sum.y += n.y;
        sum.z += n.z;
        count++;
    };
    long gi = s.Group(i);
    if (index) {
        if (Finite(v)) {
            index->Candidates(v, scratch);
            for (long j : *scratch) {
                if (s.Group(j) == gi) continue;
                PovTri tj = s.Get(j);
                if (TouchesVertex(tj, v)) add(tj);
            }
        }
    } else {
        for (long j = 0; j < s.list.count; j++) {
            if (s.Group(j) == gi) continue;
            PovTri tj = s.Get(j);
            if (Contributes(s, j, tj) && TouchesVertex(tj, v)) add(tj);
        }
    }
    return {sum.x / count, sum.y / count, sum.z / count};
}

}  // namespace

int Triangle_IsDegenerate(Point3 a, Point3 b, Point3 c) {
    double ux = a.x - b.x, uy = a.y - b.y, uz = a.z - b.z;
    double vx = c.x - b.x, vy = c.y - b.y, vz = c.z - b.z;
    double nx = uy * vz - uz * vy, ny = uz * vx - ux * vz, nz = ux * vy - uy * vx;
    return sqrt(nx * nx + ny * ny + nz * nz) < 1e-9;
}

int Point_Same(Point3 a, Point3 b) {
    double t = g.writer.Vertex_Tolerance;
    return fabs(a.x - b.x) <= t && fabs(a.y - b.y) <= t && fabs(a.z - b.z) <= t;
}

Point3 Pov_FaceNormal(const PovTri& t) {
    double ux = t.v[1].x - t.v[0].x, uy = t.v[1].y - t.v[0].y, uz = t.v[1].z - t.v[0].z;
    double vx = t.v[2].x - t.v[0].x, vy = t.v[2].y - t.v[0].y, vz = t.v[2].z - t.v[0].z;
    return {uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx};
}

long Pov_WriteTriangleList(const PovTriangleList& list) {
    Source s{list};
    const VertexIndex* index = nullptr;
    VertexIndex* built = nullptr;
    bool any_smooth = false;
    for (long j = 0; j < list.count && !any_smooth; j++)
        any_smooth = (s.Owner(j)->flags & Smooth_triangle) != 0;
    if (any_smooth && list.tris) index = built = new VertexIndex(s, g.writer.Vertex_Tolerance);

    std::vector<long> scratch;
    Statement out;
    Progress progress;
    long bad = 0;
    const char* indent = g.writer.Pov_Indent_String;
    for (long i = 0; i < list.count; i++) {
        PovTri t = s.Get(i);
        if (!TriFinite(t)) {
            bad++;
            continue;
        }
        if (Triangle_IsDegenerate(t.v[0], t.v[1], t.v[2])) continue;
        const Object* owner = s.Owner(i);
        if (owner->flags & Smooth_triangle) {
            static const char* const kLead[3] = {"    smooth_triangle {", "                     ",
                                                 "                     "};
            for (int k = 0; k < 3; k++) {
                Point3 v = t.v[k];
                Point3 n = VertexNormal(s, index, i, t, v, &scratch);
                out.Text(indent).Text(kLead[k]).Vec(v).Text(", ").Vec(n).Text(k < 2 ? "," : " ");
            }
        } else {
            out.Text(indent).Text("    triangle {").Vec(t.v[0]).Text(", ").Vec(t.v[1]).Text(", ");
            out.Vec(t.v[2]).Text(" ");
        }
        if (list.standalone && owner->texture[0]) out.Text(" texture { ").Text(owner->texture).Text(" } ");
        if (owner->flags & No_shadow) out.Text(" no_shadow ");
        out.Text("}").Write();
        progress.Dot();
    }
    progress.Flush();
    delete built;
    if (bad) Msg_Printf("\nWarning: %ld triangle(s) with invalid coordinates left out", bad);
    return bad;
}
