// test_support.h - shared fixture: every test starts from a reset state.
//
// Tests drive the program from every layer, so they see every subsystem's
// interface through this one header.
#pragma once
#include <gtest/gtest.h>

#include "base/field.h"
#include "base/message.h"
#include "base/safe_file.h"
#include "cmd/cmd.h"
#include "cmd/codes.h"
#include "exchange/exchange.h"
#include "gfx/gfx.h"
#include "gfx/screen.h"
#include "input/input.h"
#include "input/settings.h"
#include "input/status_line.h"
#include "model/geometry.h"
#include "model/output.h"
#include "model/selection.h"
#include "model/xform.h"
#include "pov/pov.h"
#include "pov/textures.h"
#include "scene/layers.h"
#include "scene/mem.h"
#include "scene/object.h"
#include "startup/config.h"
#include "startup/startup.h"
#include "state.h"
#include "ui/command_names.h"
#include "ui/menu.h"
#include "view/view_commands.h"
#include "view/view_draw.h"
#include "view/viewport.h"
#include "workfile/workfile.h"

class QmrTest : public ::testing::Test {
  protected:
    void SetUp() override { State_Reset(); }
    void TearDown() override {
        Mem_FailAfter(0);
        State_Reset();
    }
};
