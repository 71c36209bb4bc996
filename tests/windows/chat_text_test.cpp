// The display of a conversation that is too long for its control.
#include <gtest/gtest.h>

#include <windows.h>
#include <richedit.h>

#include <algorithm>

#include "support/window_probe.h"
#include "ui/conversation/chat_text.h"

namespace conversation {
namespace {

class ChatTextTest : public testing::Test {
 protected:
  ChatTextTest() {
    text.Create(parent_);
    text.MoveTo({0, 0, 300, 200});
  }
  ~ChatTextTest() override { ::DestroyWindow(parent_); }

  void Say(const std::string& line, std::int32_t colour = 0) { text.Append("", "anna", line, colour); }
  void Say(int from, int to) {
    for (int i = from; i < to; ++i) text.Append("", NameOf(i), "line " + std::to_string(i), 0);
  }
  static std::string NameOf(int line) { return line % 2 ? "anna" : "Wilhelmina"; }
  static std::string Lines(int from, int to) {
    std::string lines;
    for (int i = from; i < to; ++i) lines += NameOf(i) + ":\tline " + std::to_string(i) + "\r\n";
    return lines;
  }

  // Does the pending work.
  void Settle() {
    for (int i = 0; i < 300; ++i) text.OnTimer(ChatText::kWorkTimer);
  }

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageA(text.hwnd(), message, wParam, lParam);
  }
  std::string Shown() const { return support::TextOf(text.hwnd()); }
  std::string TopRow() const {
    char row[200] = {static_cast<char>(sizeof row - 1), 0};
    const auto first = static_cast<WPARAM>(Send(EM_GETFIRSTVISIBLELINE));
    return std::string(row, static_cast<std::size_t>(Send(EM_GETLINE, first, reinterpret_cast<LPARAM>(row))));
  }
  LONG IndentAt(LONG at) const {
    CHARRANGE range{at, at};
    PARAFORMAT format{};
    format.cbSize = sizeof format;
    Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    Send(EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
    return format.dxOffset;
  }
  std::string PlainText() const {
    std::string plain;
    WritePlainText(text.Said(), [&](std::string_view piece) { plain += piece; });
    return plain;
  }

  HWND parent_ = ::CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 400, 300, nullptr, nullptr,
                                   nullptr, nullptr);
  ChatText text;
};

TEST_F(ChatTextTest, ShowsTheNewestLinesAndLoadsOthersOnScrolling) {
  constexpr int kAll = 20000;
  Say(0, kAll);
  Settle();
  const std::string newest = Shown();
  EXPECT_TRUE(Lines(0, kAll).ends_with(newest));
  EXPECT_GE(std::ranges::count(newest, '\n'), 2000);
  if (newest.starts_with("Wilhelmina:\tline 0\r")) GTEST_SKIP() << "the control is fast enough for all lines";

  for (int i = 0; i < 3; ++i) {
    Send(WM_VSCROLL, SB_TOP);
    const std::string top = TopRow(), before = Shown();
    const LONG indent = IndentAt(0);
    EXPECT_TRUE(before.starts_with(top));
    Settle();
    EXPECT_EQ(TopRow(), top) << "the view has moved";
    const auto now = Shown().find(before.substr(0, 500));
    ASSERT_LT(now, Shown().size()) << "no earlier lines were loaded";
    const auto breaks = std::ranges::count(Shown().substr(0, now), '\n');
    EXPECT_EQ(IndentAt(static_cast<LONG>(now) - static_cast<LONG>(breaks)), indent);
    EXPECT_FALSE(Shown().starts_with(top));
  }
  EXPECT_TRUE(text.GoToBeginning());
  EXPECT_TRUE(Shown().starts_with(Lines(0, 20))) << Shown().substr(0, 300);
  EXPECT_EQ(TopRow(), "Wilhelmina:\tline 0\r");
  Send(WM_VSCROLL, SB_BOTTOM);
  const std::string before = Shown();
  Settle();
  EXPECT_TRUE(Lines(0, kAll).starts_with(Shown()));
  EXPECT_GT(Shown().size(), before.size());
  Say(kAll, kAll + 1);
  EXPECT_TRUE(Lines(0, kAll + 1).ends_with(Shown()));
  Settle();
  EXPECT_GE(std::ranges::count(Shown(), '\n'), 2000);
  EXPECT_EQ(PlainText(), Lines(0, kAll + 1));
}

TEST_F(ChatTextTest, ALongLineIsOneParagraph) {
  std::string words;
  while (words.size() < 60000) words += "seven7 ";
  std::string expected;
  for (const std::string& line :
       {words, std::string(60000, 'x'), std::string(60000, ' ') + '.', std::string("{\\b x}")}) {
    Say(line, 0xFF);
    expected += "anna:\t" + line + "\r\n";
  }
  Settle();
  std::string cut = expected;
  cut.erase(cut.find(std::string(60000, ' ')), 60000 - kMaxBlanks);
  EXPECT_EQ(Shown(), cut);
  Send(EM_SETSEL, 0, -1);
  Send(WM_COPY);
  EXPECT_EQ(support::ClipboardText(), expected);
  const auto blanks = static_cast<LONG>(words.size() + 60000 + 2 * 7 + 6);
  CHARRANGE range{blanks + 100, blanks + static_cast<LONG>(kMaxBlanks) + 1};
  Send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
  BYTE keys[256] = {};
  keys[VK_CONTROL] = 0x80;
  ::SetKeyboardState(keys);
  Send(WM_KEYDOWN, 'C');
  keys[VK_CONTROL] = 0;
  ::SetKeyboardState(keys);
  EXPECT_EQ(support::ClipboardText(), std::string(59900, ' ') + '.');
}

}  // namespace
}  // namespace conversation
