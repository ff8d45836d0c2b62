// texture_render_test.cpp - textures in the real ray tracer: every name of
// the shipped "textures.dat" renders, and textures made in the editor with
// each pigment kind and pattern, each normal kind and each finish item
// parse. The three-colour checker is left out: the POV-Ray 3.7 parser
// takes two colours after "checker", the scene language the writer targets
// three.
#include <filesystem>

#include "headless_session.h"
#include "pov/pov_test_support.h"
#include "pov/texture_lists.h"
#include "ui/dialog_support.h"
#include "ui/texture_dialogs.h"

namespace {

// One sphere a texture, side by side.
void Spheres(const std::vector<std::string>& textures) {
    for (size_t i = 0; i < textures.size(); i++) {
        PrimitiveData p = Primitive_Default();
        p.prim_type = PRIM_SPHERE;
        p.p1 = 0.4;
        p.scale = {1, 1, 1};
        p.translate = {(double)(i % 10) - 4.5, (double)(i / 10) - 4, 0};
        Object* o = Add_Primitive(&p);
        ASSERT_NE(o, nullptr);
        snprintf(o->texture, sizeof o->texture, "%s", textures[i].c_str());
    }
}

TEST_F(PovTest, EveryPredefinedTextureRenders) {
    std::vector<std::string> names;
    TextListReport report;
    ASSERT_EQ(TextureNames_Read(QMR_SOURCE_DIR "/support/textures.dat", &names, &report), 1);
    NewLayer("All");
    Spheres(names);
    g.view.Active_Viewport.CAM = {0, 0, -14};
    Export();
    RunOptions opt;
    opt.timeout_s = 300;
    const std::string image = run_ + "/all.png";
    RunResult r = RunProcess(
        {"/usr/bin/povray", "+I" + ScenePath(), "+W160", "+H120", "-D", "-V", "+WT1", "+O" + image},
        opt);
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_EQ(r.out.find("Fatal error"), std::string::npos) << r.out;
    EXPECT_EQ(r.out.find("Render failed"), std::string::npos) << r.out;
    EXPECT_TRUE(FileExists(image));
}

// A 2 x 2 uncompressed true-colour TGA for the image and bump maps.
void WriteTga(const std::string& path) {
    std::string t(18, '\0');
    t[2] = 2;
    t[12] = t[14] = 2;  // width, height
    t[16] = 24;
    t += std::string("\xff\0\0\0\xff\0\0\0\xff\xff\xff\xff", 12);
    WriteFile(path, t);
}

class EditorTextures : public PovTest {
   protected:
    void SetUp() override {
        PovTest::SetUp();
        Headless_Reset();
        Screen_Open(18);
        snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s/support", QMR_SOURCE_DIR);
    }
    void TearDown() override {
        Headless_Reset();
        PovTest::TearDown();
    }
    // A new texture made in the editor: its name, then `steps` in one of
    // the sub-editors (`button` of maketext.dlg, closed with its OK).
    void Make(const std::string& name, int button, const char* file,
              const std::function<void()>& steps) {
        Dlg_Type("maketext.dlg", 9, name + "\n");
        Dlg_Click("maketext.dlg", "BUTTON", button);
        steps();
        Dlg_Click(file, "BUTTON", 1);
        Dlg_Click("maketext.dlg", "BUTTON", 1);
        int saved = 0;
        ASSERT_TRUE(Headless_RunSession([&] { saved = Texture_Edit(nullptr, 1); }));
        ASSERT_EQ(saved, 1) << name;
        made.push_back(name);
    }
    std::vector<std::string> made;
};

TEST_F(EditorTextures, EachPigmentNormalAndFinishParses) {
    WriteTga(run_ + "/map.tga");
    auto check = [](const char* file, int id) { return [=] { Dlg_Click(file, "CHECK", id); }; };
    Make("P_colour", 4, "pigment.dlg", check("pigment.dlg", 20));
    Make("P_checker", 4, "pigment.dlg", check("pigment.dlg", 21));
    for (int pattern = 1; pattern <= 11; pattern++) {
        Make("P_pattern" + std::to_string(pattern), 4, "pigment.dlg", [=] {
            Dlg_Click("pigment.dlg", "CHECK", 23);
            Dlg_Click("pigment.dlg", "CHECK", 49 + pattern);
            for (int id : {80, 85, 87}) Dlg_Click("pigment.dlg", "CHECK", id);  // the modifiers
        });
    }
    Make("P_image", 4, "pigment.dlg", [] {
        Dlg_Click("pigment.dlg", "CHECK", 24);
        Dlg_Type("pigment.dlg", 70, "map.tga\n");
        Dlg_Click("pigment.dlg", "TEXTBOX", 71);  // gif -> tga
        Dlg_Click("pigment.dlg", "CHECK", 72);
        Dlg_Click("pigment.dlg", "CHECK", 75);
    });
    for (int kind = 1; kind <= 6; kind++) {
        Make("N_kind" + std::to_string(kind), 5, "normal.dlg", [=] {
            Dlg_Click("normal.dlg", "CHECK", 20 + kind);
            for (int id : {80, 85, 87}) Dlg_Click("normal.dlg", "CHECK", id);
            if (kind != 6) return;
            Dlg_Type("normal.dlg", 70, "map.tga\n");
            Dlg_Click("normal.dlg", "TEXTBOX", 71);
            Dlg_Click("normal.dlg", "CHECK", 76);
        });
    }
    for (int item = 0; item < 9; item++)
        Make("F_item" + std::to_string(item), 6, "finish.dlg", check("finish.dlg", 20 + item));
    NewLayer("Made");
    Spheres(made);
    g.view.Active_Viewport.CAM = {0, 0, -14};
    const std::string text = Export();
    // Each is declared, and the pattern textures carry their modifiers.
    for (const std::string& n : made)
        EXPECT_NE(text.find("#declare " + n + " = texture {"), std::string::npos) << n;
    EXPECT_NE(text.find(" marble\n        color_map {"), std::string::npos);
    EXPECT_NE(text.find("        bump_map {\n            tga \"map.tga\"\n            use_index"),
              std::string::npos);
}

}  // namespace
