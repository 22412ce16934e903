#include "tests/controls/us_alpha_image_fixture.h"

#include "host/property_text.h"

namespace kestrelon::host {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr RECT kPlace{10, 10, 58, 58};

class AlphaImagePersistTest : public AlphaImageTest {
 protected:
  AlphaImagePersistTest() { call_method(quiet_.get(), L"DestroyDIB"); }

  static std::vector<uint8_t> saved_image(ControlSite& site) {
    return bytes_in(saved_value(*saved(site), L"Image"));
  }

  ComPtr<IDispatch> quiet_ = [] {
    auto image = library().create(L"c32bppDIB").as<IDispatch>();
    put_property(image.get(), L"ShowMessages",
                 Variant(false));  // of damaged files, for the process
    return image;
  }();
};

TEST_F(AlphaImagePersistTest, WritesItsKeysInOrderAndSomeOnlyInUse) {
  const auto site = place(L"USAlphaImage", kPlace);
  const std::vector<std::wstring> always = {
      L"Scaler",      L"Opacity", L"Mirror",   L"Angle",         L"GrayScale",
      L"HitTest",     L"Props",   L"MaskUsed", L"MaskColor",     L"MaskSource",
      L"Enabled",     L"MIcon",   L"MPointer", L"OLEdrop",       L"ShadowColor",
      L"ShadowDepth", L"ShadowX", L"ShadowY",  L"ShadowOpacity", L"Intensity"};
  EXPECT_EQ(saved(*site)->keys(), always);
  auto with = always;
  ASSERT_TRUE(load(*site, L"coins-4bit.bmp"));
  with.insert(with.begin(), L"Image");
  EXPECT_EQ(saved(*site)->keys(), with);
  put(*site, L"MaskUsed", Variant(2L));
  put(*site, L"ScaleMethod", Variant(4L));
  with.insert(std::find(with.begin(), with.end(), L"Enabled"), L"Mask");
  const auto after = std::find(with.begin(), with.end(), L"ShadowColor");
  with.insert(with.insert(after, L"ScaleCy"), L"ScaleCx");
  EXPECT_EQ(saved(*site)->keys(), with);
  call_method(image_of(*site).get(), L"CreateCheckerBoard", {Variant(4L)});
  EXPECT_THAT(saved(*site)->keys(), Not(Contains(std::wstring(L"Image"))));
  call(*site, L"ClearImage");
  EXPECT_THAT(saved(*site)->keys(), Not(Contains(std::wstring(L"Image"))));
  EXPECT_EQ(number(*site, L"imageWidth"), 0);
  EXPECT_EQ(number(*site, L"ImageType"), -1);
}

TEST_F(AlphaImagePersistTest, SavesNothingOfANewControlButWhatIsNotTheDefault) {
  const auto site = place_new(L"USAlphaImage", kPlace);
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(site->control())->Save(bag.get(), TRUE, FALSE), S_OK);
  EXPECT_THAT(bag->keys(), ElementsAre(L"Props"));
  EXPECT_EQ(to_long(saved_value(*bag, L"Props")), 1 + 4);
}

TEST_F(AlphaImagePersistTest, KeepsEveryFlagInItsBitAndUnknownOnesToo) {
  const auto bag = make_com<PropertyBag>();
  bag->set(L"Props", Variant(2L + 32L));
  const auto site = place(L"USAlphaImage", kPlace, bag.get());
  EXPECT_FALSE(to_bool(get(*site, L"StretchQuality")));
  long bits = 2 + 32;
  for (const auto& [name, bit] : {std::pair{L"StretchQuality", 1L},
                                  {L"AutoSize", 4L},
                                  {L"AutoRedraw", 8L},
                                  {L"KeepOriginalFormat", 16L},
                                  {L"InversedImage", 64L},
                                  {L"ShadowEnabled", 128L},
                                  {L"RotateEnabled", 256L}}) {
    put(*site, name, Variant(true));
    EXPECT_EQ(to_long(saved_value(*saved(*site), L"Props")), bits |= bit) << bit;
  }
  put(*site, L"AutoRedraw", Variant(false));
  EXPECT_EQ(to_long(saved_value(*saved(*site), L"Props")), bits & ~8L);
}

TEST_F(AlphaImagePersistTest, ComesBackLookingTheSameFromBagStreamAndStorage) {
  const auto site = place(L"USAlphaImage", kPlace);
  ASSERT_TRUE(load(*site, L"coins-4bit.bmp"));
  for (const auto& [name, value] : {std::pair{L"Opacity", 80L},
                                    {L"Mirror", 1L},
                                    {L"Rotation", 30L},
                                    {L"grayScale", 4L},
                                    {L"HitTest", 3L},
                                    {L"MaskUsed", 2L},
                                    {L"ShadowDepth", 4L},
                                    {L"ShadowOffsetX", 5L}})
    put(*site, name, Variant(value));
  for (const wchar_t* name : {L"InversedImage", L"ShadowEnabled", L"RotateEnabled"})
    put(*site, name, Variant(true));
  put(*site, L"IntensityOffset", Variant(12.5f));
  put(*site, L"ScaleMethod", Variant(4L));
  const Picture before = shown(*site);
  const auto bag = saved(*site);
  const auto again = place(L"USAlphaImage", kPlace, bag.get());
  EXPECT_EQ(shown(*again), before);
  EXPECT_EQ(to_property_text(saved(*again)->entries()), to_property_text(bag->entries()));

  const auto control = library().create(L"USAlphaImage");
  ASSERT_EQ(load_stream(control.get(), save_stream(site->control())), S_OK);
  const auto stored = save_storage(site->control());
  const auto other = library().create(L"USAlphaImage");
  ASSERT_EQ(load_storage(other.get(), stored.get()), S_OK);
  for (const auto& loaded : {control, other}) {
    const auto copy = make_com<PropertyBag>();
    ASSERT_EQ(query<IPersistPropertyBag>(loaded.get())->Save(copy.get(), TRUE, TRUE), S_OK);
    EXPECT_EQ(to_property_text(copy->entries()), to_property_text(bag->entries()));
  }
}

TEST_F(AlphaImagePersistTest, SavesFilesThatSayMoreThanTheirPixelsAsTheyAre) {
  const auto site = place(L"USAlphaImage", kPlace);
  for (const bool keep : {false, true}) {
    put(*site, L"KeepOriginalFormat", Variant(keep));
    for (const char* name : {"disc.gif", "coins.ico", "disc.png", "kestrel.tga", "pointer.cur"}) {
      ASSERT_TRUE(load(*site, std::wstring(name, name + strlen(name)))) << name;
      EXPECT_EQ(saved_image(*site), sample(name)) << name << keep;
      Variant original;
      EXPECT_EQ(to_bool(call_method(image_of(*site).get(), L"GetOrginalFormat",
                                    {reference_to(original)})),
                keep);
    }
  }
}

TEST_F(AlphaImagePersistTest, SavesPlainBitmapsAsPng) {
  const auto site = place(L"USAlphaImage", kPlace);
  for (const wchar_t* name : {L"kestrel.bmp", L"disc.bmp", L"calendar-8bit-rle.bmp"}) {
    ASSERT_TRUE(load(*site, name));
    const auto bytes = saved_image(*site);
    ASSERT_GT(bytes.size(), 8u);
    EXPECT_EQ(bytes[1], 'P');
    WindowsImage was, is;
    ASSERT_TRUE(was.LoadPicture_File(sample_path(name)));
    ASSERT_TRUE(is.LoadPicture_Stream(bytes));
    EXPECT_LE(largest_difference(was, is), 1);  // straight colours and back
  }
}

// What is changed in the picture is no longer what its file says.
TEST_F(AlphaImagePersistTest, SavesThePixelsOnceTheyAreNoLongerThoseOfTheFile) {
  const auto site = place(L"USAlphaImage", kPlace);
  put(*site, L"KeepOriginalFormat", Variant(true));
  ASSERT_TRUE(load(*site, L"disc.gif"));
  call_method(image_of(*site).get(), L"SetPixel", {Variant(0L), Variant(0L), Variant(0x00C000L)});
  WindowsImage is;
  ASSERT_TRUE(is.LoadPicture_Stream(saved_image(*site)));
  EXPECT_EQ(is.ImageType(), ImageFormat::Png);
  EXPECT_EQ(is.GetPixel(0, 0), 0x00C000);
}

// Mask and inverse are properties; the picture below them is what is saved, or reading would undo
// the inverse and mask another colour.
TEST_F(AlphaImagePersistTest, SavesThePictureWithoutMaskAndInverse) {
  const auto site = place(L"USAlphaImage", kPlace);
  ASSERT_TRUE(load_quarters(*site));
  put(*site, L"InversedImage", Variant(true));
  put(*site, L"MaskUsed", Variant(2L));
  WindowsImage is;
  ASSERT_TRUE(is.LoadPicture_Stream(saved_image(*site)));
  EXPECT_EQ(is.GetPixel(0, 0), 0x0000FF);
  EXPECT_EQ(is.GetPixel(15, 0), 0x00FF00);
  EXPECT_EQ(to_long(saved_value(*saved(*site), L"Mask")), 0x0000FF);
  EXPECT_EQ(to_long(saved_value(*saved(*site), L"MaskSource")), 2);
  // After a change from outside the inverse can still be told.
  call_method(image_of(*site).get(), L"SetPixel", {Variant(15L), Variant(0L), Variant(0L)});
  ASSERT_TRUE(is.LoadPicture_Stream(saved_image(*site)));
  EXPECT_EQ(is.GetPixel(15, 0), 0xFFFFFF);
}

TEST_F(AlphaImagePersistTest, PicksTheIconForTheSizeOfTheControl) {
  const auto first = place(L"USAlphaImage", kPlace);  // 48 by 48
  ASSERT_TRUE(load(*first, L"coins.ico"));            // no size asked for: a small one
  EXPECT_LT(number(*first, L"imageWidth"), 48);
  const auto again = place(L"USAlphaImage", kPlace, saved(*first).get());
  EXPECT_EQ(number(*again, L"imageWidth"), 48);
  // Some containers tell the size only after the properties.
  const auto control = library().create(L"USAlphaImage");
  ASSERT_EQ(load_stream(control.get(), save_stream(first->control())), S_OK);
  SIZEL size{635, 635};  // 24 pixels
  ASSERT_EQ(query<IOleObject>(control.get())->SetExtent(DVASPECT_CONTENT, &size), S_OK);
  EXPECT_EQ(to_long(get_property(control.as<IDispatch>().get(), L"imageWidth")), 24);
}

TEST_F(AlphaImagePersistTest, ReadsAnyValueInThePlaceOfTheImage) {
  Variant texts = Variant(L"not bytes"), numbers(7L), empty = bytes_variant({});
  std::vector<uint8_t> cut = sample("disc.png");
  cut.resize(cut.size() / 2);
  Variant two_dimensions;
  SAFEARRAYBOUND bounds[2] = {{4, 0}, {4, 0}};
  V_VT(&two_dimensions) = VT_ARRAY | VT_UI1;
  V_ARRAY(&two_dimensions) = SafeArrayCreate(VT_UI1, 2, bounds);
  for (const Variant& value : {texts, numbers, empty, bytes_variant(cut), two_dimensions,
                               bytes_variant(std::vector<uint8_t>(1000, 0xAA))}) {
    const auto bag = make_com<PropertyBag>();
    bag->set(L"Image", value);
    bag->set(L"Opacity", Variant(40L));
    const auto site = place(L"USAlphaImage", kPlace, bag.get());
    EXPECT_EQ(number(*site, L"ImageType"), -1);
    EXPECT_EQ(number(*site, L"Opacity"), 40);
    EXPECT_EQ(shown(*site).at(24, 24), kThrough);
  }
}

}  // namespace
}  // namespace kestrelon::host
