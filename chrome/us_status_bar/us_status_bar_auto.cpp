// Texts that the program does not set: clocks, lock keys, the user's name, pushed texts. Timers run
// only while the bar shows at run time, and only for panels that need them.
#include "chrome/us_status_bar/status_clock.h"
#include "chrome/us_status_bar/us_status_bar.h"

namespace kestrelon {
namespace {

constexpr UINT kLockPoll = 250;  // milliseconds
constexpr UINT kLate = 10;       // milliseconds behind the full second, so as not to be early

struct LockKey {
  int key;
  const wchar_t* text;
};
constexpr LockKey kLockKeys[] = {
    {VK_CAPITAL, L"CAPS"}, {VK_NUMLOCK, L"NUM"}, {VK_SCROLL, L"SCRL"}, {VK_INSERT, L"INS"}};

DateTime local_now(UINT* millisecond = nullptr) {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  if (millisecond != nullptr) *millisecond = now.wMilliseconds;
  // A leap second that the system may tell is the last of its minute.
  return {
      {now.wYear, now.wMonth, now.wDay}, now.wHour, now.wMinute, std::min<int>(now.wSecond, 59)};
}

std::wstring user_name() {
  wchar_t name[257];
  DWORD size = sizeof name / sizeof *name;
  return GetUserNameW(name, &size) && size > 0 ? std::wstring(name, size - 1) : std::wstring();
}

size_t lock_number(const StatusPanel& panel) {
  return static_cast<size_t>(panel.style - Panel_CapsLock);
}

}  // namespace

long USStatusBar::first_text_panel() const {
  for (long i = 1; i <= panel_count(); ++i)
    if (at(i).style == Panel_Text && at(i).visible) return i;
  return 0;
}

std::wstring USStatusBar::text_of(long index) const {
  const StatusPanel& panel = at(index);
  if (panel.is_clock())
    return status_bar::clock_text(static_cast<status_bar::Clock>(panel.style), panel.format,
                                  local_now());
  if (panel.is_lock()) return kLockKeys[lock_number(panel)].text;
  if (panel.style == Panel_User && panel.caption.empty()) return user_;
  if (!pushed_.empty() && index == first_text_panel()) return pushed_.back();
  return panel.caption;
}

bool USStatusBar::lock_on(long index) const {
  return (locks_ >> lock_number(at(index)) & 1u) != 0;
}

void USStatusBar::repaint_panel(long index) {
  if (!known(index) || SimpleMode.get()) return;
  const auto place = static_cast<size_t>(index - 1);
  if (place >= kMostPanels || stale_[place]) return;
  stale_.set(place);
  const PixelRect area = area_of(index);
  if (draws() && !area.empty()) invalidate(RECT{area.left, area.top, area.right, area.bottom});
}

void USStatusBar::panel_text_changed(long index) {
  if (!known(index)) return;
  repaint_panel(index);
  if (at(index).auto_size == Panel_Contents && at(index).visible) relayout();
  if (index == 1) tell_readers(EVENT_OBJECT_NAMECHANGE, index);
}

void USStatusBar::watch() {
  bool clocks = false, locks = false;
  for (const StatusPanel& panel : panels.get()) {
    clocks = clocks || (panel.visible && panel.is_clock());
    locks = locks || (panel.visible && panel.is_lock());
    if (panel.style == Panel_User && user_.empty()) user_ = user_name();
  }
  const bool seen = window() != nullptr && IsWindowVisible(window()) && user_mode() && draws() &&
                    !SimpleMode.get();
  if (!seen || (!clocks && !locks)) return stop_watching();
  system_.start([this](SystemWatch::News news) { heard(news); });
  clocks ? set_clock() : clock_.stop();
  locks ? set_lock_poll() : lock_poll_.stop();
}

void USStatusBar::stop_watching() {
  clock_.stop();
  lock_poll_.stop();
  system_.stop();
}

void USStatusBar::heard(SystemWatch::News news) {
  const ComPtr<IUnknown> alive(own_unknown());
  if (news == SystemWatch::News::kTime) return clock_ticked();
  if (!lock_poll_.running() && news == SystemWatch::News::kDeactivated) return;
  if (news == SystemWatch::News::kDeactivated) return lock_poll_.stop();
  watch();
}

void USStatusBar::set_clock() {
  UINT millisecond = 0;
  const DateTime now = local_now(&millisecond);
  int seconds = 24 * 60 * 60;
  for (const StatusPanel& panel : panels.get())
    if (panel.visible && panel.is_clock())
      seconds =
          std::min(seconds, status_bar::seconds_to_change(
                                static_cast<status_bar::Clock>(panel.style), panel.format, now));
  clock_.start(static_cast<UINT>(seconds) * 1000 - std::min(millisecond, 999u) + kLate, [this] {
    const ComPtr<IUnknown> alive(own_unknown());
    clock_ticked();
  });
}

void USStatusBar::clock_ticked() {
  for (long i = 1; i <= panel_count(); ++i) {
    const auto place = static_cast<size_t>(i - 1);
    if (!at(i).is_clock() || !at(i).visible) continue;
    if (place >= clock_text_.size() || clock_text_[place] != text_of(i)) panel_text_changed(i);
  }
  watch();
}

void USStatusBar::set_lock_poll() {
  read_locks();
  if (!program_is_active()) return lock_poll_.stop();
  if (lock_poll_.running()) return;
  lock_poll_.start(kLockPoll, [this] {
    const ComPtr<IUnknown> alive(own_unknown());
    if (!IsWindowVisible(window())) return stop_watching();
    read_locks();
  });
}

void USStatusBar::read_locks() {
  unsigned now = 0;
  for (size_t i = 0; i < 4; ++i)
    if ((GetKeyState(kLockKeys[i].key) & 1) != 0) now |= 1u << i;
  const unsigned changed = std::exchange(locks_, now) ^ now;
  if (changed == 0) return;
  for (long i = 1; i <= panel_count(); ++i)
    if (at(i).is_lock() && (changed >> lock_number(at(i)) & 1u) != 0) panel_text_changed(i);
}

}  // namespace kestrelon
