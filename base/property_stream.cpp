#include "base/property_stream.h"

#include "base/byte_reader.h"
#include "base/byte_writer.h"

namespace kestrelon {
namespace {

constexpr uint32_t kMagic = 0x3153504B;  // "KPS1"

}  // namespace

std::vector<uint8_t> utf16_bytes(std::wstring_view text) {
  std::vector<uint8_t> out;
  out.reserve(text.size() * 2);
  ByteWriter writer(out);
  for (const wchar_t unit : text) writer.u16le(static_cast<uint16_t>(unit));
  return out;
}

std::wstring utf16_text(std::span<const uint8_t> bytes) {
  std::wstring out(bytes.size() / 2, L'\0');
  ByteReader reader(bytes);
  for (wchar_t& unit : out) unit = static_cast<wchar_t>(reader.u16le());
  return out;
}

std::vector<uint8_t> write_property_stream(const std::vector<PropertyRecord>& records) {
  std::vector<uint8_t> payload;
  ByteWriter body(payload);
  for (const PropertyRecord& record : records) {
    body.u16le(static_cast<uint16_t>(record.key.size()));
    body.bytes(utf16_bytes(record.key));
    body.u16le(record.type);
    body.u32le(static_cast<uint32_t>(record.data.size()));
    body.bytes(record.data);
  }
  std::vector<uint8_t> out;
  out.reserve(kPropertyHeaderBytes + payload.size());
  ByteWriter head(out);
  head.u32le(kMagic);
  head.u32le(static_cast<uint32_t>(payload.size()));
  head.bytes(payload);
  return out;
}

bool read_property_header(std::span<const uint8_t> header, uint32_t& length) {
  ByteReader reader(header);
  const uint32_t magic = reader.u32le();
  length = reader.u32le();
  return reader.ok() && magic == kMagic && length <= kMaxPropertyBytes;
}

std::vector<PropertyRecord> read_property_records(std::span<const uint8_t> payload) {
  std::vector<PropertyRecord> records;
  ByteReader reader(payload);
  while (reader.remaining() > 0) {
    PropertyRecord record;
    const size_t key_length = reader.u16le();
    const auto key = reader.take(key_length * 2);
    record.type = reader.u16le();
    const auto data = reader.take(reader.u32le());
    if (!reader.ok()) break;
    record.key = utf16_text(key);
    record.data.assign(data.begin(), data.end());
    records.push_back(std::move(record));
  }
  return records;
}

}  // namespace kestrelon
