// Images on Windows, for controls: make one with WindowsImage, load it, draw it.
#pragma once

#include <windows.h>

#include <olectl.h>

#include "imaging/dc_surface_win.h"
#include "imaging/dib_section_win.h"
#include "imaging/imaging_bridge_win.h"

namespace kestrelon {

/// An image whose pixels are a DIB section.
class WindowsImage : public c32bppDIB {
 public:
  WindowsImage() : c32bppDIB(started_factory()) {}

 private:
  static PixelStoreFactory started_factory();
};

// Loading. The image is replaced; true if one exists afterwards.

/// A resource of `module` read as a file of any format the engine knows. `type` is a name or
/// MAKEINTRESOURCEW(number), RT_RCDATA for instance.
bool load_resource_image(c32bppDIB& image, HINSTANCE module, const wchar_t* name,
                         const wchar_t* type, const LoadOptions& options = {});
/// The same by number, out of the module that holds this code.
bool load_resource_image(c32bppDIB& image, int id, const wchar_t* type,
                         const LoadOptions& options = {});
/// A bitmap, icon or metafile object; null gives no image.
bool load_std_picture(c32bppDIB& image, IPicture* picture);
/// The same from a property's value, whatever interface it has.
bool load_std_picture(c32bppDIB& image, IUnknown* picture);
/// A bitmap, icon, cursor or metafile, which stays the caller's.
bool load_handle(c32bppDIB& image, HANDLE handle);

// Drawing.

/// Draws on a device context; see c32bppDIB::Render.
bool render_to_dc(const c32bppDIB& image, HDC dc, const RenderArguments& args);
/// The whole image in a rectangle; sizes of 0 are the image's own. `opacity` in percent.
bool render_to_dc(const c32bppDIB& image, HDC dc, int x, int y, int width = 0, int height = 0,
                  int opacity = 100, GrayScale gray = GrayScale::None, float light = 0);

}  // namespace kestrelon
