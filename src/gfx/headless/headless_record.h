// headless_record.h - what the placeholder headless display was asked to draw,
// and scripted input, so that tests can check the pen's output.
#pragma once
#include <vector>

struct HeadlessSegment {
    int x1, y1, x2, y2;   // from the current position to the line's end
    int colour;           // drawing colour at the time
};

std::vector<HeadlessSegment>& Headless_Segments();  // lines drawn since the last clear
void Headless_ClearRecord();                        // forget lines, pending keys and mouse state
void Headless_SetKeyPending(int pending);           // what X11_KeyPressed reports
void Headless_SetMouse(int x, int y, int buttons);  // what X11_ReadMouse reports
