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

#include "model/model_state.h"
#include "scene/object.h"

// Puts the consumer of a mode into the table (the command layer does it for
// every mode at start-up).
void Output_SetConsumer(int mode, const OutputConsumer& consumer);
// The consumer of the explode mode: facets become face objects, a grid one mesh.
OutputConsumer Output_ExplodeConsumer();
// Asks the screen consumer to redraw every viewport (nothing without one).
void Output_RedrawScreen();
// Points drawn from now on are placed as those of `layer` (its transform and
// its ancestors'); nullptr: as they are. For drawing one object outside the
// redraw's own walk.
void Output_UseLayer(const Layer* layer);

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
