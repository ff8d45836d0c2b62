// headless_input.cpp - keyboard, mouse and event pump of the headless
// display, fed from a queue that tests fill; and the message transcript.
//
// Events are consumed strictly in the order pushed: the pump takes pointer
// events from the front (a button change ends it, as under X), the keyboard
// takes a key only when it is at the front. A wait with nothing queued (or a
// long run of polls that find nothing) ends the session with
// Headless_InputExhausted instead of blocking. The clock runs on drawing,
// one microsecond a line, and input can be held back until it has run a
// while: that is how a test presses a key in the middle of a long redraw.
#include <cmath>
#include <cstring>
#include <string>

#include "gfx/headless/headless.h"
#include "gfx/headless/headless_internal.h"
#include "state.h"

using headless::d;
using headless::Event;

namespace {

constexpr long kMaxIdlePolls = 100000;   // a program polling this long waits for input
constexpr size_t kTranscriptMax = 64 * 1024;

void Clamp() {
    if (d.mouseX < d.mouseMinX) d.mouseX = d.mouseMinX;
    if (d.mouseX >= d.mouseMaxX) d.mouseX = d.mouseMaxX - 1;
    if (d.mouseY < d.mouseMinY) d.mouseY = d.mouseMinY;
    if (d.mouseY >= d.mouseMaxY) d.mouseY = d.mouseMaxY - 1;
}

// Applies a non-key event; returns 1 when it changed the buttons.
int Apply(const Event& e) {
    switch (e.kind) {
        case Event::SHIFT: d.shiftFlags = e.a; return 0;
        case Event::MOVE:
            d.mouseX = e.a;
            d.mouseY = e.b;
            Clamp();
            return 0;
        case Event::BUTTONS:
            d.mouseX = e.a;
            d.mouseY = e.b;
            Clamp();
            d.mouseButtons = e.c;
            return 1;
        case Event::KEY: break;
    }
    return 0;
}

void Idle(const char* where) {
    if (++d.idlePolls > kMaxIdlePolls) headless::OutOfInput(where);
}

void Push(Event e) { d.queue.push_back(e); }

// The transcript keeps its last kTranscriptMax bytes.
void TrimTranscript() {
    if (d.transcript.size() > kTranscriptMax)
        d.transcript.erase(0, d.transcript.size() - kTranscriptMax);
}

// A wait for input that is held lets the clock run until it arrives.
void WaitHeld() {
    if (headless::InputHeld()) d.ticks = d.inputAt;
}

}  // namespace

namespace headless {

void OutOfInput(const char* where) {
    d.idlePolls = 0;
    if (d.feeder && d.feeder() && !d.queue.empty()) return;
    std::string prompt = g.input.promptText[0] ? g.input.promptText : Headless_LastLine();
    throw Headless_InputExhausted(std::string(where) + ": no more test input at prompt \"" +
                                  prompt + "\"");
}

}  // namespace headless

Headless_InputExhausted::Headless_InputExhausted(const std::string& message)
    : std::runtime_error(message),
      prompt(g.input.promptText[0] ? g.input.promptText : Headless_LastLine()) {}

int X11_KeyPressed() {
    if (headless::InputHeld()) return 0;
    while (!d.queue.empty() && d.queue.front().kind == Event::SHIFT) {
        Apply(d.queue.front());
        d.queue.pop_front();
    }
    if (!d.queue.empty() && d.queue.front().kind == Event::KEY) {
        d.idlePolls = 0;
        return 1;
    }
    Idle("X11_KeyPressed");
    return 0;
}

int X11_GetKey() {
    WaitHeld();
    // Pointer events in front of the key are taken as the pump would.
    for (;;) {
        while (!d.queue.empty() && d.queue.front().kind != Event::KEY) {
            Apply(d.queue.front());
            d.queue.pop_front();
        }
        if (!d.queue.empty()) break;
        headless::OutOfInput("X11_GetKey");
    }
    int key = d.queue.front().a;
    d.queue.pop_front();
    d.idlePolls = 0;
    return key;
}

int X11_GetShiftFlags() { return d.shiftFlags; }

int X11_MouseReset() { return 4095; }

void X11_PumpEvents() {
    Gfx_ReapChildren();
    if (headless::InputHeld()) return;
    while (!d.queue.empty() && d.queue.front().kind != Event::KEY) {
        Event e = d.queue.front();
        d.queue.pop_front();
        d.idlePolls = 0;
        if (Apply(e)) break;   // a button change ends the pump
    }
}

void X11_ReadMouse(int* x, int* y, int* buttons) {
    size_t before = d.queue.size();
    X11_PumpEvents();
    if (d.queue.size() == before && !headless::InputHeld()) Idle("X11_ReadMouse");
    *x = d.mouseX;
    *y = d.mouseY;
    *buttons = d.mouseButtons;
}

void X11_WarpMouse(int x, int y) {
    d.mouseX = x;
    d.mouseY = y;
}

void X11_SetMouseRange(int xmin, int xmax, int ymin, int ymax) {
    d.mouseMinX = xmin;
    d.mouseMaxX = xmax;
    d.mouseMinY = ymin;
    d.mouseMaxY = ymax;
}

void X11_SetMouseSpeed(int x, int y) {
    d.mouseSpeedX = x;
    d.mouseSpeedY = y;
}

void X11_WaitEvent() {
    if (d.queue.empty()) headless::OutOfInput("X11_WaitEvent");
    WaitHeld();
}

// Time is counted in lines drawn; a read after no line was drawn takes a
// tick itself, so that work which draws nothing (lines clipped away) still
// sees time pass.
double X11_Clock() {
    if (d.ticks == d.clockReadAt) d.ticks++;
    d.clockReadAt = d.ticks;
    return d.ticks * 1e-6;
}

void X11_Transcript(const char* text) {
    d.transcript += text;
    // Trimmed in large steps: cutting one message's worth off the front
    // each time moves the whole window per message.
    if (d.transcript.size() > 2 * kTranscriptMax) TrimTranscript();
}

// --- test side ----------------------------------------------------------------

void Headless_Reset() {
    d = headless::Display{};
}

void Headless_PushKey(int key) { Push({Event::KEY, key, 0, 0}); }

void Headless_PushText(const char* text) {
    for (const unsigned char* p = (const unsigned char*)text; *p; p++)
        Headless_PushKey(*p == '\n' ? (int)KEY_ENTER : (int)*p);
}

void Headless_PushShift(int flags) { Push({Event::SHIFT, flags, 0, 0}); }
void Headless_PushMove(int x, int y) { Push({Event::MOVE, x, y, 0}); }
void Headless_PushButton(int x, int y, int buttons) { Push({Event::BUTTONS, x, y, buttons}); }

void Headless_PushClick(int x, int y, int button) {
    Headless_PushMove(x, y);
    Headless_PushButton(x, y, button);
    Headless_PushButton(x, y, 0);
}

void Headless_HoldInput(double seconds) { d.inputAt = d.ticks + std::lround(seconds * 1e6); }

int Headless_Pending() { return (int)d.queue.size(); }
void Headless_SetFeeder(int (*feed)()) { d.feeder = feed; }
void Headless_ClearInput() { d.queue.clear(); }

const std::string& Headless_Transcript() {
    TrimTranscript();
    return d.transcript;
}
void Headless_ClearTranscript() { d.transcript.clear(); }

std::string Headless_LastLine() {
    TrimTranscript();
    size_t nl = d.transcript.rfind('\n');
    return nl == std::string::npos ? d.transcript : d.transcript.substr(nl + 1);
}
