// headless_internal.h - state shared by the files of the headless backend.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "gfx/gfx.h"
#include "gfx/headless/headless.h"

namespace headless {

struct Event {
    enum Kind { KEY, SHIFT, MOVE, BUTTONS } kind;
    int a, b, c;   // KEY: code; SHIFT: flags; MOVE: x, y; BUTTONS: x, y, buttons
};

struct Display {
    int open = 0;
    int width = 640, height = 480;
    std::vector<unsigned char> fb;            // palette indices
    X11_PaletteEntry palette[256] = {};
    int colour = 15, bkColour = 0, writeMode = GFX_COPY;
    int penX = 0, penY = 0;
    int mouseX = 0, mouseY = 0, mouseButtons = 0;
    int mouseMinX = 0, mouseMaxX = 640, mouseMinY = 0, mouseMaxY = 480;
    int mouseSpeedX = 8, mouseSpeedY = 8;
    int shiftFlags = 0;
    std::deque<Event> queue;
    long idlePolls = 0;                       // polls in a row that found nothing
    long ticks = 0;                           // the clock in microseconds: one per line drawn
    long clockReadAt = -1;                    // ticks at the last clock read
    long inputAt = 0;                         // queued input is held until the clock reaches this
    std::string transcript;
    std::vector<Headless_Segment> segments;   // lines asked for, bounded
    int (*feeder)() = nullptr;                // asked for more input before a session ends
};

extern Display d;

// Queued input is not there yet (Headless_HoldInput).
inline bool InputHeld() { return d.ticks < d.inputAt; }

// The program waits and the queue is empty: returns when the feeder queued
// more input, else throws Headless_InputExhausted (nothing will come).
void OutOfInput(const char* where);

}  // namespace headless
