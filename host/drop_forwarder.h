// Drags over a container's window, handed on to the windowless item under the pointer.
#pragma once

#include <windows.h>
//
#include <oleidl.h>

#include <functional>

#include "host/com_object.h"

namespace kestrelon::host {

class FormItem;

class DropForwarder final : public ComObject<IDropTarget> {
 public:
  /// Answers the topmost windowless item at a point of the screen, or null.
  using Finder = std::function<FormItem*(POINT screen)>;
  explicit DropForwarder(Finder find) : find_(std::move(find)) {}

  /// The window goes; the system may hold the forwarder longer.
  void detach();

  HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL point,
                                      DWORD* effect) override;
  HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL point, DWORD* effect) override;
  HRESULT STDMETHODCALLTYPE DragLeave() override;
  HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL point,
                                 DWORD* effect) override;

 private:
  void leave();

  Finder find_;
  ComPtr<IDataObject> data_;    // for the time of a drag
  ComPtr<IDropTarget> target_;  // of the item under the pointer
  const void* item_ = nullptr;  // tells one item from another, is not looked into
};

}  // namespace kestrelon::host
