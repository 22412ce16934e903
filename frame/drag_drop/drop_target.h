// What is dragged over a control and dropped on it.
#pragma once

#include <windows.h>

#include <oleidl.h>

#include "base/com_win.h"
#include "base/counted_win.h"

namespace kestrelon {

/// One step of a drag, as a control hears of it.
struct Drag {
  /// The first three have the values that events give their State.
  enum class Stage : short { kEnter = 0, kLeave = 1, kOver = 2, kDrop = 3 };

  Stage stage;
  ComPtr<IDispatch> data;  ///< what a program sees of it, see drop_data.h
  long effect = 0;         ///< DROPEFFECT_...: what the source allows; the answer afterwards
  short button = 0;        ///< mouse button held: 1 left, 2 right, 4 middle
  short shift = 0;         ///< 1 Shift, 2 Ctrl, 4 Alt
  float x = 0, y = 0;      ///< pixels of the control
};

/// Hears of drags. Positions are pixels of the screen; answers what a drop here would do.
class DropListener {
 public:
  virtual DWORD dragged(Drag::Stage stage, IDispatch* data, DWORD keys, POINT screen,
                        DWORD effects) = 0;

 protected:
  ~DropListener() = default;
};

/// The one effect out of those that a program left standing. Copying comes before linking and that
/// before moving: a source deletes what it believes to have been moved.
DWORD settle_effect(DWORD left, DWORD allowed);

/// The system's side of it. Outlives its listener without harm once detached.
class DropTarget final : public Counted<IDropTarget> {
 public:
  explicit DropTarget(DropListener& listener) : listener_(&listener) {}
  void detach();

  STDMETHODIMP DragEnter(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) override;
  STDMETHODIMP DragOver(DWORD keys, POINTL point, DWORD* effect) override;
  STDMETHODIMP DragLeave() override;
  STDMETHODIMP Drop(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) override;

 private:
  ~DropTarget() override = default;
  HRESULT tell(Drag::Stage stage, DWORD keys, POINTL point, DWORD* effect);

  DropListener* listener_;
  ComPtr<IDispatch> data_;  // for the time of a drag
  POINTL last_{};
  DWORD last_keys_ = 0;
};

}  // namespace kestrelon
