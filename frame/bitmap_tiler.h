// `IAPP_BitMapTiler`: fills areas with copies of a bitmap.
#pragma once

#include <windows.h>

#include <olectl.h>

#include <string>

#include "base/com_win.h"
#include "frame/dib_section.h"

namespace kestrelon {

/// Nothing here fails towards the caller: without a usable source there is no picture, and tiling
/// draws nothing.
class IAPP_BitMapTiler {
 public:
  /// The source. Its bitmap is copied; a picture that is no bitmap leaves the tiler without one.
  IPicture* Picture() const { return picture_.get(); }
  void set_Picture(IPicture* picture);
  /// Where the source came from: "PICTURE" for one that was given as an object. Setting it loads
  /// the file.
  const std::wstring& FileName() const { return file_name_; }
  void set_FileName(std::wstring file_name);

  int BitmapWidth() const { return tile_.width(); }
  int BitmapHeight() const { return tile_.height(); }
  /// Null without a picture.
  HDC PicturehDc() const { return tile_.dc(); }

  int XOriginOffset() const { return x_origin_; }
  void set_XOriginOffset(int offset) { x_origin_ = offset; }
  int YOriginOffset() const { return y_origin_; }
  void set_YOriginOffset(int offset) { y_origin_ = offset; }
  /// Kept for the owner of the source; 32-bit surfaces have no palette.
  IPicture* Palette() const { return palette_.get(); }
  void set_Palette(IPicture* palette) { palette_ = ComPtr<IPicture>(palette); }

  /// Fills a rectangle. The grid of tiles begins at (-XOriginOffset, -YOriginOffset) of the target.
  void TileArea(HDC target, int x, int y, int width, int height) const;

  /// Text of the last failure since a source was set, for whoever debugs a missing picture.
  const std::wstring& last_failure() const { return last_failure_; }

 private:
  void copy_bitmap(HBITMAP bitmap);
  void fail(std::wstring text);

  ComPtr<IPicture> picture_;
  ComPtr<IPicture> palette_;
  std::wstring file_name_;
  std::wstring last_failure_;
  DibSection tile_;
  int x_origin_ = 0;
  int y_origin_ = 0;
};

}  // namespace kestrelon
