// What an image knows of its platform, and the PNG properties it carries.
#include "imaging/c32bpp_dib.h"

namespace kestrelon {

void c32bppDIB::set_platform_flags(const PlatformFacts& facts) {
  switch (facts.family) {
    case PlatformFacts::Family::WindowsNt:
      if (facts.major >= 5) {
        flags_ = kFlagBlendSound | kFlagAlphaBlend;
      } else if (facts.service_pack < 6) {
        flags_ = kFlagNoLibrary;
      }
      flags_ |= kFlagNt;
      break;
    case PlatformFacts::Family::Windows9x:
      flags_ = facts.minor != 0 ? kFlagBlendExists : kFlagNoLibrary;
      break;
    case PlatformFacts::Family::Other:
      flags_ = kFlagNoLibrary;
      break;
  }
  set_isGDIplusEnabled(true);
  high_quality_ = isGDIplusEnabled();
}

void c32bppDIB::set_isAlphaBlendFriendly(bool on) {
  flags_ &= ~kFlagAlphaBlend;
  if (on && (flags_ & (kFlagBlendSound | kFlagBlendExists)) != 0) flags_ |= kFlagAlphaBlend;
}

void c32bppDIB::set_isGDIplusEnabled(bool on) {
  if (on == isGDIplusEnabled()) return;
  flags_ &= ~kFlagLibrary;
  if (on && (flags_ & kFlagNoLibrary) == 0 && imaging_bridge().library_ok()) flags_ |= kFlagLibrary;
}

bool c32bppDIB::isZlibEnabled() const {
  return imaging_bridge().zlib_available();
}

void c32bppDIB::set_KeepGDIplusActive(bool on) {
  keep_library_active_ = on && isGDIplusEnabled();
}

void c32bppDIB::DestroyGDIplusToken(intptr_t token) {
  if (token != 0) imaging_bridge().stop_library(token);
}

void c32bppDIB::take_settings(const c32bppDIB& other) {
  library_token_ = other.library_token_;
  set_isGDIplusEnabled(other.isGDIplusEnabled());
  high_quality_ = other.high_quality_;
}

bool c32bppDIB::PngPropertySet(PngProperty id, std::optional<PngPropertyValue> value,
                               std::wstring_view keyword) {
  if (id == PngProperty::ClearProps) {
    png_properties_.reset();
    return true;
  }
  if (!value) {
    if (png_properties_) png_properties_->remove(id, keyword);
    return true;
  }
  if (!png_properties_) png_properties_ = std::make_unique<PngProperties>();
  return png_properties_->set(id, std::move(*value), keyword);
}

PngPropertyValue c32bppDIB::PngPropertyGet(PngProperty id, std::wstring_view keyword) const {
  if (!png_properties_) {
    const bool has_default =
        id == PngProperty::DefaultBkgColor || id == PngProperty::DateTimeModified;
    return has_default ? PngProperties::default_value(id) : PngPropertyValue(std::wstring());
  }
  const PngPropertyEntry* entry = png_properties_->find(id, keyword);
  return entry ? entry->value : PngProperties::default_value(id);
}

}  // namespace kestrelon
