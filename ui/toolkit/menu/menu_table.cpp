#include "ui/toolkit/menu/menu_table.h"

#include "core/language.h"
#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {
namespace {

std::string AuthoredCaption(const MenuRow& row, bool fromLanguageFile) {
  std::string text = row.caption.Text(fromLanguageFile);
  if (!text.empty() && (row.helpCode == 0 || !fromLanguageFile)) return text;
  CMyItemData data = ParseCaption(row.caption.builtIn);
  data.sMenuText = std::move(text);
  data.sMenuHelp = row.helpCode == 0 ? std::string() : core::GetText(row.helpCode);
  return RestoreCaption(data);
}

}  // namespace

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
