// A temporary program folder for native tests.
#pragma once

#include "core/files.h"
#include "support/temporary_folder.h"

namespace support {

class ProgramFolder : public TemporaryFolder {
 public:
  ProgramFolder() { core::SetProgramDirectory(Path()); }
};

}  // namespace support
