#include "lists/collation_win.h"

#include <windows.h>

namespace kestrelon {
namespace {

// Case decides only between texts that are the same otherwise.
class LanguageCollation final : public Collation {
 public:
  void append_key(std::wstring_view text, std::vector<uint8_t>& keys) const override {
    const LCID language =
        MAKELCID(MAKELANGID(LANG_PORTUGUESE, SUBLANG_PORTUGUESE_BRAZILIAN), SORT_DEFAULT);
    const int length = static_cast<int>(text.size());
    const size_t at = keys.size();
    // Most keys fit at once: the system is asked a second time for the others only.
    keys.resize(at + text.size() * 5 + 32);
    int size = make(language, text, length, keys, at);
    if (size == 0 && GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
      size = LCMapStringW(language, LCMAP_SORTKEY, text.data(), length, nullptr, 0);
      keys.resize(at + static_cast<size_t>(size));
      size = make(language, text, length, keys, at);
    }
    // Without the zero at its end.
    keys.resize(at + static_cast<size_t>(size > 0 ? size - 1 : 0));
  }

 private:
  static int make(LCID language, std::wstring_view text, int length, std::vector<uint8_t>& keys,
                  size_t at) {
    return LCMapStringW(language, LCMAP_SORTKEY, text.data(), length,
                        reinterpret_cast<LPWSTR>(keys.data() + at),
                        static_cast<int>(keys.size() - at));
  }
};

}  // namespace

const Collation& language_collation() {
  static const LanguageCollation collation;
  return collation;
}

}  // namespace kestrelon
