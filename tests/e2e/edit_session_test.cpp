// The real program under Xvfb: a scene from a work file, a window selection
// made with the mouse (click, drag to the other corner, click), MOVE by a
// typed offset, COPY, ROTATE, a picked ERASE and SAVE; the saved work file
// holds the edited scene.
#include <sys/stat.h>

#include "e2e/program_fixture.h"
#include "gfx/headless/headless.h"

namespace {

class EditSessionTest : public ProgramTest {
  protected:
    // xdotool on the program's window once `when` has been printed.
    void MouseWhen(const std::string& when, const std::string& steps) {
        opt.actions.push_back({when, "DISPLAY=@DISPLAY@ xdotool search --sync --name 'Quillmoor Sculptor' " + steps +
                                         " >/dev/null 2>&1"});
    }
    static std::string ClickAt(int x, int y) {
        return "mousemove --window %1 " + std::to_string(x) + " " + std::to_string(y) + " sleep 0.1 click 1 sleep 0.2";
    }
    // From (x1, y1) to (x2, y2) in ten moves, the rubber band following.
    std::string Drag(int x1, int y1, int x2, int y2) {
        std::string s;
        for (int i = 1; i <= 10; i++)
            s += "mousemove --window %1 " + std::to_string(x1 + (x2 - x1) * i / 10) + " " +
                 std::to_string(y1 + (y2 - y1) * i / 10) + " sleep 0.03 ";
        return s;
    }
    static const TriangleData& Tri(const Object* o) { return *(const TriangleData*)o->data; }
};

TEST_F(EditSessionTest, WindowMoveCopyRotateEraseSave) {
    WriteFile(root.file("cwd/qmr.ini"), Config());
    const std::string path = root.file("qmr/work/edits.qmr");
    {   // The scene: two triangles to edit and a sphere to erase, in a TOP view.
        AsTheProgram();
        Viewport& v = g.view.Viewports[1];
        v.WORLD = 0;
        View_SetKind(&v, VIEW_TOP);
        View_SetCentre(&v, {0, 0, 0});
        g.view.Active_Viewport = v;
        g.aids.Auto_Deselect = 0;   // one selection serves MOVE, COPY and ROTATE
        ASSERT_NE(Layer_NewFirst(), nullptr);
        TriangleData a{{{-6, 0, 4}, {-4, 0, 4}, {-6, 0, 6}}};
        TriangleData b{{{-3, 0, 2}, {-1, 0, 2}, {-3, 0, 3}}};
        ASSERT_NE(Add_Triangle(&a), nullptr);
        ASSERT_NE(Add_Triangle(&b), nullptr);
        PrimitiveData s = Primitive_Default();
        s.prim_type = PRIM_SPHERE;
        s.translate = {4, 0, -4};
        s.p1 = 1;
        ASSERT_NE(Add_Primitive(&s), nullptr);
        ASSERT_EQ(WorkFile_Save(path.c_str()), 1);
    }
    AsTheProgram(path);
    ASSERT_EQ(g.view.Active_Viewport.VIEW, VIEW_TOP);
    const auto [x1, y1] = PixelOf({-7, 0, 7});   // the window round both triangles ...
    const auto [x2, y2] = PixelOf({0, 0, 1});
    const auto [sx, sy] = PixelOf({4, 0, -3});   // ... and the top of the sphere (not in the window)
    State_Reset();

    TypeWhen("Command: ", "MOVE\n");
    TypeWhen("Select Objects> ", "W\n");
    MouseWhen("Upper/Left corner <Cancel>: ", ClickAt(x1, y1));
    MouseWhen("Lower/Right corner <Cancle>: ", Drag(x1, y1, x2, y2) + ClickAt(x2, y2));
    TypeWhen("Status <Found: 2, Total: 2> \nSelect Objects> ", "E\n");
    TypeWhen("MOVE> Set Base point: ", "0,0,0\n");
    TypeWhen("MOVE> Set Offset point: ", "@1,0,2\n");
    TypeWhen("Command: ", "COPY\n");
    TypeWhen("COPY> Set Base point: ", "0,0,0\n");
    TypeWhen("COPY> Set Copy point: ", "0,0,-5\n");
    TypeWhen("Command: ", "ROTATE\n");
    TypeWhen("ROTATE> Set Base point: ", "0,0,0\n");
    TypeWhen("ROTATE> Set Angle: ", "90\n");
    TypeWhen("Command: ", "DESELECT\n");
    TypeWhen("Command: ", "ERASE\n");
    MouseWhen("Select Objects> ", ClickAt(sx, sy));
    TypeWhen("Status <Found: 1, Total: 1> \nSelect Objects> ", "E\n");
    TypeWhen("Erase Objects <Yes,No>? <Y>:", "\n");
    TypeWhen("Command: ", "SAVE\n");
    TypeWhen("Saving <edits>...", "EXIT\n");
    TypeWhen("EXIT> Save changes to <edits>? <Yes,No> <Yes>: ", "N\n");
    opt.timeout_s = 60;
    RunResult r = Run({"edits"}, true);
    ASSERT_FALSE(r.timed_out) << r.out;
    EXPECT_EQ(r.status, 0) << r.out;
    EXPECT_NE(r.out.find("\nErasing...\nPlease wait..."), std::string::npos) << r.out;

    // Back from the file: the two triangles moved by (1,0,2) and turned a
    // quarter about the origin, (x, y, z) -> (-z, y, x); their copies
    // moved and then by (0,0,-5); no sphere.
    testing::internal::CaptureStdout();
    ASSERT_EQ(WorkFile_Load(path.c_str()), 1);
    testing::internal::GetCapturedStdout();
    std::vector<const Object*> all;
    for (const Object* o = g.scene.First_Layer->first_object; o; o = o->next) all.push_back(o);
    ASSERT_EQ(all.size(), 4u);
    for (const Object* o : all) ASSERT_EQ(o->kind, KIND_TRIANGLE);
    // Newest first: copy of a, copy of b, b, a (the walk meets b first, and
    // each copy becomes the newest object).
    auto expect = [](const Object* o, Point3 c0, const char* what) {
        EXPECT_NEAR(Tri(o).corner[0].x, c0.x, 1e-9) << what;
        EXPECT_NEAR(Tri(o).corner[0].y, c0.y, 1e-9) << what;
        EXPECT_NEAR(Tri(o).corner[0].z, c0.z, 1e-9) << what;
    };
    expect(all[3], {-6, 0, -5}, "a: (-6,0,4) -> (-5,0,6) -> (-6,0,-5)");
    expect(all[2], {-4, 0, -2}, "b: (-3,0,2) -> (-2,0,4) -> (-4,0,-2)");
    expect(all[1], {-2, 0, -1}, "copy of b: (-2,0,4) + (0,0,-5)");
    expect(all[0], {-5, 0, 1}, "copy of a: (-5,0,6) + (0,0,-5)");
}

}  // namespace
