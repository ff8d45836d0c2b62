// exchange.cpp - what the DXF and RAW code shares: the export file, the line
// reader, number parsing and the break poll.
#include "exchange/exchange.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "exchange/exchange_internal.h"
#include "gfx/gfx.h"
#include "base/message.h"
#include "state.h"

int Exchange_UserBreak() { return X11_KeyPressed(); }

FILE* Exchange_CreateExport(SafeFile* out, const char* ext, char* name, size_t name_size) {
    char path[256];
    snprintf(name, name_size, "%s%s", g.run.workFileName, ext);
    snprintf(path, sizeof path, "%s/%s", g.config.WORK_DIR, name);
    if (!SafeFile_Open(out, path, "w")) {
        Msg_Printf("\nError: Creating <%s>!", path);
        return nullptr;
    }
    return out->f;
}

int Exchange_FinishExport(SafeFile* out) {
    if (SafeFile_Commit(out, 0)) return 1;
    Msg_Printf("\nError: Writing <%s> failed (disk full?), the file is unchanged", out->path);
    return 0;
}

int Exchange_ReadLine(FILE* f, char* buf, int size) {
    if (!fgets(buf, size, f)) {
        buf[0] = '\0';
        return 0;
    }
    size_t n = strlen(buf);   // a NUL byte in the line ends it early
    if (n > 0 && buf[n - 1] == '\n') buf[--n] = '\0';
    if (n > 0 && buf[n - 1] == '\r') buf[--n] = '\0';
    return 1;
}

int Exchange_Int(const char* text) {
    double d = strtod(text, nullptr);
    if (std::isnan(d)) return 0;
    if (d >= 2147483647.0) return 2147483647;
    if (d <= -2147483647.0) return -2147483647;
    return (int)d;
}

int Exchange_Double(const char* text, double* out) {
    char* end;
    double d = strtod(text, &end);
    if (end == text || !std::isfinite(d)) return 0;
    *out = d;
    return 1;
}
