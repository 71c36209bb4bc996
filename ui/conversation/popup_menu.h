// mnuPop, the menu of an alert popup.
#pragma once

#include <windows.h>

namespace conversation {

enum PopupCommand : unsigned {
  mnuPopSep1 = 1,
  mnuExportT,
  mnuExportC,
  mnuReply,
  mnuRepSep1,
  mnuReplySender,
  mnuReplyAll,
  mnuLive,
  mnuBlock,
};

// Shows the menu below (or, at the screen's edge, beside) a button, screen pixels. The chosen command, 0 for none. Made
// anew each time, so that it speaks the language of the day and closed popups keep nothing.
unsigned ShowPopupMenu(HWND owner, const RECT& button);

}  // namespace conversation
