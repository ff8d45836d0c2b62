// wf_io.h - little-endian value I/O shared by the work-file reader and writer.
//
// Writes share g.workfile.Write_Error: once one write has failed, every later
// write does nothing and returns 0, so a save checks the flag once at the end.
// Reads return 0 at end of file (the value is then left as it was).
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "scene/object.h"

extern const char kMagic210[35];
extern const char kMagic20A[35];

int Wf_PutByte(FILE* f, int b);
int Wf_PutInt32(FILE* f, int32_t v);
int Wf_PutDouble(FILE* f, double v);
int Wf_PutPoint(FILE* f, const Point3& p);
int Wf_PutRaw(FILE* f, const void* data, size_t n);   // one byte per call

int Wf_GetByte(FILE* f, int* out);           // sign-extended: -128..127
int Wf_GetInt32(FILE* f, int32_t* out);
int Wf_GetDouble(FILE* f, double* out);
int Wf_GetPoint(FILE* f, Point3* out);
int Wf_GetRaw(FILE* f, void* data, size_t n);   // one byte per call

// Little-endian decoding of values inside a raw block (2.0A records).
int32_t Wf_Int32At(const unsigned char* p);
double Wf_DoubleAt(const unsigned char* p);
Point3 Wf_PointAt(const unsigned char* p);

// Copies a fixed-width text field of n bytes into dst (size >= n+1), always
// terminated.
void Wf_TextAt(char* dst, const unsigned char* src, size_t n);
