// Loading a file, and the frames in their time.
#include "base/file_bytes.h"
#include "controls/us_animated_image/us_animated_image.h"
#include "imaging/c32bpp_dib/automation_bytes_win.h"

namespace kestrelon {

bool USAnimatedImage::load_animated_gif_file(const std::wstring& name) {
  return load(read_file(name, GifFile::kMaxBytes).value_or(std::vector<uint8_t>()));
}

bool USAnimatedImage::load_animated_gif_array(SAFEARRAY** array) {
  const ArrayBytes bytes(array != nullptr ? *array : nullptr, 1);
  return load({bytes.bytes().begin(), bytes.bytes().end()});
}

// Whatever was shown goes, also when the new file cannot be read.
bool USAnimatedImage::load(std::vector<uint8_t> bytes) {
  remote_.cancel();
  gif_.file.read(std::move(bytes));
  show_file();
  property_changed(L"AnimatedGIF");
  begin();
  return player_.frame_count() > 0;
}

// The first frame of the present file, at rest.
void USAnimatedImage::show_file() {
  ++loads_;
  timer_.stop();
  tables_.release();
  GifFile& file = gif_.file;
  if (!canvas_.open(file)) {
    file.clear();
    canvas_.close();
  }
  std::vector<int32_t> delays;
  for (const GifFrame& frame : file.frames()) delays.push_back(frame.delay);
  player_.set_loops(static_cast<int32_t>(loops()));
  player_.open(std::move(delays));
  if (player_.frame_count() > 0) canvas_.show(0);
  drawn_.reset();
  layout_changed();
}

void USAnimatedImage::begin() {
  const auto mode = DelayAnimation.get();
  if (mode == Delay_None || (mode == Delay_Startup && shown_once_))
    perform(player_.act(AnimationAction::Play, GetTickCount64()), false);
}

ENUM_ANIMATION_ACTIONS USAnimatedImage::action() const {
  return static_cast<ENUM_ANIMATION_ACTIONS>(player_.state());
}

void USAnimatedImage::set_action(ENUM_ANIMATION_ACTIONS action) {
  perform(player_.act(static_cast<AnimationAction>(action), GetTickCount64()), false);
}

void USAnimatedImage::set_loops(long value) {
  loops_.put(value);
  player_.set_loops(static_cast<int32_t>(value));
  sync_timer();
}

void USAnimatedImage::timing_changed() {
  player_.set_min_delay(static_cast<int32_t>(MinFrameDelay.get()));
  player_.set_stepped_delay(static_cast<int32_t>(SteppedDelay.get()));
}

// Everything is in its new state before an event tells of it; a handler may do anything.
void USAnimatedImage::perform(GifPlayer::Outcome outcome, bool via_timer) {
  if (outcome.frame_changed && canvas_.show(static_cast<size_t>(player_.current() - 1))) {
    drawn_.reset();
    redraw();
  }
  sync_timer();
  if (outcome.frame_changed) {
    long frame = player_.current();
    VARIANT_BOOL by_timer = via_timer ? VARIANT_TRUE : VARIANT_FALSE;
    raise_frame_changed(frame, by_timer);
  }
  if (outcome.loops_ended) raise_loops_ended();
}

void USAnimatedImage::tick() {
  if (!may_run()) return timer_.stop();  // the container let go of the control
  perform(player_.tick(GetTickCount64()), true);
}

// At run time, and in a container.
bool USAnimatedImage::may_run() {
  ComPtr<IOleClientSite> site;
  GetClientSite(site.put());
  return site && ambient().user_mode();
}

void USAnimatedImage::sync_timer() {
  const auto wait = player_.wait(GetTickCount64());
  if (!wait || !may_run()) return timer_.stop();
  timer_.start(std::max<UINT>(*wait, USER_TIMER_MINIMUM), [this] {
    const Hold hold(*this);
    tick();
  });
}

bool USAnimatedImage::load_animated_gif_remote(const std::wstring& name) {
  ComPtr<IOleClientSite> site;
  GetClientSite(site.put());
  return remote_.start(site.get(), name, GifFile::kMaxBytes,
                       [this](HRESULT result, std::vector<uint8_t> bytes) {
                         const Hold hold(*this);
                         remote_read(result, std::move(bytes));
                       });
}

// What cannot be reached leaves the animation that there is; bytes that are no animation do not.
void USAnimatedImage::remote_read(HRESULT result, std::vector<uint8_t> bytes) {
  if (FAILED(result)) return raise_remote_load_failure();
  gif_.file.read(std::move(bytes));
  show_file();
  property_changed(L"AnimatedGIF");
  if (player_.frame_count() == 0) return raise_remote_load_failure();
  const unsigned load = loads_;
  long width = actual_width(), height = actual_height();
  VARIANT_BOOL cancel = VARIANT_FALSE;
  raise_remote_load_complete(width, height, cancel);
  if (cancel == VARIANT_FALSE && load == loads_) begin();
}

}  // namespace kestrelon
