// "Somebody is missing from my list": looks at the machine's end of the network and says what to do.
#pragma once

#include <iosfwd>

#include "tools/cli/visit.h"

namespace cli {

// kDone when nothing was found, kNetworkFailed when something was.
ExitCode Check(std::uint32_t broadcast, Milliseconds wait, std::ostream& out);

}  // namespace cli
