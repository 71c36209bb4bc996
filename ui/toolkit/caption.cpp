#include "ui/toolkit/caption.h"

#include "core/language.h"

namespace toolkit {

std::string Caption::Text(bool fromLanguageFile) const {
  return fromLanguageFile && code != 0 ? core::GetText(code) : builtIn;
}

}  // namespace toolkit
