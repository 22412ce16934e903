// The bytes of a registry file. Within the program its texts are UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrelon {

/// Turns texts into the bytes of a file and back. This one leaves them as they are.
class RegFileCode {
 public:
  virtual ~RegFileCode() = default;
  /// Nothing when the file's code lacks a character.
  virtual std::optional<std::string> encode(std::string_view text) const {
    return std::string(text);
  }
  virtual std::string decode(std::string_view bytes) const { return std::string(bytes); }
};

/// UTF-16, low bytes first. Every text has a form in it; an odd byte at the end is dropped.
class Utf16FileCode final : public RegFileCode {
 public:
  std::optional<std::string> encode(std::string_view text) const override;
  std::string decode(std::string_view bytes) const override;
};

/// What a UTF-16 file begins with.
inline constexpr std::string_view kUtf16Mark = "\xFF\xFE";

}  // namespace kestrelon
