// A plain frame: a box with a caption on a form, and a container for other items.
#pragma once

#include "host/com_object.h"
#include "host/container_window.h"
#include "host/item_dispatch.h"

namespace kestrelon::host {

class FrameBox final : public ComObject<IUnknown>, public FormItem, public ContainerWindow {
 public:
  FrameBox(Form& form, ContainerWindow& container, std::wstring name, const RECT& bounds);

  std::wstring caption() const;
  void set_caption(const std::wstring& caption);
  /// Without border and caption the frame is a bare surface.
  void set_border(bool border);

  ULONG STDMETHODCALLTYPE AddRef() override { return ComObject::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return ComObject::Release(); }
  IDispatch* dispatch() override { return dispatch_.get(); }
  IDispatch* container_dispatch() override { return dispatch_.get(); }
  HWND window() const override { return hwnd(); }
  ContainerWindow* box() override { return this; }
  bool can_focus() const override { return false; }
  void take_focus() override {}

 protected:
  void place() override;
  void show(bool visible) override;
  void enter_container() override;
  void leave_container() override {}
  void on_close() override;
  void paint_over(HDC hdc) override;

 private:
  ComPtr<ItemDispatch> dispatch_;
  bool border_ = true;
};

}  // namespace kestrelon::host
