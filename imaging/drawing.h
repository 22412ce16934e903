// The engine's own drawing: a sampled source blended onto an image or a surface, row by row.
#pragma once

#include <cstdint>
#include <vector>

#include "imaging/image_view.h"
#include "imaging/imaging_bridge.h"
#include "imaging/row_kernels.h"
#include "imaging/tones.h"

namespace kestrelon {

/// What happens to pixels on their way to the destination.
struct BlendEffects {
  uint32_t global_alpha = 255;  ///< 1 to 255
  GrayScale gray = GrayScale::None;
  float light = 0;  ///< percent, -100 to 100

  bool any() const { return gray != GrayScale::None || light != 0; }
};

/// Where a drawing goes: pixels of its own with or without a meaning of alpha.
struct BlendTarget {
  MutableImageView view;
  int32_t x = 0, y = 0;  ///< what coordinate the view's first pixel has
  bool keep_alpha = false;
};

/// Opens the part of the destination inside `wanted`; closes a surface at the end of its life.
class OpenTarget {
 public:
  /// One of `surface` and `host` is set; a host wins.
  OpenTarget(DrawingSurface* surface, c32bppDIB* host, const ImageRect& wanted);
  ~OpenTarget();
  OpenTarget(const OpenTarget&) = delete;
  OpenTarget& operator=(const OpenTarget&) = delete;

  /// Nothing of the wanted rectangle is visible, or the surface gave no pixels.
  bool empty() const { return target_.view.width == 0 || target_.view.height == 0; }
  const BlendTarget& get() const { return target_; }

 private:
  DrawingSurface* surface_ = nullptr;
  BlendTarget target_;
};

/// Rows that pass the light and gray steps before they are blended.
class EffectRow {
 public:
  EffectRow(const BlendEffects& effects, size_t count);
  /// `source` itself if there is nothing to do, else a changed copy valid until the next call.
  const uint8_t* apply(const uint8_t* source);

 private:
  const RowKernels& kernels_;
  bool light_, gray_;
  size_t count_;
  LightTable light_table_;
  GrayWeights gray_weights_;
  std::vector<uint8_t> row_;
};

/// A source rectangle and the rectangle it fills; sizes positive.
struct ScaledSource {
  ImageView pixels;  ///< the source rectangle
  int32_t origin_x = 0, origin_y = 0;
  int32_t dest_x = 0, dest_y = 0, dest_width = 0, dest_height = 0;
  bool mirror_x = false, mirror_y = false;
  bool high_quality = false;
};

/// Blends the visible part of `source` onto `target`.
void draw_scaled(const ScaledSource& source, const BlendEffects& effects,
                 const BlendTarget& target);
/// Copies `source` scaled over `out`, which it fills; no blending.
void copy_scaled(const ScaledSource& source, const MutableImageView& out);
/// Blends `source` turned clockwise by `degrees` about the centre of its destination rectangle.
void draw_rotated(const ScaledSource& source, int32_t degrees, const BlendEffects& effects,
                  const BlendTarget& target);
/// The square a rotated drawing may touch.
ImageRect rotated_bounds(const ScaledSource& source);

}  // namespace kestrelon
