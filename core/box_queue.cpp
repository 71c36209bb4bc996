#include "core/box_queue.h"

#include <string_view>
#include <utility>

namespace core {

namespace {

// What a box on a small screen can show: so many rows of so many characters, and a title of one row. A box wraps about
// there in ordinary text; in the widest letters each row takes two, and the button is still on the screen.
constexpr std::size_t kMostRows = 24, kCharactersInRow = 40;
constexpr std::size_t kMostTitle = 200;
constexpr char kCut[] = "...";

bool IsBreak(char c) { return c == '\r' || c == '\n'; }

// As much of the text as stands in the first kMostRows rows. A box wraps at blanks only: a word without end gets line
// breaks, or it would carry the button off the side of the screen.
std::string Fitting(std::string_view text) {
  std::string fitting;
  std::size_t rows = 1, column = 0, word = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isBreak = IsBreak(text[i]);
    const bool endsRow = isBreak && !text.substr(i).starts_with("\r\n");
    const bool wordIsFull = word == kCharactersInRow && !isBreak && text[i] != ' ';
    const bool rowIsFull = column == kCharactersInRow && !isBreak;
    if (endsRow || wordIsFull || rowIsFull) {
      if (++rows > kMostRows) return fitting + kCut;
      column = 0;
    }
    if (wordIsFull) fitting += "\r\n";
    word = isBreak || text[i] == ' ' ? 0 : (wordIsFull ? 0 : word) + 1;
    column += isBreak ? 0 : 1;
    fitting += text[i];
  }
  return fitting;
}

void CutTo(std::size_t characters, std::string& text) {
  if (text.size() <= characters) return;
  text.resize(characters);
  text += kCut;
}

}  // namespace

void BoxQueue::Post(Box box) {
  if (waiting_.size() >= kMaxWaitingBoxes) return;
  box.text = Fitting(box.text);
  CutTo(kMostTitle, box.title);
  waiting_.push_back(std::move(box));
}

void BoxQueue::ShowAll(const std::function<void(const Box&)>& show) {
  if (showing_) return;
  showing_ = true;
  while (!waiting_.empty()) {
    const Box box = std::move(waiting_.front());
    waiting_.pop_front();
    show(box);
  }
  showing_ = false;
}

}  // namespace core
