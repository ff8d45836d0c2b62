// Placeholder display: no window yet; drawing state only.
#include "gfx/gfx.h"

static int currentColour = 15;

int X11_InitGraph(int) { return 1; }
void X11_CloseGraph() {}
void X11_SetColor(int index) { currentColour = index; }
int X11_GetColor() { return currentColour; }
int X11_MouseReset() { return 4095; }
void X11_GetModeInfo(X11_ModeInfo* out) {
    out->width = 640;
    out->height = 480;
    out->colours = 256;
}
void X11_MoveTo(int, int) {}
void X11_LineTo(int, int) {}
void X11_PutPixel(int, int) {}
int X11_KeyPressed() { return 0; }
void X11_ReadMouse(int* x, int* y, int* buttons) { *x = 0; *y = 0; *buttons = 0; }
