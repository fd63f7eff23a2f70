#include "win32/picture.h"

#include <objidl.h>
// behind it
#include <gdiplus.h>

#include <algorithm>
#include <array>
#include <utility>

#include "win32/text.h"

namespace tessel::win32 {
namespace {

using Gdiplus::REAL;

constexpr int kTiles = 3;
// Row by row; the tile in the lower right corner is the one that leaves.
constexpr std::array<Gdiplus::ARGB, kTiles * kTiles> kColours{0xFF16324F, 0xFF1F4E79, 0xFF2A6F97,
                                                              0xFF1F4E79, 0xFF2A6F97, 0xFF468FAF,
                                                              0xFF2A6F97, 0xFF468FAF, 0xFFE09F3E};

void AddTile(Gdiplus::GraphicsPath& path, REAL left, REAL top, REAL side) {
  const REAL corner = side / 4;
  path.AddArc(left, top, corner, corner, 180, 90);
  path.AddArc(left + side - corner, top, corner, corner, 270, 90);
  path.AddArc(left + side - corner, top + side - corner, corner, corner, 0, 90);
  path.AddArc(left, top + side - corner, corner, corner, 90, 90);
  path.CloseFigure();
}

void DrawArrow(Gdiplus::Graphics& graphics, REAL left, REAL top, REAL side) {
  constexpr std::array<std::pair<double, double>, 7> kCorners{
      {{1.6, 3.3}, {4.0, 3.3}, {4.0, 1.8}, {6.6, 4.0}, {4.0, 6.2}, {4.0, 4.7}, {1.6, 4.7}}};
  std::array<Gdiplus::PointF, kCorners.size()> points;
  for (std::size_t corner = 0; corner < kCorners.size(); ++corner) {
    points[corner] = {left + static_cast<REAL>(kCorners[corner].first) * side / 8,
                      top + static_cast<REAL>(kCorners[corner].second) * side / 8};
  }
  const Gdiplus::SolidBrush white(Gdiplus::Color(0xFFFFFFFF));
  graphics.FillPolygon(&white, points.data(), static_cast<INT>(points.size()));
}

void DrawLogoOn(Gdiplus::Graphics& graphics, REAL left, REAL top, REAL side) {
  graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
  const REAL gap = side / 32;
  const REAL tileSide = (side - gap * (kTiles - 1)) / kTiles;
  for (int tile = 0; tile < kTiles * kTiles; ++tile) {
    const REAL x = left + static_cast<REAL>(tile % kTiles) * (tileSide + gap);
    const REAL y = top + static_cast<REAL>(tile / kTiles) * (tileSide + gap);
    Gdiplus::GraphicsPath path;
    AddTile(path, x, y, tileSide);
    const Gdiplus::SolidBrush brush(Gdiplus::Color(kColours[static_cast<std::size_t>(tile)]));
    graphics.FillPath(&brush, &path);
    if (tile == kTiles * kTiles - 1) DrawArrow(graphics, x, y, tileSide);
  }
}

// Where a picture of the given proportions stands in a room, in its middle.
Gdiplus::Rect Fit(int width, int height, const RECT& room) {
  const double across = static_cast<double>(room.right - room.left) / std::max(width, 1);
  const double down = static_cast<double>(room.bottom - room.top) / std::max(height, 1);
  const double scale = std::min(across, down);
  const auto fittedWidth = static_cast<INT>(width * scale);
  const auto fittedHeight = static_cast<INT>(height * scale);
  return {static_cast<INT>(room.left + (room.right - room.left - fittedWidth) / 2),
          static_cast<INT>(room.top + (room.bottom - room.top - fittedHeight) / 2), fittedWidth,
          fittedHeight};
}

bool DrawFile(Gdiplus::Graphics& graphics, const RECT& room, const std::string& file) {
  Gdiplus::Bitmap picture(ToWide(file).c_str());
  if (picture.GetLastStatus() != Gdiplus::Ok) return false;
  graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
  const auto width = static_cast<int>(picture.GetWidth());
  const auto height = static_cast<int>(picture.GetHeight());
  return graphics.DrawImage(&picture, Fit(width, height, room)) == Gdiplus::Ok;
}

template <class Drawing>
IconHandle DrawIcon(int side, Drawing&& draw) {
  Gdiplus::Bitmap bitmap(side, side, PixelFormat32bppARGB);
  Gdiplus::Graphics graphics(&bitmap);
  if (!draw(graphics)) return nullptr;
  HICON icon = nullptr;
  bitmap.GetHICON(&icon);
  return IconHandle(icon);
}

}  // namespace

PictureDrawing::PictureDrawing() {
  const Gdiplus::GdiplusStartupInput input;
  Gdiplus::GdiplusStartup(&token_, &input, nullptr);
}

PictureDrawing::~PictureDrawing() {
  Gdiplus::GdiplusShutdown(token_);
}

void DrawPicture(HDC device, const RECT& room, const std::string& file) {
  Gdiplus::Graphics graphics(device);
  DrawFile(graphics, room, file);
}

void DrawLogo(HDC device, const RECT& room) {
  Gdiplus::Graphics graphics(device);
  const LONG side = std::min(room.right - room.left, room.bottom - room.top);
  DrawLogoOn(graphics, static_cast<REAL>(room.left), static_cast<REAL>(room.top), static_cast<REAL>(side));
}

IconHandle IconOf(const std::string& file, int side) {
  return DrawIcon(side, [&](Gdiplus::Graphics& graphics) {
    return DrawFile(graphics, RECT{0, 0, side, side}, file);
  });
}

IconHandle LogoIcon(int side) {
  return DrawIcon(side, [&](Gdiplus::Graphics& graphics) {
    DrawLogoOn(graphics, 0, 0, static_cast<REAL>(side));
    return true;
  });
}

}  // namespace tessel::win32
