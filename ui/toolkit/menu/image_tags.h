// Which image of an image list decorates which captions: an image belongs to every caption that begins with one of its
// tags.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

class ImageTags {
 public:
  // An image may bear several tags. Empty tags decorate nothing.
  void Add(int image, std::string tag);

  void Clear() { tags_.clear(); }

  // The first image, by index, with a tag that the caption begins with ignoring case; -1 when there is none. Images
  // from `count` on do not exist.
  std::int16_t Find(std::string_view caption, int count) const;

 private:
  std::map<int, std::vector<std::string>> tags_;
};

}  // namespace toolkit
