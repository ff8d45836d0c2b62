// find.cpp - directory search in the style of a PC library (find first /
// find next over opendir/readdir/fnmatch), and path splitting.
//
// A search keeps its directory stream open between calls; it is closed and
// freed when X11_FindNext reaches the end. A pattern without "/" searches
// the current directory.
#include <dirent.h>
#include <fnmatch.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "gfx/gfx.h"

namespace {

struct Search {
    DIR* dir;
    int attribute;       // 16: directories are wanted too
    char pattern[64];    // name + extension
    char path[104];      // directory with "/" appended
};

void CopyMax(char* out, const char* from, size_t len, size_t max) {
    if (!out) return;
    if (len > max) len = max;
    memcpy(out, from, len);
    out[len] = '\0';
}

}  // namespace

void X11_SplitPath(const char* path, char* drive, char* dir, char* name, char* ext) {
    if (drive) drive[0] = '\0';
    const char* slash = strrchr(path, '/');
    const char* base = slash ? slash + 1 : path;
    CopyMax(dir, path, slash ? (size_t)(slash - path) : 0, 99);
    const char* dot = strrchr(base, '.');
    size_t nameLen = dot ? (size_t)(dot - base) : strlen(base);
    CopyMax(name, base, nameLen, 63);
    CopyMax(ext, dot ? dot : "", dot ? strlen(dot) : 0, 63);
}

int X11_FindFirst(const char* pattern, int attribute, X11_FindRec* rec) {
    rec->search = nullptr;
    char dir[100], name[64], ext[64];
    X11_SplitPath(pattern, nullptr, dir, name, ext);
    bool hasDir = strchr(pattern, '/') != nullptr;
    if (hasDir && dir[0] == '\0') strcpy(dir, "/");   // "/name": the root
    auto* s = (Search*)calloc(1, sizeof(Search));
    if (!s) return 1;
    if (!hasDir) strcpy(dir, ".");
    s->dir = opendir(dir);
    if (!s->dir) {
        free(s);
        return 1;
    }
    s->attribute = attribute;
    size_t n = strlen(name);   // the pattern keeps at most 63 characters
    CopyMax(s->pattern, name, n, 63);
    CopyMax(s->pattern + n, ext, strlen(ext), 63 - n);
    snprintf(s->path, sizeof s->path, "%s%s", dir, strcmp(dir, "/") == 0 ? "" : "/");
    rec->search = s;
    return X11_FindNext(rec);
}

int X11_FindNext(X11_FindRec* rec) {
    auto* s = (Search*)rec->search;
    if (!s) return 1;
    while (dirent* e = readdir(s->dir)) {
        char full[400];
        snprintf(full, sizeof full, "%s%s", s->path, e->d_name);
        struct stat st;
        if (stat(full, &st) != 0) continue;
        bool isDir = S_ISDIR(st.st_mode);
        if (isDir && !(s->attribute & 16)) continue;
        if (fnmatch(s->pattern, e->d_name, 0) != 0) continue;
        rec->size = (long)st.st_size;
        rec->attribute = isDir ? 16 : 0;
        snprintf(rec->name, sizeof rec->name, "%.12s", e->d_name);
        return 0;
    }
    closedir(s->dir);
    free(s);
    rec->search = nullptr;
    return 1;
}
