// shape_support.h - what the commands of the ready-made shapes share: the
// questions they ask (points, distances, counts), the active view's frame
// and adding a finished record to the scene.
#pragma once

#include "model/shapes.h"
#include "scene/object.h"

// How a question ended.
enum ShapeGot { SHAPE_VALUE, SHAPE_NONE, SHAPE_REPLACED };

// The command's result when a question gave no value: 0 when another
// command replaced it, 1 when it was given up (nothing made).
inline int Shape_Stop(ShapeGot got) { return got == SHAPE_REPLACED ? 0 : 1; }

// A point (flags 16: Enter repeats the command).
ShapeGot Shape_AskPoint(const char* prompt, Point3* p);
// A length (rubber band "LINE", flags 20) or a radius ("CIRCLE", flags
// 22) from `base`: a typed number, or the distance of a picked point.
// With `at`, the point the distance reaches (a typed number: that far to
// the screen right of base).
ShapeGot Shape_AskLength(const char* prompt, Point3 base, bool radius, double* value, Point3* at = nullptr);
// A typed number only (flags 23); anything else is SHAPE_NONE.
ShapeGot Shape_AskNumber(const char* prompt, double* value);

// The active view's frame at o.
ShapeFrame Shape_ViewFrame(Point3 o);

// Adds a polyline record whose point array came from Mem_Alloc to
// Current_Layer and shows it; the array is freed in every case. "\nOut of
// Memory" when it cannot be added. Returns 1.
int Shape_Add(PolylineData* poly);
// A point array of n points, or nullptr with `failure` printed.
Point3* Shape_Points(long n, const char* failure);
