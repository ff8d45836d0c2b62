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
#include "pov/pov_settings.h"
#include "pov/textures.h"

// Writer state: alive only while a scene file is written, except
// Vertex_Tolerance, which the DXF export shares. The settings saved with the
// scene are PovSettings (pov_settings.h), in g.pov.
struct PovState {
    FILE* file = nullptr;                  // open scene file
    char Pov_Indent_String[256] = "\n";    // starts every statement line
    int Triangles_Pending = 0;             // the layer's stand-alone triangles are still to come
    int Faces_Pending = 0;                 // the layer's stand-alone faces are still to come
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
// Replaces Object_Draw as the triangle source of surfaces (forms 2 to 8),
// for tests; nullptr restores it. Kept across state resets.
typedef void (*PovSurfaceGenerator)(Object* object);
void Pov_SetSurfaceGenerator(PovSurfaceGenerator generator);

// --- pipes, walls and bicubic patches (pov_shapes.cpp) ---
void Pov_WritePipe(const Object* object);
void Pov_WriteWall(const Object* object);
void Pov_WritePatches(const Object* object);
