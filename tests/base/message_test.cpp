// The message area: standard output before the window, then the bottom two
// text lines; wrapping, the 255-character bound and the transcript.
#include <string>

#include "gfx/headless/headless.h"
#include "headless_session.h"
#include "base/message.h"

namespace {

class MessageTest : public HeadlessTest {
  protected:
    std::string Line(int n, int cells = 40) {
        return Headless_ReadText(0, Screen_MessageLineY(n) + 1, cells, WHITE);
    }
};

std::string Pad(std::string s, size_t n) {
    s.resize(n, ' ');
    return s;
}

TEST(MessageBeforeWindow, GoesToStandardOutputAndTranscript) {
    State_Reset();
    Headless_Reset();
    testing::internal::CaptureStdout();
    Msg_Printf("\nLoading-> %s", "qmr.mnu");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "\nLoading-> qmr.mnu");
    EXPECT_EQ(Headless_Transcript(), "\nLoading-> qmr.mnu");
}

TEST_F(MessageTest, NewlineScrollsTheBottomLineUp) {
    Msg_Printf("\nCommand: ");
    EXPECT_EQ(Line(1), Pad("Command: ", 40));
    EXPECT_EQ(g.screen.msgColumn, 9 * 8);
    Msg_Printf("SPHERE");
    EXPECT_EQ(Line(1), Pad("Command: SPHERE", 40));
    Msg_Printf("\nSPHERE> Center point: ");
    EXPECT_EQ(Line(0), Pad("Command: SPHERE", 40));
    EXPECT_EQ(Line(1), Pad("SPHERE> Center point: ", 40));
    Msg_Printf("\n\nUnknown Command");
    EXPECT_EQ(Line(0), Pad("", 40));
    EXPECT_EQ(Line(1), Pad("Unknown Command", 40));
    EXPECT_EQ(Headless_Transcript(),
              "\nCommand: SPHERE\nSPHERE> Center point: \n\nUnknown Command");
    EXPECT_EQ(Headless_ReadText(0, 436, 6, WHITE), "INPUT:");   // input line untouched
    X11_SetColor(LRED);   // the drawing colour is kept
    Headless_ClearTranscript();
    Msg_Printf("\nx");
    EXPECT_EQ(X11_GetColor(), LRED);
    EXPECT_EQ(Headless_Transcript() + "|" + Headless_LastLine(), "\nx|x");   // cleared before
}

TEST(MessageWrap, InsertsNewlineBeforeWhatDoesNotFit) {
    Headless_Reset();   // the 8-pixel cell of the headless font
    char buf[256] = "abcdefgh";
    Msg_Wrap(buf, 0, 40);   // five cells fit
    EXPECT_STREQ(buf, "abcde\nfgh");
    strcpy(buf, "abcdefgh");
    Msg_Wrap(buf, 16, 40);   // two cells already used
    EXPECT_STREQ(buf, "abc\ndefgh");
    strcpy(buf, "ab\ncdefg");
    Msg_Wrap(buf, 32, 40);   // "\n" resets the column
    EXPECT_STREQ(buf, "a\nb\ncdefg");
    std::string full(252, 'x');   // two "\n" bring it to 254, then no more
    strcpy(buf, full.c_str());
    Msg_Wrap(buf, 0, 40);
    EXPECT_EQ(std::string(buf), "xxxxx\nxxxxx\n" + std::string(242, 'x'));
}

TEST_F(MessageTest, LongTextWrapsAndAtMost255CharactersPerCall) {
    Msg_Printf("\n%s", std::string(150, 'q').c_str());
    // 80 cells of 8 pixels fit in 640: lines of 80 and 70.
    EXPECT_EQ(Line(0, 80), std::string(80, 'q'));
    EXPECT_EQ(Line(1, 71), std::string(70, 'q') + " ");
    Headless_ClearTranscript();
    Msg_Printf("\n%s", std::string(300, 'q').c_str());
    EXPECT_EQ(Headless_Transcript(), "\n" + std::string(254, 'q'));
    EXPECT_EQ(Line(1, 80), std::string(80, 'q'));   // too long to wrap: cut at the edge
}

}  // namespace
