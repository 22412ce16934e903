#include "lists/collation.h"

#include "base/fold.h"

namespace kestrelon {

namespace {

class FoldedCollation final : public Collation {
 public:
  void append_key(std::wstring_view text, std::vector<uint8_t>& keys) const override {
    for (const wchar_t c : text) append(folded_letter(c), keys);
    append(0, keys);
    for (const wchar_t c : text) append(c, keys);
  }

 private:
  static void append(wchar_t c, std::vector<uint8_t>& keys) {
    keys.push_back(static_cast<uint8_t>(code_unit(c) >> 8));
    keys.push_back(static_cast<uint8_t>(code_unit(c)));
  }
};

}  // namespace

const Collation& folded_collation() {
  static const FoldedCollation collation;
  return collation;
}

}  // namespace kestrelon
