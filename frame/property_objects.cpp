#include "frame/property_objects.h"

#include "base/counted_win.h"

namespace kestrelon {
namespace {

/// The interface `T` of an object held in a VARIANT, or empty.
template <class T>
ComPtr<T> object_in(const VARIANT& value) {
  IUnknown* object = nullptr;
  switch (V_VT(&value)) {
    case VT_UNKNOWN:
    case VT_DISPATCH:
      object = V_UNKNOWN(&value);
      break;
    case VT_UNKNOWN | VT_BYREF:
    case VT_DISPATCH | VT_BYREF:
      object = V_UNKNOWNREF(&value) != nullptr ? *V_UNKNOWNREF(&value) : nullptr;
      break;
    default:
      break;
  }
  return query<T>(object);
}

Variant empty_object() {
  Variant out;
  V_VT(&out) = VT_UNKNOWN;
  V_UNKNOWN(&out) = nullptr;
  return out;
}

ComPtr<IFont> make_font(const LOGFONTW& look, long tenths_of_points) {
  FONTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.lpstrName = const_cast<wchar_t*>(look.lfFaceName);
  description.cySize.int64 = tenths_of_points * 1000LL;
  description.sWeight = static_cast<SHORT>(look.lfWeight);
  description.sCharset = look.lfCharSet;
  description.fItalic = look.lfItalic;
  ComPtr<IFont> font;
  OleCreateFontIndirect(&description, IID_IFont, font.put_void());
  return font;
}

ComPtr<IFont> default_font() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  LOGFONTW look{};
  long tenths = 82;
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) {
    look = metrics.lfMessageFont;
    const HDC screen = GetDC(nullptr);
    tenths = MulDiv(look.lfHeight < 0 ? -look.lfHeight : look.lfHeight, 720,
                    GetDeviceCaps(screen, LOGPIXELSY));
    ReleaseDC(nullptr, screen);
  } else {
    lstrcpyW(look.lfFaceName, L"Tahoma");
    look.lfWeight = FW_NORMAL;
  }
  return make_font(look, tenths);
}

}  // namespace

// Hears the font object; lives as long as the object holds it, and forgets the property that goes
// first.
class FontProperty::Listener final : public Counted<IPropertyNotifySink> {
 public:
  explicit Listener(FontProperty& owner) : owner_(&owner) {}
  STDMETHODIMP OnChanged(DISPID) override {
    return guarded(IID_IPropertyNotifySink, [&] { owner_->font_changed(); });
  }
  STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

 private:
  FontProperty* owner_;
};

FontProperty::~FontProperty() {
  if (point_) point_->Unadvise(cookie_);
}

void FontProperty::replace(IFont* font) {
  if (point_) point_->Unadvise(cookie_);
  point_.reset();
  font_ = ComPtr<IFont>(font);
  const auto container = query<IConnectionPointContainer>(font);
  if (!container) return;
  if (FAILED(container->FindConnectionPoint(IID_IPropertyNotifySink, point_.put()))) return;
  const ComPtr<IPropertyNotifySink> listener(new Listener(*this));
  if (FAILED(point_->Advise(listener.get(), &cookie_))) point_.reset();
}

void FontProperty::font_changed() {
  if (quiet_) return;
  changed();
  if (effect_) effect_();
}

IFont& FontProperty::font() {
  if (!font_) replace(default_font().get());
  if (!font_) throw ComError(E_FAIL);
  return *font_.get();
}

ComPtr<IFontDisp> FontProperty::get() {
  return query<IFontDisp>(&font());
}

void FontProperty::put(IFontDisp* font) {
  replace(query<IFont>(font).get());
  changed();
  if (effect_) effect_();
}

void FontProperty::reset() {
  ComPtr<IFont> copy;  // the ambient font belongs to the container
  if (const auto original = ambient_.as<IFont>()) original->Clone(copy.put());
  replace(copy.get());
}

HFONT FontProperty::handle() {
  HFONT out = nullptr;
  font().get_hFont(&out);
  return out;
}

Variant FontProperty::empty_value() const {
  return empty_object();
}

void FontProperty::load(const VARIANT& value) {
  if (const auto font = object_in<IFont>(value)) replace(font.get());
}

Variant FontProperty::save() const {
  return Variant(static_cast<IUnknown*>(const_cast<FontProperty*>(this)->get().get()));
}

ComPtr<IFontDisp> OptionalFontProperty::get() const {
  return font_.as<IFontDisp>();
}

void OptionalFontProperty::put(IFontDisp* font) {
  font_ = query<IFont>(font);
  changed();
  if (effect_) effect_();
}

HFONT OptionalFontProperty::handle() const {
  HFONT out = nullptr;
  if (font_) font_->get_hFont(&out);
  return out;
}

Variant OptionalFontProperty::empty_value() const {
  return empty_object();
}

void OptionalFontProperty::load(const VARIANT& value) {
  font_ = object_in<IFont>(value);
}

Variant OptionalFontProperty::save() const {
  return Variant(static_cast<IUnknown*>(get().get()));
}

void PictureProperty::put(IPictureDisp* picture) {
  picture_ = ComPtr<IPictureDisp>(picture);
  changed();
  if (effect_) effect_();
}

OLE_HANDLE PictureProperty::handle() const {
  OLE_HANDLE out = 0;
  const auto picture = picture_.as<IPicture>();
  if (picture && (type() == PICTYPE_BITMAP || type() == PICTYPE_ICON)) picture->get_Handle(&out);
  return out;
}

short PictureProperty::type() const {
  short out = PICTYPE_NONE;
  if (const auto picture = picture_.as<IPicture>()) picture->get_Type(&out);
  return out;
}

Variant PictureProperty::empty_value() const {
  return empty_object();
}
void PictureProperty::load(const VARIANT& value) {
  picture_ = object_in<IPictureDisp>(value);
}
Variant PictureProperty::save() const {
  return Variant(static_cast<IUnknown*>(picture_.get()));
}

}  // namespace kestrelon
