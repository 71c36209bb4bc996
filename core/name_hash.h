// Hashing and comparing names without regard to case, straight from the bytes: no lower-case copy is made, so a look-up
// costs no allocation. Both are transparent: a container of strings can be searched with a view.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/text.h"

namespace core {

// Differs from run to run, so that names cannot be prepared elsewhere to fall into one bucket.
struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const;
};

struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return EqualIgnoringCase(a, b); }
};

}  // namespace core
