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
    support::SetLanguage("English");
    core::gCurName = "me";
    core::gSound = "(S)";
    core::gPopPos = 4;
    core::gAlertHeight = 0;
    roster.ClearlvUsers();
    roster.AddUser("anna");
    roster.SetColour("anna", 0x0000FF);
  }

  mainwindow::UserRoster roster;
  support::RecordingPort port;
  net::Messenger messenger{port};
  std::string selected;  // in the main window, as recipients
  OpenWindows windows{roster, {roster.lvUsers, [this] { return selected; }}, messenger};
};

}  // namespace conversation
