#include "imaging/png_writer.h"

#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "imaging/png_colors.h"
#include "imaging/png_filter.h"
#include "imaging/png_format.h"
#include "imaging/png_texts.h"
#include "imaging/zlib_api.h"

namespace kestrelon {
namespace {

using Bytes = std::vector<uint8_t>;

constexpr int kLevel = 9;
constexpr size_t kLongestPlainText = 1024;  // of Miscellaneous; longer ones are compressed

void append_be32(Bytes& out, uint32_t value) {
  for (int shift : {24, 16, 8, 0}) out.push_back(static_cast<uint8_t>(value >> shift));
}

class Writer {
 public:
  Writer(const c32bppDIB& image, const PngProperties& properties, const ZlibApi& zlib,
         const PngOutput& output, bool exact)
      : image_(image), properties_(properties), zlib_(zlib), output_(output) {
    const PngPropertyEntry* entry = properties.find(PngProperty::DefaultBkgColor);
    const int32_t color = entry ? std::get<int32_t>(entry->value) : -1;
    if (color >= 0) background_ = static_cast<uint32_t>(color) & 0xFFFFFF;
    plan_ = png::plan_colors(image, background_);
    plan_.exact = exact;
  }

  bool run() {
    return output_(png::kSignature) && write_header() &&
           write_texts(PngProperty::Title, PngProperty::Author) && write_palette() &&
           write_background() && write_transparency() && write_data() && write_time() &&
           write_texts(PngProperty::Description, PngProperty::Miscellaneous) &&
           write_chunk(png::kIend, {});
  }

 private:
  bool write_chunk(uint32_t type, std::span<const uint8_t> data) {
    if (data.size() > INT32_MAX) return false;
    Bytes head;
    append_be32(head, static_cast<uint32_t>(data.size()));
    append_be32(head, type);
    unsigned long crc = zlib_.crc32(0, head.data() + 4, 4);
    if (!data.empty()) crc = zlib_.crc32(crc, data.data(), static_cast<unsigned int>(data.size()));
    Bytes tail;
    append_be32(tail, static_cast<uint32_t>(crc));
    return output_(head) && (data.empty() || output_(data)) && output_(tail);
  }

  bool write_header() {
    Bytes data;
    append_be32(data, static_cast<uint32_t>(image_.Width()));
    append_be32(data, static_cast<uint32_t>(image_.Height()));
    data.insert(data.end(), {8, static_cast<uint8_t>(plan_.type), 0, 0, 0});
    return write_chunk(png::kIhdr, data);
  }

  bool write_palette() {
    if (plan_.type != png::ColorType::Palette) return true;
    Bytes data;
    for (uint32_t entry : plan_.palette) {
      const uint32_t color = png::straight_color(entry, plan_.exact);
      for (int shift : {16, 8, 0}) data.push_back(static_cast<uint8_t>(color >> shift));
    }
    return write_chunk(png::kPlte, data);
  }

  bool write_background() {
    if (!background_) return true;
    Bytes data;
    if (plan_.type == png::ColorType::Palette) {
      data.push_back(nearest_entry(*background_));
    } else {
      for (int shift : {0, 8, 16}) {
        data.push_back(0);
        data.push_back(static_cast<uint8_t>(*background_ >> shift));
      }
    }
    return write_chunk(png::chunk_type("bKGD"), data);
  }

  // The palette entry whose colour is closest to `bgr`; among equals one without transparency.
  uint8_t nearest_entry(uint32_t bgr) const {
    size_t best = 0;
    uint32_t least = std::numeric_limits<uint32_t>::max();
    for (size_t i = 0; i < plan_.palette.size(); ++i) {
      const uint32_t color = png::straight_color(plan_.palette[i], plan_.exact);
      uint32_t distance = 0;
      for (unsigned shift : {0u, 8u, 16u}) {
        const int delta =
            static_cast<int>(color >> (16 - shift) & 255) - static_cast<int>(bgr >> shift & 255);
        distance += static_cast<uint32_t>(delta * delta);
      }
      distance = distance * 2 + (color >> 24 == 255 ? 0 : 1);
      if (distance < least) {
        least = distance;
        best = i;
      }
    }
    return static_cast<uint8_t>(best);
  }

  bool write_transparency() {
    Bytes data;
    if (plan_.key) {
      for (int i = 0; i < 3; ++i) data.insert(data.end(), {0, *plan_.key});
    }
    // Rising order puts the opaque entries last, where they need not be written.
    for (uint32_t entry : plan_.palette) {
      if (entry >> 24 != 255) data.push_back(static_cast<uint8_t>(entry >> 24));
    }
    return data.empty() || write_chunk(png::kTrns, data);
  }

  bool write_data() {
    std::optional<Bytes> packed = compress(filtered_stream());
    return packed && write_chunk(png::kIdat, *packed);
  }

  Bytes filtered_stream() {
    png::SampleRows samples(image_, plan_);
    png::RowFilter filter(properties_.filter(), plan_.type, samples.row_bytes());
    const size_t stride = samples.row_bytes() + 1;
    Bytes stream(stride * static_cast<size_t>(image_.Height()));
    for (int32_t y = 0; y < image_.Height(); ++y) {
      samples.read(filter.next_row(), y);
      filter.filter(&stream[stride * static_cast<size_t>(y)]);
    }
    return stream;
  }

  std::optional<Bytes> compress(std::span<const uint8_t> plain) {
    const uint64_t room = uint64_t{plain.size()} + plain.size() / 100 + 12;
    if (room > std::numeric_limits<unsigned long>::max()) return std::nullopt;
    const auto buffer = std::make_unique_for_overwrite<uint8_t[]>(static_cast<size_t>(room));
    auto size = static_cast<unsigned long>(room);
    const int result = zlib_.compress2(buffer.get(), &size, plain.data(),
                                       static_cast<unsigned long>(plain.size()), kLevel);
    if (result != kZlibOk) return std::nullopt;
    return Bytes(buffer.get(), buffer.get() + size);
  }

  bool write_time() {
    const PngPropertyEntry* entry = properties_.find(PngProperty::DateTimeModified);
    if (!entry) return true;
    return write_chunk(png::chunk_type("tIME"), png::time_bytes(std::get<double>(entry->value)));
  }

  // The texts from `first` to `last` in the order of the properties.
  bool write_texts(PngProperty first, PngProperty last) {
    for (const PngPropertyEntry& entry : properties_.entries()) {
      if (entry.id < first || entry.id > last) continue;
      if (!write_text(entry)) return false;
    }
    return true;
  }

  bool write_text(const PngPropertyEntry& entry) {
    const std::string text = png::latin1_text(std::get<std::wstring>(entry.value));
    if (text.empty()) return true;
    const std::string keyword = png::keyword_of(entry);
    Bytes data(keyword.begin(), keyword.end());
    data.push_back(0);
    if (entry.id != PngProperty::Miscellaneous || text.size() <= kLongestPlainText) {
      data.insert(data.end(), text.begin(), text.end());
      return write_chunk(png::chunk_type("tEXt"), data);
    }
    const auto plain = std::span(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    const std::optional<Bytes> packed = compress(plain);
    if (!packed) return false;
    data.push_back(0);  // compression method: deflate
    data.insert(data.end(), packed->begin(), packed->end());
    return write_chunk(png::chunk_type("zTXt"), data);
  }

  const c32bppDIB& image_;
  const PngProperties& properties_;
  const ZlibApi& zlib_;
  const PngOutput& output_;
  std::optional<uint32_t> background_;  // 0x00BBGGRR
  png::ColorPlan plan_;
};

bool write(const c32bppDIB& image, const PngProperties& properties, const PngOutput& output,
           bool exact) {
  const ZlibApi* const zlib = find_zlib();
  if (!image.has_image() || !zlib || !zlib->compress2 || !zlib->crc32) return false;
  try {
    return Writer(image, properties, *zlib, output, exact).run();
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool write_to(std::vector<uint8_t>& out, const c32bppDIB& image, const PngProperties& properties,
              bool exact) {
  out.clear();
  const auto append = [&](std::span<const uint8_t> bytes) {
    try {
      out.insert(out.end(), bytes.begin(), bytes.end());
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  };
  const bool written = write(image, properties, append, exact);
  if (!written) out.clear();
  return written;
}

}  // namespace

bool cPNGwriter::Save(const c32bppDIB& image, const PngProperties& properties,
                      const PngOutput& output) {
  return write(image, properties, output, false);
}

bool cPNGwriter::Save(const c32bppDIB& image, const PngProperties& properties,
                      std::vector<uint8_t>& out) {
  return write_to(out, image, properties, false);
}

bool cPNGwriter::SaveExact(const c32bppDIB& image, std::vector<uint8_t>& out) {
  return write_to(out, image, PngProperties(), true);
}

}  // namespace kestrelon
