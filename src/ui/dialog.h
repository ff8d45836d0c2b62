// dialog.h - dialog files (.dlg) and the modal dialog runtime.
//
// A dialog file describes a box in character cells: CAPTION(width, height)
// first, then TEXT, BUTTON, CHECK, INPUT, TEXTBOX, SHAPE and GRAPH lines,
// each element with a numeric id. Loading draws the dialog as it reads.
// Dialog_Run tracks the dialog's own pointer and returns the id of the
// element clicked; it never changes a check box or a text box by itself:
// the caller reacts with Dialog_SetCheck or Dialog_EditText + Dialog_SetText.
//
//   Dialog_Open (Init + Load with its message)
//     -> Dialog_Run ... (react to ids)
//     -> Dialog_Close (restores the screen under the dialog)
#pragma once

#include "ui/ui_state.h"

// Load results.
enum {
    DIALOG_OK = 0,
    DIALOG_NOT_FOUND = 1,
    DIALOG_BEFORE_CAPTION = 2,   // an element before CAPTION
    DIALOG_NO_MEMORY = 3,        // or the screen under the dialog could not be saved
    DIALOG_SECOND_CAPTION = 4,
};

// Clears the record (no elements, not open) and reads the mouse.
void Dialog_Init(Dialog* dialog);
// Reads and draws the file at path; a DIALOG_* result. Malformed lines are
// skipped; reading stops at the first error.
int Dialog_Load(Dialog* dialog, const char* path);
// Init, then Load of SUPPORT_DIR/name. On failure prints "Can't find <name>,
// or Out of Memory!" (or `failure`), restores what was drawn and returns 0.
int Dialog_Open(Dialog* dialog, const char* name, const char* failure = nullptr);
// Runs until an element is clicked (result id, text of a TEXTBOX, value of a
// GRAPH) or Ctrl-C / Escape cancels (id -1). Returns 1.
int Dialog_Run(Dialog* dialog, DialogResult* result);
// Edits the TEXTBOX id: 1 on Enter or a left click (the text is in
// editBuffer), 0 on Escape, another button, or when there is no such box.
int Dialog_EditText(Dialog* dialog, int id);
// A TEXTBOX's text: stored cut to what fits the box, and drawn.
void Dialog_SetText(Dialog* dialog, int id, const char* text);
// Copies the TEXTBOX's text into out (256 bytes); "" when there is none.
void Dialog_GetText(Dialog* dialog, int id, char* out);
void Dialog_SetCheck(Dialog* dialog, int id, int state);
// The state, or -1 when there is no such check box.
int Dialog_GetCheck(Dialog* dialog, int id);
// Text at a cell of a GRAPH area (relative to its top-left) in colour;
// colour -1 clears the area.
void Dialog_GraphText(Dialog* dialog, int id, int column, int row, int colour, const char* text);
// Restores the screen, frees the elements, waits until no button is down.
void Dialog_Close(Dialog* dialog);
// Draws a picture file (16-byte records x, y, colour, length) offset by
// (x, y); nothing outside the screen; nothing when the file is missing.
void Dialog_DrawFile(Dialog* dialog, const char* path, int x, int y);

// --- building a dialog in code (the loader uses the same steps) ---
// Each returns a DIALOG_* result.
int Dialog_Caption(Dialog* dialog, int width, int height);
int Dialog_AddText(Dialog* dialog, const char* text, int column, int row);
int Dialog_AddButton(Dialog* dialog, const char* text, int column, int row, int id);
int Dialog_AddCheck(Dialog* dialog, const char* text, int column, int row, int id);
int Dialog_AddInput(Dialog* dialog, const char* text, int column, int row, int id);
int Dialog_AddTextBox(Dialog* dialog, int column, int row, int width, int id);
int Dialog_AddShape(Dialog* dialog, const char* label, const char* picture, int column, int row, int id);
int Dialog_AddGraph(Dialog* dialog, int left, int top, int right, int bottom, int id);

// Screen size in cells and the cell size in pixels.
int Dialog_CellWidth();    // width of "h"
int Dialog_Columns();      // screen width / cell width
int Dialog_Rows();         // screen height / line height
