// texture_lists.cpp - readers of "textures.dat" and "colors.dat".
//
// Both files are installation data that a user may edit by hand, so a bad
// line never stops the reading: it is skipped and reported. Lines are read
// byte by byte, so a line feed missing at the end, a NUL inside a line or
// a line of megabytes cannot confuse the line count or overflow a buffer.
#include "pov/texture_lists.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/field.h"

namespace {

constexpr size_t kLineMax = 254;  // the longest line of the program's text formats

struct Line {
    char text[kLineMax + 2];  // the first bytes of the line, terminated
    size_t length;            // the whole line's length, line feed excluded
    bool binary;              // a NUL or another control byte (tab aside), or a byte above 126
};

// The next line; false at the end of the file.
bool NextLine(FILE* f, Line* line) {
    int c = getc(f);
    if (c == EOF) return false;
    line->length = 0;
    line->binary = false;
    for (; c != EOF && c != '\n'; c = getc(f)) {
        if (line->length < kLineMax + 1) line->text[line->length] = (char)c;
        line->length++;
        if ((c < 32 && c != '\t' && c != '\r') || c > 126) line->binary = true;
    }
    size_t kept = line->length < kLineMax + 1 ? line->length : kLineMax + 1;
    line->text[kept] = '\0';
    if (line->length <= kLineMax + 1 && kept > 0 && line->text[kept - 1] == '\r') {
        line->text[--kept] = '\0';
        line->length--;
    }
    return true;
}

void Skip(TextListReport* report, int number, const char* reason) {
    if (report->badLines++ == 0) {
        report->firstBadLine = number;
        report->firstReason = reason;
    }
}

// Why a line cannot be used, or nullptr when it can.
const char* Damage(const Line& line) {
    if (line.length > kLineMax) return "longer than 254 characters";
    if (line.binary) return "not text";
    return nullptr;
}

// A colour's name is an identifier of the scene language.
bool Identifier(const char* name) {
    if (!*name || isdigit((unsigned char)*name)) return false;
    for (const char* p = name; *p; p++)
        if (!isalnum((unsigned char)*p) && *p != '_') return false;
    return true;
}

// A whole field as a finite number.
bool Number(const char* text, float* out) {
    char* end = nullptr;
    double v = strtod(text, &end);
    if (end == text || *end != '\0' || !std::isfinite(v) || fabs(v) > 1e30) return false;
    *out = (float)v;
    return true;
}

}  // namespace

int TextureNames_Read(const char* path, std::vector<std::string>* names, TextListReport* report) {
    FILE* f = fopen(path, "r");
    if (!f) return 0;
    Line line;
    for (int number = 1; NextLine(f, &line); number++) {
        if (line.length == 0) continue;
        if (const char* why = Damage(line)) {
            Skip(report, number, why);
            continue;
        }
        if (strpbrk(line.text, " \t\r")) {
            Skip(report, number, "not one name");
            continue;
        }
        names->push_back(std::string(line.text, strnlen(line.text, 20)));
    }
    fclose(f);
    return 1;
}

int Colours_Read(const char* path, std::vector<NamedColour>* colours, TextListReport* report) {
    FILE* f = fopen(path, "r");
    if (!f) return 0;
    Line line;
    for (int number = 1; NextLine(f, &line); number++) {
        if (const char* why = Damage(line)) {
            Skip(report, number, why);
            continue;
        }
        for (char* p = line.text; *p; p++)
            if (*p == '\t') *p = ' ';
        char field[6][FIELD_MAX];
        if (!GetField(field[0], line.text, 0)) continue;               // a comment line
        if (field[0][0] == '\0' && !strchr(line.text, '(')) continue;  // an empty line
        int n = 1;
        while (n < 6 && GetField(field[n], line.text, n)) n++;
        NamedColour c{};
        bool ok = Identifier(field[0]) && (n == 4 || n == 5);
        for (int i = 1; ok && i < n; i++) ok = Number(field[i], &c.rgbf[i - 1]);
        if (!ok) {
            Skip(report, number, "not name(r, g, b) or name(r, g, b, f)");
            continue;
        }
        CopyCut(c.name, sizeof c.name, field[0]);
        c.hasFilter = n == 5;
        colours->push_back(c);
    }
    fclose(f);
    return 1;
}
