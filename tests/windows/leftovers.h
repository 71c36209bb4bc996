// Sees whether something that is done again and again leaves GDI or USER objects behind.
#pragma once

#include <gtest/gtest.h>

#include "support/object_count.h"

namespace support {

// Does it once before it counts, for what stays by intention. One object a round left behind would be as many as there
// are rounds; half of that is Wine's own ups and downs.
template <class Round>
void ExpectNothingLeft(int rounds, Round round) {
  round();
  const toolkit::ObjectCount before = toolkit::CountObjects();
  for (int i = 0; i < rounds; ++i) round();
  const toolkit::ObjectCount after = toolkit::CountObjects();
  EXPECT_LT(after.gdi, before.gdi + rounds / 2);
  EXPECT_LT(after.user, before.user + rounds / 2);
}

}  // namespace support
