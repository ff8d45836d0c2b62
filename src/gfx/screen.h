// screen.h - the screen frame over the display layer: text metrics, the
// start-up of the window and palette, and saved screen rectangles.
#pragma once

#include "gfx/gfx.h"
#include "gfx/gfx_state.h"

// Start-up of the screen: mouse reset, window, metrics, palette, mouse range.
void Screen_Open(int mode);
// Start-up frame: background on the top line, the side-menu column and the
// bottom three lines; "INPUT:" at the start of the input line.
void Screen_DrawFrame();
// Top of the message line n (0 upper, 1 bottom).
int Screen_MessageLineY(int n);
// Fills x1..x2, y1..y2 in colour (copy mode), keeping the drawing colour.
void Screen_Fill(int colour, int x1, int y1, int x2, int y2);
// Draws text with its top-left at (x, y) in colour, keeping the drawing colour.
void Screen_Text(int colour, int x, int y, const char* text);

// Saves x1..x2, y1..y2; image is null when it could not be kept.
ScreenSave Screen_Save(int x1, int y1, int x2, int y2);
// Puts the rectangle back where it was and frees it.
void Screen_Restore(ScreenSave* save);
