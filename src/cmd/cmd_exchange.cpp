// cmd_exchange.cpp - the export commands (scene file, DXF, RAW) and the
// questions of the DXF and RAW imports.
#include <sys/stat.h>

#include <cstdio>

#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "exchange/exchange.h"
#include "input/input.h"
#include "base/message.h"
#include "pov/pov.h"
#include "state.h"
#include "view/view_commands.h"

namespace {

int FileExists(const char* path) {
    struct stat st;
    return stat(path, &st) == 0;
}

int AskDxfSection(int question, int* yes) {
    static const char* const kQuestions[] = {
        nullptr,
        "\nIMPDXF> Parse Header info? <Yes,No> (Y): ",
        "\nIMPDXF> Parse Table info for Layers? <Yes,No> (Y): ",
        "\nIMPDXF> Parse Block info? <Yes,No> (Y): ",
    };
    return Ask_YesNo("Y,N", kQuestions[question], 1, yes);
}

int AskRawInsertion(Point3* insertion) {
    const Point3 origin{0, 0, 0};
    char prompt[200];
    snprintf(prompt, sizeof prompt, "\nIMPORTRAW> Set Insertion point <%g, %g, %g>: ", insertion->x,
             insertion->y, insertion->z);
    Input_SetRubberBand(&origin, "OBJECT", "MOVE");
    int got;
    return Ask_Point(prompt, 0, insertion, &got);
}

// After an import: the message for a file that did not open, else the redraw.
int ImportDone(int read) {
    if (!read) Msg_Printf("...Can't Open or Import File!");
    else if (g.aids.Auto_Redraw) Views_RedrawAll();
    return read;
}

}  // namespace

int Export_Pov() {
    char path[256];
    Pov_ScenePath(path, sizeof path);
    if (g.pov.Overwrite_Pov == 0 && FileExists(path)) {
        int yes;
        if (!Ask_YesNo("Y,N", "\nEXPORTPOV> File already Exists, Overwrite it (Yes,No)? <Y>:", 1, &yes))
            return 0;
        if (!yes) {
            Msg_Printf("\nExport aborted");
            return 2;
        }
    }
    return Pov_WriteScene(path);
}

int Com_ExportPov() { return Export_Pov() == 0 ? 0 : 1; }   // 2: not written, but finished
int Com_ExportDxf() {
    g.input.InputResult.code = 0;
    Dxf_Export();
    return 1;
}

int Com_ExportRaw() {
    g.input.InputResult.code = 0;
    Raw_Export();
    return 1;
}

int Import_Dxf(const char* path) { return ImportDone(Dxf_Import(path, AskDxfSection)); }
int Import_Raw(const char* path) { return ImportDone(Raw_Import(path, AskRawInsertion)); }
