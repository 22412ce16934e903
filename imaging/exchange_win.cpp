#include "imaging/exchange_win.h"

#include "base/com_win.h"
#include "imaging/drop_files.h"
#include "imaging/picture_convert_win.h"

namespace kestrelon {
namespace {

class OpenedClipboard {
 public:
  OpenedClipboard() : open_(OpenClipboard(nullptr)) {}
  ~OpenedClipboard() {
    if (open_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  explicit operator bool() const { return open_; }

 private:
  BOOL open_;
};

// The bytes of a movable block for the time of this object.
class LockedBlock {
 public:
  explicit LockedBlock(HGLOBAL memory) : memory_(memory), data_(GlobalLock(memory)) {}
  ~LockedBlock() {
    if (data_ != nullptr) GlobalUnlock(memory_);
  }
  LockedBlock(const LockedBlock&) = delete;
  LockedBlock& operator=(const LockedBlock&) = delete;
  std::span<const uint8_t> bytes() const {
    if (data_ == nullptr) return {};
    return {static_cast<const uint8_t*>(data_), GlobalSize(memory_)};
  }

 private:
  HGLOBAL memory_;
  void* data_;
};

std::wstring from_code_page(const std::string& text) {
  const int size = static_cast<int>(text.size());
  std::wstring out(text.size(), L'\0');
  const int count = MultiByteToWideChar(CP_ACP, 0, text.data(), size, out.data(), size);
  out.resize(static_cast<size_t>(count));
  return out;
}

std::optional<FileNames> names_in(HGLOBAL memory) {
  const auto found = read_drop_files(LockedBlock(memory).bytes());
  if (!found) return {};
  FileNames out{found->wide, found->names};
  for (const std::string& name : found->narrow_names) out.names.push_back(from_code_page(name));
  return out;
}

// A metafile on the clipboard lies in a block that also tells its size.
bool convert_metafile_block(HGLOBAL memory, c32bppDIB& image) {
  const LockedBlock block(memory);
  if (block.bytes().size() < sizeof(METAFILEPICT)) return false;
  const auto* const facts = reinterpret_cast<const METAFILEPICT*>(block.bytes().data());
  return convert_windows_metafile(facts->hMF, {facts->xExt, facts->yExt}, image);
}

}  // namespace

bool load_clipboard(c32bppDIB& image) {
  image.DestroyDIB();
  const OpenedClipboard clipboard;
  if (!clipboard) return false;
  // The system makes a bitmap of a device-independent one and the other way round.
  if (const HANDLE bitmap = GetClipboardData(CF_BITMAP))
    return convert_bitmap(static_cast<HBITMAP>(bitmap), image);
  if (const HANDLE metafile = GetClipboardData(CF_ENHMETAFILE))
    return convert_handle(metafile, image);
  const HANDLE block = GetClipboardData(CF_METAFILEPICT);
  return block != nullptr && convert_metafile_block(block, image);
}

std::optional<FileNames> pasted_file_names() {
  const OpenedClipboard clipboard;
  const HANDLE block = clipboard ? GetClipboardData(CF_HDROP) : nullptr;
  if (block == nullptr) return {};
  return names_in(block);
}

std::optional<FileNames> dropped_file_names(IDataObject& data) {
  FORMATETC format = {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
  STGMEDIUM medium = {};
  if (FAILED(data.GetData(&format, &medium))) return {};
  std::optional<FileNames> names;
  if (medium.tymed == TYMED_HGLOBAL) names = names_in(medium.hGlobal);
  ReleaseStgMedium(&medium);
  return names;
}

}  // namespace kestrelon
