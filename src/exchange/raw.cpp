// raw.cpp - RAW triangle lists: export by layer, import by block.
//
// A RAW file holds name lines (a block name) and number lines (nine numbers,
// one triangle). On import the triangles of the current block are the
// selection set; when the block closes the caller places it (the command
// asks for the insertion point), and the transform engine moves (or, when
// the question was replaced by a command, erases) the whole selection.
#include <cstring>

#include "exchange/exchange.h"
#include "exchange/exchange_internal.h"
#include "base/message.h"
#include "model/selection.h"
#include "model/geometry.h"
#include "model/output.h"
#include "model/xform.h"
#include "state.h"

namespace {

enum { RAW_LINE = 250 };   // at most 249 characters a line

bool Blank(char c) { return c == ' ' || c == '\t'; }

bool NumberStart(char c) { return (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+'; }

// The nine numbers of a number line: the fields between runs of blanks,
// leading blanks skipped. 0 when there are fewer than nine fields or one
// of the nine is not a finite number.
int ParseTriangle(const char* s, TriangleData* tri) {
    double v[9];
    int n = 0;
    while (Blank(*s)) s++;
    while (n < 9 && *s) {
        char field[RAW_LINE];
        int len = 0;
        while (*s && !Blank(*s)) field[len++] = *s++;
        field[len] = '\0';
        if (!Exchange_Double(field, &v[n])) return 0;
        n++;
        while (Blank(*s)) s++;
    }
    if (n < 9) return 0;
    for (int k = 0; k < 3; k++) tri->corner[k] = Point3{v[3 * k], v[3 * k + 1], v[3 * k + 2]};
    return 1;
}

struct Import {
    char name[RAW_LINE] = "";       // current block name
    Point3 insertion{0, 0, 0};      // insertion point, the default of the next block
    bool pending = false;           // triangles read since the last block closed
};

// Places (or drops) the block just read: the caller's answer moves the
// selection to the insertion point, or erases it when a command code
// replaced the answer. 0 in that case.
int CloseBlock(Import& im, const char* which, RawPlaceFn place) {
    Msg_Printf("\n%s BLOCK: %s", which, im.name[0] ? im.name : "<noname>");
    const Point3 zero{0, 0, 0};
    int answered = place(&im.insertion);
    if (answered)
        Xform_Run(zero, im.insertion, XFORM_MOVE);
    else
        Xform_Run(zero, zero, XFORM_ERASE);
    im.pending = false;
    return answered;
}

}  // namespace

int Raw_Triangle(Point3 a, Point3 b, Point3 c) {
    if (g.exchange.file)
        fprintf(g.exchange.file, "%g %g %g %g %g %g %g %g %g\n", a.x, a.y, a.z, b.x, b.y, b.z, c.x,
                c.y, c.z);
    return 0;
}

int Raw_Export() {
    char name[32];
    SafeFile out;
    FILE* f = Exchange_CreateExport(&out, ".raw", name, sizeof name);
    if (!f) return 2;
    g.exchange.file = f;
    g.exchange.objectsDone = 0;
    g.output.Output_Mode = OUTPUT_RAW;
    for (Layer* layer = g.scene.First_Layer; layer; layer = layer->next) {
        if (!layer->on) continue;
        fprintf(f, "%s\n", layer->name);
        for (const Object* obj = layer->first_object; obj; obj = obj->next) {
            Object_Draw(obj);
            if (++g.exchange.objectsDone % EXCHANGE_BREAK_POLL == 0 && Exchange_UserBreak()) {
                Msg_Printf(" Terminated...");
                break;
            }
        }
    }
    g.output.Output_Mode = OUTPUT_SCREEN;
    g.exchange.file = nullptr;
    if (!Exchange_FinishExport(&out)) return 2;
    Msg_Printf("\nRAW file created <%s>!", name);
    return 1;
}

int Raw_Import(const char* path, RawPlaceFn place) {
    FILE* f = fopen(path, "r");
    if (!f) return 0;
    Msg_Printf("\nPlease wait");
    Import im;
    char line[RAW_LINE];
    long triangles = 0;
    while (Exchange_ReadLine(f, line, sizeof line)) {
        const char* s = line;
        while (Blank(*s)) s++;
        if (!*s) continue;
        if (!NumberStart(*s)) {
            if (im.pending && !CloseBlock(im, "Current", place)) continue;   // dropped: no new name
            snprintf(im.name, sizeof im.name, "%s", line);
            continue;
        }
        TriangleData tri;
        if (!ParseTriangle(s, &tri)) continue;
        Object* obj = Add_Triangle(&tri);
        if (!obj) {
            Msg_Printf("Out Of Memory");
            break;
        }
        Object_SetSelected(obj, 1, g.scene.Current_Layer);   // drawn highlighted
        im.pending = true;
        if (++triangles % 21 == 0) Msg_Printf(".");
    }
    if (im.pending) CloseBlock(im, "Last", place);
    fclose(f);
    return 1;
}
