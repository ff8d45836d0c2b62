// xform.h - the transform engine: one walk over the selected objects of the
// visible layers that applies a numbered transform mode kind by kind.
//
// Built modes: 1 copy (the changed copies join the layers of their sources,
// which stay as they are), 2 move and 8 erase. The per-kind modifiers take
// every point through Transform_Point, so a new point transform is a new
// case there.
#pragma once

#include "model/model_state.h"
#include "scene/object.h"

// The point arithmetic of the current mode (p itself for modes not built).
Point3 Transform_Point(Point3 p);

// Prints "\nPlease wait...", stores the points and the mode and applies the
// mode to every selected object of every layer that is on, then redraws
// every viewport when Auto_Redraw is on. Does nothing more when nothing is
// selected. Returns 1.
int Xform_Run(Point3 base, Point3 second, int mode);
