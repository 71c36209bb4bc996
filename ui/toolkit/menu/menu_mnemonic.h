// Letter keys in an open menu. Windows looks for mnemonics in the texts of ordinary items only, so a window answers for
// the items that it draws itself, and must do it as Windows would.
#pragma once

#include <span>
#include <string_view>

namespace toolkit {

// The letter behind the first single "&" of a caption, in lower case; 0 when there is none.
char MnemonicLetter(std::string_view caption);

struct MnemonicItem {
  std::string_view caption;
  bool selectable = true;  // heads and separators are not
  bool enabled = true;
  bool highlighted = false;
};

struct MnemonicChoice {
  int position = -1;     // -1: the key means nothing to this menu
  bool execute = false;  // else the item is only highlighted

  friend bool operator==(const MnemonicChoice&, const MnemonicChoice&) = default;
};

// A key that one enabled item answers executes it; of several the next one after the highlighted item is highlighted. A
// key that is nobody's mnemonic goes by the first letters of the captions that have none.
MnemonicChoice ChooseByMnemonic(std::span<const MnemonicItem> items, char key);

}  // namespace toolkit
