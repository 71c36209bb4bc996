#include "ui/toolkit/caption.h"

#include "core/language.h"

namespace toolkit {

std::string Caption::Text(bool fromLanguageFile) const {
  if (!fromLanguageFile || code == 0) return builtIn;
  return spoken ? core::FindText(code).value_or(builtIn) : core::GetText(code);
}

}  // namespace toolkit
