#include "frame/drag_drop/drop_data.h"

#include <cstring>

#include "frame/property.h"
#include "imaging/dib_win.h"
#include "imaging/exchange_win.h"
#include "imaging/picture_convert_win.h"

namespace kestrelon {
namespace {

constexpr HRESULT kSubscriptOutOfRange = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 9);
constexpr CLIPFORMAT kRichText = 0xBF01;  // as the designers' constants have it

struct Medium {
  Medium() = default;
  Medium(const Medium&) = delete;
  Medium& operator=(const Medium&) = delete;
  ~Medium() {
    if (found) ReleaseStgMedium(&value);
  }
  STGMEDIUM value{};
  bool found = false;
};

// Asks for a format; the medium tells whether it came.
void fetch(IDataObject& source, CLIPFORMAT format, DWORD kind, Medium& out) {
  FORMATETC wanted{format, nullptr, DVASPECT_CONTENT, -1, kind};
  out.found = SUCCEEDED(source.GetData(&wanted, &out.value)) && out.value.tymed == kind;
}

CLIPFORMAT system_format(short format) {
  const auto number = static_cast<CLIPFORMAT>(format);
  if (number != kRichText) return number;
  static const auto registered =
      static_cast<CLIPFORMAT>(RegisterClipboardFormatW(L"Rich Text Format"));
  return registered;
}

// The bytes of a block of memory, or nothing if the source has none in the format.
std::optional<std::vector<uint8_t>> block(IDataObject& source, CLIPFORMAT format) {
  Medium medium;
  fetch(source, format, TYMED_HGLOBAL, medium);
  if (!medium.found) return {};
  const void* const data = GlobalLock(medium.value.hGlobal);
  if (data == nullptr) return {};
  const auto* const bytes = static_cast<const uint8_t*>(data);
  std::vector<uint8_t> out(bytes, bytes + GlobalSize(medium.value.hGlobal));
  GlobalUnlock(medium.value.hGlobal);
  return out;
}

// Text up to its zero, or to the end of the block.
Variant narrow_text(const std::vector<uint8_t>& bytes) {
  const auto* const text = reinterpret_cast<const char*>(bytes.data());
  const int length = static_cast<int>(strnlen(text, bytes.size()));
  std::wstring out(static_cast<size_t>(length), L'\0');
  out.resize(static_cast<size_t>(
      MultiByteToWideChar(CP_ACP, 0, text, length, out.data(), static_cast<int>(out.size()))));
  return Variant(std::wstring_view(out));
}

Variant wide_text(const std::vector<uint8_t>& bytes) {
  std::wstring out(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(out.data(), bytes.data(), out.size() * sizeof(wchar_t));
  return Variant(std::wstring_view(out).substr(0, out.find(L'\0')));
}

Variant text_of(IDataObject& source, CLIPFORMAT format) {
  if (format == CF_TEXT || format == CF_UNICODETEXT) {
    if (const auto wide = block(source, CF_UNICODETEXT)) return wide_text(*wide);
    format = CF_TEXT;
  }
  const auto narrow = block(source, format);
  return narrow ? narrow_text(*narrow) : Variant();
}

Variant picture_of(PICTDESC& description) {
  description.cbSizeofstruct = sizeof description;
  ComPtr<IDispatch> picture;
  OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, picture.put_void());
  return Variant(picture.get());
}

Variant bitmap_of(IDataObject& source) {
  Medium medium;
  fetch(source, CF_BITMAP, TYMED_GDI, medium);
  if (!medium.found) return {};
  PICTDESC description{};
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = static_cast<HBITMAP>(
      CopyImage(medium.value.hBitmap, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
  return description.bmp.hbitmap != nullptr ? picture_of(description) : Variant();
}

// A device-independent bitmap is a bitmap file without its head.
Variant dib_of(IDataObject& source) {
  const auto dib = block(source, CF_DIB);
  BITMAPINFOHEADER info{};
  if (!dib || dib->size() < sizeof info) return {};
  std::memcpy(&info, dib->data(), sizeof info);
  uint64_t before = info.biSize;
  if (info.biCompression == BI_BITFIELDS && info.biSize == sizeof info) before += 12;
  if (info.biBitCount <= 8)
    before += 4 * uint64_t{info.biClrUsed != 0 ? info.biClrUsed : 1u << info.biBitCount};
  if (before > dib->size()) return {};
  BITMAPFILEHEADER head{};
  head.bfType = 0x4D42;
  head.bfSize = static_cast<DWORD>(sizeof head + dib->size());
  head.bfOffBits = static_cast<DWORD>(sizeof head + before);
  std::vector<uint8_t> file(sizeof head);
  std::memcpy(file.data(), &head, sizeof head);
  file.insert(file.end(), dib->begin(), dib->end());
  WindowsImage image;  // our own reader: these bytes are another program's
  if (!image.LoadPicture_Stream(file)) return {};
  PICTDESC description{};
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = make_flat_bitmap(image, RGB(255, 255, 255));
  return description.bmp.hbitmap != nullptr ? picture_of(description) : Variant();
}

Variant metafile_of(IDataObject& source) {
  Medium medium;
  fetch(source, CF_ENHMETAFILE, TYMED_ENHMF, medium);
  if (!medium.found) return {};
  PICTDESC description{};
  description.picType = PICTYPE_ENHMETAFILE;
  description.emf.hemf = CopyEnhMetaFileW(medium.value.hEnhMetaFile, nullptr);
  return description.emf.hemf != nullptr ? picture_of(description) : Variant();
}

}  // namespace

size_t DropFiles::place(long index) const {
  if (index < 1 || index > count()) throw ComError(kSubscriptOutOfRange);
  return static_cast<size_t>(index) - 1;
}

void DropFiles::add(const std::wstring& name, long index) {
  const size_t at = index == 0 || index == count() + 1 ? names_.size() : place(index);
  names_.insert(names_.begin() + static_cast<ptrdiff_t>(at), name);
}

void DropFiles::remove(long index) {
  names_.erase(names_.begin() + static_cast<ptrdiff_t>(place(index)));
}

ComPtr<IUnknown> DropFiles::_new_enum() const {
  std::vector<VARIANT> items;
  for (const std::wstring& name : names_) {
    VARIANT item;
    V_VT(&item) = VT_BSTR;
    V_BSTR(&item) = Bstr(name).detach();
    items.push_back(item);
  }
  ComPtr<IUnknown> out;
  out.attach(make_enumerator<IEnumVARIANT, VARIANT>(
      std::move(items),
      [](VARIANT& from, VARIANT& to) {
        VariantInit(&to);
        VariantCopy(&to, &from);
      },
      [](VARIANT& item) { VariantClear(&item); }));
  return out;
}

void* DropData::find_interface(REFIID iid) {
  if (iid == IID_IDataObject) return source_.get();
  return AutomationObject::find_interface(iid);
}

Variant DropData::get_data(short format) {
  const CLIPFORMAT wanted = system_format(format);
  switch (wanted) {
    case CF_TEXT:
    case CF_UNICODETEXT:
      return text_of(*source_, wanted);
    case CF_BITMAP:
    case CF_DIB: {
      Variant bitmap = bitmap_of(*source_);
      return V_VT(&bitmap) != VT_EMPTY ? bitmap : dib_of(*source_);
    }
    case CF_METAFILEPICT:
    case CF_ENHMETAFILE:
      return metafile_of(*source_);
    default:
      break;
  }
  if (wanted == system_format(static_cast<short>(kRichText))) return text_of(*source_, wanted);
  const auto bytes = block(*source_, wanted);
  if (!bytes) return {};
  return property_detail::Automation<std::vector<uint8_t>>::to(*bytes);
}

bool DropData::get_format(short format) {
  FORMATETC wanted{system_format(format), nullptr, DVASPECT_CONTENT, -1,
                   TYMED_HGLOBAL | TYMED_GDI | TYMED_ENHMF | TYMED_MFPICT | TYMED_ISTREAM};
  if (source_->QueryGetData(&wanted) == S_OK) return true;
  if (wanted.cfFormat != CF_TEXT) return false;
  wanted.cfFormat = CF_UNICODETEXT;  // the same text, handed out as such
  return source_->QueryGetData(&wanted) == S_OK;
}

ComPtr<_cDropFiles> DropData::files() {
  if (!files_) {
    auto found = dropped_file_names(*source_);
    files_ =
        ObjectRef<DropFiles>::make(found ? std::move(found->names) : std::vector<std::wstring>());
  }
  return files_.as<_cDropFiles>();
}

ComPtr<IDispatch> make_drop_data(IDataObject& source) {
  const auto made = ObjectRef<DropData>::make(source);
  return ComPtr<IDispatch>(made->dispatch());
}

}  // namespace kestrelon
