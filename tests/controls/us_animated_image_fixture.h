// Animations of a few pixels in a USAnimatedImage.
#pragma once

#include <cstring>

#include "tests/controls/control_fixture.h"
#include "tests/imaging/gif_bytes.h"

namespace kestrelon::host {

using Names = std::vector<std::wstring>;
using test::Bytes;
using test::operator+;

inline Variant bytes_variant(const Bytes& bytes) {
  Variant out;
  V_VT(&out) = VT_ARRAY | VT_UI1;
  V_ARRAY(&out) = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (!bytes.empty()) std::memcpy(V_ARRAY(&out)->pvData, bytes.data(), bytes.size());
  return out;
}

/// Left half red, right half blue, a green pixel in the top left corner.
inline Bytes halves() {
  return test::screen_of(4, 2) + test::frame_at(0, 0, 4, 2, {2, 1, 3, 3, 1, 1, 3, 3}) +
         test::control(1, 2) + test::frame_at(0, 0, 4, 2, Bytes(8, 2)) + test::kTrailer;
}

class AnimatedImageTest : public ControlTest {
 protected:
  // Numbers of the interface.
  static constexpr long kStop = 0, kPlay = 1, kPause = 2, kForward = 3, kReset = 4;
  static constexpr long kDelayNone = 0, kDelayStartup = 1, kDontAnimate = 2;
  static constexpr long kClip = 0, kAlways = 1, kStretch = 2, kShrink = 3, kActual = 4;
  // Colours of the frames as a picture holds them.
  static constexpr uint32_t kRed = 0xFF0000, kGreen = 0x00FF00, kBlue = 0x0000FF;
  static constexpr COLORREF kBehind = RGB(255, 0, 255);
  static constexpr uint32_t kBehindPixel = 0xFF00FF;

  /// Red, green, blue: `width` by `height` pixels each, of one colour, for 20 ms.
  static Bytes three(uint32_t loops = 0, uint32_t width = 4, uint32_t height = 2) {
    Bytes out = test::screen_of(width, height) + test::netscape(loops);
    for (uint8_t colour = 1; colour <= 3; ++colour)
      out = out + test::control(0, 0, 2) +
            test::frame_at(0, 0, width, height, Bytes(size_t{width} * height, colour));
    return out + test::kTrailer;
  }

  /// A control whose frames may be as short as 10 ms.
  ComPtr<ControlSite> image(const RECT& bounds = {20, 20, 60, 40}, long delay_mode = kDelayStartup,
                            bool hidden = false) {
    const auto bag = make_com<PropertyBag>();
    bag->set(L"Delay", Variant(10L));
    bag->set(L"DelayLoad", Variant(delay_mode));
    ControlState state;
    state.bag = bag.get();
    state.hidden = hidden;
    return form_.add_control(L"Kestrelon2012.USAnimatedImage", L"", bounds, nullptr, state);
  }
  static bool load(ControlSite& site, const Bytes& bytes) {
    return call(site, L"LoadAnimatedGIF_Array", {bytes_variant(bytes)});
  }
  static bool call(ControlSite& site, const wchar_t* method, std::vector<Variant> arguments) {
    return to_bool(call_method(site.control_dispatch().get(), method, std::move(arguments)));
  }
  static void act(ControlSite& site, long action) { put(site, L"Action", Variant(action)); }
  static long frame(ControlSite& site) { return number(site, L"CurrentFrame"); }

  /// Lets it run until it has raised so many events.
  static Names events_until(ControlSite& site, size_t count, DWORD milliseconds = 3000) {
    pump_until([&] { return site.events()->log().size() >= count; }, milliseconds);
    return take_log(site);
  }
  static uint32_t middle(ControlSite& site, int width = 40, int height = 20) {
    return draw_control(site, width, height, kBehind).at(width / 2, height / 2);
  }
};

}  // namespace kestrelon::host
