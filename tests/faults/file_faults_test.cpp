// Makes each file operation fail, once or permanently: the file must be the old or the new one, complete.
#include <gtest/gtest.h>

#include <limits>

#include "core/log.h"
#include "core/settings.h"
#include "tests/faults/joined_program.h"
#include "tests/support/error_of.h"

namespace support {
namespace {

constexpr int kNever = std::numeric_limits<int>::max();

struct Fault {
  int step;  // the first failing one, counted from 1
  bool permanent;
  bool takesNewFiles;  // whether the folder lets new files be created
};

void Inject(const Fault& fault) {
  Files().takesNewFiles = fault.takesNewFiles;
  Files().firstFailing = Files().steps + fault.step;
  Files().lastFailing = fault.permanent ? kNever : Files().firstFailing;
}

// Calls `check` for every fault, until the fault is beyond the last step.
template <class Check>
void ForEachFault(Check check) {
  for (const bool permanent : {false, true})
    for (const bool takesNewFiles : {false, true}) {
      bool reached = true;
      for (int step = 1; reached && !testing::Test::HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step) + (permanent ? " and later" : "") +
                     (takesNewFiles ? "" : ", a folder that takes no files"));
        check(Fault{step, permanent, takesNewFiles});
        reached = Files().steps >= Files().firstFailing;
        Files().firstFailing = kNever;
      }
    }
}

// A file rewritten in place cannot be restored if the disk fails permanently; otherwise nothing is lost.
TEST(FileFaults, SettingsAreTheOldOrTheNewOnes) {
  ForEachFault([](const Fault& fault) {
    JoinedProgram program;
    const std::string before = Files()["User.ini"];
    core::gCurName = "berta";
    Inject(fault);
    const long error = ErrorOf([&] { core::SaveSets(program); });
    const std::string& after = Files()["User.ini"];
    const bool inPlace = fault.permanent && !fault.takesNewFiles;
    EXPECT_TRUE(error == 0 || inPlace || after == before) << after;
    EXPECT_TRUE(error != 0 || after.find("\"berta\"") != std::string::npos) << after;
    EXPECT_EQ(Files().files.size(), 3u) << "beside the log and the language file";
  });
}

TEST(FileFaults, AnExportIsCompleteOrAbsent) {
  ForEachFault([](const Fault& fault) {
    JoinedProgram program;
    Inject(fault);
    const long error = ErrorOf([&] { program.Chat(0).Export("chat.txt"); });
    EXPECT_EQ(Files().files.contains("chat.txt"), error == 0);
    EXPECT_TRUE(error != 0 || Files().files["chat.txt"] == "cy:\thi\r\n");
    EXPECT_FALSE(Files().files.contains("chat.txt~"));
    EXPECT_NE(error, 53) << "a file that is not there yet is no failure";
  });
}

TEST(FileFaults, ALogLineThatCannotBeWrittenIsShown) {
  for (const bool exists : {true, false})
    ForEachFault([exists](const Fault& fault) {
      JoinedProgram program;
      if (!exists) Files().files.erase("Log.txt");
      Inject(fault);
      core::WriteLog("a line");
      const auto& shown = Desktop().posted;
      ASSERT_EQ(shown.size(), Files()["Log.txt"].ends_with(" a line\"\r\n") ? 0u : 1u);
      if (shown.empty()) return;
      EXPECT_EQ(shown[0].text + shown[0].closing,
                "Error writing to Log file. Text to write:\r\n\r\na line\r\n\r\nPlease contact Vextant at "
                "support@vextant.example");
    });
}

}  // namespace
}  // namespace support
