// The composer as a real window.
#include "core/event_loop.h"
#include "tests/windows/conversation_fixture.h"
#include "ui/toolkit/pictures.h"

namespace conversation {
namespace {

using support::ChildrenOf;
using support::FilterKey;
using Texts = std::vector<std::string>;

constexpr int kSend = 0, kClose = 1;

class ComposerTest : public ConversationTest {
 protected:
  HWND Composer() const {
    const auto open = support::WindowsOf("frmCom");
    return open.empty() ? nullptr : open.front();
  }
  HWND TxtMsg() const { return ChildrenOf(Composer(), "Edit").at(0); }
  HWND LvUsers() const { return ChildrenOf(Composer(), WC_LISTVIEWA).at(0); }
  void Write(const char* text) { ::SetWindowTextA(TxtMsg(), text); }
  void Click(int button) { support::ClickToolButton(Composer(), button); }
};

TEST_F(ComposerTest, OneComposerTakesAllRequests) {
  windows.OpenComposer("|");
  windows.OpenComposer("");
  EXPECT_EQ(Composer(), nullptr) << "nobody to write to";
  windows.OpenComposer("bob|Anna|");
  windows.OpenComposer("anna|carla|");
  EXPECT_EQ(support::WindowsOf("frmCom").size(), 1u);
  EXPECT_EQ(support::TextOf(Composer()), "Send Message - Quillon");
  EXPECT_EQ(support::RowTexts(LvUsers()), (Texts{"bob", "Anna", "carla"}));
  EXPECT_EQ(::GetFocus(), TxtMsg());
  windows.OpenComposer("(All)|");
  EXPECT_EQ(support::RowTexts(LvUsers()), Texts{"(All)"});
}

// One by one in row order, or once to everybody; always as typed.
TEST_F(ComposerTest, SendsToItsRecipientsAndCloses) {
  const auto send = [this](const char* recipients, const char* text, int button) {
    windows.OpenComposer(recipients);
    Write(text);
    Click(button);
    return Composer() == nullptr;
  };
  EXPECT_TRUE(send("bob|mallory|", "  two\r\nlines ", kSend));
  EXPECT_TRUE(send("(All)|", " hello ", kSend));
  EXPECT_FALSE(send("bob|", "   ", kSend)) << "blanks are no text";
  EXPECT_TRUE(send("bob|", "never mind", kClose));
  EXPECT_EQ(port.sent, (Texts{"me|P/\xDF  two\r\nlines|bob", "me|P/\xDF  two\r\nlines|mallory", "me|M/\xDF hello "}));
  EXPECT_EQ(::ImageList_GetImageCount(toolkit::SharedPictures(res::Strip::Roster)),
            res::InfoOf(res::Strip::Roster).count)
      << "the roster keeps its pictures";
}

// Sending lets events run before the window goes: a double click must not send twice, and a new request is a new alert.
TEST_F(ComposerTest, AClickOrTheEndWhileItSendsIsLost) {
  for (const bool twice : {true, false}) {
    port.sent.clear();
    windows.OpenComposer("bob|");
    Write("once");
    const auto command = static_cast<WPARAM>(support::ToolCommand(Composer(), kSend));
    ::PostMessageA(Composer(), twice ? WM_COMMAND : WM_CLOSE, twice ? command : 0, 0);
    Click(kSend);
    EXPECT_EQ(port.sent, Texts{"me|P/\xDFonce|bob"});
    EXPECT_EQ(Composer(), nullptr);
  }
  windows.OpenComposer("anna|");
  EXPECT_EQ(support::RowTexts(LvUsers()), Texts{"anna"}) << "a new composer starts empty";
}

TEST_F(ComposerTest, KeysOfTheTextBox) {
  windows.OpenComposer("bob|");
  Write("select me");
  EXPECT_TRUE(FilterKey(TxtMsg(), WM_KEYDOWN, 'A', VK_CONTROL));
  EXPECT_EQ(::SendMessageA(TxtMsg(), EM_GETSEL, 0, 0), MAKELRESULT(0, 9));
  for (const HWND stop : {ChildrenOf(Composer(), TOOLBARCLASSNAMEA).at(0), LvUsers(), TxtMsg()}) {
    EXPECT_TRUE(FilterKey(::GetFocus(), WM_KEYDOWN, VK_TAB));
    EXPECT_EQ(::GetFocus(), stop);
  }
  EXPECT_TRUE(FilterKey(TxtMsg(), WM_KEYDOWN, VK_TAB, VK_SHIFT));
  EXPECT_EQ(::GetFocus(), LvUsers());
  FilterKey(TxtMsg(), WM_KEYDOWN, VK_ESCAPE);
  core::RunPendingEvents();
  EXPECT_NE(Composer(), nullptr) << "Escape would throw the text away";
  EXPECT_TRUE(FilterKey(TxtMsg(), WM_SYSCHAR, 's'));
  EXPECT_EQ(port.sent, Texts{"me|P/\xDFselect me|bob"});
}

TEST_F(ComposerTest, TheTextBoxHoldsWhatADatagramCan) {
  windows.OpenComposer("bob|");
  EXPECT_EQ(::SendMessageA(TxtMsg(), EM_GETLIMITTEXT, 0, 0), 60000);
  std::string text;
  while (text.size() < 60000) text += "eighteen letters\r\n";
  text.resize(60000, 'x');
  Write(text.c_str());
  Click(kSend);
  EXPECT_EQ(port.sent, Texts{"me|P/\xDF" + text + "|bob"});
}

}  // namespace
}  // namespace conversation
