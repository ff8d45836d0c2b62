// form.h - dialogs as forms: a table binds text boxes and check boxes to
// private copies of settings, so that a dialog edits the copies and its
// caller writes them back only when the user confirms.
//
// A number typed into a box is read like atof/atoi (no number reads as 0);
// a value that is not finite keeps the old one. The field's rule then
// limits the copy (absolute, clamped ...), and the box shows the copy
// again in the field's format, whether the edit was confirmed or not.
#pragma once

#include <cstddef>
#include <functional>

#include "ui/ui_state.h"

enum FormKind { FORM_INT, FORM_DOUBLE, FORM_CHECK, FORM_TEXT };

struct FormField {
    int id;             // element id: a TEXTBOX, or a CHECK for FORM_CHECK
    int kind;           // FormKind
    void* value;        // int*, double* or char* (FORM_TEXT)
    const char* format; // printf format of the shown number ("%d", "%g" ...)
    void (*rule)(void* value);   // after an edit; may be null
    size_t size;        // FORM_TEXT: the buffer's size
};

// Shows every field's value.
void Form_Show(Dialog* dialog, const FormField* fields, int count);
// Reacts to a returned id: a text box is edited, a check box flips. 1 when
// the id belongs to a field.
int Form_React(Dialog* dialog, const FormField* fields, int count, int id);
// Shows one field's value.
void Form_ShowField(Dialog* dialog, const FormField& field);

// Shows the fields and runs the dialog until OK (id 1), Cancel (id 0) or
// Ctrl-C (id -1); ids that are no field go to `extra`. Closes the dialog.
// 1 when OK was pressed.
int Form_Run(Dialog* dialog, const FormField* fields, int count,
             const std::function<void(int id)>& extra = nullptr);

// Rules shared by the dialogs.
void Form_AbsInt(void* value);      // |v| (the largest int for the smallest)
void Form_AbsDouble(void* value);   // |v|
// An angle brought into [0, 360] by adding or subtracting 360 as often as
// needed (360 stays 360); not finite gives 0.
double Form_Reduce360(double degrees);
void Form_AngleRule(void* value);   // Form_Reduce360 on a double
// Integer read like atoi, without overflow: kept within the int range.
int Form_ReadInt(const char* text);
