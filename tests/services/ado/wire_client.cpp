#include "tests/services/ado/wire_client.h"

#include <winsock2.h>

#include <algorithm>
#include <cstring>

namespace kestrelon::testing {
namespace {

constexpr size_t kMostPayload = 0xFFFFFF;
constexpr unsigned char kError = 0xFF;
constexpr unsigned char kEnd = 0xFE;
constexpr unsigned char kNull = 0xFB;
constexpr char kQuery = 3;
constexpr int kLost = 2013;

// Reads the fields of one packet.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  bool at_end() const { return bytes_.empty(); }
  unsigned char peek() const { return static_cast<unsigned char>(bytes_.at(0)); }
  uint64_t number(size_t size) {
    uint64_t value = 0;
    for (size_t i = size; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes_.at(i));
    bytes_.remove_prefix(size);
    return value;
  }
  uint64_t length() {
    const auto first = number(1);
    if (first < kNull) return first;
    return number(first == 0xFC ? 2 : first == 0xFD ? 3 : 8);
  }
  std::string_view text() { return take(length()); }
  std::string_view take(uint64_t size) {
    const std::string_view part = bytes_.substr(0, static_cast<size_t>(size));
    bytes_.remove_prefix(part.size());
    return part;
  }

 private:
  std::string_view bytes_;
};

[[noreturn]] void fail(std::string_view packet) {
  Reader reader(packet.substr(1));
  const int number = static_cast<int>(reader.number(2));
  std::string_view text = packet.substr(3);
  if (text.starts_with('#')) text.remove_prefix(6);
  throw WireError(number, std::string(text));
}

bool is_error(std::string_view packet) {
  return !packet.empty() && static_cast<unsigned char>(packet[0]) == kError;
}

bool is_end(std::string_view packet) {
  return packet.size() < 9 && !packet.empty() && static_cast<unsigned char>(packet[0]) == kEnd;
}

void append_number(std::string& out, uint64_t value, size_t size) {
  for (; size-- > 0; value >>= 8) out.push_back(static_cast<char>(value & 0xFF));
}

WireColumn read_column(std::string_view packet) {
  Reader reader(packet);
  for (int i = 0; i < 4; ++i) reader.text();  // catalog, schema, table, its original name
  WireColumn column;
  column.name = reader.text();
  reader.text();
  reader.length();
  column.charset = static_cast<unsigned>(reader.number(2));
  column.length = static_cast<unsigned long>(reader.number(4));
  column.type = static_cast<int>(reader.number(1));
  return column;
}

}  // namespace

WireClient::WireClient(unsigned port, const std::string& database) {
  WSADATA data;
  WSAStartup(MAKEWORD(2, 2), &data);
  socket_ = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<uint16_t>(port));
  if (connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    closesocket(socket_);
    throw WireError(2003, "Can't connect to the server");
  }
  log_in(database);
}

WireClient::~WireClient() {
  closesocket(socket_);
  WSACleanup();
}

void WireClient::read_exactly(char* out, size_t size) {
  while (size > 0) {
    if (at_ == buffer_.size()) {
      buffer_.resize(65536);
      const int count = recv(socket_, buffer_.data(), static_cast<int>(buffer_.size()), 0);
      buffer_.resize(count > 0 ? static_cast<size_t>(count) : 0);
      at_ = 0;
      if (count <= 0) throw WireError(kLost, "Lost connection to server during query");
    }
    const size_t part = std::min(size, buffer_.size() - at_);
    std::memcpy(out, buffer_.data() + at_, part);
    at_ += part;
    out += part;
    size -= part;
  }
}

std::string WireClient::read_packet() {
  std::string payload;
  for (size_t size = kMostPayload; size == kMostPayload;) {
    unsigned char head[4];
    read_exactly(reinterpret_cast<char*>(head), sizeof head);
    size = head[0] | head[1] << 8 | head[2] << 16;
    sequence_ = static_cast<uint8_t>(head[3] + 1);
    const size_t start = payload.size();
    payload.resize(start + size);
    read_exactly(payload.data() + start, size);
  }
  return payload;
}

void WireClient::write_packet(std::string_view payload) {
  std::string out;
  for (size_t part = kMostPayload; part == kMostPayload;) {
    part = std::min(payload.size(), kMostPayload);
    append_number(out, part, 3);
    out.push_back(static_cast<char>(sequence_++));
    out.append(payload.substr(0, part));
    payload.remove_prefix(part);
  }
  for (size_t sent = 0; sent < out.size();) {
    const int count = send(socket_, out.data() + sent, static_cast<int>(out.size() - sent), 0);
    if (count <= 0) throw WireError(2006, "Server has gone away");
    sent += static_cast<size_t>(count);
  }
}

void WireClient::log_in(const std::string& database) {
  // Long passwords, found rows, database at once, protocol 4.1, transactions, secure and named
  // plugin.
  constexpr uint32_t kCapabilities = 0x1 | 0x8 | 0x200 | 0x2000 | 0x8000 | 0x80000;
  constexpr char kUtf8mb4 = 45;
  if (const std::string greeting = read_packet(); is_error(greeting)) fail(greeting);
  std::string answer;
  append_number(answer, kCapabilities, 4);
  append_number(answer, kMostPayload, 4);
  answer.push_back(kUtf8mb4);
  answer.append(23, '\0');
  answer.append("root").push_back('\0');
  answer.push_back('\0');  // an empty password has an empty proof
  answer.append(database).push_back('\0');
  answer.append("mysql_native_password").push_back('\0');
  write_packet(answer);
  if (const std::string verdict = read_packet(); is_error(verdict)) fail(verdict);
}

WireResult WireClient::query(std::string_view sql) {
  sequence_ = 0;
  write_packet(std::string(1, kQuery).append(sql));
  WireResult result;
  const std::string head = read_packet();
  if (is_error(head)) fail(head);
  if (head.at(0) == '\0') return result;
  const auto columns = Reader(head).length();
  for (uint64_t i = 0; i < columns; ++i) result.columns.push_back(read_column(read_packet()));
  read_packet();  // the end of the columns
  for (;;) {
    const std::string packet = read_packet();
    if (is_error(packet)) fail(packet);
    if (is_end(packet)) return result;
    Reader reader(packet);
    auto& row = result.rows.emplace_back();
    for (uint64_t i = 0; i < columns; ++i) {
      if (reader.peek() == kNull) {
        reader.number(1);
        row.emplace_back();
      } else {
        row.emplace_back(reader.text());
      }
    }
  }
}

}  // namespace kestrelon::testing
