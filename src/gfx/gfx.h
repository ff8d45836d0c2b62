// gfx.h - the display layer: one API, two backends chosen at link time
// (x11/ over Xlib for the program, headless/ in memory for tests).
#pragma once

int X11_InitGraph(int mode);
void X11_CloseGraph();
void X11_SetColor(int index);
int X11_GetColor();
int X11_MouseReset();

struct X11_ModeInfo {
    int width;     // window width in pixels
    int height;    // window height in pixels
    int colours;   // colour count (always 256)
};
void X11_GetModeInfo(X11_ModeInfo* out);
void X11_MoveTo(int x, int y);      // set the current position
void X11_LineTo(int x, int y);      // line from the current position; the end becomes current
void X11_PutPixel(int x, int y);    // one pixel in the current colour
int X11_KeyPressed();               // 1 when a key press is pending
void X11_ReadMouse(int* x, int* y, int* buttons);  // pump events, then report
