// cmd_shade.cpp - SHADE: the shade options, then the current viewport
// painted once with filled, lit polygons.
//
// Only a No to the first question changes the options; they stay for the
// next run. Types 0 and 1 light faces with the 16 shades of a colour, which
// a 16-colour display does not have.
#include <cstdio>

#include "base/message.h"
#include "cmd/ask.h"
#include "cmd/cmd.h"
#include "state.h"
#include "view/shade.h"
#include "view/view_commands.h"

namespace {

// A palette index asked with its current value; an empty Enter keeps it.
int AskColour(const char* format, int* colour) {
    char prompt[80];
    snprintf(prompt, sizeof prompt, format, *colour);
    double v = *colour;
    int got;
    if (!Ask_Number(prompt, &v, &got)) return 0;
    if (got) *colour = v < 0 ? 0 : v > 255 ? 255 : (int)v;
    return 1;
}

// The questions of a No: 0 when a prompt was replaced by another command.
int AskOptions() {
    ShadeSettings& s = g.shade;
    char prompt[80];
    snprintf(prompt, sizeof prompt, "\nSHADE> Select a Shade Type <0,1,2,3>? <%d>: ", s.Shade_Type);
    int k;
    if (!Ask_Keyword("0,1,2,3", prompt, &k)) return 0;
    if (k >= 1) s.Shade_Type = k - 1;
    switch (s.Shade_Type) {
        case 0:
            snprintf(prompt, sizeof prompt, "\nSHADE> Use Layer or Edge Color <%s>: ",
                     s.Shade_UseEdge ? "E" : "L");
            if (!Ask_Keyword("L,E", prompt, &k)) return 0;
            if (k) s.Shade_UseEdge = k == 2;   // Enter keeps the choice shown
            if (!s.Shade_UseEdge) return 1;
            Msg_Printf("\nFaces in shade color, and edges in Edge color!");
            return AskColour("\nSHADE> Set Edge_Color <%d>: ", &s.Edge_Color);
        case 1:
            Msg_Printf("\nLayer color shading!");
            return 1;
        case 2:
            Msg_Printf("\nFaces in Face_Color, and edges in Layer color!");
            return AskColour("\nSHADE> Set Face_Color <%d>: ", &s.Face_Color);
        default:
            Msg_Printf("\nFaces in Layer color, and edges in Edge color!");
            return AskColour("\nSHADE> Set Edge_Color <%d>: ", &s.Edge_Color);
    }
}

}  // namespace

int Com_Shade() {
    if (g.shade.Shade_Type < 0 || g.shade.Shade_Type > 3) g.shade.Shade_Type = 2;   // a damaged file
    int yes;
    if (!Ask_YesNo("Y,N", "\nSHADE> Use Default Shade options <Yes,No>? <Y>:", 1, &yes)) return 0;
    if (!yes && !AskOptions()) return 0;
    if (g.shade.Shade_Type <= 1 && g.screen.colours <= 16) {
        Msg_Printf("\nCurrent Shade type NOT supported for 16 color modes!");
        return 1;
    }
    Msg_Printf("\nInitializing Shade-> ");
    if (!Shade_Begin()) {
        Msg_Printf("Not enough Memory");
        return 0;
    }
    Msg_Printf("Success");
    Msg_Printf("\nProccessing Triangles");
    g.output.Output_Mode = OUTPUT_SHADE;
    View_Refresh();
    g.output.Output_Mode = OUTPUT_SCREEN;
    Shade_End();
    Msg_Printf("\n");
    return 1;
}
