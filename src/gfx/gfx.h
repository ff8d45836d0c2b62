// gfx.h - the display layer: one API, two backends chosen at link time
// (x11/ over Xlib for the program, headless/ in memory for tests).
//
// The rest of the program knows only colour indices, pixel coordinates with
// the origin at the top left, and key codes. Drawing goes through a current
// colour, a current position and a write mode. Images are opaque handles.
// Shared pieces (mode table, palette computation, directory search) live in
// the gfx/*.cpp files of the core; each backend implements the rest.
#pragma once

enum {
    BLACK, BLUE, GREEN, CYAN, RED, MAGENTA, BROWN, GRAY,
    DGRAY, LBLUE, LGREEN, LCYAN, LRED, LMAGENTA, YELLOW, WHITE
};

// Write modes for X11_SetWriteMode.
enum { GFX_OR = 0, GFX_AND = 1, GFX_COPY = 2, GFX_XOR = 3 };

// Key codes: characters as themselves; function keys and Insert as a key
// number times 256.
enum {
    KEY_BACKSPACE = 8,
    KEY_TAB = 9,
    KEY_ENTER = 13,
    KEY_ESCAPE = 27,
    KEY_DELETE = 127,
    KEY_F1 = 59 * 256,
    KEY_F10 = 68 * 256,
    KEY_F11 = 69 * 256,
    KEY_F12 = 70 * 256,
    KEY_INSERT = 82 * 256,
};
constexpr int KEY_F(int n) { return (58 + n) * 256; }   // F1..F12

// Shift flag bits of X11_GetShiftFlags.
enum { SHIFT_RIGHT = 1, SHIFT_LEFT = 2, SHIFT_CTRL = 4, SHIFT_ALT = 8, SHIFT_CAPS = 64 };

// Mouse button bits.
enum { MOUSE_LEFT = 1, MOUSE_MIDDLE = 2, MOUSE_RIGHT = 4 };

struct X11_ModeInfo {
    int width, height;   // window size in pixels
    int colours;         // always 256
};

// One palette entry: red, green, blue in 0..63, and a spare byte.
struct X11_PaletteEntry {
    unsigned char r, g, b, spare;
};

struct X11_Image;   // a saved screen rectangle, owned by the caller

struct X11_FindRec {
    char name[13];      // entry name, cut to 12 characters
    int attribute;      // 16 for a directory, 0 otherwise
    long size;          // bytes
    void* search;       // the open search; freed when the search ends
};

// --- shared (core) ----------------------------------------------------------

// Window size of a video mode number; unknown numbers give 640 x 480.
void Gfx_ModeSize(int mode, int* width, int* height);
// Colours a video mode is named for: 16 (640x480x16, 800x600x16,
// 1024x768x16) or 256. The window's palette has 256 entries either way.
int Gfx_ModeColours(int mode);
// The 256-entry palette: 16 base colours, then 15 ramps of 16 shades.
void Gfx_BuildPalette(X11_PaletteEntry out[256]);
// The 16 base colours, red, green, blue in 0..63.
extern const unsigned char Gfx_BaseColours[16][3];

// Directory search: 0 = found (record filled), 1 = no more.
int X11_FindFirst(const char* pattern, int attribute, X11_FindRec* rec);
int X11_FindNext(X11_FindRec* rec);
// Splits at the last "/" and a later last "."; drive is always empty.
// Any output may be null. dir gets at most 99, name and ext at most 63
// characters.
void X11_SplitPath(const char* path, char* drive, char* dir, char* name, char* ext);

// Child processes (the ray tracer): the caller starts one and names it
// here; X11_PumpEvents reaps it without waiting once it has ended.
void Gfx_ChildStarted(int pid);
int Gfx_ChildrenRunning();          // started and not yet reaped
int Gfx_ReapChildren();             // reaps every ended child, never blocks; how many
// The next reaped child: 1 with its pid and wait status, 0 when none is left.
int Gfx_ChildEnded(int* pid, int* status);

// --- backend ----------------------------------------------------------------

int X11_InitGraph(int mode);   // only the first call acts; returns 1
void X11_CloseGraph();
int X11_IsOpen();              // 1 after X11_InitGraph
void X11_GetModeInfo(X11_ModeInfo* out);
void X11_SetPalette(const X11_PaletteEntry entries[256]);
unsigned long X11_PixelOf(int index);   // pixel value of a palette index

void X11_SetColor(int index);
int X11_GetColor();
void X11_SetBkColor(int index);
void X11_SetWriteMode(int mode);
int X11_GetWriteMode();

void X11_MoveTo(int x, int y);
void X11_GetPosition(int* x, int* y);
void X11_LineTo(int x, int y);
// Style 3 fills x1..x2, y1..y2 inclusive; other styles draw an outline of
// width x2 - x1 and height y2 - y1.
void X11_Rectangle(int style, int x1, int y1, int x2, int y2);
void X11_PutPixel(int x, int y);
unsigned long X11_GetPixel(int x, int y);   // compare with X11_PixelOf

int X11_TextWidth(const char* text);
int X11_FontHeight();            // ascent + descent of the font
// Draws at the current position, which is the text's top-left corner.
void X11_OutText(const char* text);

X11_Image* X11_AllocImage();
// Reads the rectangle (clamped to the screen) into image; 1 on success.
int X11_GetImage(int x1, int y1, int x2, int y2, X11_Image* image);
void X11_PutImage(int x, int y, X11_Image* image, int mode);
void X11_FreeImage(X11_Image* image);
int X11_ImageWidth(const X11_Image* image);
int X11_ImageHeight(const X11_Image* image);
unsigned long X11_ImagePixel(const X11_Image* image, int x, int y);

int X11_KeyPressed();
int X11_GetKey();
int X11_GetShiftFlags();

int X11_MouseReset();   // always reports a mouse: 4095
void X11_ReadMouse(int* x, int* y, int* buttons);
void X11_WarpMouse(int x, int y);
void X11_SetMouseRange(int xmin, int xmax, int ymin, int ymax);
void X11_SetMouseSpeed(int x, int y);

// Blocks until an event is pending; while children run, it also returns
// once one of them has ended.
void X11_WaitEvent();
// Reaps ended children, then takes pending mouse and window events.
void X11_PumpEvents();
void X11_Beep();
// Sends buffered drawing to the server (waiting for events does it too).
void X11_Flush();
// Seconds on a monotonic clock; interruptible drawing times its input polls
// by it. The headless clock advances only as lines are drawn.
double X11_Clock();

// Every message the program shows also goes here, so that tests can read
// what the user was told. The x11 backend appends it to the file named by
// the environment variable QMR_TRANSCRIPT, when set.
void X11_Transcript(const char* text);
