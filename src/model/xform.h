// xform.h - the transform engine: one walk over the selected objects of the
// visible layers that applies a numbered transform mode kind by kind.
//
// Modes (XformMode): 1 copy, 2 move, 3 scale, 5 gravity, 6 assign texture,
// 7 change layer, 8 erase, 9 10 11 rotations, 12 array, 14 and 15 assign the
// No_shadow and Smooth_triangle bits, 16 mirror (run as 80, mirrored copies,
// or 81, the sources mirrored). The per-kind modifiers take every point
// through the one point arithmetic of the mode, which the drag preview uses
// too, so what is dragged is what the edit gives.
//
// How records follow a point transform:
//   - polylines: every point; param1 and param2 too where they are points
//     (extrusion, revolution, cone sweep), not where they are sizes (pipe,
//     wall). A mirrored revolution also swaps its axis ends, which turns the
//     sweep the other way, so the surface is the mirror image of the old one.
//   - triangles and faces: every corner.
//   - primitives: `translate` follows the point arithmetic, so the primitive
//     moves as a whole and keeps its shape under move, copy and gravity.
//     Scale multiplies the `scale` components whose axes are not left out;
//     the rotations add to the `rotate` component along their axis;
//     mirror negates the `scale` component along the view's vertical axis
//     and reflects the `rotate` triple (component along the view's
//     horizontal axis and towards the viewer negated, the latter less twice
//     the mirror line's angle), which is the exact mirror image for a
//     primitive turned about the viewing direction only.
//   - lights: `position` and `point_at` follow the point arithmetic, so a
//     spot or area light keeps aiming at the point it aimed at; the area
//     size, cone angles and colour stay.
//
// Arrays make array_count copies, each from the one before: moved by the
// offset, turned about the base by array_angle / (array_count + 1), scaled
// by the factor, or moved along array_path: copy k lies k shares of the
// path's length along it from its start, an open path shared out so that
// the last copy reaches its end, a closed one in array_count + 1 shares so
// that no copy lands on the source. Copies are not selected.
//
// Rotations: 11 turns in the view plane (screen right towards screen up),
// 9 about the view's horizontal axis (screen up towards the viewer) and 10
// about its vertical axis (towards the viewer, then screen right), all about
// the base point by the view-plane angle from the base to the second point.
#pragma once

#include "model/model_state.h"
#include "scene/layers.h"

// The point arithmetic of the current mode (p itself for modes that move nothing).
Point3 Transform_Point(Point3 p);

// Stores base, second, their difference and mode with the active viewport's
// axes, and works out the rotation angle (9, 10, 11) and the mirror line
// (16, 80, 81). Mode 16 is stored as 81 with mirror_erase, else 80.
void Xform_Setup(Point3 base, Point3 second, int mode);

// Prints "\nPlease wait...", sets the transform up and applies the mode to
// every selected object of every layer that is on, then redraws every
// viewport when Auto_Redraw is on. Objects that were processed keep their
// change; after a failure the rest are only deselected (change of layer
// prints "\nUnable to Change"). Returns 1.
int Xform_Run(Point3 base, Point3 second, int mode);

// The drag preview: draws the selected objects as `mode` from base to
// second would leave them, in the current colour and write mode, without
// touching them or the transform state.
void Xform_DrawPreview(int mode, Point3 base, Point3 second);

// EXPLODE: every selected object of the visible layers is generated once
// into the explode consumer, which adds its facets (or a primitive's grid) to
// Current_Layer as new objects, which take the source's texture name and
// flags. With explode_erase the source is removed when it gave something. Triangles and lights are single pieces already and
// stay as they are. An object that cannot be exploded whole keeps its
// source and loses its partial pieces; the rest are only deselected. Returns 1.
int Xform_Explode();
