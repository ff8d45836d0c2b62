// poly_support.h - what the polyline commands and their edit machines share:
// drawing an object in its colours, the vertex cross, the questions with the
// edit machines' rules, and whole numbers from typed values.
#pragma once

#include "cmd/ask.h"
#include "scene/layers.h"

// obj of layer in its layer's colour; in the background colour (erased); in
// the selection colour (picked for a command, without the mark).
void PolyCmd_Draw(const Object* obj, const Layer* layer);
void PolyCmd_Erase(const Object* obj, const Layer* layer);
void PolyCmd_Highlight(const Object* obj, const Layer* layer);
// A record that is not (yet) an object, as it would look in Current_Layer.
void PolyCmd_DrawRecord(const PolylineData* poly, int colour);
// After a command made or changed objects: every viewport redrawn when
// Auto_Redraw is on, else obj drawn in its layer's colour.
void PolyCmd_Show(const Object* obj, const Layer* layer);

// The XOR cross that marks the current vertex while an edit prompt waits,
// in every viewport of the layout (and again by every redraw meanwhile).
// p is taken through the transforms of `layer`.
void PolyCmd_MarkShow(Point3 p, const Layer* layer);
void PolyCmd_MarkHide();

// Screen position of p (through the transforms of `layer`) in the active viewport.
void PolyCmd_Pixel(Point3 p, const Layer* layer, double* x, double* y);

// A typed value as a whole number in [lo, hi] (truncated; NaN gives lo).
int PolyCmd_Int(double value, int lo, int hi);

// A question of an edit machine: as Ask_Any, except that the edit command
// itself (302, also what an empty Enter repeats) is ignored: the answer is
// then "nothing" (kind -1). 0 when another command replaced the input.
int PolyCmd_Ask(const char* prompt, const char* keywords, int allowNumber, int mask, AskAnswer* answer);
// A value question of an edit machine: `format` shows the value; a number
// replaces it, anything else keeps it. 0 when another command replaced it.
int PolyCmd_AskDouble(const char* format, int mask, double* value);
// The same for a whole number, the result brought into [lo, hi].
int PolyCmd_AskInt(const char* format, int mask, int* value, int lo, int hi);
