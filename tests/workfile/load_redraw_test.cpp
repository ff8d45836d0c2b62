// load_redraw_test.cpp - a scene that costs long to draw opens at once: the
// redraw that ends its load stops at a key, and the key is left for the
// prompt. A quick redraw is not cut short by keys typed ahead.
#include "e2e/process.h"
#include "input/session.h"

namespace {

class LoadRedrawTest : public SessionTest {
  protected:
    // Saves a scene of `spheres` spheres of `segments` segments, each radius
    // `size` times its number, and clears it.
    std::string SaveSpheres(int spheres, int segments, double size = 1) {
        for (int i = 0; i < spheres; i++) {
            PrimitiveData s = Primitive_Default();
            s.prim_type = PRIM_SPHERE;
            s.p1 = (2 + i) * size;
            s.prim_aux = segments;
            EXPECT_NE(Add_Primitive(&s), nullptr);
        }
        const std::string path = dir.file("balls.qmr");
        EXPECT_EQ(WorkFile_Save(path.c_str()), 1);
        Scene_Clear();
        return path;
    }
    TempDir dir;
};

TEST_F(LoadRedrawTest, KeyStopsTheRedrawOfAHugeSceneAtOnce) {
    // Four viewports of three spheres of 1,024 segments: some 25 million
    // lines in all. The key is waiting before the load begins.
    g.view.Viewport_Layout = 7;
    const std::string path = SaveSpheres(3, 1024);
    Headless_ClearSegments();
    Headless_ClearTranscript();
    Headless_PushKey('q');
    EXPECT_EQ(WorkFile_Load(path.c_str()), 1);
    // A tenth of a second of drawing (a line a microsecond on the headless
    // clock) and at most one poll interval of 2 ms more.
    EXPECT_LE(Headless_Segments().size(), 100000u + 2001u);
    EXPECT_EQ(Count(Headless_Transcript(), " Terminated..."), 1) << Headless_Transcript();
    ASSERT_TRUE(X11_KeyPressed());
    EXPECT_EQ(X11_GetKey(), 'q');
    ASSERT_NE(g.scene.First_Layer, nullptr);   // the scene is all there
    int n = 0;
    for (const Object* o = g.scene.First_Layer->first_object; o; o = o->next) n++;
    EXPECT_EQ(n, 3);

    // Spheres that draw no pixel at all, far larger than the views or of
    // a size that is not finite on the screen, stop at the key just the same.
    for (double size : {1e9, 1e308}) {
        Scene_Clear();
        Layer_NewFirst();
        const std::string unseen = SaveSpheres(3, 1024, size);
        Headless_ClearTranscript();
        Headless_PushKey('q');
        EXPECT_EQ(WorkFile_Load(unseen.c_str()), 1);
        EXPECT_EQ(Count(Headless_Transcript(), " Terminated..."), 1) << size;
        EXPECT_EQ(X11_GetKey(), 'q');
    }

    // A scene that draws in less than the grace time is drawn whole although
    // keys are waiting (typed ahead of the redraw).
    Scene_Clear();
    Layer_NewFirst();
    const std::string small = SaveSpheres(1, 16);
    Headless_ClearSegments();
    Headless_ClearTranscript();
    Headless_PushText("abc");
    EXPECT_EQ(WorkFile_Load(small.c_str()), 1);
    EXPECT_EQ(Headless_Transcript().find("Terminated"), std::string::npos);
    EXPECT_GT(Headless_Segments().size(), 0u);
    EXPECT_EQ(Headless_Pending(), 3);
}

}  // namespace
