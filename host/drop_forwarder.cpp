#include "host/drop_forwarder.h"

#include "host/form_item.h"

namespace kestrelon::host {

void DropForwarder::detach() {
  find_ = nullptr;
  leave();
  data_.reset();
}

void DropForwarder::leave() {
  item_ = nullptr;
  const ComPtr<IDropTarget> target = std::move(target_);
  target_ = nullptr;
  if (target) target->DragLeave();
}

HRESULT DropForwarder::DragEnter(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) {
  data_ = ComPtr<IDataObject>(data);
  return DragOver(keys, point, effect);
}

HRESULT DropForwarder::DragOver(DWORD keys, POINTL point, DWORD* effect) {
  if (!effect) return E_INVALIDARG;
  const ComPtr<DropForwarder> alive(this);
  FormItem* const item = find_ ? find_({point.x, point.y}) : nullptr;
  if (item == item_ && target_) {
    const ComPtr<IDropTarget> target = target_;
    return target->DragOver(keys, point, effect);
  }
  leave();
  ComPtr<IDropTarget> target;
  if (item) item->windowless()->GetDropTarget(target.put());
  if (!target) {
    *effect = DROPEFFECT_NONE;
    return S_OK;
  }
  item_ = item;
  target_ = target;
  return target->DragEnter(data_.get(), keys, point, effect);
}

HRESULT DropForwarder::DragLeave() {
  const ComPtr<DropForwarder> alive(this);
  leave();
  data_.reset();
  return S_OK;
}

HRESULT DropForwarder::Drop(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) {
  if (!effect) return E_INVALIDARG;
  const ComPtr<DropForwarder> alive(this);
  const DWORD allowed = *effect;
  const HRESULT over = DragOver(keys, point, effect);  // the item at this very place
  const ComPtr<IDropTarget> target = std::move(target_);
  target_ = nullptr;
  item_ = nullptr;
  data_.reset();
  if (FAILED(over) || !target) return over;
  *effect = allowed;
  return target->Drop(data, keys, point, effect);
}

}  // namespace kestrelon::host
