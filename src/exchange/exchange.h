// exchange.h - DXF and RAW export and import.
//
// The exporters open the file, set Output_Mode to the DXF or RAW mode and run
// every object through Object_Draw; the facet sink hands the facets to the
// two consumers declared here (Dxf_Facet takes facets with their corners,
// Raw_Triangle takes triangles). The importers read the files line by line
// and never trust a count or a length they read: every loop also ends at the
// end of the file.
#pragma once
#include "exchange/exchange_state.h"
#include "scene/object.h"

// Whole scene to WORK_DIR/<workFileName>.dxf or .raw. 1 written; 2 not
// written (the message printed, an old file of that name kept).
int Dxf_Export();
int Raw_Export();

// The DXF reader's questions, asked of the caller when the section is met:
// 0 when the answer was replaced by a command (the import stops there),
// else 1 with *yes.
enum DxfQuestion { DXF_ALWAYS = 0, DXF_ASK_HEADER = 1, DXF_ASK_TABLES = 2, DXF_ASK_BLOCKS = 3 };
using DxfAskFn = int (*)(int question, int* yes);
// The RAW reader's placement of each block read: 0 when the answer was
// replaced by a command (the block is then erased), else 1 with *insertion
// kept or replaced by the chosen point.
using RawPlaceFn = int (*)(Point3* insertion);

// Read a file into the scene; 0 only when the file can't be opened.
int Dxf_Import(const char* path, DxfAskFn ask);
int Raw_Import(const char* path, RawPlaceFn place);

// Consumers of the facet sink in the DXF and RAW modes.
int Dxf_Facet(const Point3* corner, int n, int mask);
int Raw_Triangle(Point3 a, Point3 b, Point3 c);

// 1 when the user asked to stop an export: a key is waiting. Polled once
// every EXCHANGE_BREAK_POLL objects so that small exports never poll.
enum { EXCHANGE_BREAK_POLL = 1024 };
int Exchange_UserBreak();
