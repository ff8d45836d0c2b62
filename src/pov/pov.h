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
#include "pov/pov_state.h"
#include "pov/textures.h"

// --- scene file (pov_scene.cpp) ---
// The scene file's path: Scenes_Dir (POV_DIR when empty) + "/" +
// Scene_Name + ".pov".
void Pov_ScenePath(char* out, size_t size);
// Writes the whole scene file to `path`, replacing it only when every write
// succeeded. 1 written; 2 not written (message printed).
int Pov_WriteScene(const char* path);
void Pov_Printf(const char* format, ...) __attribute__((format(printf, 1, 2)));
void Pov_Write(const char* text, size_t n);   // n bytes as they are
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
