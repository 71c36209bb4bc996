// The caption language: what a menu item's authored text says beside the caption that is shown.
//
//   |Close this window|&Close     help text for the status line, then the caption
//   -Export                       section head
//   #|Add the time|&Add Time      check mark item; "*" instead of "#" makes it an option (round) mark
//   &Reply                        ordinary item
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace toolkit {

// What is known of one converted menu item.
struct CMyItemData {
  bool bTrueSub = false;      // opens a sub-menu
  std::string sMenuHelp;      // help text, empty when none
  bool bAsMark = false;       // check or option mark item
  bool bAsCheck = false;      // the mark is a check box, else round
  bool bMainMenu = false;     // stands on the menu bar itself
  std::int16_t iButton = -1;  // index of its image, -1 when none
  std::int32_t fType = 0;     // menu type flags, with kSeparatorType for heads
  std::string sMenuText;      // the caption to draw, with its "&"

  friend bool operator==(const CMyItemData&, const CMyItemData&) = default;
};

// The menu type flag of separators, and of section heads.
inline constexpr std::int32_t kSeparatorType = 0x800;

inline bool IsSeparator(const CMyItemData& data) { return (data.fType & kSeparatorType) != 0; }
inline bool IsHead(const CMyItemData& data) { return IsSeparator(data) && !data.sMenuText.empty(); }

// Never fails: a text that is no caption form is an ordinary caption. Sets the texts, the marks and the separator flag.
CMyItemData ParseCaption(std::string_view authored);

// An authored text that parses to the same data: the inverse of ParseCaption.
std::string RestoreCaption(const CMyItemData& data);

// The authored form of a text that must be shown as it stands, whatever its first characters: a user may be called
// "-anna" or "R&D".
std::string LiteralCaption(std::string_view text);

}  // namespace toolkit
