// Arbitrary bytes as the caption of a menu item in a language file, and as literal text: parsing and restoring are
// inverse, and a mnemonic key chooses an existing item. The first byte chooses the code page and the key.
#include <string>
#include <vector>

#include "fuzz/fuzz_target.h"
#include "ui/toolkit/menu/menu_items.h"

namespace {

// The text that a menu draws for a caption: "&&" is drawn as "&".
std::string Drawn(std::string_view caption) {
  std::string drawn;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&') ++i;
    if (i < caption.size()) drawn += caption[i];
  }
  return drawn;
}

void CheckLiteral(std::string_view text) {
  const toolkit::CMyItemData shown = toolkit::ParseCaption(toolkit::LiteralCaption(text));
  fuzz::Require(Drawn(shown.sMenuText) == text);
  fuzz::Require(!shown.bAsMark && !toolkit::IsSeparator(shown) && shown.sMenuHelp.empty());
  fuzz::Require(toolkit::MnemonicLetter(shown.sMenuText) == '\0');
}

void CheckKey(std::string_view captions, char key) {
  std::vector<toolkit::CMyItemData> items;
  while (!captions.empty() && items.size() < 16) items.push_back(toolkit::ParseCaption(fuzz::TakeLine(captions)));
  std::vector<toolkit::MnemonicItem> menu;
  for (const toolkit::CMyItemData& item : items)
    menu.push_back({.caption = item.sMenuText,
                    .selectable = !toolkit::IsSeparator(item),
                    .enabled = !item.bAsCheck,
                    .highlighted = menu.size() % 3 == 1});
  const toolkit::MnemonicChoice choice = toolkit::ChooseByMnemonic(menu, key);
  if (choice.position < 0) return fuzz::Require(!choice.execute);
  const auto position = static_cast<std::size_t>(choice.position);
  fuzz::Require(position < menu.size() && menu[position].selectable);
  fuzz::Require(!choice.execute || menu[position].enabled);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text = fuzz::TextOf(data, size);
  const unsigned char choice = fuzz::TakeByte(text);
  fuzz::ChooseCodePage(choice);
  const toolkit::CMyItemData item = toolkit::ParseCaption(text);
  fuzz::Require(item.sMenuHelp.size() + item.sMenuText.size() <= text.size());
  fuzz::Require(toolkit::ParseCaption(toolkit::RestoreCaption(item)) == item);
  fuzz::Require(toolkit::NameOf(text).find('&') == std::string::npos);
  CheckLiteral(text);
  CheckKey(text, static_cast<char>(choice));
  return 0;
}
