// status_line.h - the status line: the top text line of the window with the
// current layer, ORTHO and SNAP, and the cursor coordinates.
#pragma once

struct StatusLine {
    const char* layerName;   // current layer
    int layerColour;         // its palette index
    int ortho, snap;         // drawing aids shown as "Ortho" and "Snap"
    const char* coords;      // coordinate text, already formatted
};

// Redraws the whole status line.
void Status_Draw(const StatusLine& s);
// Coordinate text for a mode: 1 "%g, %g, %g" of the point, 2 "@%g, %g, %g"
// of the offset, 3 "@%g<%g, %g" of distance, angle and depth; without a
// base point mode 1 is used. `out` holds 64 bytes.
void Status_FormatCoords(char* out, int mode, int haveBase, const double point[3],
                         const double delta[3], double dist, double angle, double depth);
