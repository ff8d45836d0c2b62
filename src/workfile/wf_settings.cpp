// wf_settings.cpp - the settings (section 1) and output-option (section 2)
// tables of the work file. The 2.0A reader uses the same fields at fixed
// offsets (wf_read20a.cpp).
#include "workfile/wf_settings.h"

#include "state.h"

#define WF_AT(expr) [] { return static_cast<void*>(&(expr)); }

const WfField kSettingsFields[] = {
    {1, WF_INT, WF_AT(g.aids.orthoOn), 0},
    {2, WF_INT, WF_AT(g.aids.blipsOn), 0},
    {3, WF_INT, WF_AT(g.aids.coordsMode), 0},
    {4, WF_INT, WF_AT(g.shade.Shade_Type), 0},
    {5, WF_INT, WF_AT(g.shade.Shade_UseEdge), 0},
    {6, WF_INT, WF_AT(g.scene.Default_No_shadow), 0},
    {7, WF_INT, WF_AT(g.scene.Default_Smooth), 0},
    {8, WF_INT, WF_AT(g.aids.Input_Line_Option), 0},
    {9, WF_INT, WF_AT(g.aids.Auto_Regen), 0},
    {10, WF_INT, WF_AT(g.aids.Auto_Redraw), 0},
    {11, WF_INT, WF_AT(g.aids.Auto_Deselect), 0},
    {12, WF_INT, WF_AT(g.aids.Erase_No_Confirm), 0},
    {13, WF_INT, WF_AT(g.aids.Auto_Seg), 0},
    {14, WF_INT, WF_AT(g.aids.Seg_Value), 0},
    {15, WF_INT, WF_AT(g.render.Write_Render_Bat), 0},
    {16, WF_INT, WF_AT(g.render.Reload_After_Render), 0},
    {17, WF_INT, WF_AT(g.pov.Overwrite_Pov), 0},
    {18, WF_INT, WF_AT(g.pov.Export_Before_Render), 0},
};
const size_t kSettingsFieldCount = sizeof kSettingsFields / sizeof kSettingsFields[0];

const WfField kOutputFields[] = {
    {1, WF_TEXT, WF_AT(g.render.Extra_Options), sizeof g.render.Extra_Options},
    {2, WF_INT, WF_AT(g.pov.Max_Trace_Level), 0},
    {3, WF_INT, WF_AT(g.pov.Max_Intersections), 0},
    {4, WF_INT, WF_AT(g.pov.Fog_On), 0},
    {5, WF_DOUBLE, WF_AT(g.pov.Fog_Distance), 0},
    {6, WF_POINT, WF_AT(g.pov.Fog_Color), 0},
    {7, WF_INT, WF_AT(g.pov.Background_On), 0},
    {8, WF_POINT, WF_AT(g.pov.Background_Color), 0},
    {9, WF_INT, WF_AT(g.render.Palette_Type), 0},
    {10, WF_INT, WF_AT(g.render.Display_Type), 0},
    {11, WF_INT, WF_AT(g.render.Render_Display), 0},
    {12, WF_INT, WF_AT(g.render.Spare_Int12), 0},
    {13, WF_INT, WF_AT(g.render.Render_Verbose), 0},
    {14, WF_INT, WF_AT(g.render.Render_Width), 0},
    {15, WF_INT, WF_AT(g.render.Render_Height), 0},
    {16, WF_INT, WF_AT(g.render.Render_Partial), 0},
    {17, WF_INT, WF_AT(g.render.Start_Row), 0},
    {18, WF_INT, WF_AT(g.render.Start_Col), 0},
    {19, WF_INT, WF_AT(g.render.End_Row), 0},
    {20, WF_INT, WF_AT(g.render.Render_Quality), 0},
    {21, WF_INT, WF_AT(g.render.Render_Abort), 0},
    {22, WF_INT, WF_AT(g.render.Render_Pause), 0},
    {23, WF_INT, WF_AT(g.render.Render_Continue), 0},
    {24, WF_INT, WF_AT(g.render.Output_Type), 0},
    {25, WF_INT, WF_AT(g.render.Buffer_Size), 0},
    {26, WF_INT, WF_AT(g.render.Max_Symbols), 0},
    {27, WF_INT, WF_AT(g.render.Bounding_On), 0},
    {28, WF_INT, WF_AT(g.render.Bounding_Threshold), 0},
    {29, WF_INT, WF_AT(g.render.Antialias_On), 0},
    {30, WF_INT, WF_AT(g.render.Antialias_Depth), 0},
    {31, WF_DOUBLE, WF_AT(g.render.Antialias_Threshold), 0},
    {32, WF_INT, WF_AT(g.render.Spare_Int32), 0},
    {33, WF_DOUBLE, WF_AT(g.render.Antialias_Jitter), 0},
    {34, WF_DOUBLE, WF_AT(g.render.Spare_Double34), 0},
};
const size_t kOutputFieldCount = sizeof kOutputFields / sizeof kOutputFields[0];

const WfField* Wf_FindField(const WfField* table, size_t n, int key) {
    for (size_t i = 0; i < n; i++)
        if (table[i].key == key) return &table[i];
    return nullptr;
}

void Wf_ClampSettings() {
    // The same ranges the named settings keep.
    if (g.aids.coordsMode < 1) g.aids.coordsMode = 1;
    if (g.aids.coordsMode > 3) g.aids.coordsMode = 3;
    if (g.aids.Seg_Value < 2) g.aids.Seg_Value = 2;
    g.render.Extra_Options[sizeof g.render.Extra_Options - 1] = '\0';
}
