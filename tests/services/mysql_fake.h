// A connection that answers from a script and keeps what it was asked.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "services/mysql/db_connection.h"

namespace kestrelon::testing {

struct FakeField {
  std::wstring name;
  int type = db_type::kVarChar;
};

/// A cell: a value with the text or bytes that its views show. Bytes are read in chunks, each of
/// which may fail.
struct FakeCell {
  FakeCell() = default;
  FakeCell(const wchar_t* value) : text(value) { kind = DbValue::Kind::kText; }
  FakeCell(std::wstring value) : text(std::move(value)) { kind = DbValue::Kind::kText; }

  static FakeCell number(const wchar_t* value) {
    FakeCell cell(value);
    cell.kind = DbValue::Kind::kNumber;
    return cell;
  }
  static FakeCell of_real(double value) {
    FakeCell cell;
    cell.kind = DbValue::Kind::kReal;
    cell.real = value;
    return cell;
  }
  static FakeCell of_boolean(bool value) {
    FakeCell cell;
    cell.kind = DbValue::Kind::kBoolean;
    cell.boolean = value;
    return cell;
  }
  static FakeCell of_moment(const DbMoment& value) {
    FakeCell cell;
    cell.kind = DbValue::Kind::kMoment;
    cell.moment = value;
    return cell;
  }
  static FakeCell of_bytes(std::string value) {
    FakeCell cell;
    cell.kind = DbValue::Kind::kBytes;
    cell.bytes = std::move(value);
    return cell;
  }

  DbValue value() const {
    DbValue shown;
    shown.kind = kind;
    shown.boolean = boolean;
    shown.real = real;
    shown.moment = moment;
    shown.text = text;
    shown.bytes = bytes;
    return shown;
  }

  DbValue::Kind kind = DbValue::Kind::kNull;
  std::wstring text;
  std::string bytes;
  DbMoment moment;
  double real = 0;
  bool boolean = false;
  std::set<size_t> failing_chunks;
};

struct FakeTable {
  std::vector<FakeField> fields;
  std::vector<std::vector<FakeCell>> rows;
};

class FakeRecordSet final : public RecordSet {
 public:
  explicit FakeRecordSet(FakeTable table) : table_(std::move(table)) {}

  bool eof() override { return at_ >= table_.rows.size(); }
  bool bof() override { return table_.rows.empty(); }
  void move_next() override {
    ++at_;
    chunks_.clear();
  }
  int64_t record_count() override { return static_cast<int64_t>(table_.rows.size()); }
  int64_t absolute_position() override { return static_cast<int64_t>(at_) + 1; }
  void set_page_size(int rows) override { page_size_ = rows; }
  int64_t page_count() override {
    return (static_cast<int64_t>(table_.rows.size()) + page_size_ - 1) / page_size_;
  }
  void set_absolute_page(int64_t page) override {
    at_ = static_cast<size_t>((page - 1) * page_size_);
  }
  size_t field_count() override { return table_.fields.size(); }
  int field_type(size_t field) override { return table_.fields[field].type; }
  std::optional<size_t> find_field(std::wstring_view name) override {
    for (size_t i = 0; i < table_.fields.size(); ++i)
      if (table_.fields[i].name == name) return i;
    return std::nullopt;
  }
  DbValue value(size_t field) override { return table_.rows[at_][field].value(); }
  int64_t actual_size(size_t field) override {
    return static_cast<int64_t>(table_.rows[at_][field].bytes.size());
  }
  std::string_view get_chunk(size_t field, int size) override {
    const FakeCell& cell = table_.rows[at_][field];
    const size_t number = chunks_[field]++;
    if (cell.failing_chunks.count(number) != 0) throw DbError(7, L"sem memória");
    const auto step = static_cast<size_t>(size);
    return std::string_view(cell.bytes).substr(std::min(number * step, cell.bytes.size()), step);
  }
  void close() override {}

 private:
  FakeTable table_;
  size_t at_ = 0;
  std::map<size_t, size_t> chunks_;  // read so far of each field in this row
  int64_t page_size_ = 10;
};

class FakeConnection final : public DbConnection {
 public:
  std::wstring default_database() override { return L"loja"; }
  std::unique_ptr<RecordSet> execute(std::wstring_view sql) override {
    asked.emplace_back(sql);
    if (failing.count(std::wstring(sql)) != 0) throw DbError(1064, L"erro de sintaxe");
    return std::make_unique<FakeRecordSet>(answers[std::wstring(sql)]);
  }
  std::unique_ptr<RecordSet> open_rows(std::unique_ptr<RecordSet>, std::wstring_view sql) override {
    return execute(sql);
  }

  std::map<std::wstring, FakeTable> answers;
  std::set<std::wstring> failing;
  std::vector<std::wstring> asked;
};

/// A file of the test's own, gone with it.
struct ScratchFile {
  ~ScratchFile() {
    std::error_code error;
    std::filesystem::remove(path, error);
  }
  void write(const std::string& text) const { std::ofstream(path, std::ios::binary) << text; }
  std::string read() const {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  std::filesystem::path path =
      std::filesystem::temp_directory_path() / "kestrelon-service-test.txt";
};

}  // namespace kestrelon::testing
