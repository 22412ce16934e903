#include <algorithm>
#include <random>

#include "tests/imaging/image_list_tools.h"

namespace kestrelon {
namespace {

using namespace test;

constexpr wchar_t kDuplicatedList[] =
    L"1963 Duplicated Key. Key already exists in this collection (ImageLists.Add)";
constexpr wchar_t kTooManyLists[] =
    L"1973 Maximum number of images have been exceeded. Create new image list (ImageLists.Add)";

TEST(ImageLists, HoldsAMillionPixelsAList) {
  const struct {
    int64_t width, height;
    int32_t images;
  } table[] = {{32, 32, 1000},    {0, 16, 0},      {16, 0, 0},        {16, 16, 4000},
               {1, 1, 0xFA000},   {1000, 1024, 1}, {1012, 1012, 0},   {-32, -32, 0},
               {65536, 65536, 0}, {1, 0xFA000, 1}, {INT32_MAX, 2, 0}, {0x10001, 0xFFFF, 0},
               {INT64_MAX, 1, 0}, {48, 48, 444},   {1, 0xFA001, 0}};
  for (const auto& row : table)
    EXPECT_EQ(max_images(row.width, row.height), row.images) << row.width << "x" << row.height;
}

TEST(ImageLists, AddChecksKeyAndNumberAndLeavesTheCollectionAlone) {
  ImageLists lists;
  EXPECT_EQ(lists.Add(32, 32, L"a", 0)->second_count(), 1);  // below 1 is 1
  EXPECT_EQ(lists.Add(32, 32, L"", -7)->position, 2);
  EXPECT_EQ(lists.Add(32, 32, L"", 1000)->position, 3);  // no key is no duplicate
  EXPECT_EQ(error_of([&] { lists.Add(8, 8, L"a", 1); }), kDuplicatedList);
  EXPECT_EQ(error_of([&] { lists.Add(32, 32, L"b", 1001); }), kTooManyLists);
  EXPECT_EQ(error_of([&] { lists.Add(0, 32, L"b", 1); }), kTooManyLists);
  EXPECT_EQ(lists.Count(), 3);
  EXPECT_EQ(lists.IsKeyAssigned(L"b"), 0);
  EXPECT_EQ(lists.IsKeyAssigned(L"A"), 0);  // upper case is another key
  EXPECT_EQ(error_of([&] { lists.resolve(int64_t{4}, L"ImageLists.Remove"); }),
            L"1962 Invalid Key or Index (ImageLists.Remove)");
  EXPECT_EQ(error_of([&] { lists.resolve(std::wstring(), L"ImageLists.Item"); }),
            L"1962 Invalid Key or Index (ImageLists.Item)");
}

TEST(ImageLists, TellsItemsThatHaveLeftTheirCollection) {
  ImageLists lists;
  const auto first = lists.Add(8, 8, L"um", 1), second = lists.Add(8, 8, L"dois", 1);
  const auto image = [&] {
    add_cell(*second, 1, L"x");
    return second->Item(1);
  }();
  lists.Remove(1);
  EXPECT_EQ(second->position, 1);
  EXPECT_EQ(lists.IsKeyAssigned(L"dois"), 1);
  EXPECT_EQ(error_of([&] { lists.ClassDataLong(*first, ItemDatum::Index); }),
            L"1962 Invalid Index (ImageLists.Index)");
  EXPECT_EQ(error_of([&] { lists.ClassDataString(*first, ItemDatum::Key); }),
            L"1962 Invalid Key (ImageLists.Key)");
  EXPECT_EQ(lists.ClassDataLong(*first, ItemDatum::Width), 8);
  EXPECT_EQ(error_of([&] { lists.set_ClassDataString(*first, ItemDatum::Key, L"y"); }),
            L"1962 Invalid Key (ImageLists.Key)");
  lists.set_ClassDataString(*second, ItemDatum::Key, L"um");  // free again
  EXPECT_EQ(lists.IsKeyAssigned(L"um"), 1);
  second->Clear();
  EXPECT_EQ(error_of([&] { second->ClassDataLong(*image, ItemDatum::Index); }),
            L"1962 Invalid Index (Images.Index)");
  EXPECT_EQ(error_of([&] { second->set_ClassDataString(*image, ItemDatum::Tag, L"t"); }),
            L"1962 Invalid Key (Images.Key)");
}

// Every operation against a plain list of what should be there.
TEST(ImageList, KeepsKeysTagsAndPixelsTogetherThroughAnyChanges) {
  struct Entry {
    std::wstring key, tag;
    std::vector<uint32_t> pixels;
  };
  std::vector<Entry> model;
  std::mt19937 random(7);
  ImageList list(3, 5, {});
  for (uint32_t step = 0; step < 3000; ++step) {
    const auto size = static_cast<uint32_t>(model.size());
    const uint32_t at = size == 0 ? 0 : random() % size;
    const std::wstring key =
        random() % 3 == 0 ? std::wstring() : L"k" + std::to_wstring(random() % 80);
    const bool taken = !key.empty() && std::any_of(model.begin(), model.end(),
                                                   [&](const Entry& e) { return e.key == key; });
    const uint32_t action = random() % 8;
    if (action < 4 && size < 60) {
      c32bppDIB image;
      paint_cell(image, 3, 5, step);
      const ItemIndex before = int64_t{at} + 1;
      const auto add = [&] {
        list.add(image, list.place_for(action == 0 ? nullptr : &before, key), key, L"t" + key,
                 true);
      };
      EXPECT_EQ(error_of(add).substr(0, 4), taken ? L"1963" : L"") << step;
      if (!taken)
        model.insert(model.begin() + (action == 0 ? size : at), {key, L"t" + key, pixels(image)});
    } else if (size > 0 && action == 7) {
      const auto item = list.Item(static_cast<int32_t>(at) + 1);
      const bool other = taken && model[at].key != key;
      const auto change = [&] { list.set_ClassDataString(*item, ItemDatum::Key, key); };
      EXPECT_EQ(error_of(change).substr(0, 4), other ? L"1963" : L"") << step;
      if (!other) model[at].key = key;
    } else if (size > 0) {
      list.Remove(static_cast<int32_t>(at) + 1);
      model.erase(model.begin() + at);
    }
    ASSERT_EQ(list.Count(), static_cast<int32_t>(model.size()));
    for (uint32_t i = 0; step % 50 == 0 && i < model.size(); ++i) {
      c32bppDIB cell;
      ASSERT_TRUE(list.extract(static_cast<int32_t>(i) + 1, cell));
      ASSERT_EQ(pixels(cell), model[i].pixels) << step;
      ASSERT_EQ(list.Item(static_cast<int32_t>(i) + 1)->tag, model[i].tag) << step;
      ASSERT_EQ(list.Item(static_cast<int32_t>(i) + 1)->position, static_cast<int32_t>(i) + 1);
      ASSERT_EQ(list.IsKeyAssigned(model[i].key),
                model[i].key.empty() ? 0 : static_cast<int32_t>(i) + 1);
    }
  }
}

TEST(ImageList, GrowsItsStripSeldomAndNeverBeyondItsLimit) {
  class Store final : public PixelStore {
   public:
    explicit Store(size_t bytes) : bytes_(bytes) {}
    uint8_t* bits() override { return bytes_.data(); }
    intptr_t handle() override { return 1; }

   private:
    std::vector<uint8_t> bytes_;
  };
  int made = 0;
  bool short_of_memory = false;
  int64_t largest = 0;
  const auto factory = [&](int32_t width, int32_t height) -> std::unique_ptr<PixelStore> {
    if (short_of_memory) return nullptr;
    ++made;
    largest = std::max(largest, int64_t{width} * height);
    return std::make_unique<Store>(static_cast<size_t>(width) * static_cast<size_t>(height) * 4);
  };
  ImageLists lists(factory);
  const auto list = lists.Add(32, 32, L"", 1);
  c32bppDIB icon;
  paint_cell(icon, 32, 32, 1);
  for (int i = 0; i < 1000; ++i) list->add(icon, list->place_for(nullptr, {}), {}, {}, true);
  EXPECT_LE(made, 10);
  EXPECT_LE(largest, 0xFA000);
  EXPECT_EQ(error_of([&] { list->place_for(nullptr, L"x"); }),
            L"1973 Maximum number of images have been exceeded. Create new image list "
            L"(Images.Add)");

  const auto other = lists.Add(32, 32, L"", 2);
  add_cell(*other, 1, L"a");
  add_cell(*other, 2, L"b");
  const auto before = contents(*other);
  short_of_memory = true;
  EXPECT_EQ(error_of([&] { add_cell(*other, 3, L"c", L"", 1); }),
            L"7 Low system resource preventing appending additional images (Images)");
  EXPECT_EQ(error_of([&] { lists.Add(32, 32, L"", 5); }).substr(0, 5), L"7 Low");
  short_of_memory = false;
  EXPECT_EQ(contents(*other), before);
  EXPECT_EQ(other->IsKeyAssigned(L"c"), 0);
  EXPECT_EQ(lists.Count(), 2);
}

TEST(ImageList, FitsPicturesIntoTheCell) {
  ImageList list(8, 8, {});
  c32bppDIB wide;
  fill_opaque(wide, 16, 4);
  list.add(wide, 1, {}, {}, true);  // half the size, rows 3 and 4
  c32bppDIB cell;
  ASSERT_TRUE(list.extract(1, cell));
  for (int32_t y = 0; y < 8; ++y) {
    for (int32_t x = 0; x < 8; ++x)
      EXPECT_EQ(pixel(cell, x, y) >> 24, y == 3 || y == 4 ? 255u : 0u) << x << "," << y;
  }
  c32bppDIB small;
  fill_opaque(small, 2, 4);
  list.add(small, 2, {}, {}, true);  // twice the size, columns 2 to 5
  ASSERT_TRUE(list.extract(2, cell));
  for (int32_t x = 0; x < 8; ++x)
    EXPECT_EQ(pixel(cell, x, 7) >> 24, x >= 2 && x <= 5 ? 255u : 0u) << x;
  list.add(wide, 3, {}, {}, false);  // cut on the right, nothing below
  ASSERT_TRUE(list.extract(3, cell));
  EXPECT_EQ(pixel(cell, 7, 3), pixel(wide, 7, 3));
  EXPECT_EQ(pixel(cell, 7, 4), 0u);
  c32bppDIB thin;
  fill_opaque(thin, 1, 100);
  list.add(thin, 4, {}, {}, true);  // never less than a pixel wide
  ASSERT_TRUE(list.extract(4, cell));
  EXPECT_EQ(pixel(cell, 3, 0) >> 24, 255u);
}

std::vector<uint32_t> drawn(ImageList& list, int32_t position, RenderArguments args, int32_t side) {
  c32bppDIB canvas;
  canvas.InitializeDIB(side, side);
  args.destHostDIB = &canvas;
  EXPECT_TRUE(list.Render(position, nullptr, args));
  return pixels(canvas);
}

// A cell draws exactly as an image of its own, so that no neighbour shows whatever the arguments.
TEST(ImageList, DrawsAnImageAsIfItWereAlone) {
  ImageList list(9, 7, {});
  for (uint32_t i = 1; i <= 3; ++i) add_cell(list, i);
  c32bppDIB alone;
  paint_cell(alone, 9, 7, 2);
  ImageList single(9, 7, {});
  single.add(alone, 1, {}, {}, true);
  RenderArguments cases[12];
  cases[1].destX = 5, cases[1].destY = -3;
  cases[2].destWidth = 27, cases[2].destHeight = 3;
  cases[3].destWidth = -9;
  cases[4].SrcX = 4, cases[4].SrcY = 5;
  cases[5].SrcX = 2, cases[5].SrcWidth = 100, cases[5].SrcHeight = 100, cases[5].SrcY = 1;
  cases[6].Angle = 40;
  cases[7].Opacity = 30, cases[7].grayScale = GrayScale::NtscPal, cases[7].LightAdjustment = 20;
  cases[8].CenterOnDestXY = true, cases[8].destX = 10, cases[8].destY = 10;
  cases[9].SrcWidth = -9, cases[9].SrcHeight = -7;
  cases[10].SrcX = 9, cases[10].SrcY = 0;
  cases[11].SrcX = -4, cases[11].Opacity = 0;
  int number = 0;
  for (RenderArguments args : cases) {
    const auto found = drawn(list, 2, args, 30);
    EXPECT_EQ(found, drawn(single, 1, args, 30)) << number;
    c32bppDIB canvas;
    canvas.InitializeDIB(30, 30);
    args.destHostDIB = &canvas;
    alone.set_HighQualityInterpolation(true);
    ASSERT_TRUE(alone.Render(nullptr, args)) << number;
    EXPECT_EQ(found, pixels(canvas)) << number++;
  }
  EXPECT_FALSE(list.Render(1, nullptr, {}));  // nowhere to draw
}

}  // namespace
}  // namespace kestrelon
