// Answers message boxes automatically.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/window_probe.h"

namespace support {

// Answers every message box of this thread at once and records its text. Its button must be on the screen.
class BoxAnswers {
 public:
  explicit BoxAnswers(WORD answer = IDOK) {
    texts_.clear();
    answer_ = answer;
    timer_ = ::SetTimer(nullptr, 0, 20, Tick);
  }
  BoxAnswers(const BoxAnswers&) = delete;
  BoxAnswers& operator=(const BoxAnswers&) = delete;
  ~BoxAnswers() { ::KillTimer(nullptr, timer_); }

  static std::vector<std::string>& Texts() { return texts_; }

 private:
  static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    for (const HWND box : WindowsOf("#32770")) {
      std::string text;
      for (const HWND label : ChildrenOf(box, "Static")) text += TextOf(label);
      texts_.push_back(text);
      RECT area{};
      ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
      const RECT button = PlaceOf(ChildrenOf(box, "Button").at(0));
      EXPECT_TRUE(button.right <= area.right && button.bottom <= area.bottom) << text.substr(0, 100);
      ::EndDialog(box, answer_);
    }
  }

  inline static std::vector<std::string> texts_;
  inline static WORD answer_ = IDOK;
  UINT_PTR timer_;
};

}  // namespace support
