#include "ui/toolkit/menu/embossed_image.h"

#include <cstdint>
#include <span>

#include "ui/toolkit/handles.h"

namespace toolkit {
namespace {

constexpr DWORD kPatternWhereBlack = 0x00B8074A;  // the brush where the mask is black, the background elsewhere

struct Canvas {
  Bitmap bitmap;
  std::span<std::uint32_t> pixels;  // 0x00RRGGBB
};

Canvas MakeCanvas(int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  Bitmap bitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap) return {};
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  return {std::move(bitmap), {static_cast<std::uint32_t*>(bits), count}};
}

// Light parts belong to the background; only what is dark on white is part of the shape.
bool IsShape(std::uint32_t pixel) {
  const std::uint32_t red = pixel >> 16 & 0xFF, green = pixel >> 8 & 0xFF, blue = pixel & 0xFF;
  return red * 299 + green * 587 + blue * 114 < 200 * 1000;
}

// One bit per pixel: black where the image has a shape, white elsewhere.
Bitmap MakeMask(HDC scratch, HIMAGELIST images, int index, int width, int height) {
  const Canvas canvas = MakeCanvas(width, height);
  Bitmap mask(::CreateBitmap(width, height, 1, 1, nullptr));
  const MemoryDc source(::CreateCompatibleDC(nullptr));
  if (canvas.pixels.empty() || !mask || !source) return {};
  const Selected selected(source.get(), canvas.bitmap.get());
  ::PatBlt(source.get(), 0, 0, width, height, WHITENESS);
  ::ImageList_Draw(images, index, source.get(), 0, 0, ILD_TRANSPARENT);
  ::GdiFlush();
  for (std::uint32_t& pixel : canvas.pixels) pixel = IsShape(pixel) ? 0x000000 : 0xFFFFFF;
  const Selected target(scratch, mask.get());
  ::BitBlt(scratch, 0, 0, width, height, source.get(), 0, 0, SRCCOPY);
  return mask;
}

void PaintShape(HDC dc, POINT at, int width, int height, HDC mask, int systemColour) {
  const Selected brush(dc, ::GetSysColorBrush(systemColour));
  ::BitBlt(dc, static_cast<int>(at.x), static_cast<int>(at.y), width, height, mask, 0, 0, kPatternWhereBlack);
}

}  // namespace

void DrawEmbossed(HDC dc, HIMAGELIST images, int index, POINT at) {
  int width = 0, height = 0;
  if (!::ImageList_GetIconSize(images, &width, &height)) return;
  const MemoryDc maskDc(::CreateCompatibleDC(nullptr));
  const Bitmap mask = MakeMask(maskDc.get(), images, index, width, height);
  if (!mask) return;
  const Selected selected(maskDc.get(), mask.get());
  const COLORREF formerText = ::SetTextColor(dc, RGB(0, 0, 0)), formerBack = ::SetBkColor(dc, RGB(255, 255, 255));
  PaintShape(dc, {at.x + 1, at.y + 1}, width, height, maskDc.get(), COLOR_3DHIGHLIGHT);
  PaintShape(dc, at, width, height, maskDc.get(), COLOR_3DSHADOW);
  ::SetTextColor(dc, formerText);
  ::SetBkColor(dc, formerBack);
}

}  // namespace toolkit
