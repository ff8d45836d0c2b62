// The example scenes of examples/: each script builds its scene in a
// scripted session of the built program and saves it; the scene file holds
// what the script made (counted by hand from the script), povray renders
// it, and the work file kept in examples/ is the one the script makes.
#include <algorithm>
#include <filesystem>
#include <map>

#include "startup/script_fixture.h"

namespace {

// The scene file cut at its layers: name -> the text of its CSG statement.
std::map<std::string, std::string> LayersOf(const std::string& pov) {
    std::map<std::string, std::string> layers;
    const std::string mark = "// Layer name: ";
    for (size_t at = pov.find(mark); at != std::string::npos;) {
        const size_t name_end = pov.find('\n', at);
        const std::string name = pov.substr(at + mark.size(), name_end - at - mark.size());
        const size_t next = pov.find(mark, name_end);
        layers[name] = pov.substr(name_end, next == std::string::npos ? std::string::npos : next - name_end);
        at = next;
    }
    return layers;
}

int Count(const std::string& text, const std::string& what) {
    int n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) n++;
    return n;
}

class ExamplesTest : public ScriptSessionTest {
  protected:
    void SetUp() override {
        ScriptSessionTest::SetUp();
        opt.timeout_s = 300;   // whole dialog sessions, under the sanitizers
    }
    // Runs examples/NAME.txt; the scene file it exported.
    std::string Build(const std::string& name) {
        RunResult r = Run({"--script", std::string(QMR_SOURCE_DIR "/examples/") + name + ".txt"});
        EXPECT_FALSE(r.timed_out);
        EXPECT_EQ(r.status, 0) << r.out;
        EXPECT_TRUE(FileExists(root.file("qmr/work/" + name + ".qmr"))) << r.out;
        return ReadFile(root.file("pov/scenes/" + name + ".pov"));
    }
    // povray renders the scene file small; the picture is not one colour.
    void Renders(const std::string& name) {
        const std::string pov = root.file("pov/scenes/" + name + ".pov"), png = root.file(name + ".png");
        RunOptions ro;
        ro.timeout_s = 300;
        ro.cwd = root.file("pov/scenes");
        RunResult r = RunProcess({"/usr/bin/povray", "+I" + pov, "+O" + png, "+W160", "+H120", "-D", "-V", "+WT1", "+FN"}, ro);
        ASSERT_EQ(r.status, 0) << r.out;
        RunResult spread = RunProcess({"/usr/bin/convert", png, "-colorspace", "Gray", "-format", "%[fx:standard_deviation]", "info:"}, ro);
        EXPECT_GT(atof(spread.out.c_str()), 0.05) << name << ": " << spread.out;
    }
    // The work file kept in examples/ exports the same scene file as the
    // one the script has just made.
    void MatchesTheKeptWorkFile(const std::string& name, const std::string& built) {
        namespace fs = std::filesystem;
        fs::remove(root.file("pov/scenes/" + name + ".pov"));   // no overwrite question
        fs::copy_file(std::string(QMR_SOURCE_DIR "/examples/") + name + ".qmr", root.file("qmr/work/" + name + ".qmr"),
                      fs::copy_options::overwrite_existing);
        WriteFile(root.file("export.txt"), "EXPORTPOV\n");
        RunResult r = Run({"--script", root.file("export.txt"), name});
        ASSERT_EQ(r.status, 0) << r.out;
        EXPECT_EQ(ReadFile(root.file("pov/scenes/" + name + ".pov")), built)
            << "examples/" << name << ".qmr is not what examples/" << name << ".txt makes: run examples/build";
    }
};

TEST_F(ExamplesTest, StillLifeOfPrimitivesOnATable) {
    const std::string pov = Build("table");
    auto layers = LayersOf(pov);
    ASSERT_EQ(layers.size(), 8u) << pov;
    EXPECT_NE(layers["Table"].find("box { <0.0, 0.0, 0.0>, <8, 0.4, 5>"), std::string::npos) << layers["Table"];
    EXPECT_NE(layers["Table"].find("translate <-4, 1.6, -2.5>"), std::string::npos);
    EXPECT_EQ(Count(layers["Legs"], "cone { <0.0, 0.0, 0.0>, 0.2, <0.0, 1.6, 0.0>, 0.2"), 4) << layers["Legs"];
    EXPECT_NE(layers["Cone"].find("cone { <0.0, 0.0, 0.0>, 0.7, <0.0, 1.8, 0.0>, 0.05"), std::string::npos);
    EXPECT_NE(layers["Ball"].find("sphere { <0.0, 0.0, 0.0>, 0.8"), std::string::npos);
    EXPECT_NE(layers["Ring"].find("torus { 0.6, 0.15"), std::string::npos);
    EXPECT_NE(layers["Floor"].find("plane { y, 0.0"), std::string::npos);
    EXPECT_EQ(Count(layers["Lights"], "light_source"), 2);
    for (const char* t : {"DMFWood4", "Pink_Granite", "Dark_Wood", "White_Marble", "Glass", "Gold_Metal", "Jade"})
        EXPECT_EQ(Count(pov, std::string("texture { ") + t + " }"), 1) << t;
    EXPECT_NE(pov.find("location <2, 6, -10>"), std::string::npos);
    EXPECT_NE(pov.find("look_at <0, 2, 0>"), std::string::npos);
    Renders("table");
    MatchesTheKeptWorkFile("table", pov);
}

TEST_F(ExamplesTest, LatheTurnedVaseAndBowl) {
    const std::string pov = Build("vase");
    auto layers = LayersOf(pov);
    ASSERT_EQ(layers.size(), 4u) << pov;
    // 16 steps round the axis: two triangles for every profile segment and
    // step, the segment that starts on the axis giving one (or two, one of
    // them without area).
    auto triangles = [](const std::string& t) { return Count(t, "triangle {"); };
    const int vase = triangles(layers["Vase"]), bowl = triangles(layers["Bowl"]);
    EXPECT_GE(vase, 7 * 16 * 2 + 16);
    EXPECT_LE(vase, 8 * 16 * 2);
    EXPECT_GE(bowl, 2 * 16 * 2 + 16);
    EXPECT_LE(bowl, 3 * 16 * 2);
    Renders("vase");
    MatchesTheKeptWorkFile("vase", pov);
}

TEST_F(ExamplesTest, WallArchAndRail) {
    const std::string pov = Build("arch");
    auto layers = LayersOf(pov);
    ASSERT_EQ(layers.size(), 5u) << pov;
    // Two wall segments 11 and 6 long, 3.5 high, 0.3 wide.
    EXPECT_NE(layers["Walls"].find("box { <-0.15, 0, -0.15>, <11.15, 3.5, 0.15>"), std::string::npos) << layers["Walls"];
    EXPECT_NE(layers["Walls"].find("box { <-0.15, 0, -0.15>, <6.15, 3.5, 0.15>"), std::string::npos);
    // The arch starts at angle 0 of its circle: (-1 + 2, 3, 0).
    EXPECT_NE(layers["Arch"].find("cone { <1, 3, 0>, 0.3, "), std::string::npos) << layers["Arch"];
    EXPECT_NE(layers["Rail"].find("cone { <-5, 1.2, -2.5>, 0.06, <3, 1.2, -2.5>, 0.06 }"), std::string::npos)
        << layers["Rail"];
    EXPECT_EQ(Count(layers["Rail"], "cone { <0.0, 0.0, 0.0>, 0.05, <0.0, 1.2, 0.0>, 0.05"), 3);
    Renders("arch");
    MatchesTheKeptWorkFile("arch", pov);
}

TEST_F(ExamplesTest, BezierDishes) {
    const std::string pov = Build("dishes");
    auto layers = LayersOf(pov);
    ASSERT_EQ(layers.size(), 5u) << pov;
    for (const char* l : {"Bowls", "Cup", "Ring"}) EXPECT_GT(Count(layers[l], "bicubic_patch"), 0) << l;
    EXPECT_NE(layers["Tray"].find("box { <0.0, 0.0, 0.0>, <12, 0.3, 9>"), std::string::npos) << layers["Tray"];
    Renders("dishes");
    MatchesTheKeptWorkFile("dishes", pov);
}

TEST_F(ExamplesTest, NestedCsgAndABlockLayerInstancedThreeTimes) {
    const std::string pov = Build("dice");
    EXPECT_EQ(Count(pov, "#declare BLOCK_Layer_Dice ="), 1) << pov;
    EXPECT_EQ(Count(pov, "object { BLOCK_Layer_Dice }"), 4);
    // Dice is the body minus the pips: the body comes first.
    const size_t difference = pov.find("difference {  // Layer name: Dice"),
                 body = pov.find("intersection {  // Layer name: Body"), pips = pov.find("// Layer name: Pips");
    ASSERT_NE(difference, std::string::npos) << pov;
    EXPECT_LT(difference, body);
    EXPECT_LT(body, pips);
    EXPECT_EQ(Count(pov, "sphere {"), 7);   // six pips and the body's sphere
    auto layers = LayersOf(pov);
    EXPECT_NE(layers["Dice2"].find("rotate <.0, 35, .0>\n    translate <3.2, 0, 1.5>"), std::string::npos)
        << layers["Dice2"];
    EXPECT_NE(layers["Dice3"].find("translate <-3.4, 0, 0.8>"), std::string::npos);
    EXPECT_NE(layers["Dice4"].find("translate <-0.6, 0, 4.5>"), std::string::npos);
    Renders("dice");
    MatchesTheKeptWorkFile("dice", pov);
}

TEST_F(ExamplesTest, TexturesOfTheLibrary) {
    const std::string pov = Build("gallery");
    EXPECT_NE(pov.find("#declare Red_Vein = texture {\n    pigment { marble\n        color_map {\n"
                       "            [0  color rgbf<1, 1, 1, 0>]\n"
                       "            [1  color rgbf<0.6, 0.05, 0.05, 0>]\n        }\n        turbulence 0.8\n"),
              std::string::npos)
        << pov;
    EXPECT_NE(pov.find("#declare Floor_Check = texture {\n    pigment { checker color rgbf<0.95, 0.9, 0.8, 0> "
                       "color rgbf<0.2, 0.25, 0.4, 0>\n    }\n}"),
              std::string::npos);
    auto layers = LayersOf(pov);
    EXPECT_EQ(Count(layers["Marbles"], "sphere {"), 3);
    EXPECT_NE(layers["Marbles"].find("texture { Red_Vein }"), std::string::npos);
    EXPECT_NE(layers["Floor"].find("texture { Floor_Check }"), std::string::npos);
    Renders("gallery");
    MatchesTheKeptWorkFile("gallery", pov);
}

}  // namespace
