// texture_subeditors.cpp - the texture editor's sub-editors: pigment,
// colour map, normal, finish and the three transforms.
//
// Each edits a copy of the record and writes it back only on OK (id 1);
// Cancel (0), Escape and Ctrl-C leave the record as it was. The element
// ids of each dialog file are listed with its editor below; a colour's
// swatch (a GRAPH row) opens the colour picker for that colour.
#include <cstring>

#include "state.h"
#include "ui/dialog.h"
#include "ui/dialog_draw.h"
#include "ui/form.h"
#include "ui/texture_dialogs.h"
#include "ui/texture_fields.h"

namespace {

const char* const kAxes[] = {"x", "y", "z"};
const char* const kImageTypes[] = {"gif", "tga", "iff", "dump"};

// Swatches of `count` colours, one a row of the GRAPH `id`.
void ShowSwatches(Dialog* d, int id, const float* const* colours, int count) {
    for (const DlgGraph& a : d->graphs) {
        if (a.id != id) continue;
        Dialog_GraphText(d, id, 0, 0, -1, "");
        const int cw = Dialog_CellWidth();
        DlgDraw_ClipTo(d);
        for (int i = 0; i < count && i <= a.bottom - a.top; i++) {
            const int y = (a.top + i) * SCREEN_LINE;
            Colour_DrawSwatch(colours[i], a.left * cw, y + 1, (a.right + 1) * cw - 2,
                              y + SCREEN_LINE - 2);
        }
        return;
    }
}

// The turbulence, frequency and phase group of the pigment and the normal:
// ids 80 turbulence on, 81 its value, 82 octaves, 83 omega, 84 lambda,
// 85 frequency on, 86 its value, 87 phase on, 88 its value.
int ModifierFields(RecField* f, uint8_t* bits, float* turbulence, int32_t* octaves, float* omega,
                   float* lambda, int32_t* frequency, float* phase) {
    int n = 0;
    f[n++] = {80, RF_BIT8, bits, 0x04};
    f[n++] = {81, RF_FLOAT, turbulence, 0};
    f[n++] = {82, RF_INT, octaves, 0};
    f[n++] = {83, RF_FLOAT, omega, 0};
    f[n++] = {84, RF_FLOAT, lambda, 0};
    f[n++] = {85, RF_BIT8, bits, 0x01};
    f[n++] = {86, RF_INT, frequency, 0};
    f[n++] = {87, RF_BIT8, bits, 0x02};
    f[n++] = {88, RF_FLOAT, phase, 0};
    return n;
}

enum { ID_TRANSFORM = 90 };

}  // namespace

// pigment.dlg: 20..24 the kind (colour, checker of 2, checker of 3, pattern,
// image map); 30..33, 35..38, 40..43 colours 1..3 (r, g, b, filter); GRAPH
// 34 their swatches; 50..60 the patterns 1..11; 61 gradient axis; 62 mandel
// iterations; 63 agate_turb; 64 the colour map; 70..75 the image map (file,
// type, once, map_type, interpolate, write interpolate); 80..88 modifiers;
// 90 the pigment transform.
int Texture_EditPigment(TextureRecord* record) {
    Dialog d;
    if (!Dialog_Open(&d, "pigment.dlg")) return 0;
    TextureRecord c = *record;
    RecField f[64];
    int n = 0;
    for (int k = 0; k < 5; k++) f[n++] = {20 + k, RF_CHOICE, &c.pigment_kind, (uint32_t)k};
    float* colours[3] = {c.color1, c.color2, c.color3};
    for (int i = 0; i < 3; i++)
        for (int k = 0; k < 4; k++) f[n++] = {30 + 5 * i + k, RF_FLOAT, &colours[i][k], 0};
    for (int k = 1; k <= 11; k++) f[n++] = {49 + k, RF_CHOICE32, &c.pattern, (uint32_t)k};
    f[n++] = {62, RF_INT, &c.mandel_iterations, 0};
    f[n++] = {63, RF_FLOAT, &c.agate_turb, 0};
    f[n++] = {70, RF_FILE, c.image_file, 0};
    f[n++] = {72, RF_FLAG, &c.image_once, 0};
    f[n++] = {73, RF_INT8, &c.image_map_type, 0};
    f[n++] = {74, RF_INT8, &c.image_interpolate, 0};
    f[n++] = {75, RF_FLAG, &c.image_write_interpolate, 0};
    n += ModifierFields(f + n, &c.pig_modifiers, &c.pig_turbulence, &c.pig_octaves, &c.pig_omega,
                        &c.pig_lambda, &c.pig_frequency, &c.pig_phase);
    const RecCycle cycles[] = {{61, &c.gradient_axis, kAxes, 3},
                               {71, &c.image_type, kImageTypes, 4}};
    auto swatches = [&]() {
        const float* shown[3] = {c.color1, c.color2, c.color3};
        ShowSwatches(&d, 34, shown, 3);
    };
    swatches();
    auto extra = [&](int id, int value) {
        if (id == 34) {
            const int row = value < 0 ? -value : value;
            if (row >= 3) return;
            if (Colour_Pick(colours[row])) RecField_ShowAll(&d, f, n, nullptr, 0);
        } else if (id == 64) {
            Texture_EditColourMap(&c);
        } else if (id == ID_TRANSFORM) {
            Texture_EditTransform(&c, TEXTURE_PIGMENT_TRANSFORM);
        } else if (!(id >= 30 && id <= 43)) {  // an edited colour value changes its swatch
            return;
        }
        swatches();
    };
    if (!RecField_Run(&d, f, n, cycles, 2, extra)) return 0;
    *record = c;
    return 1;
}

// colormap.dlg: for entry i (0..19) check 100 + i in use, 120 + i its
// position, 140 + i, 160 + i, 180 + i, 200 + i red, green, blue, filter;
// GRAPH 99 the swatches, one a row.
int Texture_EditColourMap(TextureRecord* record) {
    Dialog d;
    if (!Dialog_Open(&d, "colormap.dlg")) return 0;
    TextureRecord c = *record;
    RecField f[20 * 6];
    int n = 0;
    for (int i = 0; i < 20; i++) {
        f[n++] = {100 + i, RF_FLAG, &c.map_used[i], 0};
        f[n++] = {120 + i, RF_FLOAT, &c.map_position[i], 0};
        for (int k = 0; k < 4; k++) f[n++] = {140 + 20 * k + i, RF_FLOAT, &c.map_color[i][k], 0};
    }
    auto swatches = [&]() {
        const float* shown[20];
        for (int i = 0; i < 20; i++) shown[i] = c.map_color[i];
        ShowSwatches(&d, 99, shown, 20);
    };
    swatches();
    auto extra = [&](int id, int value) {
        if (id == 99) {
            const int row = value < 0 ? -value : value;
            if (row >= 20) return;
            if (Colour_Pick(c.map_color[row])) RecField_ShowAll(&d, f, n, nullptr, 0);
        } else if (!(id >= 140 && id < 220)) {
            return;
        }
        swatches();
    };
    if (!RecField_Run(&d, f, n, nullptr, 0, extra)) return 0;
    *record = c;
    return 1;
}

// normal.dlg: 20..26 the kind (none, ripples, waves, bumps, dents,
// wrinkles, bump map); 31..35 the amounts of ripples, waves, bumps, dents
// and wrinkles; 70..77 the bump map (file, type, once, map_type,
// interpolate, write interpolate, use_index, bump_size); 80..88 modifiers;
// 90 the normal transform.
int Texture_EditNormal(TextureRecord* record) {
    Dialog d;
    if (!Dialog_Open(&d, "normal.dlg")) return 0;
    TextureRecord c = *record;
    RecField f[40];
    int n = 0;
    for (int k = 0; k < 7; k++) f[n++] = {20 + k, RF_CHOICE, &c.normal_kind, (uint32_t)k};
    f[n++] = {31, RF_FLOAT, &c.ripples, 0};
    f[n++] = {32, RF_FLOAT, &c.waves, 0};
    f[n++] = {33, RF_FLOAT, &c.bumps, 0};
    f[n++] = {34, RF_FLOAT, &c.dents, 0};
    f[n++] = {35, RF_FLOAT, &c.wrinkles, 0};
    f[n++] = {70, RF_FILE, c.bump_file, 0};
    f[n++] = {72, RF_FLAG, &c.bump_once, 0};
    f[n++] = {73, RF_INT8, &c.bump_map_type, 0};
    f[n++] = {74, RF_INT8, &c.bump_interpolate, 0};
    f[n++] = {75, RF_FLAG, &c.bump_write_interpolate, 0};
    f[n++] = {76, RF_FLAG, &c.bump_use_index, 0};
    f[n++] = {77, RF_FLOAT, &c.bump_size, 0};
    n += ModifierFields(f + n, &c.nor_modifiers, &c.nor_turbulence, &c.nor_octaves, &c.nor_omega,
                        &c.nor_lambda, &c.nor_frequency, &c.nor_phase);
    const RecCycle cycles[] = {{71, &c.bump_type, kImageTypes, 4}};
    auto extra = [&](int id, int) {
        if (id != ID_TRANSFORM) return;
        Texture_EditTransform(&c, TEXTURE_NORMAL_TRANSFORM);
    };
    if (!RecField_Run(&d, f, n, cycles, 1, extra)) return 0;
    *record = c;
    return 1;
}

// finish.dlg: check 20 + b writes finish item b (diffuse, brilliance,
// crand, ambient, reflection, phong, specular, refraction, metallic); 30
// diffuse, 31 brilliance, 32 crand, 33 ambient, 34 reflection, 35 phong,
// 36 phong_size, 37 specular, 38 roughness, 39 refraction, 40 ior.
int Texture_EditFinish(TextureRecord* record) {
    Dialog d;
    if (!Dialog_Open(&d, "finish.dlg")) return 0;
    TextureRecord c = *record;
    RecField f[20];
    int n = 0;
    for (int b = 0; b < 9; b++) f[n++] = {20 + b, RF_BIT32, &c.finish_bits, 1u << b};
    float* const values[11] = {&c.diffuse,    &c.brilliance, &c.crand,      &c.ambient,
                               &c.reflection, &c.phong,      &c.phong_size, &c.specular,
                               &c.roughness,  &c.refraction, &c.ior};
    for (int i = 0; i < 11; i++) f[n++] = {30 + i, RF_FLOAT, values[i], 0};
    if (!RecField_Run(&d, f, n, nullptr, 0, nullptr)) return 0;
    *record = c;
    return 1;
}

// trans.dlg: 2..4 translate, 5..7 scale, 8..10 rotate (degrees, brought
// into 0..360 as in the other transform dialogs).
int Texture_EditTransform(TextureRecord* record, int which) {
    double* const fields[3][3] = {
        {record->pig_translate, record->pig_scale, record->pig_rotate},
        {record->nor_translate, record->nor_scale, record->nor_rotate},
        {record->tex_translate, record->tex_scale, record->tex_rotate},
    };
    if (which < 0 || which > 2) return 0;
    Dialog d;
    if (!Dialog_Open(&d, "trans.dlg")) return 0;
    // copies: the record's doubles lie at 4-byte boundaries
    double v[3][3];
    for (int i = 0; i < 3; i++) memcpy(v[i], fields[which][i], sizeof v[i]);
    FormField form[9];
    for (int i = 0; i < 3; i++)
        for (int k = 0; k < 3; k++)
            form[3 * i + k] = {
                2 + 3 * i + k, FORM_DOUBLE, &v[i][k], "%g", i == 2 ? Form_AngleRule : nullptr, 0};
    if (!Form_Run(&d, form, 9)) return 0;
    for (int i = 0; i < 3; i++) memcpy(fields[which][i], v[i], sizeof v[i]);
    return 1;
}
