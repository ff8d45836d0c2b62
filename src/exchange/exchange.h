// exchange.h - DXF and RAW export and import.
//
// The exporters open the file, set Output_Mode to the DXF or RAW mode and run
// every object through Object_Draw; the facet sink hands the facets to the
// two consumers declared here (Dxf_Facet takes facets with their corners,
// Raw_Triangle takes triangles). The importers read the files line by line
// and never trust a count or a length they read: every loop also ends at the
// end of the file.
#pragma once
#include <cstdio>

#include "scene/object.h"

struct ExchangeState {
    FILE* file = nullptr;        // export file while an export runs
    char layerName[13] = "";     // export layer: what the DXF "  8" lines carry
    long objectsDone = 0;        // objects written by this export (break poll)
    int Shade_Dif = 0;           // $SHADEDIF of the last DXF header read; nothing reads it
};

// Commands EXPORTDXF (122) and EXPORTRAW (121). Always 1.
int Com_ExportDxf();
int Com_ExportRaw();

// Whole scene to WORK_DIR/<workFileName>.dxf or .raw. Always 1.
int Dxf_Export();
int Raw_Export();

// Read a file into the scene; 0 only when the file can't be opened.
int Dxf_Import(const char* path);
int Raw_Import(const char* path);

// Consumers of the facet sink in the DXF and RAW modes (output.cpp).
int Dxf_Facet(const Point3* corner, int n, int mask);
int Raw_Triangle(Point3 a, Point3 b, Point3 c);

// 1 when the user asked to stop an export: a key is waiting. Polled once
// every EXCHANGE_BREAK_POLL objects so that small exports never poll.
enum { EXCHANGE_BREAK_POLL = 1024 };
int Exchange_UserBreak();
