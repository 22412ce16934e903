#include "imaging/gif_animation/gif_file.h"

#include <bit>
#include <cstring>
#include <exception>
#include <string_view>
#include <utility>

#include "base/byte_reader.h"

namespace kestrelon {
namespace {

using namespace gif;

// What ends a walk early; it does not leave the read.
struct ReadGifFileError : std::exception {
  explicit ReadGifFileError(const char* text) : text_(text) {}
  const char* what() const noexcept override { return text_; }

 private:
  const char* text_;
};

constexpr size_t kFirstGroups = 10;  // memory taken at once; few files have more tables
constexpr int kNetscapeLoops = 3;    // length of the sub-block with the number of loops

// Readers that do not return from a read past the end.
class Source {
 public:
  explicit Source(std::span<const uint8_t> bytes) : in_(bytes) {}

  uint8_t byte() { return checked(in_.u8()); }
  uint16_t word() { return checked(in_.u16le()); }
  std::string_view string(size_t length) {
    const auto bytes = checked(in_.take(length));
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }
  void skip(size_t count) { checked(in_.skip(count)); }
  void skip_sub_blocks() {
    while (const uint8_t length = byte()) skip(length);
  }
  uint32_t position() const { return static_cast<uint32_t>(in_.position()); }

 private:
  template <class T>
  T checked(T value) const {
    if (!in_.ok()) throw ReadGifFileError("ReadGifFile: End of File");
    return value;
  }
  ByteReader in_;
};

}  // namespace

class GifFile::Walk {
 public:
  explicit Walk(GifFile& file) : file_(file), in_(file.bytes_) {}

  void run() {
    read_screen();
    for (;;) {
      switch (in_.byte()) {
        case kImage:
          read_image();
          break;
        case kExtension:
          read_extension();
          break;
        default:  // the trailer, and whatever else
          return;
      }
    }
  }

 private:
  void read_screen() {
    char signature[6];
    std::memcpy(signature, in_.string(sizeof signature).data(), sizeof signature);
    if (!is_signature(signature)) throw ReadGifFileError("ReadGifFile: Invalid File");
    file_.width_ = in_.word();
    file_.height_ = in_.word();
    const uint8_t flags = in_.byte();
    in_.skip(2);  // background index and aspect
    if ((flags & kHasTable) == 0) return;
    default_table_ = {0, in_.position(), bits_of(flags)};
    in_.skip(3u * static_cast<size_t>(table_entries(flags)));
  }

  void read_image() {
    GifFrame frame = next_;
    next_ = GifFrame();
    frame.left = in_.word();
    frame.top = in_.word();
    frame.width = in_.word();
    frame.height = in_.word();
    frame.flags = in_.byte();
    if ((frame.flags & kHasTable) != 0) {
      frame.local_entries = static_cast<uint16_t>(table_entries(frame.flags));
      frame.local_table = in_.position();
      in_.skip(3u * frame.local_entries);
    }
    frame.data = in_.position();
    in_.byte();  // code size
    in_.skip_sub_blocks();
    frame.data_size = in_.position() - frame.data;
    if (frame.data_size < 3) return;  // no data at all
    if (frame.disposal == GifDisposal::Restore && file_.frames_.empty())
      frame.disposal = GifDisposal::Clear;
    file_.width_ = std::max(file_.width_, frame.left + frame.width);
    file_.height_ = std::max(file_.height_, frame.top + frame.height);
    note_table(frame);
    file_.frames_.push_back(frame);
  }

  // A frame without a table of its own has the file's, or where there is none the one before it.
  void note_table(const GifFrame& frame) {
    auto& groups = file_.groups_;
    GifTableGroup wanted = default_table_;
    if (frame.local_entries != 0) {
      wanted.offset = frame.local_table & ((1u << 28) - 1);
      wanted.bits = bits_of(frame.flags) & 15u;
    } else if (wanted.offset == 0 && !groups.empty()) {
      return;
    }
    if (!groups.empty() && groups.back().offset == wanted.offset) return;
    if (groups.capacity() == 0) groups.reserve(kFirstGroups);
    wanted.first_frame = static_cast<uint32_t>(file_.frames_.size());
    groups.push_back(wanted);
  }

  void read_extension() {
    switch (in_.byte()) {
      case kGraphicControl:
        read_control();
        break;
      case kApplication:
        if (in_.string(in_.byte()) == "NETSCAPE2.0") {
          read_loops();
        } else {
          in_.skip_sub_blocks();
        }
        break;
      default:
        in_.skip_sub_blocks();
    }
  }

  void read_control() {
    const uint8_t size = in_.byte();
    if (size < 4) {
      in_.skip(size);
    } else {
      const uint8_t flags = in_.byte();
      const int disposal = flags / 4 & 7;
      next_.disposal = disposal > 3 ? GifDisposal::None : static_cast<GifDisposal>(disposal);
      next_.delay = in_.word() * 10;
      next_.uses_transparency = (flags & 1) != 0;
      next_.transparent_index = in_.byte();
      in_.skip(size - 4u);
    }
    if (size != 0) in_.skip_sub_blocks();
  }

  void read_loops() {
    while (const uint8_t length = in_.byte()) {
      if (length == kNetscapeLoops) {
        in_.byte();
        file_.loops_ = in_.word();
      } else {
        in_.skip(length);
      }
    }
  }

  static uint32_t bits_of(uint8_t flags) { return (flags & kTableSize) + 1u; }

  GifFile& file_;
  Source in_;
  GifTableGroup default_table_{};
  GifFrame next_;  // what a graphic control said of the next frame
};

bool GifFile::read(std::vector<uint8_t> bytes) {
  clear();
  if (bytes.size() > kMaxBytes) return false;
  bytes_ = std::move(bytes);
  try {
    Walk(*this).run();
  } catch (const ReadGifFileError&) {
    clear();
    return false;
  }
  const uint64_t pixels = static_cast<uint64_t>(width_) * static_cast<uint64_t>(height_);
  if (!frames_.empty() && pixels != 0 && pixels <= kMaxCanvasPixels &&
      can_be_meant(pixels, bytes_.size()))
    return true;
  clear();
  return false;
}

const GifTableGroup& GifFile::group_of(size_t index) const {
  const auto after = std::upper_bound(
      groups_.begin(), groups_.end(), index,
      [](size_t frame, const GifTableGroup& group) { return frame < group.first_frame; });
  return *(after - 1);
}

std::span<const uint8_t> GifFile::table(size_t index) const {
  const GifTableGroup& group = group_of(index);
  if (group.offset == 0) return {};
  return std::span(bytes_).subspan(group.offset, 3u << group.bits);
}

std::span<uint8_t> GifFile::table(size_t index) {
  const auto found = std::as_const(*this).table(index);
  return {const_cast<uint8_t*>(found.data()), found.size()};
}

FrameSource GifFile::source(size_t index) const {
  const GifFrame& frame = frames_[index];
  FrameSource out;
  out.table = table(index);
  out.transparent = frame.uses_transparency ? frame.transparent_index : -1;
  out.descriptor = {frame.left, frame.top, frame.width, frame.height, frame.flags};
  out.min_code_size = bytes_[frame.data];
  out.sub_blocks = std::span(bytes_).subspan(frame.data + 1, frame.data_size - 1);
  return out;
}

void GifTableCache::store(const GifFile& file) {
  tables_.clear();
  for (const GifTableGroup& group : file.table_groups()) {
    const auto table = file.table(group.first_frame);
    tables_.emplace_back(table.begin(), table.end());
  }
}

bool GifTableCache::restore(GifFile& file) const {
  for (size_t i = 0; i < tables_.size(); ++i)
    std::ranges::copy(tables_[i], file.table(file.table_groups()[i].first_frame).begin());
  return !tables_.empty();
}

}  // namespace kestrelon
