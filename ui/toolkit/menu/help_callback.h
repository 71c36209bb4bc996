// How an owner-drawn menu tells its window which help text belongs to the highlighted item.
#pragma once

#include <functional>
#include <string>

namespace toolkit {

struct HelpCallBack {
  // The help text, empty when the item has none or the menu has closed.
  std::function<void(const std::string& text)> MenuHelp;
};

}  // namespace toolkit
