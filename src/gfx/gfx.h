// gfx.h - the display layer: one API, two backends chosen at link time
// (x11/ over Xlib for the program, headless/ in memory for tests).
#pragma once

int X11_InitGraph(int mode);
void X11_CloseGraph();
void X11_SetColor(int index);
int X11_GetColor();
int X11_MouseReset();
