// The pictures in Quillon.exe by name. Written by script/pictures; change its table, not this file.
#pragma once

namespace res {

// A strip is a row of pictures of one kind in a fixed order, the order of an image list made of them. Each picture is
// an icon resource that holds the sizes for 100, 125, 150, 175, 200 % scaling, with transparency.
enum class Strip { Roster, Menu, Toolbar, Tray, Splash };

struct StripInfo {
  int firstIcon;  // resource number of the first picture, the others follow
  int count;
  int size;  // side of a picture at 100 % scaling, pixels
};

constexpr StripInfo kStrips[] = {
    {100, 4, 16},   // Roster
    {200, 24, 16},  // Menu
    {300, 14, 24},  // Toolbar
    {400, 3, 16},   // Tray
    {500, 1, 48},   // Splash
};

constexpr const StripInfo& InfoOf(Strip strip) { return kStrips[static_cast<int>(strip)]; }

// Places in the strips, counted from 0.
enum RosterPicture : int { kRosterEverybody, kRosterUser, kRosterBlocked, kRosterGroup };
enum MenuPicture : int {
  kMenuChatAll,
  kMenuAlert,
  kMenuSetStatus,
  kMenuOptions,
  kMenuShowMain,
  kMenuHide,
  kMenuClose,
  kMenuMove,
  kMenuTopLeft,
  kMenuTopRight,
  kMenuBottomLeft,
  kMenuBottomRight,
  kMenuAbout,
  kMenuWeb,
  kMenuExportText,
  kMenuExportClipboard,
  kMenuClear,
  kMenuAddUser,
  kMenuRemoveUser,
  kMenuReply,
  kMenuReplySender,
  kMenuReplyAll,
  kMenuLiveChat,
  kMenuBlock
};
enum ToolbarPicture : int {
  kToolbarAlert,
  kToolbarChat,
  kToolbarBlock,
  kToolbarSend,
  kToolbarClose,
  kToolbarAccept,
  kToolbarUser,
  kToolbarInterface,
  kToolbarSecurity,
  kToolbarGroups,
  kToolbarTest,
  kToolbarAdd,
  kToolbarRemove,
  kToolbarNew
};
enum TrayPicture : int { kTrayAvailable, kTrayAlertsOnly, kTrayDoNotDisturb };
enum SplashPicture : int { kSplashPicture };

}  // namespace res
