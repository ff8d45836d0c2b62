// command_loop.cpp - the command loop, the dispatch table from command codes
// to command functions, and the hook that runs transparent commands and
// point modifiers inside a waiting prompt.
//
// A command returns 1 when it finished and 0 when another code replaced its
// input; that code stays in InputResult.code and the loop starts it next
// without asking "Command:". Codes without an entry in the table are ignored.
#include <cstdio>
#include <cstring>

#include "exchange/exchange.h"
#include "input/input.h"
#include "input/message.h"
#include "pov/pov.h"
#include "state.h"
#include "view/view_commands.h"

namespace {

int Com_ExportPov() { return Export_Pov() == 0 ? 0 : 1; }   // 2: not written, but finished
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

// Commands of parts not built yet have no entry: their codes do nothing.
const CommandEntry kCommands[] = {
    {101, Com_Exit, 0},          {102, Com_New, 0},          {104, Com_Save, 0},
    {105, Com_SaveAs, 0},        {108, Com_ExportPov, 0},    {150, Com_Clear, 0},
    {121, Com_ExportRaw, 0},     {122, Com_ExportDxf, 0},
    {511, Com_SystemInfo, 0},
    {401, Com_Redraw, 1},        {402, Com_ZoomIn, 1},       {403, Com_Unzoom, 1},
    {404, Com_Nothing, 1},       {405, Com_ZoomAll, 1},      {407, Com_Pan, 1},
    {408, Com_ZoomOut, 1},       {410, Com_RedrawAll, 1},    {421, Com_View3D, 1},
    {422, Com_ToggleWorld, 1},   {423, Com_ViewTop, 1},      {424, Com_ViewBottom, 1},
    {425, Com_ViewRight, 1},     {426, Com_ViewLeft, 1},     {427, Com_ViewFront, 1},
    {428, Com_ViewBack, 1},      {430, Com_Duplicate, 1},    {602, Com_Area, 1},
    {603, Com_Elevation, 1},     {604, Com_Vpoint, 1},
};

// Point modifiers and their messages.
struct Modifier {
    int code;
    const char* text;
};
const Modifier kModifiers[] = {
    {701, "(End point of) "}, {702, "(Mid point of) "},   {705, "(Click Screen now!) "},
    {710, "(X point of) "},   {711, "(Y point of) "},     {712, "(Z point of) "},
    {713, "(X,Y point of) "}, {714, "(X,Z point of) "},   {715, "(Y,Z point of) "},
};

const CommandEntry* Find(int code) {
    static CommandEntry extra;
    for (const InputState::ExtraCommand& e : g.input.extraCommands)
        if (e.code == code) {
            extra = {e.code, e.run, e.transparent};
            return &extra;
        }
    for (const CommandEntry& e : kCommands)
        if (e.code == code) return &e;
    return nullptr;
}

// Drops every selection mark (the selection's own redraw is not built yet).
void DeselectAll() {
    for (Layer* l = g.scene.First_Layer; l; l = l->next)
        for (Object* o = l->first_object; o; o = o->next) o->selected = 0;
    g.scene.Selected_Count = 0;
}

}  // namespace

void Command_Register(int code, CommandFn run, int transparent) {
    for (InputState::ExtraCommand& e : g.input.extraCommands)
        if (e.code == code) {
            e.run = run;
            e.transparent = transparent;
            return;
        }
    g.input.extraCommands.push_back({code, run, transparent});
}

int Command_IsTransparent(int code) {
    const CommandEntry* e = Find(code);
    return e && e->transparent;
}

int Command_Run(int code) {
    const CommandEntry* e = Find(code);
    if (!e) {
        g.input.InputResult.code = 0;
        return -1;   // no command: the caller keeps its previous result
    }
    return e->run();
}

int Input_GetCommand(const char* prompt) {
    InputState& in = g.input;
    snprintf(in.promptText, sizeof in.promptText, "%s", prompt);
    if (in.InputResult.code <= 0) {
        do Input_SetMask(17);
        while (Input_Wait() != 1);
        Input_ResetContext();
    }
    int code = in.InputResult.code;
    if (code != 1) in.InputResult.lastCode = code;
    return code;
}

void CommandLoop() {
    InputState& in = g.input;
    in.InputResult.code = 0;
    int result = 1;
    for (;;) {
        in.currentCommand = 0;
        in.abortFlag = 0;
        in.currentCommand = Input_GetCommand("\nCommand: ");
        int code = in.currentCommand;
        int r = Command_Run(code);
        if (r >= 0) result = r;
        if (code == 101 && r > 0) break;
        if (code == 102 && r > 0) {
            g.run.restartFlag = 1;
            break;
        }
        if (result == 0) {
            if (g.aids.Auto_Deselect) DeselectAll();
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
                if (m.code >= 710) {
                    in.pointFilter = m.code;
                } else {
                    in.pendingSnap = m.code;
                    if (m.code != 705) in.cursorStyle = 3;   // plain pick box
                }
                r.code = 0;
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
        else r.code = 0;   // finished: nothing replaces the waiting prompt
        if (outer == 0) r.lastCode = code;
    } while (r.code != 1);
    in.transparentActive = 0;
    Input_RestoreContext();
    return 1;
}
