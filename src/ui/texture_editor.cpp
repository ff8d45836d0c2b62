// texture_editor.cpp - the texture editor (maketext.dlg) on the work record.
//
// Element ids: 9 name, 10 tile2 texture, 11 second and 12 third layered
// texture (text boxes); 8 tiles and 13 layered (check boxes, each clearing
// the other; clicking the one that is set makes the texture plain again);
// 4 pigment, 5 normal, 6 finish, 7 texture transform (sub-editors); 1 OK
// (save and close), 2 save, 3 delete and close, 0 cancel; GRAPH 20 a
// summary of the record, redrawn after every change.
//
// The editor works on Texture_Work_Record itself, so what was last edited
// is there the next time, saved or not.
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "base/message.h"
#include "pov/textures.h"
#include "state.h"
#include "ui/dialog.h"
#include "ui/texture_dialogs.h"
#include "ui/texture_fields.h"

namespace {

enum {
    ID_CANCEL = 0,
    ID_OK = 1,
    ID_SAVE = 2,
    ID_DELETE = 3,
    ID_PIGMENT = 4,
    ID_NORMAL = 5,
    ID_FINISH = 6,
    ID_TRANSFORM = 7,
    ID_TILES = 8,
    ID_NAME = 9,
    ID_TILE2 = 10,
    ID_LAYER2 = 11,
    ID_LAYER3 = 12,
    ID_LAYERED = 13,
    ID_SUMMARY = 20,
};

TextureRecord& Work() {
    return g.writer.textures.Texture_Work_Record;
}

std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string Format(const char* format, ...) {
    char text[256];
    va_list args;
    va_start(args, format);
    vsnprintf(text, sizeof text, format, args);
    va_end(args);
    return text;
}

std::string Name(const char* field) {
    char n[21];
    TextureName_Get(n, field);
    return n;
}

std::string Transform(const double* s, const double* r, const double* t) {
    double v[9];
    memcpy(v, s, 3 * sizeof(double));
    memcpy(v + 3, r, 3 * sizeof(double));
    memcpy(v + 6, t, 3 * sizeof(double));
    std::string out;
    if (!(v[0] == 1 && v[1] == 1 && v[2] == 1))
        out += Format(" scale <%g, %g, %g>", v[0], v[1], v[2]);
    if (!(v[3] == 0 && v[4] == 0 && v[5] == 0))
        out += Format(" rotate <%g, %g, %g>", v[3], v[4], v[5]);
    if (!(v[6] == 0 && v[7] == 0 && v[8] == 0))
        out += Format(" translate <%g, %g, %g>", v[6], v[7], v[8]);
    return out.empty() ? " none" : out;
}

std::string Turbulence(uint8_t bits, float turbulence) {
    return (bits & 0x04) ? Format(", turbulence %g", turbulence) : "";
}

// One line each for the pigment, the normal, the finish and the transform.
void ShowSummary(Dialog* d) {
    static const char* const kPatterns[] = {"?",       "mandel",  "gradient", "agate",
                                            "granite", "leopard", "marble",   "spotted",
                                            "radial",  "bozo",    "wood",     "onion"};
    static const char* const kNormals[] = {"none",  "ripples",  "waves",   "bumps",
                                           "dents", "wrinkles", "bump map"};
    static const char* const kFinish[] = {"diffuse",  "brilliance", "crand",
                                          "ambient",  "reflection", "phong",
                                          "specular", "refraction", "metallic"};
    const TextureRecord& r = Work();
    std::string pigment;
    switch (r.pigment_kind) {
        case 0:
            pigment = Format("colour <%g, %g, %g, %g>", r.color1[0], r.color1[1], r.color1[2],
                             r.color1[3]);
            break;
        case 1:
            pigment = "checker of 2 colours";
            break;
        case 2:
            pigment = "checker of 3 colours";
            break;
        case 3: {
            int used = 0;
            for (int i = 0; i < 20; i++) used += r.map_used[i] != 0;
            pigment = Format(
                "%s, colour map of %d entries",
                r.pattern >= 1 && r.pattern <= 11 ? kPatterns[r.pattern] : "no pattern", used);
            break;
        }
        case 4:
            pigment = "image map \"" + std::string(r.image_file, strnlen(r.image_file, 13)) + "\"";
            break;
        default:
            pigment = "none";
            break;
    }
    pigment += Turbulence(r.pig_modifiers, r.pig_turbulence);
    std::string normal = r.normal_kind <= 6 ? kNormals[r.normal_kind] : "none";
    const float amounts[] = {0, r.ripples, r.waves, r.bumps, r.dents, r.wrinkles};
    if (r.normal_kind >= 1 && r.normal_kind <= 5) normal += Format(" %g", amounts[r.normal_kind]);
    if (r.normal_kind != 0) normal += Turbulence(r.nor_modifiers, r.nor_turbulence);
    std::string finish;
    for (int b = 0; b < 9; b++)
        if (r.finish_bits & (1u << b))
            finish += (finish.empty() ? "" : ", ") + std::string(kFinish[b]);
    if (finish.empty()) finish = "none (the ray tracer's defaults)";
    const int text = g.config.colors.view_text;
    Dialog_GraphText(d, ID_SUMMARY, 0, 0, -1, "");
    Dialog_GraphText(d, ID_SUMMARY, 1, 0, text, ("Pigment:   " + pigment).c_str());
    Dialog_GraphText(d, ID_SUMMARY, 1, 1, text, ("Normal:    " + normal).c_str());
    Dialog_GraphText(d, ID_SUMMARY, 1, 2, text, ("Finish:    " + finish).c_str());
    Dialog_GraphText(
        d, ID_SUMMARY, 1, 3, text,
        ("Transform:" + Transform(r.tex_scale, r.tex_rotate, r.tex_translate)).c_str());
}

void ShowAll(Dialog* d) {
    const TextureRecord& r = Work();
    Dialog_SetText(d, ID_NAME, Name(r.name).c_str());
    Dialog_SetText(d, ID_TILE2, Name(r.tile2_name).c_str());
    Dialog_SetText(d, ID_LAYER2, Name(r.layer2_name).c_str());
    Dialog_SetText(d, ID_LAYER3, Name(r.layer3_name).c_str());
    Dialog_SetCheck(d, ID_TILES, r.texture_kind == 1);
    Dialog_SetCheck(d, ID_LAYERED, r.texture_kind == 2);
    ShowSummary(d);
}

// A name the scene file can declare: a letter, then letters, digits and "_".
bool Declarable(const std::string& name) {
    if (name.empty() || !isalpha((unsigned char)name[0])) return false;
    for (char ch : name)
        if (!isalnum((unsigned char)ch) && ch != '_') return false;
    return true;
}

// Saves the work record; 1 when saved. An empty name is refused silently.
int Save() {
    const std::string name = Name(Work().name);
    if (name.empty()) return 0;
    if (!Declarable(name)) {
        Msg_Printf("\nA texture name is a letter followed by letters, digits or _: <%s> not saved",
                   name.c_str());
        return 0;
    }
    return Texture_Save(&Work());
}

// Edits one of the name fields.
void EditName(Dialog* d, int id, char* field) {
    if (Dialog_EditText(d, id)) TextureName_Set(field, d->editBuffer);
    Dialog_SetText(d, id, Name(field).c_str());
}

}  // namespace

int Texture_Edit(const TextureRecord* record, int is_new) {
    TextureState& ts = g.writer.textures;
    if (!ts.workRecordSet) {
        ts.Texture_Work_Record = Texture_Default();
        ts.workRecordSet = 1;
    }
    TextureRecord& w = Work();
    if (is_new) {
        memset(w.map_used, 0, sizeof w.map_used);
        memset(w.map_position, 0, sizeof w.map_position);
        w.map_used[0] = w.map_used[1] = 1;
        TextureName_Set(w.name, record ? Name(record->name).c_str() : "");
    } else {
        w = *record;
        snprintf(ts.Current_Texture_Name, sizeof ts.Current_Texture_Name, "%s",
                 Name(w.name).c_str());
    }
    Dialog d;
    if (!Dialog_Open(&d, "maketext.dlg")) return 0;
    ShowAll(&d);
    int saved = 0;
    DialogResult r;
    for (;;) {
        Dialog_Run(&d, &r);
        if (r.id == ID_CANCEL || r.id == -1) break;
        if (r.id == ID_OK) {
            if (Save()) {
                saved = 1;
                break;
            }
        } else if (r.id == ID_SAVE) {
            saved |= Save();
        } else if (r.id == ID_DELETE) {
            const std::string name = Name(w.name);
            if (!name.empty() && Texture_Delete(name.c_str())) break;
        } else if (r.id == ID_NAME) {
            EditName(&d, ID_NAME, w.name);
        } else if (r.id == ID_TILE2) {
            EditName(&d, ID_TILE2, w.tile2_name);
        } else if (r.id == ID_LAYER2) {
            EditName(&d, ID_LAYER2, w.layer2_name);
        } else if (r.id == ID_LAYER3) {
            EditName(&d, ID_LAYER3, w.layer3_name);
        } else if (r.id == ID_TILES) {
            w.texture_kind = w.texture_kind == 1 ? 0 : 1;
        } else if (r.id == ID_LAYERED) {
            w.texture_kind = w.texture_kind == 2 ? 0 : 2;
        } else if (r.id >= ID_PIGMENT && r.id <= ID_TRANSFORM) {
            if (r.id == ID_PIGMENT)
                Texture_EditPigment(&w);
            else if (r.id == ID_NORMAL)
                Texture_EditNormal(&w);
            else if (r.id == ID_FINISH)
                Texture_EditFinish(&w);
            else
                Texture_EditTransform(&w, TEXTURE_TEXTURE_TRANSFORM);
        }
        ShowAll(&d);
    }
    Dialog_Close(&d);
    return saved;
}
