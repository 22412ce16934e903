// The numbered errors of the image list classes.
#pragma once

#include <exception>
#include <string>

namespace kestrelon {

/// An error on its way to the caller, who sees number, text and source; the texts are part of the
/// public contract. Whoever throws it has changed nothing.
struct ImageListError : std::exception {
  ImageListError(int code, const wchar_t* text, const wchar_t* from)
      : number(code), description(text), source(from) {}
  const char* what() const noexcept override { return "image list error"; }

  int number;
  const wchar_t* description;
  const wchar_t* source;
};

[[noreturn]] inline void throw_invalid_item(const wchar_t* source) {
  throw ImageListError(1962, L"Invalid Key or Index", source);
}
[[noreturn]] inline void throw_duplicated_key(const wchar_t* source) {
  throw ImageListError(1963, L"Duplicated Key. Key already exists in this collection", source);
}
[[noreturn]] inline void throw_too_many_images(const wchar_t* source) {
  throw ImageListError(1973, L"Maximum number of images have been exceeded. Create new image list",
                       source);
}
[[noreturn]] inline void throw_invalid_version() {
  throw ImageListError(1974, L"Invalid ImageList Version. Update your ImageList classes/control",
                       L"ImageLists.ImportImageList");
}
[[noreturn]] inline void throw_failed_import() {
  throw ImageListError(1975, L"Failed to Import external image list",
                       L"ImageLists.ImportImageList");
}
[[noreturn]] inline void throw_failed_export() {
  throw ImageListError(
      1976, L"Error exporting image list. Ensure enough disk space and valid write-permissions",
      L"ImageLists.ExportImageList");
}
/// The item asked for its key or its place has left its collection.
[[noreturn]] inline void throw_invalid_key(const wchar_t* source) {
  throw ImageListError(1962, L"Invalid Key", source);
}
[[noreturn]] inline void throw_invalid_index(const wchar_t* source) {
  throw ImageListError(1962, L"Invalid Index", source);
}
/// Number 7 is Basic's own for a lack of memory.
[[noreturn]] inline void throw_low_resources() {
  throw ImageListError(7, L"Low system resource preventing appending additional images", L"Images");
}

}  // namespace kestrelon
