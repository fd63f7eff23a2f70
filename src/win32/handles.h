// Windows objects that are let go when their owner goes.
#pragma once

#include <memory>
#include <type_traits>

#include "win32/api.h"

namespace tessel::win32 {

struct GdiDeleter {
  void operator()(void* object) const { DeleteObject(object); }
};
using FontHandle = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiDeleter>;

struct IconDeleter {
  void operator()(HICON icon) const { DestroyIcon(icon); }
};
using IconHandle = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;

struct ImageListDeleter {
  void operator()(HIMAGELIST images) const { ImageList_Destroy(images); }
};
using ImageListHandle = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDeleter>;

struct MenuDeleter {
  void operator()(HMENU menu) const { DestroyMenu(menu); }
};
using MenuHandle = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDeleter>;

}  // namespace tessel::win32
