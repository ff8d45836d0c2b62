// output.h - the facet sink: where every geometry generator hands its output.
//
// Generators enumerate wire segments (pen moves and lines) and facets
// (triangles, or quadrilaterals with an edge mask: bit 1 << k marks the edge
// from corner k to corner k + 1 as visible, the last bit the closing edge).
// They never know who consumes them. The sink picks the consumer of the
// current Output_Mode from a table - the only place in the program that
// looks at Output_Mode - and adapts the facet to what that consumer takes:
//   - a consumer with a `facet` hook gets the facet as it is;
//   - one with a `triangle` hook gets a quadrilateral c0 c1 c2 c3 as the two
//     triangles (c0, c1, c2) and (c2, c3, c0), in this order;
//   - one with neither gets the visible edges through its move/line hooks
//     (the screen: a facet becomes the edges its mask marks).
// Wire segments only reach consumers with line hooks. Facets and lines with a
// non-finite corner are dropped here, so no consumer ever sees NaN or inf.
//
// Primitive generators walk a grid instead (Output_GridBegin/Facet/End): each
// cell (r, c) of an R x C grid plus one extra row and column. A consumer with
// grid hooks (explode) collects corner c0 of every cell; the others get the
// cells with r < R and c < C as facets whose mask draws every grid edge once.
#pragma once

#include "scene/object.h"

// What a consumer takes. A null hook means "not taken". Hooks that return
// an int return 1 when the generator must stop (interrupted, hit found).
struct OutputConsumer {
    int on_screen;                                    // 1: the wireframe picture
    void (*move_to)(Point3 p);
    int (*line_to)(Point3 p);
    int (*facet)(const Point3* corner, int n, int mask);  // n is 3 or 4
    int (*triangle)(Point3 a, Point3 b, Point3 c);
    int (*grid_begin)(int rows, int cols);            // 1: collects; 0: failed, skip grid
    void (*grid_point)(int r, int c, Point3 p);
    int (*grid_end)();
};

enum OutputModeCode : int {
    OUTPUT_SCREEN = 0,    // 3D pen of the active viewport
    OUTPUT_POV = 1,       // triangle spool of the scene-file writer
    OUTPUT_DXF = 2,       // 3DFACE entities
    OUTPUT_RAW = 3,       // RAW triangle lines
    OUTPUT_EXPLODE = 4,   // facets become objects
    OUTPUT_SHADE = 5,     // filled polygons of the shaded view
    OUTPUT_MODES = 6,
};

// The built-in consumer of a mode (screen and explode; the others are empty
// until their writers fill their line here).
OutputConsumer Output_DefaultConsumer(int mode);

struct OutputState {
    int Output_Mode = OUTPUT_SCREEN;   // what the generators produce, 0..5
    OutputConsumer consumer[OUTPUT_MODES] = {
        Output_DefaultConsumer(0), Output_DefaultConsumer(1), Output_DefaultConsumer(2),
        Output_DefaultConsumer(3), Output_DefaultConsumer(4), Output_DefaultConsumer(5)};
    int pen_valid = 0;          // the last move/line went to a finite point
    int grid_rows = 0;          // R of the grid being walked
    int grid_cols = 0;          // C of the grid being walked
    int grid_collect = 0;       // the consumer collects the grid itself
    int grid_skip = 0;          // grid collection failed: ignore the rest of it
    Point3* explode_grid = nullptr;  // explode: (R + 1) x (C + 1) collected corners
    int explode_rows = 0;       // explode: R of explode_grid
    int explode_cols = 0;       // explode: C of explode_grid
};

// 1 when the current consumer is the wireframe picture (a generator may
// leave out faces that only hide edges there, like the box's end faces).
int Output_ToScreen();

void Output_MoveTo(Point3 p);
int Output_LineTo(Point3 p);
int Output_Line(Point3 a, Point3 b);   // move to a, line to b

// A facet of n (3 or 4) corners with its edge mask.
int Output_Facet(const Point3* corner, int n, int mask);
int Output_Quad(Point3 c0, Point3 c1, Point3 c2, Point3 c3, int mask);
int Output_Triangle(Point3 c0, Point3 c1, Point3 c2, int mask);

// Grid walk of a primitive: rows x cols cells, visited with r = 0..rows and
// c = 0..cols (the extra row and column only supply c0).
void Output_GridBegin(int rows, int cols);
int Output_GridFacet(const Point3 corner[4], int r, int c);
int Output_GridEnd();

// Mask of cell (r, c) on the grid so that each grid edge is drawn once:
// c1-c2 and c2-c3 always, c0-c1 in column 0, c3-c0 in row 0.
int Output_GridMask(int r, int c);
