// txtMsg: the conversation as it is read, one paragraph a line, in a rich text box that never takes a text for anything
// but plain text.
#pragma once

#include <windows.h>
#include <richedit.h>

#include <cstddef>
#include <deque>
#include <string>

#include "ui/conversation/area.h"
#include "ui/conversation/chat_line.h"

namespace conversation {

class ChatText {
 public:
  // What the box needs at most for one conversation, bytes.
  static constexpr std::size_t kMostOfOne = 800u << 20;

  explicit ChatText(std::size_t most = kMostOfOne) : most_(most) { ++open_; }
  ~ChatText();
  ChatText(const ChatText&) = delete;
  ChatText& operator=(const ChatText&) = delete;

  // A child of the window. Throws core::Err::OutOfMemory when the system gives none.
  void Create(HWND parent);

  // The box of the moment: another one after Append or Clear.
  HWND hwnd() const { return txtMsg; }

  void Place(const Area& area);

  // At the end, in one colour, with the text hanging behind its head; scrolls to it. The cost does not depend on what
  // is there already. The oldest lines go when there are too many.
  void Append(const ChatLine& line, COLORREF colour);

  void Clear();

  // Line ends are CR LF.
  std::string PlainText() const;

  // The markup of a rich text file.
  std::string RichText() const;

  void ScrollPage(int command) { ::SendMessageA(txtMsg, WM_VSCROLL, static_cast<WPARAM>(command), 0); }

 private:
  // What one call of Append has added, and what it costs.
  struct Entry {
    ChatLine line;
    COLORREF colour;
    std::size_t cost;
  };

  int IndentOf(const std::string& head) const;
  void SetColour(COLORREF colour);
  void Insert(const std::string& paragraphs, COLORREF colour, LONG start, LONG offset);
  void InsertPlain(const std::string& text);
  void Write(const ChatLine& line, COLORREF colour);
  void Account(const ChatLine& line, COLORREF colour);
  void Count(const Entry& entry);
  bool TooMuch() const;
  void Shed();
  void Renew(std::deque<Entry> kept);
  void Fill(const std::deque<Entry>& lines, HWND old);
  void MoveCaret(LONG from, LONG to);
  void MoveCaretToEnd();
  CHARRANGE Selection() const;

  // All open conversations share the memory.
  static inline std::size_t open_ = 0, costOfAll_ = 0;

  const std::size_t most_;
  HWND txtMsg = nullptr;
  Area area_{};
  std::deque<Entry> entries_;
  std::size_t cost_ = 0, costOfLong_ = 0;
  LONG end_ = 0;
};

}  // namespace conversation
