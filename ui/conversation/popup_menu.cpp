#include "ui/conversation/popup_menu.h"

#include "core/globals.h"
#include "res/pictures.h"
#include "ui/toolkit/menu/cool_menu.h"
#include "ui/toolkit/menu/menu_builder.h"
#include "ui/toolkit/pictures.h"

namespace conversation {
namespace {

using toolkit::MenuStyle;

constexpr toolkit::MenuRow kRows[] = {
    {0, mnuPopSep1, 5101, "-Options"},
    {0, mnuExportT, 5102, "&Export To Text File", res::kMenuExportText},
    {0, mnuExportC, 5103, "&Export To Clipboard", res::kMenuExportClipboard},
    {0, mnuReply, 5104, "&Reply", res::kMenuReply},
    {1, mnuRepSep1, 5105, "-To Who?"},
    {1, mnuReplySender, 5106, "To &Sender", res::kMenuReplySender},
    {1, mnuReplyAll, 5107, "To &All", res::kMenuReplyAll},
    {0, mnuLive, 5108, "&Start Live Chat", res::kMenuLiveChat},
    {0, mnuBlock, 5109, "&Block Sender", res::kMenuBlock},
};
static_assert(toolkit::IsSound(kRows));

// Gives the menu its drawing for as long as it is on the screen.
void Dress(toolkit::WndCoolMenu& coolMenu, HWND owner, HMENU menu) {
  coolMenu.Attach(owner);
  coolMenu.look.ilHandle = toolkit::SharedPictures(res::Strip::Menu);
  toolkit::TagPictures(kRows, coolMenu.imageTags);
  coolMenu.AddMenuHead(menu);
}

}  // namespace

unsigned ShowPopupMenu(HWND owner, const RECT& button) {
  const MenuStyle style = core::gSafe ? MenuStyle::Plain : MenuStyle::OwnerDrawn;
  const toolkit::Menu menu = toolkit::BuildMenu(kRows, toolkit::MenuKind::PopUp, style);
  toolkit::WndCoolMenu coolMenu;
  if (style == MenuStyle::OwnerDrawn) Dress(coolMenu, owner, menu.get());
  constexpr UINT how = TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL | TPM_RETURNCMD;
  TPMPARAMS around{sizeof around, button};
  return static_cast<unsigned>(::TrackPopupMenuEx(menu.get(), how, button.left, button.bottom, owner, &around));
}

}  // namespace conversation
