#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/file_bytes.h"
#include "imaging/c32bpp_dib.h"
#include "imaging/codecs.h"

namespace kestrelon {
namespace {

// Which stations the chain visited, one letter each, and what each of them shall do.
struct Script {
  std::string visited;
  char taker = 0;       // answers true
  bool decodes = true;  // and leaves an image
  char thrower = 0;     // throws after having begun an image
  LoadOptions options;
  std::vector<uint8_t> seen;
};
Script* script = nullptr;

bool station(char letter, std::span<const uint8_t> data, c32bppDIB& out) {
  script->visited += letter;
  script->seen.assign(data.begin(), data.end());
  EXPECT_FALSE(out.has_image()) << "left over before " << letter;
  if (letter == script->thrower) {
    out.InitializeDIB(1, 1);
    throw std::runtime_error("broken chunk");
  }
  // A reader that declines late leaves something behind.
  if (letter != script->taker || script->decodes) out.InitializeDIB(2, 3);
  return letter == script->taker;
}

class ChainBridge : public ImagingBridge {
 public:
  PlatformFacts facts() const override { return {PlatformFacts::Family::WindowsNt, 6, 1, 0}; }
  bool library_ok() override { return library; }
  bool library_load(std::span<const uint8_t> data, c32bppDIB& out) override {
    if (!station('L', data, out)) return false;
    for (int c = 0; c < 4; ++c) out.bits()[c] = 200;  // one half-transparent, otherwise empty
    out.bits()[0] = 255;
    return true;
  }
  bool library_save_png(const c32bppDIB&, std::vector<uint8_t>& out) override {
    script->visited += 's';
    out = {'P'};
    return saves;
  }
  bool decode_picture(std::span<const uint8_t> data, c32bppDIB& out) override {
    return station('D', data, out);
  }
  void show_message(const std::wstring& text) override { messages.push_back(text); }

  bool library = true, saves = true;
  std::vector<std::wstring> messages;
};

class LoadChain : public ::testing::Test {
 protected:
  LoadChain() {
    script = &told;
    set_imaging_bridge(&bridge);
    ImageCodecs codecs;
    codecs.read_png = [](auto bytes, auto& out) { return station('P', bytes, out); };
    codecs.read_gif = [](auto bytes, auto& out) { return station('G', bytes, out); };
    codecs.read_ico = [](auto bytes, const LoadOptions& options, auto& out) {
      script->options = options;
      return station('I', bytes, out);
    };
    codecs.read_bmp = [](auto bytes, auto& out) { return station('B', bytes, out); };
    codecs.read_tga = [](auto bytes, auto& out) { return station('T', bytes, out); };
    codecs.write_png = [](const c32bppDIB&, std::vector<uint8_t>& out) {
      script->visited += 'w';
      out = {'O', 'W', 'N'};
      return true;
    };
    codecs.write_bmp = [](const c32bppDIB&, bool, int32_t, std::vector<uint8_t>& out) {
      out = {1};
      return false;
    };
    before = set_image_codecs(codecs);
    image = std::make_unique<c32bppDIB>();
  }
  ~LoadChain() override {
    set_image_codecs(before);
    set_imaging_bridge(nullptr);
    script = nullptr;
  }

  Script told;
  ChainBridge bridge;
  ImageCodecs before;
  std::unique_ptr<c32bppDIB> image;
  std::vector<uint8_t> data = std::vector<uint8_t>(64, 5);
};

TEST_F(LoadChain, AsksEachReaderInOrderUntilOneTakesTheData) {
  EXPECT_FALSE(image->LoadPicture_Stream(data));
  EXPECT_EQ(told.visited, "PGIBDLT");
  EXPECT_FALSE(image->has_image());
  EXPECT_EQ(image->ImageType(), ImageFormat::Error);
  for (const auto& [taker, path] :
       {std::pair{'P', "P"}, {'I', "PGI"}, {'D', "PGIBD"}, {'T', "PGIBDLT"}}) {
    told.visited.clear();
    told.taker = taker;
    EXPECT_TRUE(image->LoadPicture_Stream(data));
    EXPECT_EQ(told.visited, path);
  }
}

TEST_F(LoadChain, AFileTakenButNotDecodedGoesToTheLibraryButNotToTheLastReader) {
  told.taker = 'I';
  told.decodes = false;
  EXPECT_FALSE(image->LoadPicture_Stream(data));
  EXPECT_EQ(told.visited, "PGIL");
  image->set_isGDIplusEnabled(false);
  told.visited.clear();
  EXPECT_FALSE(image->LoadPicture_Stream(data));
  EXPECT_EQ(told.visited, "PGI");
}

TEST_F(LoadChain, ADamagedPngGoesNowhereElse) {
  told.taker = 'P';
  told.decodes = false;
  EXPECT_FALSE(image->LoadPicture_Stream(data));
  EXPECT_EQ(told.visited, "P");
  EXPECT_EQ(image->ImageType(), ImageFormat::Error);
}

TEST_F(LoadChain, DamagedFilesOfOurOwnFormatsGoToNoDecoderOfThePlatform) {
  for (const std::string_view signature : {"BM", "GIF89a"}) {
    std::copy(signature.begin(), signature.end(), data.begin());
    told.visited.clear();
    EXPECT_FALSE(image->LoadPicture_Stream(data));
    EXPECT_EQ(told.visited, "PGIBT");
  }
}

TEST_F(LoadChain, OnlyTheFirstReadersErrorIsTold) {
  told.thrower = 'P';
  told.taker = 'G';
  EXPECT_TRUE(image->LoadPicture_Stream(data));
  EXPECT_EQ(bridge.messages, std::vector<std::wstring>{L"broken chunk"});
  told.thrower = 'G';
  told.taker = 'B';
  EXPECT_TRUE(image->LoadPicture_Stream(data));
  EXPECT_EQ(bridge.messages.size(), 1u);
}

TEST_F(LoadChain, TheLibrarysPixelsAreClassifiedAndKeptAsPng) {
  told.taker = 'L';
  LoadOptions keep;
  keep.save_format = true;
  ASSERT_TRUE(image->LoadPicture_Stream(data, keep));
  EXPECT_EQ(image->ImageType(), ImageFormat::Png);
  EXPECT_EQ(image->Alpha(), AlphaType::Complex);
  EXPECT_EQ(image->bits()[0], 200);  // straight colour became premultiplied
  EXPECT_EQ(image->original_bytes()[0], 'P');
  ASSERT_TRUE(image->LoadPicture_Stream(data));
  EXPECT_EQ(image->ImageType(), ImageFormat::BitmapArgb);
}

TEST_F(LoadChain, OffsetAndLengthCutTheStreamWhichNeedsTwentyBytes) {
  told.taker = 'P';
  EXPECT_TRUE(image->LoadPicture_Stream(data, {}, -5, 20));
  EXPECT_EQ(told.seen.size(), 20u);
  EXPECT_TRUE(image->LoadPicture_Stream(data, {}, 44));
  EXPECT_EQ(told.seen.size(), 20u);
  EXPECT_TRUE(image->LoadPicture_Stream(data, {}, 10, 1000));
  EXPECT_EQ(told.seen.size(), 54u);
  told.visited.clear();
  EXPECT_FALSE(image->LoadPicture_Stream(data, {}, 45));
  EXPECT_FALSE(image->has_image());
  EXPECT_FALSE(image->LoadPicture_Stream(data, {}, 0, 19));
  EXPECT_FALSE(image->LoadPicture_Stream(data, {}, INT64_MAX, INT64_MAX));
  EXPECT_FALSE(image->LoadPicture_Stream({}));
  EXPECT_EQ(told.visited, "");
}

TEST_F(LoadChain, OriginalBytesCanBeReadAgainAtAnotherSize) {
  told.taker = 'I';
  ASSERT_TRUE(image->LoadPicture_Stream(data, {-3, 16, 99, true}, 4, 30));
  EXPECT_EQ(told.options.icon_cx, 0);
  EXPECT_EQ(told.options.icon_bit_depth, 32);
  ASSERT_EQ(image->original_bytes().size(), 30u);
  ASSERT_TRUE(image->LoadPicture_FromOrignalFormat(48, 48, 8));
  EXPECT_EQ(told.options.icon_cx, 48);
  EXPECT_EQ(told.options.icon_bit_depth, 8);
  EXPECT_EQ(image->original_bytes().size(), 30u);
  // The bytes an image holds may be handed back to it.
  ASSERT_TRUE(image->LoadPicture_Stream(image->original_bytes()));
  EXPECT_EQ(told.seen.size(), 30u);
  EXPECT_FALSE(image->LoadPicture_FromOrignalFormat());
}

class FilesTest : public LoadChain {
 protected:
  FilesTest() : folder(std::filesystem::temp_directory_path() / "kestrelon_dib_load_save") {
    std::filesystem::create_directories(folder);
    path = folder / std::filesystem::path(U"figura \u00e7\u00e3o.bin");
    name = folder.wstring() + L"/figura \u00e7\u00e3o.bin";
  }
  ~FilesTest() override { std::filesystem::remove_all(folder); }
  std::filesystem::path folder, path;
  std::wstring name;
};

TEST_F(FilesTest, FiftySixBytesAreTooFewAndWideNamesWork) {
  told.taker = 'P';
  ASSERT_TRUE(write_file(name, std::vector<uint8_t>(56)));
  EXPECT_FALSE(image->LoadPicture_File(name));
  ASSERT_TRUE(write_file(name, std::vector<uint8_t>(57)));
  EXPECT_TRUE(image->LoadPicture_File(name, {0, 0, 32, true}));
  EXPECT_EQ(image->original_bytes().size(), 57u);
  EXPECT_FALSE(image->LoadPicture_File(folder.wstring()));
  EXPECT_FALSE(image->has_image());
  EXPECT_FALSE(image->LoadPicture_File(L""));
}

TEST_F(FilesTest, SavingReplacesReadOnlyFilesAndPrefersTheLibraryUnlessPropertiesAreSet) {
  namespace fs = std::filesystem;
  ASSERT_TRUE(write_file(name, std::vector<uint8_t>(99)));
  fs::permissions(path, fs::perms::owner_read);
  EXPECT_FALSE(image->SaveToFile_PNG(name));  // no image: the file stays
  EXPECT_EQ(file_size(name), 99u);
  image->InitializeDIB(1, 1);
  EXPECT_TRUE(image->SaveToFile_PNG(name));
  EXPECT_EQ(file_size(name), 1u);
  bridge.saves = false;
  EXPECT_TRUE(image->SaveToFile_PNG(name));
  EXPECT_EQ(file_size(name), 3u);
  told.visited.clear();
  image->PngPropertySet(PngProperty::Title, std::wstring(L"t"));
  EXPECT_TRUE(image->SaveToFile_PNG(name));
  EXPECT_EQ(told.visited, "w");
  EXPECT_FALSE(image->SaveToFile_Bitmap(name));
  EXPECT_FALSE(fs::exists(path));
  EXPECT_FALSE(image->SaveToFile_PNG(L""));
  EXPECT_FALSE(image->SaveToFile_PNG(folder.wstring()));
  std::vector<uint8_t> out{1, 2, 3};
  EXPECT_FALSE(image->SaveToStream_GIF(out));
  EXPECT_TRUE(out.empty());
}

}  // namespace
}  // namespace kestrelon
