// cmd_dialogs.cpp - the settings dialogs: about box, viewport layouts,
// drawing aids, ray-tracer options (with the display and palette pickers),
// fog and trace limits (with the colour picker), directories and names;
// and the texture chooser with its editor.
//
// Every settings dialog edits private copies through a form table and
// writes them back only on its OK button (id 1); the Cancel button (id 0)
// and Ctrl-C (id -1) leave every setting as it was.
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "base/field.h"
#include "base/message.h"
#include "cmd/cmd.h"
#include "input/input.h"
#include "input/settings.h"
#include "state.h"
#include "ui/dialog.h"
#include "ui/form.h"
#include "ui/texture_dialogs.h"
#include "view/view_commands.h"
#include "view/viewport.h"

namespace {

constexpr int kOk = 1;
constexpr int kCancel = 0;

bool Closes(int id) { return id == kOk || id == kCancel || id == -1; }

// --- about box ------------------------------------------------------------------

}  // namespace

int Com_About() {
    Dialog d;
    if (!Dialog_Open(&d, "about.dlg")) return 1;
    DialogResult r;
    do Dialog_Run(&d, &r);
    while (r.id != 1 && r.id != -1);
    Dialog_Close(&d);
    return 1;
}

// --- textures ---------------------------------------------------------------------

int Com_Textures() {
    g.input.InputResult.code = 0;
    Texture_Choose(1);
    return 1;
}

// --- viewport layouts -------------------------------------------------------------

int Com_Viewports() {
    g.input.InputResult.code = 0;
    Dialog d;
    if (!Dialog_Open(&d, "viewport.dlg")) return 1;
    DialogResult r;
    do Dialog_Run(&d, &r);
    while (r.id != kCancel && r.id != -1 && (r.id < 1 || r.id > 7));
    Dialog_Close(&d);
    if (r.id >= 1 && r.id <= 7) Views_SetLayout(r.id, 1);   // the views keep their settings
    return 1;
}

// --- drawing aids -------------------------------------------------------------------

namespace {

void PitchRule(void* value) {
    double* v = static_cast<double*>(value);
    *v = Form_Reduce360(*v);
    if (*v == 90) *v = 89.9;        // the view would look along its own plane
    else if (*v == 270) *v = 269.9;
}

struct AidsCopy {
    double spacing[6];   // GRIDX, GRIDY, GRIDZ, SNAPX, SNAPY, SNAPZ
    Point3 centre;
    double pitch, heading;
    int seg;
    int flags[15];       // ids 14..28
};

const char* const kSpacingNames[6] = {"GRIDX", "GRIDY", "GRIDZ", "SNAPX", "SNAPY", "SNAPZ"};
// The check boxes 14..28 that are named settings; the others are switches.
const char* const kFlagNames[15] = {"AUTO-SEG", "BLIPS", "AXIS",  "CENTER", nullptr,
                                    "ORTHO",    "SNAP",  "GRID",  "WORLD",  nullptr,
                                    nullptr,    nullptr, nullptr, nullptr,  nullptr};
int* const kSwitches[15] = {nullptr,
                            nullptr,
                            nullptr,
                            nullptr,
                            &g.aids.Erase_No_Confirm,
                            nullptr,
                            nullptr,
                            nullptr,
                            nullptr,
                            &g.scene.Default_No_shadow,
                            &g.scene.Default_Smooth,
                            &g.aids.Auto_Regen,
                            &g.aids.Input_Line_Option,
                            &g.aids.Auto_Deselect,
                            &g.aids.Auto_Redraw};

// SEG_VALUE is typed as a real: absolute, rounded, at least 2.
int SegFromReal(double v) {
    if (std::isnan(v)) return 2;
    v = fabs(v);
    if (!(v < 2147483647.0)) return INT_MAX;
    int n = (int)lround(v);
    return n < 2 ? 2 : n;
}

}  // namespace

int Variables_Dialog() {
    Dialog d;
    if (!Dialog_Open(&d, "variable.dlg")) return 0;
    AidsCopy c{};
    for (int i = 0; i < 6; i++) Var_GetDouble(kSpacingNames[i], &c.spacing[i]);
    c.centre = View_GetCentre(&g.view.Active_Viewport);
    Var_GetDouble("PITCH", &c.pitch);
    Var_GetDouble("HEADING", &c.heading);
    Var_GetInt("SEG_VALUE", &c.seg);
    for (int i = 0; i < 15; i++) {
        if (kFlagNames[i]) Var_GetInt(kFlagNames[i], &c.flags[i]);
        else c.flags[i] = *kSwitches[i] != 0;
    }
    const int orthoBefore = c.flags[19 - 14], snapBefore = c.flags[20 - 14];

    FormField fields[6 + 3 + 3 + 15];
    int n = 0;
    for (int i = 0; i < 6; i++) fields[n++] = {2 + i, FORM_DOUBLE, &c.spacing[i], "%g", nullptr, 0};
    fields[n++] = {8, FORM_DOUBLE, &c.centre.x, "%g", nullptr, 0};
    fields[n++] = {9, FORM_DOUBLE, &c.centre.y, "%g", nullptr, 0};
    fields[n++] = {10, FORM_DOUBLE, &c.centre.z, "%g", nullptr, 0};
    fields[n++] = {11, FORM_DOUBLE, &c.pitch, "%3.2f", PitchRule, 0};
    fields[n++] = {12, FORM_DOUBLE, &c.heading, "%3.2f", Form_AngleRule, 0};
    const int segField = n;
    fields[n++] = {13, FORM_INT, &c.seg, "%d", nullptr, 0};
    for (int i = 0; i < 15; i++) fields[n++] = {14 + i, FORM_CHECK, &c.flags[i], nullptr, nullptr, 0};

    Form_Show(&d, fields, n);
    DialogResult r;
    do {
        Dialog_Run(&d, &r);
        if (r.id >= 2 && r.id <= 7) {
            // A spacing is a length; 0 would make grid and snap divide by zero.
            if (Dialog_EditText(&d, r.id)) {
                double v = fabs(atof(d.editBuffer));
                if (std::isfinite(v) && v > 0) c.spacing[r.id - 2] = v;
            }
            Form_ShowField(&d, fields[r.id - 2]);
        } else if (r.id == 13) {
            if (Dialog_EditText(&d, 13)) c.seg = SegFromReal(atof(d.editBuffer));
            Form_ShowField(&d, fields[segField]);
        } else {
            Form_React(&d, fields, n, r.id);
        }
    } while (!Closes(r.id));
    Dialog_Close(&d);
    if (r.id != kOk) return 0;

    View_SetCentre(&g.view.Active_Viewport, c.centre);
    for (int i = 0; i < 15; i++) {
        if (kFlagNames[i]) Var_SetInt(kFlagNames[i], &c.flags[i]);
        else *kSwitches[i] = c.flags[i];
    }
    Var_SetInt("SEG_VALUE", &c.seg);
    for (int i = 0; i < 6; i++) Var_SetDouble(kSpacingNames[i], &c.spacing[i]);
    Var_SetDouble("HEADING", &c.heading);
    Var_SetDouble("PITCH", &c.pitch);
    if (c.flags[19 - 14] != orthoBefore || c.flags[20 - 14] != snapBefore) Status_Refresh();
    return 1;
}

int Com_Variables() {
    g.input.InputResult.code = 0;
    if (Variables_Dialog() && g.aids.Auto_Regen) View_Refresh();
    return 1;
}

// --- ray-tracer options -------------------------------------------------------------

namespace {

const char* const kDisplayNames[19] = {
    "Autodetect",   "VGA 320x200",  "VGA 360x480",  "Tseng 3000",   "Tseng 4000",
    "AT&T VDC600",  "OakTech SVGA", "Video 7 SVGA", "Video 7 Vega", "Paradise",
    "Ahead Sys vA", "Ahead Sys vB", "Chips & Tech", "ATI SGVA",     "Everex SVGA",
    "Trident SVGA", "VESA",         "ATI XL",       "SpeedSTAR"};
const char* const kPaletteNames[5] = {"Defualt", "HiColor", "HSV palette", "Grayscale", "Truecolor 24"};
const char* const kOutputNames[5] = {"NONE", "DEFAULT", "RAW", "DUMP", "TARGE24"};

constexpr int kPickFirst = 10;   // display.dlg and palette.dlg: check box 10 + n is choice n

// A choice from a picker dialog of `count` check boxes; *value changes only
// on OK.
void Pick(const char* file, int count, int* value) {
    Dialog d;
    if (!Dialog_Open(&d, file)) return;
    int choice = *value;
    for (int i = 0; i < count; i++) Dialog_SetCheck(&d, kPickFirst + i, i == choice);
    DialogResult r;
    do {
        Dialog_Run(&d, &r);
        if (r.id >= kPickFirst && r.id < kPickFirst + count) {
            Dialog_SetCheck(&d, kPickFirst + choice, 0);
            choice = r.id - kPickFirst;
            Dialog_SetCheck(&d, kPickFirst + choice, 1);
        }
    } while (!Closes(r.id));
    Dialog_Close(&d);
    if (r.id == kOk) *value = choice;
}

void Limit(int* v, int most) {
    Form_AbsInt(v);
    if (*v > most) *v = most;
}
void SizeRule(void* v) { Limit(static_cast<int*>(v), 32768); }
void WindowRule(void* v) { Limit(static_cast<int*>(v), 32767); }
void JitterRule(void* v) {
    double* d = static_cast<double*>(v);
    if (*d > 1.0) *d = 1.0;
}
void ThresholdRule(void* v) {
    double* d = static_cast<double*>(v);
    *d = fabs(*d);
    if (*d > 3.0) *d = 3.0;
}

enum { ID_DISPLAY_NAME = 11, ID_PALETTE_NAME = 12, ID_DISPLAY = 2, ID_PALETTE = 3 };

}  // namespace

int Com_Options() {
    g.input.InputResult.code = 0;
    Dialog d;
    if (!Dialog_Open(&d, "options.dlg")) return 1;
    RenderSettings c = g.render;
    const FormField fields[] = {
        {4, FORM_CHECK, &c.Render_Display, nullptr, nullptr, 0},
        {5, FORM_CHECK, &c.Render_Partial, nullptr, nullptr, 0},
        {6, FORM_CHECK, &c.Antialias_On, nullptr, nullptr, 0},
        {7, FORM_CHECK, &c.Render_Abort, nullptr, nullptr, 0},
        {8, FORM_CHECK, &c.Render_Pause, nullptr, nullptr, 0},
        {9, FORM_CHECK, &c.Render_Continue, nullptr, nullptr, 0},
        {10, FORM_CHECK, &c.Render_Verbose, nullptr, nullptr, 0},
        {13, FORM_INT, &c.Render_Width, "%d", SizeRule, 0},
        {14, FORM_INT, &c.Render_Height, "%d", SizeRule, 0},
        {15, FORM_INT, &c.End_Col, "%d", WindowRule, 0},
        {16, FORM_INT, &c.End_Row, "%d", WindowRule, 0},
        {17, FORM_INT, &c.Start_Col, "%d", WindowRule, 0},
        {18, FORM_INT, &c.Start_Row, "%d", WindowRule, 0},
        {19, FORM_INT, &c.Antialias_Depth, "%d", Form_AbsInt, 0},
        {20, FORM_DOUBLE, &c.Antialias_Jitter, "%g", JitterRule, 0},
        {21, FORM_DOUBLE, &c.Antialias_Threshold, "%g", ThresholdRule, 0},
    };
    auto names = [&]() {
        const int dt = c.Display_Type >= 0 && c.Display_Type < 19 ? c.Display_Type : 0;
        const int pt = c.Palette_Type >= 0 && c.Palette_Type < 5 ? c.Palette_Type : 0;
        Dialog_SetText(&d, ID_DISPLAY_NAME, kDisplayNames[dt]);
        Dialog_SetText(&d, ID_PALETTE_NAME, kPaletteNames[pt]);
    };
    names();
    auto extra = [&](int id) {
        if (id == ID_DISPLAY || id == ID_DISPLAY_NAME) Pick("display.dlg", 19, &c.Display_Type);
        else if (id == ID_PALETTE || id == ID_PALETTE_NAME) Pick("palette.dlg", 5, &c.Palette_Type);
        else return;
        names();
    };
    if (Form_Run(&d, fields, (int)(sizeof fields / sizeof fields[0]), extra)) g.render = c;
    return 1;
}

// --- fog and trace limits -----------------------------------------------------------

namespace {

void ColourRule(void* v) {
    double* d = static_cast<double*>(v);
    *d = fabs(*d);
    if (*d > 1) *d = 1;
}
void BoundingRule(void* v) { Limit(static_cast<int*>(v), 32767); }

enum { ID_PICK_FOG = 20, ID_PICK_BACKGROUND = 21 };
void SymbolsRule(void* v) {
    int* n = static_cast<int*>(v);
    Form_AbsInt(n);
    if (*n < 300) *n = 300;
}

}  // namespace

int Com_Fog() {
    g.input.InputResult.code = 0;
    Dialog d;
    if (!Dialog_Open(&d, "fog.dlg")) return 1;
    PovSettings p = g.pov;
    RenderSettings rs = g.render;
    const FormField fields[] = {
        {3, FORM_CHECK, &p.Fog_On, nullptr, nullptr, 0},
        {4, FORM_DOUBLE, &p.Fog_Distance, "%g", nullptr, 0},
        {5, FORM_DOUBLE, &p.Fog_Color.x, "%g", ColourRule, 0},
        {6, FORM_DOUBLE, &p.Fog_Color.y, "%g", ColourRule, 0},
        {7, FORM_DOUBLE, &p.Fog_Color.z, "%g", ColourRule, 0},
        {9, FORM_CHECK, &p.Background_On, nullptr, nullptr, 0},
        {10, FORM_DOUBLE, &p.Background_Color.x, "%g", ColourRule, 0},
        {11, FORM_DOUBLE, &p.Background_Color.y, "%g", ColourRule, 0},
        {12, FORM_DOUBLE, &p.Background_Color.z, "%g", ColourRule, 0},
        {13, FORM_CHECK, &rs.Bounding_On, nullptr, nullptr, 0},
        {14, FORM_INT, &rs.Bounding_Threshold, "%d", BoundingRule, 0},
        {15, FORM_INT, &rs.Render_Quality, "%d", nullptr, 0},
        {16, FORM_INT, &p.Max_Trace_Level, "%d", Form_AbsInt, 0},
        {17, FORM_INT, &p.Max_Intersections, "%d", Form_AbsInt, 0},
        {18, FORM_INT, &rs.Max_Symbols, "%d", SymbolsRule, 0},
        {19, FORM_INT, &rs.Buffer_Size, "%d", Form_AbsInt, 0},
    };
    auto pick = [&](int id) {
        if (id != ID_PICK_FOG && id != ID_PICK_BACKGROUND) return;
        Point3& colour = id == ID_PICK_FOG ? p.Fog_Color : p.Background_Color;
        float rgbf[4] = {(float)colour.x, (float)colour.y, (float)colour.z, 0};
        const int picked = Colour_Pick(rgbf);
        if (!picked) return;
        double* parts[3] = {&colour.x, &colour.y, &colour.z};
        for (int k = 0; k < 3; k++) {
            *parts[k] = rgbf[k];
            ColourRule(parts[k]);
        }
        Form_Show(&d, fields, (int)(sizeof fields / sizeof fields[0]));
    };
    if (Form_Run(&d, fields, (int)(sizeof fields / sizeof fields[0]), pick)) {
        g.pov = p;
        g.render = rs;
    }
    return 1;
}

// --- directories and names --------------------------------------------------------

namespace {

struct DirsCopy {
    char POV_DIR[100], Scenes_Dir[100], Images_Dir[100], Include_Dir[100];
    char Tracer_Program[13], Scene_Name[13], Image_Name[13], workFileName[13];
    char Extra_Options[54];
    int Output_Type, Overwrite_Pov, Export_Before_Render, Write_Render_Bat, Reload_After_Render;
};

enum { ID_OUTPUT_TYPE = 11 };

// The work file gets a new name: the next SAVE writes it beside the old one
// (or in the work directory when the scene was never saved).
void RenameWorkFile(const char* name) {
    if (strcmp(name, g.run.workFileName) == 0 || !name[0]) return;
    char dir[256];
    CopyCut(dir, sizeof dir, g.run.currentFilePath);
    char* slash = strrchr(dir, '/');
    if (slash) *slash = '\0';
    else CopyCut(dir, sizeof dir, g.config.WORK_DIR);
    CopyCut(g.run.workFileName, sizeof g.run.workFileName, name);
    char path[sizeof dir + 32];
    snprintf(path, sizeof path, "%s/%s.qmr", dir, name);
    CopyCut(g.run.currentFilePath, sizeof g.run.currentFilePath, path);
}

}  // namespace

int Com_Dirs() {
    g.input.InputResult.code = 0;
    Dialog d;
    if (!Dialog_Open(&d, "dirs.dlg")) return 1;
    DirsCopy c{};
#define TAKE(field, from) CopyCut(c.field, sizeof c.field, from)
    TAKE(POV_DIR, g.config.POV_DIR);
    TAKE(Scenes_Dir, g.config.Scenes_Dir);
    TAKE(Images_Dir, g.config.Images_Dir);
    TAKE(Include_Dir, g.config.Include_Dir);
    TAKE(Tracer_Program, g.config.Tracer_Program);
    TAKE(Scene_Name, g.run.Scene_Name);
    TAKE(Image_Name, g.run.Image_Name);
    TAKE(workFileName, g.run.workFileName);
    TAKE(Extra_Options, g.render.Extra_Options);
#undef TAKE
    c.Output_Type = g.render.Output_Type >= 0 && g.render.Output_Type <= 4 ? g.render.Output_Type : 0;
    c.Overwrite_Pov = g.pov.Overwrite_Pov;
    c.Export_Before_Render = g.pov.Export_Before_Render;
    c.Write_Render_Bat = g.render.Write_Render_Bat;
    c.Reload_After_Render = g.render.Reload_After_Render;
#define TEXT_FIELD(id, field) {id, FORM_TEXT, c.field, nullptr, nullptr, sizeof c.field}
    const FormField fields[] = {
        TEXT_FIELD(2, POV_DIR),       TEXT_FIELD(3, Tracer_Program), TEXT_FIELD(4, Scenes_Dir),
        TEXT_FIELD(5, Scene_Name),    TEXT_FIELD(6, Images_Dir),     TEXT_FIELD(7, Image_Name),
        TEXT_FIELD(8, Include_Dir),   TEXT_FIELD(9, Extra_Options),  TEXT_FIELD(10, workFileName),
        {12, FORM_CHECK, &c.Overwrite_Pov, nullptr, nullptr, 0},
        {13, FORM_CHECK, &c.Export_Before_Render, nullptr, nullptr, 0},
        {14, FORM_CHECK, &c.Write_Render_Bat, nullptr, nullptr, 0},
        {15, FORM_CHECK, &c.Reload_After_Render, nullptr, nullptr, 0},
    };
#undef TEXT_FIELD
    Dialog_SetText(&d, ID_OUTPUT_TYPE, kOutputNames[c.Output_Type]);
    auto extra = [&](int id) {
        if (id != ID_OUTPUT_TYPE) return;
        c.Output_Type = (c.Output_Type + 1) % 5;
        Dialog_SetText(&d, ID_OUTPUT_TYPE, kOutputNames[c.Output_Type]);
    };
    if (!Form_Run(&d, fields, (int)(sizeof fields / sizeof fields[0]), extra)) return 1;
#define GIVE(to, field) CopyCut(to, sizeof to, c.field)
    GIVE(g.config.POV_DIR, POV_DIR);
    GIVE(g.config.Scenes_Dir, Scenes_Dir);
    GIVE(g.config.Images_Dir, Images_Dir);
    GIVE(g.config.Include_Dir, Include_Dir);
    GIVE(g.config.Tracer_Program, Tracer_Program);
    GIVE(g.run.Scene_Name, Scene_Name);
    GIVE(g.run.Image_Name, Image_Name);
    GIVE(g.render.Extra_Options, Extra_Options);
#undef GIVE
    RenameWorkFile(c.workFileName);
    g.render.Output_Type = c.Output_Type;
    g.pov.Overwrite_Pov = c.Overwrite_Pov;
    g.pov.Export_Before_Render = c.Export_Before_Render;
    g.render.Write_Render_Bat = c.Write_Render_Bat;
    g.render.Reload_After_Render = c.Reload_After_Render;
    return 1;
}
