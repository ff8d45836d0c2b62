// xform.h - the transform engine: one walk over the selected objects of the
// visible layers that applies a numbered transform mode kind by kind.
//
// Built modes: 2 move and 8 erase. The per-kind modifiers take every point
// through Transform_Point, so a new point transform is a new case there.
#pragma once

#include "scene/object.h"

enum XformMode : int {
    XFORM_COPY = 1,
    XFORM_MOVE = 2,
    XFORM_SCALE = 3,
    XFORM_GRAVITY = 5,
    XFORM_TEXTURE = 6,
    XFORM_LAYER = 7,
    XFORM_ERASE = 8,
};

struct XformState {
    int xform_mode = 0;               // transform mode of the running walk
    Point3 xform_base{0, 0, 0};       // base point
    Point3 xform_second{0, 0, 0};     // second point (offset, copy, scale ... point)
    Point3 xform_delta{0, 0, 0};      // xform_second - xform_base
    double xform_angle = 0;           // view-plane rotation angle in radians
};

// The point arithmetic of the current mode (p itself for modes not built).
Point3 Transform_Point(Point3 p);

// Prints "\nPlease wait...", stores the points and the mode and applies the
// mode to every selected object of every layer that is on. Does nothing
// more when nothing is selected. Returns 1.
int Xform_Run(Point3 base, Point3 second, int mode);
