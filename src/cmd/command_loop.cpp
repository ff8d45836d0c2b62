// command_loop.cpp - the command loop, the table from command codes to
// command functions, and the hook that runs transparent commands and point
// modifiers inside a waiting prompt.
//
// A command returns 1 when it finished and 0 when another code replaced its
// input; that code stays in InputResult.code and the loop starts it next
// without asking "Command:". The loop takes each code off the input result
// before it runs the command, so a command runs exactly once per request
// whatever it does itself. Codes without an entry in the table are ignored.
#include "cmd/cmd.h"

#include <cstdio>

#include "cmd/codes.h"
#include "cmd/undo.h"
#include "input/input.h"
#include "base/message.h"
#include "model/selection.h"
#include "state.h"

namespace {

int Com_Nothing() { return 1; }
int Com_SystemInfo() {
    fputs("Sorry, this kind of information is not availablein the UNIX version\n", stderr);
    return 1;
}

struct CommandEntry {
    int code;
    CommandFn run;
    int transparent;   // runs inside a waiting prompt
};

// Commands not built yet have no entry: their codes do nothing.
const CommandEntry kCommands[] = {
    {CMD_EXIT, Com_Exit, 0},
    {CMD_NEW, Com_New, 0},
    {CMD_OPEN, Com_Open, 0},
    {CMD_SAVE, Com_Save, 0},
    {CMD_SAVE_AS, Com_SaveAs, 0},
    {CMD_MERGE, Com_Merge, 0},
    {CMD_IMPORT_DXF, Com_ImportDxf, 0},
    {CMD_IMPORT_RAW, Com_ImportRaw, 0},
    {CMD_EXPORT_POV, Com_ExportPov, 0},
    {CMD_EXPORT_RAW, Com_ExportRaw, 0},
    {CMD_EXPORT_DXF, Com_ExportDxf, 0},
    {CMD_CLEAR, Com_Clear, 0},
    {CMD_SYSTEM_INFO, Com_SystemInfo, 0},
    {CMD_VIEWPORT_DIALOG, Com_Viewports, 0},
    {CMD_LAYERS_DIALOG, Com_Layers, 0},
    {CMD_AIDS_DIALOG, Com_Variables, 0},
    {CMD_OPTIONS_DIALOG, Com_Options, 0},
    {CMD_DIRS_DIALOG, Com_Dirs, 0},
    {CMD_FOG_DIALOG, Com_Fog, 0},
    {CMD_RENDER, Com_Render, 0},
    {CMD_SHADE, Com_Shade, 0},
    {CMD_RENDER_BAT, Com_RenderBat, 0},

    {CMD_SPHERE, Com_Sphere, 0},
    {CMD_TORUS, Com_Torus, 0},
    {CMD_DISC, Com_Disc, 0},
    {CMD_CUBE, Com_Cube, 0},
    {CMD_CONE, Com_Cone, 0},
    {CMD_CYLINDER, Com_Cylinder, 0},
    {CMD_HEIGHTFIELD, Com_HeightField, 0},
    {CMD_PLANE, Com_Plane, 0},
    {CMD_SPOTLIGHT, Com_SpotLight, 0},
    {CMD_POINTLIGHT, Com_PointLight, 0},
    {CMD_AREALIGHT, Com_AreaLight, 0},
    {CMD_CAMERA, Com_Camera, 0},
    {CMD_CAMERA_DIALOG, Com_CameraDialog, 0},
    {CMD_TRANSFORM_DIALOG, Com_TransformDialog, 0},
    {CMD_GENERAL_DIALOG, Com_GeneralDialog, 0},

    {CMD_POLYLINE, Com_Polyline, 0},
    {CMD_ARC, Com_Arc, 0},
    {CMD_CIRCLE, Com_Circle, 0},
    {CMD_COONS, Com_Coons, 0},
    {CMD_RULSURF, Com_Rulsurf, 0},
    {CMD_EXTRUDE, Com_Extrude, 0},
    {CMD_REVOLUTION, Com_Revolution, 0},
    {CMD_CONE_SWEEP, Com_ConeSweep, 0},
    {CMD_WALL, Com_Wall, 0},
    {CMD_PARRAY, Com_Parray, 0},
    {CMD_JOIN, Com_Join, 0},
    {CMD_THICKEN, Com_Thicken, 0},
    {CMD_PCUBE, Com_PCube, 0},
    {CMD_PYRAMID, Com_Pyramid, 0},
    {CMD_WEDGE, Com_Wedge, 0},
    {CMD_TRIANGLE, Com_Triangle, 0},
    {CMD_FACE, Com_Face, 0},
    {CMD_MESH, Com_Mesh, 0},
    {CMD_BEZIER, Com_Bezier, 0},
    {CMD_STAIRCASE, Com_Staircase, 0},
    {CMD_SCREWTHREAD, Com_ScrewThread, 0},
    {CMD_SPRING, Com_Spring, 0},
    {CMD_COMPLEX, Com_Complex, 0},

    {CMD_ERASE, Com_Erase, 0},
    {CMD_EDIT, Com_EditObject, 0},
    {CMD_MOVE, Com_Move, 0},
    {CMD_COPY, Com_Copy, 0},
    {CMD_ROTATE, Com_Rotate, 0},
    {CMD_SCALE, Com_Scale, 0},
    {CMD_SELECT, Com_Select, 0},
    {CMD_ASSIGN, Com_Assign, 0},
    {CMD_GRAVITY, Com_Gravity, 0},
    {CMD_ARRAY, Com_Array, 0},
    {CMD_EXPLODE, Com_Explode, 0},
    {CMD_MIRROR, Com_Mirror, 0},
    {CMD_CHANGE_LAYER, Com_ChangeLayer, 0},
    {CMD_DESELECT_ALL, Com_DeselectAll, 0},
    {CMD_PICK_LAYER, Com_PickLayer, 0},
    {CMD_UNPICK_LAYER, Com_UnpickLayer, 0},
    {CMD_PICK_OBJECT, Com_PickObject, 0},
    {CMD_UNPICK_OBJECT, Com_UnpickObject, 0},
    {CMD_WINDOW_SELECT, Com_WindowSelect, 0},
    {CMD_WINDOW_DESELECT, Com_WindowDeselect, 0},
    {CMD_TEXTURE_DIALOG, Com_Textures, 0},
    {CMD_UNDO, Com_Undo, 0},
    {CMD_REDO, Com_Redo, 0},

    {CMD_REDRAW, Com_Redraw, 1},
    {CMD_ZOOM_IN, Com_ZoomIn, 1},
    {CMD_UNZOOM, Com_Unzoom, 1},
    {CMD_VIEW_NOTHING, Com_Nothing, 1},
    {CMD_ZOOM_ALL, Com_ZoomAll, 1},
    {CMD_PAN, Com_Pan, 1},
    {CMD_ZOOM_OUT, Com_ZoomOut, 1},
    {CMD_REDRAW_ALL, Com_RedrawAll, 1},
    {CMD_VIEW_3D, Com_View3D, 1},
    {CMD_TOGGLE_WORLD, Com_ToggleWorld, 1},
    {CMD_VIEW_TOP, Com_ViewTop, 1},
    {CMD_VIEW_BOTTOM, Com_ViewBottom, 1},
    {CMD_VIEW_RIGHT, Com_ViewRight, 1},
    {CMD_VIEW_LEFT, Com_ViewLeft, 1},
    {CMD_VIEW_FRONT, Com_ViewFront, 1},
    {CMD_VIEW_BACK, Com_ViewBack, 1},
    {CMD_DUPLICATE, Com_Duplicate, 1},
    {CMD_AREA, Com_Area, 1},
    {CMD_ELEVATION, Com_Elevation, 1},
    {CMD_VPOINT, Com_Vpoint, 1},
    {CMD_ABOUT, Com_About, 1},
};

// Point modifiers and their messages.
struct Modifier {
    int code;
    const char* text;
};
const Modifier kModifiers[] = {
    {MOD_END_POINT, "(End point of) "}, {MOD_MID_POINT, "(Mid point of) "},
    {MOD_CLICK_SCREEN, "(Click Screen now!) "},
    {MOD_X, "(X point of) "},           {MOD_Y, "(Y point of) "},
    {MOD_Z, "(Z point of) "},           {MOD_XY, "(X,Y point of) "},
    {MOD_XZ, "(X,Z point of) "},        {MOD_YZ, "(Y,Z point of) "},
};

const CommandEntry* Find(int code) {
    static CommandEntry extra;
    for (const ExtraCommand& e : g.cmd.extraCommands)
        if (e.code == code) {
            extra = {e.code, e.run, e.transparent};
            return &extra;
        }
    for (const CommandEntry& e : kCommands)
        if (e.code == code) return &e;
    return nullptr;
}

}  // namespace

void Command_Register(int code, CommandFn run, int transparent) {
    for (ExtraCommand& e : g.cmd.extraCommands)
        if (e.code == code) {
            e.run = run;
            e.transparent = transparent;
            return;
        }
    g.cmd.extraCommands.push_back({code, run, transparent});
}

int Command_IsTransparent(int code) {
    const CommandEntry* e = Find(code);
    return e && e->transparent;
}

int Command_Run(int code) {
    const CommandEntry* e = Find(code);
    if (!e) {
        g.input.InputResult.code = CMD_NONE;
        return -1;   // no command: the caller keeps its previous result
    }
    return e->run();
}

void CommandLoop() {
    InputState& in = g.input;
    in.InputResult.code = CMD_NONE;
    int result = 1;
    for (;;) {
        in.currentCommand = 0;
        in.abortFlag = 0;
        in.currentCommand = Input_GetCommand("\nCommand: ");
        const int code = in.currentCommand;
        in.InputResult.code = CMD_NONE;   // taken: only a replacing code may be left
        Undo_Before(code);
        int r = Command_Run(code);
        Undo_After();
        if (r >= 0) result = r;
        if (code == CMD_EXIT && r > 0) break;
        if (code == CMD_NEW && r > 0) {
            g.run.restartFlag = 1;
            break;
        }
        if (result == 0) {
            if (g.aids.Auto_Deselect) Selection_Clear();
            Msg_Printf("*cancel* ");
            result = 1;
        }
    }
    in.currentCommand = 0;
}

int Command_Transparent(int result) {
    InputState& in = g.input;
    InputResultRec& r = in.InputResult;
    if (result == 1 && in.currentCommand != 0) {
        for (const Modifier& m : kModifiers)
            if (m.code == r.code) {
                Msg_Printf("%s", m.text);
                if (m.code >= MOD_X) {
                    in.pointFilter = m.code;
                } else {
                    in.pendingSnap = m.code;
                    if (m.code != MOD_CLICK_SCREEN) in.cursorStyle = 3;   // plain pick box
                }
                r.code = CMD_NONE;
                return 1;
            }
    }
    if (result != 1 || in.transparentActive) return 0;

    const int outer = in.currentCommand;
    Input_SaveContext();
    in.transparentActive = 1;
    int last = 0;
    do {
        in.currentCommand = r.code;
        if (!Command_IsTransparent(r.code)) {
            in.transparentActive = 0;
            Input_RestoreContext();
            return last;
        }
        const int code = r.code;
        last = Command_Run(code);
        if (last == 0) Msg_Printf("*cancel* ");
        else r.code = CMD_NONE;   // finished: nothing replaces the waiting prompt
        if (outer == 0) r.lastCode = code;
    } while (r.code != CMD_CANCEL);
    in.transparentActive = 0;
    Input_RestoreContext();
    return 1;
}
