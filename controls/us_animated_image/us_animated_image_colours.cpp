// Colour tables, and the first frame as a picture object.
#include <cstring>

#include "controls/us_animated_image/us_animated_image.h"
#include "frame/translate_color.h"
#include "imaging/dib_win.h"
#include "imaging/memory_stream_win.h"
#include "imaging/picture_convert_win.h"

namespace kestrelon {
namespace {

// The elements of an array of Long, for the time of this object; none if it is no such array.
class LongArray {
 public:
  explicit LongArray(SAFEARRAY* array) {
    if (array == nullptr || SafeArrayGetDim(array) != 1 ||
        SafeArrayGetElemsize(array) != sizeof(LONG)) {
      return;
    }
    void* data = nullptr;
    if (FAILED(SafeArrayAccessData(array, &data))) return;
    array_ = array;
    entries_ = {static_cast<LONG*>(data), data != nullptr ? array->rgsabound[0].cElements : 0};
  }
  ~LongArray() {
    if (array_ != nullptr) SafeArrayUnaccessData(array_);
  }
  LongArray(const LongArray&) = delete;
  LongArray& operator=(const LongArray&) = delete;
  std::span<LONG> entries() const { return entries_; }

 private:
  SAFEARRAY* array_ = nullptr;
  std::span<LONG> entries_;
};

// An array of `count` elements in place of what there is. One of a fixed size stays, and holds what
// fits.
bool make_room(SAFEARRAY** array, ULONG count) {
  if (*array != nullptr && ((*array)->fFeatures & (FADF_STATIC | FADF_FIXEDSIZE)) != 0) return true;
  SAFEARRAY* const fresh = SafeArrayCreateVector(VT_I4, 0, count);
  if (fresh == nullptr) return false;
  if (*array != nullptr && FAILED(SafeArrayDestroy(*array))) {
    SafeArrayDestroy(fresh);
    return false;
  }
  *array = fresh;
  return true;
}

// The file that a picture object was loaded from; empty if it keeps none.
std::vector<uint8_t> original_file(IPicture& picture) {
  std::vector<uint8_t> out;
  ComPtr<IStream> stream;
  LONG size = 0;
  if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())) ||
      FAILED(picture.SaveAsFile(stream.get(), FALSE, &size)) || !stream_content(*stream, out))
    return {};
  // Some systems write the form of a persisted picture: a mark and a length before the file.
  constexpr uint8_t kMark[] = {'l', 't', 0, 0};
  constexpr size_t kHead = 8;
  if (out.size() > kHead && std::memcmp(out.data(), kMark, sizeof kMark) == 0)
    out.erase(out.begin(), out.begin() + kHead);
  return out;
}

}  // namespace

bool USAnimatedImage::get_palette(long frame, SAFEARRAY** entries) {
  if (frame < 1 || frame > frame_count() || entries == nullptr) return false;
  const auto table = gif_.file.table(static_cast<size_t>(frame - 1));
  if (!make_room(entries, static_cast<ULONG>(table.size() / 3))) return false;
  const LongArray out(*entries);
  const size_t count = std::min(out.entries().size(), table.size() / 3);
  for (size_t i = 0; i < count; ++i)
    out.entries()[i] = static_cast<LONG>(RGB(table[3 * i], table[3 * i + 1], table[3 * i + 2]));
  return count > 0;
}

bool USAnimatedImage::set_palette(long frame, SAFEARRAY** entries) {
  if (frame < 1 || frame > frame_count() || entries == nullptr) return false;
  const auto table = gif_.file.table(static_cast<size_t>(frame - 1));
  const LongArray in(*entries);
  const size_t count = std::min(in.entries().size(), table.size() / 3);
  if (count == 0) return false;
  for (size_t i = 0; i < count; ++i) {
    const COLORREF colour = TranslateColor(static_cast<OLE_COLOR>(in.entries()[i]));
    table[3 * i] = GetRValue(colour);
    table[3 * i + 1] = GetGValue(colour);
    table[3 * i + 2] = GetBValue(colour);
  }
  colours_changed();
  return true;
}

void USAnimatedImage::restore_color_tables(bool release) {
  if (tables_.restore(gif_.file)) colours_changed();
  if (release) tables_.release();
}

void USAnimatedImage::colours_changed() {
  canvas_.recompose();
  property_changed(L"AnimatedGIF");
  refresh();
}

ComPtr<IPictureDisp> USAnimatedImage::animated_gif() const {
  ComPtr<IPictureDisp> out;
  GifCanvas first;
  if (!first.open(gif_.file)) return out;
  first.show(0);
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = make_flat_bitmap(first.image(), TranslateColor(BackColor.get()));
  if (description.bmp.hbitmap != nullptr)
    OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, out.put_void());
  return out;
}

// A picture that keeps the GIF it came from gives all its frames, any other the one that it is.
void USAnimatedImage::set_animated_gif(IPictureDisp* picture) {
  const auto object = query<IPicture>(picture);
  std::vector<uint8_t> bytes;
  if (object) bytes = original_file(*object);
  GifFile probe;
  if (object && !probe.read(bytes)) {
    WindowsImage image;
    bytes = {};
    if (load_std_picture(image, object.get())) image.SaveToStream_GIF(bytes);
  }
  load(std::move(bytes));
}

}  // namespace kestrelon
