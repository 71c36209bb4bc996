// Inspects the program's windows from outside and simulates clicks and keys.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace support {

// Visible and hidden top-level windows of a class, those of this process only.
std::vector<HWND> WindowsOf(const char* className);

// Child windows of a class, in order of creation.
std::vector<HWND> ChildrenOf(HWND parent, const char* className);

// The child with this text, null when there is none.
HWND ChildOf(HWND parent, const char* className, const std::string& text);

std::string TextOf(HWND hwnd);

// The text of a menu item.
std::string MenuText(HMENU menu, int position);

std::string ClipboardText();

// Sends the command of a toolbar button, counted from 0.
void ClickToolButton(HWND window, int index);
int ToolCommand(HWND window, int index);

// The texts of a list view's rows.
std::vector<std::string> RowTexts(HWND listView);

// Selects or deselects a row; all rows with -1.
void SelectRow(HWND listView, int row, bool selected = true);

// Loads a language, for windows whose captions are set from now on.
void SetLanguage(const char* language);

// Passes a key press to the program's message filter, optionally with a modifier key held. True when the filter handled
// it.
bool FilterKey(HWND target, UINT message, WPARAM key, int heldKey = 0);

RECT PlaceOf(HWND hwnd);

}  // namespace support
