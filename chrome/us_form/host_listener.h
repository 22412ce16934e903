// Hears a host window's messages for its skin.
#pragma once

#include "chrome/us_form/us_form.h"

namespace kestrelon {

class USForm::Listener final : public ::kestrelon::SelfSubOwner {
 public:
  explicit Listener(USForm& owner) : owner_(owner) {}
  virtual ~Listener() = default;

  void WindowProcHook(bool before, bool& handled, LRESULT& result, HWND, UINT message,
                      WPARAM wparam, LPARAM lparam, LPARAM) override {
    const Hold hold(owner_);
    if (before) {
      owner_.host_before(message, wparam, lparam, handled, result);
    } else {
      owner_.host_after(message, wparam, lparam);
    }
  }

 private:
  USForm& owner_;
};

}  // namespace kestrelon
