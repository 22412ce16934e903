// What the number given to a message box asks for, in the system's own numbers: the buttons, the
// icon, which button Enter and Escape mean; and the texts that go with them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrelon::msg_box {

/// The result of a box: the button that was chosen.
enum Answer : int32_t {
  kNone = 0,  ///< nothing was shown, or there was no button to take
  kOk = 1,
  kCancel = 2,
  kAbort = 3,
  kRetry = 4,
  kIgnore = 5,
  kYes = 6,
  kNo = 7,
  kTryAgain = 10,
  kContinue = 11,
};

/// In the order of the pictures and sounds.
enum class Icon { kNone, kCritical, kQuestion, kExclamation, kInformation };

struct Rules {
  std::vector<Answer> buttons;  ///< from first to last; none for an unknown set
  size_t chosen = 0;            ///< the default button
  Icon icon = Icon::kNone;
  bool topmost = false;
  bool foreground = false;
  bool align_right = false;
  bool right_to_left = false;
};

/// Bits that mean nothing here are ignored.
Rules read_rules(int32_t number);

const wchar_t* caption_of(Answer answer);

/// What Escape and the close button answer: Cancel where it exists, or a lone OK; kNone where they
/// do nothing.
Answer escape_answer(std::span<const Answer> buttons);

/// What a box answers that goes without a choice: Cancel where it exists, else kNone.
Answer gone_answer(std::span<const Answer> buttons);

/// The captions of the buttons: the system's words where `given` has none.
std::vector<std::wstring> captions_for(std::span<const Answer> buttons,
                                       std::span<const std::wstring> given);

/// The caption of the default button while the time runs.
std::wstring counting_caption(std::wstring_view caption, int32_t seconds);

/// What Ctrl+C copies: title, text and captions between rules.
std::wstring copied_text(std::wstring_view title, std::wstring_view text,
                         std::span<const std::wstring> captions);

/// A part of a text that is an address to open.
struct Link {
  size_t start = 0;
  size_t length = 0;
  bool operator==(const Link&) const = default;
};

/// The addresses in a text: "http://", "https://", "mailto:" or "www." up to the next blank,
/// without the mark of punctuation at the end.
std::vector<Link> find_links(std::wstring_view text);

}  // namespace kestrelon::msg_box
