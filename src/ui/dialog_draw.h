// dialog_draw.h - drawing of dialog elements, shared by the reader and the
// runtime. Pixel arguments are long so that absurd cell positions cannot
// overflow; everything is clipped to the box of the dialog being drawn
// (DlgDraw_ClipTo), which lies on the screen.
#pragma once

#include "ui/ui_state.h"

// Drawing is kept inside the box of `dialog` from here on.
void DlgDraw_ClipTo(const Dialog* dialog);
void DlgDraw_Fill(int colour, long x1, long y1, long x2, long y2);
void DlgDraw_Frame(int colour, long x1, long y1, long x2, long y2);
// Text with its cell at (column, row).
void DlgDraw_Text(int colour, int column, int row, const char* text);
// The box of a field of `width` cells, normal or highlighted.
void DlgDraw_Box(int column, int row, int width, int highlighted);
// The check mark of the box at (column, row), in XOR: twice removes it.
void DlgDraw_CheckMark(int column, int row);
// The XOR frame around a SHAPE's picture.
void DlgDraw_ShapeFrame(const DlgShape& shape);
void DlgDraw_Graph(const DlgGraph& area);
void DlgDraw_Button(const DlgButton& button);
void DlgDraw_Input(const DlgInput& input, int highlighted);
void DlgDraw_TextBox(const DlgTextBox& box);
void DlgDraw_Check(const DlgCheck& check);
// The dialog's own pointer, in XOR: twice removes it.
void DlgDraw_Pointer(int x, int y);
