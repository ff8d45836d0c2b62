// headless_session.h - running a piece of the program against the headless
// display: a session ends with a test failure naming the prompt when the
// program waits for input the test did not give.
#pragma once
#include <gtest/gtest.h>

#include <functional>

#include "gfx/headless/headless.h"
#include "gfx/screen.h"
#include "test_support.h"

// Runs body; returns true when it ran to its end, false (after recording a
// test failure with the waiting prompt) when it ran out of input.
inline bool Headless_RunSession(const std::function<void()>& body) {
    try {
        body();
        return true;
    } catch (const Headless_InputExhausted& e) {
        ADD_FAILURE() << e.what();
        return false;
    }
}

// A fresh state and an open 640 x 480 headless screen with its frame drawn.
class HeadlessTest : public QmrTest {
  protected:
    void SetUp() override {
        QmrTest::SetUp();
        Headless_Reset();
        Screen_Open(18);
        Screen_DrawFrame();
    }
    void TearDown() override {
        Headless_Reset();
        QmrTest::TearDown();
    }
};
