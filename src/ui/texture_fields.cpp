// texture_fields.cpp - dialog elements bound to texture-record fields.
#include "ui/texture_fields.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/field.h"
#include "ui/dialog.h"
#include "ui/form.h"

namespace {

void Show(Dialog* d, const RecField& f) {
    char text[64];
    switch (f.kind) {
        case RF_FLOAT:
            snprintf(text, sizeof text, "%g", *static_cast<float*>(f.value));
            break;
        case RF_INT:
            snprintf(text, sizeof text, "%d", (int)*static_cast<int32_t*>(f.value));
            break;
        case RF_INT8:
            snprintf(text, sizeof text, "%d", (int)*static_cast<int8_t*>(f.value));
            break;
        case RF_FILE: {
            const char* name = static_cast<char*>(f.value);
            size_t n = strnlen(name, 12);
            memcpy(text, name, n);
            text[n] = '\0';
            break;
        }
        case RF_FLAG:
            Dialog_SetCheck(d, f.id, *static_cast<uint8_t*>(f.value) != 0);
            return;
        case RF_BIT8:
            Dialog_SetCheck(d, f.id, (*static_cast<uint8_t*>(f.value) & f.mask) != 0);
            return;
        case RF_BIT32:
            Dialog_SetCheck(d, f.id, (*static_cast<uint32_t*>(f.value) & f.mask) != 0);
            return;
        case RF_CHOICE:
            Dialog_SetCheck(d, f.id, *static_cast<uint8_t*>(f.value) == f.mask);
            return;
        case RF_CHOICE32:
            Dialog_SetCheck(d, f.id, (uint32_t) * static_cast<int32_t*>(f.value) == f.mask);
            return;
        default:
            return;
    }
    Dialog_SetText(d, f.id, text);
}

void ShowCycle(Dialog* d, const RecCycle& c) {
    int v = *c.value < c.count ? *c.value : c.count - 1;
    Dialog_SetText(d, c.id, c.words[v]);
}

// A typed number; false leaves the field as it was.
bool ReadFloat(const char* text, float* out) {
    double v = atof(text);
    if (!std::isfinite(v) || fabs(v) > 3.0e38) return false;
    *out = (float)v;
    return true;
}

}  // namespace

void RecField_ShowAll(Dialog* d, const RecField* fields, int count, const RecCycle* cycles,
                      int cycleCount) {
    for (int i = 0; i < count; i++) Show(d, fields[i]);
    for (int i = 0; i < cycleCount; i++) ShowCycle(d, cycles[i]);
}

int RecField_React(Dialog* d, const RecField* fields, int count, const RecCycle* cycles,
                   int cycleCount, int id) {
    for (int i = 0; i < cycleCount; i++) {
        const RecCycle& c = cycles[i];
        if (c.id != id) continue;
        *c.value = (uint8_t)(*c.value + 1 < c.count ? *c.value + 1 : 0);
        ShowCycle(d, c);
        return 1;
    }
    bool handled = false;
    for (int i = 0; i < count; i++) {
        const RecField& f = fields[i];
        if (f.id != id) continue;
        handled = true;
        switch (f.kind) {
            case RF_FLAG: {
                uint8_t* v = static_cast<uint8_t*>(f.value);
                *v = !*v;
                break;
            }
            case RF_BIT8:
                *static_cast<uint8_t*>(f.value) ^= (uint8_t)f.mask;
                break;
            case RF_BIT32:
                *static_cast<uint32_t*>(f.value) ^= f.mask;
                break;
            case RF_CHOICE:
                *static_cast<uint8_t*>(f.value) = (uint8_t)f.mask;
                break;
            case RF_CHOICE32:
                *static_cast<int32_t*>(f.value) = (int32_t)f.mask;
                break;
            default: {
                // A box may show its value cut; confirming it unchanged keeps the whole value.
                char shown[256];
                Dialog_GetText(d, id, shown);
                if (!Dialog_EditText(d, id) || strcmp(shown, d->editBuffer) == 0) break;
                if (f.kind == RF_FLOAT) {
                    ReadFloat(d->editBuffer, static_cast<float*>(f.value));
                } else if (f.kind == RF_INT) {
                    *static_cast<int32_t*>(f.value) = Form_ReadInt(d->editBuffer);
                } else if (f.kind == RF_INT8) {
                    int v = Form_ReadInt(d->editBuffer);
                    *static_cast<int8_t*>(f.value) = (int8_t)(v < -128 ? -128 : v > 127 ? 127 : v);
                } else if (f.kind == RF_FILE) {
                    char* name = static_cast<char*>(f.value);
                    memset(name, 0, 13);
                    CopyCut(name, 13, d->editBuffer);
                }
                break;
            }
        }
        if (f.kind == RF_CHOICE || f.kind == RF_CHOICE32) {
            // every check of the group shows the new value
            for (int k = 0; k < count; k++)
                if (fields[k].kind == f.kind && fields[k].value == f.value) Show(d, fields[k]);
        } else {
            Show(d, f);
        }
        break;
    }
    return handled;
}

int RecField_Run(Dialog* d, const RecField* fields, int count, const RecCycle* cycles,
                 int cycleCount, const std::function<void(int, int)>& extra) {
    RecField_ShowAll(d, fields, count, cycles, cycleCount);
    DialogResult r;
    do {
        Dialog_Run(d, &r);
        RecField_React(d, fields, count, cycles, cycleCount, r.id);
        if (extra) extra(r.id, r.value);
    } while (r.id != 1 && r.id != 0 && r.id != -1);
    Dialog_Close(d);
    return r.id == 1;
}

void TextureName_Get(char out[21], const char* field) {
    size_t n = strnlen(field, 20);
    memcpy(out, field, n);
    out[n] = '\0';
}

void TextureName_Set(char* field, const char* text) {
    memset(field, 0, 20);
    memcpy(field, text, strnlen(text, 20));
}
