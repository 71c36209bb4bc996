// The rows of a list: what a list view displays and everybody else reads. The list view holds no second copy, it asks
// for what it paints. Rows are only ever added at the end, so order is the order of adding. Finding a row by its exact
// text, by its text in lower case or by its key does not walk the list, and neither do adding and changing.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace toolkit {

struct ListRow {
  std::string key;  // unique among keys, compared exactly; empty = none
  std::string text;
  int icon = 0, smallIcon = 0;
  std::int32_t foreColour = 0;  // 0x00BBGGRR, or 0x800000nn for a system colour
  bool checked = false;
  bool selected = false;
  std::vector<std::string> columns;  // the columns after the first
};

// members: Add (throws core::Err::KeyNotUnique), Remove, Clear, FindText, FindTextIgnoringCase, FindKey, Count, At,
// IndexOf, setters that bump Changes() only when something differs
}  // namespace toolkit
