// wf_io.h - little-endian value I/O shared by the work-file reader and writer.
//
// Both sides go through a buffer of their own, so a value costs a copy, not
// a library call: a save encodes into WfOut and writes it in 64 KiB blocks,
// a load reads 64 KiB blocks into WfIn and decodes from there.
//
// Writes share g.workfile.Write_Error: once one write has failed, every later
// write does nothing and returns 0, so a save checks the flag once at the end
// (after Wf_Flush). A block that cannot be written sets the flag.
// Reads return 0 at end of file (the value is then left as it was); after
// that every read fails and WfIn::eof is set, as feof would be.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "scene/object.h"

extern const char kMagic210[35];
extern const char kMagic20A[35];

enum { WF_BUFFER = 1 << 16 };

// Where a writer without a file puts its bytes: kept in a growing block
// (recording), or only compared with bytes kept before (comparing, while
// `against` is set), which allocates nothing.
struct WfMemory {
    unsigned char* data = nullptr;         // recording: Mem_ block, `size` bytes used
    size_t size = 0, capacity = 0;
    const unsigned char* against = nullptr; // comparing: the bytes to match
    size_t against_size = 0;
    size_t compared = 0;                   // bytes compared so far
    int differs = 0;                       // a compared byte (or the length) differed
};

struct WfOut {
    FILE* f = nullptr;
    WfMemory* mem = nullptr;         // set instead of f: writes go to memory
    size_t used = 0;                 // bytes waiting in buf
    unsigned char buf[WF_BUFFER];
};

struct WfIn {
    FILE* f = nullptr;
    const unsigned char* mem = nullptr;   // read from memory instead of f
    size_t mem_size = 0, mem_pos = 0;
    size_t pos = 0, len = 0;         // buf[pos..len) is read and not yet taken
    int eof = 0;                     // a read went past the end (or failed)
    unsigned char buf[WF_BUFFER];
};

int Wf_PutByte(WfOut* f, int b);
int Wf_PutInt32(WfOut* f, int32_t v);
int Wf_PutDouble(WfOut* f, double v);
int Wf_PutPoint(WfOut* f, const Point3& p);
int Wf_PutRaw(WfOut* f, const void* data, size_t n);   // n <= WF_BUFFER
// Writes what is buffered; 0 (and the error flag set) when that fails.
int Wf_Flush(WfOut* f);

int Wf_GetByte(WfIn* f, int* out);           // sign-extended: -128..127
int Wf_GetInt32(WfIn* f, int32_t* out);
int Wf_GetDouble(WfIn* f, double* out);
int Wf_GetPoint(WfIn* f, Point3* out);
int Wf_GetRaw(WfIn* f, void* data, size_t n);   // n <= WF_BUFFER

// Little-endian decoding of values inside a raw block (2.0A records).
int32_t Wf_Int32At(const unsigned char* p);
double Wf_DoubleAt(const unsigned char* p);
Point3 Wf_PointAt(const unsigned char* p);

// Copies a fixed-width text field of n bytes into dst (size >= n+1), always
// terminated.
void Wf_TextAt(char* dst, const unsigned char* src, size_t n);
