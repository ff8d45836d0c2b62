// headless.h - the test side of the headless display: an in-memory 8-bit
// framebuffer, an input queue that tests fill, and the message transcript.
//
// The program side is the ordinary X11_* API of gfx/gfx.h. Pixels hold
// palette indices, and X11_PixelOf(i) == i, so X11_GetPixel compares with
// X11_PixelOf as under X. Input is consumed strictly in the order pushed.
// When the program waits for input (X11_GetKey, X11_WaitEvent, or polling
// for long with nothing arriving) and the queue is empty, the backend throws
// Headless_InputExhausted naming the last prompt: the session ends instead
// of blocking. Tests run sessions through Headless_RunSession (or catch the
// exception themselves).
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "gfx/gfx.h"

struct Headless_InputExhausted : std::runtime_error {
    explicit Headless_InputExhausted(const std::string& prompt);
    std::string prompt;   // the prompt the program was waiting at
};

// Closes the display and empties the queue, the transcript and the
// framebuffer: the next X11_InitGraph opens afresh.
void Headless_Reset();

// --- input (consumed in order) ---
void Headless_PushKey(int key);                 // a key code as X11_GetKey returns it
void Headless_PushText(const char* text);       // each character; "\n" becomes Enter
void Headless_PushShift(int flags);             // X11_GetShiftFlags from then on
void Headless_PushMove(int x, int y);           // pointer motion
void Headless_PushButton(int x, int y, int buttons);   // move there, then set buttons
// Move, press and release of a button (MOUSE_LEFT by default).
void Headless_PushClick(int x, int y, int button = MOUSE_LEFT);
// Input queued now and later arrives only when the clock has run `seconds`
// further. The headless clock (X11_Clock) advances one microsecond per line
// drawn, so drawing is what passes the time; a wait for input skips ahead.
void Headless_HoldInput(double seconds);
int Headless_Pending();                         // events still queued
void Headless_ClearInput();
// `feed` is called when the program waits and the queue is empty; it
// returns 1 after queueing more input, 0 to end the session. nullptr: none.
// Headless_Reset removes it.
void Headless_SetFeeder(int (*feed)());

// --- output ---
int Headless_Pixel(int x, int y);               // palette index, -1 outside
const unsigned char* Headless_Frame();          // width x height indices, row by row
int Headless_Width();
int Headless_Height();
// RGB of a palette index as the X server shows it (components 0..63 times 4).
void Headless_Rgb(int index, unsigned char rgb[3]);
int Headless_DumpPPM(const char* path);         // 1 on success
int Headless_DumpPNG(const char* path);         // 1 on success
// Text of the pixels under a row of character cells: for each 6-pixel cell
// from (x, y) on, the character whose glyph in colour `fg` matches, else '?'.
std::string Headless_ReadText(int x, int y, int cells, int fg);

// Every X11_LineTo since the last clear (also while no window is open),
// from the current position to its end, with the colour and write mode at the time.
struct Headless_Segment {
    int x1, y1, x2, y2;
    int colour;
    int mode;   // write mode: GFX_COPY, GFX_XOR ... (XOR is cursor and rubber band)
};
const std::vector<Headless_Segment>& Headless_Segments();
void Headless_ClearSegments();

// Everything given to X11_Transcript (i.e. every Msg_Printf) since the last
// clear, at most the last 64 KiB.
const std::string& Headless_Transcript();
void Headless_ClearTranscript();
// The text after the last "\n" of the transcript: the latest prompt line.
std::string Headless_LastLine();
