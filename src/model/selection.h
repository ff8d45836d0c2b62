// selection.h - the selection set: the objects whose `selected` mark is set.
//
// g.scene.Selected_Count always equals the number of marked objects; only
// Object_SetSelected, Selection_Clear, the hit passes of the selection
// prompts, the transform engine (which deselects or frees the objects it
// processes) and UNDO (which puts back the marks of a step) change marks.
// A marked object is drawn in the highlight colour
// (general_color), any other in its layer's colour.
#pragma once

#include "scene/layers.h"

// Sets or clears obj's mark, adjusts Selected_Count when the mark changes and
// redraws the object (highlighted when on, else in its layer's colour).
void Object_SetSelected(Object* obj, int on, Layer* layer);

// Deselects every selected object; those on visible layers are redrawn in
// their layer's colour.
void Selection_Clear();

// Redraws every selected object of the visible layers highlighted; 0 when
// the user interrupted the drawing, else 1.
int Selection_Redraw();

// The first selected object, layers in list order (those that are off
// skipped), objects from the newest; nullptr when none. Its layer and that
// layer's drawing colour are left in g.selection.first_layer/first_colour.
Object* Selection_First();

// Colour in which objects of `layer` are drawn: its colour, or 0 when that is
// the viewport background colour.
int Selection_LayerColour(const Layer* layer);
// Draws one object of `layer` in `colour` through the 3D pen of the active
// viewport, placed by the layer's transforms.
void Selection_DrawObject(const Object* obj, const Layer* layer, int colour);
// The colour obj is shown in: highlighted when marked, else its layer's.
int Selection_ColourOf(const Object* obj, const Layer* layer);
