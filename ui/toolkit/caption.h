// Texts on the screen that follow the language.
#pragma once

#include <string>

#include "core/language.h"

namespace toolkit {

// A text with its code in the language file and its built-in English form, which stands while captions do not come from
// there. Windows, controls, menu rows and buttons are created with one.
struct Caption {
  // A text that is the same in every language.
  constexpr Caption(const char* text) : builtIn(text) {}
  constexpr Caption(int textCode, const char* text) : code(textCode), builtIn(text) {}

  // As it is shown; a code that the language file lacks gives the empty text, but of a name the built-in one.
  std::string Text(bool fromLanguageFile) const {
    if (!fromLanguageFile || code == 0) return builtIn;
    return spoken ? core::FindText(code).value_or(builtIn) : core::GetText(code);
  }

  int code = 0;  // 0: no other language has another text
  const char* builtIn;
  bool spoken = false;  // a name that only screen readers say: language files of other makers may lack it
};

}  // namespace toolkit
