// Every surface the polyline commands make, built by typed and clicked
// commands in one session, exported as a scene file (parsed by povray in
// TearDown), DXF (read by ezdxf) and RAW (read by assimp): both peers
// count as many triangles as the RAW file has triangle lines.
#include <filesystem>

#include "cmd/poly_session.h"
#include "pov/pov_test_support.h"

namespace {

class SurfaceExportTest : public PovTest {
  protected:
    void SetUp() override {
        PovTest::SetUp();
        Headless_Reset();
        Screen_Open(18);
        Screen_DrawFrame();
        std::filesystem::copy_file(QMR_SOURCE_DIR "/support/command.dat", support_ + "/command.dat");
        Views_SetScreen(g.screen.width, g.screen.height, SCREEN_LINE, g.screen.inputLineY);
        Views_Reset();
        Viewport& v = g.view.Active_Viewport;
        v.WORLD = 0;
        View_SetKind(&v, VIEW_TOP);
        View_SetCentre(&v, {0, 0, 0});
        g.view.Active_Viewport.CAM = {0, 12, -14};
        Layer_NewFirst();
        snprintf(g.run.workFileName, sizeof g.run.workFileName, "surfaces");
        g.config.Bezier_Output = 1;   // as the configuration's defaults have it
        g.config.Optimize_PovOut = 0;
    }
    void TearDown() override {
        PovTest::TearDown();
        Headless_Reset();
    }
    static RunResult Run(const std::vector<std::string>& argv) {
        RunOptions opt;
        opt.timeout_s = 60;
        return RunProcess(argv, opt);
    }
};

TEST_F(SurfaceExportTest, EverySurfaceReadByTheRealPeers) {
    PlayScript(
        // A profile turned about a vertical axis; an extrusion; a cone sweep.
        "POLYLINE\n-4,0,4\n-3,1,4\n-3,2,4\n-4,3,4\n\nREVOLUTION\n{-3.5,4}-4,0,4\n-4,1,4\n"
        "POLYLINE\n-1,0,4\n0,0,4.5\n1,0,4\n\nEXTRUDE\n{-0.5,4.25}0,0,0\n0,2,0\n"
        "POLYLINE\n2,0,4\n3,0,4\n3,0,3\n\nCONE-SWEEP\n{2.5,4}2.5,3,3.5\n"
        // A ruled surface between a line and a bent curve.
        "POLYLINE\n-4,0,1\n-2,0,1\n\nPOLYLINE\n-4,1,2\n-3,0,2.5\n-2,1,2\n\nRULSURF\n{-3,1}{-3.5,2.25}4\n6\n"
        // A Coons patch over a tent-shaped edge, switched to Bezier patches.
        "POLYLINE\n0,0,0\n1,1,0\n2,0,0\n\nPOLYLINE\n2,0,0\n2,0,2\n\nPOLYLINE\n0,0,2\n2,0,2\n\n"
        "POLYLINE\n0,0,2\n0,0,0\n\nCOONS\n{0.5,0}{2,1}{1,2}{0,1}3\n3\nEDIT\n{0.6667,1}B\nE\n"
        // Pipes: sphered at both ends; sharpened; a wall; a circle and an arc (not surfaces).
        "POLYLINE\n3,0,0\n4,0,0\n4,0,1.5\n\nTHICKEN\n{3.5,0}0.2\n0.1\n6\nEDIT\n{3.5,0}ST\n3\nE\n"
        "POLYLINE\n3,0,-1\n4,0,-1\n4,0,-2\n\nTHICKEN\n{3.5,-1}0.15\n\n\nEDIT\n{3.5,-1}ED\n1\nE\n"
        "POLYLINE\n-4,0,-2\n-2,0,-2\n-2,0,-4\n\nWALL\n{-3,-2}1\n0.2\n"
        "CIRCLE\n0,0,-3\n1\n8\nARC\n0,0,-3\n1.5\n0\n90\n\n");
    g.input.InputResult.code = 0;
    try {
        CommandLoop();
    } catch (const Headless_InputExhausted&) {
    }
    std::string forms;
    for (const Object* o = g.scene.Current_Layer->first_object; o; o = o->next)
        forms = std::to_string(((const PolylineData*)o->data)->form) + " " + forms;
    // Oldest first; the boundaries and sources that stay plain polylines are 1.
    EXPECT_EQ(forms, "3 2 4 1 1 5 1 1 1 1 5 9 9 10 1 1 ");

    const std::string pov = Export();
    for (const char* part : {"union { // Surface of Revolution", "union { // Extrusion", "union { // Cone Sweep",
                             "union { // Poly_Mesh", "bicubic_patch { type 1  flatness 0.01  u_steps 8  v_steps 8",
                             "union { // Poly_Pipe", "    sphere {", "    intersection {", "union { // Poly_Wall"})
        EXPECT_NE(pov.find(part), std::string::npos) << part;

    ASSERT_EQ(Dxf_Export(), 1);
    ASSERT_EQ(Raw_Export(), 1);
    const std::string raw = ReadFile(work_ + "/surfaces.raw");
    int lines = 0;
    for (size_t at = 0; at < raw.size(); at = raw.find('\n', at) + 1)
        if (isdigit((unsigned char)raw[at]) || raw[at] == '-' || raw[at] == '.') lines++;
    EXPECT_GT(lines, 100);   // the revolution alone is 96
    RunResult dxf = Run({"/usr/bin/python3", "-c",
                         "import ezdxf\n"
                         "doc = ezdxf.readfile('" + work_ + "/surfaces.dxf')\n"
                         "n = 0\n"
                         "for e in doc.modelspace().query('3DFACE'):\n"
                         "    n += 1 if e.dxf.vtx2 == e.dxf.vtx3 else 2\n"
                         "print(n)\n"});
    ASSERT_EQ(dxf.status, 0) << dxf.out;
    EXPECT_EQ(atoi(dxf.out.c_str()), lines) << dxf.out;
    RunResult info = Run({"assimp", "info", work_ + "/surfaces.raw"});
    const size_t at = info.out.find("\nFaces:");
    ASSERT_NE(at, std::string::npos) << info.out;
    EXPECT_EQ(atoi(info.out.c_str() + at + 7), lines) << info.out;
}

}  // namespace
