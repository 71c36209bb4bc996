// Captions that follow the language.
#pragma once

#include <string>

#include "core/language.h"

namespace toolkit {

// A text with its code in the language file and its built-in English form, which is used when captions do not come from
// that file. Windows, controls, menu rows and buttons are created with one.
struct Caption {
  // A text that is the same in every language.
  constexpr Caption(const char* text) : builtIn(text) {}
  constexpr Caption(int textCode, const char* text) : code(textCode), builtIn(text) {}

  // The text to show. When the language file lacks the code: empty, or for a spoken name the built-in text.
  std::string Text(bool fromLanguageFile) const {
    if (!fromLanguageFile || code == 0) return builtIn;
    return spoken ? core::FindText(code).value_or(builtIn) : core::GetText(code);
  }

  int code = 0;  // 0: the same in all languages
  const char* builtIn;
  bool spoken = false;  // a name for screen readers only; language files may lack it
};

}  // namespace toolkit
