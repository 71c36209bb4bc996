#include "ui/toolkit/pictures.h"

#include <array>

#include "res/resource_ids.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

HINSTANCE Instance() { return ::GetModuleHandleA(nullptr); }

HICON LoadIconResource(int number, int side, UINT flags) {
  return static_cast<HICON>(
      ::LoadImageA(Instance(), MAKEINTRESOURCEA(number), IMAGE_ICON, side, side, LR_DEFAULTCOLOR | flags));
}

ImageList LoadStrip(res::Strip strip) {
  const res::StripInfo& info = res::InfoOf(strip);
  const int side = PictureSize(strip);
  ImageList list(::ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, info.count, 0));
  for (int i = 0; i < info.count; ++i) {
    const Icon icon = LoadPicture(strip, i, side);
    ::ImageList_ReplaceIcon(list.get(), -1, icon.get());
  }
  return list;
}

}  // namespace

int PictureSize(res::Strip strip) { return Px(res::InfoOf(strip).size); }

Icon LoadPicture(res::Strip strip, int picture, int side) {
  return Icon(LoadIconResource(res::InfoOf(strip).firstIcon + picture, side, 0));
}

HIMAGELIST SharedPictures(res::Strip strip) {
  static std::array<ImageList, std::size(res::kStrips)> lists;
  ImageList& list = lists[static_cast<std::size_t>(strip)];
  if (!list) list = LoadStrip(strip);
  return list.get();
}

HICON ProgramIcon(int widthMetric) {
  return LoadIconResource(res::kProgramIcon, ::GetSystemMetrics(widthMetric), LR_SHARED);
}

Icon LoadProgramIcon(int side) { return Icon(LoadIconResource(res::kProgramIcon, side, 0)); }

}  // namespace toolkit
