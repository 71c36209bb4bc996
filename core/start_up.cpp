#include "core/start_up.h"

#include <string>

#include "core/callback_guard.h"
#include "core/clock.h"
#include "core/event_loop.h"
#include "core/files.h"
#include "core/globals.h"
#include "core/language.h"
#include "core/log.h"
#include "core/message_box.h"
#include "core/numbers.h"
#include "core/process.h"
#include "core/runtime_error.h"
#include "core/scoped_flag.h"
#include "core/settings.h"
#include "core/text.h"
#include "core/version.h"

namespace core {
namespace {

constexpr int kNameInUseText = 8202;
constexpr int kNotLoadedText = 8209;

// The longest sleep while listening, milliseconds.
constexpr std::int32_t kListenStep = 10;

std::string VersionText() {
  return std::to_string(QUILLON_VERSION_MAJOR) + "." + std::to_string(QUILLON_VERSION_MINOR) + "." +
         std::to_string(QUILLON_VERSION_REVISION);
}

void LoadSettings(Program& program, std::string_view arguments) {
  WriteLog("Quillon loaded");
  RemoveLeftovers(ProgramDirectory());
  gUserName = GetLogonName();
  ReadSets(program);
  WriteLog("  > Settings and language loaded");
  gVersion = VersionText();
  gStatus = 0;
  gSafe = AsksForSafeMode(arguments) ? 1 : 0;  // read before the main window creates its menus
}

// The first chat window of a run opens centred, whatever the settings say.
void CentreChatWindow(const WindowBounds& screen) {
  gChatLeft = ToInt32(screen.width / 2.0 - kChatWidth / 2.0);
  gChatTop = ToInt32(screen.height / 2.0 - kChatHeight / 2.0);
  gChatWidth = kChatWidth;
  gChatHeight = kChatHeight;
}

// Incoming packets fill the roster. Message boxes that they cause are posted for the main loop: a copy that starts at
// logon must join the network unattended.
void Listen() {
  StartTicks();
  while (ElapsedTicks(gTicks) < kListenTime) {
    RunPendingEvents();
    WaitForEvent(kListenStep);
  }
}

// Joins under a hidden name, which nobody lists, to learn who is online.
void JoinQuietly(Program& program) {
  gStarting = -1;
  program.ShowSplash();
  RunPendingEvents();
  CentreChatWindow(program.Screen());
  TrimLog();
  gCurName = "_" + GetLogonName();
  program.LoadMain();
  program.OpenSocket();
  RunPendingEvents();
  Listen();
}

void CheckScreenName(Program& program) {
  if (!NameInUse(program.Users(), gUserName)) return;
  ShowBox({.text = GetText(kNameInUseText)});
  gCurName = gUserName;
  program.ShowOptionsAtStartUp();
}

void JoinUnderScreenName(Program& program) {
  program.CloseSocket();
  program.Users().ClearlvUsers();
  gStarting = 0;
  program.ShowTray();
  gCurName = gUserName;
  program.LoadMain();
  program.OpenSocket();
  program.HideSplash();
}

// Restores the user's name first, so that nothing is sent or saved under the hidden one.
void ReportNotLoaded(const RuntimeError& error) {
  gCurName = gUserName;
  WriteLog("Unable to load: " + NumberAndDescription(error));
  ShowBox({.text = GetText(kNotLoadedText) + ": & " + NumberAndDescription(error)});
}

// Even if the settings cannot be saved, the others are told that the user has left, and before anybody has to close a
// message box: nobody may be there during a logoff.
void Leave(Program& program) {
  const auto step = [](auto action) {
    try {
      action();
    } catch (...) {
      GuardedSilently([] { PostUnhandled(CurrentError()); });
    }
  };
  step([&program] { SaveSets(program); });
  step([&program] { program.CloseSocket(); });
  step([&program] { program.RemoveTray(); });
  if (SettingsAreComplete()) step([] { SetRunAtLogon(gRunAtLogon); });
  step([] { WriteLog("Quillon unloaded"); });
  step(ShowPostedBoxes);
  step(RunPendingEvents);
}

}  // namespace

void Main(Program& program, std::string_view arguments) {
  try {
    if (AnotherCopyRuns()) {
      ShowBox({.text = "Previous Instance", .icon = BoxIcon::Information});
      EndProcess();
      return;
    }
    LoadSettings(program, arguments);
    JoinQuietly(program);
    CheckScreenName(program);
    JoinUnderScreenName(program);
  } catch (...) {
    GuardedSilently([] { ReportNotLoaded(CurrentError()); });
  }
}

void ShutDown(Program& program) {
  static bool shuttingDown = false;  // pending events may request shutdown again
  if (shuttingDown) return;
  const ScopedFlag flag(shuttingDown);
  Leave(program);
  EndProcess();
}

bool NameInUse(const Roster& roster, std::string_view name) {
  const int ownRows = gCurName == name ? 1 : 0;
  return roster.CountRows(name) > ownRows;
}

bool AsksForSafeMode(std::string_view arguments) { return Find(LowerCase(arguments), "safe") != std::string::npos; }

void SetRunAtLogon(std::int16_t flag) {
  if (flag == 0) DeleteRunValue();
  if (flag == 1) WriteRunValue(InProgramDirectory(ProgramFileTitle()));
}

void StartTicks() { gTicks = TickCount(); }

std::int32_t ElapsedTicks(std::int32_t start) { return TicksBetween(start, TickCount()); }

std::int32_t TicksBetween(std::int32_t start, std::int32_t now) {
  return ToInt32(static_cast<double>(std::int64_t{now} - start));
}

}  // namespace core
