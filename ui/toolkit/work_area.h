// The part of the screen that the task bar leaves free.
#pragma once

#include "ui/toolkit/units.h"

namespace toolkit {

struct WorkArea {
  Twips left, top, right, bottom;
};

}  // namespace toolkit
