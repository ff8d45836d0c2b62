// view_object.h - one object drawn (or erased) in every viewport on the
// screen, outside the redraw's own walk: after a command made or changed it.
#pragma once

#include "scene/layers.h"

// 1 when `layer` and every layer it is nested under are on, so that the
// redraw shows its objects.
int Layer_Shown(const Layer* layer);

// Draws obj, an object of `layer`, in `colour` (copy mode) in each viewport
// of the layout, or in the active one alone when one viewport fills the
// drawing area. Nothing when the layer is not shown. Erasing is drawing in
// the background colour.
void Views_DrawObject(const Object* obj, const Layer* layer, int colour);
