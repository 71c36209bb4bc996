#include "core/box_queue.h"

#include <utility>

namespace core {

namespace {

// What a box on a small screen can show: so many rows of so many characters, and a title of one row.
constexpr std::size_t kMostRows = 30, kCharactersInRow = 90;
constexpr std::size_t kMostTitle = 200;
constexpr char kCut[] = "...";

// The number of characters that stand in the first kMostRows rows.
std::size_t FittingCharacters(const std::string& text) {
  std::size_t rows = 1, column = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool breaks = text[i] == '\n';
    if (breaks || column == kCharactersInRow) {
      if (++rows > kMostRows) return i;
      column = 0;
    }
    if (!breaks) ++column;
  }
  return text.size();
}

void CutTo(std::size_t characters, std::string& text) {
  if (text.size() <= characters) return;
  text.resize(characters);
  text += kCut;
}

}  // namespace

void BoxQueue::Post(Box box) {
  if (waiting_.size() >= kMaxWaitingBoxes) return;
  CutTo(FittingCharacters(box.text), box.text);
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
