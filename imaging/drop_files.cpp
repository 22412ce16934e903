#include "imaging/drop_files.h"

#include "base/byte_reader.h"

namespace kestrelon {
namespace {

constexpr size_t kHeadBytes = 20;

template <class Character, class Next>
void read_names(ByteReader& reader, Next&& next, std::vector<std::basic_string<Character>>& names) {
  std::basic_string<Character> name;
  for (auto unit = next(); reader.ok(); unit = next()) {
    if (unit != 0) {
      name += static_cast<Character>(unit);
    } else if (name.empty()) {
      return;
    } else {
      names.push_back(std::move(name));
      name.clear();
    }
  }
}

}  // namespace

std::optional<DroppedNames> read_drop_files(std::span<const uint8_t> block) {
  ByteReader reader(block);
  const uint32_t offset = reader.u32le();
  reader.skip(12);  // the point of the drop
  DroppedNames found;
  found.wide = reader.u32le() != 0;
  if (!reader.ok() || offset < kHeadBytes || !reader.seek(offset)) return {};
  if (found.wide) {
    read_names(
        reader, [&] { return reader.u16le(); }, found.names);
  } else {
    read_names(
        reader, [&] { return reader.u8(); }, found.narrow_names);
  }
  return found;
}

}  // namespace kestrelon
