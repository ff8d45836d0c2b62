// test_support.h - shared fixture: every test starts from a reset state.
#pragma once
#include <gtest/gtest.h>

#include "state.h"

class QmrTest : public ::testing::Test {
  protected:
    void SetUp() override { State_Reset(); }
    void TearDown() override {
        Mem_FailAfter(0);
        State_Reset();
    }
};
