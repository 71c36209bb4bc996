#include "ui/toolkit/menu/menu_mnemonic.h"

#include <algorithm>

#include "core/code_page.h"

namespace toolkit {
namespace {

char Lower(char c) { return static_cast<char>(core::SystemCodePage().Lower(core::ByteOf(c))); }

char FirstLetter(std::string_view caption) {
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

}  // namespace

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
  return choice.position >= 0 ? choice : Choose(items, wanted, FirstLetter);
}

}  // namespace toolkit
