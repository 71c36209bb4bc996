#include "ui/toolkit/menu/menu_table.h"

#include "core/language.h"
#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {

std::string AuthoredCaption(const MenuRow& row) {
  if (row.textCode == 0 || !core::CaptionsFromTable()) return row.caption;
  if (row.helpCode == 0) return core::GetText(row.textCode);
  CMyItemData data = ParseCaption(row.caption);
  data.sMenuText = core::GetText(row.textCode);
  data.sMenuHelp = core::GetText(row.helpCode);
  return RestoreCaption(data);
}

std::string PlainCaption(std::string_view authored) {
  const CMyItemData data = ParseCaption(authored);
  return IsSeparator(data) ? std::string() : data.sMenuText;
}

void TagPictures(MenuTable table, ImageTags& tags) {
  tags.Clear();
  for (const MenuRow& row : table)
    if (row.picture != kNoPicture) tags.Add(row.picture, ParseCaption(AuthoredCaption(row)).sMenuText);
}

}  // namespace toolkit
