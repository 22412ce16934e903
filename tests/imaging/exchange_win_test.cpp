#include "imaging/exchange_win.h"

#include <shlobj.h>

#include "imaging/drop_files.h"
#include "imaging/picture_convert_win.h"
#include "tests/imaging/windows_images.h"

namespace kestrelon {
namespace {

void put_on_clipboard(UINT format, HANDLE data) {
  ASSERT_TRUE(OpenClipboard(nullptr));
  EmptyClipboard();
  EXPECT_NE(SetClipboardData(format, data), nullptr);
  CloseClipboard();
}

HGLOBAL block_of(const void* bytes, size_t size) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
  std::memcpy(GlobalLock(memory), bytes, size);
  GlobalUnlock(memory);
  return memory;
}

TEST(Clipboard, GivesTheBitmapThatOtherProgramsPutThere) {
  WindowsImage source, image;
  paint(source, 13, 9, true);
  std::vector<uint8_t> block(sizeof(BITMAPINFOHEADER));
  const BITMAPINFOHEADER header = {sizeof header, 13, 9, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  std::memcpy(block.data(), &header, sizeof header);
  block.insert(block.end(), source.bits(), source.bits() + source.pixel_count() * 4);
  put_on_clipboard(CF_DIB, block_of(block.data(), block.size()));
  ASSERT_TRUE(load_clipboard(image));
  EXPECT_EQ(largest_difference(image, source, 3), 0);
  put_on_clipboard(CF_UNICODETEXT, block_of(L"x", 4));
  EXPECT_FALSE(load_clipboard(image));
  EXPECT_FALSE(image.has_image());
  EXPECT_FALSE(pasted_file_names());
}

TEST(Clipboard, GivesMetafiles) {
  const RECT frame = {0, 0, 2540, 2540};
  const HDC dc = CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr);
  const RECT area = {0, 0, 20, 20};
  FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  put_on_clipboard(CF_ENHMETAFILE, CloseEnhMetaFile(dc));
  WindowsImage image;
  ASSERT_TRUE(load_clipboard(image));
  EXPECT_EQ(image.ImageType(), ImageFormat::Emf);
  EXPECT_EQ(stored(image, 2, 2), 0xFF000000u);
  EXPECT_EQ(stored(image, image.Width() - 2, 2), 0u);
}

TEST(Clipboard, GivesPastedFileNamesWideAndNarrow) {
  struct {
    DROPFILES head = {sizeof(DROPFILES), {}, FALSE, TRUE};
    wchar_t names[24] = L"C:\\ж.png\0D:\\b c.gif\0";
  } wide;
  put_on_clipboard(CF_HDROP, block_of(&wide, sizeof wide));
  const auto names = pasted_file_names();
  ASSERT_TRUE(names);
  EXPECT_TRUE(names->wide);
  EXPECT_EQ(names->names, (std::vector<std::wstring>{L"C:\\ж.png", L"D:\\b c.gif"}));
  struct {
    DROPFILES head = {sizeof(DROPFILES), {}, FALSE, FALSE};
    char names[16] = "C:\\a.png\0";
  } narrow;
  put_on_clipboard(CF_HDROP, block_of(&narrow, sizeof narrow));
  const auto others = pasted_file_names();
  ASSERT_TRUE(others);
  EXPECT_FALSE(others->wide);
  EXPECT_EQ(others->names, (std::vector<std::wstring>{L"C:\\a.png"}));
}

}  // namespace
}  // namespace kestrelon
