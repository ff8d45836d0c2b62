// texture_dialogs_test.cpp - the texture chooser, the editor with every
// sub-editor, the colour picker, and the places that open them (command
// 503, the layers dialog's texture field, the fog dialog's colours), driven
// click by click through the real dialog files.
#include <unistd.h>

#include <cstddef>
#include <filesystem>

#include "e2e/process.h"
#include "input/session.h"
#include "pov/texture_lists.h"
#include "ui/dialog_support.h"
#include "ui/texture_dialogs.h"

namespace {

class TextureDialogs : public LibrarySessionTest {
   protected:
    static void Save(const char* name, float diffuse = 0.6f) {
        TextureRecord r = Texture_Default();
        strcpy(r.name, name);
        r.diffuse = diffuse;
        ASSERT_EQ(Texture_Save(&r), 1);
    }
    // Runs the chooser with the input pushed so far; its result.
    int Choose(int allow_edit = 1) {
        int result = -1;
        EXPECT_TRUE(Headless_RunSession([&] { result = Texture_Choose(allow_edit); }));
        return result;
    }
    std::string Current() { return g.writer.textures.Current_Texture_Name; }
    // Text of the cells of a text box of a support dialog while it is open.
    std::string BoxText(const char* file, int id, int cells) {
        DlgSpot s = Dlg_Find(Dlg_Support(file), "TEXTBOX", id, 80, 32);
        return Headless_ReadText((s.col + 1) * 8, s.row * 15 + 1, cells, g.config.colors.dialog_fg);
    }
};

TEST_F(TextureDialogs, ChooserListsTheLibraryThenThePredefinedNamesAndScrolls) {
    Save("Stone");
    Save("Wood");
    Save("Marble2");
    // Clicks the buttons, then the name row, then OK; the name chosen.
    auto pick = [&](std::initializer_list<int> buttons, int row) {
        for (int id : buttons) Dlg_Click("texture.dlg", "BUTTON", id);
        Dlg_Click("texture.dlg", "TEXTBOX", row);
        Dlg_Click("texture.dlg", "BUTTON", 1);
        EXPECT_EQ(Choose(), 1);
        return Current();
    };
    // 90 entries: 3 library names, then textures.dat's 87 ("Jade" first).
    EXPECT_EQ(pick({8}, 10), "Pink_Granite");         // down ten: entry 10
    EXPECT_EQ(pick({8, 7}, 10), "Brown_Agate");       // and up one: entry 9
    EXPECT_EQ(pick({8, 8, 8, 8, 8, 8, 8, 8, 8, 9}, 19), "Starfield");   // stops at 80
    EXPECT_EQ(pick({6, 8, 6, 6}, 10), "Stone");       // up ten stops at 0
    // A typed name takes the list's spelling; a name the list lacks stays as typed.
    auto typed = [&](const char* text) {
        Dlg_Type("texture.dlg", 20, std::string(text) + "\n");
        Dlg_Click("texture.dlg", "BUTTON", 1);
        EXPECT_EQ(Choose(), 1);
        return Current();
    };
    EXPECT_EQ(typed("pink_GRANITE"), "Pink_Granite");
    EXPECT_EQ(typed("My_Own"), "My_Own");
    // Cancel and Escape leave the name.
    Dlg_Click("texture.dlg", "TEXTBOX", 10);
    Dlg_Click("texture.dlg", "BUTTON", 0);
    EXPECT_EQ(Choose(), 0);
    Dlg_Click("texture.dlg", "TEXTBOX", 11);
    Headless_PushKey(KEY_ESCAPE);
    EXPECT_EQ(Choose(), 0);
    EXPECT_EQ(Current(), "My_Own");

    // The list file: 22-byte entries, the library's names first.
    const std::string list = ReadFile(work.file("texture.tmp"));
    ASSERT_EQ(list.size(), 90u * 22);
    EXPECT_EQ(list.substr(2 * 22, 8), std::string("Marble2\0", 8));
    EXPECT_EQ(list.substr(3 * 22, 5), std::string("Jade\0", 5));
    // On the screen, library textures are marked, and the name field shows the name.
    EXPECT_THROW(Texture_Choose(1), Headless_InputExhausted);
    EXPECT_EQ(BoxText("texture.dlg", 10, 16), "Stone  (library)");
    EXPECT_EQ(BoxText("texture.dlg", 13, 4), "Jade");
    EXPECT_EQ(BoxText("texture.dlg", 20, 6), "My_Own");
}

TEST_F(TextureDialogs, EditFromTheChooserMakesOrOpensALibraryTexture) {
    Save("Stone", 0.9f);
    // A new name: the editor starts on it with the colour map's first two entries in use.
    Dlg_Type("texture.dlg", 20, "Granite1\n");
    Dlg_Click("texture.dlg", "BUTTON", 2);
    Dlg_Click("maketext.dlg", "BUTTON", 1);
    Dlg_Click("texture.dlg", "BUTTON", 1);
    EXPECT_EQ(Choose(), 1);
    EXPECT_EQ(Current(), "Granite1");
    TextureRecord r;
    ASSERT_EQ(Texture_Load(&r, "Granite1"), 1);
    for (int i = 0; i < 20; i++) EXPECT_EQ(r.map_used[i], i < 2) << i;
    EXPECT_EQ(ReadFile(work.file("texture.tmp")).size(), 89u * 22);  // rebuilt after the edit
    // An existing one: the editor works on the library's record.
    Dlg_Click("texture.dlg", "TEXTBOX", 10);
    Dlg_Click("texture.dlg", "BUTTON", 2);
    Dlg_Click("maketext.dlg", "BUTTON", 0);
    Dlg_Click("texture.dlg", "BUTTON", 0);
    EXPECT_EQ(Choose(), 0);
    EXPECT_FLOAT_EQ(g.writer.textures.Texture_Work_Record.diffuse, 0.9f);
    // Without editing allowed, Edit does nothing.
    Dlg_Type("texture.dlg", 20, "Other\n");
    Dlg_Click("texture.dlg", "BUTTON", 2);
    Dlg_Click("texture.dlg", "BUTTON", 1);
    EXPECT_EQ(Choose(0), 1);
    EXPECT_EQ(Texture_Load(&r, "Other"), 0);
}

TEST_F(TextureDialogs, EditorKindsNamesSaveAndDelete) {
    TextureRecord named{};
    strcpy(named.name, "T1");
    auto edit = [&](const TextureRecord* r, int is_new) {
        int result = -1;
        EXPECT_TRUE(Headless_RunSession([&] { result = Texture_Edit(r, is_new); }));
        return result;
    };
    // Tiles, then layered: one excludes the other. Save keeps the editor open.
    Dlg_Click("maketext.dlg", "CHECK", 8);
    Dlg_Click("maketext.dlg", "CHECK", 13);
    Dlg_Type("maketext.dlg", 11, "Jade\n");
    Dlg_Type("maketext.dlg", 12, "ABCDEFGHIJKLMNOPQRSTUVWXYZ\n");  // cut to 20 characters, no NUL
    Dlg_Click("maketext.dlg", "BUTTON", 2);
    Dlg_Click("maketext.dlg", "BUTTON", 0);
    EXPECT_EQ(edit(&named, 1), 1);
    TextureRecord r;
    ASSERT_EQ(Texture_Load(&r, "t1"), 1);
    EXPECT_EQ(r.texture_kind, 2);
    EXPECT_EQ(std::string(r.layer2_name), "Jade");
    EXPECT_EQ(std::string(r.layer3_name, 20), "ABCDEFGHIJKLMNOPQRST");
    // Clicking the kind that is set makes the texture plain.
    Dlg_Click("maketext.dlg", "CHECK", 13);
    Dlg_Click("maketext.dlg", "BUTTON", 1);
    EXPECT_EQ(edit(&r, 0), 1);
    ASSERT_EQ(Texture_Load(&r, "T1"), 1);
    EXPECT_EQ(r.texture_kind, 0);
    // No name: OK and Save do nothing, silently; a name the scene file
    // could not declare is refused with a message.
    Dlg_Type("maketext.dlg", 9, "\b\b\n");
    Dlg_Click("maketext.dlg", "BUTTON", 1);
    Dlg_Click("maketext.dlg", "BUTTON", 2);
    Dlg_Type("maketext.dlg", 9, "my tex\n");
    Dlg_Click("maketext.dlg", "BUTTON", 1);
    Dlg_Click("maketext.dlg", "BUTTON", 0);
    Headless_ClearTranscript();
    EXPECT_EQ(edit(&r, 0), 0);
    EXPECT_EQ(Headless_Transcript(),
              "\nA texture name is a letter followed by letters, digits or _: <my tex> not saved");
    EXPECT_EQ(ReadFile(work.file("textures.wrk")).size(), 960u);
    // Delete removes it and clears the current name.
    Dlg_Click("maketext.dlg", "BUTTON", 3);
    EXPECT_EQ(edit(&r, 0), 0);
    EXPECT_EQ(Texture_Load(&r, "T1"), 0);
    EXPECT_EQ(Current(), "");
}

// Every field of a record, by name, offset and size: loaded records are
// compared field by field, padding aside.
struct RecordField {
    const char* name;
    size_t offset, size;
};
// clang-format off
#define FIELD(f) RecordField{#f, offsetof(TextureRecord, f), sizeof(TextureRecord::f)}
const RecordField kFields[] = {
    FIELD(name), FIELD(color1), FIELD(color2), FIELD(color3), FIELD(pigment_kind), FIELD(pattern),
    FIELD(gradient_axis), FIELD(mandel_iterations), FIELD(agate_turb), FIELD(map_color),
    FIELD(map_position), FIELD(map_used), FIELD(pig_modifiers), FIELD(pig_frequency),
    FIELD(pig_octaves), FIELD(pig_phase), FIELD(pig_turbulence), FIELD(pig_omega), FIELD(pig_lambda),
    FIELD(image_file), FIELD(image_type), FIELD(image_map_type), FIELD(image_interpolate),
    FIELD(image_write_interpolate), FIELD(image_once), FIELD(pig_translate), FIELD(pig_rotate),
    FIELD(pig_scale), FIELD(normal_kind), FIELD(bumps), FIELD(dents), FIELD(ripples), FIELD(waves),
    FIELD(wrinkles), FIELD(nor_modifiers), FIELD(nor_turbulence), FIELD(nor_omega), FIELD(nor_lambda),
    FIELD(nor_phase), FIELD(nor_octaves), FIELD(nor_frequency), FIELD(bump_file),
    FIELD(bump_interpolate), FIELD(bump_map_type), FIELD(bump_type), FIELD(bump_once),
    FIELD(bump_use_index), FIELD(bump_write_interpolate), FIELD(bump_size), FIELD(nor_translate),
    FIELD(nor_rotate), FIELD(nor_scale), FIELD(diffuse), FIELD(brilliance), FIELD(crand),
    FIELD(ambient), FIELD(reflection), FIELD(phong), FIELD(phong_size), FIELD(specular),
    FIELD(roughness), FIELD(refraction), FIELD(ior), FIELD(finish_bits), FIELD(texture_kind),
    FIELD(tile2_name), FIELD(layer2_name), FIELD(layer3_name), FIELD(tex_translate), FIELD(tex_rotate),
    FIELD(tex_scale)};
#undef FIELD
// clang-format on

// A texture made through every sub-editor, every field given a value of
// its own, saved; after a restart the library gives back each field.
TEST_F(TextureDialogs, EveryFieldRoundTripsThroughTheEditorAndTheLibrary) {
    TextureRecord want = Texture_Default();
    auto type = [](const char* file, int id, const std::string& text) { Dlg_Type(file, id, text + "\n"); };
    auto click = [](const char* file, std::initializer_list<int> ids, const char* kind = "CHECK") {
        for (int id : ids) Dlg_Click(file, kind, id);
    };
    // Types v into a box and expects it in the field (values exact in binary).
    auto num = [&](const char* file, int id, double v, auto* field) {
        char text[32];
        snprintf(text, sizeof text, "%g", v);
        type(file, id, text);
        *field = (std::remove_pointer_t<decltype(field)>)v;
    };
    // Types a transform's values into trans.dlg and expects them in the record.
    auto transform = [&](int button, const char* parent, double* t, double* s, double* r) {
        Dlg_Click(parent, "BUTTON", button);
        double v[9] = {1, 2, 3, 0.5, 0.25, 4, 30, 60, -90};   // -90 comes into 0..360
        for (int i = 0; i < 9; i++) num("trans.dlg", 2 + i, v[i], &v[i]);
        v[8] = 270;
        memcpy(t, v, 24), memcpy(s, v + 3, 24), memcpy(r, v + 6, 24);
        Dlg_Click("trans.dlg", "BUTTON", 1);
    };
    type("maketext.dlg", 9, "Every1");
    type("maketext.dlg", 10, "Jade");
    type("maketext.dlg", 11, "Stone");
    type("maketext.dlg", 12, "Wood");
    click("maketext.dlg", {8});
    strcpy(want.name, "Every1");
    strcpy(want.tile2_name, "Jade");
    strcpy(want.layer2_name, "Stone");
    strcpy(want.layer3_name, "Wood");
    want.texture_kind = 1;

    // Pigment: colours (colour 2 picked as "Orange", which keeps its filter),
    // pattern values, image map, modifiers, the colour map, the transform.
    click("maketext.dlg", {4}, "BUTTON");
    click("pigment.dlg", {23, 51, 72, 75, 80, 85, 87});   // pattern, gradient, flags
    click("pigment.dlg", {61, 61, 71}, "TEXTBOX");         // axis z, image type tga
    for (int k = 0; k < 4; k++) {
        num("pigment.dlg", 30 + k, (k + 1) / 8.0, &want.color1[k]);
        num("pigment.dlg", 40 + k, (k + 5) / 8.0, &want.color3[k]);
    }
    num("pigment.dlg", 38, 0.75, &want.color2[3]);
    Dlg_Click("pigment.dlg", "GRAPH", 34, MOUSE_LEFT, 1);
    type("ccolor.dlg", 20, "orange");
    Dlg_Click("ccolor.dlg", "BUTTON", 1);
    want.color2[0] = 1, want.color2[1] = 0.5f;
    num("pigment.dlg", 62, 50, &want.mandel_iterations);
    num("pigment.dlg", 63, 0.5, &want.agate_turb);
    num("pigment.dlg", 73, 1, &want.image_map_type);
    num("pigment.dlg", 74, -4, &want.image_interpolate);
    num("pigment.dlg", 81, 0.25, &want.pig_turbulence);
    num("pigment.dlg", 82, 4, &want.pig_octaves);
    num("pigment.dlg", 83, 0.625, &want.pig_omega);
    num("pigment.dlg", 84, 3, &want.pig_lambda);
    num("pigment.dlg", 86, 2, &want.pig_frequency);
    num("pigment.dlg", 88, 0.125, &want.pig_phase);
    type("pigment.dlg", 70, "wood.tga");
    strcpy(want.image_file, "wood.tga");
    want.pigment_kind = 3, want.pattern = 2, want.gradient_axis = 2, want.image_type = 1;
    want.image_once = want.image_write_interpolate = 1, want.pig_modifiers = 7;
    click("pigment.dlg", {64}, "BUTTON");                  // colour map: entry 1 off, 19 on
    click("colormap.dlg", {101, 119});
    num("colormap.dlg", 139, 1, &want.map_position[19]);
    for (int k = 0; k < 4; k++) num("colormap.dlg", 159 + 20 * k, k + 2, &want.map_color[19][k]);
    Dlg_Click("colormap.dlg", "GRAPH", 99, MOUSE_LEFT, 0);
    type("ccolor.dlg", 20, "Clear");                      // Clear(1, 1, 1, 1)
    Dlg_Click("ccolor.dlg", "BUTTON", 1);
    Dlg_Click("colormap.dlg", "BUTTON", 1);
    want.map_used[0] = want.map_used[19] = 1;
    for (float& v : want.map_color[0]) v = 1;
    transform(90, "pigment.dlg", want.pig_translate, want.pig_scale, want.pig_rotate);
    Dlg_Click("pigment.dlg", "BUTTON", 1);

    // Normal: kind, the five amounts, the bump map, modifiers, transform.
    click("maketext.dlg", {5}, "BUTTON");
    click("normal.dlg", {26, 72, 75, 76, 80, 85, 87});
    click("normal.dlg", {71, 71}, "TEXTBOX");              // gif -> tga -> iff
    float* amounts[5] = {&want.ripples, &want.waves, &want.bumps, &want.dents, &want.wrinkles};
    for (int i = 0; i < 5; i++) num("normal.dlg", 31 + i, i + 1, amounts[i]);
    num("normal.dlg", 73, 2, &want.bump_map_type);
    num("normal.dlg", 74, 1, &want.bump_interpolate);
    num("normal.dlg", 77, 3.5, &want.bump_size);
    num("normal.dlg", 81, 0.5, &want.nor_turbulence);
    num("normal.dlg", 82, 5, &want.nor_octaves);
    num("normal.dlg", 83, 0.375, &want.nor_omega);
    num("normal.dlg", 84, 2.5, &want.nor_lambda);
    num("normal.dlg", 86, 3, &want.nor_frequency);
    num("normal.dlg", 88, 0.75, &want.nor_phase);
    type("normal.dlg", 70, "bump.gif");
    strcpy(want.bump_file, "bump.gif");
    want.normal_kind = 6, want.bump_type = 2, want.nor_modifiers = 7;
    want.bump_once = want.bump_write_interpolate = want.bump_use_index = 1;
    transform(90, "normal.dlg", want.nor_translate, want.nor_scale, want.nor_rotate);
    Dlg_Click("normal.dlg", "BUTTON", 1);

    // Finish: every item on, every value typed; then the texture's transform.
    click("maketext.dlg", {6}, "BUTTON");
    click("finish.dlg", {20, 21, 22, 23, 24, 25, 26, 27, 28});
    float* finish[11] = {&want.diffuse,    &want.brilliance, &want.crand,      &want.ambient,
                         &want.reflection, &want.phong,      &want.phong_size, &want.specular,
                         &want.roughness,  &want.refraction, &want.ior};
    for (int i = 0; i < 11; i++) num("finish.dlg", 30 + i, i + 11, finish[i]);
    Dlg_Click("finish.dlg", "BUTTON", 1);
    want.finish_bits = 0x1ff;
    transform(7, "maketext.dlg", want.tex_translate, want.tex_scale, want.tex_rotate);
    Dlg_Click("maketext.dlg", "BUTTON", 1);
    int saved = -1;
    ASSERT_TRUE(Headless_RunSession([&] { saved = Texture_Edit(nullptr, 1); }));
    EXPECT_EQ(saved, 1);

    State_Reset();  // the program restarted
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", work.path().c_str());
    TextureRecord got;
    ASSERT_EQ(Texture_Load(&got, "EVERY1"), 1);
    for (const RecordField& f : kFields) {
        EXPECT_EQ(memcmp(reinterpret_cast<const char*>(&got) + f.offset,
                         reinterpret_cast<const char*>(&want) + f.offset, f.size),
                  0)
            << f.name;
    }
}

TEST_F(TextureDialogs, ColourPickerFillsTheColourAndItsFilterWhenGiven) {
    float c[4] = {0.1f, 0.2f, 0.3f, 0.4f};
    auto pick = [&]() {
        int result = -1;
        EXPECT_TRUE(Headless_RunSession([&] { result = Colour_Pick(c); }));
        return result;
    };
    Dlg_Click("ccolor.dlg", "TEXTBOX", 10);  // the first line of colors.dat: Red(1, 0, 0)
    Dlg_Click("ccolor.dlg", "BUTTON", 1);
    EXPECT_EQ(pick(), 1);
    EXPECT_EQ(std::vector<float>(c, c + 4), (std::vector<float>{1, 0, 0, 0.4f}));
    Dlg_Click("ccolor.dlg", "BUTTON", 9);  // down one: Green first, then a swatch row
    Dlg_Click("ccolor.dlg", "GRAPH", 30, MOUSE_LEFT, 1);
    Dlg_Click("ccolor.dlg", "BUTTON", 1);
    EXPECT_EQ(pick(), 1);
    EXPECT_EQ(std::vector<float>(c, c + 4), (std::vector<float>{0, 0, 1, 0.4f}));
    Dlg_Type("ccolor.dlg", 20, "CLEAR\n");  // Clear(1, 1, 1, 1) gives its filter
    Dlg_Click("ccolor.dlg", "BUTTON", 1);
    EXPECT_EQ(pick(), 1);
    EXPECT_EQ(std::vector<float>(c, c + 4), (std::vector<float>{1, 1, 1, 1}));
    Dlg_Click("ccolor.dlg", "TEXTBOX", 10);
    Dlg_Click("ccolor.dlg", "BUTTON", 0);
    EXPECT_EQ(pick(), 0);
    EXPECT_EQ(c[0], 1);
    Dlg_Click("ccolor.dlg", "BUTTON", 1);  // OK with nothing chosen
    EXPECT_EQ(pick(), 0);

    // A swatch's 4 x 4 dither averages to its colour within about a palette step.
    for (const float* rgb :
         {(const float[3]){0.5f, 0.25f, 0.75f}, (const float[3]){1, 0.5f, 0},
          (const float[3]){0.9f, 0.9f, 0.1f}, (const float[3]){0.3f, 0.3f, 0.3f}}) {
        double sum[3] = {0, 0, 0};
        for (int y = 0; y < 4; y++)
            for (int x = 0; x < 4; x++) {
                unsigned char shown[3];
                Headless_Rgb(Colour_SwatchIndex(rgb, x, y), shown);
                for (int k = 0; k < 3; k++) sum[k] += shown[k] / 252.0 / 16;
            }
        for (int k = 0; k < 3; k++) EXPECT_NEAR(sum[k], rgb[k], 0.02) << k;
    }
}

TEST_F(TextureDialogs, LayersFogAndCommandOpenTheChooserAndPicker) {
    Layer* l = g.scene.First_Layer;
    Dlg_Click("layers.dlg", "TEXTBOX", 7);
    Dlg_Type("texture.dlg", 20, "jade\n");
    Dlg_Click("texture.dlg", "BUTTON", 1);
    Dlg_Click("layers.dlg", "TEXTBOX", 7);  // cancelled: kept
    Headless_PushKey(KEY_ESCAPE);
    Dlg_Click("layers.dlg", "BUTTON", 1);
    ASSERT_TRUE(Headless_RunSession([] { Com_Layers(); }));
    EXPECT_STREQ(l->texture, "Jade");
    Dlg_Click("layers.dlg", "TEXTBOX", 7);  // OK with the name rubbed out: no texture
    Dlg_Type("texture.dlg", 20, "\b\b\b\b\n");
    Dlg_Click("texture.dlg", "BUTTON", 1);
    Dlg_Click("layers.dlg", "BUTTON", 1);
    ASSERT_TRUE(Headless_RunSession([] { Com_Layers(); }));
    EXPECT_STREQ(l->texture, "");

    Dlg_Click("fog.dlg", "BUTTON", 21);  // background: Orange(1, 0.5, 0)
    Dlg_Type("ccolor.dlg", 20, "Orange\n");
    Dlg_Click("ccolor.dlg", "BUTTON", 1);
    Dlg_Click("fog.dlg", "BUTTON", 1);
    ASSERT_TRUE(Headless_RunSession([] { Com_Fog(); }));
    EXPECT_EQ(g.pov.Background_Color.x, 1);
    EXPECT_EQ(g.pov.Background_Color.y, 0.5);

    Headless_PushText("TEXTURES\n");  // command 503 by its name
    Headless_PushKey(KEY_ESCAPE);
    EXPECT_FALSE(RunLoop());
    EXPECT_EQ(Headless_LastLine(), "Command: ");
    EXPECT_TRUE(FileExists(work.file("texture.tmp")));
}

TEST_F(TextureDialogs, MissingAndDamagedFilesAreReported) {
    TempDir bare;
    snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s", bare.path().c_str());
    TextureRecord r = Texture_Default();
    float c[4] = {};
    Headless_ClearTranscript();
    Texture_Choose(1);
    Texture_Edit(&r, 1);
    Texture_EditPigment(&r);
    Texture_EditColourMap(&r);
    Texture_EditNormal(&r);
    Texture_EditFinish(&r);
    Texture_EditTransform(&r, TEXTURE_TEXTURE_TRANSFORM);
    Colour_Pick(c);
    WriteFile(bare.file("colors.dat"), "Red(1, 0, 0)\nRed(1, 0\n");
    Colour_Pick(c);
    EXPECT_EQ(Headless_Transcript(),
              "Can't find texture.dlg, or Out of Memory!Can't find maketext.dlg, or Out of Memory!"
              "Can't find pigment.dlg, or Out of Memory!Can't find colormap.dlg, or Out of Memory!"
              "Can't find normal.dlg, or Out of Memory!Can't find finish.dlg, or Out of Memory!"
              "Can't find trans.dlg, or Out of Memory!Can't open colors.dat"
              "\ncolors.dat: 1 damaged line skipped, the first is line 2: not name(r, g, b) or "
              "name(r, g, b, f)Can't find ccolor.dlg, or Out of Memory!");

    // The chooser's own files: textures.dat, the library, the list file.
    std::filesystem::copy_file(Dlg_Support("texture.dlg"), bare.file("texture.dlg"));
    auto chooser = [&]() {
        Headless_ClearTranscript();
        Headless_PushKey(KEY_ESCAPE);
        Choose();
        Headless_ClearInput();
        return Headless_Transcript();
    };
    EXPECT_EQ(chooser(), "Can't open textures.dat");
    WriteFile(bare.file("textures.dat"), "Jade\nbad name\n\x01\x02\nRust\n");
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", bare.file("none").c_str());
    EXPECT_EQ(chooser(), "Can't open/create textures.wrk");
    snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", work.path().c_str());
    std::filesystem::create_directory(work.file("texture.tmp"));
    EXPECT_EQ(chooser(), "Can't open/create texture.tmp");
    std::filesystem::remove(work.file("texture.tmp"));
    Save("Stone");
    WriteFile(work.file("textures.wrk"), ReadFile(work.file("textures.wrk")) + "torn");
    EXPECT_EQ(chooser(),
              "\ntextures.dat: 2 damaged lines skipped, the first is line 2: not one name"
              "\ntextures.wrk: the last 4 bytes are not a whole record and are left out");
    EXPECT_EQ(ReadFile(work.file("texture.tmp")).size(), 3u * 22);
}

}  // namespace
