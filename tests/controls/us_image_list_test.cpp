#include <gmock/gmock.h>

#include "imaging/picture_convert_win.h"
#include "tests/controls/control_fixture.h"
#include "tests/imaging/windows_images.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr RECT kPlace{20, 20, 58, 58};

Variant bytes_variant(const std::vector<uint8_t>& bytes) {
  Variant out;
  V_VT(&out) = VT_ARRAY | VT_UI1;
  V_ARRAY(&out) = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  std::memcpy(V_ARRAY(&out)->pvData, bytes.data(), bytes.size());
  return out;
}

Variant missing() {
  Variant out;
  V_VT(&out) = VT_ERROR;
  V_ERROR(&out) = DISP_E_PARAMNOTFOUND;
  return out;
}

long as_long(HANDLE handle) {
  return static_cast<long>(reinterpret_cast<INT_PTR>(handle));
}

class ImageListTest : public ControlTest {
 protected:
  static ComPtr<IDispatch> lists_of(ControlSite& site) {
    return to_object(get(site, L"ImageLists"));
  }
  static ComPtr<IDispatch> add_list(IDispatch* lists, long side, const wchar_t* key) {
    return to_object(call_method(lists, L"Add", {Variant(side), Variant(side), Variant(key)}));
  }
  static ComPtr<IDispatch> images_of(const ComPtr<IDispatch>& list) {
    return to_object(get_property(list.get(), L"Images"));
  }
  static long count(const ComPtr<IDispatch>& collection) {
    return to_long(get_property(collection.get(), L"Count"));
  }
  /// A form's list of two icons from a sample file, under the keys "nota" and "".
  static ComPtr<IDispatch> fill(ControlSite& site) {
    const auto images = images_of(add_list(lists_of(site).get(), 32, L"icones"));
    const Variant file = bytes_variant(sample("invoice.ico"));
    EXPECT_TRUE(to_bool(call_method(images.get(), L"AddImage_fromStream",
                                    {file, missing(), Variant(L"nota"), Variant(L"fiscal")})));
    const Variant coins = bytes_variant(sample("coins.ico"));
    EXPECT_TRUE(to_bool(call_method(images.get(), L"AddImage_fromStream", {coins})));
    return images;
  }
  /// The pixels of an image as an icon shows them.
  static std::vector<uint32_t> icon_pixels(IDispatch* images, const Variant& index) {
    const long number = to_long(call_method(images, L"ExtractIcon", {index}));
    const auto icon = reinterpret_cast<HICON>(static_cast<LONG_PTR>(number));
    WindowsImage image;
    EXPECT_TRUE(convert_icon(icon, image));
    DestroyIcon(icon);
    std::vector<uint32_t> out;
    for (int y = 0; y < image.Height(); ++y)
      for (int x = 0; x < image.Width(); ++x) out.push_back(stored(image, x, y));
    return out;
  }
  static std::wstring error_of(const std::function<void()>& call) {
    try {
      call();
    } catch (const ComError& error) {
      return std::to_wstring(error.hr & 0xFFFF) + L" " + error.description;
    }
    return L"";
  }
};

TEST_F(ImageListTest, GoesThroughEveryKindOfPersistenceEqual) {
  const auto site = place(L"USImageList", kPlace);
  fill(*site);
  add_list(lists_of(*site).get(), 5, L"");
  const auto expect_equal = [&](ControlSite& other) {
    const auto lists = lists_of(other);
    ASSERT_EQ(count(lists), 2);
    const auto list = to_object(get_property(lists.get(), L"Item", {Variant(L"icones")}));
    const auto images = images_of(list);
    ASSERT_EQ(count(images), 2);
    const auto first = to_object(get_property(images.get(), L"Item", {Variant(L"nota")}));
    EXPECT_EQ(to_text(get_property(first.get(), L"Tag")), L"fiscal");
    const auto original =
        images_of(to_object(get_property(lists_of(*site).get(), L"Item", {Variant(1L)})));
    for (long i = 1; i <= 2; ++i)
      EXPECT_EQ(icon_pixels(images.get(), Variant(i)), icon_pixels(original.get(), Variant(i)));
  };
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(site->control())->Save(bag.get(), TRUE, TRUE), S_OK);
  EXPECT_THAT(bag->keys(), ElementsAre(L"ImageLists"));
  expect_equal(*place(L"USImageList", kPlace, bag.get()));
  const auto fresh = library().create(L"Kestrelon2012.USImageList");
  const auto stream = save_stream(site->control());
  ASSERT_EQ(load_stream(fresh.get(), stream), S_OK);
  const auto again = place(L"USImageList", kPlace);
  ASSERT_EQ(load_storage(again->control(), save_storage(site->control()).get()), S_OK);
  expect_equal(*again);
}

TEST_F(ImageListTest, LoadsASavedStateThatIsCutOrTurnedAndStaysUsable) {
  const auto site = place(L"USImageList", kPlace);
  fill(*site);
  const auto bag = make_com<PropertyBag>();
  ASSERT_EQ(query<IPersistPropertyBag>(site->control())->Save(bag.get(), TRUE, TRUE), S_OK);
  Variant saved;
  V_VT(&saved) = VT_ARRAY | VT_UI1;
  ASSERT_EQ(bag->Read(L"ImageLists", &saved, nullptr), S_OK);
  const auto* const data = static_cast<const uint8_t*>(V_ARRAY(&saved)->pvData);
  const std::vector<uint8_t> whole(data, data + V_ARRAY(&saved)->rgsabound[0].cElements);
  for (size_t at = 0; at < whole.size(); at += at < 80 ? 1 : 97) {
    auto turned = whole;
    turned[at] ^= 0xFF;
    for (const auto& bytes : {std::vector<uint8_t>(whole.begin(), whole.begin() + at), turned}) {
      const auto broken = make_com<PropertyBag>();
      broken->set(L"ImageLists", bytes_variant(bytes));
      const auto other = place(L"USImageList", kPlace, broken.get());
      ASSERT_TRUE(other->control()) << at;
      EXPECT_LE(count(lists_of(*other)), 1) << at;
      add_list(lists_of(*other).get(), 16, L"outra");
    }
  }
}

TEST_F(ImageListTest, TellsEachChangeOnceItIsComplete) {
  const auto site = place(L"USImageList", kPlace);
  bring_up(form_);
  take_log(*site);
  const auto lists = lists_of(*site);
  std::vector<long> seen;
  site->events()->set_handler(
      [&](const std::wstring&, DISPPARAMS&) { seen.push_back(count(lists)); });
  const auto images = images_of(add_list(lists.get(), 16, L"a"));
  EXPECT_EQ(seen, (std::vector<long>{1}));
  call_method(images.get(), L"AddImage_fromStream", {bytes_variant(sample("coins.ico"))});
  const auto image = to_object(get_property(images.get(), L"Item", {Variant(1L)}));
  put_property(image.get(), L"Key", Variant(L"k"));
  put_property(image.get(), L"Tag", Variant(L"t"));
  call_method(images.get(), L"Remove", {Variant(L"k")});
  Variant bytes, reference;
  V_VT(&reference) = VT_VARIANT | VT_BYREF;
  V_VARIANTREF(&reference) = &bytes;
  call_method(lists.get(), L"ExportImageList", {Variant(1L), reference});  // no change
  EXPECT_EQ(seen.size(), 5u);
  EXPECT_NE(error_of([&] { call_method(lists.get(), L"Remove", {Variant(9L)}); }), L"");
  EXPECT_NE(error_of([&] { add_list(lists.get(), 16, L"a"); }), L"");
  EXPECT_EQ(seen.size(), 5u);                                 // a failure is no change
  put_property(lists.get(), L"Compression", Variant(false));  // saved with the lists
  put_property(lists.get(), L"Compression", Variant(false));
  EXPECT_EQ(seen.size(), 6u);
  call_method(lists.get(), L"Clear");
  EXPECT_EQ(seen.back(), 0);
  EXPECT_EQ(take_names(*site), std::vector<std::wstring>(7, L"UpdateLists"));
  EXPECT_EQ(number(*site, L"UpdateLists"), 7);
  EXPECT_EQ(query<IPersistStreamInit>(site->control())->IsDirty(), S_OK);
}

TEST_F(ImageListTest, StandsWhatAHandlerDoes) {
  auto site = place(L"USImageList", kPlace);
  bring_up(form_);
  const auto images = fill(*site);
  const auto lists = lists_of(*site);
  const Variant icon = bytes_variant(sample("coins.ico"));

  bool once = true;
  site->events()->set_handler([&](const std::wstring&, DISPPARAMS&) {
    if (std::exchange(once, false)) call_method(images.get(), L"Clear");
  });
  EXPECT_TRUE(to_bool(call_method(images.get(), L"AddImage_fromStream", {icon})));
  EXPECT_EQ(count(images), 0);

  once = true;
  site->events()->set_handler([&](const std::wstring&, DISPPARAMS&) {
    if (!std::exchange(once, false)) return;
    call_method(lists.get(), L"Clear");
    form_.remove(*site);
    site.reset();
  });
  // The control is gone; what a script still holds goes on working without it.
  EXPECT_TRUE(to_bool(call_method(images.get(), L"AddImage_fromStream", {icon})));
  EXPECT_FALSE(site);
  EXPECT_EQ(count(lists), 0);
  EXPECT_EQ(count(images), 1);
  EXPECT_TRUE(to_bool(call_method(images.get(), L"AddImage_fromStream", {icon})));
  EXPECT_EQ(count(images), 2);
}

TEST_F(ImageListTest, TakesPicturesFromEverySource) {
  const auto lists = library().create(L"Kestrelon2012.cImageLists").as<IDispatch>();
  const auto images = images_of(add_list(lists.get(), 24, L""));
  WindowsImage image;
  paint(image, 24, 24, true);
  const HBITMAP bitmap = make_flat_bitmap(image, 0);
  EXPECT_TRUE(to_bool(call_method(images.get(), L"AddImage_fromHandle",
                                  {Variant(as_long(bitmap)), missing(), Variant(L"bitmap")})));
  ASSERT_TRUE(OpenClipboard(nullptr));
  EmptyClipboard();
  SetClipboardData(CF_BITMAP, bitmap);
  CloseClipboard();
  EXPECT_TRUE(
      to_bool(call_method(images.get(), L"AddImage_fromClipBoard", {missing(), Variant(L"clip")})));
  const auto dib = library().create(L"Kestrelon2012.c32bppDIB").as<IDispatch>();
  call_method(dib.get(), L"LoadPicture_ByHandle", {Variant(as_long(bitmap))});
  const Variant picture = call_method(dib.get(), L"CreatePicture", {Variant(false)});
  EXPECT_TRUE(to_bool(call_method(images.get(), L"AddImage_fromStdPicture",
                                  {picture, Variant(1L), Variant(L"picture")})));
  const std::string file = KESTRELON_SOURCE_DIR "/resources/samples/coins.ico";
  const std::wstring name = L"Z:" + std::wstring(file.begin(), file.end());
  EXPECT_TRUE(to_bool(call_method(images.get(), L"AddImage_fromFile", {Variant(name)})));
  ASSERT_EQ(count(images), 4);
  const auto wanted = icon_pixels(images.get(), Variant(L"bitmap"));
  EXPECT_EQ(wanted[0], stored(image, 0, 0));
  EXPECT_EQ(icon_pixels(images.get(), Variant(L"clip")), wanted);
  EXPECT_EQ(icon_pixels(images.get(), Variant(1L)), wanted);
  // A program's own icons are not in this test; what is not there is refused.
  EXPECT_FALSE(to_bool(
      call_method(images.get(), L"AddImage_fromResource", {Variant(L"NADA"), Variant(L"PNG")})));
  EXPECT_FALSE(to_bool(call_method(images.get(), L"AddImage_fromHandle", {Variant(0L)})));
  EXPECT_EQ(error_of([&] {
              call_method(images.get(), L"AddImage_fromHandle", {Variant(0L), Variant(6L)});
            }),
            L"1962 Invalid Key or Index");
  EXPECT_EQ(count(images), 4);
}

TEST_F(ImageListTest, ExportsToAFileAndIntoATypedArray) {
  const auto site = place(L"USImageList", kPlace);
  fill(*site);
  const auto lists = lists_of(*site);
  wchar_t folder[MAX_PATH];
  GetTempPathW(MAX_PATH, folder);
  const std::wstring name = std::wstring(folder) + L"kestrelon.lista";
  EXPECT_TRUE(to_bool(call_method(lists.get(), L"ExportImageList", {Variant(1L), Variant(name)})));
  const auto list =
      to_object(call_method(lists.get(), L"ImportImageList", {Variant(name), Variant(L"copia")}));
  EXPECT_EQ(count(images_of(list)), 2);
  DeleteFileW(name.c_str());
  EXPECT_EQ(
      error_of([&] {
        call_method(lists.get(), L"ExportImageList", {Variant(1L), Variant(L"C:\\nada\\nada\\x")});
      }),
      L"1976 Error exporting image list. Ensure enough disk space and valid "
      L"write-permissions");

  // Basic's typed array comes by reference.
  SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, 3);
  Variant typed;
  V_VT(&typed) = VT_ARRAY | VT_UI1 | VT_BYREF;
  V_ARRAYREF(&typed) = &array;
  EXPECT_TRUE(to_bool(call_method(lists.get(), L"ExportImageList", {Variant(1L), typed})));
  EXPECT_GT(array->rgsabound[0].cElements, 100u);
  EXPECT_EQ(count(images_of(to_object(
                call_method(lists.get(), L"ImportImageList", {typed, Variant(L"outra")})))),
            2);
  SafeArrayDestroy(array);
  SAFEARRAYBOUND square[2] = {{10, 0}, {10, 0}};
  Variant wrong;
  V_VT(&wrong) = VT_ARRAY | VT_UI1;
  V_ARRAY(&wrong) = SafeArrayCreate(VT_UI1, 2, square);
  EXPECT_EQ(error_of([&] { call_method(lists.get(), L"ImportImageList", {wrong}); }),
            L"1975 Failed to Import external image list");
}

TEST_F(ImageListTest, TellsTheSizesOfAnIconFile) {
  const auto lists = library().create(L"Kestrelon2012.cImageLists").as<IDispatch>();
  Variant sizes;
  Variant by_reference;
  V_VT(&by_reference) = VT_VARIANT | VT_BYREF;
  V_VARIANTREF(&by_reference) = &sizes;
  const long found = to_long(call_method(lists.get(), L"ImageSizesFromStream",
                                         {bytes_variant(sample("invoice.ico")), by_reference}));
  ASSERT_GE(found, 3);
  ASSERT_EQ(V_VT(&sizes), VT_ARRAY | VT_VARIANT);
  LONG place[2] = {0, 0};
  Variant width;
  ASSERT_EQ(SafeArrayGetElement(V_ARRAY(&sizes), place, &width), S_OK);
  EXPECT_EQ(to_long(width), 16);
}

TEST_F(ImageListTest, IsSeenInTheDesignerOnly) {
  const auto running = place(L"USImageList", kPlace);
  bring_up(form_);
  EXPECT_EQ(running->window(), nullptr);
  form_.set_user_mode(false);
  const auto designed = place(L"USImageList", RECT{100, 20, 300, 200});
  EXPECT_EQ(designed->bounds().right - designed->bounds().left, 38);
  EXPECT_EQ(designed->bounds().bottom - designed->bounds().top, 38);
  const Picture picture = draw_control(*designed, 38, 38);
  std::vector<uint32_t> colours = picture.pixels;
  std::sort(colours.begin(), colours.end());
  colours.erase(std::unique(colours.begin(), colours.end()), colours.end());
  EXPECT_GT(colours.size(), 20u);
}

TEST_F(ImageListTest, GivesAButtonItsPicture) {
  const auto site = place(L"USImageList", kPlace);
  fill(*site);
  const auto button = place(L"USButton", RECT{100, 20, 200, 60});
  bring_up(form_);
  const auto load = [&](const Variant& list, const Variant& index, const Variant& key) {
    return to_bool(call_method(button->control_dispatch().get(), L"LoadImage_FromUSImageList",
                               {list, index, key}));
  };
  const Variant extender(site->dispatch()), control(site->control_dispatch().get());
  EXPECT_TRUE(load(extender, Variant(L"nota"), Variant(L"icones")));
  const auto shown = draw_control(*button, 100, 40);
  EXPECT_TRUE(load(control, Variant(2L), missing()));
  EXPECT_NE(draw_control(*button, 100, 40), shown);
  EXPECT_TRUE(load(Variant(lists_of(*site).get()), Variant(1L), Variant(1L)));
  EXPECT_EQ(draw_control(*button, 100, 40), shown);
  EXPECT_FALSE(load(control, Variant(3L), missing()));
  EXPECT_FALSE(load(control, Variant(1L), Variant(L"nada")));
  EXPECT_FALSE(load(Variant(static_cast<IDispatch*>(nullptr)), Variant(1L), missing()));
  EXPECT_FALSE(load(Variant(button->control_dispatch().get()), Variant(1L), missing()));
  EXPECT_EQ(draw_control(*button, 100, 40), shown);
}

}  // namespace
}  // namespace kestrelon::host
