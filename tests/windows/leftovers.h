// Detects leaks of GDI and USER objects.
#pragma once

#include <gtest/gtest.h>

#include "support/object_count.h"

namespace support {

// The first round is not counted, since it may create permanent objects. A leak of one object per round would add as
// many as there are rounds; half of that is tolerated for fluctuations of Wine.
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
