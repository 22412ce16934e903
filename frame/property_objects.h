// Properties that are OLE objects: the font and pictures.
#pragma once

#include <olectl.h>

#include "frame/property.h"

namespace kestrelon {

/// A font that is never missing: without one from the container, the system's message font. A
/// change made inside the object (control.Font.Bold = True) is reported as a change of the
/// property.
class FontProperty final : public PropertyBase {
 public:
  template <class Owner, class Base>
  FontProperty(Owner& owner, PropertyName name, void (Base::*effect)())
      : PropertyBase(owner, name) {
    effect_ = [&owner, effect] { (owner.*effect)(); };
  }
  ~FontProperty();

  ComPtr<IFontDisp> get();
  /// Takes the object itself, as a property set by reference does; null goes back to the default.
  void put(IFontDisp* font);
  /// The font as GDI uses it; owned by the font object, valid until it changes.
  HFONT handle();
  IFont& font();
  /// Changes the font through IFont; reports under `as`, the name of the delegate, and takes
  /// effect.
  template <class Setter>
  void change(const wchar_t* as, Setter setter) {
    quiet_ = true;
    setter(font());
    quiet_ = false;
    owner().property_changed(as);
    if (effect_) effect_();
  }
  /// The container's font, copied when the property is reset; null for the system's.
  void set_default(IFontDisp* font) { ambient_ = ComPtr<IFontDisp>(font); }

  Variant empty_value() const override;
  void load(const VARIANT& value) override;
  void reset() override;
  Variant save() const override;
  bool is_default() const override { return false; }

 private:
  class Listener;

  void replace(IFont* font);
  void font_changed();

  ComPtr<IFont> font_;
  ComPtr<IFontDisp> ambient_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  bool quiet_ = false;
  std::function<void()> effect_;
};

/// A font, or none: for a state whose text may look like that of another.
class OptionalFontProperty final : public PropertyBase {
 public:
  template <class Owner, class Base>
  OptionalFontProperty(Owner& owner, PropertyName name, void (Base::*effect)())
      : PropertyBase(owner, name) {
    effect_ = [&owner, effect] { (owner.*effect)(); };
  }

  ComPtr<IFontDisp> get() const;
  void put(IFontDisp* font);
  /// The font as GDI uses it, owned by the font object; null without one.
  HFONT handle() const;

  Variant empty_value() const override;
  void load(const VARIANT& value) override;
  void reset() override { font_.reset(); }
  Variant save() const override;
  bool is_default() const override { return !font_; }

 private:
  ComPtr<IFont> font_;
  std::function<void()> effect_;
};

/// A picture, or none.
class PictureProperty final : public PropertyBase {
 public:
  template <class Owner, class Base>
  PictureProperty(Owner& owner, PropertyName name, void (Base::*effect)())
      : PropertyBase(owner, name) {
    effect_ = [&owner, effect] { (owner.*effect)(); };
  }

  ComPtr<IPictureDisp> get() const { return picture_; }
  void put(IPictureDisp* picture);
  void assign(IPictureDisp* picture) { picture_ = ComPtr<IPictureDisp>(picture); }
  explicit operator bool() const { return static_cast<bool>(picture_); }
  /// The handle of a bitmap or icon, 0 for any other picture; owned by the picture.
  OLE_HANDLE handle() const;
  /// PICTYPE_..., PICTYPE_NONE without a picture.
  short type() const;

  Variant empty_value() const override;
  void load(const VARIANT& value) override;
  void reset() override { picture_.reset(); }
  Variant save() const override;
  bool is_default() const override { return !picture_; }

 private:
  ComPtr<IPictureDisp> picture_;
  std::function<void()> effect_;
};

}  // namespace kestrelon
