// The alert popup: a small window that slides into view in a corner of the screen and flashes for three seconds. It
// never takes the focus, and stays until the user closes it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "res/pictures.h"
#include "ui/conversation/alert_queue.h"
#include "ui/conversation/popup_controls.h"
#include "ui/conversation/popup_layout.h"
#include "ui/toolkit/menu/window_menu.h"
#include "ui/toolkit/window.h"

namespace conversation {

// The commands of mnuPop, the popup's menu. In their own namespace: the menu of a chat window has commands with the
// same names.
namespace popupmenu {

enum Id : unsigned {
  mnuPopSep1 = 200,
  mnuExportT,
  mnuExportC,
  mnuReply,
  mnuRepSep1,
  mnuReplySender,
  mnuReplyAll,
  mnuLive,
  mnuBlock,
};

}  // namespace popupmenu

inline constexpr toolkit::MenuRow kPopupMenu[] = {
    {0, popupmenu::mnuPopSep1, {5101, "-Options"}},
    {0, popupmenu::mnuExportT, {5102, "&Export To Text File"}, res::kMenuExportText},
    {0, popupmenu::mnuExportC, {5103, "&Export To Clipboard"}, res::kMenuExportClipboard},
    {0, popupmenu::mnuReply, {5104, "&Reply"}, res::kMenuReply},
    {1, popupmenu::mnuRepSep1, {5105, "-To Who?"}},
    {1, popupmenu::mnuReplySender, {5106, "To &Sender"}, res::kMenuReplySender},
    {1, popupmenu::mnuReplyAll, {5107, "To &All"}, res::kMenuReplyAll},
    {0, popupmenu::mnuLive, {5108, "&Start Live Chat"}, res::kMenuLiveChat},
    {0, popupmenu::mnuBlock, {5109, "&Block Sender"}, res::kMenuBlock},
};
static_assert(toolkit::IsWellFormed(kPopupMenu));

// The actions of the popup's menu.
struct PopupCommands {
  // True when the composer, or a chat window with the alert's text, was opened. Otherwise, and on an exception, the
  // popup stays.
  std::function<bool(const std::string& recipients)> openComposer;
  std::function<bool(const Alert& alert)> startLiveChat;
  std::function<void(const std::string& sender)> blockSender;
};

class FrmPop : public toolkit::Window {
 public:
  // `colour` of the text, in the form of PaintColour.
  FrmPop(Alert alert, std::int32_t colour, PopupCommands commands);

  // Creates, places and shows it, and starts its animation. Throws core::Err::OutOfMemory when it cannot be created.
  void Open();

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool Translate(MSG& message) override;
  void CreateControls();
  void Build();
  void PlaceAndShow();
  void FitToScreen();
  Point StartPosition() const;
  std::optional<Twips> NextTopAfter(Twips top) const;
  void MoveTo(Point position);
  void aniTimer_Timer();
  void Timer_Timer();
  void Draw(const DRAWITEMSTRUCT& request) const;
  void DrawPicture(const DRAWITEMSTRUCT& request) const;
  void PaintFrame();
  std::span<const toolkit::Command> Commands() const override;
  void lblDrop_Click();
  void mnuExportT_Click();
  void mnuExportC_Click();
  void mnuReplySender_Click();
  void mnuReplyAll_Click();
  void mnuBlock_Click();
  void CloseIfOpened(const std::function<bool()>& open);
  void Answer(const std::string& recipients);
  void mnuLive_Click();
  void Close() { ::DestroyWindow(hwnd()); }

  const Alert alert_;
  const std::int32_t colour_;
  const PopupCommands commands_;

  toolkit::WindowMenu mnuPop{kPopupMenu, toolkit::MenuKind::PopUp};
  MessageLabel lblMsg;
  GlyphButton lblClose, lblDrop;
  HWND picImg = nullptr, lblSender = nullptr;

  // The settings at the time of opening: later changes do not affect open popups.
  const std::optional<Corner> corner_;
  const int alertHeight_;
  Point position_{};
  Size size_{};
  int flashes_ = kFlashes;  // still to do
  bool lit_ = false;
};

}  // namespace conversation
