// The real composer, popups and chat windows, on a fake network.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/files.h"
#include "core/globals.h"
#include "support/recording_network.h"
#include "support/window_probe.h"
#include "ui/conversation/open_windows.h"
#include "ui/main/user_roster.h"

namespace conversation {

class ConversationTest : public testing::Test {
 protected:
  ConversationTest() {
    support::Speak("English");
    core::gCurName = "me";
    core::gSound = "(S)";
    core::gPopPos = 4;
    core::gAlertHeight = 0;
    roster.ClearlvUsers();
    roster.AddUser("anna");
    roster.SetColour("anna", 0x0000FF);
  }

  // Saves under this name, with the type of its extension, in the next save dialog.
  static void SaveAs(const std::string& path, const char* title) {
    static std::string name, expected;
    name = path;
    expected = title;
    ::SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR timer, DWORD) CALLBACK {
      const auto dialogs = support::WindowsOf("frmSave");
      if (dialogs.empty()) return;
      ::KillTimer(nullptr, timer);
      EXPECT_EQ(support::TextOf(dialogs[0]), expected);
      ::SendMessageA(dialogs[0], WM_SHOWWINDOW, FALSE, SW_PARENTCLOSING);  // as when its owner is minimised
      EXPECT_FALSE(::IsWindowVisible(dialogs[0]));
      const HWND type = support::ChildrenOf(dialogs[0], "ComboBox").back();
      ::SendMessageA(type, CB_SETCURSEL, name.ends_with("rtf") ? 1 : 0, 0);
      ::SendMessageA(dialogs[0], WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(type), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(type));
      ::SetWindowTextA(support::ChildrenOf(dialogs[0], "Edit").at(0), name.c_str());
      ::PostMessageA(support::ChildOf(dialogs[0], "Button", "&Save"), BM_CLICK, 0, 0);
    });
  }

  mainwindow::UserRoster roster;
  support::RecordingPort port;
  net::Messenger messenger{port};
  std::string selected;  // in the main window, as recipients
  OpenWindows windows{roster, {roster.lvUsers, [this] { return selected; }}, messenger};
};

}  // namespace conversation
