// The composer: writes an alert and sends it to selected users or to everybody.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/roster.h"
#include "net/messenger.h"
#include "ui/conversation/participants.h"
#include "ui/toolkit/rows_view.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/window.h"

namespace conversation {

class FrmCom : public toolkit::Window {
 public:
  FrmCom(const core::Roster& roster, net::Messenger& messenger) : messenger_(messenger), recipients_(roster) {}

  // Creates the window, hidden, centred in the work area. Runs pending events.
  void Load();

  // Adds recipients, see Recipients.
  void AddRecipient(std::string_view name);
  void AddRecipients(std::string_view list);
  bool IsRecipient(std::string_view name) const { return recipients_.IsRecipient(name); }
  void RefreshRows();

  // Shows it in front, with the focus in the text.
  void ShowForTyping();

  // True from the sending until the window is destroyed: it takes no more recipients.
  bool Sending() const { return sending_; }

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool Translate(MSG& message) override;
  void CreateControls();
  void LayOut() override;
  void RowsChanged();
  std::span<const toolkit::Command> Commands() const override;
  void Close() { ::DestroyWindow(hwnd()); }
  void Send();
  void SendToAll(const std::string& text);
  void SendToEach(const std::string& text);

  net::Messenger& messenger_;
  Recipients recipients_;
  toolkit::Toolbar TB;
  toolkit::RowsView lvUsers;
  HWND txtMsg = nullptr;
  HWND lblCap[2] = {};
  bool sending_ = false;
};

}  // namespace conversation
