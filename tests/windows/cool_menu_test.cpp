// Owner-drawn menus in a real window. The tests send the messages that Windows would send, and check the results.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/globals.h"
#include "support/window_probe.h"
#include "ui/main/main_menu.h"
#include "ui/toolkit/menu/window_menu.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

using mainwindow::kMainMenu;

constexpr LRESULT kHostAnswer = 4711;

// Answers unhandled menu messages with a known number.
LRESULT CALLBACK HostProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  const bool menus = message == WM_MEASUREITEM || message == WM_DRAWITEM || message == WM_MENUCHAR;
  return menus ? kHostAnswer : ::DefWindowProcA(hwnd, message, wParam, lParam);
}

HWND MakeHost() {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = HostProcedure;
  windowClass.lpszClassName = "CoolMenuHost";
  ::RegisterClassA(&windowClass);
  return ::CreateWindowExA(0, "CoolMenuHost", "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 300, nullptr, nullptr, nullptr,
                           nullptr);
}

constexpr int kWidth = 200, kHeight = 30;

// The drawing of an item.
class Canvas {
 public:
  Canvas() { ::SelectObject(dc_.get(), bitmap_.get()); }
  HDC dc() const { return dc_.get(); }

  COLORREF AtRight() const { return ::GetPixel(dc(), kWidth - 1, 0); }

  // The number of pixels in the column of images and check marks that have one of the colours.
  int Count(const std::set<COLORREF>& colours) const {
    int count = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < Px(22_dp); ++x) count += colours.contains(::GetPixel(dc(), x, y));
    return count;
  }

 private:
  Bitmap bitmap_{::CreateBitmap(kWidth, kHeight, 1, 32, nullptr)};  // destroyed after the device context
  MemoryDc dc_{::CreateCompatibleDC(nullptr)};
};

class CoolMenuTest : public testing::Test {
 protected:
  CoolMenuTest() {
    bar->menuHelp = [this](const std::string& text) { helpTexts.push_back(text); };
    bar->Create(host, false);
    bar->DrawItems();
  }
  ~CoolMenuTest() override {
    bar.reset();
    ::DestroyWindow(host);
  }

  MENUITEMINFOA Info(unsigned id) const {
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_DATA | MIIM_SUBMENU;
    const auto place = FindItem(menu(), id);
    if (place) ::GetMenuItemInfoA(place->menu, static_cast<UINT>(place->position), TRUE, &info);
    return info;
  }
  bool OwnerDrawn(unsigned id) const { return (Info(id).fType & MFT_OWNERDRAW) != 0; }

  std::string Text(unsigned id) const {
    const auto place = FindItem(menu(), id);
    return place ? support::MenuText(place->menu, place->position) : "";
  }

  const CMyItemData& Data(unsigned id) const { return *cool().Items().Item(Info(id).dwItemData); }

  SIZE Measured(unsigned id) const {
    MEASUREITEMSTRUCT request{};
    request.CtlType = ODT_MENU;
    request.itemData = Info(id).dwItemData;
    EXPECT_EQ(::SendMessageA(host, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&request)), TRUE);
    return {static_cast<LONG>(request.itemWidth), static_cast<LONG>(request.itemHeight)};
  }

  Canvas Drawn(unsigned id, UINT state) const {
    Canvas canvas;
    DRAWITEMSTRUCT request{};
    request.CtlType = ODT_MENU;
    request.itemState = state;
    request.hDC = canvas.dc();
    request.rcItem = {0, 0, kWidth, kHeight};
    request.itemData = Info(id).dwItemData;
    EXPECT_EQ(::SendMessageA(host, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&request)), TRUE);
    return canvas;
  }

  LRESULT Key(unsigned subMenuId, char key) const {
    return ::SendMessageA(host, WM_MENUCHAR, MAKEWPARAM(key, MF_POPUP),
                          reinterpret_cast<LPARAM>(Info(subMenuId).hSubMenu));
  }

  void Highlight(unsigned id, UINT flags = 0) const {
    const auto place = FindItem(menu(), id);
    const UINT item = flags & MF_POPUP ? static_cast<UINT>(place->position) : id;
    ::SendMessageA(host, WM_MENUSELECT, MAKEWPARAM(item, flags | MF_HILITE), reinterpret_cast<LPARAM>(place->menu));
  }
  HMENU menu() const { return ::GetMenu(host); }
  WndCoolMenu& cool() const { return bar->Drawing(); }

  HWND host = MakeHost();
  std::unique_ptr<WindowMenu> bar = std::make_unique<WindowMenu>(kMainMenu, MenuKind::Bar);
  std::vector<std::string> helpTexts;
};

COLORREF MenuColour() { return ::GetSysColor(COLOR_MENU); }

TEST_F(CoolMenuTest, ConvertsTheTreeOnceAndRestoresIt) {
  ::CheckMenuItem(menu(), mainwindow::mnuStatBar, MF_CHECKED);
  const std::size_t count = std::size(kMainMenu) - 3;  // the system draws the items of the menu bar
  for (int i = 0; i < 2; ++i, cool().Convert()) EXPECT_EQ(cool().Items().Count(), count);
  for (const MenuRow& row : kMainMenu) {
    SCOPED_TRACE(row.caption.builtIn);
    EXPECT_EQ(OwnerDrawn(row.id), row.level > 0);
    EXPECT_EQ(Text(row.id), row.caption.builtIn) << "the original text is kept";
    if (row.level == 0) continue;
    EXPECT_EQ(Data(row.id).iButton, row.picture);
    EXPECT_EQ((Info(row.id).fType & MFT_SEPARATOR) != 0, row.caption.builtIn[0] == '-');
  }
  bar.reset();
  for (const MenuRow& row : kMainMenu) {
    SCOPED_TRACE(row.caption.builtIn);
    EXPECT_EQ(Text(row.id), RestoreCaption(ParseCaption(row.caption.builtIn)));
    EXPECT_EQ(Info(row.id).fType & (MFT_OWNERDRAW | MFT_SEPARATOR), 0u);
    EXPECT_EQ(Info(row.id).fState & MFS_DISABLED, 0u);
  }
  EXPECT_NE(Info(mainwindow::mnuStatBar).fState & MFS_CHECKED, 0u);
}

TEST_F(CoolMenuTest, HiddenItemsReappearInPlace) {
  const auto before = FindItem(menu(), mainwindow::mnuHide)->position;
  const std::size_t count = cool().Items().Count();
  for (const bool shown : {false, false, true, true}) {
    bar->SetShown(mainwindow::mnuShowMe, shown);
    EXPECT_EQ(cool().Items().Count(), count - (shown ? 0 : 1));
    EXPECT_EQ(FindItem(menu(), mainwindow::mnuHide)->position, before - (shown ? 0 : 1));
  }
  EXPECT_EQ(Data(mainwindow::mnuShowMe).sMenuText, "Show &Main Window");
  for (const bool shown : {false, true}) bar->SetShown(mainwindow::mnuStat, shown);
  EXPECT_EQ(FindItem(menu(), mainwindow::mnuStat)->position, 0) << "first of its sub-menu";
  EXPECT_EQ(FindItem(menu(), mainwindow::mnuStat)->menu, Info(mainwindow::mnuSetStatus).hSubMenu);
}

TEST_F(CoolMenuTest, DrawsTheStateOfTheRequest) {
  EXPECT_GT(Measured(mainwindow::mnuShowMe).cx, Measured(mainwindow::mnuHide).cx) << "a longer caption";
  EXPECT_GT(Measured(mainwindow::mnuHide).cy, Px(16_dp));
  EXPECT_EQ(Drawn(mainwindow::mnuHide, 0).AtRight(), MenuColour());
  EXPECT_EQ(Drawn(mainwindow::mnuHide, ODS_SELECTED).AtRight(), ::GetSysColor(COLOR_HIGHLIGHT));
  EXPECT_EQ(Drawn(mainwindow::mnuPopSep1, ODS_SELECTED).AtRight(), MenuColour()) << "a heading is never highlighted";

  const int all = Px(22_dp) * kHeight;
  EXPECT_EQ(Drawn(mainwindow::mnuStat, 0).Count({MenuColour()}), all);
  for (const unsigned id : {mainwindow::mnuStat + 0u, mainwindow::mnuStatBar + 0u})
    EXPECT_LT(Drawn(id, ODS_CHECKED).Count({MenuColour()}), all - 20);
  const auto mark = [this](unsigned id) { return Drawn(id, ODS_CHECKED).Count({::GetSysColor(COLOR_WINDOWTEXT)}); };
  EXPECT_NE(mark(mainwindow::mnuStat), mark(mainwindow::mnuStatBar));

  const std::set<COLORREF> grey{MenuColour(), ::GetSysColor(COLOR_3DSHADOW), ::GetSysColor(COLOR_3DHIGHLIGHT)};
  EXPECT_LT(Drawn(mainwindow::mnuClose, 0).Count(grey), all - 20);
  EXPECT_EQ(Drawn(mainwindow::mnuClose, ODS_GRAYED | ODS_DISABLED).Count(grey), all);
  EXPECT_LT(Drawn(mainwindow::mnuClose, ODS_GRAYED | ODS_DISABLED).Count({MenuColour()}), all - 20);
}

TEST_F(CoolMenuTest, HandlesMnemonicsAndReportsHelpTexts) {
  EXPECT_EQ(Key(mainwindow::mnuMove, 'e'), MAKELRESULT(2, MNC_EXECUTE));
  EXPECT_EQ(Key(mainwindow::mnuPop, 'z'), kHostAnswer);

  Highlight(mainwindow::mnuStatBar);
  Highlight(mainwindow::mnuMove, MF_POPUP);
  Highlight(mainwindow::mnuShowMe);
  ::SendMessageA(host, WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);  // the menu has closed
  EXPECT_EQ(helpTexts, (std::vector<std::string>{"Show/hide this bar", "Move this window", "", ""}));
  cool().help.MenuHelp = [this](const std::string&) { bar.reset(); };
  Highlight(mainwindow::mnuStatBar);
  EXPECT_FALSE(OwnerDrawn(mainwindow::mnuStatBar)) << "it cleans up even when its own event destroys it";
}

}  // namespace
}  // namespace toolkit
