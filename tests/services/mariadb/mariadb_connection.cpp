#include "tests/services/mariadb/mariadb_connection.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <vector>

#include "services/mysql/utf8_text.h"
#include "tests/services/mariadb/server_values.h"

namespace kestrelon::testing {
namespace {

[[noreturn]] void fail_with(MYSQL* mysql) {
  std::wstring text;
  from_utf8(mysql_error(mysql), text);
  throw DbError(static_cast<long>(mysql_errno(mysql)), text);
}

class MariaDbRows final : public RecordSet {
 public:
  MariaDbRows(MYSQL* mysql, MYSQL_RES* result, bool is_streamed)
      : mysql_(mysql), result_(result, mysql_free_result), is_streamed_(is_streamed) {
    if (result == nullptr) return;
    const MYSQL_FIELD* const fields = mysql_fetch_fields(result);
    for (unsigned i = 0; i < mysql_num_fields(result); ++i) {
      fields_.push_back(&fields[i]);
      types_.push_back(ado_type(fields[i].type, fields[i].charsetnr, fields[i].length));
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
