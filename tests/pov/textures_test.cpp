// textures_test.cpp - the library file "textures.wrk" and the declarations.
#include "pov/pov_test_support.h"

using namespace std::string_literals;

namespace {

// The declaration of one record, as Pov_WriteTextureDecl writes it.
std::string DeclText(const TextureRecord& r) {
    char* buf = nullptr;
    size_t n = 0;
    g.writer.file = open_memstream(&buf, &n);
    Pov_WriteTextureDecl(&r);
    fclose(g.writer.file);
    g.writer.file = nullptr;
    std::string s(buf, n);
    free(buf);
    return s;
}

long FileSize(const std::string& path) { return (long)ReadFile(path).size(); }

TEST_F(PovTest, ColourMapWritesOnlyEntriesInUse) {
    TextureRecord r = Named("Map");
    r.pigment_kind = 3;
    r.pattern = 2;
    r.gradient_axis = 1;
    r.map_used[0] = r.map_used[3] = 1;
    r.map_position[3] = 0.5f;
    r.map_color[0][0] = 1;
    r.map_color[3][2] = 1;
    r.map_color[3][3] = 0.5f;
    r.map_position[1] = 0.25f;   // not in use: not written
    r.pig_modifiers = 0x07;
    r.pig_turbulence = 0.25f;
    r.pig_phase = 0.5f;
    r.pig_scale[0] = r.pig_scale[1] = r.pig_scale[2] = 2;
    EXPECT_EQ(DeclText(r),
              "\n\n#declare Map = texture {"
              "\n    pigment { gradient y"
              "\n        color_map {"
              "\n            [0  color rgbf<1, 0, 0, 0>]"
              "\n            [0.5  color rgbf<0, 0, 1, 0.5>]"
              "\n        }"
              "\n        turbulence 0.25"
              "\n        octaves 6"
              "\n        omega 0.5"
              "\n        lambda 2"
              "\n        frequency 1"
              "\n        phase 0.5"
              "\n        scale <2, 2, 2>"
              "\n    }"
              "\n}");
}

TEST_F(PovTest, TilesWithNormalFinishAndTransform) {
    TextureRecord r = Named("Tiled");
    r.texture_kind = 1;
    strcpy(r.tile2_name, "Plain");
    r.pigment_kind = 1;
    r.color1[0] = r.color1[1] = r.color1[2] = 1;
    r.normal_kind = 3;
    r.bumps = 0.5f;
    r.nor_modifiers = 0x03;   // frequency and phase are written for ripples and waves only
    r.finish_bits = 0x10 | 0x20 | 0x100;
    r.reflection = 0.25f;
    r.phong = 1;
    r.tex_translate[1] = 1;
    EXPECT_EQ(DeclText(r),
              "\n\n#declare Tiled = texture {"
              "\n    tiles {"
              "\n        texture {"
              "\n    pigment { checker color rgbf<1, 1, 1, 0> color rgbf<0, 0, 0, 0>"
              "\n    }"
              "\n    normal {"
              "\n        bumps 0.5"
              "\n    }"
              "\n    finish {"
              "\n        reflection 0.25"
              "\n        phong 1  phong_size 40"
              "\n        metallic"
              "\n    }"
              "\n    translate <0, 1, 0>"
              "\n        }"
              "\n    tile2"
              "\n        texture { Plain }"
              "\n    }"
              "\n}");
}

TEST_F(PovTest, LayeredTexturesAndTheEmptySecondName) {
    TextureRecord r = Named("Lay");
    r.texture_kind = 2;
    strcpy(r.layer2_name, "Plain");
    strcpy(r.layer3_name, "Map");
    EXPECT_EQ(DeclText(r),
              "\n\n#declare Lay =\n    texture {\n    pigment { color rgbf<0, 0, 0, 0>\n    }"
              "\n    }\n    texture { Plain }\n    texture { Map }");
    r.layer3_name[0] = '\0';
    EXPECT_EQ(DeclText(r),
              "\n\n#declare Lay =\n    texture {\n    pigment { color rgbf<0, 0, 0, 0>\n    }"
              "\n    }\n    texture { Plain }");
    r.layer2_name[0] = '\0';
    EXPECT_EQ(DeclText(r), "\n\n#declare Lay = texture {\n    pigment { color rgbf<0, 0, 0, 0>\n    }\n}");
}

TEST_F(PovTest, ImageMapBumpMapThreeColourCheckerAndFullFinish) {
    TextureRecord r = Named("Img");
    r.pigment_kind = 4;
    r.image_type = 1;
    strcpy(r.image_file, "wood.tga");
    r.image_once = 1;
    r.image_map_type = 1;
    r.image_write_interpolate = 1;
    r.normal_kind = 6;
    strcpy(r.bump_file, "b.gif");
    r.nor_modifiers = 0x04;
    r.nor_turbulence = 0.5f;
    r.nor_rotate[2] = 90;
    r.finish_bits = 0x1ff;
    EXPECT_EQ(DeclText(r),
              "\n\n#declare Img = texture {"
              "\n    pigment {"
              "\n        image_map {"
              "\n            tga \"wood.tga\" once"
              "\n            map_type 1"
              "\n            interpolate 2"
              "\n        }"
              "\n    }"
              "\n    normal {"
              "\n        bump_map {"
              "\n            gif \"b.gif\""
              "\n            use_color"
              "\n            bump_size 5"
              "\n            map_type 0"
              "\n        }"
              "\n        turbulence 0.5"
              "\n        octaves 6"
              "\n        omega 0.5"
              "\n        lambda 2"
              "\n        rotate <0, 0, 90>"
              "\n    }"
              "\n    finish {"
              "\n        diffuse 0.6"
              "\n        brilliance 1"
              "\n        crand 0"
              "\n        ambient 0.1"
              "\n        reflection 0"
              "\n        phong 0  phong_size 40"
              "\n        specular 0  roughness 0.05"
              "\n        refraction 0  ior 1"
              "\n        metallic"
              "\n    }"
              "\n}");
    TextureRecord c = Named("C3");
    c.pigment_kind = 2;
    c.color3[3] = 1;
    EXPECT_EQ(DeclText(c), "\n\n#declare C3 = texture {\n    pigment { checker color rgbf<0, 0, 0, 0> color rgbf<0, 0, 0, 0>"
                           " color rgbf<0, 0, 0, 1>\n    }\n}");
}

TEST_F(PovTest, LibrarySaveLoadReplaceAndDelete) {
    const std::string lib = work_ + "/textures.wrk";
    TextureRecord a = Named("Stone");
    a.diffuse = 0.9f;
    SaveTexture(a);
    SaveTexture(Named("Wood"));
    EXPECT_EQ(FileSize(lib), 1920);
    EXPECT_STREQ(g.writer.textures.Current_Texture_Name, "Wood");
    TextureRecord got;
    ASSERT_EQ(Texture_Load(&got, "STONE"), 1);
    EXPECT_FLOAT_EQ(got.diffuse, 0.9f);
    EXPECT_EQ(Texture_Load(&got, "Marble"), 0);
    // A name that differs only in case replaces the record in place.
    TextureRecord b = Named("stone");
    b.diffuse = 0.2f;
    SaveTexture(b);
    EXPECT_EQ(FileSize(lib), 1920);
    ASSERT_EQ(Texture_Load(&got, "Stone"), 1);
    EXPECT_FLOAT_EQ(got.diffuse, 0.2f);
    EXPECT_STREQ(got.name, "stone");
    // Record layout on disk: name at 0, diffuse at 0x308.
    std::string bytes = ReadFile(lib);
    float diffuse;
    memcpy(&diffuse, bytes.data() + 0x308, 4);
    EXPECT_FLOAT_EQ(diffuse, 0.2f);
    EXPECT_EQ(bytes.substr(960, 5), "Wood\0"s.substr(0, 5));

    TextureRecord empty = Named("");
    EXPECT_EQ(Texture_Save(&empty), 0);
    EXPECT_EQ(Texture_Delete("STONE"), 1);
    EXPECT_EQ(FileSize(lib), 960);
    EXPECT_STREQ(g.writer.textures.Current_Texture_Name, "");
    EXPECT_EQ(Texture_Load(&got, "Stone"), 0);
    EXPECT_EQ(Texture_Load(&got, "wood"), 1);
    EXPECT_FALSE(FileExists(work_ + "/work.tmp"));
}

TEST_F(PovTest, DeleteWithoutWorkTmpKeepsTheLibrary) {
    SaveTexture(Named("Stone"));
    ASSERT_EQ(mkdir((work_ + "/work.tmp").c_str(), 0755), 0);
    testing::internal::CaptureStdout();
    EXPECT_EQ(Texture_Delete("Stone"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Can't open/create work.tmp");
    TextureRecord got;
    EXPECT_EQ(Texture_Load(&got, "Stone"), 1);
}

TEST_F(PovTest, DamagedLibraryTailIsIgnoredAndOverwritten) {
    SaveTexture(Named("Stone"));
    const std::string lib = work_ + "/textures.wrk";
    std::string bytes = ReadFile(lib) + std::string(100, 'x');   // a torn second record
    WriteFile(lib, bytes);
    TextureRecord got;
    EXPECT_EQ(Texture_Load(&got, "Stone"), 1);
    EXPECT_EQ(Texture_Load(&got, "xxxx"), 0);
    SaveTexture(Named("Wood"));
    EXPECT_EQ(FileSize(lib), 1920);
    EXPECT_EQ(Texture_Load(&got, "Wood"), 1);
    // Shorter than one record: nothing to find, nothing crashes.
    WriteFile(lib, "Stone");
    EXPECT_EQ(Texture_Load(&got, "Stone"), 0);
    NewLayer("L");
    strcpy(g.scene.First_Layer->texture, "Stone");
    EXPECT_EQ(Textures(Export()), "");
    parse_check_ = false;   // "Stone" is referenced but declared nowhere
}

TEST_F(PovTest, OnlyTexturesInUseByVisibleLayersAreDeclared) {
    SaveTexture(Named("Unused"));
    SaveTexture(Named("Stone"));
    SaveTexture(Named("OffOnly"));
    SaveTexture(Named("ObjTex"));
    SaveTexture(Named("ABCDEFGHIJKLMNOPQRST"));   // 20 characters: no NUL in the record
    Layer* a = NewLayer("A");
    strcpy(a->texture, "STONE");   // matched without regard to case
    PrimitiveData p = Primitive_Default();
    p.prim_type = PRIM_SPHERE;
    p.p1 = 1;
    strcpy(Add_Primitive(&p)->texture, "objtex");
    Layer* off = NewLayer("Off");
    off->on = 0;
    strcpy(off->texture, "OffOnly");
    Layer* c = NewLayer("C");
    strcpy(c->texture, "ABCDEFGHIJKLMNOPQRST");
    // Declared as the record spells it, referenced as the object spells it:
    // the ray tracer's names are case-sensitive, so this scene does not parse.
    parse_check_ = false;
    std::string plain = " = texture {\n    pigment { color rgbf<0, 0, 0, 0>\n    }\n}";
    std::string text = Export();
    EXPECT_EQ(Textures(text), "\n\n#declare Stone" + plain + "\n\n#declare ObjTex" + plain +
                                  "\n\n#declare ABCDEFGHIJKLMNOPQRST" + plain);
}

TEST_F(PovTest, TexturedSceneParsesInTheRayTracer) {
    TextureRecord r = Named("Marbled");
    r.pigment_kind = 3;
    r.pattern = 6;
    r.map_used[0] = r.map_used[1] = 1;
    r.map_position[1] = 1;
    r.map_color[1][0] = 1;
    r.pig_modifiers = 0x07;
    r.pig_turbulence = 0.5f;
    r.normal_kind = 1;
    r.ripples = 0.3f;
    r.nor_modifiers = 0x03;
    r.finish_bits = 0x1ff;
    SaveTexture(r);
    TextureRecord t = Named("Checks");
    t.texture_kind = 1;
    strcpy(t.tile2_name, "Marbled");
    t.pigment_kind = 1;   // the three-colour checker's text is one the 3.7 parser refuses
    t.tex_scale[0] = 0.5;
    SaveTexture(t);
    TextureRecord l = Named("Layers");
    l.texture_kind = 2;
    strcpy(l.layer2_name, "Marbled");
    l.color1[3] = 0.5f;
    SaveTexture(l);
    for (const char* n : {"Marbled", "Checks", "Layers"}) {
        Layer* layer = NewLayer(n);
        PrimitiveData p = Primitive_Default();
        p.prim_type = PRIM_SPHERE;
        p.p1 = 1;
        Add_Primitive(&p);
        strcpy(layer->texture, n);
    }
    Export();
}

}  // namespace
