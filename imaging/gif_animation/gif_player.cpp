#include "imaging/gif_animation/gif_player.h"

#include <algorithm>

namespace kestrelon {
namespace {

// A timer of the system may fire so much before its time by another clock; waiting for the rest
// would cost a whole period of it.
constexpr uint64_t kClockGrain = 16;

}  // namespace

void GifPlayer::open(std::vector<int32_t> delays) {
  delays_ = std::move(delays);
  current_ = delays_.empty() ? 0 : 1;
  state_ = AnimationAction::Stop;
  remaining_ = loops_;
}

void GifPlayer::set_loops(int32_t loops) {
  loops_ = std::max(loops, 0);
  remaining_ = loops_;
}

uint64_t GifPlayer::delay() const {
  const int32_t own =
      stepped_delay_ > 0 ? stepped_delay_ : delays_[static_cast<size_t>(current_ - 1)];
  return static_cast<uint64_t>(std::max({own, min_delay_, kShortestDelay}));
}

void GifPlayer::start(uint64_t now) {
  state_ = AnimationAction::Play;
  due_ = now + delay();
}

GifPlayer::Outcome GifPlayer::act(AnimationAction action, uint64_t now) {
  Outcome out;
  if (current_ == 0) return out;
  switch (action) {
    case AnimationAction::Stop:
    case AnimationAction::Reset:
      remaining_ = loops_;
      current_ = 1;
      state_ = AnimationAction::Stop;
      out.frame_changed = true;
      if (action == AnimationAction::Reset) start(now);
      break;
    case AnimationAction::Play:
      if (state_ == AnimationAction::Play) break;
      if (state_ == AnimationAction::Stop) {
        out.frame_changed = current_ != 1;
        remaining_ = loops_;
        current_ = 1;
      }
      start(now);
      break;
    case AnimationAction::Pause:
      if (state_ == AnimationAction::Play) state_ = AnimationAction::Pause;
      break;
    case AnimationAction::Forward:
      current_ = static_cast<size_t>(current_) < delays_.size() ? current_ + 1 : 1;
      state_ = AnimationAction::Pause;
      out.frame_changed = true;
      break;
  }
  return out;
}

GifPlayer::Outcome GifPlayer::tick(uint64_t now) {
  Outcome out;
  if (state_ != AnimationAction::Play || now + kClockGrain < due_) return out;
  if (static_cast<size_t>(current_) < delays_.size()) {
    ++current_;
  } else if (loops_ > 0 && --remaining_ <= 0) {
    remaining_ = 0;
    state_ = AnimationAction::Stop;
    out.loops_ended = true;
    return out;
  } else {
    current_ = 1;
  }
  due_ = now + delay();
  out.frame_changed = true;
  return out;
}

std::optional<uint32_t> GifPlayer::wait(uint64_t now) const {
  if (state_ != AnimationAction::Play || (delays_.size() == 1 && loops_ == 0)) return {};
  return due_ > now ? static_cast<uint32_t>(due_ - now) : 0u;
}

}  // namespace kestrelon
