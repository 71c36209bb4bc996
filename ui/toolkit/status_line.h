// The text of a status line: the counts, or the help text of the highlighted menu item.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/text.h"

namespace toolkit {

// " 2 users in this chat". The words are "one|several|trailing words" in the current language.
inline std::string CountText(std::string_view words, std::int64_t count) {
  return std::string(" ")
      .append(std::to_string(count))
      .append(" ")
      .append(core::BarField(words, count == 1 ? 0 : 1))
      .append(" ")
      .append(core::BarField(words, 2));
}

class StatusLine {
 public:
  // Shows a caption. Called only when it has changed, so that the line does not flicker.
  std::function<void(const std::string& caption)> captionChanged;

  // Shows the counts and keeps them as the tag.
  void SetCounts(std::string_view counts) {
    if (tag_ != counts) tag_ = counts;
    SetCaption(counts);
  }

  // The empty text restores the counts.
  void ShowHelp(std::string_view help) { SetCaption(help.empty() ? std::string_view(tag_) : help); }

  const std::string& Caption() const { return caption_; }
  const std::string& Tag() const { return tag_; }

 private:
  void SetCaption(std::string_view caption) {
    if (caption_ == caption) return;
    caption_ = caption;
    if (captionChanged) captionChanged(caption_);
  }

  std::string caption_, tag_;
};

}  // namespace toolkit
