// Digits that are pictures: where they come from.
#include "base/file_bytes.h"
#include "controls/us_picture_lcd/us_picture_lcd.h"
#include "imaging/c32bpp_dib/automation_bytes_win.h"
#include "imaging/image_list/image_list_entry_win.h"

namespace kestrelon {
namespace {

constexpr int32_t kLargestCell = 1024;        // pixels of a side
constexpr uint64_t kLargestFile = 64u << 20;  // bytes
constexpr int64_t kLargestStrip = 32000;      // pixels of all cells side by side

}  // namespace

SAFEARRAY* USPictureLCD::digit_picture() const {
  Variant holder = DigitPicture.save();
  SAFEARRAY* const array = V_ARRAY(&holder);
  V_VT(&holder) = VT_EMPTY;  // the caller owns it
  return array;
}

void USPictureLCD::set_digit_picture(SAFEARRAY* bytes) {
  const ArrayBytes given(bytes, 1);
  DigitPicture.put({given.bytes().begin(), given.bytes().end()});
}

// A picture that cannot be read is kept with the form and draws nothing.
void USPictureLCD::picture_changed() {
  digits_.DestroyDIB();
  if (!DigitPicture.get().empty()) digits_.LoadPicture_Stream(DigitPicture.get());
  redraw();
}

bool USPictureLCD::take_digits(std::vector<uint8_t> bytes) {
  WindowsImage fresh;
  if (bytes.empty() || !fresh.LoadPicture_Stream(bytes)) return false;
  DigitPicture.put(std::move(bytes));
  return true;
}

bool USPictureLCD::load_digits_from_file(const std::wstring& file) {
  auto bytes = read_file(file, kLargestFile);
  return bytes && take_digits(std::move(*bytes));
}

// Cells as large as the largest picture, each picture in the middle of its own.
bool USPictureLCD::load_digits_from_us_image_list(IDispatch* list, const VARIANT& key) {
  const std::wstring& characters = DigitChars.get();
  std::vector<std::unique_ptr<WindowsImage>> images;
  int32_t wide = 0, high = 0;
  for (const wchar_t c : characters) {
    auto image = std::make_unique<WindowsImage>();
    if (copy_image_list_entry(list, key, Variant(std::wstring_view(&c, 1)), *image)) {
      wide = std::max(wide, image->Width());
      high = std::max(high, image->Height());
    }
    images.push_back(std::move(image));
  }
  if (wide < 1 || wide > kLargestCell || high > kLargestCell) return false;
  if (int64_t{wide} * static_cast<int64_t>(images.size()) > kLargestStrip) return false;
  WindowsImage strip;
  if (!strip.InitializeDIB(wide * static_cast<int32_t>(images.size()), high)) return false;
  for (size_t i = 0; i < images.size(); ++i) {
    if (!images[i]->has_image()) continue;
    RenderArguments args;
    args.destX = wide * static_cast<int32_t>(i) + (wide - images[i]->Width()) / 2;
    args.destY = (high - images[i]->Height()) / 2;
    args.destHostDIB = &strip;
    images[i]->Render(nullptr, args);
  }
  strip.set_alpha(AlphaType::Complex);
  std::vector<uint8_t> bytes;
  return strip.SaveToStream_PNG(bytes) && take_digits(std::move(bytes));
}

void USPictureLCD::clear_digits() {
  DigitPicture.put({});
}

}  // namespace kestrelon
