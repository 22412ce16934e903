#include "tests/services/ado/ado_objects.h"

#include <charconv>
#include <cmath>
#include <memory>

#include "base/calendar.h"
#include "host/late_bound.h"
#include "services/mysql/utf8_text.h"
#include "tests/services/ado/wire_client.h"
#include "tests/services/mariadb/server_values.h"

namespace kestrelon::testing {
namespace {

using host::Arguments;
using host::make_com;

constexpr HRESULT kProviderError = static_cast<HRESULT>(0x80040E14);
constexpr HRESULT kClosed = static_cast<HRESULT>(0x800A0E78);
constexpr HRESULT kNoRecord = static_cast<HRESULT>(0x800A0BCD);
constexpr HRESULT kBadArgument = static_cast<HRESULT>(0x800A0BB9);
constexpr HRESULT kNotFound = static_cast<HRESULT>(0x800A0CC1);

std::wstring wide(std::string_view text) {
  std::wstring out;
  from_utf8(text, out);
  return out;
}

Variant long_variant(int64_t value) {
  return Variant(static_cast<long>(value));
}

Variant byte_array(std::string_view bytes) {
  Variant array;
  V_ARRAY(&array) = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  V_VT(&array) = VT_ARRAY | VT_UI1;
  void* data = nullptr;
  SafeArrayAccessData(V_ARRAY(&array), &data);
  std::copy(bytes.begin(), bytes.end(), static_cast<char*>(data));
  SafeArrayUnaccessData(V_ARRAY(&array));
  return array;
}

Variant null_variant() {
  Variant null;
  V_VT(&null) = VT_NULL;
  return null;
}

Variant number_variant(const std::string& text, VARTYPE type) {
  Variant number(wide(text));
  VariantChangeTypeEx(&number, &number, LOCALE_INVARIANT, 0, type);
  return number;
}

// The system's conversion is off by a unit in the last place.
template <class Real>
Real real_of(const std::string& text) {
  Real value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

Variant moment_variant(const DbMoment& moment) {
  constexpr double kMicrosecondsOfDay = 86'400e6;
  const DateTime whole{
      {moment.year, moment.month, moment.day}, moment.hour, moment.minute, moment.second};
  if (!is_real_date(whole.date)) return null_variant();
  const double value = date_value(whole);
  const double fraction = moment.microsecond / kMicrosecondsOfDay;
  Variant date;
  V_VT(&date) = VT_DATE;
  V_DATE(&date) = value < 0 ? value - fraction : value + fraction;
  return date;
}

Variant value_of(const std::string& text, int type) {
  DbMoment moment;
  switch (type) {
    case db_type::kSmallInt:
    case db_type::kInteger:
      return number_variant(text, VT_I4);
    case db_type::kBigInt:
    case db_type::kNumeric:
      return number_variant(text, VT_DECIMAL);
    case db_type::kSingle:
      return Variant(real_of<float>(text));
    case db_type::kDouble:
      return Variant(real_of<double>(text));
    case db_type::kBoolean:
      return Variant(text != std::string(1, '\0'));
    case db_type::kDate:
    case db_type::kTimeStamp:
      if (read_moment(text, false, moment)) return moment_variant(moment);
      break;
    case db_type::kTime:
      if (read_moment(text, true, moment)) return moment_variant(moment);
      break;
    case db_type::kVarBinary:
    case db_type::kLongVarBinary:
      return byte_array(text);
    default:
      break;
  }
  return Variant(wide(text));
}

// The rows of a record set with its place in them; shared with its fields.
struct Cursor {
  WireResult result;
  bool is_open = false;
  size_t row = 0;
  // Where GetChunk stands, by column, in the row it was last called for.
  size_t chunk_row = SIZE_MAX;
  std::vector<size_t> chunk_at;

  const std::optional<std::string>& cell(size_t column) const {
    if (row >= result.rows.size())
      throw ComError(kNoRecord, L"BOF ou EOF é verdadeiro, ou o registro atual foi excluído.");
    return result.rows[row][column];
  }
};

class Field final : public host::LateBound {
 public:
  Field(std::shared_ptr<Cursor> cursor, size_t column)
      : LateBound(L"Field"), cursor_(std::move(cursor)), column_(column) {
    const WireColumn& own = cursor_->result.columns[column];
    type_ = ado_type(own.type, own.charset, own.length);
    property(L"Name", [this] { return Variant(wide(cursor_->result.columns[column_].name)); });
    property(L"Type", [this] { return long_variant(type_); });
    property(
        L"Value",
        [this] {
          const auto& cell = cursor_->cell(column_);
          return cell ? value_of(*cell, type_) : null_variant();
        },
        nullptr, DISPID_VALUE);
    property(L"ActualSize", [this] {
      const auto& cell = cursor_->cell(column_);
      return long_variant(cell ? static_cast<int64_t>(cell->size()) : 0);
    });
    method(L"GetChunk", [this](const Arguments& arguments) {
      return chunk(static_cast<size_t>(arguments.integer(0)));
    });
  }

 private:
  Variant chunk(size_t size) {
    if (cursor_->chunk_row != cursor_->row)
      cursor_->chunk_at.assign(cursor_->result.columns.size(), 0);
    cursor_->chunk_row = cursor_->row;
    const auto& cell = cursor_->cell(column_);
    size_t& at = cursor_->chunk_at[column_];
    if (!cell || at >= cell->size()) return null_variant();
    const std::string_view part = std::string_view(*cell).substr(at, size);
    at += part.size();
    return byte_array(part);
  }

  std::shared_ptr<Cursor> cursor_;
  size_t column_;
  int type_ = 0;
};

class Fields final : public host::LateBound {
 public:
  explicit Fields(const std::shared_ptr<Cursor>& cursor) : LateBound(L"Fields") {
    for (size_t i = 0; i < cursor->result.columns.size(); ++i) {
      names_.push_back(wide(cursor->result.columns[i].name));
      fields_.push_back(make_com<Field>(cursor, i).as<IDispatch>());
    }
    property(L"Count", [this] { return long_variant(static_cast<int64_t>(fields_.size())); });
    method(
        L"Item", [this](const Arguments& arguments) { return item(arguments.raw(0)); },
        DISPID_VALUE);
  }

 private:
  Variant item(const VARIANT& index) const {
    const Variant plain = host::plain_value(index);
    size_t found = fields_.size();
    if (V_VT(&plain) == VT_BSTR) {
      for (size_t i = 0; i < names_.size(); ++i)
        if (lstrcmpiW(names_[i].c_str(), V_BSTR(&plain)) == 0) found = i;
    } else {
      found = static_cast<size_t>(host::to_long(plain));
    }
    if (found >= fields_.size())
      throw ComError(kNotFound, L"O item não foi encontrado na coleção.");
    return Variant(fields_[found].get());
  }

  std::vector<std::wstring> names_;
  std::vector<ComPtr<IDispatch>> fields_;
};

WireResult run(WireClient& client, const std::wstring& sql) {
  try {
    return client.query(to_utf8(sql));
  } catch (const WireError& error) {
    throw ComError(kProviderError,
                   wide("[MariaDB](" + std::to_string(error.number) + ") " + error.what()), L"ADO");
  }
}

class Recordset final : public host::LateBound {
 public:
  Recordset(std::shared_ptr<WireClient> client, WireResult result)
      : LateBound(L"Recordset"), client_(std::move(client)) {
    if (!result.columns.empty()) take(std::move(result));
    property(L"EOF", [this] { return Variant(rows().row >= size()); });
    property(L"BOF", [this] { return Variant(rows().result.rows.empty()); });
    property(L"State", [this] { return long_variant(cursor_->is_open ? 1 : 0); });
    property(L"RecordCount", [this] {
      rows();
      return long_variant(static_cast<int64_t>(size()));
    });
    property(L"AbsolutePosition", [this] {
      constexpr int64_t kPositionEof = -3;
      return long_variant(rows().row < size() ? static_cast<int64_t>(cursor_->row) + 1
                                              : kPositionEof);
    });
    property(
        L"CursorLocation", [this] { return long_variant(cursor_location_); },
        [this](const VARIANT& value) { cursor_location_ = host::to_long(value); });
    property(
        L"PageSize", [this] { return long_variant(page_size_); },
        [this](const VARIANT& value) { set_page_size(host::to_long(value)); });
    property(L"PageCount", [this] {
      rows();
      return long_variant((static_cast<long>(size()) + page_size_ - 1) / page_size_);
    });
    property(
        L"AbsolutePage",
        [this] { return long_variant(1 + static_cast<long>(rows().row) / page_size_); },
        [this](const VARIANT& value) { set_page(host::to_long(value)); });
    property(
        L"Fields",
        [this] {
          rows();
          return Variant(fields_.get());
        },
        nullptr, DISPID_VALUE);
    action(L"MoveNext", [this](const Arguments&) {
      if (rows().row >= size())
        throw ComError(kNoRecord, L"BOF ou EOF é verdadeiro, ou o registro atual foi excluído.");
      ++cursor_->row;
    });
    action(L"Open", [this](const Arguments& arguments) { open(arguments); });
    action(L"Close", [this](const Arguments&) {
      rows();
      cursor_ = std::make_shared<Cursor>();
      fields_.reset();
    });
  }

 private:
  size_t size() const { return cursor_->result.rows.size(); }
  Cursor& rows() {
    if (!cursor_->is_open)
      throw ComError(kClosed, L"Esta operação não é permitida em um objeto fechado.");
    return *cursor_;
  }
  void take(WireResult result) {
    cursor_ = std::make_shared<Cursor>();
    cursor_->result = std::move(result);
    cursor_->is_open = true;
    fields_ = make_com<Fields>(cursor_).as<IDispatch>();
  }
  void set_page_size(long rows) {
    if (rows < 1)
      throw ComError(kBadArgument, L"Argumentos de tipo incorreto ou fora do intervalo.");
    page_size_ = rows;
  }
  void set_page(long page) {
    const auto first = static_cast<size_t>(page - 1) * static_cast<size_t>(page_size_);
    if (page < 1 || first >= size())
      throw ComError(kBadArgument, L"Argumentos de tipo incorreto ou fora do intervalo.");
    rows().row = first;
  }
  // Paging needs the client's cursor, and a table is read with the lock and option asked for.
  void open(const Arguments& arguments) {
    if (cursor_->is_open || cursor_location_ != 3 || arguments.count() != 5 ||
        !arguments.object(1) || arguments.has(2) || arguments.integer(3) != 1 ||
        arguments.integer(4) != 32)
      throw ComError(kBadArgument, L"Argumentos de tipo incorreto ou fora do intervalo.");
    take(run(*client_, arguments.text(0)));
  }

  std::shared_ptr<WireClient> client_;
  std::shared_ptr<Cursor> cursor_ = std::make_shared<Cursor>();
  ComPtr<IDispatch> fields_;
  long cursor_location_ = 2;
  long page_size_ = 10;
};

class Connection final : public host::LateBound {
 public:
  Connection(unsigned port, const std::string& database)
      : LateBound(L"Connection"), client_(std::make_shared<WireClient>(port, database)) {
    property(L"DefaultDatabase", [database] { return Variant(wide(database)); });
    method(L"Execute", [this](const Arguments& arguments) {
      const auto rows = make_com<Recordset>(client_, run(*client_, arguments.text(0)));
      return Variant(rows.as<IDispatch>().get());
    });
  }

 private:
  std::shared_ptr<WireClient> client_;
};

}  // namespace

ComPtr<IDispatch> make_ado_connection(unsigned port, const std::string& database) {
  return make_com<Connection>(port, database).as<IDispatch>();
}

}  // namespace kestrelon::testing
