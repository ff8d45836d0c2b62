// field.cpp - GetField, ExpandEnv, SameName.
#include "base/field.h"

#include <strings.h>

#include <cstdlib>
#include <cstring>

void CopyCut(char* dst, size_t size, const char* src) {
    if (size == 0) return;
    size_t n = strnlen(src, size - 1);
    memcpy(dst, src, n);
    dst[n] = '\0';
}

int SameName(const char* a, const char* b) {
    return strlen(a) == strlen(b) && strcasecmp(a, b) == 0;
}

void ExpandEnv(char* text) {
    char out[FIELD_MAX];
    size_t o = 0;
    auto put = [&](const char* s, size_t n) {
        if (o + n > FIELD_MAX - 1) n = FIELD_MAX - 1 - o;
        memcpy(out + o, s, n);
        o += n;
    };
    for (size_t i = 0; text[i];) {
        if (text[i] == '%') {
            const char* close = strchr(text + i + 1, '%');
            if (close) {
                char name[FIELD_MAX];
                CopyCut(name, sizeof name, text + i + 1);
                name[close - (text + i + 1)] = '\0';
                if (const char* v = getenv(name)) {
                    put(v, strlen(v));
                    i = close - text + 1;
                    continue;
                }
            }
        } else if (text[i] == '~') {
            if (const char* home = getenv("HOME")) {
                put(home, strlen(home));
                i++;
                continue;
            }
        }
        put(text + i, 1);
        i++;
    }
    out[o] = '\0';
    memcpy(text, out, o + 1);
}

int GetField(char* out, const char* line, int n) {
    // Normalise: drop blanks outside quotes up to the first ")" or "//".
    char buf[FIELD_MAX];
    size_t b = 0;
    bool quoted = false;
    size_t i = 0;
    size_t len = strlen(line);
    for (; i < len && b < FIELD_MAX - 1; i++) {
        char c = line[i];
        if (!quoted && c == '/' && line[i + 1] == '/') {
            if (b == 0) return 0;   // nothing but blanks before it: a comment line
            break;
        }
        if (c == '"') quoted = !quoted;
        if (!quoted && c == ')') break;
        if (!quoted && c == ' ') continue;
        buf[b++] = c;
    }
    if (quoted) return 0;
    // The rest of the line is kept unchanged.
    for (; i < len && b < FIELD_MAX - 1; i++) buf[b++] = line[i];
    buf[b] = '\0';

    char result[FIELD_MAX];
    size_t r = 0;
    quoted = false;
    size_t p = 0;
    if (n == 0) {
        for (; buf[p]; p++) {
            if (buf[p] == '"') quoted = !quoted;
            if (!quoted && buf[p] == '(') break;
            result[r++] = buf[p];
        }
    } else {
        for (; buf[p]; p++) {
            if (buf[p] == '"') quoted = !quoted;
            if (!quoted && buf[p] == '(') break;
        }
        if (!buf[p]) return 0;
        p++;
        int field = 1;
        bool closed = false;
        for (; buf[p]; p++) {
            char c = buf[p];
            if (c == '"') quoted = !quoted;
            if (!quoted && c == ')') {
                closed = true;
                break;
            }
            if (!quoted && c == ',') {
                field++;
                continue;
            }
            if (field == n) result[r++] = c;
        }
        if (!closed || field < n) return 0;
    }
    // Drop the quotes.
    size_t o = 0;
    for (size_t k = 0; k < r; k++)
        if (result[k] != '"') out[o++] = result[k];
    out[o] = '\0';
    ExpandEnv(out);
    return 1;
}
