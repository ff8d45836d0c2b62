// pov_triangles.cpp - triangle and smooth_triangle statements, vertex normals.
//
// A smooth vertex normal sums the face normals of the triangles that have a
// vertex Point_Same as it, in list order. Comparing every vertex with every
// triangle (the plain pass) is quadratic. Two passes find the same
// candidates near linearly, through cells: with Vertex_Tolerance t = 0 a
// cell is the exact position, else a cube of side 4t, so every point within
// t of a vertex lies in the at most 2 x 2 x 2 cells that [v - 2t, v + 2t]
// touches.
//  - In memory (the spool loaded, or stand-alone triangles): the cells of
//    all vertices sorted, with a hash table over them, looked up for each
//    vertex written.
//  - Over the spool file, when it could not be loaded: every vertex is
//    sorted through temporary files under each cell near it, next to the
//    vertices to be written that lie in that cell, so each of those meets
//    all its candidates in one group. Their normals come out in cell order
//    and are sorted back into list order for writing.
// Candidates are checked with Point_Same and summed in list order, so both
// give the plain pass's results bit for bit. The plain pass is left for when
// not even the sorting memory (Sort_Budget) can be had.
#include "pov/pov_triangles.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/message.h"
#include "pov/pov.h"
#include "pov/pov_sort.h"
#include "state.h"

namespace {

int Finite(Point3 p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

int TriFinite(const PovTri& t) { return Finite(t.v[0]) && Finite(t.v[1]) && Finite(t.v[2]); }

struct Source {
    const PovTriangleList& list;
    // Any triangle; from the file, one record read where it lies.
    PovTri Get(long j) const {
        if (list.tris) return list.tris[j];
        PovTri t;
        if (pread(fileno(list.file), &t, sizeof t, (off_t)j * (off_t)sizeof t) != (ssize_t)sizeof t)
            memset(&t, 0, sizeof t);
        return t;
    }
    long Group(long j) const { return list.group ? list.group[j] : j; }
    int Member(long j) const { return list.member ? list.member[j] : 1; }
    const Object* Owner(long j) const { return list.owner ? list.owner[j] : list.object; }
};

// The triangles in list order; from the file, a block of records at a time.
class InOrder {
  public:
    explicit InOrder(const Source& s) : s_(s) {}
    PovTri Next() {
        if (s_.list.tris) return s_.list.tris[next_++];
        if (at_ == have_) {
            long k = std::min<long>(kBlock, s_.list.count - next_);
            ssize_t got = pread(fileno(s_.list.file), block_, k * sizeof(PovTri),
                                (off_t)next_ * (off_t)sizeof(PovTri));
            have_ = got > 0 ? (long)(got / (ssize_t)sizeof(PovTri)) : 0;
            at_ = 0;
            if (have_ == 0) {   // a short spool reads as zeros, as Get does
                next_++;
                return PovTri{};
            }
        }
        next_++;
        return block_[at_++];
    }

  private:
    static constexpr long kBlock = 512;
    const Source& s_;
    long next_ = 0;
    long at_ = 0, have_ = 0;
    PovTri block_[kBlock];
};

// A triangle that takes part in the normal pass.
int Contributes(const Source& s, long j, const PovTri& t) {
    return s.Member(j) && TriFinite(t) && !Triangle_IsDegenerate(t.v[0], t.v[1], t.v[2]);
}

// A triangle written with vertex normals.
int WrittenSmooth(const Source& s, long i, const PovTri& t) {
    return (s.Owner(i)->flags & Smooth_triangle) && TriFinite(t) &&
           !Triangle_IsDegenerate(t.v[0], t.v[1], t.v[2]);
}

// --- cells ---

uint64_t Mix(uint64_t h, double d) {
    uint64_t bits;
    d += 0.0;   // -0 and +0 share a cell
    memcpy(&bits, &d, sizeof bits);
    h ^= bits + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2);
    return h;
}

uint64_t CellHash(double cx, double cy, double cz) { return Mix(Mix(Mix(0, cx), cy), cz); }

// The cell that holds v.
uint64_t CellOf(Point3 v, double tol) {
    if (tol == 0) return CellHash(v.x, v.y, v.z);
    double size = 4 * tol;
    return CellHash(std::floor(v.x / size), std::floor(v.y / size), std::floor(v.z / size));
}

// The cells that a point within tol of v can lie in; returns how many (1..8).
int CellsNear(Point3 v, double tol, uint64_t out[8]) {
    if (tol == 0) {
        out[0] = CellHash(v.x, v.y, v.z);
        return 1;
    }
    const double size = 4 * tol, c[3] = {v.x, v.y, v.z};
    double lo[3];
    int span[3];   // 1 or 2 cells per axis
    for (int k = 0; k < 3; k++) {
        lo[k] = std::floor((c[k] - 2 * tol) / size);
        double hi = std::floor((c[k] + 2 * tol) / size);
        span[k] = hi > lo[k] && lo[k] + 1 != lo[k] ? 2 : 1;
    }
    int n = 0;
    for (int a = 0; a < span[0]; a++)
        for (int b = 0; b < span[1]; b++)
            for (int d = 0; d < span[2]; d++) out[n++] = CellHash(lo[0] + a, lo[1] + b, lo[2] + d);
    return n;
}

int TouchesVertex(const PovTri& t, Point3 v) {
    return Point_Same(t.v[0], v) || Point_Same(t.v[1], v) || Point_Same(t.v[2], v);
}

Point3 Mean(Point3 sum, int count) { return {sum.x / count, sum.y / count, sum.z / count}; }

// --- in memory ---

// The cells of all vertices, as 32-bit cell hashes next to the triangle in
// one 64-bit word, sorted; and a hash table from a cell to where its words
// start. Both stay small enough to be mostly in the cache, and a lookup is a
// probe or two where a binary search would miss the cache at every step.
// Two cells sharing a hash only add candidates, which Point_Same rejects.
class VertexIndex {
  public:
    VertexIndex(const Source& s, double tol) : tol_(tol) {
        words_.reserve(3 * (size_t)s.list.count);
        for (long j = 0; j < s.list.count; j++) {
            PovTri t = s.Get(j);
            if (!Contributes(s, j, t)) continue;
            for (const Point3& v : t.v) words_.push_back((uint64_t)Hash32(CellOf(v, tol)) << 32 | (uint32_t)j);
        }
        SortByHash();
        size_t groups = 0;
        for (size_t p = 0; p < words_.size(); p++) groups += p == 0 || HashOf(p) != HashOf(p - 1);
        size_t size = 16;
        while (size < 2 * groups) size *= 2;
        mask_ = (uint32_t)(size - 1);
        starts_.assign(size, Start{0, 0});
        for (size_t p = 0; p < words_.size(); p++) {
            if (p > 0 && HashOf(p) == HashOf(p - 1)) continue;
            uint32_t at = Slot(HashOf(p));
            while (starts_[at].first1) at = (at + 1) & mask_;
            starts_[at] = {HashOf(p), (uint32_t)p + 1};
        }
    }

    // Too many triangles for 32-bit numbers: no index (the plain pass).
    static bool Fits(long count) { return count < (1L << 31) / 3; }

    // Triangles with a vertex in a cell that a point within tolerance of v
    // can occupy, ascending, each once.
    void Candidates(Point3 v, std::vector<long>* out) const {
        out->clear();
        uint64_t cells[8];
        int n = CellsNear(v, tol_, cells);
        for (int c = 0; c < n; c++) Collect(Hash32(cells[c]), out);
        if (n > 1) std::sort(out->begin(), out->end());   // one cell's entries are in order
        out->erase(std::unique(out->begin(), out->end()), out->end());
    }

  private:
    struct Start {
        uint32_t hash;
        uint32_t first1;   // index of the cell's first word + 1; 0: empty slot
    };

    static uint32_t Hash32(uint64_t h) { return (uint32_t)(h ^ (h >> 32)); }
    uint32_t HashOf(size_t p) const { return (uint32_t)(words_[p] >> 32); }
    uint32_t Slot(uint32_t h) const { return (h * 0x9E3779B1u >> 7) & mask_; }

    // Stable radix sort on the hash half: triangles stay ascending per cell.
    void SortByHash() {
        std::vector<uint64_t> other(words_.size());
        for (int shift = 32; shift < 64; shift += 8) {
            size_t count[257] = {};
            for (uint64_t w : words_) count[((w >> shift) & 0xFF) + 1]++;
            for (int d = 0; d < 256; d++) count[d + 1] += count[d];
            for (uint64_t w : words_) other[count[(w >> shift) & 0xFF]++] = w;
            words_.swap(other);
        }
    }

    void Collect(uint32_t h, std::vector<long>* out) const {
        uint32_t at = Slot(h);
        while (starts_[at].first1 && starts_[at].hash != h) at = (at + 1) & mask_;
        if (!starts_[at].first1) return;
        for (size_t p = starts_[at].first1 - 1; p < words_.size() && HashOf(p) == h; p++)
            out->push_back((long)(uint32_t)words_[p]);
    }

    double tol_;
    std::vector<uint64_t> words_;   // cell hash << 32 | triangle
    std::vector<Start> starts_;     // open addressing, at most half full
    uint32_t mask_ = 0;
};

// Normal of vertex v of triangle i (ti) from the index, or by the plain pass
// over every triangle when there is none.
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
        index->Candidates(v, scratch);
        for (long j : *scratch) {
            if (s.Group(j) == gi) continue;
            PovTri tj = s.Get(j);
            if (TouchesVertex(tj, v)) add(tj);
        }
    } else {
        for (long j = 0; j < s.list.count; j++) {
            if (s.Group(j) == gi) continue;
            PovTri tj = s.Get(j);
            if (Contributes(s, j, tj) && TouchesVertex(tj, v)) add(tj);
        }
    }
    return Mean(sum, count);
}

// --- over the spool file ---

const int64_t kWritten = int64_t(1) << 60;   // keys from here on: vertices to be written

// A vertex filed under one cell: a candidate (key = its triangle j), or a
// vertex to be written (key = kWritten + 3 i + k), which sorts after the
// candidates of its cell.
struct CellVertex {
    uint64_t cell;
    int64_t key;
    int64_t group;   // of its triangle
    Point3 p;        // the vertex
    Point3 n;        // face normal of its triangle
};

struct ByCellThenKey {
    bool operator()(const CellVertex& a, const CellVertex& b) const {
        return a.cell < b.cell || (a.cell == b.cell && a.key < b.key);
    }
};

struct IndexedNormal {
    int64_t index;   // 3 i + k
    Point3 n;
};

struct ByIndex {
    bool operator()(const IndexedNormal& a, const IndexedNormal& b) const { return a.index < b.index; }
};

// The normals of all smooth vertices of a list read from the file, handed
// out in list order.
class SortedNormals {
  public:
    SortedNormals(const Source& s, double tol, size_t budget) : normals_(budget) {
        Pov_ExternalSort<CellVertex, ByCellThenKey> vertices(budget);
        if (!vertices.ok() || !normals_.ok()) return;
        InOrder tris(s);
        for (long j = 0; j < s.list.count && vertices.ok(); j++) {
            PovTri t = tris.Next();
            Point3 n = Pov_FaceNormal(t);
            if (Contributes(s, j, t)) {
                for (const Point3& u : t.v) {
                    uint64_t cells[8];
                    int k = CellsNear(u, tol, cells);
                    for (int c = 0; c < k; c++) vertices.Add({cells[c], j, s.Group(j), u, n});
                }
            }
            if (WrittenSmooth(s, j, t))
                for (int k = 0; k < 3; k++)
                    vertices.Add({CellOf(t.v[k], tol), kWritten + 3 * j + k, s.Group(j), t.v[k], n});
        }
        if (vertices.Finish()) Join(&vertices);
        ok_ = vertices.ok() && normals_.Finish();
    }

    bool ok() const { return ok_; }

    // The normal of vertex k of triangle i; asked in list order.
    bool Next(long i, int k, Point3* n) {
        IndexedNormal r;
        if (!normals_.Next(&r) || r.index != 3 * (int64_t)i + k) return false;
        *n = r.n;
        return true;
    }

  private:
    // Per cell: the candidates first (ascending triangle), then the vertices
    // to be written, each summing the candidates that touch it.
    void Join(Pov_ExternalSort<CellVertex, ByCellThenKey>* vertices) {
        std::vector<CellVertex> candidates;
        uint64_t cell = 0;
        CellVertex r;
        while (vertices->Next(&r)) {
            if (r.cell != cell) {
                candidates.clear();
                cell = r.cell;
            }
            if (r.key < kWritten) {
                candidates.push_back(r);
                continue;
            }
            Point3 sum = r.n;
            int count = 1;
            for (size_t a = 0; a < candidates.size();) {
                size_t b = a;   // [a, b): the vertices of one triangle in this cell
                bool touches = false;
                for (; b < candidates.size() && candidates[b].key == candidates[a].key; b++)
                    touches = touches || Point_Same(candidates[b].p, r.p);
                if (touches && candidates[a].group != r.group) {
                    sum.x += candidates[a].n.x;
                    sum.y += candidates[a].n.y;
                    sum.z += candidates[a].n.z;
                    count++;
                }
                a = b;
            }
            if (!normals_.Add({r.key - kWritten, Mean(sum, count)})) return;
        }
    }

    Pov_ExternalSort<IndexedNormal, ByIndex> normals_;
    bool ok_ = false;
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
    const double tol = g.writer.Vertex_Tolerance;
    bool any_smooth = false;
    for (long j = 0; j < list.count && !any_smooth; j++)
        any_smooth = (s.Owner(j)->flags & Smooth_triangle) != 0;
    VertexIndex* index = nullptr;
    SortedNormals* sorted = nullptr;
    if (any_smooth && list.tris && VertexIndex::Fits(list.count)) {
        index = new VertexIndex(s, tol);
        g.writer.Normal_Pass = NORMALS_INDEXED;
    }
    if (any_smooth && !list.tris) {
        sorted = new SortedNormals(s, tol, g.writer.Sort_Budget);
        g.writer.Normal_Pass = NORMALS_SORTED;
        if (!sorted->ok()) {   // no memory or no temporary files: the plain pass
            delete sorted;
            sorted = nullptr;
            g.writer.Normal_Pass = NORMALS_PLAIN;
        }
    }

    InOrder tris(s);
    std::vector<long> scratch;
    Statement out;
    Progress progress;
    long bad = 0;
    const char* indent = g.writer.Pov_Indent_String;
    for (long i = 0; i < list.count; i++) {
        PovTri t = tris.Next();
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
                Point3 v = t.v[k], n;
                if (!sorted || !sorted->Next(i, k, &n)) {
                    n = VertexNormal(s, index, i, t, v, &scratch);
                    if (sorted) g.writer.Normal_Pass = NORMALS_PLAIN;   // the sorted ones ran out
                }
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
    delete index;
    delete sorted;
    if (bad) Msg_Printf("\nWarning: %ld triangle(s) with invalid coordinates left out", bad);
    return bad;
}
