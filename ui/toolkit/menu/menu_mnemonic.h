// Letter keys in an open menu. Windows handles the mnemonics of ordinary items only, so a window must handle those of
// owner-drawn items in the same way.
#pragma once

#include <span>
#include <string_view>

namespace toolkit {

// The letter after the first single "&" of a caption, in lower case; 0 when there is none.
char MnemonicLetter(std::string_view caption);

struct MnemonicItem {
  std::string_view caption;
  bool selectable = true;  // headings and separators are not
  bool enabled = true;
  bool highlighted = false;
};

struct MnemonicChoice {
  int position = -1;     // -1: no item matches
  bool execute = false;  // else the item is only highlighted

  friend bool operator==(const MnemonicChoice&, const MnemonicChoice&) = default;
};

// The mnemonic of exactly one enabled item executes it; of several, the next one after the highlighted item is
// highlighted. A key that is no mnemonic matches the first letters of captions without mnemonics.
MnemonicChoice ChooseByMnemonic(std::span<const MnemonicItem> items, char key);

}  // namespace toolkit
