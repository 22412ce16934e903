// The classes cDropData and cDropFiles: what is dragged, as programs see it.
#pragma once

#include <objidl.h>

#include <optional>
#include <string>
#include <vector>

#include "base/object_ref_win.h"
#include "drop_data_glue.h"

namespace kestrelon {

/// The names of files, in order. Indices out of range raise error 9.
class DropFiles final : public cDropFilesGlue<DropFiles, AutomationObject> {
 public:
  explicit DropFiles(std::vector<std::wstring> names) : names_(std::move(names)) {}

  std::wstring item(long index) const { return names_[place(index)]; }
  long count() const { return static_cast<long>(names_.size()); }
  void add(const std::wstring& name, long index);
  void remove(long index);
  void clear() { names_.clear(); }
  ComPtr<IUnknown> _new_enum() const;

 private:
  size_t place(long index) const;

  std::vector<std::wstring> names_;
};

/// A view of the data in a drag. Also answers as the source's own data object, so that loaders of
/// this library take either.
class DropData final : public cDropDataGlue<DropData, AutomationObject> {
 public:
  explicit DropData(IDataObject& source) : source_(&source) {}

  /// Text for the text formats, a picture object for pictures, otherwise the bytes; Empty for what
  /// is not there.
  Variant get_data(short format);
  bool get_format(short format);
  /// The files, none if there are none; one object for the life of this one.
  ComPtr<_cDropFiles> files();

 protected:
  void* find_interface(REFIID iid) override;

 private:
  ComPtr<IDataObject> source_;
  ObjectRef<DropFiles> files_;
};

ComPtr<IDispatch> make_drop_data(IDataObject& source);

}  // namespace kestrelon
