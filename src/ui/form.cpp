// form.cpp - dialogs as forms over a table of fields.
#include "ui/form.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/field.h"
#include "ui/dialog.h"

int Form_ReadInt(const char* text) {
    long long v = strtoll(text, nullptr, 10);
    if (v > INT_MAX) return INT_MAX;
    if (v < INT_MIN) return INT_MIN;
    return (int)v;
}

void Form_AbsInt(void* value) {
    int* v = static_cast<int*>(value);
    *v = *v == INT_MIN ? INT_MAX : abs(*v);
}

void Form_AbsDouble(void* value) {
    double* v = static_cast<double*>(value);
    *v = fabs(*v);
}

void Form_ShowField(Dialog* d, const FormField& f) {
    char text[256];
    switch (f.kind) {
        case FORM_INT: snprintf(text, sizeof text, f.format, *static_cast<int*>(f.value)); break;
        case FORM_DOUBLE: snprintf(text, sizeof text, f.format, *static_cast<double*>(f.value)); break;
        case FORM_TEXT: CopyCut(text, sizeof text, static_cast<char*>(f.value)); break;
        case FORM_CHECK: Dialog_SetCheck(d, f.id, *static_cast<int*>(f.value)); return;
        default: return;
    }
    Dialog_SetText(d, f.id, text);
}

void Form_Show(Dialog* d, const FormField* fields, int count) {
    for (int i = 0; i < count; i++) Form_ShowField(d, fields[i]);
}

int Form_React(Dialog* d, const FormField* fields, int count, int id) {
    for (int i = 0; i < count; i++) {
        const FormField& f = fields[i];
        if (f.id != id) continue;
        if (f.kind == FORM_CHECK) {
            int* v = static_cast<int*>(f.value);
            *v = !*v;
        } else if (Dialog_EditText(d, id)) {
            const char* text = d->editBuffer;
            if (f.kind == FORM_INT) {
                *static_cast<int*>(f.value) = Form_ReadInt(text);
            } else if (f.kind == FORM_DOUBLE) {
                double v = atof(text);
                if (std::isfinite(v)) *static_cast<double*>(f.value) = v;
            } else {
                // A box shows a long value cut; confirming it unchanged keeps the whole value.
                char shown[256];
                Dialog_GetText(d, id, shown);
                if (strcmp(shown, text) != 0) CopyCut(static_cast<char*>(f.value), f.size, text);
            }
            if (f.rule) f.rule(f.value);
        }
        Form_ShowField(d, f);
        return 1;
    }
    return 0;
}

double Form_Reduce360(double v) {
    if (!std::isfinite(v)) return 0;
    if (v > 360) {
        v = fmod(v, 360);
        if (v == 0) v = 360;
    } else if (v < 0) {
        v = fmod(v, 360);
        if (v < 0) v += 360;
        v += 0.0;   // -0 becomes 0
    }
    return v;
}

void Form_AngleRule(void* value) {
    double* v = static_cast<double*>(value);
    *v = Form_Reduce360(*v);
}

int Form_Run(Dialog* d, const FormField* fields, int count, const std::function<void(int)>& extra) {
    Form_Show(d, fields, count);
    DialogResult r;
    do {
        Dialog_Run(d, &r);
        if (!Form_React(d, fields, count, r.id) && extra) extra(r.id);
    } while (r.id != 1 && r.id != 0 && r.id != -1);
    Dialog_Close(d);
    return r.id == 1;
}
