// exchange_internal.h - helpers shared by the DXF and RAW readers and writers.
#pragma once
#include <cstddef>
#include <cstdio>

#include "base/safe_file.h"

// Starts the export file WORK_DIR + "/" + workFileName + ext (written into a
// temporary beside it); the shown name (without the directory) goes into
// name. nullptr, with the message printed, when it cannot be created.
FILE* Exchange_CreateExport(SafeFile* out, const char* ext, char* name, size_t name_size);
// Replaces the export file by what was written; 0, with the message printed
// and the old file kept, when a write or the close failed.
int Exchange_FinishExport(SafeFile* out);

// One line of at most size - 1 characters without its newline (and a
// carriage return before it); a longer line is split, its rest is the next
// line. 0 at the end of the file.
int Exchange_ReadLine(FILE* f, char* buf, int size);

// Number text as an int, kept inside -2147483647..2147483647 (junk and NaN
// give 0).
int Exchange_Int(const char* text);
// Number text as a double; 0 when it is not a finite number.
int Exchange_Double(const char* text, double* out);
