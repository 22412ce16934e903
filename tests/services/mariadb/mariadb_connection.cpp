#include "tests/services/mariadb/mariadb_connection.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <vector>

#include "services/mysql/utf8_text.h"

namespace kestrelon::testing {
namespace {

constexpr unsigned kBinaryCharset = 63;

[[noreturn]] void fail_with(MYSQL* mysql) {
  std::wstring text;
  from_utf8(mysql_error(mysql), text);
  throw DbError(static_cast<long>(mysql_errno(mysql)), text);
}

int ado_type(const MYSQL_FIELD& field) {
  const bool is_binary = field.charsetnr == kBinaryCharset;
  switch (field.type) {
    case MYSQL_TYPE_TINY:
    case MYSQL_TYPE_SHORT:
    case MYSQL_TYPE_YEAR:
      return db_type::kSmallInt;
    case MYSQL_TYPE_INT24:
    case MYSQL_TYPE_LONG:
      return db_type::kInteger;
    case MYSQL_TYPE_LONGLONG:
      return db_type::kBigInt;
    case MYSQL_TYPE_FLOAT:
      return db_type::kSingle;
    case MYSQL_TYPE_DOUBLE:
      return db_type::kDouble;
    case MYSQL_TYPE_DECIMAL:
    case MYSQL_TYPE_NEWDECIMAL:
      return db_type::kNumeric;
    case MYSQL_TYPE_DATE:
    case MYSQL_TYPE_NEWDATE:
      return db_type::kDate;
    case MYSQL_TYPE_TIME:
      return db_type::kTime;
    case MYSQL_TYPE_DATETIME:
    case MYSQL_TYPE_TIMESTAMP:
      return db_type::kTimeStamp;
    case MYSQL_TYPE_BIT:
      return field.length == 1 ? db_type::kBoolean : db_type::kVarBinary;
    case MYSQL_TYPE_GEOMETRY:
      return db_type::kLongVarBinary;
    case MYSQL_TYPE_TINY_BLOB:
    case MYSQL_TYPE_MEDIUM_BLOB:
    case MYSQL_TYPE_LONG_BLOB:
    case MYSQL_TYPE_BLOB:
      return is_binary ? db_type::kLongVarBinary : db_type::kVarChar;
    default:
      return is_binary ? db_type::kVarBinary : db_type::kVarChar;
  }
}

// "2024-01-31 10:20:30.5" or its parts; false for what is no moment of a day.
bool read_moment(std::string_view text, bool is_time, DbMoment& moment) {
  int numbers[7] = {};
  size_t count = 0;
  for (size_t at = 0; at < text.size() && count < 7; ++count) {
    size_t end = at;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
    if (end == at) return false;
    std::from_chars(text.data() + at, text.data() + end, numbers[count]);
    const bool is_fraction = at > 0 && text[at - 1] == '.';
    for (size_t digits = end - at; is_fraction && digits < 6; ++digits) numbers[count] *= 10;
    at = end + 1;
  }
  if (!is_time) {
    moment = {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5], numbers[6]};
  } else {
    if (numbers[0] > 23) return false;
    moment.hour = numbers[0];
    moment.minute = numbers[1];
    moment.second = numbers[2];
    moment.microsecond = numbers[3];
  }
  return true;
}

class MariaDbRows final : public RecordSet {
 public:
  MariaDbRows(MYSQL* mysql, MYSQL_RES* result, bool is_streamed)
      : mysql_(mysql), result_(result, mysql_free_result), is_streamed_(is_streamed) {
    if (result == nullptr) return;
    const MYSQL_FIELD* const fields = mysql_fetch_fields(result);
    for (unsigned i = 0; i < mysql_num_fields(result); ++i) {
      fields_.push_back(&fields[i]);
      types_.push_back(ado_type(fields[i]));
    }
    fetch();
  }

  bool eof() override { return row_ == nullptr; }
  bool bof() override { return false; }
  void move_next() override { fetch(); }
  int64_t record_count() override {
    if (is_streamed_) return -1;
    return result_ ? static_cast<int64_t>(mysql_num_rows(result_.get())) : 0;
  }
  int64_t absolute_position() override { return position_; }
  void set_page_size(int) override {}
  int64_t page_count() override { return -1; }
  void set_absolute_page(int64_t) override {}
  size_t field_count() override { return fields_.size(); }
  int field_type(size_t field) override { return types_[field]; }
  std::optional<size_t> find_field(std::wstring_view name) override {
    const std::string wanted = to_utf8(name);
    for (size_t i = 0; i < fields_.size(); ++i)
      if (wanted == fields_[i]->name) return i;
    return std::nullopt;
  }
  DbValue value(size_t field) override;
  int64_t actual_size(size_t field) override { return static_cast<int64_t>(lengths_[field]); }
  std::string_view get_chunk(size_t field, int size) override {
    if (chunk_field_ != field) chunk_at_ = 0;
    chunk_field_ = field;
    const std::string_view chunk = bytes(field).substr(chunk_at_, static_cast<size_t>(size));
    chunk_at_ += chunk.size();
    return chunk;
  }
  void close() override { result_.reset(); }

 private:
  std::string_view bytes(size_t field) const {
    return row_[field] == nullptr ? std::string_view()
                                  : std::string_view(row_[field], lengths_[field]);
  }
  void fetch() {
    row_ = mysql_fetch_row(result_.get());
    if (row_ == nullptr && is_streamed_ && mysql_errno(mysql_) != 0) fail_with(mysql_);
    if (row_ != nullptr) lengths_ = mysql_fetch_lengths(result_.get());
    ++position_;
    chunk_field_ = SIZE_MAX;
  }

  MYSQL* mysql_;
  std::unique_ptr<MYSQL_RES, decltype(&mysql_free_result)> result_;
  bool is_streamed_;
  std::vector<const MYSQL_FIELD*> fields_;
  std::vector<int> types_;
  MYSQL_ROW row_ = nullptr;
  const unsigned long* lengths_ = nullptr;
  int64_t position_ = 0;
  size_t chunk_field_ = SIZE_MAX;
  size_t chunk_at_ = 0;
  std::wstring text_;
};

DbValue MariaDbRows::value(size_t field) {
  DbValue value;
  if (row_[field] == nullptr) return value;
  const std::string_view text = bytes(field);
  const int type = types_[field];
  value.kind = DbValue::Kind::kText;
  if (type == db_type::kBoolean) {
    value.kind = DbValue::Kind::kBoolean;
    value.boolean = text != std::string_view("\0", 1);
    return value;
  }
  if (type == db_type::kSingle || type == db_type::kDouble) {
    value.kind = DbValue::Kind::kReal;
    std::from_chars(text.data(), text.data() + text.size(), value.real);
    return value;
  }
  if (type >= db_type::kDate && type <= db_type::kTimeStamp &&
      read_moment(text, type == db_type::kTime, value.moment)) {
    value.kind = DbValue::Kind::kMoment;
    return value;
  }
  if (type == db_type::kVarBinary || type == db_type::kLongVarBinary) {
    value.kind = DbValue::Kind::kBytes;
    value.bytes = text;
    return value;
  }
  from_utf8(text, text_);
  if (type != db_type::kVarChar && type < db_type::kDate) {
    value.kind = DbValue::Kind::kNumber;
    std::replace(text_.begin(), text_.end(), L'.', L',');
  }
  value.text = text_;
  return value;
}

}  // namespace

MariaDbConnection::MariaDbConnection(unsigned port, const std::string& database)
    : mysql_(mysql_init(nullptr), mysql_close) {
  from_utf8(database, database_);
  mysql_options(handle(), MYSQL_SET_CHARSET_NAME, "utf8mb4");
  if (mysql_real_connect(handle(), "127.0.0.1", "root", "",
                         database.empty() ? nullptr : database.c_str(), port, nullptr,
                         0) == nullptr)
    fail();
}

void MariaDbConnection::fail() {
  fail_with(handle());
}

void MariaDbConnection::run(const std::string& sql) {
  if (mysql_real_query(handle(), sql.data(), sql.size()) != 0) fail();
  if (MYSQL_RES* const result = mysql_store_result(handle())) mysql_free_result(result);
}

std::unique_ptr<RecordSet> MariaDbConnection::execute(std::wstring_view sql) {
  const std::string utf8 = to_utf8(sql);
  if (mysql_real_query(handle(), utf8.data(), utf8.size()) != 0) fail();
  MYSQL_RES* const result = mysql_store_result(handle());
  if (result == nullptr && mysql_errno(handle()) != 0) fail();
  return std::make_unique<MariaDbRows>(handle(), result, false);
}

std::unique_ptr<RecordSet> MariaDbConnection::open_rows(std::unique_ptr<RecordSet> reuse,
                                                        std::wstring_view sql) {
  reuse.reset();
  const std::string utf8 = to_utf8(sql);
  if (mysql_real_query(handle(), utf8.data(), utf8.size()) != 0) fail();
  MYSQL_RES* const result = mysql_use_result(handle());
  if (result == nullptr) fail();
  return std::make_unique<MariaDbRows>(handle(), result, true);
}

}  // namespace kestrelon::testing
