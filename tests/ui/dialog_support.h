// dialog_support.h - finding and clicking the elements of a dialog file
// from a test: positions are computed from the file the way the loader
// places them (the dialog centred on a screen of `cols` x `rows` cells).
#pragma once
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "base/field.h"
#include "gfx/headless/headless.h"
#include "state.h"

struct DlgSpot {
    bool found = false;
    int col = 0, row = 0;   // absolute cell of the element's first cell
    int bottom = 0;         // GRAPH: last row
};

// The element `kind` ("BUTTON", "CHECK", "TEXTBOX", "SHAPE", "GRAPH") with `id`.
inline DlgSpot Dlg_Find(const std::string& path, const char* kind, int id, int cols, int rows) {
    std::ifstream in(path);
    DlgSpot spot;
    int left = 0, top = 0;
    char key[FIELD_MAX], f[6][FIELD_MAX];
    for (std::string line; std::getline(in, line);) {
        if (!GetField(key, line.c_str(), 0)) continue;
        int n = 0;
        while (n < 6 && GetField(f[n], line.c_str(), n + 1)) n++;
        if (SameName(key, "CAPTION") && n >= 2) {
            left = (cols + 1) / 2 - atoi(f[0]) / 2 - 1;
            top = (rows + 1) / 2 - atoi(f[1]) / 2 - 1;
            continue;
        }
        if (!SameName(key, kind)) continue;
        // Where the column, row and id fields are for each kind.
        int c = 1, r = 2, i = 3;
        if (SameName(kind, "TEXTBOX")) c = 0, r = 1, i = 3;
        if (SameName(kind, "SHAPE")) c = 2, r = 3, i = 4;
        if (SameName(kind, "GRAPH")) c = 0, r = 1, i = 4;
        if (n <= i || atoi(f[i]) != id) continue;
        spot.found = true;
        spot.col = left + atoi(f[c]);
        spot.row = top + atoi(f[r]);
        if (SameName(kind, "GRAPH")) spot.bottom = top + atoi(f[3]);
        return spot;
    }
    return spot;
}

inline std::string Dlg_Support(const char* file) { return std::string(QMR_SOURCE_DIR) + "/support/" + file; }

// Pixel inside the first cell of an element of a support dialog, on the
// headless screen.
inline void Dlg_Pixel(const char* file, const char* kind, int id, int* x, int* y, int rowOffset = 0) {
    const int cw = X11_TextWidth("h");
    DlgSpot s = Dlg_Find(Dlg_Support(file), kind, id, g.screen.width / cw, g.screen.height / 15);
    EXPECT_TRUE(s.found) << file << " has no " << kind << " " << id;
    *x = s.col * cw + cw / 2 + (SameName(kind, "GRAPH") ? cw : 0);
    *y = (s.row + rowOffset) * 15 + 7;
}

// Pushes a click on an element of a support dialog (a GRAPH at `row`).
inline void Dlg_Click(const char* file, const char* kind, int id, int button = MOUSE_LEFT, int row = 0) {
    int x, y;
    Dlg_Pixel(file, kind, id, &x, &y, row);
    Headless_PushClick(x, y, button);
}

// Clicks a text box, types `text` (Enter ends it unless the text ends
// otherwise).
inline void Dlg_Type(const char* file, int id, const std::string& text) {
    Dlg_Click(file, "TEXTBOX", id);
    Headless_PushText(text.c_str());
}
