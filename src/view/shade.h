// shade.h - the shaded view: filled, lit polygons through a depth buffer.
//
// SHADE paints the current viewport once: the facet sink's shade consumer
// hands every facet to Shade_Polygon, which lights it with one directional
// light (the viewport's UP vector), projects it with the viewport's
// projection and fills it pixel by pixel wherever it is nearer than what
// was drawn before. The picture stays until the next redraw.
#pragma once

#include "scene/point3.h"

// Allocates the run's buffers for the screen and the active viewport's
// rectangle: 1 ready, 0 out of memory (nothing left allocated).
int Shade_Begin();
// Frees the run's buffers (nothing when none are allocated).
void Shade_End();

// Shades the polygon in the buffer g.shading.poly: its first n (3 to
// SHADE_POLY_MAX) world corners, with g.shading.poly_mask's edges drawn.
// Nothing happens outside a run.
void Shade_Polygon(int n);

// The shade consumer's facet hook: the facet through the layer transforms
// into the polygon buffer, then Shade_Polygon. Never asks to stop.
int Shade_Facet(const Point3* corner, int n, int mask);

// Palette index of the lit shade of a unit normal for drawing colour
// `colour`: shade 0 (facing away from the light) to 15 (facing it) of the
// colour's ramp.
int Shade_Index(Point3 normal, int colour);
