// safe_file.h - writing a file so that a failure never costs the old one.
//
// Every writer of the program writes into a temporary file beside the target
// and renames it over the target only when every write and the close
// succeeded: the rename replaces the old file in one step, so at any moment
// (a full disk, a crash, a kill) the target is either the old file or the
// whole new one. The stream's error indicator is the sticky write-error
// flag: it is checked once, at the commit.
#pragma once

#include <cstdio>

struct SafeFile {
    FILE* f = nullptr;     // the temporary, open for writing
    char path[512] = "";   // the target
    char temp[512] = "";   // the temporary beside it
};

// Temporary name of `path`: the same directory and extension, the first
// character of the name replaced by '$' ("$cene.qmr" for "scene.qmr").
// 0 when the name is empty or the result does not fit `size`.
int SafeFile_TempName(const char* path, char* out, size_t size);

// Creates the temporary of `path` for writing in `mode` ("w" or "wb").
// 1 when it is open; 0 (nothing created) otherwise.
int SafeFile_Open(SafeFile* s, const char* path, const char* mode);

// As SafeFile_Open with the temporary named `temp` (in the same directory).
int SafeFile_OpenAs(SafeFile* s, const char* path, const char* temp, const char* mode);

// Flushes the temporary (to the disk itself when `durable` is set, and the
// directory after the rename), closes it and renames it over the target. 1 when every write, the flush, the close
// and the rename succeeded; otherwise the temporary is removed, the target
// is left as it was, and the result is 0.
int SafeFile_Commit(SafeFile* s, int durable);

// Closes and removes the temporary; the target is left as it was.
void SafeFile_Discard(SafeFile* s);
