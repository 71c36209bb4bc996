// Owner-drawn menus for one window: hand it the window and its menus, and every item is drawn with its picture, its
// mark or as a section head, tells its help text while it is highlighted, and answers its mnemonic.
//
// The object stands between Windows and the window's procedure from Attach to its end; it may end before or after the
// window does. At its end the menus that still exist have their authored captions back. While it is not attached (safe
// mode) it leaves menus as they are.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "ui/toolkit/menu/cool_menu_draw.h"
#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {

// How an owner-drawn menu tells its window which help text belongs to the highlighted item.
struct HelpCallBack {
  // The help text, empty when the item has none or the menu has closed.
  std::function<void(const std::string& text)> MenuHelp;
};

class WndCoolMenu {
 public:
  WndCoolMenu() = default;
  WndCoolMenu(const WndCoolMenu&) = delete;
  WndCoolMenu& operator=(const WndCoolMenu&) = delete;
  ~WndCoolMenu();

  // Once, with a window that has no other WndCoolMenu.
  void Attach(HWND host);

  // Read when menus are converted; a later change shows after ChangeCaptions.
  MenuLook look;
  ImageTags imageTags;      // which images of look.ilHandle belong to which captions
  bool SCMainMenu = false;  // the menu bar is owner-drawn too
  HelpCallBack help;

  HWND hWnd() const { return host_; }
  WNDPROC PrevProc() const { return prevProc_; }

  // Adds each drop-down of the window's menu bar.
  void AddMenuBar();

  // Adds and converts a drop-down or pop-up menu.
  void AddMenuHead(HMENU menu);
  int CountMenuHeads() const { return static_cast<int>(heads_.size()); }
  HMENU GetMenuHead(int index) const;  // null for an index out of range

  // Which head is open, -1 when none is.
  int MainPopedIndex() const { return openHead_; }

  // Converts what was added to the menus since they were converted, and forgets items that are gone.
  void Convert();

  // Runs `change` with the menus in their authored form, and converts them anew.
  void ChangeCaptions(const std::function<void()>& change);

  // Gives one menu back: captions as authored, no longer a head.
  void Restore(HMENU menu);

  HFONT MenuFont() const { return fonts_.MenuFont.get(); }
  HFONT MenuFontSep() const { return fonts_.MenuFontSep.get(); }
  const CMyItemDatas& Items() const { return items_; }

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  bool Answer(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
  bool Measure(MEASUREITEMSTRUCT& request);
  bool Draw(const DRAWITEMSTRUCT& request);
  void NoteOpened(HMENU menu);
  void TellHelp(WPARAM wParam, HMENU menu);
  bool AnswerKey(WPARAM wParam, HMENU menu, LRESULT& result) const;

  void ForgetMissing();
  void RestoreAll();
  void RenewFonts();
  std::vector<HMENU> Roots() const;
  void Unhook();

  HWND host_ = nullptr;
  WNDPROC prevProc_ = nullptr;
  std::vector<HMENU> heads_;
  int openHead_ = -1;
  CMyItemDatas items_;
  MenuFonts fonts_;
};

}  // namespace toolkit
