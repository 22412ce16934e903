// A record set as the host's data library has it, reached late-bound alone: rows in memory, a
// cursor, a query it was opened with.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/com_win.h"
#include "host/com_object.h"

namespace kestrelon::host {

/// An object whose members are known by name; each gets the arguments in their order.
class NamedMembers : public ComObject<IDispatch> {
 public:
  struct NoSuchItem {};
  using Member = std::function<Variant(const std::vector<Variant>&)>;

  STDMETHODIMP GetTypeInfoCount(UINT* out) override { return *out = 0, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    for (size_t i = 0; i < members_.size(); ++i)
      if (members_[i].first == names[0]) return ids[0] = static_cast<DISPID>(i + 1), S_OK;
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    std::vector<Variant> arguments;
    for (UINT i = given->cArgs; i-- > 0;) {
      Variant& copy = arguments.emplace_back();
      VariantCopyInd(copy.put(), &given->rgvarg[i]);
    }
    try {
      Variant answer = members_.at(static_cast<size_t>(id) - 1).second(arguments);
      return result != nullptr ? VariantCopy(result, &answer) : S_OK;
    } catch (const NoSuchItem&) {
      return DISP_E_BADINDEX;
    }
  }

 protected:
  void add(const wchar_t* name, Member member) { members_.emplace_back(name, std::move(member)); }

 private:
  std::vector<std::pair<std::wstring, Member>> members_;
};

class FakeRecords final : public NamedMembers {
 public:
  using Row = std::vector<std::wstring>;

  explicit FakeRecords(std::vector<std::wstring> fields) : fields_(std::move(fields)) {
    add(L"BOF", [this](auto&) { return Variant(rows.empty()); });
    add(L"EOF", [this](auto&) { return Variant(at_ >= rows.size()); });
    add(L"MoveNext", [this](auto&) { return ++at_, Variant(); });
    add(L"Bookmark", [this](auto& value) {
      if (!value.empty()) at_ = static_cast<size_t>(V_R8(&value[0]));
      return Variant(static_cast<double>(at_));
    });
    add(L"Fields", [this](auto&) { return Variant(static_cast<IDispatch*>(this)); });
    add(L"Item", [this](auto& name) { return field(to_wstring(V_BSTR(&name[0]))); });
    add(L"CursorLocation", [](auto&) { return Variant(); });
    add(L"Open", [this](auto& arguments) { return opened(arguments), Variant(); });
    add(L"Requery", [this](auto&) { return at_ = 0, Variant(); });
    add(L"Close", [this](auto&) { return ++closed, Variant(); });
  }

  std::vector<Row> rows;
  std::wstring query;
  int closed = 0;

 private:
  class Field final : public NamedMembers {
   public:
    Field(FakeRecords& records, size_t number) {
      add(L"Value", [&records, number](auto&) { return records.value(number); });
    }
  };

  Variant value(size_t number) const { return Variant(std::wstring_view(rows[at_][number])); }
  Variant field(const std::wstring& name) {
    for (size_t i = 0; i < fields_.size(); ++i)
      if (fields_[i] == name) return Variant(make_com<Field>(*this, i).as<IDispatch>().get());
    throw NoSuchItem();
  }
  void opened(const std::vector<Variant>& arguments) {
    query = to_wstring(V_BSTR(&arguments[0]));
    at_ = 0;
  }

  std::vector<std::wstring> fields_;
  size_t at_ = 0;
};

}  // namespace kestrelon::host
