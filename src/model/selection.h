// selection.h - the selection set: the objects whose `selected` mark is set.
//
// g.scene.Selected_Count always equals the number of marked objects; only
// Object_SetSelected, Selection_Clear (and the transform engine, which deselects or frees the
// objects it processes) change marks.
#pragma once

#include "scene/layers.h"

// Sets or clears obj's mark, adjusts Selected_Count when the mark changes and
// redraws the object (highlighted when on, else in its layer's colour).
void Object_SetSelected(Object* obj, int on, Layer* layer);

// Deselects every selected object; those on visible layers are redrawn in
// their layer's colour.
void Selection_Clear();

// Colour in which objects of `layer` are drawn: its colour, or 0 when that is
// the viewport background colour.
int Selection_LayerColour(const Layer* layer);
// Draws one object in `colour` through the 3D pen of the active viewport.
void Selection_DrawObject(const Object* obj, int colour);
