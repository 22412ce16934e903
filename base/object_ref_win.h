// References to the library's own objects by their C++ class.
#pragma once

#include <utility>

#include "base/automation_win.h"

namespace kestrelon {

/// Keeps an object of this library alive and reaches it by its class.
template <class Class>
class ObjectRef {
 public:
  ObjectRef() = default;
  /// Takes a reference of its own.
  explicit ObjectRef(Class* object) : object_(object) {
    if (object_ != nullptr) life_ = ComPtr<IUnknown>(object_->own_unknown());
  }
  /// A new object.
  template <class... Arguments>
  static ObjectRef make(Arguments&&... arguments) {
    ObjectRef out;
    out.object_ = new Class(std::forward<Arguments>(arguments)...);
    out.life_.attach(out.object_->own_unknown());
    return out;
  }

  explicit operator bool() const { return object_ != nullptr; }
  Class* get() const { return object_; }
  Class* operator->() const { return object_; }
  Class& operator*() const { return *object_; }
  /// An interface that the class has among its bases.
  template <class Interface>
  ComPtr<Interface> as() const {
    return ComPtr<Interface>(static_cast<Interface*>(object_));
  }

 private:
  Class* object_ = nullptr;
  ComPtr<IUnknown> life_;
};

}  // namespace kestrelon
