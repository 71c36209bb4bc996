#include "ui/toolkit/pictures.h"

#include <array>

#include "res/resource_ids.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

HICON LoadIconResource(int number, int side, UINT flags) {
  return static_cast<HICON>(
      ::LoadImageA(Instance(), MAKEINTRESOURCEA(number), IMAGE_ICON, side, side, LR_DEFAULTCOLOR | flags));
}

struct StripPictures {
  ImageList list;
  bool loaded = false;
};

std::array<StripPictures, std::size(res::kStrips)> gStrips;
bool gLoadAtOnce = false;

ImageList MakeEmpty(res::Strip strip) {
  const int side = PictureSize(strip), count = res::InfoOf(strip).count;
  ImageList list(::ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, count, 0));
  ::ImageList_SetImageCount(list.get(), static_cast<UINT>(count));
  return list;
}

void Load(res::Strip strip, StripPictures& pictures) {
  if (!pictures.list || pictures.loaded) return;
  pictures.loaded = true;
  for (int i = 0; i < res::InfoOf(strip).count; ++i) {
    const Icon icon = LoadPicture(strip, i, PictureSize(strip));
    ::ImageList_ReplaceIcon(pictures.list.get(), i, icon.get());
    if (!icon) pictures.loaded = false;  // retried for the next window
  }
}

}  // namespace

int PictureSize(res::Strip strip) { return Px(DesignPixels(res::InfoOf(strip).size)); }

Icon LoadPicture(res::Strip strip, int picture, int side) {
  return Icon(LoadIconResource(res::InfoOf(strip).firstIcon + picture, side, 0));
}

HIMAGELIST SharedPictures(res::Strip strip) {
  StripPictures& pictures = gStrips[static_cast<std::size_t>(strip)];
  if (!pictures.list) pictures.list = MakeEmpty(strip);
  if (gLoadAtOnce) Load(strip, pictures);
  return pictures.list.get();
}

void LoadPictures() {
  gLoadAtOnce = true;
  for (std::size_t i = 0; i < gStrips.size(); ++i) Load(static_cast<res::Strip>(i), gStrips[i]);
}

HICON ProgramIcon(int widthMetric) {
  return LoadIconResource(res::kProgramIcon, ::GetSystemMetrics(widthMetric), LR_SHARED);
}

Icon LoadProgramIcon(int side) { return Icon(LoadIconResource(res::kProgramIcon, side, 0)); }

}  // namespace toolkit
