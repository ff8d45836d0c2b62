// wf_io.cpp - little-endian value I/O shared by the work-file reader and writer.
#include "workfile/wf_io.h"

#include <cstdlib>
#include <cstring>

#include "state.h"

const char kMagic210[35] = "Quillmoor Sculptor 2.10 work file!";
const char kMagic20A[35] = "Quillmoor Sculptor 2.0A work file!";

namespace {

// Room for n more bytes in the buffer; the buffer is written out when full.
unsigned char* Room(WfOut* o, size_t n) {
    if (g.workfile.Write_Error) return nullptr;
    if (sizeof o->buf - o->used < n && !Wf_Flush(o)) return nullptr;
    unsigned char* at = o->buf + o->used;
    o->used += n;
    return at;
}

void EncodeU64(unsigned char* b, uint64_t v, int n) {
    for (int i = 0; i < n; i++) b[i] = static_cast<unsigned char>(v >> (8 * i));
}

uint64_t DecodeU64(const unsigned char* b, int n) {
    uint64_t v = 0;
    for (int i = n - 1; i >= 0; i--) v = (v << 8) | b[i];
    return v;
}

uint64_t Bits(double v) {
    uint64_t bits;
    memcpy(&bits, &v, 8);
    return bits;
}

// Reads more of the file behind what is left in the buffer; the number of
// bytes that came (0 at the end of the file).
size_t Refill(WfIn* in) {
    size_t rest = in->len - in->pos;
    memmove(in->buf, in->buf + in->pos, rest);
    in->pos = 0;
    in->len = rest;
    size_t got = 0;
    if (in->eof) {
    } else if (in->mem) {
        got = in->mem_size - in->mem_pos;
        if (got > sizeof in->buf - rest) got = sizeof in->buf - rest;
        memcpy(in->buf + rest, in->mem + in->mem_pos, got);
        in->mem_pos += got;
    } else {
        got = fread(in->buf + rest, 1, sizeof in->buf - rest, in->f);
    }
    in->len += got;
    return got;
}

// The next n bytes, or nullptr at the end of the file. Whatever is left
// when a read fails is dropped, so that every later read fails too.
const unsigned char* Take(WfIn* in, size_t n) {
    while (in->len - in->pos < n) {
        if (n > sizeof in->buf || !Refill(in)) {
            in->eof = 1;
            in->pos = in->len = 0;
            return nullptr;
        }
    }
    const unsigned char* at = in->buf + in->pos;
    in->pos += n;
    return at;
}

// A block for memory: compared, or appended (the block grows by doubling).
int ToMemory(WfMemory* m, const unsigned char* bytes, size_t n) {
    if (m->against) {
        if (m->compared + n > m->against_size || memcmp(m->against + m->compared, bytes, n) != 0)
            m->differs = 1;
        m->compared += n;
        return 1;
    }
    if (m->capacity - m->size < n) {
        size_t want = m->capacity ? m->capacity : (size_t)WF_BUFFER;
        while (want - m->size < n) want *= 2;
        // Plain heap, not Mem_: the scene's own allocation count stays the
        // commands'; Snapshot_Fail stands in for running out here.
        if (g.workfile.Snapshot_Fail > 0 && --g.workfile.Snapshot_Fail == 0) return 0;
        void* grown = realloc(m->data, want);
        if (!grown) return 0;
        m->data = static_cast<unsigned char*>(grown);
        m->capacity = want;
    }
    memcpy(m->data + m->size, bytes, n);
    m->size += n;
    return 1;
}

}  // namespace

int Wf_Flush(WfOut* o) {
    if (g.workfile.Write_Error) return 0;
    size_t n = o->used;
    o->used = 0;
    if (o->mem) {
        if (n && !ToMemory(o->mem, o->buf, n)) {
            g.workfile.Write_Error = 1;
            return 0;
        }
        return 1;
    }
    if (n && fwrite(o->buf, 1, n, o->f) != n) {
        g.workfile.Write_Error = 1;
        return 0;
    }
    return 1;
}

int Wf_PutByte(WfOut* f, int b) {
    unsigned char* at = Room(f, 1);
    if (!at) return 0;
    *at = static_cast<unsigned char>(b);
    return 1;
}

int Wf_PutInt32(WfOut* f, int32_t v) {
    unsigned char* at = Room(f, 4);
    if (!at) return 0;
    EncodeU64(at, static_cast<uint32_t>(v), 4);
    return 1;
}

int Wf_PutDouble(WfOut* f, double v) {
    unsigned char* at = Room(f, 8);
    if (!at) return 0;
    EncodeU64(at, Bits(v), 8);
    return 1;
}

int Wf_PutPoint(WfOut* f, const Point3& p) {
    unsigned char* at = Room(f, 24);
    if (!at) return 0;
    EncodeU64(at, Bits(p.x), 8);
    EncodeU64(at + 8, Bits(p.y), 8);
    EncodeU64(at + 16, Bits(p.z), 8);
    return 1;
}

int Wf_PutRaw(WfOut* f, const void* data, size_t n) {
    unsigned char* at = Room(f, n);
    if (!at) return 0;
    memcpy(at, data, n);
    return 1;
}

int Wf_GetByte(WfIn* f, int* out) {
    const unsigned char* b = Take(f, 1);
    if (!b) return 0;
    *out = static_cast<signed char>(*b);
    return 1;
}

int Wf_GetInt32(WfIn* f, int32_t* out) {
    const unsigned char* b = Take(f, 4);
    if (!b) return 0;
    *out = Wf_Int32At(b);
    return 1;
}

int Wf_GetDouble(WfIn* f, double* out) {
    const unsigned char* b = Take(f, 8);
    if (!b) return 0;
    *out = Wf_DoubleAt(b);
    return 1;
}

int Wf_GetPoint(WfIn* f, Point3* out) {
    const unsigned char* b = Take(f, 24);
    if (!b) return 0;
    *out = Wf_PointAt(b);
    return 1;
}

// Byte by byte as far as the file goes, so a field cut by the end of the
// file keeps the bytes before the cut.
int Wf_GetRaw(WfIn* f, void* data, size_t n) {
    unsigned char* out = static_cast<unsigned char*>(data);
    while (n > 0) {
        if (f->pos == f->len && !Refill(f)) {
            f->eof = 1;
            return 0;
        }
        size_t k = f->len - f->pos < n ? f->len - f->pos : n;
        memcpy(out, f->buf + f->pos, k);
        f->pos += k;
        out += k;
        n -= k;
    }
    return 1;
}

int32_t Wf_Int32At(const unsigned char* p) {
    return static_cast<int32_t>(static_cast<uint32_t>(DecodeU64(p, 4)));
}

double Wf_DoubleAt(const unsigned char* p) {
    uint64_t bits = DecodeU64(p, 8);
    double v;
    memcpy(&v, &bits, 8);
    return v;
}

Point3 Wf_PointAt(const unsigned char* p) {
    return {Wf_DoubleAt(p), Wf_DoubleAt(p + 8), Wf_DoubleAt(p + 16)};
}

void Wf_TextAt(char* dst, const unsigned char* src, size_t n) {
    memcpy(dst, src, n);
    dst[n] = '\0';
}
