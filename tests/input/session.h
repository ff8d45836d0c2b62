// session.h - a headless screen with the real support files loaded, the
// views laid out, a first layer, and stand-in commands that ask the way
// the real ones will (points with rubber bands, numbers), recording what
// they were given.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "e2e/process.h"
#include "headless_session.h"
#include "view/view_commands.h"

struct Answer {
    int command;        // code of the command that asked
    int ok;             // Input_Get's result
    int kind;           // InputResult.kind
    Point3 point;       // the point (kind 0)
    double number;      // the number (kind -3)
    std::string text;   // the typed text
};

inline std::vector<Answer>& Answers() {
    static std::vector<Answer> answers;
    return answers;
}

// Asks one prompt and records the answer; returns Input_Get's result.
inline int Ask(const char* prompt, Point3* p = nullptr) {
    Point3 pt{0, 0, 0};
    int ok = Input_Get(prompt, &pt);
    const InputResultRec& r = g.input.InputResult;
    Answers().push_back({g.input.currentCommand, ok, r.kind, pt, r.number, r.text});
    if (p) *p = pt;
    return ok;
}

// POLYLINE stand-in: points joined by a LINE band until an empty Enter.
inline int FakePolyline() {
    Point3 p;
    if (!Ask("\nPOLYLINE> Start point: ", &p)) return 0;
    for (;;) {
        Input_SetRubberBand(&p, "LINE", nullptr);
        if (!Ask("\nPOLYLINE> Next point: ", &p)) return 0;
        if (g.input.InputResult.kind == -1) return 1;
    }
}

// CIRCLE stand-in: a centre, then a radius (a number or a point) with a CIRCLE band.
inline int FakeCircle() {
    Point3 c;
    if (!Ask("\nCIRCLE> Center point: ", &c)) return 0;
    Input_SetRubberBand(&c, "CIRCLE", nullptr);
    Input_SetKeywords(nullptr, 1, 0);
    return Ask("\nCIRCLE> Set Radius: ");
}

// Adds a polyline through pts to the current layer.
inline Object* AddPolyline(std::vector<Point3> pts) {
    PolylineData poly = Poly_Default();
    poly.points = pts.data();
    poly.count = (int)pts.size();
    return Poly_AddToScene(&poly);
}

class SessionTest : public HeadlessTest {
  protected:
    void SetUp() override {
        HeadlessTest::SetUp();
        Answers().clear();
        snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s/support", QMR_SOURCE_DIR);
        Views_SetScreen(g.screen.width, g.screen.height, SCREEN_LINE, g.screen.inputLineY);
        Views_Reset();
        Viewport& v = g.view.Active_Viewport;   // a plain TOP view centred on the origin
        v.WORLD = 0;
        View_SetKind(&v, VIEW_TOP);
        View_SetCentre(&v, {0, 0, 0});
        Layer_NewFirst();
        char path[300];
        snprintf(path, sizeof path, "%s/%s", g.config.SUPPORT_DIR, "main.mnu");
        ASSERT_EQ(MenuBar_Load(&g.menus.bar, path), 1);
        ASSERT_EQ(SideMenu_Load("side.mnu"), 1);
        Command_Register(201, FakePolyline, 0);
        Command_Register(213, FakeCircle, 0);
        Headless_ClearTranscript();
    }

    // Runs the command loop until EXIT/NEW ends it (true) or the input runs out (false).
    bool RunLoop() {
        try {
            CommandLoop();
            return true;
        } catch (const Headless_InputExhausted&) {
            return false;
        }
    }

    // Pixel of a world point in the active viewport.
    void PixelOf(Point3 p, int* x, int* y) {
        View_Project(&g.view.Active_Viewport, p);
        *x = (int)g.view.Active_Viewport.screen_x;
        *y = (int)g.view.Active_Viewport.screen_y;
    }

    // Clicks the pull-down item that carries `code`: its title, then the item.
    void PickMenu(int code) {
        const MenuBar& bar = g.menus.bar;
        for (const MenuTitle& t : bar.titles)
            for (size_t i = 0; i < t.items.size(); i++)
                if (t.items[i].code == code) {
                    Headless_PushClick(t.x1 + 2, 5);
                    Headless_PushClick(t.bx1 + 10, t.by1 + (int)i * SCREEN_LINE + 7);
                    return;
                }
        ADD_FAILURE() << "no menu item for code " << code;
    }

    // Clicks side-menu row `row` of the menu shown.
    void PickSide(int row) { Headless_PushClick(g.screen.sideMenuX + 10, row * SCREEN_LINE + 7); }

    static int Count(const std::string& text, const std::string& what) {
        int n = 0;
        for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) n++;
        return n;
    }
};

// A session whose work directory (the texture library's home) and current
// directory (where the chooser writes its list) are a fresh temporary one.
class LibrarySessionTest : public SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", work.path().c_str());
        old_cwd = std::filesystem::current_path();
        std::filesystem::current_path(work.path());
    }
    void TearDown() override {
        std::filesystem::current_path(old_cwd);
        SessionTest::TearDown();
    }
    TempDir work;
    std::filesystem::path old_cwd;
};
