// c32bppDIB: loading from every source.
#include "imaging/c32bpp_dib/automation_bytes_win.h"
#include "imaging/c32bpp_dib/image_object_win.h"
#include "imaging/exchange_win.h"
#include "imaging/picture_convert_win.h"

namespace kestrelon {
namespace {

// The kinds of LoadResPicture.
constexpr long kResourceBitmap = 0, kResourceCursor = 2;

LoadOptions options_of(long cx, long cy, bool save_format, long depth) {
  return {cx, cy, depth, save_format};
}

// Calls a method of an object by name; an empty answer on failure.
Variant call_by_name(IDispatch* object, const wchar_t* name,
                     std::initializer_list<VARIANT> reversed, WORD flags = DISPATCH_METHOD) {
  Variant result;
  DISPID id = DISPID_UNKNOWN;
  auto* text = const_cast<LPOLESTR>(name);
  if (object == nullptr ||
      FAILED(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id))) {
    return result;
  }
  std::vector<VARIANT> arguments(reversed);
  DISPPARAMS parameters = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result, nullptr, nullptr);
  return result;
}

// A resource's name, or its number as the system wants it.
class ResourceName {
 public:
  explicit ResourceName(const VARIANT& value) {
    Variant copy;
    copy_value(copy, value);
    if (V_VT(&copy) == VT_BSTR) {
      text_ = to_wstring(V_BSTR(&copy));
    } else if (copy.change(VT_I4)) {
      number_ = static_cast<WORD>(V_I4(&copy));
    }
  }
  const wchar_t* get() const { return text_.empty() ? MAKEINTRESOURCEW(number_) : text_.c_str(); }
  bool is_text() const { return !text_.empty(); }
  long number() const { return number_; }

 private:
  std::wstring text_;
  WORD number_ = 0;
};

bool load_program_picture(c32bppDIB& image, const ResourceName& index, long kind) {
  const HINSTANCE program = GetModuleHandleW(nullptr);
  const UINT type = kind == kResourceBitmap   ? IMAGE_BITMAP
                    : kind == kResourceCursor ? IMAGE_CURSOR
                                              : IMAGE_ICON;
  const HANDLE handle = LoadImageW(program, index.get(), type, 0, 0, LR_CREATEDIBSECTION);
  if (handle == nullptr) return false;
  const bool loaded = convert_handle(handle, image);
  if (type == IMAGE_BITMAP) {
    DeleteObject(handle);
  } else if (type == IMAGE_ICON) {
    DestroyIcon(static_cast<HICON>(handle));
  } else {
    DestroyCursor(static_cast<HCURSOR>(handle));
  }
  return loaded;
}

bool load_program_data(c32bppDIB& image, const ResourceName& index, const ResourceName& section,
                       const LoadOptions& options, long offset, long length) {
  const HINSTANCE program = GetModuleHandleW(nullptr);
  const HRSRC found = FindResourceW(program, index.get(), section.get());
  const HGLOBAL loaded = found != nullptr ? LoadResource(program, found) : nullptr;
  const auto* const bytes = static_cast<const uint8_t*>(loaded ? LockResource(loaded) : nullptr);
  return bytes != nullptr &&
         image.LoadPicture_Stream({bytes, SizeofResource(program, found)}, options, offset, length);
}

bool load_array(c32bppDIB& image, SAFEARRAY* array, const LoadOptions& options, long offset,
                long length) {
  const ArrayBytes source(array, 1);
  if (!source) {
    image.DestroyDIB();
    return false;
  }
  const int64_t start = std::max<int64_t>(int64_t{offset} - source.lower_bound(), 0);
  return image.LoadPicture_Stream(source.bytes(), options, start, length);
}

SAFEARRAY* array_of_names(const std::vector<std::wstring>& names) {
  SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 1, static_cast<ULONG>(names.size()));
  if (array == nullptr) throw std::bad_alloc();
  for (size_t i = 0; i < names.size(); ++i) {
    LONG index = static_cast<LONG>(i) + 1;
    Variant name{std::wstring_view(names[i])};
    SafeArrayPutElement(array, &index, &name);
  }
  return array;
}

}  // namespace

bool ImageObject::load_picture_file(Text file, long cx, long cy, bool save_format, long depth) {
  const Replacing replacing(*this);
  return image_.LoadPicture_File(file, options_of(cx, cy, save_format, depth));
}

bool ImageObject::load_picture_stream(Bytes in, long cx, long cy, long offset, long length,
                                      bool save_format, long depth) {
  const Replacing replacing(*this);
  return load_array(image_, in != nullptr ? *in : nullptr, options_of(cx, cy, save_format, depth),
                    offset, length);
}

bool ImageObject::load_picture_resource(const VARIANT& index, const VARIANT& section,
                                        const VARIANT& global, long cx, long cy, long offset,
                                        long length, long depth) {
  const Replacing replacing(*this);
  image_.DestroyDIB();
  const LoadOptions options = options_of(cx, cy, false, depth);
  const ResourceName name(index), type(section);
  const ComPtr<IDispatch> source = object_in(&global);
  if (!source) {
    return type.is_text() ? load_program_data(image_, name, type, options, offset, length)
                          : load_program_picture(image_, name, type.number());
  }
  if (!type.is_text()) {
    const Variant picture = call_by_name(source.get(), L"LoadResPicture", {section, index});
    return load_std_picture(image_, object_in(&picture).get());
  }
  const Variant data = call_by_name(source.get(), L"LoadResData", {section, index});
  return V_VT(&data) == (VT_ARRAY | VT_UI1) &&
         load_array(image_, V_ARRAY(&data), options, offset, length);
}

bool ImageObject::load_picture_std_picture(IDispatch* picture) {
  const Replacing replacing(*this);
  return load_std_picture(image_, picture);
}

bool ImageObject::load_picture_by_handle(long handle) {
  const Replacing replacing(*this);
  return load_handle(image_, reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(handle)));
}

bool ImageObject::load_picture_clip_board() {
  const Replacing replacing(*this);
  return load_clipboard(image_);
}

bool ImageObject::load_picture_droped_files(IUnknown* data, long index, long cx, long cy,
                                            bool save_format, long depth) {
  const auto object = query<IDataObject>(data);
  const auto found = object ? dropped_file_names(*object) : std::nullopt;
  get_dropped_file_names(data);
  if (!found || index < 1 || static_cast<size_t>(index) > found->names.size()) {
    destroy_dib();
    return false;
  }
  return load_picture_file(found->names[static_cast<size_t>(index) - 1], cx, cy, save_format,
                           depth);
}

bool ImageObject::load_picture_pasted_files(long index, long cx, long cy, bool save_format,
                                            long depth, VARIANT* count) {
  const auto found = pasted_file_names();
  const size_t files = found ? found->names.size() : 0;
  give_number(count, static_cast<long>(files));
  if (index == 0) return true;
  if (index < 0 || static_cast<size_t>(index) > files) {
    destroy_dib();
    return false;
  }
  return load_picture_file(found->names[static_cast<size_t>(index) - 1], cx, cy, save_format,
                           depth);
}

bool ImageObject::load_picture_from_orignal_format(long cx, long cy, long depth) {
  const Replacing replacing(*this);
  return image_.LoadPicture_FromOrignalFormat(cx, cy, depth);
}

bool ImageObject::get_dropped_file_names(IUnknown* data) {
  const auto object = query<IDataObject>(data);
  const auto found = object ? dropped_file_names(*object) : std::nullopt;
  if (!found) return false;
  // A narrow block gave the host's list all that it has.
  if (!found->wide) return true;
  const Variant list =
      call_by_name(query<IDispatch>(data).get(), L"Files", {}, DISPATCH_PROPERTYGET);
  const ComPtr<IDispatch> files = object_in(&list);
  if (!files) return true;
  call_by_name(files.get(), L"Clear", {});
  for (const std::wstring& name : found->names)
    call_by_name(files.get(), L"Add", {Variant(std::wstring_view(name))});
  return true;
}

bool ImageObject::get_pasted_file_names(VARIANT* names) {
  const auto found = pasted_file_names();
  if (!found) return false;
  give_array(names, array_of_names(found->names));
  return true;
}

long ImageObject::source_icon_sizes(VARIANT* sizes) {
  std::vector<IconSize> found;
  if (!image_.SourceIconSizes(found)) return 0;
  give_icon_sizes(sizes, found);
  return static_cast<long>(found.size());
}

}  // namespace kestrelon
