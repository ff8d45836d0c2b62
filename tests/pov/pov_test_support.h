// pov_test_support.h - fixture for the scene-writer tests: private scene,
// work and support directories, captured messages and the real ray tracer's
// parser as a check of every written scene.
#pragma once
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "e2e/process.h"
#include "file_limit.h"
#include "input/input.h"
#include "pov/pov.h"
#include "pov/textures.h"
#include "test_support.h"

inline const char kTexturesTitle[] = "\n\n\n/******************* TEXTURES *********************/\n";
inline const char kBlocksTitle[] = "\n\n\n/******************* BLOCK LAYERS *****************/\n";
inline const char kActionTitle[] = "\n\n\n/******************* ACTION ************************/\n";

class PovTest : public QmrTest {
  protected:
    void SetUp() override {
        QmrTest::SetUp();
        char* cwd = getcwd(nullptr, 0);
        old_cwd_ = cwd;
        free(cwd);
        scenes_ = dir_.file("scenes");
        work_ = dir_.file("work");
        support_ = dir_.file("support");
        run_ = dir_.file("run");
        for (const std::string& d : {scenes_, work_, support_, run_}) mkdir(d.c_str(), 0755);
        snprintf(g.config.Scenes_Dir, sizeof g.config.Scenes_Dir, "%s", scenes_.c_str());
        snprintf(g.config.WORK_DIR, sizeof g.config.WORK_DIR, "%s", work_.c_str());
        snprintf(g.config.SUPPORT_DIR, sizeof g.config.SUPPORT_DIR, "%s", support_.c_str());
        ASSERT_EQ(chdir(run_.c_str()), 0);   // "triangle.tmp" goes to the current directory
        // A camera the ray tracer accepts (location apart from look_at).
        g.view.Active_Viewport.CAM = {0, 2, -10};
    }
    // Every scene a test wrote successfully must parse in the real ray tracer.
    void TearDown() override {
        EXPECT_EQ(exported_ && parse_check_ ? PovrayParseErrors(ScenePath()) : "", "");
        if (chdir(old_cwd_.c_str()) != 0) ADD_FAILURE() << "cannot return to " << old_cwd_;
        QmrTest::TearDown();
    }

    std::string ScenePath() const { return scenes_ + "/" + g.run.Scene_Name + ".pov"; }

    // Runs Export_Pov with the messages captured; returns the file text.
    std::string Export(int expect = 1) {
        testing::internal::CaptureStdout();
        int r = Export_Pov();
        messages_ = testing::internal::GetCapturedStdout();
        EXPECT_EQ(r, expect) << messages_;
        exported_ = r == 1;
        return ReadFile(ScenePath());
    }

    // The text after the title `from` up to the title `to` (or the end).
    static std::string Between(const std::string& text, const char* from, const char* to) {
        size_t x = text.find(from);
        if (x == std::string::npos) return "<no section>";
        x += strlen(from);
        size_t y = *to ? text.find(to, x) : text.size();
        return y == std::string::npos ? "<no section>" : text.substr(x, y - x);
    }
    static std::string Action(const std::string& t) { return Between(t, kActionTitle, ""); }
    static std::string Blocks(const std::string& t) { return Between(t, kBlocksTitle, kActionTitle); }
    static std::string Textures(const std::string& t) { return Between(t, kTexturesTitle, kBlocksTitle); }

    // Parses the scene in the real ray tracer at a tiny size; the output
    // when it reports a parse error (or does not finish), else "".
    static std::string PovrayParseErrors(const std::string& path) {
        RunOptions opt;
        opt.timeout_s = 120;
        RunResult r = RunProcess({"/usr/bin/povray", "+I" + path, "+W8", "+H8", "-D", "-V", "+WT1",
                                  "+O/dev/null"},
                                 opt);
        if (r.timed_out) return "povray timed out\n" + r.out;
        // "Possible Parse Error" is the 3.7 parser's warning about old syntax.
        std::string errors;
        size_t at = 0;
        while ((at = r.out.find("Parse Error", at)) != std::string::npos) {
            bool possible = at >= 9 && r.out.compare(at - 9, 9, "Possible ") == 0;
            if (!possible) {
                size_t from = r.out.rfind('\n', at);
                from = from == std::string::npos ? 0 : from + 1;
                errors += r.out.substr(from, r.out.find("\n\n", at) - from) + "\n";
            }
            at += 11;
        }
        if (r.status != 0 && errors.empty()) errors = "povray status " + std::to_string(r.status) + "\n" + r.out;
        return errors;
    }

    Layer* NewLayer(const char* name, int level = 0) {
        Layer* l = Layer_Append();
        snprintf(l->name, sizeof l->name, "%s", name);
        l->level = level;
        return l;
    }

    void SaveTexture(const TextureRecord& r) { ASSERT_EQ(Texture_Save(&r), 1); }

    static TextureRecord Named(const char* name) {
        TextureRecord r = Texture_Default();
        memcpy(r.name, name, strnlen(name, sizeof r.name));   // 20 characters fill the field
        return r;
    }

    TempDir dir_;
    std::string old_cwd_, scenes_, work_, support_, run_, messages_;
    bool exported_ = false;     // the last Export wrote a scene file
    bool parse_check_ = true;   // TearDown parses that scene
};

// The header lines, written out by hand.
inline std::string ExpectedHeader() {
    const std::string blank = "/*" + std::string(77, ' ') + "*/\n";
    return "/* This is a Persistence of Vision Ray Tracer (POV-Ray) Version 2.2 Scene file */\n" + blank +
           "/* This file was generated using \"Quillmoor Sculptor\" Version 2.10" + std::string(13, ' ') +
           "*/\n" + blank + blank +
           "/********************************* HEADER **************************************/\n"
           "#include \"colors.inc\"\n"
           "#include \"textures.inc\"\n\n";
}
