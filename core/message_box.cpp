#include "core/message_box.h"

#include <string_view>
#include <utility>

#include "core/scoped_flag.h"
#include "core/text.h"

namespace core {
namespace {

constexpr char kCut[] = "...";

std::string Cut(std::string_view text, std::size_t length, std::string_view closing) {
  return std::string(LeadingCharacters(text, length)).append(kCut).append(closing);
}

// A message box stops at a NUL, so the closing sentences must come before it.
std::string Fitting(std::string_view text, std::string_view closing, const Fits& fits) {
  text = text.substr(0, text.find('\0'));
  if (std::string whole = std::string(text).append(closing); fits(whole)) return whole;
  std::size_t fitting = 0, tooLong = text.size();
  while (tooLong - fitting > 1) {
    const std::size_t middle = fitting + (tooLong - fitting) / 2;
    (fits(Cut(text, middle, closing)) ? fitting : tooLong) = middle;
  }
  return Cut(text, fitting, closing);
}

}  // namespace

void BoxQueue::Post(Box box) {
  if (waiting_.size() < kMaxWaitingBoxes) waiting_.push_back(std::move(box));
}

bool BoxQueue::ShowAll(const std::function<bool(const Box&)>& show) {
  if (showing_) return true;
  const ScopedFlag showing(showing_);
  while (!waiting_.empty()) {
    Box box = std::move(waiting_.front());
    waiting_.pop_front();
    if (show(box)) continue;
    waiting_.push_front(std::move(box));
    return false;
  }
  return true;
}

Box CutToFit(const Box& box, const Fits& textFits, const Fits& titleFits) {
  return {
      .text = Fitting(box.text, box.closing, textFits), .title = Fitting(box.title, "", titleFits), .icon = box.icon};
}

}  // namespace core
