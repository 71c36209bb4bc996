// Fault injection: makes the creation of windows, menus and GDI objects fail.
#pragma once

#include <windows.h>

#include <vector>

namespace support {

// Makes the creation of one window, control, menu, font or icon fail, after `before` successful ones. (Exhausting the
// real ones would stop other programs too.)
class FailOneCreation {
 public:
  explicit FailOneCreation(int before);
  FailOneCreation(const FailOneCreation&) = delete;
  FailOneCreation& operator=(const FailOneCreation&) = delete;
  ~FailOneCreation();

  // What the last FailOneCreation has refused.
  enum class Kind { Nothing, Window, Menu, FontOrIcon };
  static Kind What();

 private:
  HHOOK hook_;
};

// Leaves the process only `left` free GDI objects.
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
