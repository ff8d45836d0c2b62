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

class TextureDialogs : public SessionTest {
   protected:
    void SetUp() override {
        SessionTest::SetUp();
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", work.path().c_str());
        old_cwd = std::filesystem::current_path();
        std::filesystem::current_path(work.path());  // "texture.tmp" goes to the current directory
    }
    void TearDown() override {
        std::filesystem::current_path(old_cwd);
        SessionTest::TearDown();
    }
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
    TempDir work;
    std::filesystem::path old_cwd;
};

TEST_F(TextureDialogs, ChooserListsTheLibraryThenThePredefinedNamesAndScrolls) {
    Save("Stone");
    Save("Wood");
    Save("Marble2");
    // Window at 10: row 0 is entry 10, the eighth name of textures.dat.
    Dlg_Click("texture.dlg", "BUTTON", 8);
    Dlg_Click("texture.dlg", "TEXTBOX", 10);
    Dlg_Click("texture.dlg", "BUTTON", 1);
    EXPECT_EQ(Choose(), 1);
    EXPECT_EQ(Current(), "Pink_Granite");
    // Up one: entry 9. Ten times down ten stops at the last window (80 of 90 entries).
    Dlg_Click("texture.dlg", "BUTTON", 8);
    Dlg_Click("texture.dlg", "BUTTON", 7);
    Dlg_Click("texture.dlg", "TEXTBOX", 10);
    Dlg_Click("texture.dlg", "BUTTON", 1);
    EXPECT_EQ(Choose(), 1);
    EXPECT_EQ(Current(), "Brown_Agate");
    for (int i = 0; i < 10; i++) Dlg_Click("texture.dlg", "BUTTON", 8);
    Dlg_Click("texture.dlg", "BUTTON", 9);  // already at the end
    Dlg_Click("texture.dlg", "TEXTBOX", 19);
    Dlg_Click("texture.dlg", "BUTTON", 1);
    EXPECT_EQ(Choose(), 1);
    EXPECT_EQ(Current(), "Starfield");
    // A typed name takes the list's spelling; a name the list lacks stays as typed.
    Dlg_Type("texture.dlg", 20, "pink_GRANITE\n");
    Dlg_Click("texture.dlg", "BUTTON", 1);
    EXPECT_EQ(Choose(), 1);
    EXPECT_EQ(Current(), "Pink_Granite");
    Dlg_Type("texture.dlg", 20, "My_Own\n");
    Dlg_Click("texture.dlg", "BUTTON", 1);
    EXPECT_EQ(Choose(), 1);
    EXPECT_EQ(Current(), "My_Own");
    // Cancel and Escape leave the name; past the end a row takes nothing.
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
    EXPECT_EQ(list.substr(0, 6), std::string("Stone\0", 6));
    EXPECT_EQ(list.substr(2 * 22, 8), std::string("Marble2\0", 8));
    EXPECT_EQ(list.substr(3 * 22, 5), std::string("Jade\0", 5));
    // On the screen, library textures are marked, and the name field shows the name.
    try {
        Texture_Choose(1);
        ADD_FAILURE() << "the chooser ended";
    } catch (const Headless_InputExhausted&) {
    }
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
#define FIELD(f)                                                 \
    RecordField {                                                \
#f, offsetof(TextureRecord, f), sizeof(TextureRecord::f) \
    }
// clang-format off
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
// clang-format on
#undef FIELD

void SetDoubles(double* field, double x, double y, double z) {
    const double v[3] = {x, y, z};
    memcpy(field, v, sizeof v);
}

// A texture made through every sub-editor, every field given a value of
// its own, saved; after a restart the library gives back each field.
TEST_F(TextureDialogs, EveryFieldRoundTripsThroughTheEditorAndTheLibrary) {
    TextureRecord want = Texture_Default();
    strcpy(want.name, "Every1");
    auto type = [](const char* file, int id, const char* text) {
        Dlg_Type(file, id, std::string(text) + "\n");
    };
    type("maketext.dlg", 9, "Every1");
    Dlg_Click("maketext.dlg", "CHECK", 8);
    type("maketext.dlg", 10, "Jade");
    type("maketext.dlg", 11, "Stone");
    type("maketext.dlg", 12, "Wood");
    want.texture_kind = 1;
    strcpy(want.tile2_name, "Jade");
    strcpy(want.layer2_name, "Stone");
    strcpy(want.layer3_name, "Wood");

    // Pigment: kind, colours (one picked: "Orange"), pattern values, image
    // map, modifiers, the colour map and the pigment transform.
    Dlg_Click("maketext.dlg", "BUTTON", 4);
    Dlg_Click("pigment.dlg", "CHECK", 23);
    const char* colours[12] = {"0.1", "0.2", "0.3", "0.4", "",    "",
                               "",    "0.5", "0.6", "0.7", "0.8", "0.9"};
    for (int i = 0; i < 12; i++)
        if (colours[i][0]) type("pigment.dlg", 30 + i / 4 * 5 + i % 4, colours[i]);
    Dlg_Click("pigment.dlg", "GRAPH", 34, MOUSE_LEFT, 1);
    type("ccolor.dlg", 20, "orange");
    Dlg_Click("ccolor.dlg", "BUTTON", 1);
    want.pigment_kind = 3;
    // colour 2 keeps its filter: "Orange" gives none
    const float c1[4] = {0.1f, 0.2f, 0.3f, 0.4f}, c2[4] = {1, 0.5f, 0, 0.5f},
                c3[4] = {0.6f, 0.7f, 0.8f, 0.9f};
    memcpy(want.color1, c1, sizeof c1);
    memcpy(want.color2, c2, sizeof c2);
    memcpy(want.color3, c3, sizeof c3);
    Dlg_Click("pigment.dlg", "CHECK", 51);    // gradient
    Dlg_Click("pigment.dlg", "TEXTBOX", 61);  // axis x -> y -> z
    Dlg_Click("pigment.dlg", "TEXTBOX", 61);
    type("pigment.dlg", 62, "50");
    type("pigment.dlg", 63, "0.3");
    type("pigment.dlg", 70, "wood.tga");
    Dlg_Click("pigment.dlg", "TEXTBOX", 71);  // gif -> tga
    Dlg_Click("pigment.dlg", "CHECK", 72);
    type("pigment.dlg", 73, "1");
    type("pigment.dlg", 74, "-4");
    Dlg_Click("pigment.dlg", "CHECK", 75);
    for (int id : {80, 85, 87}) Dlg_Click("pigment.dlg", "CHECK", id);
    type("pigment.dlg", 81, "0.25");
    type("pigment.dlg", 82, "4");
    type("pigment.dlg", 83, "0.7");
    type("pigment.dlg", 84, "3");
    type("pigment.dlg", 86, "2");
    type("pigment.dlg", 88, "0.125");
    want.pattern = 2;
    want.gradient_axis = 2;
    want.mandel_iterations = 50;
    want.agate_turb = 0.3f;
    strcpy(want.image_file, "wood.tga");
    want.image_type = 1;
    want.image_once = 1;
    want.image_map_type = 1;
    want.image_interpolate = -4;
    want.image_write_interpolate = 1;
    want.pig_modifiers = 7;
    want.pig_turbulence = 0.25f;
    want.pig_octaves = 4;
    want.pig_omega = 0.7f;
    want.pig_lambda = 3;
    want.pig_frequency = 2;
    want.pig_phase = 0.125f;
    Dlg_Click("pigment.dlg", "BUTTON", 64);  // colour map: entry 1 off, entry 19 on
    Dlg_Click("colormap.dlg", "CHECK", 101);
    Dlg_Click("colormap.dlg", "CHECK", 119);
    for (int k = 0; k < 5; k++) type("colormap.dlg", 139 + 20 * k, std::to_string(k + 1).c_str());
    Dlg_Click("colormap.dlg", "GRAPH", 99, MOUSE_LEFT, 0);
    type("ccolor.dlg", 20, "Clear");
    Dlg_Click("ccolor.dlg", "BUTTON", 1);
    Dlg_Click("colormap.dlg", "BUTTON", 1);
    want.map_used[0] = want.map_used[19] = 1;
    want.map_position[19] = 1;
    const float m19[4] = {2, 3, 4, 5}, clear[4] = {1, 1, 1, 1};
    memcpy(want.map_color[19], m19, sizeof m19);
    memcpy(want.map_color[0], clear, sizeof clear);
    Dlg_Click("pigment.dlg", "BUTTON", 90);
    type("trans.dlg", 2, "1");
    type("trans.dlg", 6, "2");
    type("trans.dlg", 10, "-90");  // rotations come into 0..360
    Dlg_Click("trans.dlg", "BUTTON", 1);
    SetDoubles(want.pig_translate, 1, 0, 0);
    SetDoubles(want.pig_scale, 1, 2, 1);
    SetDoubles(want.pig_rotate, 0, 0, 270);
    Dlg_Click("pigment.dlg", "BUTTON", 1);

    // Normal: kind, the five amounts, the bump map, modifiers, transform.
    Dlg_Click("maketext.dlg", "BUTTON", 5);
    Dlg_Click("normal.dlg", "CHECK", 26);
    for (int i = 0; i < 5; i++) type("normal.dlg", 31 + i, std::to_string(i + 1).c_str());
    type("normal.dlg", 70, "bump.gif");
    Dlg_Click("normal.dlg", "TEXTBOX", 71);  // gif -> tga -> iff
    Dlg_Click("normal.dlg", "TEXTBOX", 71);
    for (int id : {72, 75, 76, 80, 85, 87}) Dlg_Click("normal.dlg", "CHECK", id);
    type("normal.dlg", 73, "2");
    type("normal.dlg", 74, "1");
    type("normal.dlg", 77, "3.5");
    type("normal.dlg", 81, "0.5");
    type("normal.dlg", 82, "5");
    type("normal.dlg", 83, "0.4");
    type("normal.dlg", 84, "2.5");
    type("normal.dlg", 86, "3");
    type("normal.dlg", 88, "0.75");
    Dlg_Click("normal.dlg", "BUTTON", 90);
    type("trans.dlg", 4, "-2");
    Dlg_Click("trans.dlg", "BUTTON", 1);
    Dlg_Click("normal.dlg", "BUTTON", 1);
    want.normal_kind = 6;
    want.ripples = 1, want.waves = 2, want.bumps = 3, want.dents = 4, want.wrinkles = 5;
    strcpy(want.bump_file, "bump.gif");
    want.bump_type = 2;
    want.bump_once = want.bump_write_interpolate = want.bump_use_index = 1;
    want.bump_map_type = 2;
    want.bump_interpolate = 1;
    want.bump_size = 3.5f;
    want.nor_modifiers = 7;
    want.nor_turbulence = 0.5f;
    want.nor_octaves = 5;
    want.nor_omega = 0.4f;
    want.nor_lambda = 2.5f;
    want.nor_frequency = 3;
    want.nor_phase = 0.75f;
    SetDoubles(want.nor_translate, 0, 0, -2);

    // Finish: every item on, every value typed.
    Dlg_Click("maketext.dlg", "BUTTON", 6);
    for (int b = 0; b < 9; b++) Dlg_Click("finish.dlg", "CHECK", 20 + b);
    float* finish[11] = {&want.diffuse,    &want.brilliance, &want.crand,      &want.ambient,
                         &want.reflection, &want.phong,      &want.phong_size, &want.specular,
                         &want.roughness,  &want.refraction, &want.ior};
    for (int i = 0; i < 11; i++) {
        type("finish.dlg", 30 + i, std::to_string(i + 11).c_str());
        *finish[i] = (float)(i + 11);
    }
    Dlg_Click("finish.dlg", "BUTTON", 1);
    want.finish_bits = 0x1ff;

    // The texture's own transform, then OK saves.
    Dlg_Click("maketext.dlg", "BUTTON", 7);
    type("trans.dlg", 3, "7");
    type("trans.dlg", 7, "0.5");
    type("trans.dlg", 8, "45");
    Dlg_Click("trans.dlg", "BUTTON", 1);
    SetDoubles(want.tex_translate, 0, 7, 0);
    SetDoubles(want.tex_scale, 1, 1, 0.5);
    SetDoubles(want.tex_rotate, 45, 0, 0);
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
