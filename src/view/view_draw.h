// view_draw.h - drawing a viewport: its furniture, the object traversal and
// the layer transforms the traversal applies on the way to the 3D pen.
#pragma once

#include "scene/layers.h"
#include "view/viewport.h"

// Furniture of one viewport (background, grid, axes, origin mark, camera
// icon, title); nothing unless the record's rectangle is set. In extents
// mode only what goes through the pen is measured (the camera icon).
void View_Draw(Viewport* vp);

// Every visible layer's objects through the 3D pen of the active viewport.
// 1 when it ran to the end, 0 when it stopped (interrupt, or a waiting event
// in the interruptible variant).
int Scene_DrawObjects();
int Scene_DrawObjectsInterruptible();

// Layer transforms: the screen consumer passes every point through the
// composition of the pushed layers, innermost first.
void View_PushLayerTransform(const Layer* layer);
void View_PopLayerTransform();
Point3 View_LayerPoint(Point3 p);
// Replaces the pushed transforms with those of `layer` and its ancestors
// (nullptr: none), for drawing one object outside the traversal
// (view_layer.cpp).
void View_UseLayerTransform(const Layer* layer);
// The screen consumer of the facet sink: the 3D pen of the active viewport,
// each point through the layer transforms.
void View_ScreenMoveTo(Point3 p);
int View_ScreenLineTo(Point3 p);

// Drawing colour of a layer's objects: its colour, or colour XOR the
// viewport background when the two are equal.
int View_LayerColour(const Layer* layer);
