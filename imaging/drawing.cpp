#include "imaging/drawing.h"

#include "imaging/c32bpp_dib.h"
#include "imaging/row_sampler.h"

namespace kestrelon {
namespace {

SamplingShape shape_of(const ScaledSource& source, int32_t first_column, int32_t columns) {
  SamplingShape shape;
  shape.dest_width = source.dest_width;
  shape.dest_height = source.dest_height;
  shape.first_column = first_column;
  shape.columns = columns;
  shape.origin_x = source.origin_x;
  shape.origin_y = source.origin_y;
  shape.mirror_x = source.mirror_x;
  shape.mirror_y = source.mirror_y;
  shape.high_quality = source.high_quality;
  return shape;
}

}  // namespace

OpenTarget::OpenTarget(DrawingSurface* surface, c32bppDIB* host, const ImageRect& wanted) {
  if (host) {
    const ImageRect got =
        clip_to(wanted.x, wanted.y, wanted.width, wanted.height, host->Width(), host->Height());
    if (!got.empty()) target_ = {host->view().part(got), got.x, got.y, false};
    return;
  }
  ImageRect got;
  MutableImageView view;
  if (!surface->begin_pixels(wanted, got, view)) return;
  surface_ = surface;
  if (!got.empty()) target_ = {view, got.x, got.y, true};
}

OpenTarget::~OpenTarget() {
  if (surface_) surface_->end_pixels();
}

EffectRow::EffectRow(const BlendEffects& effects, size_t count)
    : kernels_(row_kernels()),
      light_(effects.light != 0),
      gray_(effects.gray != GrayScale::None),
      count_(count) {
  if (light_) light_table_ = light_table(static_cast<double>(effects.light));
  if (gray_) gray_weights_ = gray_weights(effects.gray);
  if (light_ || gray_) row_.resize(count * 4);
}

const uint8_t* EffectRow::apply(const uint8_t* source) {
  if (light_) {
    kernels_.light(row_.data(), source, count_, light_table_);
    source = row_.data();
  }
  if (gray_) {
    kernels_.gray(row_.data(), source, count_, gray_weights_);
    source = row_.data();
  }
  return source;
}

void draw_scaled(const ScaledSource& source, const BlendEffects& effects,
                 const BlendTarget& target) {
  const ImageRect visible =
      clip_to(int64_t{source.dest_x} - target.x, int64_t{source.dest_y} - target.y,
              source.dest_width, source.dest_height, target.view.width, target.view.height);
  if (visible.empty()) return;
  const auto first_column = static_cast<int32_t>(int64_t{visible.x} + target.x - source.dest_x);
  const auto first_row = static_cast<int32_t>(int64_t{visible.y} + target.y - source.dest_y);
  RowSampler sampler(source.pixels, shape_of(source, first_column, visible.width));
  const RowKernels& kernels = row_kernels();
  const auto width = static_cast<size_t>(visible.width);
  const MutableImageView out = target.view.part(visible);
  if (sampler.plain_copy() && !effects.any()) {
    kernels.blend(out.top, out.stride, sampler.row(first_row), sampler.source_stride(), width,
                  static_cast<size_t>(visible.height), effects.global_alpha, target.keep_alpha);
    return;
  }
  EffectRow row(effects, width);
  for (const int32_t y : RowsInMemoryOrder(out)) {
    kernels.blend(out.row(y), 0, row.apply(sampler.row(first_row + y)), 0, width, 1,
                  effects.global_alpha, target.keep_alpha);
  }
}

void copy_scaled(const ScaledSource& source, const MutableImageView& out) {
  RowSampler sampler(source.pixels, shape_of(source, 0, source.dest_width));
  for (const int32_t y : RowsInMemoryOrder(out)) sampler.write(out.row(y), y);
}

}  // namespace kestrelon
