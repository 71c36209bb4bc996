// The menus of the main window. Their first one is also the menu of the notification icon.
#pragma once

#include <array>

#include "res/pictures.h"
#include "ui/toolkit/menu/menu_items.h"

namespace mainwindow {

// Every item has an id, headings and sub-menus too; the arrays have consecutive ones.
enum CommandId : unsigned {
  tbAlert = 100,
  tbChat,
  tbBlock,
  mnuPop = 1000,
  mnuPopSep0,
  mnuChatAll,
  mnuSndAll,
  mnuPopSep1,
  mnuSetStatus,
  mnuOpts,
  mnuPopSep2,
  mnuShowMe,
  mnuHide,
  mnuClose,
  mnuWindow,
  mnuViewSep1,
  mnuStatBar,
  mnuWinSep1,
  mnuMove,
  mnuHelp,
  mnuHelpSep1,
  mnuAbout,
  mnuWeb,
  mnuWebSep1,
  mnuStat = 1100,     // + state 0 to 2
  mnuMoveSub = 1110,  // + corner 0 to 3
  mnuWp = 1120,       // + link 0 to 5
};

inline constexpr unsigned kStates = 3, kCorners = 4, kLinks = 6;

inline constexpr toolkit::MenuRow kMainMenu[] = {
    {0, mnuPop, {1101, "&Quillon"}},
    {1, mnuPopSep0, {1102, "-Quillon Alerter"}},
    {1, mnuChatAll, {1103, "|Start A Conversation with All|Start &Live Chat With All"}, res::kMenuChatAll},
    {1, mnuSndAll, {1104, "|Send an alert to every one|Send &Alert To All"}, res::kMenuAlert},
    {1, mnuPopSep1, {1105, "-Configuration"}},
    {1, mnuSetStatus, {1106, "|Set User Status|&Set Status"}, res::kMenuSetStatus},
    {2, mnuStat + 0, {8203, "*|Receive chat and alerts|Available"}, toolkit::kNoPicture, 8206},
    {2, mnuStat + 1, {8204, "*|Receive alerts only|Alerts Only"}, toolkit::kNoPicture, 8207},
    {2, mnuStat + 2, {8205, "*|Receive nothing|Do Not Disturb"}, toolkit::kNoPicture, 8208},
    {1, mnuOpts, {1107, "|Show options window|&Options..."}, res::kMenuOptions},
    {1, mnuPopSep2, {1108, "-Misk"}},
    {1, mnuShowMe, {1109, "||Show &Main Window"}, res::kMenuShowMain},
    {1, mnuHide, {1110, "|Hide this window|&Hide"}, res::kMenuHide},
    {1, mnuClose, {1111, "|Close Quillon|&Close"}, res::kMenuClose},
    {0, mnuWindow, {1112, "&View"}},
    {1, mnuViewSep1, {1113, "-View Options"}},
    {1, mnuStatBar, {1114, "#|Show/hide this bar|Status Bar"}},
    {1, mnuWinSep1, {1115, "-Window"}},
    {1, mnuMove, {1116, "|Move this window|&Move"}, res::kMenuMove},
    {2, mnuMoveSub + 0, {1117, "|Move window to top left|Top &Left"}, res::kMenuTopLeft},
    {2, mnuMoveSub + 1, {1118, "|Move window to top right|Top &Right"}, res::kMenuTopRight},
    {2, mnuMoveSub + 2, {1119, "|Move window to bottom left|Bottom L&eft"}, res::kMenuBottomLeft},
    {2, mnuMoveSub + 3, {1120, "|Move window to bottom right|Bottom R&ight"}, res::kMenuBottomRight},
    {0, mnuHelp, {1121, "&Help"}},
    {1, mnuHelpSep1, {1122, "-Information"}},
    {1, mnuAbout, {1123, "|About Quillon|A&bout"}, res::kMenuAbout},
    {1, mnuWeb, {1124, "|Links to our web sight|On The &Web"}, res::kMenuWeb},
    {2, mnuWebSep1, {1125, "-Hyperlinks"}},
    {2, mnuWp + 0, {1202, "|Open our web site|&Home Page"}, res::kMenuWeb},
    {2, mnuWp + 1, {1203, "|Open the help pages|Help &Pages"}, res::kMenuWeb},
    {2, mnuWp + 2, {1204, "|Look for a newer version|&Updates"}, res::kMenuWeb},
    {2, mnuWp + 3, {1205, "|Report a bug|&Bug Report"}, res::kMenuWeb},
    {2, mnuWp + 4, {1206, "|Send us your opinion|&Feedback"}, res::kMenuWeb},
    {2, mnuWp + 5, {1207, "|Write to us|&Mail"}, res::kMenuWeb},
};
static_assert(toolkit::IsWellFormed(kMainMenu));

// Where the maker can be reached, in the order of the links in the help menu.
inline constexpr std::array<const char*, 6> kWebLinks{
    "https://www.vextant.example/quillon/",          "https://www.vextant.example/quillon/help/",
    "https://www.vextant.example/quillon/update/",   "https://www.vextant.example/quillon/bugs/",
    "https://www.vextant.example/quillon/feedback/", "mailto:support@vextant.example",
};

}  // namespace mainwindow
