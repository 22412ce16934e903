#include <random>

#include "imaging/image_list/huffman_block.h"
#include "imaging/png_parser.h"
#include "imaging/png_writer.h"
#include "png_test_tools.h"
#include "tests/imaging/hostile.h"
#include "tests/imaging/image_list_tools.h"

namespace kestrelon {
namespace {

using namespace test;
using png_test::WithZlib;

constexpr wchar_t kFailed[] =
    L"1975 Failed to Import external image list (ImageLists.ImportImageList)";
constexpr wchar_t kVersion[] =
    L"1974 Invalid ImageList Version. Update your ImageList classes/control "
    L"(ImageLists.ImportImageList)";

Bytes text(const char* ascii) {
  Bytes out;
  for (; *ascii != 0; ++ascii) out = out + Bytes{static_cast<uint8_t>(*ascii), 0};
  return out;
}

// Two images of 2 by 1 with a key and a tag.
void fill_small(ImageLists& lists) {
  const auto list = lists.Add(2, 1, L"ab", 4);
  c32bppDIB image;
  image.InitializeDIB(2, 1);
  set_pixel(image, 0, 0, 0xFF102030);
  set_pixel(image, 1, 0, 0x80403020);
  list->add(image, 1, L"k", {}, true);
  set_pixel(image, 1, 0, 0xFFFFFFFF);
  list->add(image, 2, {}, L"tag", true);
}

TEST(ImageListExport, IsThisByteForByte) {
  ImageLists lists;
  lists.set_Compression(false);  // and no zlib: the pixels go out as they are
  fill_small(lists);
  const Bytes pixels = {0x30, 0x20, 0x10, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,  // the last row first
                        0x30, 0x20, 0x10, 0xFF, 0x20, 0x30, 0x40, 0x80};
  const Bytes texts =
      wire({{2, 4}}) + text("k") + wire({{0, 4}}) + wire({{0, 4}, {6, 4}}) + text("tag");
  const Bytes body = wire({{2, 4}, {4, 4}, {2, 4}, {1, 4}, {pixels.size(), 4}}) + pixels + texts;
  const size_t closing = 20 + 4 + body.size();
  EXPECT_EQ(lists.ExportImageList(1),
            wire({{0x4B425854, 4}, {2, 4}, {closing, 4}, {closing + 7, 4}, {4, 4}}) + text("ab") +
                body + wire({{7, 4}, {0, 2}, {0, 1}}));

  lists.set_Compression(true);
  const auto packed = lists.ExportImageList(1);
  EXPECT_EQ(packed.back(), 2);              // Huffman pixels
  EXPECT_EQ(packed[packed.size() - 3], 1);  // the store's flag
  EXPECT_TRUE(ImageLists::CompressionNeeded());
  const WithZlib zlib;
  EXPECT_FALSE(ImageLists::CompressionNeeded());
  const auto png = lists.ExportImageList(1);
  EXPECT_EQ(png.back(), 0);
  EXPECT_EQ(Bytes(png.begin() + 44, png.begin() + 48), (Bytes{0x89, 'P', 'N', 'G'}));
}

TEST(ImageListExport, ReadsBackEqualInEveryForm) {
  ImageLists lists;
  std::mt19937 random(3);
  const auto many = lists.Add(16, 16, L"muitas \u00e7\u00f5es", 1);
  for (uint32_t i = 0; i < 200; ++i)
    add_cell(*many, i, i % 3 == 0 ? L"" : L"chave " + std::to_wstring(random()),
             i % 4 == 0 ? L"etiqueta \u20ac" + std::to_wstring(i) : L"");
  const auto plain = lists.Add(5, 9, L"", 1);  // without texts
  add_cell(*plain, 1);
  lists.Add(7, 7, L"vazia", 3);
  const auto bare = lists.Add(4, 4, L"", 1);
  c32bppDIB clear;
  clear.InitializeDIB(4, 4);
  bare->add(clear, 1, L"nada", L"", true);
  const auto before = contents(lists);

  for (const int form : {0, 1, 2}) {
    std::optional<WithZlib> zlib;
    if (form == 0) zlib.emplace();
    lists.set_Compression(form != 2);
    ImageLists again;
    for (int32_t i = 1; i <= lists.Count(); ++i) {
      const auto bytes = lists.ExportImageList(i);
      EXPECT_EQ(again.ImportImageList(bytes, {})->second_count(), lists.Item(i)->second_count());
    }
    EXPECT_EQ(contents(again), before) << form;
    ImageLists loaded;
    loaded.load(lists.save());
    EXPECT_EQ(contents(loaded), before) << form;
    EXPECT_EQ(loaded.Compression(), form != 2);
  }
}

TEST(ImageListExport, KeepsTheBytesOfAnUnchangedImport) {
  const WithZlib zlib;
  ImageLists lists;
  fill_small(lists);
  lists.Item(1)->set_DelayLoaded(true);
  auto bytes = lists.ExportImageList(1);
  ImageLists other;
  const auto list = other.ImportImageList(bytes, {});
  EXPECT_TRUE(list->is_packed());
  EXPECT_EQ(other.ExportImageList(1), bytes);  // without unpacking
  EXPECT_TRUE(list->is_packed());
  EXPECT_EQ(list->Item(2)->tag, L"tag");
  EXPECT_TRUE(list->is_packed());
  EXPECT_EQ(contents(other), contents(lists));
  EXPECT_FALSE(list->is_packed());
  EXPECT_EQ(other.ExportImageList(1), bytes);
  add_cell(*list, 5);
  ImageLists third;
  EXPECT_EQ(contents(*third.ImportImageList(other.ExportImageList(1), {})), contents(*list));

  // Pixels that turn out broken at first use raise, again and again, and the list stays.
  const size_t check = bytes.size() - 7 - 26 - 12 - 10;  // inside the image data
  bytes[check] ^= 0xFF, bytes[check - 1] ^= 0xFF;
  const auto broken = other.ImportImageList(bytes, L"quebrada");
  c32bppDIB cell;
  for (int i = 0; i < 2; ++i) EXPECT_EQ(error_of([&] { broken->extract(1, cell); }), kFailed);
  EXPECT_EQ(broken->Count(), 2);
  EXPECT_EQ(error_of([&] { broken->Remove(1); }), kFailed);
  EXPECT_EQ(broken->Count(), 2);
  broken->Clear();
  add_cell(*broken, 1);
  EXPECT_EQ(broken->Count(), 1);
}

TEST(ImageListImport, TakesAKeyAndRefusesOneInUse) {
  ImageLists lists;
  fill_small(lists);
  const auto bytes = lists.ExportImageList(1);
  EXPECT_EQ(error_of([&] { lists.ImportImageList(bytes, {}); }),
            L"1963 Duplicated Key. Key already exists in this collection (ImageLists.Add)");
  lists.ImportImageList(bytes, L"outra");
  EXPECT_EQ(lists.IsKeyAssigned(L"outra"), 2);
  EXPECT_EQ(contents(*lists.Item(2)), contents(*lists.Item(1)));
}

TEST(ImageListImport, TakesCellsBesideEachOther) {
  const WithZlib zlib;
  c32bppDIB sheet;  // three by two cells of 4 by 3, of which five are used
  paint_cell(sheet, 12, 6, 9);
  Bytes png;
  ASSERT_TRUE(cPNGwriter::SaveExact(sheet, png));
  const Bytes body = wire({{5, 4}, {0, 4}, {4, 4}, {3, 4}, {png.size(), 4}}) + png;
  const Bytes file =
      wire({{0x4B425854, 4}, {0, 4}, {20 + body.size(), 4}, {29 + body.size(), 4}, {0, 4}}) + body +
      wire({{9, 4}, {0xFFFC, 2}, {0, 1}, {0xBEEF, 2}});
  ImageLists lists;
  const auto list = lists.ImportImageList(file + Bytes{1, 2, 3}, {});
  ASSERT_EQ(list->Count(), 5);
  c32bppDIB cell;
  ASSERT_TRUE(list->extract(5, cell));
  EXPECT_EQ(pixel(cell, 3, 2), pixel(sheet, 7, 5));
}

// Errors 1974 and 1975 alone, and nothing changes; or the import succeeds and the list is usable.
void expect_sound_import(ImageLists& lists, const Bytes& bytes, const std::string& what) {
  const auto before = contents(lists);
  try {
    const auto list = lists.ImportImageList(bytes, L"nova");
    (void)contents(*list);
    lists.Remove(lists.Count());
  } catch (const ImageListError& error) {
    EXPECT_TRUE(error.number == 1974 || error.number == 1975) << what << " " << error.number;
  }
  EXPECT_EQ(contents(lists), before) << what;
}

TEST(ImageListImport, SurvivesEveryCutAndEveryTurnedBit) {
  for (const int form : {0, 1, 2}) {
    std::optional<WithZlib> zlib;
    if (form == 0) zlib.emplace();
    ImageLists lists;
    lists.set_Compression(form != 2);
    fill_small(lists);
    if (form == 1)  // packed texts too
      for (uint32_t i = 0; i < 4; ++i)
        add_cell(*lists.Item(1), i, std::wstring(150, L'k') + std::to_wstring(i));
    Bytes file = lists.ExportImageList(1);
    for (size_t cut = 0; cut < file.size(); ++cut) {
      Bytes part(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(cut));
      EXPECT_EQ(error_of([&] { lists.ImportImageList(part, L"nova"); }), kFailed) << cut;
      if (cut < 20) continue;
      // The same with a head and a closing block that agree with the cut.
      const size_t closing = cut - 7;
      for (int i = 0; i < 4; ++i) {
        part[8 + i] = static_cast<uint8_t>(closing >> (8 * i));
        part[12 + i] = static_cast<uint8_t>(cut >> (8 * i));
        if (cut >= 27) part[closing + i] = i == 0 ? 7 : 0;
      }
      expect_sound_import(lists, part, "cut at " + std::to_string(cut));
    }
    for (size_t at = 0; at < file.size(); ++at) {
      for (int bit = 0; bit < 8; ++bit) {
        file[at] ^= static_cast<uint8_t>(1 << bit);
        expect_sound_import(lists, file,
                            "bit " + std::to_string(bit) + " at " + std::to_string(at));
        file[at] ^= static_cast<uint8_t>(1 << bit);
      }
      for (const uint8_t value : {0x00, 0x7F, 0x80, 0xFF}) {
        const uint8_t kept = std::exchange(file[at], value);
        expect_sound_import(lists, file, "value at " + std::to_string(at));
        file[at] = kept;
      }
    }
  }
}

// A file with these numbers in front of its pixels and texts.
Bytes file_with(uint32_t count, uint32_t width, uint32_t height, const Bytes& pixels,
                const Bytes& texts = {}, uint8_t mode = 0, uint32_t version = 2) {
  const Bytes body =
      wire({{count, 4}, {0, 4}, {width, 4}, {height, 4}, {pixels.size(), 4}}) + pixels + texts;
  return wire({{0x4B425854, 4},
               {version, 4},
               {20 + body.size(), 4},
               {27 + body.size(), 4},
               {0, 4}}) +
         body + wire({{7, 4}, {0, 2}, {mode, 1}});
}

TEST(ImageListImport, RefusesWhatDoesNotAgree) {
  ImageLists lists;
  const auto failure = [&](const Bytes& file) {
    return error_of([&] { lists.ImportImageList(file, {}); });
  };
  const Bytes one(4, 0xFF);
  const auto key = [](uint32_t length, const Bytes& bytes) { return wire({{length, 4}}) + bytes; };
  ASSERT_EQ(failure(file_with(1, 1, 1, one)), L"");
  lists.Clear();
  EXPECT_EQ(failure(file_with(1, 1, 1, one, {}, 0, 3)), kVersion);
  EXPECT_EQ(failure(file_with(1, 1, 1, one, {}, 0, 0x7FFFFFFF)), kVersion);
  const Bytes bad[] = {
      {},
      Bytes(20, 0),
      file_with(2, 1, 1, one),                             // fewer pixels than images
      file_with(0, 1, 1, one),                             // more
      file_with(0xFFFFFFFF, 1, 1, one),                    //
      file_with(1, 0, 1, one),                             // no size
      file_with(1, 0xFFFFFFFF, 1, one),                    //
      file_with(1, 0x10000, 0x10000, one),                 //
      file_with(1001, 32, 32, Bytes(1001 * 4096, 0)),      // more than a list may hold
      file_with(1, 1, 1, one, {}, 2),                      // no Huffman block
      file_with(1, 1, 1, one, {}, 4),                      // no size of the texts
      file_with(1, 1, 1, one, wire({{100, 4}}), 4),        // beyond the closing block
      file_with(1, 1, 1, one, key(1, {65}) + key(0, {})),  // half a character
      file_with(1, 1, 1, one, key(2, text("a"))),          // no tag
      file_with(1, 1, 1, one, key(0, {}) + key(0, {}) + Bytes{0}),
      file_with(1, 1, 1, one, key(0xFFFFFFFE, text("a"))),
      file_with(2, 1, 1, one + one,  // one key twice
                key(2, text("a")) + key(2, text("a")) + key(0, {}) + key(0, {})),
  };
  for (const Bytes& file : bad) EXPECT_EQ(failure(file), kFailed) << file.size();

  // Offsets of the closing block: inside the header, at the end, beyond.
  for (const uint32_t offset : {0u, 16u, 19u, 47u, 48u, 1000u, 0xFFFFFFF0u}) {
    Bytes file = file_with(1, 1, 1, one);
    for (int i = 0; i < 4; ++i) file[8 + i] = static_cast<uint8_t>(offset >> (8 * i));
    EXPECT_EQ(failure(file), kFailed) << offset;
  }
  EXPECT_EQ(lists.Count(), 0);
}

TEST(ImageListImport, RefusesAPngOfAnotherSizeBeforeItIsDecoded) {
  const auto head = [](uint32_t width, uint32_t height) {
    Bytes png = {0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R'};
    for (const uint32_t side : {width, height})
      for (int shift = 24; shift >= 0; shift -= 8)
        png.push_back(static_cast<uint8_t>(side >> shift));
    return png + Bytes{8, 6, 0, 0, 0};
  };
  ImageLists lists;
  const std::pair<uint32_t, uint32_t> sizes[] = {
      {0x7FFFFFFF, 0x7FFFFFFF}, {32, 32001}, {0, 0}, {33, 32}, {32000, 33}, {31, 1000}};
  for (const auto& size : sizes) {
    const Bytes file = file_with(1, 32, 32, head(size.first, size.second));
    EXPECT_EQ(error_of([&] { lists.ImportImageList(file, {}); }), kFailed) << size.first;
  }
}

TEST(ImageListImport, CutsColoursDownToTheirAlpha) {
  ImageLists lists;
  const auto list = lists.ImportImageList(file_with(1, 1, 1, {0xFF, 0x10, 0x80, 0x40}), {});
  c32bppDIB cell;
  ASSERT_TRUE(list->extract(1, cell));
  EXPECT_EQ(pixel(cell, 0, 0), 0x40401040u);
}

TEST(ImageLists, LoadsWhatIsWhole) {
  ImageLists lists;
  fill_small(lists);
  lists.Add(3, 3, L"segunda", 1);
  const auto saved = lists.save();
  ImageLists other;
  for (size_t cut = 0; cut <= saved.size(); ++cut) {
    other.load({saved.data(), cut});
    const int32_t whole = cut == saved.size() ? 2 : cut >= lists.ExportImageList(1).size() ? 1 : 0;
    ASSERT_EQ(other.Count(), whole) << cut;
  }
  EXPECT_EQ(contents(other), contents(lists));
}

TEST(ExactPng, GivesBackEveryPremultipliedPixel) {
  const WithZlib zlib;
  c32bppDIB image, again;
  image.InitializeDIB(256, 256);  // the row is the alpha, the column the stored colour
  for (uint32_t alpha = 0; alpha < 256; ++alpha)
    for (uint32_t c = 0; c <= alpha; ++c)
      set_pixel(image, static_cast<int32_t>(c), static_cast<int32_t>(alpha),
                alpha << 24 | c << 16 | (alpha - c) << 8 | c / 2);
  for (const int32_t height : {256, 1}) {  // RGBA, and a palette
    c32bppDIB part;
    part.InitializeDIB(256, height);
    for (int32_t y = 0; y < height; ++y)
      std::memcpy(part.row(y), image.row(height == 1 ? 200 : y), 1024);
    Bytes png;
    ASSERT_TRUE(cPNGwriter::SaveExact(part, png));
    ASSERT_TRUE(cPNGparser::LoadStream(png, again));
    EXPECT_EQ(pixels(again), pixels(part)) << height;
  }
}

TEST(HuffmanBlock, ReadsBackAndRefusesWhatIsNotSound) {
  std::mt19937 random(5);
  std::vector<Bytes> samples = {{7}, Bytes(1000, 42), {}};
  for (int i = 0; i < 256; ++i) samples[2].push_back(static_cast<uint8_t>(i));
  Bytes skewed;  // longest codes: every value half as often as the one before
  for (int i = 0; i < 18; ++i)
    skewed.insert(skewed.end(), size_t{1} << (17 - i), static_cast<uint8_t>(i * 9));
  samples.push_back(skewed);
  Bytes noise(5000);
  for (uint8_t& byte : noise) byte = static_cast<uint8_t>(random());
  samples.push_back(noise);
  for (const Bytes& plain : samples) {
    const Bytes block = huffman_pack(plain);
    EXPECT_EQ(huffman_unpack(block, plain.size()), plain);
    EXPECT_FALSE(huffman_unpack(block, plain.size() - 1));
    const size_t step = 1 + block.size() / 60;
    for (size_t cut = 0; cut < block.size(); cut += step)
      EXPECT_FALSE(huffman_unpack(std::span(block).first(cut), plain.size())) << cut;
    EXPECT_FALSE(huffman_unpack(std::span(block).first(block.size() - 1), plain.size()));
  }
  Bytes block = huffman_pack(samples[1]);
  block[3] = 0x7F;  // promises more than its codes could hold
  EXPECT_FALSE(huffman_unpack(block, SIZE_MAX));
  block = wire({{1, 4}, {3, 1}, {0, 15}, {0x010203, 3}, {0, 1}});  // three codes of one bit
  EXPECT_FALSE(huffman_unpack(block, SIZE_MAX));
  block = wire({{1, 4}, {0, 16}, {0, 4}});  // no codes
  EXPECT_FALSE(huffman_unpack(block, SIZE_MAX));
}

}  // namespace
}  // namespace kestrelon
