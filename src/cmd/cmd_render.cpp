// cmd_render.cpp - RENDER, the batch-file command, and the line that tells
// the user a ray tracer has finished.
//
// RENDER saves the scene, writes the scene file (when Export_Before_Render
// is set) and the option file, and starts the ray tracer without waiting
// for it. The display layer reaps the child; the prompt's idle hook then
// prints one line with its exit status and shows the waiting prompt again.
#include <sys/wait.h>

#include "base/message.h"
#include "cmd/cmd.h"
#include "gfx/gfx.h"
#include "pov/render.h"
#include "state.h"

int Render() {
    g.input.InputResult.code = 0;
    int saved;
    Save_Scene(&saved);
    if (!saved) return 0;
    // A question replaced by another command (0) does not stop the render:
    // that command runs after it.
    if (g.pov.Export_Before_Render && Export_Pov() == 2) return 2;
    if (Write_Render_Options() == 2) return 2;
    if (Render_StartTracer() < 0) {
        Msg_Printf("\nUnable to start the ray tracer!");
        return 2;
    }
    return 1;
}

int Com_Render() { return Render(); }

int Com_RenderBat() {
    g.input.InputResult.code = 0;
    Msg_Printf("\nMaking <render.bat>");
    Write_Render_Bat();
    return 1;
}

void Render_ReportEnded() {
    int pid, status, any = 0;
    while (Gfx_ChildEnded(&pid, &status)) {
        if (WIFSIGNALED(status))
            Msg_Printf("\nRay tracer ended by signal %d", WTERMSIG(status));
        else
            Msg_Printf("\nRay tracer finished, exit status %d", WEXITSTATUS(status));
        any = 1;
    }
    if (any) Msg_Printf("%s", g.input.promptText);   // the question still waits
}
