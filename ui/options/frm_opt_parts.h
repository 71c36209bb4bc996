// The parts of the options dialog: its toolbars, labels and texts as tables.
#pragma once

#include <windows.h>

#include "res/pictures.h"
#include "ui/toolkit/toolbar.h"

namespace options {

// Of the dialog's window.
inline constexpr DWORD kOptStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
inline constexpr DWORD kOptExStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

enum CommandId : int {
  kUserButton = 100,  // + page
  kInterfaceButton,
  kSecurityButton,
  kGroupsButton,
  kAcceptButton = 110,
  kCloseButton,
  kTestButton = 120,
  kBlockButton = 130,
  kUnblockButton,
  kNewGroupButton = 140,
  kAddMemberButton,
  kRemoveNodeButton,
  kFirstPosition = 150,
  kNameBox = 160,
  kBlockBox,
  kGroupBox,
  kBlockEnter,
  kGroupEnter,
  kLanguageBox,
  kStartUpBox,
};

inline constexpr toolkit::ToolButton kPageButtons[] = {
    {kUserButton, {2002, "&User"}, res::kToolbarUser},
    {kInterfaceButton, {2003, "&Interface"}, res::kToolbarInterface},
    {kSecurityButton, {2004, "&Securety"}, res::kToolbarSecurity},
    {kGroupsButton, {2005, "&Groups"}, res::kToolbarGroups},
};
inline constexpr toolkit::ToolButton kCommandButtons[] = {
    {kAcceptButton, {2006, "&Accept"}, res::kToolbarAccept},
    {kCloseButton, {2007, "&Close"}, res::kToolbarClose},
};
inline constexpr toolkit::ToolButton kSoundButtons[] = {{kTestButton, {2013, "&Test"}, res::kToolbarTest}};
inline constexpr toolkit::ToolButton kBlockButtons[] = {
    {kBlockButton, {2016, "&Add"}, res::kToolbarAdd},
    {kUnblockButton, {2017, "&Remove"}, res::kToolbarRemove},
};
inline constexpr toolkit::ToolButton kGroupButtons[] = {
    {kNewGroupButton, {2019, "&New"}, res::kToolbarNew},
    {kAddMemberButton, {2020, "&Add"}, res::kToolbarAdd},
    {kRemoveNodeButton, {2021, "&Remove"}, res::kToolbarRemove},
};

enum Label : std::size_t {
  kColourLabel,
  kNameLabel,
  kPositionLabel,
  kSoundLabel,
  kHeightLabel,
  kBlockLabel,
  kGroupsLabel,
  kLanguageLabel,
  kLabels
};
inline constexpr toolkit::Caption kLabelTexts[] = {
    {2008, "Screen Colour"},
    {2009, "Screen Name"},
    {2011, "New Message Position"},
    {2012, "Play sound on new message?"},
    {2022, "Alert height:"},
    {2015, "Block Users"},
    {2018, "Groups"},
    "Language/Langage/Sprache/Lenguaje:",
};
static_assert(std::size(kLabelTexts) == kLabels);

// Positions 1 to 4, as the menu calls the corners.
inline constexpr toolkit::Caption kPositions[] = {
    {1117, "|Move window to top left|Top &Left"},
    {1118, "|Move window to top right|Top &Right"},
    {1119, "|Move window to bottom left|Bottom L&eft"},
    {1120, "|Move window to bottom right|Bottom R&ight"},
};

// The languages to choose from, whatever the language file holds, and the question that offers each.
inline constexpr const char* kLanguages[] = {"English",
                                             "Fran\xE7"
                                             "ais",
                                             "Deutsch", "Espa\xF1ol"};
inline constexpr int kQuestionTexts[] = {10300, 10301, 10302, 10303};
static_assert(std::size(kQuestionTexts) == std::size(kLanguages));

enum SoundPicture : int { kSilencePicture, kBeepPicture, kWavePicture };

}  // namespace options
