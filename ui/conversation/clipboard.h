// Copying text to the clipboard.
#pragma once

#include <windows.h>

#include <string>

namespace conversation {

// Copies plain text, with a window as the owner. Throws core::Err::ClipboardBusy when the clipboard cannot be written,
// for instance while another program has it open, and core::Err::OutOfMemory.
void CopyText(HWND owner, const std::string& text);

}  // namespace conversation
