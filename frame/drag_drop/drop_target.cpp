#include "frame/drag_drop/drop_target.h"

#include "frame/drag_drop/drop_data.h"

namespace kestrelon {

DWORD settle_effect(DWORD left, DWORD allowed) {
  left &= allowed;
  for (const DWORD effect : {DROPEFFECT_COPY, DROPEFFECT_LINK, DROPEFFECT_MOVE})
    if ((left & effect) != 0) return effect | (left & DROPEFFECT_SCROLL);
  return DROPEFFECT_NONE;
}

void DropTarget::detach() {
  listener_ = nullptr;
  data_.reset();
}

HRESULT DropTarget::tell(Drag::Stage stage, DWORD keys, POINTL point, DWORD* effect) {
  const ComPtr<DropTarget> alive(this);
  const DWORD allowed = effect != nullptr ? *effect : DROPEFFECT_NONE;
  if (effect != nullptr) *effect = DROPEFFECT_NONE;
  if (listener_ == nullptr || !data_) return S_OK;
  last_ = point;
  last_keys_ = keys;
  const ComPtr<IDispatch> data = data_;
  try {
    const DWORD answer = listener_->dragged(stage, data.get(), keys, {point.x, point.y}, allowed);
    if (effect != nullptr) *effect = settle_effect(answer, allowed);
  } catch (...) {
    return E_FAIL;
  }
  return S_OK;
}

STDMETHODIMP DropTarget::DragEnter(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) {
  if (data == nullptr || effect == nullptr) return E_INVALIDARG;
  const HRESULT hr = guarded(IID_IDropTarget, [&] { data_ = make_drop_data(*data); });
  return FAILED(hr) ? hr : tell(Drag::Stage::kEnter, keys, point, effect);
}

STDMETHODIMP DropTarget::DragOver(DWORD keys, POINTL point, DWORD* effect) {
  if (effect == nullptr) return E_INVALIDARG;
  return tell(Drag::Stage::kOver, keys, point, effect);
}

STDMETHODIMP DropTarget::DragLeave() {
  const HRESULT hr = tell(Drag::Stage::kLeave, last_keys_, last_, nullptr);
  data_.reset();
  return hr;
}

STDMETHODIMP DropTarget::Drop(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) {
  if (data == nullptr || effect == nullptr) return E_INVALIDARG;
  const ComPtr<DropTarget> alive(this);
  // What is dropped may be another object than what came in.
  const HRESULT made = guarded(IID_IDropTarget, [&] { data_ = make_drop_data(*data); });
  const HRESULT hr = FAILED(made) ? made : tell(Drag::Stage::kDrop, keys, point, effect);
  data_.reset();
  return hr;
}

}  // namespace kestrelon
