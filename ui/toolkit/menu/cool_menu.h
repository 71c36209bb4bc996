// Owner-drawn menus of one window: draws the items with pictures, marks and section headings, reports the help text of
// the highlighted item, and handles mnemonics.
//
// Subclasses the window from Attach to its destruction, which may be before or after that of the window, and then
// restores the authored captions of the menus that still exist. While it is not attached (safe mode) it does not change
// menus.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "ui/toolkit/menu/cool_menu_draw.h"
#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {

// Reports the help text of the highlighted item to the window.
struct HelpCallBack {
  // Called with the help text, empty when the item has none or the menu has closed.
  std::function<void(const std::string& text)> MenuHelp;
};

class WndCoolMenu {
 public:
  WndCoolMenu() = default;
  WndCoolMenu(const WndCoolMenu&) = delete;
  WndCoolMenu& operator=(const WndCoolMenu&) = delete;
  ~WndCoolMenu();

  // Call it once, for a window without another WndCoolMenu.
  void Attach(HWND host);

  // Used when menus are converted; later changes take effect with ChangeCaptions.
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

  // The index of the open head, -1 when none is.
  int MainPopedIndex() const { return openHead_; }

  // Converts items added since the last conversion, and drops the data of removed ones.
  void Convert();

  // Restores the menus to their authored form, runs `change`, and converts them again.
  void ChangeCaptions(const std::function<void()>& change);

  // Restores the authored captions of a menu and forgets it.
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
  void ReportHelp(WPARAM wParam, HMENU menu);
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
