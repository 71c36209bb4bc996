// Owner-drawn menus in a real window: the requests that Windows sends are sent by hand, so that each answer can be
// seen.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/globals.h"
#include "tests/windows/leftovers.h"
#include "tests/windows/window_probe.h"
#include "ui/main/main_menu.h"
#include "ui/toolkit/menu/window_menu.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

using mainwindow::kMainMenu;

constexpr LRESULT kHostAnswer = 4711;

// Answers what it gets to see of menus with a number of its own.
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

// A picture to draw on, of one colour at first.
class Canvas {
 public:
  static constexpr int kWidth = 200, kHeight = 30;

  Canvas() : dc_(::CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, kWidth, -kHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    bitmap_ = Bitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, nullptr, nullptr, 0));
    ::SelectObject(dc_.get(), bitmap_.get());
  }
  HDC dc() const { return dc_.get(); }

  COLORREF At(int x, int y) const { return ::GetPixel(dc(), x, y); }

  // How many pixels from column `left` up to `right` have the colour.
  int Count(COLORREF colour, int left = 0, int right = kWidth) const {
    int count = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = left; x < right; ++x) count += At(x, y) == colour;
    return count;
  }

 private:
  Bitmap bitmap_;  // goes after the device context that it is selected into
  MemoryDc dc_;
};

class CoolMenuTest : public testing::Test {
 protected:
  CoolMenuTest() {
    bar->menuHelp = [this](const std::string& text) { told.push_back(text); };
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

  LRESULT Measure(ULONG_PTR key, SIZE& size) const {
    MEASUREITEMSTRUCT request{};
    request.CtlType = ODT_MENU;
    request.itemData = key;
    const LRESULT answer = ::SendMessageA(host, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&request));
    size = {static_cast<LONG>(request.itemWidth), static_cast<LONG>(request.itemHeight)};
    return answer;
  }
  SIZE Measured(unsigned id) const {
    SIZE size{};
    EXPECT_EQ(Measure(Info(id).dwItemData, size), TRUE);
    return size;
  }

  LRESULT Draw(const Canvas& canvas, ULONG_PTR key, UINT state) const {
    DRAWITEMSTRUCT request{};
    request.CtlType = ODT_MENU;
    request.itemState = state;
    request.hDC = canvas.dc();
    request.rcItem = {0, 0, Canvas::kWidth, Canvas::kHeight};
    request.itemData = key;
    return ::SendMessageA(host, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&request));
  }
  Canvas Drawn(unsigned id, UINT state) const {
    Canvas canvas;
    EXPECT_EQ(Draw(canvas, Info(id).dwItemData, state), TRUE);
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
  void CloseMenu() const { ::SendMessageA(host, WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0); }

  HMENU menu() const { return ::GetMenu(host); }
  WndCoolMenu& cool() const { return bar->Drawing(); }

  HWND host = MakeHost();
  std::unique_ptr<WindowMenu> bar = std::make_unique<WindowMenu>(kMainMenu, MenuKind::Bar);
  std::vector<std::string> told;
};

COLORREF MenuColour() { return ::GetSysColor(COLOR_MENU); }

TEST_F(CoolMenuTest, ConvertsTheTreeOnceAndGivesItBack) {
  ::CheckMenuItem(menu(), mainwindow::mnuStatBar, MF_CHECKED);
  const std::size_t count = std::size(kMainMenu) - 3;  // the heads of the bar stay the system's
  EXPECT_EQ(cool().Items().Count(), count);
  cool().Convert();
  EXPECT_EQ(cool().Items().Count(), count);
  for (const MenuRow& row : kMainMenu) {
    EXPECT_EQ(OwnerDrawn(row.id), row.level > 0) << row.caption.builtIn;
    EXPECT_EQ(Text(row.id), row.caption.builtIn) << "the authored text stays behind the drawing";
    if (row.level == 0) continue;
    EXPECT_EQ(Data(row.id).iButton, row.picture) << row.caption.builtIn;
    EXPECT_EQ(Data(row.id).bTrueSub, Info(row.id).hSubMenu != nullptr) << row.caption.builtIn;
    EXPECT_EQ((Info(row.id).fType & MFT_SEPARATOR) != 0, row.caption.builtIn[0] == '-') << row.caption.builtIn;
  }
  const HMENU first = cool().GetMenuHead(0);
  EXPECT_EQ(cool().CountMenuHeads(), 3);
  EXPECT_EQ(cool().GetMenuHead(3), nullptr);
  cool().Restore(first);
  EXPECT_FALSE(OwnerDrawn(mainwindow::mnuStat));
  EXPECT_TRUE(OwnerDrawn(mainwindow::mnuStatBar));
  bar.reset();
  for (const MenuRow& row : kMainMenu) {
    EXPECT_EQ(Text(row.id), RestoreCaption(ParseCaption(row.caption.builtIn)));
    EXPECT_EQ(Info(row.id).fType & (MFT_OWNERDRAW | MFT_SEPARATOR), 0u) << row.caption.builtIn;
    EXPECT_EQ(Info(row.id).dwItemData, 0u) << row.caption.builtIn;
    EXPECT_EQ(Info(row.id).fState & MFS_DISABLED, 0u) << row.caption.builtIn;
  }
  EXPECT_NE(Info(mainwindow::mnuStatBar).fState & MFS_CHECKED, 0u);
}

TEST_F(CoolMenuTest, NewCaptionsAreConvertedAnew) {
  cool().ChangeCaptions([this] {
    EXPECT_EQ(cool().Items().Count(), 0u);
    ::ModifyMenuA(menu(), mainwindow::mnuHide, MF_BYCOMMAND | MF_STRING, mainwindow::mnuHide, "|Fenster weg|&Weg");
  });
  EXPECT_EQ(Data(mainwindow::mnuHide).sMenuHelp, "Fenster weg");
  EXPECT_EQ(Data(mainwindow::mnuHide).iButton, -1) << "its picture goes by the caption";
}

TEST_F(CoolMenuTest, HiddenItemsComeBackInTheirPlace) {
  const auto before = FindItem(menu(), mainwindow::mnuHide)->position;
  const std::size_t count = cool().Items().Count();
  for (int i = 0; i < 3; ++i) {
    for (const bool shown : {false, false, true, true}) {
      bar->SetShown(mainwindow::mnuShowMe, shown);
      EXPECT_EQ(cool().Items().Count(), count - (shown ? 0 : 1));
      EXPECT_EQ(FindItem(menu(), mainwindow::mnuHide)->position, before - (shown ? 0 : 1));
    }
  }
  EXPECT_EQ(Data(mainwindow::mnuShowMe).sMenuText, "Show &Main Window");
  bar->SetShown(mainwindow::mnuStat, false);
  bar->SetShown(mainwindow::mnuStat, true);
  EXPECT_EQ(FindItem(menu(), mainwindow::mnuStat)->position, 0) << "first of its sub-menu";
  EXPECT_EQ(FindItem(menu(), mainwindow::mnuStat)->menu, Info(mainwindow::mnuSetStatus).hSubMenu);
}

TEST_F(CoolMenuTest, MeasuresCaptionAndImage) {
  const SIZE size = Measured(mainwindow::mnuHide);
  EXPECT_GT(size.cx, 2 * Px(16_dp));
  EXPECT_GT(Measured(mainwindow::mnuShowMe).cx, size.cx) << "a longer caption";
  EXPECT_GE(size.cy, Px(16_dp) + 2 * Px(2_dp));
  EXPECT_LT(Measured(mainwindow::mnuPopSep1).cy, size.cy);
}

TEST_F(CoolMenuTest, LeavesForeignItemsToTheWindow) {
  const auto stale = Info(mainwindow::mnuHide).dwItemData;
  cool().ChangeCaptions([] {});
  for (const ULONG_PTR key : {ULONG_PTR{0}, ULONG_PTR{1}, stale, ~ULONG_PTR{0}}) {
    SIZE size{};
    EXPECT_EQ(Measure(key, size), kHostAnswer);
    EXPECT_EQ(Draw(Canvas(), key, 0), kHostAnswer);
  }
  ::AppendMenuA(cool().GetMenuHead(0), MF_OWNERDRAW, 2, reinterpret_cast<const char*>(stale));
  cool().Convert();
  EXPECT_EQ(Info(2).dwItemData, stale) << "an item that somebody else draws is not converted";
}

TEST_F(CoolMenuTest, DrawsTheStateOfTheRequest) {
  const COLORREF lit = ::GetSysColor(COLOR_HIGHLIGHT);
  const int right = Canvas::kWidth - 1;
  EXPECT_EQ(Drawn(mainwindow::mnuHide, 0).At(right, 0), MenuColour());
  EXPECT_EQ(Drawn(mainwindow::mnuHide, ODS_SELECTED).At(right, 0), lit);
  EXPECT_EQ(Drawn(mainwindow::mnuPopSep1, ODS_SELECTED).At(right, 0), MenuColour()) << "a head is never highlighted";

  const int left = Px(22_dp);  // the column of images and marks
  const int all = left * Canvas::kHeight;
  EXPECT_EQ(Drawn(mainwindow::mnuStat, 0).Count(MenuColour(), 0, left), all);
  for (const bool complex : {true, false}) {
    cool().look.ComplexChecks = complex;
    EXPECT_LT(Drawn(mainwindow::mnuStat, ODS_CHECKED).Count(MenuColour(), 0, left), all - 20);
    EXPECT_LT(Drawn(mainwindow::mnuStatBar, ODS_CHECKED).Count(MenuColour(), 0, left), all - 20);
  }
  EXPECT_NE(Drawn(mainwindow::mnuStat, ODS_CHECKED).Count(::GetSysColor(COLOR_WINDOWTEXT), 0, left),
            Drawn(mainwindow::mnuStatBar, ODS_CHECKED).Count(::GetSysColor(COLOR_WINDOWTEXT), 0, left));

  const int below = Canvas::kHeight / 2 + Px(20_dp) / 2 - 1;
  EXPECT_EQ(Drawn(mainwindow::mnuClose, ODS_SELECTED).At(Px(4_dp), below), ::GetSysColor(COLOR_3DSHADOW)) << "raised";
  cool().look.FullSelect = false;
  EXPECT_EQ(Drawn(mainwindow::mnuStat, ODS_SELECTED).At(1, 1), MenuColour());
  EXPECT_EQ(Drawn(mainwindow::mnuStat, ODS_SELECTED).At(right, 0), lit);
}

TEST_F(CoolMenuTest, DisabledImagesAreEmbossed) {
  const int left = Px(22_dp);
  const auto distinct = [left](const Canvas& canvas) {
    const std::set<COLORREF> plain{MenuColour(), ::GetSysColor(COLOR_3DSHADOW), ::GetSysColor(COLOR_3DHIGHLIGHT)};
    int count = left * Canvas::kHeight;
    for (const COLORREF colour : plain) count -= canvas.Count(colour, 0, left);
    return count;
  };
  const Canvas disabled = Drawn(mainwindow::mnuClose, ODS_GRAYED | ODS_DISABLED);
  EXPECT_EQ(distinct(disabled), 0);
  EXPECT_GT(disabled.Count(::GetSysColor(COLOR_3DSHADOW), 0, left), 20);
  EXPECT_GT(distinct(Drawn(mainwindow::mnuClose, 0)), 20);
  cool().look.ColorEmbossed = false;
  EXPECT_GT(distinct(Drawn(mainwindow::mnuClose, ODS_GRAYED | ODS_DISABLED)), 20);
}

TEST_F(CoolMenuTest, AnswersMnemonics) {
  EXPECT_EQ(Key(mainwindow::mnuPop, 'O'), MAKELRESULT(FindItem(menu(), mainwindow::mnuOpts)->position, MNC_EXECUTE));
  EXPECT_EQ(Key(mainwindow::mnuMove, 'e'), MAKELRESULT(2, MNC_EXECUTE));
  EXPECT_EQ(Key(mainwindow::mnuWindow, 's'), MAKELRESULT(1, MNC_EXECUTE)) << "by its first letter";
  EXPECT_EQ(Key(mainwindow::mnuPop, 'z'), kHostAnswer);

  const HMENU links = Info(mainwindow::mnuWeb).hSubMenu;
  ::AppendMenuA(links, MF_STRING, 3, "Second &Home");
  cool().Convert();
  const auto home = FindItem(menu(), mainwindow::mnuWp)->position, second = FindItem(menu(), 3)->position;
  EXPECT_EQ(Key(mainwindow::mnuWeb, 'h'), MAKELRESULT(home, MNC_SELECT));
  MENUITEMINFOA highlighted = Info(mainwindow::mnuWp);
  highlighted.fState = MFS_HILITE;
  ::SetMenuItemInfoA(links, static_cast<UINT>(home), TRUE, &highlighted);
  EXPECT_EQ(Key(mainwindow::mnuWeb, 'h'), MAKELRESULT(second, MNC_SELECT));
}

TEST_F(CoolMenuTest, TellsHelpTexts) {
  ::SendMessageA(host, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(cool().GetMenuHead(1)), 1);
  EXPECT_EQ(cool().MainPopedIndex(), 1);
  Highlight(mainwindow::mnuStatBar);
  Highlight(mainwindow::mnuMove, MF_POPUP);
  Highlight(mainwindow::mnuMoveSub + 3);
  Highlight(mainwindow::mnuShowMe);
  CloseMenu();
  EXPECT_EQ(cool().MainPopedIndex(), -1);
  EXPECT_EQ(told, (std::vector<std::string>{"Show/hide this bar", "Move this window", "Move window to bottom right", "",
                                            ""}));
  cool().help.MenuHelp = [](const std::string&) { throw std::runtime_error("no status line"); };
  Highlight(mainwindow::mnuStatBar);
  cool().help.MenuHelp = [this](const std::string&) { bar.reset(); };
  Highlight(mainwindow::mnuStatBar);
  EXPECT_FALSE(OwnerDrawn(mainwindow::mnuStatBar)) << "even ended by its own event it cleans up";
}

WNDPROC beforeLater = nullptr;
LRESULT CALLBACK LaterProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  return ::CallWindowProcA(beforeLater, hwnd, message, wParam, lParam);
}

TEST_F(CoolMenuTest, EndsBeforeOrAfterTheWindow) {
  const auto procedure = [this] { return reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(host, GWLP_WNDPROC)); };
  EXPECT_EQ(cool().PrevProc(), HostProcedure);
  EXPECT_NE(procedure(), HostProcedure);
  bar.reset();
  EXPECT_EQ(procedure(), HostProcedure);

  bar = std::make_unique<WindowMenu>(kMainMenu, MenuKind::Bar);
  bar->Create(host, false);
  bar->DrawItems();
  beforeLater = procedure();
  ::SetWindowLongPtrA(host, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(LaterProcedure));
  bar.reset();
  EXPECT_EQ(procedure(), LaterProcedure) << "a later hook stays";
  EXPECT_EQ(Key(mainwindow::mnuPop, 'o'), kHostAnswer) << "and still reaches the window's own procedure";

  const HWND other = MakeHost();
  WindowMenu survivor(kMainMenu, MenuKind::PopUp);
  survivor.Create(other, false);
  survivor.DrawItems();
  ::DestroyWindow(other);
  EXPECT_EQ(survivor.Drawing().hWnd(), nullptr);
  survivor.ItemsChanged();
}

TEST_F(CoolMenuTest, NothingGrows) {
  const auto round = [this] {
    bar->SetCaptions(false);
    Drawn(mainwindow::mnuStat, ODS_CHECKED | ODS_SELECTED);
    Drawn(mainwindow::mnuClose, ODS_DISABLED);
    Drawn(mainwindow::mnuPopSep0, 0);
    Measured(mainwindow::mnuHide);
  };
  support::ExpectNothingLeft(200, round);
  EXPECT_EQ(cool().Items().Count(), std::size(kMainMenu) - 3);
}

}  // namespace
}  // namespace toolkit
