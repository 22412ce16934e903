#include "services/mysql/ado_connection_win.h"

#include <cmath>
#include <vector>

#include "base/calendar.h"

namespace kestrelon {
namespace {

constexpr long kClientCursor = 3;
constexpr long kReadOnlyLock = 1;
constexpr long kOpenOptions = 32;

// The text by which the hosts tell an automation error without one of its own.
std::wstring described(const ComError& error) {
  if (!error.description.empty()) return error.description;
  wchar_t* text = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, static_cast<DWORD>(error.hr), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  std::wstring description(text != nullptr ? text : L"Erro de automação.",
                           text != nullptr ? length : 18);
  LocalFree(text);
  while (!description.empty() && description.back() <= L' ') description.pop_back();
  return description;
}

// An object of another kind lacks what is asked of it by name: the name is what helps.
DbError database_error(const ComError& error) {
  if (error.hr != DISP_E_UNKNOWNNAME) return {error.hr, described(error)};
  return {error.hr, L"O objeto de conexão não tem o membro " + error.description +
                        L": informe uma conexão ADO aberta."};
}

// Errors of the object become those of the database.
template <class Work>
decltype(auto) told(Work&& work) {
  try {
    return work();
  } catch (const ComError& error) {
    throw database_error(error);
  }
}

// Microseconds of a date value; its fraction counts forward in the day before the epoch as well.
// What lies within the precision of the value of a whole second is one.
DbMoment moment_of(double value) {
  constexpr int64_t kSecond = 1'000'000;
  constexpr int64_t kDay = 86'400 * kSecond;
  constexpr int64_t kPrecision = 5;
  double day = std::trunc(value);
  auto time = std::llround(std::fabs(value - day) * static_cast<double>(kDay));
  const int64_t rest = time % kSecond;
  if (rest < kPrecision) time -= rest;
  if (kSecond - rest < kPrecision) time += kSecond - rest;
  if (time >= kDay) {
    time -= kDay;
    day += 1;
  }
  DbMoment moment;
  if (const auto date = date_of_day_number(static_cast<int32_t>(day))) {
    moment.year = date->year;
    moment.month = date->month;
    moment.day = date->day;
  }
  const auto seconds = static_cast<int>(time / kSecond);
  moment.hour = seconds / 3600;
  moment.minute = seconds / 60 % 60;
  moment.second = seconds % 60;
  moment.microsecond = static_cast<int>(time % kSecond);
  return moment;
}

// The bytes of an array, or of a text that holds them packed; empty for anything else.
std::string_view bytes_of(const VARIANT& value, std::string& keep) {
  keep.clear();
  if (V_VT(&value) == VT_BSTR) {
    const auto* const raw = reinterpret_cast<const char*>(V_BSTR(&value));
    if (raw != nullptr) keep.assign(raw, SysStringByteLen(V_BSTR(&value)));
  } else if (V_VT(&value) == (VT_ARRAY | VT_UI1) && V_ARRAY(&value) != nullptr) {
    SAFEARRAY* const array = V_ARRAY(&value);
    void* data = nullptr;
    if (SafeArrayGetDim(array) == 1 && SUCCEEDED(SafeArrayAccessData(array, &data))) {
      keep.assign(static_cast<const char*>(data), array->rgsabound[0].cElements);
      SafeArrayUnaccessData(array);
    }
  }
  return keep;
}

class AdoRecordSet final : public RecordSet {
 public:
  explicit AdoRecordSet(LateObject rows) : rows_(std::move(rows)) {}

  bool eof() override { return flag(L"EOF"); }
  bool bof() override { return flag(L"BOF"); }
  void move_next() override {
    told([&] { rows_.call(L"MoveNext"); });
  }
  int64_t record_count() override { return number(L"RecordCount"); }
  int64_t absolute_position() override { return number(L"AbsolutePosition"); }
  void set_page_size(int rows) override { put(L"PageSize", rows); }
  int64_t page_count() override { return number(L"PageCount"); }
  void set_absolute_page(int64_t page) override { put(L"AbsolutePage", static_cast<long>(page)); }

  size_t field_count() override { return fields().size(); }
  int field_type(size_t field) override { return fields()[field].type; }
  std::optional<size_t> find_field(std::wstring_view name) override;
  DbValue value(size_t field) override;
  int64_t actual_size(size_t field) override {
    return told([&] { return number_of(fields()[field].object.get_property(L"ActualSize")); });
  }
  std::string_view get_chunk(size_t field, int size) override {
    return told([&] {
      const Variant chunk =
          fields()[field].object.call(L"GetChunk", {Variant(static_cast<long>(size))});
      return bytes_of(chunk, bytes_);
    });
  }
  void close() override {
    told([&] { rows_.call(L"Close"); });
    fields_.clear();
  }

  /// Closes and opens the same object for the rows of a table.
  void reopen(IDispatch* connection, std::wstring_view sql);

 private:
  // A field object stands for its column in whatever row is current.
  struct Field {
    LateObject object;
    DISPID value;
    int type;
  };

  bool flag(const wchar_t* name) {
    return told([&] { return number_of(rows_.get_property(name)) != 0; });
  }
  int64_t number(const wchar_t* name) {
    return told([&] { return number_of(rows_.get_property(name)); });
  }
  void put(const wchar_t* name, long value) {
    told([&] { rows_.put_property(name, Variant(value)); });
  }
  std::vector<Field>& fields();
  DbValue text_value(DbValue::Kind kind);

  LateObject rows_;
  std::vector<Field> fields_;
  Variant current_;  // what the views of a value point into
  std::string bytes_;
};

std::vector<AdoRecordSet::Field>& AdoRecordSet::fields() {
  if (!fields_.empty()) return fields_;
  return told([&]() -> std::vector<Field>& {
    LateObject all = rows_.get_object(L"Fields");
    const int64_t count = number_of(all.get_property(L"Count"));
    std::vector<Field> found;
    for (int64_t i = 0; i < count; ++i) {
      LateObject field = object_of(all.call(L"Item", {Variant(static_cast<long>(i))}));
      const DISPID value = field.id(L"Value");
      const int type = static_cast<int>(number_of(field.get_property(L"Type")));
      found.push_back({std::move(field), value, type});
    }
    fields_ = std::move(found);
    return fields_;
  });
}

std::optional<size_t> AdoRecordSet::find_field(std::wstring_view name) {
  return told([&]() -> std::optional<size_t> {
    for (size_t i = 0; i < fields().size(); ++i) {
      const Variant own = fields()[i].object.get_property(L"Name");
      if (V_VT(&own) == VT_BSTR &&
          CompareStringOrdinal(V_BSTR(&own), -1, name.data(), static_cast<int>(name.size()),
                               TRUE) == CSTR_EQUAL)
        return i;
    }
    return std::nullopt;
  });
}

DbValue AdoRecordSet::text_value(DbValue::Kind kind) {
  DbValue value;
  value.kind = kind;
  if (V_VT(&current_) != VT_BSTR &&
      FAILED(VariantChangeTypeEx(&current_, &current_, LOCALE_USER_DEFAULT, 0, VT_BSTR)))
    throw ComError(DISP_E_TYPEMISMATCH);
  value.text = std::wstring_view(V_BSTR(&current_), SysStringLen(V_BSTR(&current_)));
  return value;
}

DbValue AdoRecordSet::value(size_t field) {
  return told([&] {
    Field& source = fields()[field];
    current_ = source.object.get_property(source.value);
    DbValue value;
    switch (V_VT(&current_)) {
      case VT_EMPTY:
      case VT_NULL:
        return value;
      case VT_BSTR:
        return text_value(DbValue::Kind::kText);
      case VT_BOOL:
        value.kind = DbValue::Kind::kBoolean;
        value.boolean = V_BOOL(&current_) != VARIANT_FALSE;
        return value;
      case VT_DATE:
        value.kind = DbValue::Kind::kMoment;
        value.moment = moment_of(V_DATE(&current_));
        return value;
      case VT_R8:
        value.kind = DbValue::Kind::kReal;
        value.real = V_R8(&current_);
        return value;
      case VT_R4:
        if (source.type != db_type::kSingle) return text_value(DbValue::Kind::kNumber);
        value.kind = DbValue::Kind::kReal;
        value.real = static_cast<double>(V_R4(&current_));
        return value;
      case VT_ARRAY | VT_UI1:
        value.kind = DbValue::Kind::kBytes;
        value.bytes = bytes_of(current_, bytes_);
        return value;
      default:
        return text_value(DbValue::Kind::kNumber);
    }
  });
}

void AdoRecordSet::reopen(IDispatch* connection, std::wstring_view sql) {
  close();
  put(L"CursorLocation", kClientCursor);
  told([&] {
    rows_.call(L"Open", {Variant(sql), Variant(connection), missing_argument(),
                         Variant(kReadOnlyLock), Variant(kOpenOptions)});
  });
}

}  // namespace

AdoConnection::AdoConnection(IDispatch* connection) : connection_(ComPtr<IDispatch>(connection)) {}

LateObject& AdoConnection::object() {
  constexpr long kObjectNotSet = 91;
  if (!connection_) throw DbError(kObjectNotSet, L"Nenhum objeto de conexão foi informado.");
  return connection_;
}

std::wstring AdoConnection::default_database() {
  return told([&] {
    const Variant name = object().get_property(L"DefaultDatabase");
    return V_VT(&name) == VT_BSTR ? to_wstring(V_BSTR(&name)) : std::wstring();
  });
}

std::unique_ptr<RecordSet> AdoConnection::execute(std::wstring_view sql) {
  return told([&] {
    return std::make_unique<AdoRecordSet>(object_of(object().call(L"Execute", {Variant(sql)})));
  });
}

std::unique_ptr<RecordSet> AdoConnection::open_rows(std::unique_ptr<RecordSet> reuse,
                                                    std::wstring_view sql) {
  static_cast<AdoRecordSet&>(*reuse).reopen(connection_.get(), sql);
  return reuse;
}

}  // namespace kestrelon
