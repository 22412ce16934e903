#include "imaging/gif_parser.h"

#include <algorithm>

#include "base/byte_reader.h"
#include "imaging/gif_frame.h"

namespace kestrelon {
namespace {

using namespace gif;

bool read_screen(ByteReader& in, FrameSource& frame) {
  ScreenDescriptor screen;
  if (!in.read(screen) || !is_signature(screen.signature)) return false;
  if ((screen.flags & kHasTable) != 0)
    frame.table = in.take(3u * static_cast<size_t>(table_entries(screen.flags)));
  return in.ok();
}

bool skip_sub_blocks(ByteReader& in) {
  while (const uint8_t length = in.u8()) {
    if (!in.skip(length)) return false;
  }
  return in.ok();
}

// The last control before the frame counts, whatever else stands between them.
bool read_extension(ByteReader& in, FrameSource& frame) {
  switch (in.u8()) {
    case kGraphicControl: {
      GraphicControl control;
      if (!in.read(control)) return false;
      frame.transparent = (control.flags & 1) != 0 ? control.transparent_index : -1;
      return true;
    }
    case kApplication:
      return in.skip(in.u8()) && skip_sub_blocks(in);
    default:
      return skip_sub_blocks(in);
  }
}

bool read_image(ByteReader& in, std::span<const uint8_t> data, FrameSource& frame) {
  if (!in.read(frame.descriptor)) return false;
  if ((frame.descriptor.flags & kHasTable) != 0)
    frame.table = in.take(3u * static_cast<size_t>(table_entries(frame.descriptor.flags)));
  frame.min_code_size = in.u8();
  const size_t start = in.position();
  if (!skip_sub_blocks(in)) return false;
  frame.sub_blocks = data.subspan(start, in.position() - start);
  return frame.min_code_size >= 1 && frame.min_code_size <= 8;
}

bool find_first_frame(std::span<const uint8_t> data, FrameSource& frame) {
  ByteReader in(data);
  if (!read_screen(in, frame)) return false;
  while (in.ok()) {
    switch (in.u8()) {
      case kStray:
        break;
      case kExtension:
        if (!read_extension(in, frame)) return false;
        break;
      case kImage:
        return read_image(in, data, frame);
      default:
        return false;
    }
  }
  return false;
}

bool decode_pixels(const FrameSource& frame, const Palette& palette, c32bppDIB& out) {
  auto reached = decode_rows(frame, [&](size_t x, int32_t y, std::span<const uint8_t> indexes) {
    indexed_to_row(out.row(y) + 4 * x, indexes.data(), indexes.size(), 8, palette);
  });
  if (!reached.ok) return false;
  if (frame.transparent >= 0) return true;
  for (; !reached.order.at_end(); reached.x = 0, reached.order.advance()) {
    auto* const pixels = reinterpret_cast<uint32_t*>(out.row(reached.order.row()));
    std::fill(pixels + reached.x, pixels + out.Width(), palette[0]);
  }
  return true;
}

bool decode(std::span<const uint8_t> data, c32bppDIB& out) {
  FrameSource frame;
  if (!find_first_frame(data, frame)) return false;
  const uint64_t pixels = uint64_t{frame.descriptor.width} * frame.descriptor.height;
  if (!can_be_meant(pixels, frame.sub_blocks.size())) return false;
  if (!out.InitializeDIB(frame.descriptor.width, frame.descriptor.height)) return false;
  if (!decode_pixels(frame, make_palette(frame), out)) return false;
  out.set_alpha(frame.transparent >= 0 ? AlphaType::Simple : AlphaType::None);
  out.set_image_type(ImageFormat::Gif);
  return true;
}

}  // namespace

bool cGIFparser::LoadStream(std::span<const uint8_t> data, c32bppDIB& out) {
  if (decode(data, out)) return true;
  out.DestroyDIB();
  return false;
}

}  // namespace kestrelon
