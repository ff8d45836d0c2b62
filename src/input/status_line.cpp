// status_line.cpp - the status line: the top text line of the window with
// the current layer, ORTHO and SNAP, and the cursor coordinates.
//
// Fields sit at fixed x positions; each is cleared to the background before
// its text is drawn, and texts are cut from their end to fit their field.
#include "input/status_line.h"

#include <cstdio>
#include <cstring>

#include "gfx/screen.h"
#include "state.h"

namespace {

constexpr int kNameX = 12, kNameMaxW = 98;
constexpr int kOrthoX = 120, kSnapX = 170;

// Cuts characters from the end of text until it is at most maxW wide.
void CutToWidth(char* text, int maxW) {
    size_t n = strlen(text);
    while (n > 0 && X11_TextWidth(text) > maxW) text[--n] = '\0';
}

void Field(int x, int w, const char* text) {
    Screen_Fill(g.config.colors.background, x, 0, x + w - 1, SCREEN_LINE - 1);
    Screen_Text(g.config.colors.foreground, x, 1, text);
}

}  // namespace

void Status_FormatCoords(char* out, int mode, int haveBase, const double p[3], const double d[3],
                         double dist, double angle, double depth) {
    if (!haveBase) mode = 1;
    if (mode == 2) snprintf(out, 64, "@%g, %g, %g", d[0], d[1], d[2]);
    else if (mode == 3) snprintf(out, 64, "@%g<%g, %g", dist, angle, depth);
    else snprintf(out, 64, "%g, %g, %g", p[0], p[1], p[2]);
}

void Status_Draw(const StatusLine& s) {
    if (!g.screen.open) return;
    Screen_Fill(BLACK, 0, 2, 8, 12);
    Screen_Fill(s.layerColour, 2, 4, 6, 10);
    char name[64];
    snprintf(name, sizeof name, "%s", s.layerName ? s.layerName : "");
    CutToWidth(name, kNameMaxW);
    Field(kNameX, kNameMaxW, name);
    int aidW = X11_TextWidth("Ortho");
    Field(kOrthoX, aidW, s.ortho ? "Ortho" : "");
    Field(kSnapX, aidW, s.snap ? "Snap" : "");
    int cx = g.screen.width / 2 - 100;
    char coords[64];
    snprintf(coords, sizeof coords, "%s", s.coords ? s.coords : "");
    CutToWidth(coords, g.screen.sideMenuX - cx);
    Field(cx, g.screen.sideMenuX - cx, coords);
}
