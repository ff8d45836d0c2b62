// texture_fields.h - binding dialog elements to the fields of a texture
// record, shared by the texture editor and its sub-editors.
//
// The record's fields have their on-disk widths (floats, 32-bit and 8-bit
// integers, flag bytes, bits of a flag word, short file names), so the
// form tables of form.h, made for ints and doubles, do not fit them. Each
// sub-editor edits a copy of the record and hands it back on OK.
// Transforms are doubles at 4-byte alignment in the packed record and are
// edited through trans.dlg on copies, never through pointers into it.
#pragma once

#include <cstdint>
#include <functional>

#include "ui/ui_state.h"

enum RecFieldKind {
    RF_FLOAT,     // float in a TEXTBOX, shown with "%g"
    RF_INT,       // int32 in a TEXTBOX
    RF_INT8,      // int8 in a TEXTBOX, kept within -128..127
    RF_FLAG,      // uint8 0/1 in a CHECK
    RF_BIT8,      // bit `mask` of a uint8 in a CHECK
    RF_BIT32,     // bit `mask` of a uint32 in a CHECK
    RF_FILE,      // char[13] file name in a TEXTBOX (12 characters)
    RF_CHOICE,    // uint8 value `mask` in a CHECK: a group of these is one choice
    RF_CHOICE32,  // the same on an int32
};

struct RecField {
    int id;         // TEXTBOX or CHECK id
    int kind;       // RecFieldKind
    void* value;    // the field in the record copy
    uint32_t mask;  // RF_BIT8/RF_BIT32: the bit; RF_CHOICE/RF_CHOICE32: the value
};

// A TEXTBOX that steps through words when clicked (gradient axis, image type).
struct RecCycle {
    int id;
    uint8_t* value;
    const char* const* words;
    int count;  // values 0 .. count - 1; others show as the last word
};

// Shows every field and cycle.
void RecField_ShowAll(Dialog* dialog, const RecField* fields, int count, const RecCycle* cycles,
                      int cycleCount);
// Reacts to a returned id; 1 when it belonged to a field or a cycle.
int RecField_React(Dialog* dialog, const RecField* fields, int count, const RecCycle* cycles,
                   int cycleCount, int id);

// Runs a sub-editor until OK (1), Cancel (0) or Escape/Ctrl-C (-1). Every
// id, after the fields have reacted to it, goes to `extra` with the
// result's value (a GRAPH row), which may act and redraw what changed.
// Closes the dialog; 1 when OK was pressed.
int RecField_Run(Dialog* dialog, const RecField* fields, int count, const RecCycle* cycles,
                 int cycleCount, const std::function<void(int id, int value)>& extra);

// A texture name field (char[20], NUL-terminated unless full) as text.
void TextureName_Get(char out[21], const char* field);
// Stores text cut to 20 characters; the field is NUL-padded.
void TextureName_Set(char* field, const char* text);
