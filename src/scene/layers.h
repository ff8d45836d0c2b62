// layers.h - the layer list, nesting and instancing, whole-scene release.
//
// Layers form one doubly linked list from First_Layer. Nesting is a depth
// number: the children of P are the layers right after P with a greater
// `level`. A layer may show another layer's contents through `instance`; a
// layer so referenced is a BLOCK Layer. The option rules below keep nesting
// and instancing free of loops.
#pragma once
#include <cstdint>

#include "scene/object.h"
#include "scene/scene_state.h"

enum LayerCsg : int32_t { CSG_UNION = 1, CSG_MERGE = 2, CSG_INTERSECTION = 3, CSG_DIFFERENCE = 4 };

struct Layer {
    char name[13];             // compared without regard to case
    char texture[21];          // layer texture; "" = none
    Point3 translate;
    Point3 scale;
    Point3 rotate;             // degrees, each in 0..360
    Point3 texture_translate;
    Point3 texture_scale;
    Point3 texture_rotate;
    Layer* next;
    Layer* instance;           // layer whose contents this one also shows
    Layer* prev;
    Object* first_object;      // newest object
    int32_t csg;               // LayerCsg
    int32_t color;             // palette index for drawing
    int32_t on;                // 0 = off
    int32_t level;             // nesting depth, 0 = top
    int32_t rotation_order;    // 0 = X, Z, Y one by one; else one X-Y-Z rotation
};


Layer* Layer_NewFirst();
Layer* Layer_Append();
int Layer_Find(const char* name);
int Layer_Make(const char* name);
int Layer_SelectByIndex(int n);
int Layer_Delete(Layer* layer);
int Layer_Count();
Layer* Layer_At(int position);   // 1-based; nullptr past the end
void Scene_Clear();

// Options of the layer list's right-click box, applied to target T with the
// Current_Layer as C.
enum LayerOption {
    LAYER_OPT_CANCEL = -1,
    LAYER_OPT_INSTANCE = 1,
    LAYER_OPT_NEST = 2,
    LAYER_OPT_SLIDE = 3,
    LAYER_OPT_DEL_INSTANCE = 4,
};

// The error boxes of the loop-prevention rules, as data for the dialog.
struct LayerErrorBox {
    int columns, rows;
    int line_count;
    const char* lines[3];
};
const LayerErrorBox* Layer_ErrorBox(int n);   // n = 1..3, else nullptr

// Applies `option` to `target`. Returns 1 when the list changed, else 0.
// *error_box is set to the box to show (1..3) or 0. A rule-3 sweep may both
// change the list and report box 3.
int Layer_ApplyOption(Layer* target, int option, int* error_box);

// Top-level ancestor of a layer (the layer itself at level 0).
Layer* Layer_TopAncestor(Layer* layer);
