// An item without a window that a function draws: labels, rules and pictures of a page.
#pragma once

#include <functional>

#include "host/com_object.h"
#include "host/form_item.h"
#include "host/item_dispatch.h"

namespace kestrelon::host {

class DrawnItem final : public ComObject<IUnknown>, public FormItem {
 public:
  /// Draws inside the rectangle, which is in client pixels of the container.
  using Painter = std::function<void(HDC, const RECT&)>;

  DrawnItem(Form& form, ContainerWindow& container, std::wstring name, const RECT& bounds,
            Painter painter);

  ULONG STDMETHODCALLTYPE AddRef() override { return ComObject::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return ComObject::Release(); }
  IDispatch* dispatch() override { return dispatch_.get(); }
  HWND window() const override { return nullptr; }
  void draw(HDC hdc) override { painter_(hdc, bounds()); }
  bool can_focus() const override { return false; }
  void take_focus() override {}

 protected:
  void place() override {}
  void show(bool) override {}
  void enter_container() override {}
  void leave_container() override {}
  void on_close() override { dispatch_->detach(); }

 private:
  Painter painter_;
  ComPtr<ItemDispatch> dispatch_;
};

}  // namespace kestrelon::host
