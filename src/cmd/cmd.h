// cmd.h - the command layer: the command loop, the command table, the hooks
// it installs in the layers below, and every command function.
//
// Commands are the only code that asks the user anything. Each Com_*
// function takes no arguments and returns 1 when it finished (or the user
// declined) and 0 when its input was replaced by another command code,
// which is then in g.input.InputResult.code.
#pragma once

#include "cmd/cmd_state.h"

struct Layer;
struct Object;
struct PrimitiveData;

// --- loop and table (command_loop.cpp) ---
// Runs commands until EXIT or NEW ends the loop.
void CommandLoop();
// The transparent-command and point-modifier hook of the prompt: 1 makes
// the prompt ask again, 0 lets the result through.
int Command_Transparent(int result);
// Runs the command of a code; -1 (and the code cleared) when it has none.
int Command_Run(int code);
int Command_IsTransparent(int code);
// Adds (or replaces) the command of a code at run time.
void Command_Register(int code, CommandFn run, int transparent);

// --- hooks (install.cpp) ---
// Fills the facet sink's consumer table and the prompt's transparent hook.
// Run at start-up and by every state reset.
void Commands_Install();

// --- file commands (cmd_file.cpp) ---
int Com_Exit();     // 101
int Com_New();      // 102
int Com_Open();     // 103
int Com_Save();     // 104
int Com_SaveAs();   // 105
int Com_Merge();    // 106
int Com_ImportDxf();   // 107
int Com_ImportRaw();   // 120
int Com_Clear();    // 150
// SAVE's steps (SAVE AS for an untitled scene): the command's result, and
// *saved 1 when the scene was written.
int Save_Scene(int* saved);

// --- export and import (cmd_exchange.cpp) ---
// The scene file with its overwrite question: 1 written; 2 not written (No,
// or a failure whose message is printed); 0 the question was replaced by
// another command (the caller must return at once).
int Export_Pov();
int Com_ExportPov();   // 108
int Com_ExportRaw();   // 121
int Com_ExportDxf();   // 122
// The import steps that follow the file browser's choice: the reader with
// its questions, then the messages and the redraw. 1 read, 0 not opened.
int Import_Dxf(const char* path);
int Import_Raw(const char* path);

// --- view commands, all transparent (cmd_view.cpp) ---
int Com_Redraw();       // 401: the current viewport
int Com_ZoomIn();       // 402: zoom to a picked rectangle
int Com_Unzoom();       // 403: back to the previous zoom
int Com_ZoomAll();      // 405: frame every visible object
int Com_Pan();          // 407: move the centre by a picked difference
int Com_ZoomOut();      // 408: AREA doubled
int Com_RedrawAll();    // 410: every viewport
int Com_View3D();       // 421: the perspective view of the camera
int Com_ToggleWorld();  // 422: WORLD on/off
int Com_ViewTop();      // 423
int Com_ViewBottom();   // 424
int Com_ViewRight();    // 425
int Com_ViewLeft();     // 426
int Com_ViewFront();    // 427
int Com_ViewBack();     // 428
int Com_Duplicate();    // 430: copy the current view into a picked viewport
int Com_Area();         // 602: the drawing area (view size)
int Com_Elevation();    // 603: the working plane's elevation
int Com_Vpoint();       // 604: pitch and heading of a WORLD view

// --- settings dialogs (cmd_dialogs.cpp); OK writes, Cancel and Ctrl-C don't ---
int Com_About();       // 901: the about box (transparent)
int Com_Viewports();   // 420: the seven screen layouts
// The drawing-aids dialog: 1 when confirmed, 0 when cancelled or missing.
int Variables_Dialog();
int Com_Variables();   // 502
int Com_Options();     // 802: ray-tracer options, display and palette pickers
int Com_Dirs();        // 803: directories, names, output type
int Com_Fog();         // 804: fog, background, trace limits
int Com_Textures();    // 503: the texture chooser, with its editor

// --- render and shade (cmd_render.cpp, cmd_shade.cpp) ---
// RENDER: 1 the ray tracer was started; 2 stopped by a failure or by No;
// 0 the work file was not saved.
int Render();
int Com_Render();      // 801
int Com_RenderBat();   // 820: render.bat alone
// The prompt's idle hook: one line for each ray tracer that has finished.
void Render_ReportEnded();
int Com_Shade();       // 810

// --- layers (cmd_layers.cpp) ---
// The layers dialog: 0 when layers.dlg can't be loaded, else 1. Sets
// g.cmd.sceneChanged when something shown in the views changed.
int Layers_Dialog();
int Com_Layers();      // 501
// The right-click option box for layer `target`: 1 when the list changed.
int Layer_Options(Layer* target);
// trans.dlg on a layer's transform or its texture's: 1 when OK was pressed.
int Layer_EditTransform(Layer* layer);
int Layer_EditTextureTransform(Layer* layer);
// Error box 1..3 of the layer rules; waits for its OK button.
void Layer_ErrorMessage(int box);

// --- selection (cmd_select.cpp) ---
// The selection prompt: picks, windows, add and remove, whole layers. The
// number selected when the user finished (E, or the running command
// repeated), 0 when it was abandoned: then InputResult.code holds the code
// that replaced it, or nothing was selected. Set g.selection.Select_Single
// first to end at the first object; it is cleared on return.
int Select_Objects();
// One pick that hits (asked again until one does); always 1.
int Select_One(int by_layer, int remove);
// One window; always 1.
int Select_Window(int by_layer, int remove);
// The selection an edit command works on: the current one, or one asked for
// now. 1 there is one; 0 none (the command is finished); -1 the prompt was
// replaced (the command must return 0).
int Edit_UseSelection();
int Com_Select();           // 307
int Com_DeselectAll();      // 951
int Com_PickLayer();        // 952
int Com_UnpickLayer();      // 953
int Com_PickObject();       // 954
int Com_UnpickObject();     // 955
int Com_WindowSelect();     // 956
int Com_WindowDeselect();   // 957

// --- ray-tracer primitives (cmd_prims.cpp) ---
// Shows an object a command has just made: every viewport redrawn when
// Auto_Redraw is on, else the object drawn in each in its layer's colour.
// nullptr (the object could not be made) prints "Out Of Memory!".
void Create_Show(Object* obj);
// Draws an object a command changed in every view as the redraw shows it,
// and highlighted in the active view while it is selected; with `erase`,
// in the background colour instead (before the change).
void Edit_DrawObject(const Object* obj, Layer* layer, int erase);
// The segments question, prefix + "%s Set Segments <%d>: "; SEG_VALUE
// without a question when AUTO-SEG is on. 0 when the prompt was replaced,
// else 1 with the count (at least 2) in *segments.
int Ask_Segments(const char* prefix, int* segments);
int Com_Sphere();        // 220
int Com_Torus();         // 221
int Com_Disc();          // 222
int Com_Cube();          // 223
int Com_Cone();          // 224
int Com_Cylinder();      // 225
int Com_HeightField();   // 226
int Com_Plane();         // 227

// --- editing primitives (cmd_prim_edit.cpp) ---
// The keyword menu of the primitive's kind (302's edit machine): 1 after
// Exit (and at once for a plane), 0 when the prompt was replaced.
int Primitive_Edit(Object* obj, Layer* layer);
// trans.dlg on the record's translate, scale and rotate: 1 when OK wrote
// them back.
int Transform_Dialog(PrimitiveData* record);
// general.dlg on the object's texture, No_shadow and Smooth_triangle and
// on *segments, `text` shown in item 5: 1 when OK wrote them back.
int General_Dialog(Object* object, int* segments, const char* text);
int Com_TransformDialog();   // 313: trans.dlg for each selected primitive
int Com_GeneralDialog();     // 314: general.dlg for the selection

// --- lights and camera (cmd_lights.cpp) ---
int Com_SpotLight();     // 228
int Com_PointLight();    // 229
int Com_AreaLight();     // 230
int Com_Camera();        // 231
// editlght.dlg on the light: 1 when OK wrote the record back, 0 on Cancel
// or when the file is missing.
int Light_Dialog(Object* object);
// 302's edit machine for a light: the dialog, the light redrawn. 1.
int Light_Edit(Object* obj, Layer* layer);
// camera.dlg: 1 when OK wrote CAM, TAR, UP, FOV, CAMERA and the aspect ratio.
int Camera_Dialog();
int Com_CameraDialog();  // 510: the dialog, then every viewport redrawn when Auto_Regen is on

// --- edit commands (cmd_edit.cpp) ---
int Com_Erase();        // 301
int Com_EditObject();   // 302: one object to its kind's edit machine
int Com_Move();         // 303
int Com_Copy();         // 304
int Com_Rotate();       // 305
int Com_Scale();        // 306
int Com_Assign();       // 308
int Com_Gravity();      // 309
int Com_Array();        // 310
int Com_Explode();      // 311
int Com_Mirror();       // 317
int Com_ChangeLayer();  // 318

// --- polylines (cmd_poly.cpp) ---
int Com_Polyline();     // 201
int Com_Arc();          // 212
int Com_Circle();       // 213

// --- surfaces from polylines (cmd_surface.cpp) ---
int Com_Coons();        // 214
int Com_Rulsurf();      // 215
int Com_Extrude();      // 216
int Com_Revolution();   // 217
int Com_ConeSweep();    // 218
int Com_Wall();         // 232
int Com_Parray();       // 312
int Com_Join();         // 315
int Com_Thicken();      // 316
// Prints `prompt` and runs single-object selection until a POLYLINE object
// is picked ("Object NOT a polyline " for anything else), which is left
// unmarked and shown in the selection colour. 1 with the object and its
// layer; 0 when the selection was given up or replaced (InputResult.code
// then holds the replacing code).
int Select_Polyline(const char* prompt, Object** obj, Layer** layer);
// The N and M numbers of a mesh: an empty Enter takes 7, a number must be
// greater than zero (at most GEOM_MAX_SEGMENTS). 0 when replaced.
int Ask_NM(int* n, int* m);

// --- edit machines reached from 302 (cmd_poly_edit.cpp, cmd_mesh_edit.cpp) ---
// Each returns 1 when the edit ended (E), 0 when another command replaced
// its input. The object may be gone afterwards (a BREAK replaces it).
int Poly_Edit(Object* obj, Layer* layer);       // forms 1, 9, 10
int Sweep_Edit(Object* obj, Layer* layer);      // forms 2, 3, 4
int Mesh_Edit(Object* obj, Layer* layer);       // form 5
int PrimPoly_Edit(Object* obj, Layer* layer);   // forms 6, 7, 8

// --- facets and polygon solids (cmd_shapes.cpp) ---
int Com_PCube();        // 202
int Com_Pyramid();      // 203
int Com_Wedge();        // 204
int Com_Triangle();     // 205
int Com_Face();         // 206
int Com_Mesh();         // 207

// --- complex shapes and Bezier patches (cmd_complex.cpp) ---
int Com_Bezier();       // 208: bezier.dlg chooses one of the five below
int Com_Staircase();    // 209
int Com_ScrewThread();  // 210
int Com_Spring();       // 211
int Com_Complex();      // 219: complex.dlg chooses a solid or complex shape
int Com_BTorus();
int Com_BDish();
int Com_BSphere();
int Com_BCylinder();
int Com_BCylinder2();

// --- corner edit machines reached from 302 (cmd_facet_edit.cpp) ---
// 1 after E, 0 when another command replaced the input.
int Triangle_Edit(Object* obj, Layer* layer);
int Face_Edit(Object* obj, Layer* layer);
