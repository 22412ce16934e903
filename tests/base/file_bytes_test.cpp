// Whole files by wide name on a real disk.
#include "base/file_bytes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/system_file.h"

namespace kestrelon {
namespace {

namespace fs = std::filesystem;

class FileBytesTest : public ::testing::Test {
 protected:
  void SetUp() override { fs::create_directories(folder_); }
  void TearDown() override {
    std::error_code error;
    fs::remove_all(folder_, error);
  }
  std::wstring name(const wchar_t* file) const { return folder_.wstring() + L"/" + file; }

  const fs::path folder_ = fs::temp_directory_path() / "kestrelon-file-bytes";
  const std::vector<uint8_t> bytes_ = {0, 13, 10, 26, 255, 10};
};

TEST_F(FileBytesTest, BytesComeBackWholeUnderAnyName) {
  const std::wstring file = name(L"ação \x65E5.bin");
  ASSERT_TRUE(write_file(file, bytes_));
  EXPECT_EQ(file_size(file), bytes_.size());
  EXPECT_EQ(read_file(file, bytes_.size()), bytes_);
  EXPECT_FALSE(read_file(file, bytes_.size() - 1));
  ASSERT_TRUE(write_file(file, {}));
  EXPECT_EQ(read_file(file, 0), std::vector<uint8_t>());
  EXPECT_TRUE(delete_file(file));
  EXPECT_FALSE(file_size(file));
  EXPECT_EQ(fs::directory_iterator(folder_), fs::directory_iterator());
}

TEST_F(FileBytesTest, WhatIsNoPlainFileIsLeftAlone) {
  const std::wstring folder = folder_.wstring();
  std::wstring cut = name(L"a");
  cut.push_back(L'\0');
  for (const std::wstring& none : {folder, std::wstring(), cut}) {
    EXPECT_FALSE(file_size(none));
    EXPECT_FALSE(read_file(none, 100));
    EXPECT_FALSE(write_file(none, bytes_));
    EXPECT_FALSE(delete_file(none));
  }
  EXPECT_FALSE(write_file(name(L"missing/a"), bytes_));
  EXPECT_TRUE(delete_file(name(L"missing")));
  EXPECT_TRUE(delete_file(name(L"missing/a")));
  EXPECT_TRUE(fs::is_directory(folder_));
  EXPECT_FALSE(fs::exists(name(L"a")));
}

TEST_F(FileBytesTest, AFileMarkedReadOnlyIsDeleted) {
  const std::wstring file = name(L"a");
  ASSERT_TRUE(write_file(file, bytes_));
  fs::permissions(file, fs::perms::owner_read);
  EXPECT_TRUE(delete_file(file));
  EXPECT_FALSE(fs::exists(file));
}

TEST_F(FileBytesTest, AReaderMeetsAFileThatIsStillWritten) {
  SystemFile writer = SystemFile::create(name(L"a"));
  ASSERT_TRUE(writer && writer.write("abc"));
  SystemFile reader = SystemFile::open(name(L"a"));
  uint8_t room[8] = {};
  EXPECT_EQ(reader.read(room), 3u);
  EXPECT_EQ(reader.read(room), 0u);
  ASSERT_TRUE(writer.write("d"));
  EXPECT_EQ(reader.read(room), 1u);
  EXPECT_EQ(room[0], 'd');
  EXPECT_FALSE(reader.write("x")) << "opened for reading";
  EXPECT_TRUE(writer.close());
  EXPECT_FALSE(writer.close());
  EXPECT_FALSE(writer.write("e"));
  EXPECT_EQ(reader.read(room), 0u);
}

}  // namespace
}  // namespace kestrelon
