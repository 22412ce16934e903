#include "host/in_place_frame.h"

#include "host/form.h"

namespace kestrelon::host {
namespace {

// Border space, menus and status texts are those of document containers: a form offers none.
class InPlaceFrame final : public ComObject<IOleInPlaceFrame> {
 public:
  explicit InPlaceFrame(Form& form) : form_(&form) {}
  void detach() { form_ = nullptr; }

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override {
    if (!out) return E_POINTER;
    *out = form_ ? form_->hwnd() : nullptr;
    return *out ? S_OK : E_FAIL;
  }
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
  HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override {
    return INPLACE_E_NOTOOLSPACE;
  }
  HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
    if (form_) form_->set_active_object(object);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

 protected:
  bool answer(REFIID iid, void** out) override {
    if (!IsEqualIID(iid, IID_IOleWindow) && !IsEqualIID(iid, IID_IOleInPlaceUIWindow)) return false;
    *out = static_cast<IOleInPlaceFrame*>(this);
    return true;
  }

 private:
  Form* form_;
};

}  // namespace

ComPtr<IOleInPlaceFrame> make_in_place_frame(Form& form) {
  ComPtr<IOleInPlaceFrame> frame;
  frame.attach(make_com<InPlaceFrame>(form).detach());
  return frame;
}

void detach_in_place_frame(IOleInPlaceFrame* frame) {
  static_cast<InPlaceFrame*>(frame)->detach();
}

}  // namespace kestrelon::host
