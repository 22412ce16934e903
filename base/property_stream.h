// The binary form of a saved control: what IPersistStream and IPersistStorage write.
//
//   "KPS1", 32-bit length of what follows, then records:
//   16-bit key length, key in UTF-16, 16-bit type, 32-bit data length, data
//
// All numbers are little-endian. The length in front lets a reader skip what a newer build added
// behind.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kestrelon {

/// One saved value. `type` is the automation type (VT_...), `data` its bytes: numbers
/// little-endian, text in UTF-16 without an end mark, objects as their class id and their own
/// stream.
struct PropertyRecord {
  std::wstring key;
  uint16_t type = 0;
  std::vector<uint8_t> data;

  bool operator==(const PropertyRecord&) const = default;
};

/// Longest payload that is read; a stream that declares more is refused before memory is taken.
inline constexpr uint32_t kMaxPropertyBytes = 256u << 20;

inline constexpr size_t kPropertyHeaderBytes = 8;

std::vector<uint8_t> write_property_stream(const std::vector<PropertyRecord>& records);

/// The payload length that a header of kPropertyHeaderBytes declares; false when it is not one of
/// ours or declares more than kMaxPropertyBytes.
bool read_property_header(std::span<const uint8_t> header, uint32_t& length);

/// The whole records of a payload. A payload cut short gives those before the cut.
std::vector<PropertyRecord> read_property_records(std::span<const uint8_t> payload);

/// Text as UTF-16 code units in little-endian bytes, and back; an odd last byte is dropped.
std::vector<uint8_t> utf16_bytes(std::wstring_view text);
std::wstring utf16_text(std::span<const uint8_t> bytes);

}  // namespace kestrelon
