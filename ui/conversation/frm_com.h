// The composer: an alert is written here and sent to chosen users or to everybody.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/roster.h"
#include "net/messenger.h"
#include "ui/conversation/recipients.h"
#include "ui/toolkit/rows_view.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/window.h"

namespace conversation {

class FrmCom : public toolkit::Window {
 public:
  FrmCom(const core::Roster& roster, net::Messenger& messenger) : messenger_(messenger), recipients_(roster) {}

  // Creates the window, hidden, in the middle of the work area. Lets pending events run once.
  void Load();

  // Recipients, as Recipients takes them.
  void AddRecipient(std::string_view name);
  void AddRecipients(std::string_view list);
  bool IsRecipient(std::string_view name) const { return recipients_.IsRecipient(name); }
  void RefreshRows();

  // In front, with the keyboard in the text.
  void ShowForTyping();

  // True from the moment a text is on its way until the window is gone: it takes no more recipients.
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
