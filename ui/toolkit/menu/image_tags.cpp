#include "ui/toolkit/menu/image_tags.h"

#include <algorithm>
#include <utility>

#include "core/text.h"

namespace toolkit {

void ImageTags::Add(int image, std::string tag) {
  if (image >= 0 && !tag.empty()) tags_[image].push_back(std::move(tag));
}

std::int16_t ImageTags::Find(std::string_view caption, int count) const {
  const auto begins = [caption](const std::string& tag) {
    return core::EqualIgnoringCase(caption.substr(0, tag.size()), tag);
  };
  for (const auto& [image, tags] : tags_)
    if (image < count && std::any_of(tags.begin(), tags.end(), begins)) return static_cast<std::int16_t>(image);
  return -1;
}

}  // namespace toolkit
