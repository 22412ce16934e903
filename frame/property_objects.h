// Properties that are OLE objects: the font and pictures.
#pragma once

#include <olectl.h>

#include "frame/property.h"

namespace kestrelon {

/// A font that is never missing: without one from the container, the system's message font. A change made
/// inside the object (control.Font.Bold = True) is reported as a change of the property.
class FontProperty final : public PropertyBase {
 public:
  template <class Owner>
  FontProperty(Owner& owner, PropertyName name, void (Owner::*effect)() = nullptr)
      : PropertyBase(owner, name) {
    if (effect != nullptr) effect_ = [&owner, effect] { (owner.*effect)(); };
  }
  ~FontProperty();

  ComPtr<IFontDisp> get();
  /// Takes the object itself, as a property set by reference does; null goes back to the default.
  void put(IFontDisp* font);
  /// Takes a copy without report: the ambient font belongs to the container.
  void assign_copy(IFontDisp* font);
  /// The font as GDI uses it; owned by the font object, valid until it changes.
  HFONT handle();
  IFont& font();
  /// Changes one attribute through IFont; reports and takes effect under the name given.
  template <class Setter>
  void change(Setter setter) {
    quiet_ = true;
    setter(font());
    quiet_ = false;
  }

  Variant empty_value() const override;
  void load(const VARIANT& value) override;
  void reset() override { replace(nullptr); }
  Variant save() const override;
  bool is_default() const override { return false; }

 private:
  class Listener;

  void replace(IFont* font);
  void font_changed();

  ComPtr<IFont> font_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  bool quiet_ = false;
  std::function<void()> effect_;
};

/// A picture, or none.
class PictureProperty final : public PropertyBase {
 public:
  template <class Owner>
  PictureProperty(Owner& owner, PropertyName name, void (Owner::*effect)() = nullptr)
      : PropertyBase(owner, name) {
    if (effect != nullptr) effect_ = [&owner, effect] { (owner.*effect)(); };
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
