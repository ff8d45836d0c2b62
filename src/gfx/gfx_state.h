// gfx_state.h - state of the screen frame: window metrics and the message
// column. Types only.
#pragma once

constexpr int SCREEN_LINE = 15;   // height of a text line in pixels

struct X11_Image;   // a saved screen rectangle (gfx.h)

struct ScreenState {
    int open = 0;           // the window exists: messages go to the screen
    int width = 640;        // window size in pixels
    int height = 480;
    int colours = 16;       // colours of the video mode (16 or 256); the palette always has 256
    int sideMenuX = 568;    // left edge of the side-menu column
    int inputLineY = 435;   // top of the input line; the two message lines follow
    int msgColumn = 0;      // x where the next message text goes on the bottom line
};

// A screen rectangle kept in memory, e.g. under a menu or dialog.
struct ScreenSave {
    X11_Image* image;
    int x, y;
};
