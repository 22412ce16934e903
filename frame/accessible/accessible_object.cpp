#include "frame/accessible/accessible_object.h"

#include "frame/accessible/oleacc.h"

namespace kestrelon {
namespace {

class Selected final : public Counted<IEnumVARIANT> {
 public:
  explicit Selected(std::vector<long> items) : items_(std::move(items)) {}
  STDMETHODIMP Next(ULONG count, VARIANT* out, ULONG* fetched) override {
    if (out == nullptr) return E_POINTER;
    ULONG done = 0;
    for (; done < count && next_ < items_.size(); ++done) {
      V_VT(&out[done]) = VT_I4;
      V_I4(&out[done]) = items_[next_++];
    }
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const size_t left = items_.size() - next_;
    next_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumVARIANT** out) override {
    if (out == nullptr) return E_POINTER;
    const ComPtr<Selected> clone(new Selected(items_));
    clone->next_ = next_;
    return ComPtr<IEnumVARIANT>(clone.get()).copy_to(out);
  }

 private:
  std::vector<long> items_;
  size_t next_ = 0;
};

void put_number(VARIANT* out, long number) {
  V_VT(out) = VT_I4;
  V_I4(out) = number;
}

}  // namespace

long AccessibleView::accessible_navigate(long child, long direction) const {
  const long count = accessible_count();
  long wanted = 0;
  switch (direction) {
    case NAVDIR_FIRSTCHILD:
      wanted = child == CHILDID_SELF ? 1 : 0;
      break;
    case NAVDIR_LASTCHILD:
      wanted = child == CHILDID_SELF ? count : 0;
      break;
    case NAVDIR_NEXT:
    case NAVDIR_DOWN:
    case NAVDIR_RIGHT:
      wanted = child == CHILDID_SELF ? 0 : child + 1;
      break;
    default:
      wanted = child == CHILDID_SELF ? 0 : child - 1;
      break;
  }
  return wanted >= 1 && wanted <= count ? wanted : 0;
}

// Runs `body` with the control's answers while the control is there, and keeps it alive meanwhile.
template <class Body>
HRESULT AccessibleObject::ask(Body&& body) {
  if (host_ == nullptr) return CO_E_OBJNOTCONNECTED;
  const ComPtr<IUnknown> life(host_->accessible_life());
  const ComPtr<AccessibleObject> self(this);
  AccessibleView* const view = host_->accessible_view();
  if (view == nullptr) return E_FAIL;
  return guarded(IID_IAccessible, [&]() -> HRESULT { return body(*view); });
}

bool AccessibleObject::item(long child, AccessibleItem& out) {
  AccessibleView* const view = host_->accessible_view();
  if (child == CHILDID_SELF) {
    RECT own{};
    host_->accessible_window(own);
    out.place = {0, 0, own.right - own.left, own.bottom - own.top};
  }
  return view->accessible_item(child, out);
}

template <class Body>
HRESULT AccessibleObject::ask_item(const VARIANT& child, Body&& body) {
  if (V_VT(&child) != VT_I4) return E_INVALIDARG;
  return ask([&](AccessibleView&) -> HRESULT {
    AccessibleItem found;
    if (!item(V_I4(&child), found)) return E_INVALIDARG;
    return body(found);
  });
}

HRESULT AccessibleObject::text(const VARIANT& child, std::wstring AccessibleItem::*member,
                               BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return ask_item(child, [&](const AccessibleItem& found) -> HRESULT {
    if ((found.*member).empty()) return S_FALSE;
    *out = Bstr(found.*member).detach();
    return S_OK;
  });
}

RECT AccessibleObject::place() const {
  RECT out{};
  const HWND window = host_->accessible_window(out);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&out), 2);
  return out;
}

STDMETHODIMP AccessibleObject::QueryInterface(REFIID iid, void** out) {
  if (out == nullptr) return E_POINTER;
  if (iid != IID_IDispatch) return Counted::QueryInterface(iid, out);
  *out = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP AccessibleObject::get_accParent(IDispatch** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return ask([&](AccessibleView&) -> HRESULT {
    RECT unused{};
    return accessible_of_window(host_->accessible_window(unused), static_cast<DWORD>(OBJID_WINDOW))
        .copy_to(out);
  });
}

STDMETHODIMP AccessibleObject::get_accChildCount(long* out) {
  if (out == nullptr) return E_POINTER;
  return ask([&](AccessibleView& view) -> HRESULT {
    *out = view.accessible_count();
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::get_accChild(VARIANT child, IDispatch** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return ask([&](AccessibleView& view) -> HRESULT {
    if (V_VT(&child) != VT_I4) return E_INVALIDARG;
    const auto object = view.accessible_object(V_I4(&child));
    if (!object) return S_FALSE;  // a simple child: it is asked for by number
    return object.copy_to(out);
  });
}

STDMETHODIMP AccessibleObject::get_accName(VARIANT child, BSTR* out) {
  return text(child, &AccessibleItem::name, out);
}
STDMETHODIMP AccessibleObject::get_accValue(VARIANT child, BSTR* out) {
  return text(child, &AccessibleItem::value, out);
}
STDMETHODIMP AccessibleObject::get_accDescription(VARIANT child, BSTR* out) {
  return text(child, &AccessibleItem::description, out);
}
STDMETHODIMP AccessibleObject::get_accKeyboardShortcut(VARIANT child, BSTR* out) {
  return text(child, &AccessibleItem::shortcut, out);
}
STDMETHODIMP AccessibleObject::get_accDefaultAction(VARIANT child, BSTR* out) {
  return text(child, &AccessibleItem::default_action, out);
}
STDMETHODIMP AccessibleObject::get_accHelp(VARIANT, BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return S_FALSE;
}
STDMETHODIMP AccessibleObject::get_accHelpTopic(BSTR* file, VARIANT, long* topic) {
  if (file == nullptr || topic == nullptr) return E_POINTER;
  *file = nullptr;
  *topic = 0;
  return S_FALSE;
}

STDMETHODIMP AccessibleObject::get_accRole(VARIANT child, VARIANT* out) {
  if (out == nullptr) return E_POINTER;
  VariantInit(out);
  return ask_item(child, [&](const AccessibleItem& found) -> HRESULT {
    put_number(out, found.role);
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::get_accState(VARIANT child, VARIANT* out) {
  if (out == nullptr) return E_POINTER;
  VariantInit(out);
  return ask_item(child, [&](const AccessibleItem& found) -> HRESULT {
    long state = found.state;
    RECT unused{};
    const HWND window = host_->accessible_window(unused);
    if (!IsWindowVisible(window)) state |= STATE_SYSTEM_INVISIBLE;
    if (!host_->accessible_enabled()) state |= STATE_SYSTEM_UNAVAILABLE;
    const bool has_focus =
        host_->accessible_focused() && host_->accessible_view()->accessible_focus() == V_I4(&child);
    if (has_focus) state |= STATE_SYSTEM_FOCUSED;
    put_number(out, state);
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::get_accFocus(VARIANT* out) {
  if (out == nullptr) return E_POINTER;
  VariantInit(out);
  return ask([&](AccessibleView& view) -> HRESULT {
    if (!host_->accessible_focused()) return S_FALSE;
    put_number(out, view.accessible_focus());
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::get_accSelection(VARIANT* out) {
  if (out == nullptr) return E_POINTER;
  VariantInit(out);
  return ask([&](AccessibleView& view) -> HRESULT {
    std::vector<long> selected = view.accessible_selection();
    if (selected.empty()) return S_FALSE;
    if (selected.size() == 1) {
      put_number(out, selected.front());
      return S_OK;
    }
    const ComPtr<Selected> list(new Selected(std::move(selected)));
    Variant answer(static_cast<IUnknown*>(list.get()));
    std::swap(*out, static_cast<VARIANT&>(answer));
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::accSelect(long flags, VARIANT child) {
  return ask([&](AccessibleView& view) -> HRESULT {
    if (V_VT(&child) != VT_I4) return E_INVALIDARG;
    if ((flags & SELFLAG_TAKEFOCUS) != 0) host_->accessible_take_focus();
    if (V_I4(&child) == CHILDID_SELF) return S_OK;
    return host_ != nullptr && view.accessible_select(V_I4(&child), flags) ? S_OK : S_FALSE;
  });
}

STDMETHODIMP AccessibleObject::accLocation(long* left, long* top, long* width, long* height,
                                           VARIANT child) {
  if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) return E_POINTER;
  return ask_item(child, [&](const AccessibleItem& found) -> HRESULT {
    const RECT own = place();
    *left = own.left + found.place.left;
    *top = own.top + found.place.top;
    *width = found.place.right - found.place.left;
    *height = found.place.bottom - found.place.top;
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::accNavigate(long direction, VARIANT start, VARIANT* out) {
  if (out == nullptr) return E_POINTER;
  VariantInit(out);
  return ask([&](AccessibleView& view) -> HRESULT {
    if (V_VT(&start) != VT_I4) return E_INVALIDARG;
    const long found = view.accessible_navigate(V_I4(&start), direction);
    if (found == 0) return S_FALSE;
    put_number(out, found);
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::accHitTest(long left, long top, VARIANT* out) {
  if (out == nullptr) return E_POINTER;
  VariantInit(out);
  return ask([&](AccessibleView& view) -> HRESULT {
    const RECT own = place();
    const POINT point{left, top};
    if (!PtInRect(&own, point)) return S_FALSE;
    put_number(out, view.accessible_at({left - own.left, top - own.top}));
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::accDoDefaultAction(VARIANT child) {
  return ask([&](AccessibleView& view) -> HRESULT {
    if (V_VT(&child) != VT_I4) return E_INVALIDARG;
    if (!host_->accessible_enabled()) return S_FALSE;
    view.accessible_default_action(V_I4(&child));
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::put_accValue(VARIANT child, BSTR value) {
  return ask([&](AccessibleView& view) -> HRESULT {
    if (V_VT(&child) != VT_I4) return E_INVALIDARG;
    return view.accessible_set_value(V_I4(&child), to_wstring(value)) ? S_OK : E_NOTIMPL;
  });
}

}  // namespace kestrelon
