// Text to the clipboard.
#pragma once

#include <windows.h>

#include <string>

namespace conversation {

// As plain text, in the name of a window. Throws core::Err::ClipboardBusy when the clipboard cannot be written, as
// while another program holds it, and core::Err::OutOfMemory.
void CopyText(HWND owner, const std::string& text);

}  // namespace conversation
