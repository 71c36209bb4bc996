// Makes each allocation of an action fail, once or permanently: nothing is leaked (native-asan detects leaks), the
// program's invariants hold, and it processes the next packet.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "core/log.h"
#include "core/settings.h"
#include "core/start_up.h"
#include "tests/faults/joined_program.h"

namespace {

long gLeft = -1;  // allocations that succeed before one fails; negative = all
bool gPermanent = false, gFailed = false;

void* Allocate(std::size_t size) {
  if (gLeft == 0) {
    gFailed = true;
    if (!gPermanent) gLeft = -1;
    throw std::bad_alloc();
  }
  if (gLeft > 0) --gLeft;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace support {
namespace {

// True when an allocation has failed.
template <class Action>
bool FailsAt(long allocation, bool permanent, Action action) {
  gPermanent = permanent, gFailed = false, gLeft = allocation;
  try {
    action();
  } catch (const std::exception&) {
  }
  gLeft = -1;
  return gFailed;
}

// Checks that the program can join the network and shows lines.
void ExpectUsable(WholeProgram& program) {
  // What is derived from the roster follows with the next packet.
  EXPECT_THAT(program.Violation(), testing::AnyOf("", "the counts are wrong", "a user with the wrong icon"));
  program.mayLose = false;
  if (!program.IsOpen() || core::gStarting != 0) {
    core::ShutDown(program);
    core::Main(program, "");
  }
  program.Hear("zoe|M/\xDEhello");
  EXPECT_EQ(program.Violation(), "");
  EXPECT_TRUE(program.users.HasRow("zoe") && program.users.HasRow("(All)"));
  ASSERT_FALSE(program.chats.empty());
  const conversation::Conversation& said = program.Chat(program.chats.size() - 1).said;
  EXPECT_EQ(said.At(said.End() - 1).text, "hello");
  for (std::size_t i = 0; i < program.chats.size(); ++i) program.Chat(i).Export("chat.txt");
  core::ShutDown(program);
  core::ReadSets(program);
  EXPECT_FALSE(program.users.GroupLines().empty()) << "lost settings";
}

using Action = void (*)(WholeProgram&);
constexpr char kOld[] = "old content";
constexpr char kLongName[] = "somebody whose name is not stored in place";

const struct {
  const char* name;
  Action action;
} kActions[] = {
    {"packets",
     [](WholeProgram& program) {
       for (const char* sender : {"dan", kLongName})
         for (const char* command :
              {"|M/", "|C/ 255", "|S/2", "|M/\xDEhi", "|P/\xDFnow|anna", "|B/notice", "|S/?", "|L/"})
           program.Hear(std::string(sender) + command);
       for (const char* packet : {"bob|P/\xDFnow|anna", "_fay|M/", "bob|X/?", "cy|M/\xDEhi again", "cy|L/", "(All)|C/1",
                                  "bob|M/bob is back"})
         program.Hear(packet);
       program.HearOwn();
     }},
    {"answers owed",
     [](WholeProgram& program) {
       for (int i = 0; i < 12; ++i) program.Hear("user" + std::to_string(i) + "|M/");
       program.PassTime(2000);
     }},
    {"an outage",
     [](WholeProgram& program) {
       program.SetNetworkDown(true);
       program.SetStatus(0);
       program.SendAlert("bob|", kLongName);
       program.SetNetworkDown(false);
       program.HearOwn();
     }},
    {"options",
     [](WholeProgram& program) {
       program.Accept({.name = "a name too long for its buffer",
                       .language = "Deutsch",
                       .blocked = {"cy", kLongName},
                       .groupLines = {"F|bob|"}});
     }},
    {"blocking",
     [](WholeProgram& program) {
       for (const char* name : {"bob", kLongName}) program.Block(name);
       program.users.RemoveBlock("eve");
       program.users.lvUsers.SetSelected(program.users.lvUsers.At(1), true);
       program.users.ToggleBlock();
     }},
    {"a chat",
     [](WholeProgram& program) {
       PlainChat& chat = program.StartChat("bob|somebody with a long name|");
       chat.participants.AddUsers("(All)|dan");
       chat.participants.RemoveUsers({"dan", "(All)"});
       chat.participants.Send("hello", program.messenger);
     }},
    {"exports",
     [](WholeProgram& program) {
       for (const char* path : {"chat.txt", "chat.rtf"}) program.Chat(0).Export(path);
     }},
    {"an alert", [](WholeProgram& program) { program.SendAlert("bob|a recipient with a long name|(All)|cy", "hi"); }},
    {"settings",
     [](WholeProgram& program) {
       core::SaveSets(program);
       core::ReadSets(program);
     }},
    {"a failing log",
     [](WholeProgram&) {
       Files().firstFailing = 0;
       core::WriteLog("a line that nobody can write anywhere");
     }},
    {"an end and a start",
     [](WholeProgram& program) {
       core::ShutDown(program);
       core::Main(program, "");
     }},
};

TEST(OutOfMemory, LeavesTheProgramUsable) {
  for (const auto& row : kActions) {
    for (const bool permanent : {false, true}) {
      bool failed = true;
      for (long allocation = 0; failed; ++allocation) {
        SCOPED_TRACE(std::string(row.name) + (permanent ? ", none after allocation " : ", allocation ") +
                     std::to_string(allocation));
        JoinedProgram program;
        program.mayLose = true;
        for (const char* path : {"chat.txt", "chat.rtf"}) Files().files[path] = kOld;
        failed = FailsAt(allocation, permanent, [&] { row.action(program); });
        for (const char* path : {"chat.txt", "chat.rtf"}) {
          const std::string& file = Files().files[path];
          EXPECT_TRUE(file == kOld || file.ends_with("hi\r\n") || file.ends_with("}\n")) << file;
        }
        Files().firstFailing = std::numeric_limits<int>::max();
        program.SetNetworkDown(false);
        ExpectUsable(program);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

}  // namespace
}  // namespace support
