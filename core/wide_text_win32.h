// Text for the calls of Windows that take Unicode: those that draw or measure bytes read them by the script of the
// font, which need not be that of the system's code page.
#pragma once

#include <string>
#include <string_view>

namespace core {

std::wstring Wide(std::string_view text);

}  // namespace core
