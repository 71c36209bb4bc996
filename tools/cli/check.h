// Diagnoses "somebody is missing from my list": checks this machine's part of the network, and says what to do.
#pragma once

#include <iosfwd>

#include "tools/cli/visit.h"

namespace cli {

// kDone if no fault was found, otherwise kNetworkFailed.
ExitCode Check(std::uint32_t broadcast, Milliseconds wait, std::ostream& out);

}  // namespace cli
