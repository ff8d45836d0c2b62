// pov_state.h - state of the ray-tracer output: the scene-file writer and
// render options kept with the scene, and the writer while it runs. Types only.
#pragma once

#include <cstdio>

#include "pov/texture_state.h"
#include "scene/point3.h"

// Scene-file writer options (fog dialog, camera dialog, directories dialog).
struct PovSettings {
    int Max_Trace_Level = 5;              // "#max_trace_level %d"
    int Max_Intersections = 100;          // "#max_intersections %d"
    int Fog_On = 0;                       // write the fog block
    double Fog_Distance = 100.0;
    Point3 Fog_Color{0.5, 0.5, 0.5};      // rgb
    int Background_On = 0;                // write the background line
    Point3 Background_Color{0, 0, 0};     // rgb
    int Overwrite_Pov = 0;                // replace a scene file without asking
    int Export_Before_Render = 1;         // RENDER writes the scene file first
};

// Ray-tracer command-line options written to the option file.
struct RenderSettings {
    char Extra_Options[54] = "";          // written as its own line when not empty
    int Render_Width = 320;
    int Render_Height = 200;
    int Render_Display = 1;               // show the picture while tracing
    int Display_Type = 16;                // 0..18, display code after "+D"
    int Palette_Type = 4;                 // 0..4
    int Render_Verbose = 0;
    int Render_Partial = 0;               // window switches when set
    int Start_Row = 1;
    int Start_Col = 1;
    int End_Row = 1;
    int End_Col = 1;                      // not stored in the work file
    int Render_Continue = 0;
    int Render_Quality = 9;
    int Antialias_On = 0;
    double Antialias_Threshold = 0.3;
    int Antialias_Depth = 1;
    double Antialias_Jitter = 1.0;
    int Buffer_Size = 20;
    int Bounding_On = 1;
    int Bounding_Threshold = 1;
    int Max_Symbols = 1000;
    int Render_Abort = 1;
    int Render_Pause = 1;
    int Output_Type = 2;                  // 0 NONE .. 4 TARGE24
    int Write_Render_Bat = 0;             // also write "render.bat"
    int Reload_After_Render = 0;          // restart line in "render.bat"
    int Spare_Int12 = 0;                  // kept only so a load/save keeps it
    int Spare_Int32 = 1;                  // likewise
    double Spare_Double34 = 0.0;          // likewise
};

// How the vertex normals of a list were found.
enum NormalPass { NORMALS_INDEXED = 1, NORMALS_SORTED = 2, NORMALS_PLAIN = 3 };

// Writer state: alive only while a scene file is written, except
// Vertex_Tolerance, which the DXF export shares. The settings saved with the
// scene are PovSettings (above), in g.pov.
struct PovState {
    FILE* file = nullptr;                  // open scene file
    char Pov_Indent_String[256] = "\n";    // starts every statement line
    int Triangles_Pending = 0;             // the layer's stand-alone triangles are still to come
    int Faces_Pending = 0;                 // the layer's stand-alone faces are still to come
    double Vertex_Tolerance = 0.0;         // per-coordinate tolerance of shared vertices
    FILE* spool = nullptr;                 // open "triangle.tmp" while a surface is spooled
    long Spool_Count = 0;                  // triangles in the spool
    size_t Sort_Budget = 1 << 20;          // bytes each sort of the normal pass over the spool
                                           // file may hold; too little for 8 records: plain pass
    int Normal_Pass = 0;                   // pass of the last smooth list: NORMALS_INDEXED ...
    int Write_Error = 0;                   // the spool failed: the scene file is not written
    TextureState textures;                 // texture chooser and editor
};
