// safe_file.cpp - temporary file, sticky error check, rename over the target.
#include "base/safe_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstring>

namespace {

// Makes the rename itself durable: the directory entry reaches the disk.
void SyncDirectory(const char* path) {
    char dir[512];
    const char* slash = strrchr(path, '/');
    if (!slash) {
        strcpy(dir, ".");
    } else {
        size_t n = slash == path ? 1 : (size_t)(slash - path);
        memcpy(dir, path, n);
        dir[n] = '\0';
    }
    int fd = open(dir, O_RDONLY | O_DIRECTORY);
    if (fd < 0) return;
    fsync(fd);   // best effort: the file itself is already on the disk
    close(fd);
}

}  // namespace

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

int SafeFile_OpenAs(SafeFile* s, const char* path, const char* temp, const char* mode) {
    s->f = nullptr;
    if (strlen(path) + 1 > sizeof s->path || strlen(temp) + 1 > sizeof s->temp) return 0;
    memcpy(s->path, path, strlen(path) + 1);
    memcpy(s->temp, temp, strlen(temp) + 1);
    s->f = fopen(s->temp, mode);
    return s->f != nullptr;
}

int SafeFile_Open(SafeFile* s, const char* path, const char* mode) {
    char temp[sizeof s->temp];
    s->f = nullptr;
    if (!SafeFile_TempName(path, temp, sizeof temp)) return 0;
    return SafeFile_OpenAs(s, path, temp, mode);
}

int SafeFile_Commit(SafeFile* s, int durable) {
    if (!s->f) return 0;
    int ok = fflush(s->f) == 0 && !ferror(s->f);
    if (ok && durable) ok = fsync(fileno(s->f)) == 0;
    if (fclose(s->f) != 0) ok = 0;
    s->f = nullptr;
    if (ok) ok = rename(s->temp, s->path) == 0;
    if (!ok) remove(s->temp);
    if (ok && durable) SyncDirectory(s->path);
    return ok;
}

void SafeFile_Discard(SafeFile* s) {
    if (s->f) fclose(s->f);
    s->f = nullptr;
    remove(s->temp);
}
