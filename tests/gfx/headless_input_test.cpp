// Input through the headless display: keys, shift, mouse, the event pump,
// and the session ending when the test runs out of input.
#include <string>

#include "gfx/headless/headless.h"
#include "headless_session.h"
#include "base/message.h"

namespace {

class HeadlessInput : public HeadlessTest {};

TEST_F(HeadlessInput, KeysInOrder) {
    Headless_PushText("ab\n");
    Headless_PushKey(KEY_F(11));
    Headless_PushKey(KEY_INSERT);
    EXPECT_EQ(X11_KeyPressed(), 1);
    for (int want : {(int)'a', (int)'b', 13, 17664, 20992}) EXPECT_EQ(X11_GetKey(), want);
    EXPECT_EQ(X11_KeyPressed(), 0);
    // Shift alone gives no key.
    Headless_PushShift(SHIFT_LEFT);
    Headless_PushShift(0);
    Headless_PushShift(SHIFT_RIGHT | SHIFT_CTRL);
    EXPECT_EQ(X11_KeyPressed(), 0);
    EXPECT_EQ(X11_GetShiftFlags(), SHIFT_RIGHT | SHIFT_CTRL);
}

// The mouse as "x y buttons" after one read.
std::string Mouse() {
    int x, y, b;
    X11_ReadMouse(&x, &y, &b);
    return std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(b);
}

TEST_F(HeadlessInput, ClickIsMovePressRelease) {
    Headless_PushClick(100, 120);
    EXPECT_EQ(Mouse(), "100 120 " + std::to_string(MOUSE_LEFT));   // the press ends the pump
    EXPECT_EQ(Mouse(), "100 120 0");
    EXPECT_EQ(Headless_Pending(), 0);
    // Screen_Open set x in [0, 640) and y in [0, 479): moves are clamped.
    Headless_PushMove(700, -3);
    EXPECT_EQ(Mouse(), "639 0 0");
    Headless_PushMove(-1, 479);
    EXPECT_EQ(Mouse(), "0 478 0");
}

TEST_F(HeadlessInput, KeyBehindPointerEventsWaitsForThePump) {
    Headless_PushMove(5, 5);
    Headless_PushKey('z');
    EXPECT_EQ(X11_KeyPressed(), 0);
    X11_PumpEvents();
    EXPECT_EQ(X11_KeyPressed(), 1);
    EXPECT_EQ(X11_GetKey(), 'z');
}

TEST_F(HeadlessInput, RunningOutOfInputNamesThePrompt) {
    snprintf(g.input.promptText, sizeof g.input.promptText, "\nSPHERE> Radius: ");
    Headless_PushKey('5');
    std::string message;
    try {
        X11_GetKey();
        X11_GetKey();
    } catch (const Headless_InputExhausted& e) {
        message = e.what();
        EXPECT_EQ(e.prompt, "\nSPHERE> Radius: ");
    }
    EXPECT_NE(message.find("SPHERE> Radius: "), std::string::npos) << message;
    EXPECT_THROW(X11_WaitEvent(), Headless_InputExhausted);
    // Polling forever ends the session too.
    g.input.promptText[0] = 0;
    Msg_Printf("\nCommand: ");   // no prompt text set: the transcript's last line is named
    try {
        for (;;) {
            int x, y, b;
            X11_ReadMouse(&x, &y, &b);
            if (X11_KeyPressed()) break;
        }
        ADD_FAILURE() << "the loop ended without input";
    } catch (const Headless_InputExhausted& e) {
        EXPECT_EQ(e.prompt, "Command: ");
    }
}

TEST_F(HeadlessInput, SessionHelperReportsCompletion) {
    Headless_PushText("y");
    int key = 0;
    EXPECT_TRUE(Headless_RunSession([&] { key = X11_GetKey(); }));
    EXPECT_EQ(key, 'y');
}

}  // namespace
