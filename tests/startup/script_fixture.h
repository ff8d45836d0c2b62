// A test installation whose configuration the built program reads through
// QMRRC, for scripted sessions (`qmr --script`).
#pragma once
#include "e2e/program_fixture.h"

class ScriptSessionTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        WriteFile(root.file("rc"), Config());
        opt.env["QMRRC"] = root.file("rc");
        opt.env.erase("QMR_TRANSCRIPT");
    }
};
