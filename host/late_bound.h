// IDispatch from a table of named members, for the parts of the form model that scripts and
// controls reach late-bound.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/com_object.h"

namespace kestrelon::host {

/// The number of Basic's error for a value of a wrong type.
constexpr int kTypeMismatch = 13;

/// The arguments of one call, in the order in which the caller wrote them.
class Arguments {
 public:
  explicit Arguments(const DISPPARAMS& params, UINT reserved = 0)
      : params_(params), count_(params.cArgs - reserved), reserved_(reserved) {}

  UINT count() const { return count_; }
  /// True when argument `index` was passed and not skipped.
  bool has(UINT index) const;
  const VARIANT& raw(UINT index) const;
  long integer(UINT index) const;
  double number(UINT index) const;
  bool boolean(UINT index) const;
  std::wstring text(UINT index) const;
  /// The object passed, or null for Nothing.
  ComPtr<IDispatch> object(UINT index) const;

 private:
  const DISPPARAMS& params_;
  UINT count_;
  UINT reserved_;
};

/// The value itself, whether it came by reference or not.
Variant plain_value(const VARIANT& value);
/// Copies into a place that holds nothing yet or a value; false without memory.
bool copy_value(const VARIANT& value, VARIANT& out);
/// Converts by the invariant locale; false when the value is of a wrong type.
bool convert_value(const VARIANT& value, VARTYPE type, Variant& out);
/// Conversions that throw ComError 13 when the value is of a wrong type.
long to_long(const VARIANT& value);
double to_double(const VARIANT& value);
bool to_bool(const VARIANT& value);
std::wstring to_text(const VARIANT& value);
ComPtr<IDispatch> to_object(const VARIANT& value);

class LateBound : public ComObject<IDispatch> {
 public:
  using Getter = std::function<Variant(const Arguments&)>;
  using Setter = std::function<void(const VARIANT&)>;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* error, UINT* bad) override;

 protected:
  /// `type_name` is what TypeName answers for the object.
  explicit LateBound(std::wstring type_name);

  void property(const wchar_t* name, std::function<Variant()> get, Setter set = nullptr,
                DISPID id = DISPID_UNKNOWN);
  void method(const wchar_t* name, Getter call, DISPID id = DISPID_UNKNOWN);
  /// A method that gives no result.
  void action(const wchar_t* name, std::function<void(const Arguments&)> call);

  /// What a name or id outside the table does; DISP_E_MEMBERNOTFOUND unless overridden.
  virtual HRESULT unknown_name(LPOLESTR* names, UINT count, LCID locale, DISPID* ids);
  virtual HRESULT unknown_id(DISPID id, LCID locale, WORD flags, DISPPARAMS* params,
                             VARIANT* result, EXCEPINFO* error, UINT* bad);
  /// Called before a member of the table runs; throws to refuse.
  virtual void before_call() {}

 private:
  struct Member {
    Getter get;
    Setter set;
    bool is_method = false;
  };
  void add(const wchar_t* name, Member member, DISPID id);
  HRESULT call(const Member& member, WORD flags, DISPPARAMS& params, VARIANT* result);

  std::wstring type_name_;
  std::map<std::wstring, DISPID> ids_;  // by lower-case name
  std::map<DISPID, Member> members_;
  DISPID next_id_;
};

/// A type description that holds nothing but a name, for TypeName.
ComPtr<ITypeInfo> make_named_type(const std::wstring& name);

std::wstring lower_case(std::wstring_view text);

/// Late-bound use of any object, for the host itself and its tests. Errors throw ComError with the
/// text that the object gave.
Variant get_property(IDispatch* object, const wchar_t* name, std::vector<Variant> arguments = {});
/// `arguments` are those of an indexed property.
void put_property(IDispatch* object, const wchar_t* name, const Variant& value,
                  std::vector<Variant> arguments = {});
Variant call_method(IDispatch* object, const wchar_t* name, std::vector<Variant> arguments = {});

}  // namespace kestrelon::host
