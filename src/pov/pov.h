// pov.h - the ray-tracer scene-file writer, its object writers and settings.
//
// Export_Pov writes one POV-Ray 2.2 scene: header, trace settings, camera,
// texture declarations, BLOCK Layer declarations and the ACTION section in
// which every visible layer is one CSG statement. All text goes through
// Pov_Printf into the open file; statement lines start with Pov_Indent.
// Generated surfaces are spooled as 72-byte triangle records through
// "triangle.tmp" so that smooth vertex normals can be averaged afterwards.
#pragma once
#include <cstdint>
#include <cstdio>

#include "scene/layers.h"
#include "scene/object.h"
#include "pov/textures.h"

// Scene-writer settings (edited in fog.dlg and dirs.dlg, saved with the scene).
struct PovSettings {
    int Max_Trace_Level = 5;               // "#max_trace_level %d"
    int Max_Intersections = 100;           // "#max_intersections %d"
    int Fog_On = 0;                        // write the fog block
    Point3 Fog_Color{0.5, 0.5, 0.5};       // fog colour, as stored
    double Fog_Distance = 100.0;           // fog distance
    int Background_On = 0;                 // write the background line
    Point3 Background_Color{0, 0, 0};      // background colour
    int Overwrite_Pov = 0;                 // replace an existing scene file without asking
    int Export_Before_Render = 1;          // RENDER writes the scene file first
    char Scene_Name[13] = "qmr";           // base name of the scene file
};

// Writer state: alive only while a scene file is written, except Output_Mode
// and Vertex_Tolerance which other output paths share.
struct PovState {
    PovSettings settings;                  // see above
    FILE* file = nullptr;                  // open scene file
    char Pov_Indent_String[256] = "\n";    // starts every statement line
    int Triangles_Pending = 0;             // the layer's stand-alone triangles are still to come
    int Faces_Pending = 0;                 // the layer's stand-alone faces are still to come
    int Output_Mode = 0;                   // 0 screen, 1 scene text, 2 DXF, 3 RAW, 4 explode, 5 shade
    double Vertex_Tolerance = 0.0;         // per-coordinate tolerance of shared vertices
    FILE* spool = nullptr;                 // open "triangle.tmp" while a surface is spooled
    long Spool_Count = 0;                  // triangles in the spool
    TextureState textures;                 // texture chooser and editor
};

// --- scene file (pov_scene.cpp) ---
// 1 written; 2 not written (No, or the file could not be created); 0 the
// overwrite question was answered by another command.
int Export_Pov();
void Pov_Printf(const char* format, ...) __attribute__((format(printf, 1, 2)));
void Pov_Indent();
Layer* Pov_WriteLayer(Layer* layer);
void Pov_WriteObject(Object* object, Layer* layer);
void Pov_WriteLayerTransform(Layer* layer);
void Pov_WriteTextureTransform(Layer* layer);
int Layer_IsBlock(const Layer* layer);

// --- object writers (pov_objects.cpp) ---
void Pov_WritePrimitive(Object* object);
void Pov_WriteLight(const LightData* light);
int Light_IsFinite(const LightData* light);   // no NaN or infinity in what is written
void Pov_WriteTriangles(Layer* layer);
void Pov_WriteFaces(Layer* layer);
int Triangle_IsDegenerate(Point3 a, Point3 b, Point3 c);
int Point_Same(Point3 a, Point3 b);

// --- generated surfaces and the spool (pov_mesh.cpp) ---
void Pov_WriteMesh(Object* object);
// Appends one triangle to the open spool (a no-op when none is open).
void Pov_SpoolTriangle(Point3 a, Point3 b, Point3 c);
// Writes the spooled triangles of `object` (flags decide smooth/no_shadow).
void Pov_WriteSpooled(const Object* object);
// The geometry subsystem registers the routine that runs a surface's triangle
// generator (forms 2 to 8) with Output_Mode 1; it is kept across state resets.
typedef void (*PovSurfaceGenerator)(Object* object);
void Pov_SetSurfaceGenerator(PovSurfaceGenerator generator);

// --- pipes, walls and bicubic patches (pov_shapes.cpp) ---
void Pov_WritePipe(const Object* object);
void Pov_WriteWall(const Object* object);
void Pov_WritePatches(const Object* object);
