// safe_file.cpp - temporary file, sticky error check, rename over the target.
#include "base/safe_file.h"

#include <unistd.h>

#include <cstring>

int SafeFile_TempName(const char* path, char* out, size_t size) {
    const char* slash = strrchr(path, '/');
    size_t base = slash ? (size_t)(slash - path) + 1 : 0;
    const char* name = path + base;
    if (!*name || *name == '.') return 0;   // no name before the extension
    if (strlen(path) + 1 > size) return 0;
    memcpy(out, path, strlen(path) + 1);
    out[base] = '$';
    return 1;
}

int SafeFile_Open(SafeFile* s, const char* path, const char* mode) {
    s->f = nullptr;
    if (strlen(path) + 1 > sizeof s->path) return 0;
    if (!SafeFile_TempName(path, s->temp, sizeof s->temp)) return 0;
    memcpy(s->path, path, strlen(path) + 1);
    s->f = fopen(s->temp, mode);
    return s->f != nullptr;
}

int SafeFile_Commit(SafeFile* s, int durable) {
    if (!s->f) return 0;
    int ok = fflush(s->f) == 0 && !ferror(s->f);
    if (ok && durable) ok = fsync(fileno(s->f)) == 0;
    if (fclose(s->f) != 0) ok = 0;
    s->f = nullptr;
    if (ok) ok = rename(s->temp, s->path) == 0;
    if (!ok) remove(s->temp);
    return ok;
}

void SafeFile_Discard(SafeFile* s) {
    if (s->f) fclose(s->f);
    s->f = nullptr;
    remove(s->temp);
}
