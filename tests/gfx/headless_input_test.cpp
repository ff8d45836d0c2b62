// Input through the headless display: keys, shift, mouse, the event pump,
// and the session ending when the test runs out of input.
#include "gfx/headless/headless.h"
#include "headless_session.h"
#include "input/message.h"

namespace {

class HeadlessInput : public HeadlessTest {};

TEST_F(HeadlessInput, KeysInOrder) {
    Headless_PushText("ab\n");
    Headless_PushKey(KEY_F(11));
    Headless_PushKey(KEY_INSERT);
    EXPECT_EQ(X11_KeyPressed(), 1);
    EXPECT_EQ(X11_GetKey(), 'a');
    EXPECT_EQ(X11_GetKey(), 'b');
    EXPECT_EQ(X11_GetKey(), 13);
    EXPECT_EQ(X11_GetKey(), 17664);
    EXPECT_EQ(X11_GetKey(), 20992);
    EXPECT_EQ(X11_KeyPressed(), 0);
}

TEST_F(HeadlessInput, ShiftAloneGivesNoKey) {
    Headless_PushShift(SHIFT_LEFT);
    Headless_PushShift(0);
    Headless_PushShift(SHIFT_RIGHT | SHIFT_CTRL);
    EXPECT_EQ(X11_KeyPressed(), 0);
    EXPECT_EQ(X11_GetShiftFlags(), SHIFT_RIGHT | SHIFT_CTRL);
}

TEST_F(HeadlessInput, ClickIsMovePressRelease) {
    Headless_PushClick(100, 120);
    int x, y, b;
    X11_ReadMouse(&x, &y, &b);   // the press ends the first pump
    EXPECT_EQ(x, 100);
    EXPECT_EQ(y, 120);
    EXPECT_EQ(b, MOUSE_LEFT);
    X11_ReadMouse(&x, &y, &b);
    EXPECT_EQ(b, 0);
    EXPECT_EQ(Headless_Pending(), 0);
}

TEST_F(HeadlessInput, MouseIsClampedToTheRange) {
    // Screen_Open set x in [0, 640) and y in [0, 479).
    Headless_PushMove(700, -3);
    int x, y, b;
    X11_ReadMouse(&x, &y, &b);
    EXPECT_EQ(x, 639);
    EXPECT_EQ(y, 0);
    Headless_PushMove(-1, 479);
    X11_ReadMouse(&x, &y, &b);
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 478);
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
}

TEST_F(HeadlessInput, PollingForeverEndsTheSessionToo) {
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
