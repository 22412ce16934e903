// Objects that the host hands over and that are reached by name.
#pragma once

#include <initializer_list>
#include <map>
#include <string>

#include "base/com_win.h"

namespace kestrelon {

/// An automation object with its member ids kept, so that a name is looked up once. Calls throw
/// ComError with the object's own code and text.
class LateObject {
 public:
  LateObject() = default;
  explicit LateObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  explicit operator bool() const { return static_cast<bool>(object_); }
  IDispatch* get() const { return object_.get(); }

  DISPID id(const wchar_t* name);
  Variant get_property(const wchar_t* name) { return invoke(id(name), DISPATCH_PROPERTYGET, {}); }
  /// A property or a method without arguments by its id, for what is called once a row.
  Variant get_property(DISPID member) { return invoke(member, DISPATCH_PROPERTYGET, {}); }
  LateObject get_object(const wchar_t* name);
  void put_property(const wchar_t* name, const Variant& value);
  Variant call(const wchar_t* name, std::initializer_list<Variant> arguments = {});
  Variant call(DISPID member, std::initializer_list<Variant> arguments);

 private:
  Variant invoke(DISPID member, WORD flags, std::initializer_list<Variant> arguments);

  ComPtr<IDispatch> object_;
  std::map<std::wstring, DISPID, std::less<>> ids_;
};

/// The object in a variant; empty when there is none.
LateObject object_of(const VARIANT& value);

/// An optional argument that was left out.
Variant missing_argument();

/// The number in a variant; throws ComError when it holds none.
int64_t number_of(const Variant& value);

/// Dispatches the messages that wait for the thread, as the hosts' DoEvents does, for about
/// `most_milliseconds`: a host that posts to itself never runs out of them. A quit message stays
/// for the host's loop.
void pump_messages(unsigned long long most_milliseconds = 100);

}  // namespace kestrelon
