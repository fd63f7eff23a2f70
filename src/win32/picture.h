// Pictures: files in any format that Windows reads, and the product logo.
#pragma once

#include <string>

#include "win32/handles.h"

namespace tessel::win32 {

// Pictures can be drawn while one of these lives.
class PictureDrawing {
 public:
  PictureDrawing();
  ~PictureDrawing();
  PictureDrawing(const PictureDrawing&) = delete;
  PictureDrawing& operator=(const PictureDrawing&) = delete;

 private:
  ULONG_PTR token_ = 0;
};

// The picture of a file as large as the room allows, in its own proportions; nothing when it cannot be read.
void DrawPicture(HDC device, const RECT& room, const std::string& file);
void DrawLogo(HDC device, const RECT& room);

// Side in pixels. Null when the file cannot be read.
[[nodiscard]] IconHandle IconOf(const std::string& file, int side);
[[nodiscard]] IconHandle LogoIcon(int side);

}  // namespace tessel::win32
