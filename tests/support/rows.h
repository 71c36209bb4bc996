// The rows of a list as text.
#pragma once

#include <string>

#include "ui/toolkit/list_rows.h"

namespace support {

// "TEXT=ICON " for each row, in order.
inline std::string RowsAndIcons(const toolkit::ListRows& rows) {
  std::string all;
  for (std::size_t i = 0; i < rows.Count(); ++i) {
    const toolkit::ListRow& row = rows.At(i);
    all += row.text + "=" + (row.icon == row.smallIcon ? std::to_string(row.icon) : "two icons") + " ";
  }
  return all;
}

}  // namespace support
