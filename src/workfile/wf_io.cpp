// wf_io.cpp - little-endian value I/O shared by the work-file reader and writer.
#include "workfile/wf_io.h"

#include <cstring>

#include "state.h"

const char kMagic210[35] = "Quillmoor Sculptor 2.10 work file!";
const char kMagic20A[35] = "Quillmoor Sculptor 2.0A work file!";

namespace {

int PutBytes(FILE* f, const unsigned char* b, size_t n) {
    if (g.workfile.Write_Error) return 0;
    if (fwrite(b, 1, n, f) != n) {
        g.workfile.Write_Error = 1;
        return 0;
    }
    return 1;
}

void EncodeU64(unsigned char* b, uint64_t v, int n) {
    for (int i = 0; i < n; i++) b[i] = static_cast<unsigned char>(v >> (8 * i));
}

uint64_t DecodeU64(const unsigned char* b, int n) {
    uint64_t v = 0;
    for (int i = n - 1; i >= 0; i--) v = (v << 8) | b[i];
    return v;
}

}  // namespace

int Wf_PutByte(FILE* f, int b) {
    unsigned char c = static_cast<unsigned char>(b);
    return PutBytes(f, &c, 1);
}

int Wf_PutInt32(FILE* f, int32_t v) {
    unsigned char b[4];
    EncodeU64(b, static_cast<uint32_t>(v), 4);
    return PutBytes(f, b, 4);
}

int Wf_PutDouble(FILE* f, double v) {
    uint64_t bits;
    memcpy(&bits, &v, 8);
    unsigned char b[8];
    EncodeU64(b, bits, 8);
    return PutBytes(f, b, 8);
}

int Wf_PutPoint(FILE* f, const Point3& p) {
    return Wf_PutDouble(f, p.x) && Wf_PutDouble(f, p.y) && Wf_PutDouble(f, p.z);
}

int Wf_PutRaw(FILE* f, const void* data, size_t n) {
    const unsigned char* b = static_cast<const unsigned char*>(data);
    for (size_t i = 0; i < n; i++)
        if (!PutBytes(f, b + i, 1)) return 0;
    return 1;
}

int Wf_GetByte(FILE* f, int* out) {
    int c = getc(f);
    if (c == EOF) return 0;
    *out = static_cast<signed char>(c);
    return 1;
}

int Wf_GetInt32(FILE* f, int32_t* out) {
    unsigned char b[4];
    if (fread(b, 1, 4, f) != 4) return 0;
    *out = Wf_Int32At(b);
    return 1;
}

int Wf_GetDouble(FILE* f, double* out) {
    unsigned char b[8];
    if (fread(b, 1, 8, f) != 8) return 0;
    *out = Wf_DoubleAt(b);
    return 1;
}

int Wf_GetPoint(FILE* f, Point3* out) {
    unsigned char b[24];
    if (fread(b, 1, 24, f) != 24) return 0;
    *out = Wf_PointAt(b);
    return 1;
}

int Wf_GetRaw(FILE* f, void* data, size_t n) {
    unsigned char* b = static_cast<unsigned char*>(data);
    for (size_t i = 0; i < n; i++) {
        int c = getc(f);
        if (c == EOF) return 0;
        b[i] = static_cast<unsigned char>(c);
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
