// aids.h - drawing aids and behaviour switches that are not per viewport;
// they travel with the scene in the work file.
#pragma once

struct AidsState {
    int orthoOn = 0;            // ORTHO: rubber band kept to one axis
    int blipsOn = 0;            // BLIPS: mark accepted points
    int coordsMode = 1;         // COORDS_MODE: 1 absolute, 2 relative, 3 polar
    int Auto_Seg = 0;           // AUTO-SEG: use Seg_Value without asking
    int Seg_Value = 8;          // SEG_VALUE: automatic segment count, >= 2
    int Input_Line_Option = 1;  // drag the selection or the circle with the rubber band
    int Auto_Regen = 1;         // redraw after a change of the picture
    int Auto_Redraw = 0;        // after creating: redraw all views (1) or draw the object (0)
    int Auto_Deselect = 1;      // an edit deselects each object it processed
    int Erase_No_Confirm = 0;   // ERASE without asking
};
