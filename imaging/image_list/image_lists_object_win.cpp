#include "imaging/image_list/image_lists_object_win.h"

#include "base/file_bytes.h"
#include "imaging/dib_win.h"
#include "imaging/ico_directory.h"
#include "imaging/image_list/image_list_object_win.h"
#include "imaging/image_list/list_arguments_win.h"

namespace kestrelon {
namespace {

// No export is longer.
constexpr uint64_t kLargestFile = INT32_MAX;

// The name of a file in an argument, or empty.
std::wstring file_name_in(const VARIANT& argument) {
  Variant value;
  if (array_in(argument) == nullptr) copy_value(value, argument);
  return V_VT(&value) == VT_BSTR ? to_wstring(V_BSTR(&value)) : std::wstring();
}

}  // namespace

ImageListsObject::ImageListsObject() : lists_(make_dib_section_store) {
  start_imaging();
}

void* ImageListsObject::find_interface(REFIID iid) {
  if (iid == IID_NativeImageLists) return static_cast<NativeImageLists*>(this);
  return AutomationObject::find_interface(iid);
}

bool ImageListsObject::copy_entry(const VARIANT& list, const VARIANT& image, c32bppDIB& out) {
  const Hold hold(*this);
  ItemIndex which = int64_t{1};
  if (!is_omitted(list)) which = item_index(list);
  const auto* const key = std::get_if<std::wstring>(&which);
  if (key != nullptr && key->empty()) which = int64_t{1};
  return raising([&] {
    const auto found = lists_.Item(lists_.resolve(which, L"ImageLists.Item"));
    return found->extract(found->resolve(item_index(image), L"Images.Item"), out);
  });
}

ComPtr<_cImageList> ImageListsObject::item(const VARIANT& index) {
  return raising([&] {
    return list_view(*this, lists_.Item(lists_.resolve(item_index(index), L"ImageLists.Item")));
  });
}

ComPtr<IUnknown> ImageListsObject::xcom_i_enum() {
  std::vector<ComPtr<IDispatch>> items;
  for (int32_t position = 1; position <= lists_.Count(); ++position)
    items.push_back(list_view(*this, lists_.Item(position)).as<IDispatch>());
  return enumerate(std::move(items));
}

ComPtr<_cImageList> ImageListsObject::add(long width, long height, const std::wstring& key,
                                          long images) {
  const auto list = raising([&] { return lists_.Add(width, height, key, images); });
  changed();
  return list_view(*this, list);
}

ComPtr<_cImageList> ImageListsObject::import_image_list(const VARIANT& data,
                                                        const std::wstring& key) {
  const auto list = raising([&] {
    const std::wstring file = file_name_in(data);
    if (!file.empty()) {
      const auto bytes = read_file(file, kLargestFile);
      if (!bytes) throw_failed_import();
      return lists_.ImportImageList(*bytes, key);
    }
    const ArrayBytes source(array_in(data), 1);
    if (!source) throw_failed_import();
    return lists_.ImportImageList(source.bytes(), key);
  });
  changed();
  return list_view(*this, list);
}

bool ImageListsObject::export_image_list(const VARIANT& index, VARIANT* out) {
  if (out == nullptr) throw ComError(E_POINTER);
  return raising([&] {
    const auto bytes =
        lists_.ExportImageList(lists_.resolve(item_index(index), L"ImageLists.ExportImageList"));
    const std::wstring file = file_name_in(*out);
    const bool done = file.empty() ? give_bytes(out, bytes) : write_file(file, bytes);
    if (!done) throw_failed_export();
    return true;
  });
}

long ImageListsObject::image_sizes_from_stream(const VARIANT& stream, VARIANT* sizes) {
  const ArrayBytes source(array_in(stream), 1);
  const auto directory = source ? icon_entries(source.bytes()) : std::nullopt;
  if (!directory) return 0;
  std::vector<IconSize> found;
  for (const IconEntry& entry : directory->entries)
    found.push_back({entry.Width, entry.Height, entry.bitDepth});
  give_icon_sizes(sizes, found);
  return static_cast<long>(found.size());
}

void ImageListsObject::remove(const VARIANT& index) {
  raising([&] { lists_.Remove(lists_.resolve(item_index(index), L"ImageLists.Remove")); });
  changed();
}

void ImageListsObject::clear() {
  lists_.Clear();
  changed();
}

}  // namespace kestrelon
