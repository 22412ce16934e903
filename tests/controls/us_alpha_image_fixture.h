// A USAlphaImage on a form, and what its tests share.
#pragma once

#include <gmock/gmock.h>

#include <cstring>

#include "base/file_bytes.h"
#include "tests/controls/control_fixture.h"
#include "tests/imaging/windows_images.h"

namespace kestrelon::host {

inline std::wstring sample_path(const std::wstring& name) {
  return L"" KESTRELON_SOURCE_DIR L"/resources/samples/" + name;
}

inline Variant bytes_variant(const std::vector<uint8_t>& bytes) {
  Variant out;
  V_VT(&out) = VT_ARRAY | VT_UI1;
  V_ARRAY(&out) = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (!bytes.empty()) std::memcpy(V_ARRAY(&out)->pvData, bytes.data(), bytes.size());
  return out;
}

inline std::vector<uint8_t> bytes_in(const Variant& value) {
  if (V_VT(&value) != (VT_ARRAY | VT_UI1) || V_ARRAY(&value) == nullptr) return {};
  const SAFEARRAY& array = *V_ARRAY(&value);
  size_t count = 1;
  for (UINT i = 0; i < array.cDims; ++i) count *= array.rgsabound[i].cElements;
  const auto* const data = static_cast<const uint8_t*>(array.pvData);
  return {data, data + count};
}

/// A script's variable handed over by reference.
inline Variant reference_to(Variant& variable) {
  Variant out;
  V_VT(&out) = VT_VARIANT | VT_BYREF;
  V_VARIANTREF(&out) = &variable;
  return out;
}

inline Variant missing() {
  Variant out;
  V_VT(&out) = VT_ERROR;
  V_ERROR(&out) = DISP_E_PARAMNOTFOUND;
  return out;
}

class AlphaImageTest : public ControlTest {
 protected:
  using Names = std::vector<std::wstring>;

  static constexpr COLORREF kBehind = RGB(40, 160, 220);

  static Variant call(ControlSite& site, const wchar_t* name, std::vector<Variant> arguments = {}) {
    return call_method(site.control_dispatch().get(), name, std::move(arguments));
  }
  static bool done(ControlSite& site, const wchar_t* name, std::vector<Variant> arguments = {}) {
    return to_bool(call(site, name, std::move(arguments)));
  }
  static bool load(ControlSite& site, const std::wstring& name = L"disc.png") {
    return done(site, L"LoadImage_FromFile", {Variant(sample_path(name).c_str())});
  }
  /// The disc of the samples, opaque in the middle, transparent in the corners: 192 by 192.
  ComPtr<ControlSite> disc(const RECT& bounds) {
    auto site = place(L"USAlphaImage", bounds);
    EXPECT_TRUE(load(*site));
    return site;
  }
  /// A picture of four opaque quarters: red, green over blue, white.
  static bool load_quarters(ControlSite& site, long side = 16) {
    WindowsImage image;
    image.InitializeDIB(side, side);
    for (long y = 0; y < side; ++y)
      for (long x = 0; x < side; ++x)
        image.SetPixel(x, y,
                       y < side / 2 ? (x < side / 2 ? 0x0000FF : 0x00FF00)
                                    : (x < side / 2 ? 0xFF0000 : 0xFFFFFF));
    image.set_alpha(AlphaType::None);
    std::vector<uint8_t> file;
    image.SaveToStream_Bitmap(file);
    return done(site, L"LoadImage_FromArray", {bytes_variant(file)});
  }
  static ComPtr<IDispatch> image_of(ControlSite& site) { return to_object(get(site, L"dibClass")); }
  static long pixel_of(ControlSite& site, long x, long y) {
    return to_long(call_method(image_of(site).get(), L"GetPixel", {Variant(x), Variant(y)}));
  }
  /// What a control of that size shows over kBehind, as 0x00RRGGBB.
  static Picture shown(ControlSite& site) {
    const RECT place = site.bounds();
    return draw_control(site, static_cast<int>(place.right - place.left),
                        static_cast<int>(place.bottom - place.top), kBehind);
  }
  static constexpr uint32_t kThrough = 0x28A0DC;  // kBehind seen in a Picture
  /// How often the surface has been drawn.
  static LONG drawings(ControlSite& site) {
    static const UINT message = RegisterWindowMessageW(L"Kestrelon2012.FullRepaints");
    LRESULT result = 0;
    query<IOleInPlaceObjectWindowless>(site.control())->OnWindowMessage(message, 0, 0, &result);
    return static_cast<LONG>(result);
  }
  /// All properties, saved.
  static ComPtr<PropertyBag> saved(ControlSite& site) {
    auto bag = make_com<PropertyBag>();
    EXPECT_EQ(query<IPersistPropertyBag>(site.control())->Save(bag.get(), TRUE, TRUE), S_OK);
    return bag;
  }
  static Variant saved_value(PropertyBag& bag, const wchar_t* key) {
    Variant out;
    bag.Read(key, &out, nullptr);
    return out;
  }
};

}  // namespace kestrelon::host
