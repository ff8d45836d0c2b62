// field.h - the line-field reader shared by every text format of the program.
//
// A line NAME(f1,f2,...) yields NAME as field 0 and f1, f2 ... as fields 1, 2
// ...; blanks outside double quotes are removed, quotes are dropped, "//"
// starts a comment, and %NAME% and ~ are expanded from the environment.
#pragma once
#include <cstddef>

enum { FIELD_MAX = 256 };   // size of a field buffer, terminator included

// Field n of line into out (FIELD_MAX bytes). 1, or 0 for a comment line, an
// unbalanced quote or a missing field.
int GetField(char* out, const char* line, int n);
// In-place expansion of %NAME% and ~; text holds FIELD_MAX bytes.
void ExpandEnv(char* text);
// Same length and equal without regard to case.
int SameName(const char* a, const char* b);
// Copies at most size-1 characters and terminates.
void CopyCut(char* dst, size_t size, const char* src);
