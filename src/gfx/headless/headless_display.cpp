// Placeholder display: no window yet; drawing state only.
// Lines are recorded (headless_record.h) so tests can see what was drawn.
#include "gfx/gfx.h"
#include "gfx/headless/headless_record.h"

static int currentColour = 15;
static int penX = 0, penY = 0;
static int keyPending = 0;
static int mouseX = 0, mouseY = 0, mouseButtons = 0;
static std::vector<HeadlessSegment> segments;

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
void X11_MoveTo(int x, int y) { penX = x; penY = y; }
void X11_LineTo(int x, int y) {
    segments.push_back({penX, penY, x, y, currentColour});
    penX = x;
    penY = y;
}
void X11_PutPixel(int x, int y) { segments.push_back({x, y, x, y, currentColour}); }
int X11_KeyPressed() { return keyPending; }
void X11_ReadMouse(int* x, int* y, int* buttons) {
    *x = mouseX;
    *y = mouseY;
    *buttons = mouseButtons;
}

std::vector<HeadlessSegment>& Headless_Segments() { return segments; }
void Headless_ClearRecord() {
    segments.clear();
    keyPending = 0;
    mouseX = mouseY = mouseButtons = 0;
}
void Headless_SetKeyPending(int pending) { keyPending = pending; }
void Headless_SetMouse(int x, int y, int buttons) {
    mouseX = x;
    mouseY = y;
    mouseButtons = buttons;
}
