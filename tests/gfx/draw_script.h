// draw_script.h - one fixed sequence of drawing calls, run through either
// display backend so that their frames can be compared pixel for pixel.
#pragma once

#include "gfx/gfx.h"
#include "gfx/screen.h"

// Copy-mode drawing plus XOR drawn twice (which must leave no trace).
inline void DrawScript() {
    Screen_Fill(BLACK, 0, 0, 639, 479);
    X11_SetWriteMode(GFX_COPY);
    const int ends[][2] = {{600, 20}, {610, 400}, {20, 460}, {5, 30}, {320, 10}, {123, 456}};
    for (int i = 0; i < 6; i++) {
        X11_SetColor(9 + i);
        X11_MoveTo(320, 240);
        X11_LineTo(ends[i][0], ends[i][1]);
    }
    X11_SetColor(RED);
    X11_Rectangle(1, 40, 40, 140, 90);
    X11_Rectangle(3, 50, 50, 60, 60);
    X11_Rectangle(3, 10, 10, 10, 10);
    X11_SetColor(16 * 14 + 8);   // a shade from the yellow ramp
    X11_Rectangle(3, 200, 300, 260, 340);
    X11_SetColor(WHITE);
    X11_PutPixel(3, 3);
    X11_MoveTo(100, 200);
    X11_OutText("Quillmoor Sculptor 0123 ~!@#");
    X11_SetColor(YELLOW);
    X11_MoveTo(100, 215);
    X11_OutText("INPUT: abc,xyz <>%");
    X11_SetWriteMode(GFX_XOR);
    X11_SetColor(LCYAN);
    for (int k = 0; k < 2; k++) {
        X11_Rectangle(1, 30, 30, 300, 250);
        X11_MoveTo(0, 479);
        X11_LineTo(639, 0);
        X11_MoveTo(100, 200);
        X11_OutText("xor text");
    }
    X11_SetWriteMode(GFX_COPY);
    ScreenSave s = Screen_Save(40, 40, 140, 90);
    Screen_Restore(&s);
    s = Screen_Save(300, 200, 400, 260);   // copied elsewhere
    s.x = 420;
    s.y = 320;
    Screen_Restore(&s);
}
