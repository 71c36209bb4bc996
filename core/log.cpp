#include "core/log.h"

#include <string>

#include "core/clock.h"
#include "core/files.h"
#include "core/message_box.h"
#include "core/record_io.h"
#include "core/runtime_error.h"

namespace core {
namespace {

constexpr char kFileName[] = "Log.txt";
constexpr char kSupportAddress[] = "support@vextant.example";

Box FailureBox(std::string_view text) {
  return {.text = std::string("Error writing to Log file. Text to write:\r\n\r\n").append(text),
          .closing = std::string("\r\n\r\nPlease contact Vextant at ").append(kSupportAddress)};
}

}  // namespace

void WriteLog(std::string_view text) {
  const std::string line = ClockText().append(1, ' ').append(text);
  try {
    AppendToFile(InProgramDirectory(kFileName), RecordWriter().Text(line).EndRecord().Bytes());
  } catch (const RuntimeError&) {
    // Posted, because packets cause log lines and must not nest message boxes.
    PostBox(FailureBox(text));
  }
}

void TrimLog() {}

}  // namespace core
