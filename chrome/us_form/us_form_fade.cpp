// Fading in and out by the clock.
#include "chrome/us_form/us_form.h"
#include "frame/platform.h"
#include "frame/screen.h"

namespace kestrelon {
namespace {

constexpr ULONGLONG kFadeTime = 250;  // milliseconds
constexpr UINT kStep = 15;

BYTE part_of_fade(ULONGLONG begun) {
  const ULONGLONG past = GetTickCount64() - begun;
  return static_cast<BYTE>(past >= kFadeTime ? 255 : 255 * past / kFadeTime);
}

}  // namespace

void USForm::set_opacity(BYTE alpha) {
  const HWND window = host_.window();
  SetWindowLongPtrW(window, GWL_EXSTYLE, GetWindowLongPtrW(window, GWL_EXSTYLE) | WS_EX_LAYERED);
  SetLayeredWindowAttributes(window, 0, alpha, LWA_ALPHA);
}

void USForm::fade_in() {
  if (faded_in_ || !FadeIn.get() || !IsNtPlatform() || !animations_wanted()) return;
  faded_in_ = true;
  set_opacity(1);
  const ULONGLONG begun = GetTickCount64();
  fade_timer_.start(kStep, [this, begun] {
    if (host_.gone() || host_.window() == nullptr) return fade_timer_.stop();
    const BYTE alpha = part_of_fade(begun);
    set_opacity(alpha < 1 ? BYTE{1} : alpha);
    if (alpha == 255) fade_timer_.stop();
  });
}

// The window is about to go: no message is handled in between, so nobody can come in here again.
void USForm::fade_out() {
  if (!FadeOut.get() || host_.gone() || !IsNtPlatform() || !animations_wanted() ||
      !IsWindowVisible(host_.window()) || host_.minimized())
    return;
  const ULONGLONG begun = GetTickCount64();
  for (BYTE gone = 0; gone < 255; gone = part_of_fade(begun)) {
    set_opacity(static_cast<BYTE>(254 - gone));
    Sleep(kStep);
  }
  set_opacity(0);
}

}  // namespace kestrelon
