// Looks at the program's windows from outside, as a user would find them, and plays clicks and keys to them.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace support {

// Visible and hidden top-level windows of a class, those of this process only.
std::vector<HWND> WindowsOf(const char* className);

// Child windows of a class, in the order of making.
std::vector<HWND> ChildrenOf(HWND parent, const char* className);

// The one with this text, null when there is none.
HWND ChildOf(HWND parent, const char* className, const std::string& text);

std::string TextOf(HWND hwnd);

// What stands at a place of a menu.
std::string MenuText(HMENU menu, int position);

std::string ClipboardText();

// Clicks a toolbar's button, counted from 0, the way the toolbar reports it.
void ClickToolButton(HWND window, int index);
int ToolCommand(HWND window, int index);

// The texts of a list view's rows.
std::vector<std::string> RowTexts(HWND listView);

// Selects a row, or unselects it; every row with -1.
void SelectRow(HWND listView, int row, bool selected = true);

// Loads the texts of a language for windows that are captioned from now on.
void Speak(const char* language);

// A key press as it comes out of the message queue, through the program's filter; with Ctrl or Shift held where given.
// True when the filter took it.
bool FilterKey(HWND target, UINT message, WPARAM key, int heldKey = 0);

RECT PlaceOf(HWND hwnd);

}  // namespace support
