// A machine in memory for the tests of the utility class.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "services/kn_platform.h"

namespace kestrelon {

/// A file whose bytes come from a function of their position, so that large ones cost no memory.
struct FakeContent {
  uint64_t size = 0;
  std::function<void(uint64_t at, std::span<uint8_t>)> fill;
  uint64_t fails_at = ~uint64_t{0};   // a read that reaches this far fails
  uint64_t told_size = ~uint64_t{0};  // where the size told differs from what can be read
};

inline FakeContent content_of(const std::string& bytes) {
  return {bytes.size(), [bytes](uint64_t at, std::span<uint8_t> out) {
            std::memcpy(out.data(), bytes.data() + at, out.size());
          }};
}

class FakePlatform : public KnPlatform {
 public:
  std::map<std::wstring, FakeContent> files;
  std::set<std::wstring> folders;
  std::map<std::wstring, std::wstring> ini;  // by file, section and key joined with "|"
  std::function<uint32_t()> random = [] { return 0u; };
  DateTime now{{2026, 11, 21}, 10, 20, 30};
  bool zlib = true;
  size_t largest_read = 0;
  size_t open_files = 0;
  std::map<std::wstring, IniForm> ini_forms;  // new where it is missing
  bool takes_new_files = true;

  DateTime local_now() override { return now; }
  wchar_t decimal_mark() override { return L','; }
  uint32_t random_bits() override { return random(); }
  bool has_zlib() override { return zlib; }

  Kind find(const std::wstring& path) override {
    if (files.contains(path)) return Kind::kFile;
    return folders.contains(path) ? Kind::kDirectory : Kind::kMissing;
  }
  bool drive_exists(wchar_t letter) override { return letter == L'C'; }
  bool create_directory(const std::wstring& path) override {
    const size_t parent = path.find_last_of(L"\\/");
    return find(path) == Kind::kMissing && folders.contains(path.substr(0, parent)) &&
           folders.insert(path).second;
  }
  bool delete_file(const std::wstring& path) override { return files.erase(path) > 0; }
  std::unique_ptr<KnFile> open_file(const std::wstring& path) override {
    const auto found = files.find(path);
    if (found == files.end()) return nullptr;
    return std::make_unique<File>(*this, found->second);
  }
  size_t read_ini(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                  std::span<wchar_t> buffer) override {
    const std::wstring& value = ini[file + L"|" + section + L"|" + key];
    const size_t length = std::min(value.size(), buffer.size() - 1);
    std::copy_n(value.begin(), length, buffer.begin());
    buffer[length] = 0;
    return length;
  }
  IniForm ini_form(const std::wstring& file) override {
    const auto found = ini_forms.find(file);
    return found == ini_forms.end() ? IniForm::kNew : found->second;
  }
  bool begin_wide_ini(const std::wstring& file) override {
    if (takes_new_files) ini_forms[file] = IniForm::kWide;
    return takes_new_files;
  }
  bool fits_page(const std::wstring& text) override {
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c < 0x100; });
  }
  bool write_ini(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                 const std::wstring& value) override {
    ini[file + L"|" + section + L"|" + key] = value;
    return true;
  }

 private:
  class File : public KnFile {
   public:
    File(FakePlatform& owner, const FakeContent& content) : owner_(owner), content_(content) {
      ++owner_.open_files;
    }
    ~File() override { --owner_.open_files; }
    uint64_t size() const override { return std::min(content_.size, content_.told_size); }
    std::optional<size_t> read(std::span<uint8_t> buffer) override {
      const auto length =
          static_cast<size_t>(std::min<uint64_t>(buffer.size(), content_.size - at_));
      owner_.largest_read = std::max(owner_.largest_read, buffer.size());
      if (at_ + length > content_.fails_at) return std::nullopt;
      if (length > 0) content_.fill(at_, buffer.first(length));
      at_ += length;
      return length;
    }

   private:
    FakePlatform& owner_;
    const FakeContent& content_;
    uint64_t at_ = 0;
  };
};

}  // namespace kestrelon
