// Placeholder display: no window yet; drawing state only.
#include "gfx/gfx.h"

static int currentColour = 15;

int X11_InitGraph(int) { return 1; }
void X11_CloseGraph() {}
void X11_SetColor(int index) { currentColour = index; }
int X11_GetColor() { return currentColour; }
int X11_MouseReset() { return 4095; }
