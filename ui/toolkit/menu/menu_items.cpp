#include "ui/toolkit/menu/menu_items.h"

#include <algorithm>
#include <utility>

#include "core/code_page.h"
#include "core/language.h"
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

char Lower(char c) { return static_cast<char>(core::SystemCodePage().Lower(core::ByteOf(c))); }

char FirstCharacter(std::string_view caption) {
  return caption.empty() || MnemonicLetter(caption) ? '\0' : Lower(caption.front());
}

template <class LetterOf>
MnemonicChoice Choose(std::span<const MnemonicItem> items, char key, LetterOf letterOf) {
  const auto answers = [&](const MnemonicItem& item) { return item.selectable && letterOf(item.caption) == key; };
  const auto matches = std::count_if(items.begin(), items.end(), answers);
  if (matches == 0) return {};
  const auto highlighted = std::find_if(items.begin(), items.end(), [](const auto& item) { return item.highlighted; });
  auto chosen = highlighted == items.end() ? items.end() : std::find_if(highlighted + 1, items.end(), answers);
  if (chosen == items.end()) chosen = std::find_if(items.begin(), items.end(), answers);
  return {static_cast<int>(chosen - items.begin()), matches == 1 && chosen->enabled};
}

std::string AuthoredCaption(const MenuRow& row, bool fromLanguageFile) {
  std::string text = row.caption.Text(fromLanguageFile);
  if (!text.empty() && (row.helpCode == 0 || !fromLanguageFile)) return text;
  CMyItemData data = ParseCaption(row.caption.builtIn);
  data.sMenuText = std::move(text);
  data.sMenuHelp = row.helpCode == 0 ? std::string() : core::GetText(row.helpCode);
  return RestoreCaption(data);
}

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
  // A caption that begins like caption markup needs the empty help text before it.
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

char MnemonicLetter(std::string_view caption) {
  for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != '&') continue;
    if (caption[i + 1] != '&') return Lower(caption[i + 1]);
    ++i;
  }
  return '\0';
}

MnemonicChoice ChooseByMnemonic(std::span<const MnemonicItem> items, char key) {
  if (key == '\0') return {};
  const char wanted = Lower(key);
  const MnemonicChoice choice = Choose(items, wanted, MnemonicLetter);
  return choice.position >= 0 ? choice : Choose(items, wanted, FirstCharacter);
}

std::vector<std::string> AuthoredCaptions(MenuTable table, bool fromLanguageFile) {
  std::vector<std::string> captions;
  for (const MenuRow& row : table) captions.push_back(AuthoredCaption(row, fromLanguageFile));
  return captions;
}

std::string PlainCaption(std::string_view authored) {
  const CMyItemData data = ParseCaption(authored);
  return IsSeparator(data) ? std::string() : data.sMenuText;
}

void TagPictures(MenuTable table, std::span<const std::string> captions, ImageTags& tags) {
  tags.Clear();
  for (std::size_t row = 0; row < table.size(); ++row)
    if (table[row].picture != kNoPicture) tags.Add(table[row].picture, ParseCaption(captions[row]).sMenuText);
}

}  // namespace toolkit
