// dxf_write.cpp - the scene as an ASCII DXF drawing of 3DFACE entities with
// one layer table entry per layer.
//
// The group-code lines are written exactly as other programs of the family
// expect them, widths included, even where they are not aligned alike
// ("  70" in the VPORT and LAYER tables, " 70" in the LTYPE table).
#include <cstdio>

#include "base/message.h"
#include "exchange/exchange.h"
#include "exchange/exchange_internal.h"
#include "model/geometry.h"
#include "model/output.h"
#include "scene/layers.h"
#include "state.h"

namespace {

const char kHeaderAndTables[] =
    "  0\nSECTION\n  2\nHEADER\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nTABLES\n"
    "  0\nTABLE\n  2\nVPORT\n  70\n0\n  0\nENDTAB\n"
    "  0\nTABLE\n  2\nLTYPE\n 70\n     1\n"
    "  0\nLTYPE\n  2\nCONTINUOUS\n 70\n    64\n  3\nSolid Line\n 72\n    65\n 73\n     0\n"
    " 40\n0.0\n  0\nENDTAB\n";

// 10 to the power -precision by repeated division, as the scene writer
// computes its tolerances.
double Tolerance(int precision) {
    double t = 1.0;
    for (int i = 0; i < precision; i++) t /= 10.0;
    return t;
}

void WriteLayerTable(FILE* f) {
    fprintf(f, "  0\nTABLE\n  2\nLAYER\n  70\n      %d\n", Layer_Count());
    for (Layer* l = g.scene.First_Layer; l; l = l->next) {
        fprintf(f, "  0\nLAYER\n  2\n%s\n  70\n0\n  62\n", l->name);
        fprintf(f, l->on ? "%d\n" : "-%d\n", l->color);
        fputs("  6\nCONTINUOUS\n", f);
    }
    fputs("  0\nENDTAB\n  0\nENDSEC\n", f);
}

// One layer's objects, newest first; 1 when the user interrupted.
int WriteLayerEntities(Layer* layer) {
    snprintf(g.exchange.layerName, sizeof g.exchange.layerName, "%s", layer->name);
    for (const Object* obj = layer->first_object; obj; obj = obj->next) {
        Object_Draw(obj);
        if (++g.exchange.objectsDone % EXCHANGE_BREAK_POLL == 0 && Exchange_UserBreak()) return 1;
    }
    return 0;
}

}  // namespace

int Dxf_Facet(const Point3* corner, int n, int) {
    FILE* f = g.exchange.file;
    if (!f) return 0;
    fprintf(f, "  0\n3DFACE\n  8\n%s\n", g.exchange.layerName);
    static const char* const kDigit[4] = {"0", "1", "2", "3"};
    for (int k = 0; k < 4; k++) {
        const Point3& p = corner[k < n ? k : n - 1];   // a triangle repeats its third corner
        fprintf(f, "  1%s\n%g\n  2%s\n%g\n  3%s\n%g\n", kDigit[k], p.x, kDigit[k], p.y, kDigit[k], p.z);
    }
    return 0;
}

int Dxf_Export() {
    char name[32];
    SafeFile out;
    FILE* f = Exchange_CreateExport(&out, ".dxf", name, sizeof name);
    if (!f) return 2;
    g.writer.Vertex_Tolerance = Tolerance(6);
    fputs(kHeaderAndTables, f);
    WriteLayerTable(f);
    fputs("  0\nSECTION\n  2\nENTITIES\n", f);

    g.exchange.file = f;
    g.exchange.objectsDone = 0;
    g.output.Output_Mode = OUTPUT_DXF;
    for (Layer* layer = g.scene.First_Layer; layer; layer = layer->next)
        if (WriteLayerEntities(layer)) Msg_Printf(" Terminated...");
    g.output.Output_Mode = OUTPUT_SCREEN;
    g.exchange.file = nullptr;

    fputs("  0\nENDSEC\n  0\nEOF\n", f);
    if (!Exchange_FinishExport(&out)) return 2;
    Msg_Printf("\nDXF file created <%s>!", name);
    return 1;
}
