// A desktop that has next to nothing left to give.
#pragma once

#include <windows.h>

#include <vector>

namespace support {

// Refuses one of the windows, controls, menus, fonts and icons that are asked for, after so many others. (Using
// up all that there are would stop other programs too.)
class OneRefused {
 public:
  explicit OneRefused(int before);
  OneRefused(const OneRefused&) = delete;
  OneRefused& operator=(const OneRefused&) = delete;
  ~OneRefused();

  // What the last one of these has refused.
  enum class Kind { Nothing, Window, Menu, FontOrIcon };
  static Kind What();

 private:
  HHOOK hook_;
};

// Leaves the process so many GDI objects and no more.
class FewGdiObjects {
 public:
  explicit FewGdiObjects(int left);
  FewGdiObjects(const FewGdiObjects&) = delete;
  FewGdiObjects& operator=(const FewGdiObjects&) = delete;
  ~FewGdiObjects();

 private:
  std::vector<HBRUSH> taken_;
};

}  // namespace support
