// A soak test: one long random session through the command loop on the
// in-memory display. Keys, command names from command.dat, numbers,
// coordinates, clicks at random pixels, Escape and Ctrl-C are fed one event
// at a time whenever the program waits, from a seeded generator, so a run
// can be repeated exactly (QMR_SOAK_SEED, QMR_SOAK_EVENTS). The program must
// neither crash nor hang (an alarm ends a run that stops making progress),
// must free every scene block once the scene is cleared, and afterwards
// SAVE then load must give back the same scene.
//
// Commands that write files or leave the program are replaced by ones that
// do nothing, since random clicks in the file browser may walk anywhere.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "cmd/undo.h"
#include "e2e/process.h"
#include "input/session.h"

namespace {

struct Soak {
    std::mt19937 rng;
    long events = 0, limit = 0;
    int winding = 0;              // events spent ending the last command
    std::vector<std::string> names;
};
Soak* s_soak = nullptr;

int Rand(int n) { return std::uniform_int_distribution<int>(0, n - 1)(s_soak->rng); }

std::string Number() {
    static const char* const kNumbers[] = {"0", "1", "2", "3", "5", "-1", "-2", "0.5", "2.5", "90", "45", "4"};
    return kNumbers[Rand(sizeof kNumbers / sizeof *kNumbers)];
}

int Objects() {
    int n = 0;
    for (const Layer* l = g.scene.First_Layer; l; l = l->next)
        for (const Object* o = l->first_object; o; o = o->next) n++;
    return n;
}

// One random event.
void PushRandom() {
    Soak& s = *s_soak;
    const int roll = Rand(100);
    if (roll < 25) {
        Headless_PushText((s.names[Rand((int)s.names.size())] + "\n").c_str());
    } else if (roll < 38) {
        Headless_PushText((Number() + "\n").c_str());
    } else if (roll < 52) {
        std::string p = (Rand(4) == 0 ? "@" : "") + Number() + "," + Number() + "," + Number() + "\n";
        Headless_PushText(p.c_str());
    } else if (roll < 70) {
        Headless_PushClick(Rand(g.screen.width), Rand(g.screen.height), Rand(6) == 0 ? MOUSE_RIGHT : MOUSE_LEFT);
    } else if (roll < 75) {
        Headless_PushKey(KEY_ESCAPE);
    } else if (roll < 80) {
        Headless_PushKey(3);   // Ctrl-C
    } else if (roll < 86) {
        Headless_PushKey(KEY_ENTER);
    } else if (roll < 93) {
        static const char* const kWords[] = {"Y", "N", "E", "W", "C", "U", "R", "A", "B", "D", "M", "P", "SM"};
        Headless_PushText((std::string(kWords[Rand(13)]) + "\n").c_str());
    } else {
        static const int kKeys[] = {' ', 'x', KEY_BACKSPACE, KEY_INSERT, KEY_F1, KEY_F1 + 256, KEY_F1 + 2 * 256,
                                    KEY_F1 + 3 * 256, KEY_F1 + 4 * 256, KEY_F1 + 5 * 256, KEY_F1 + 6 * 256,
                                    KEY_F1 + 7 * 256, KEY_F1 + 8 * 256, KEY_F1 + 9 * 256, 1, 2, 15, 16, 18, 21,
                                    23, 25, 26, KEY_TAB};
        Headless_PushKey(kKeys[Rand(sizeof kKeys / sizeof *kKeys)]);
    }
}

// The display's feeder: random events until the limit, then Ctrl-C and
// Escape until the command loop asks for a command.
int Feed() {
    Soak& s = *s_soak;
    if (s.events < s.limit) {
        if (++s.events % 1000 == 0) alarm(60);   // the watchdog: a minute per thousand events
        if (Objects() > 1500) Headless_PushText("CLEAR\nY\n");   // keep ARRAY of ARRAYs in bounds
        else PushRandom();
        return 1;
    }
    if (g.input.currentCommand == 0 && !g.input.transparentActive) return 0;
    if (++s.winding > 1000) return 0;   // did not come back: the test fails below
    Headless_PushKey(s.winding % 2 ? 3 : KEY_ESCAPE);
    return 1;
}

int Stub() { return 1; }

// A saved scene without the current viewport (settings key 20, between keys
// 19 and 21, an int32 each): the file keeps it, but loading drops it.
std::string WithoutCurrentViewport(std::string saved) {
    for (size_t p = 5; p + 5 < saved.size(); p++)
        if (saved[p] == 20 && saved[p - 5] == 19 && saved[p + 5] == 21) {
            saved.replace(p + 1, 4, 4, '\0');
            break;
        }
    return saved;
}

void OnAlarm(int) {
    static const char kMsg[] = "soak: no progress, the session hangs\n";
    ssize_t ignored = write(2, kMsg, sizeof kMsg - 1);
    (void)ignored;
    abort();
}

class SoakTest : public LibrarySessionTest {
  protected:
    int objects_left = 0;   // objects the last session left in the scene
    // One session of `limit` random events from `seed`; the scene it leaves,
    // as the work-file writer writes it.
    std::string Session(unsigned long seed, long limit, bool report) {
        Soak soak;
        soak.rng.seed(seed);
        soak.limit = limit;
        s_soak = &soak;

        g.cmd.extraCommands.clear();   // the real POLYLINE and CIRCLE
        for (int code : {CMD_EXIT, CMD_NEW, CMD_SAVE, CMD_SAVE_AS, CMD_EXPORT_POV, CMD_EXPORT_RAW, CMD_EXPORT_DXF,
                         CMD_RENDER, CMD_RENDER_BAT})
            Command_Register(code, Stub, 0);
        snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", work.path().c_str());
        snprintf(g.browser.browseDir, sizeof g.browser.browseDir, "%s", work.path().c_str());
        for (const CommandName& c : g.menus.CommandTable) soak.names.push_back(c.name);
        EXPECT_GT(soak.names.size(), 100u);

        // Blocks that are not the scene's, to compare with at the end.
        Scene_Clear();
        Zoom_FreeAll();
        const long outside = g.mem.live_blocks;
        Layer_NewFirst();

        // The watchdog: the feeder winds it up again every thousand events.
        signal(SIGALRM, OnAlarm);
        const auto start = std::chrono::steady_clock::now();
        Headless_SetFeeder(Feed);
        long last = -1;
        for (;;) {
            alarm(60);
            RunLoop();   // returns when the feeder ends the session (or NEW ends the loop)
            if (soak.events >= soak.limit || soak.events == last) break;
            last = soak.events;
        }
        alarm(0);
        signal(SIGALRM, SIG_DFL);
        Headless_SetFeeder(nullptr);
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (report)
            printf("soak: %ld events, seed %lu, %.1f s, %d objects, %d undo steps\n", soak.events, seed, seconds,
                   Objects(), Undo_Count());
        EXPECT_EQ(soak.events, soak.limit);
        EXPECT_LE(soak.winding, 1000) << "no way back to \"Command:\" from " << g.input.promptText;
        EXPECT_EQ(g.input.currentCommand, 0);

        // SAVE then load gives back the same scene (the view that was current
        // aside: loading does not restore it).
        const std::string a = work.file("soak.qmr"), b = work.file("again.qmr");
        EXPECT_EQ(WorkFile_Save(a.c_str()), 1);
        const std::string saved = ReadFile(a);
        EXPECT_EQ(WorkFile_Load(a.c_str()), 1);
        EXPECT_EQ(WorkFile_Save(b.c_str()), 1);
        EXPECT_EQ(WithoutCurrentViewport(ReadFile(b)), WithoutCurrentViewport(saved));

        // Every block of the scene and the zoom stacks comes back (the undo
        // snapshots are plain heap, which the sanitizer build checks).
        const int objects = Objects();
        objects_left = objects;
        Undo_Clear();
        Scene_Clear();
        Zoom_FreeAll();
        EXPECT_EQ(g.mem.live_blocks, outside) << objects << " objects";
        s_soak = nullptr;
        return saved;
    }
};

TEST_F(SoakTest, RandomSessionOfManyEvents) {
    const char* seed = getenv("QMR_SOAK_SEED");
    const char* count = getenv("QMR_SOAK_EVENTS");
    Session(seed ? strtoul(seed, nullptr, 10) : 22, count ? atol(count) : 100000, true);
}

// The same seed gives the same session: a failing run can be replayed.
TEST_F(SoakTest, SameSeedSameScene) {
    const std::string first = Session(7, 3000, false);
    EXPECT_GT(objects_left, 0);   // the session made something
    TearDown();   // everything back as a new test finds it
    SetUp();
    const std::string again = Session(7, 3000, false);
    EXPECT_EQ(again, first);
}

}  // namespace
