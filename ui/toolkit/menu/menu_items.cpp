#include "ui/toolkit/menu/menu_items.h"

#include <algorithm>
#include <utility>

#include "core/text.h"

namespace toolkit {
namespace {

std::string Prefix(const CMyItemData& data) {
  if (data.bAsMark) return data.bAsCheck ? "#" : "*";
  return IsSeparator(data) ? "-" : "";
}

std::string Joined(const CMyItemData& data) {
  if (data.sMenuHelp.empty()) return Prefix(data) + data.sMenuText;
  return Prefix(data) + "|" + data.sMenuHelp + "|" + data.sMenuText;
}

// Unlike the small numbers and addresses that others use as item data.
CMyItemDatas::Key nextKey = 0x51000001u;

}  // namespace

CMyItemData ParseCaption(std::string_view authored) {
  const char first = authored.empty() ? '\0' : authored.front();
  CMyItemData data;
  data.bAsMark = first == '#' || first == '*';
  data.bAsCheck = first == '#';
  if (first == '-') data.fType = kSeparatorType;

  const bool prefixed = data.bAsMark || first == '-';
  const std::string_view rest = authored.substr(prefixed ? 1 : 0);
  const std::size_t secondBar = rest.starts_with('|') ? core::Find(rest, "|", 1) : std::string_view::npos;
  if (secondBar == std::string_view::npos) {
    data.sMenuText = rest;
  } else {
    data.sMenuHelp = rest.substr(1, secondBar - 1);
    data.sMenuText = rest.substr(secondBar + 1);
  }
  return data;
}

std::string RestoreCaption(const CMyItemData& data) {
  std::string text = Joined(data);
  // A caption that begins like caption language needs the empty help text before it.
  if (ParseCaption(text).sMenuText != data.sMenuText) text = Prefix(data) + "||" + data.sMenuText;
  return text;
}

std::string NameOf(std::string_view authored) {
  std::string name = ParseCaption(authored).sMenuText;
  std::erase(name, '&');
  return name;
}

std::string LiteralCaption(std::string_view text) {
  CMyItemData data;
  for (const char c : text) {
    data.sMenuText += c;
    if (c == '&') data.sMenuText += '&';
  }
  return RestoreCaption(data);
}

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

CMyItemDatas::Key CMyItemDatas::Add(CMyItemData data) {
  const Key key = nextKey++;
  items_.emplace(key, std::move(data));
  return key;
}

const CMyItemData* CMyItemDatas::Item(Key key) const {
  const auto found = items_.find(key);
  return found == items_.end() ? nullptr : &found->second;
}

}  // namespace toolkit
