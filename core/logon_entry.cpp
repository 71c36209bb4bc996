#include "core/logon_entry.h"

#include "core/files.h"
#include "core/process.h"

namespace core {

void SetRunAtLogon(std::int16_t flag) {
  if (flag == 0) DeleteRunValue();
  if (flag == 1) WriteRunValue(InProgramDirectory(ProgramFileTitle()));
}

}  // namespace core
