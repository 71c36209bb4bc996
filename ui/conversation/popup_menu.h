// mnuPop, the menu of an alert popup.
#pragma once

#include "res/pictures.h"
#include "ui/toolkit/menu/menu_items.h"

namespace conversation {

// In their own namespace: the menu of a chat window has commands with the same names.
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
static_assert(toolkit::IsSound(kPopupMenu));

}  // namespace conversation
