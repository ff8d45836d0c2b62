// Every ready-made shape made by its command in one headless session,
// exported and rendered by povray: each shows where the camera sees it.
// With QMR_E2E_PICTURE set the picture is also copied there
// (docs/shapes.png is made so). Then each Bezier shape alone, rendered
// square with the camera on a line through its centre: the width of its
// silhouette across the middle row matches its radius within 3%.
#include <algorithm>
#include <cmath>
#include <filesystem>

#include "cmd/poly_session.h"
#include "pov/pov_test_support.h"
#include "ui/dialog_support.h"

namespace {

struct Image {
    int w = 0, h = 0;
    std::string data;
    const unsigned char* rgb = nullptr;
    int At(int x, int y) const {
        if (x < 0 || y < 0 || x >= w || y >= h) return 0;
        const unsigned char* p = rgb + ((size_t)y * w + x) * 3;
        return p[0] + p[1] + p[2];
    }
};

class ShapesRenderTest : public PovTest {
  protected:
    void SetUp() override {
        PovTest::SetUp();
        Headless_Reset();
        Screen_Open(18);
        Screen_DrawFrame();
        for (const char* f : {"command.dat", "bezier.dlg", "complex.dlg"})
            std::filesystem::copy_file(std::string(QMR_SOURCE_DIR "/support/") + f, support_ + "/" + f);
        Views_SetScreen(g.screen.width, g.screen.height, SCREEN_LINE, g.screen.inputLineY);
        Views_Reset();
        Viewport& v = g.view.Active_Viewport;
        v.WORLD = 0;
        View_SetKind(&v, VIEW_TOP);
        View_SetCentre(&v, {0, 0, 0});
        View_SetArea(&v, 14);
        Layer* l = Layer_NewFirst();
        snprintf(l->texture, sizeof l->texture, "White_Marble");
        snprintf(g.run.workFileName, sizeof g.run.workFileName, "shapes");
        g.config.Bezier_Output = 1;
        g.config.Optimize_PovOut = 0;
        g.view.camera_aspect = 1.0;
    }
    void TearDown() override {
        PovTest::TearDown();
        Headless_Reset();
    }
    static void RunScript(const std::string& s) {
        PlayScript(s);
        g.input.InputResult.code = 0;
        try {
            CommandLoop();
        } catch (const Headless_InputExhausted&) {
        }
    }
    static void Bezier(int id, const std::string& answers) {
        PlayScript("BEZIER\n");
        Dlg_Click("bezier.dlg", "SHAPE", id);
        RunScript(answers);
    }
    static void Light(Point3 at) {
        LightData l = Light_Default();
        l.position = at;
        ASSERT_NE(Add_Light(&l), nullptr);
    }
    // The scene rendered at w x h; the picture read back.
    Image Render(int w, int h, const std::string& name) {
        std::filesystem::remove(ScenePath());   // no overwrite question
        Export();
        const std::string png = dir_.file(name + ".png"), ppm = dir_.file(name + ".ppm");
        RunOptions ro;
        ro.timeout_s = 300;
        RunResult r = RunProcess({"/usr/bin/povray", "+I" + ScenePath(), "+O" + png, "+W" + std::to_string(w),
                                  "+H" + std::to_string(h), "+A0.3", "-D", "-V", "+WT1", "+FN"},
                                 ro);
        EXPECT_EQ(r.status, 0) << r.out;
        Image img;
        if (const char* keep = name == "all" ? getenv("QMR_E2E_PICTURE") : nullptr)
            std::filesystem::copy_file(png, keep, std::filesystem::copy_options::overwrite_existing);
        if (RunProcess({"convert", png, "-strip", ppm}, ro).status != 0) return img;
        img.data = ReadFile(ppm);
        int maxval = 0, used = 0;
        if (sscanf(img.data.c_str(), "P6 %d %d %d%n", &img.w, &img.h, &maxval, &used) != 3) return img;
        img.rgb = (const unsigned char*)img.data.c_str() + used + 1;
        return img;
    }
    // Pixel of a world point seen by the scene's camera (up 1, right the
    // aspect ratio, direction d = 0.5 / tan(FOV / 2)).
    static void Pixel(Point3 p, int w, int h, int* x, int* y) {
        const Viewport& v = g.view.Active_Viewport;
        const Point3 f = Vec_Scale(Vec_Sub(v.TAR, v.CAM), 1 / Vec_Length(Vec_Sub(v.TAR, v.CAM)));
        Point3 r = Vec_Cross(v.UP, f);   // the ray tracer's left-handed right
        r = Vec_Scale(r, 1 / Vec_Length(r));
        const Point3 u = Vec_Cross(f, r), q = Vec_Sub(p, v.CAM);
        const double d = 0.5 / std::tan(v.FOV / 2 * M_PI / 180), depth = Vec_Dot(q, f);
        *x = (int)((0.5 + Vec_Dot(q, r) / depth * d / g.view.camera_aspect) * w);
        *y = (int)((0.5 - Vec_Dot(q, u) / depth * d) * h);
    }
};

TEST_F(ShapesRenderTest, EveryShapeRendered) {
    g.view.camera_aspect = 4.0 / 3;
    // Back row (z = 7): the Bezier shapes; middle row (z = 1): the complex
    // shapes; front row (z = -5): the facets and polygon solids.
    RunScript("PCUBE\n-13,0,-6\n2.5\n\n\n"
              "PYRAMID\n-7.5,0,-5\n3\n3\n3.5\n"
              "WEDGE\n-3,0,-6\n2.5\n3\n3\n"
              "FACE\n0,0,-5\n3,0,-5\n3,3,-5\n0,3,-5\n"
              "TRIANGLE\n4,0,-5\n7,0,-5\n5.5,3,-5\n"
              "MESH\n9,0,-6\n13,1.5,-6\n13,0,-3\n9,2,-3\n6\n6\n"
              "STAIRCASE\n-10,0,1\n0.3\n0.6\n2.6\n12\n"
              "SCREWTHREAD\n-3.5,0,1\n5\n0.9\n0.45\n0.15\n6\n24\n"
              "SPRING\n2,0,1\n2.6\n0.3\n0.4\n0\n6\n15\n"
              "STAIRCASE\n9,0,1\n0.5\n0.5\n2.5\n2\n");
    Bezier(1, "-10,0,8\n2\n0.7\n");
    Bezier(2, "-4.5,0,8\n2\n");
    Bezier(3, "0.5,0,8.5\n2\n");
    Bezier(4, "5.5,0,8\n3\n1\n2\n");
    Bezier(5, "10.5,0,8\n3.5\n1.5\n3\n");
    int made = 0;
    for (const Object* o = g.scene.Current_Layer->first_object; o; o = o->next) made++;
    ASSERT_EQ(made, 15);
    Light({-30, 50, -40});
    Light({30, 30, -30});
    Viewport& v = g.view.Active_Viewport;
    v.CAM = {0, 21, -23.5};
    v.TAR = {0, 0, 1.5};
    v.UP = {0, 1, 0};
    v.FOV = 45;
    const Image img = Render(800, 600, "all");
    ASSERT_EQ(img.w, 800);
    // Near the middle of each shape's body the picture is lit; the top
    // corners are background.
    const Point3 inside[] = {{-11.75, 1.2, -4.75}, {-7.5, 1, -5}, {-3, 0.8, -4.5}, {1.5, 1.5, -5}, {5.5, 1, -5},
                             {11, 1, -4.5},       {-10, 2, -1},  {-3.5, 2.5, 1.6}, {2, 2.5, 2.3}, {9, 1, -0.5},
                             {-10, 0.5, 6.3},     {-4.5, 1.9, 7.5}, {0.5, 1, 8.5}, {5.5, 1.5, 6.5}, {10.5, 1.5, 6.5}};
    for (const Point3& p : inside) {
        int x, y;
        Pixel(p, img.w, img.h, &x, &y);
        int best = 0;
        for (int dy = -3; dy <= 3; dy++)
            for (int dx = -3; dx <= 3; dx++) best = std::max(best, img.At(x + dx, y + dy));
        EXPECT_GT(best, 60) << p.x << "," << p.y << "," << p.z << " at " << x << "," << y;
    }
    EXPECT_EQ(img.At(5, 5) + img.At(794, 5), 0);
}

// Each Bezier shape alone: the silhouette's width across the middle row
// against the width worked out from the camera's distance.
TEST_F(ShapesRenderTest, BezierSilhouettesMatchTheRadius) {
    struct Case {
        int id;
        const char* answers;
        Point3 cam, tar, up;
        double expect_halfwidth;   // in image-height units: d * tan(half angle)
    };
    const double d = 0.5 / std::tan(22.5 * M_PI / 180);
    auto tangent = [&](double r, double dist) { return d * std::tan(std::asin(r / dist)); };
    // The torus from above: the outer rim point of the tube that looks
    // widest, r(phi) / (distance - height(phi)).
    double torus = 0;
    for (int i = 0; i <= 1000; i++) {
        const double phi = M_PI / 2 * i / 1000;
        torus = std::max(torus, d * (3 + std::cos(phi)) / (30 - std::sin(phi)));
    }
    const Case kCases[] = {
        {3, "0,0,0\n2\n", {0, 0, -20}, {0, 0, 0}, {0, 1, 0}, tangent(2, 20)},
        {1, "0,0,0\n3\n1\n", {0, 30, 0}, {0, 0, 0}, {0, 0, 1}, torus},
        {2, "0,0,0\n2\n", {0, 30, 0}, {0, 0, 0}, {0, 0, 1}, d * 2 / 28},   // the rim, 2 up
        {5, "0,0,0\n4\n1.5\n2\n", {0, 2, -20}, {0, 2, 0}, {0, 1, 0}, tangent(1.5, 20)},
        {4, "0,0,0\n4\n1\n2\n", {0, 2, -20}, {0, 2, 0}, {0, 1, 0}, tangent(1.5, 20)},   // 1.5 x 1
    };
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.answers);
        Scene_Clear();
        Layer* l = Layer_NewFirst();
        snprintf(l->texture, sizeof l->texture, "White_Marble");
        Bezier(c.id, c.answers);
        Light(c.cam);
        Viewport& v = g.view.Active_Viewport;
        v.CAM = c.cam;
        v.TAR = c.tar;
        v.UP = c.up;
        v.FOV = 45;
        const int size = 480;
        const Image img = Render(size, size, "bezier" + std::to_string(c.id));
        ASSERT_EQ(img.w, size);
        int left = size, right = -1;
        for (int x = 0; x < size; x++)
            if (img.At(x, size / 2) > 6) left = std::min(left, x), right = std::max(right, x);
        ASSERT_GE(right, left);
        const double measured = (right - left + 1) / 2.0, want = c.expect_halfwidth * size;
        EXPECT_NEAR(measured / want, 1.0, 0.03) << "measured " << measured << " px, want " << want;
        RecordProperty("halfwidth_" + std::to_string(c.id), std::to_string(measured) + "/" + std::to_string(want));
        std::cout << "Bezier shape " << c.id << ": half width " << measured << " px, worked out " << want << "\n";
    }
}

}  // namespace
