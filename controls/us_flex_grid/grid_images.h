// Images of rows and cells: those of an image list, reached by name, and pictures of single cells.
#pragma once

#include "grid/paint/grid_scene_win.h"
#include "services/late_object_win.h"

namespace kestrelon {

class GridImages final : public grid_paint::GridPictures {
 public:
  void set_list(IDispatch* list);
  ComPtr<IDispatch> list() const { return ComPtr<IDispatch>(list_.get()); }
  /// What one image measures in pixels; empty without a list.
  grid_layout::Size size() const { return size_; }

  /// The number under which rows and styles keep an image: an index, or minus the index of a key.
  int32_t number_of(const VARIANT& image) const;
  /// Back to what the caller gave: a number, or the key.
  Variant shown(int32_t image) const;

  grid_layout::Size image_size(int32_t image) const override;
  void draw_image(HDC dc, int32_t image, const PixelRect& area, bool selected) const override;
  grid_layout::Size picture_size(const void* picture) const override;
  void draw_picture(HDC dc, const void* picture, const PixelRect& area) const override;

 private:
  LateObject item(const Variant& index) const;

  mutable LateObject list_;
  mutable LateObject images_;
  grid_layout::Size size_;
};

}  // namespace kestrelon
