// Every way in and every way out.
#include <shlobj.h>

#include "tests/controls/us_alpha_image_fixture.h"

namespace kestrelon::host {
namespace {

constexpr RECT kPlace{10, 10, 58, 58};

// What a Basic program's global object offers to a library.
class Program final : public LateBound {
 public:
  explicit Program(std::function<void()> meanwhile = nullptr) : LateBound(L"Global") {
    method(L"LoadResData", [meanwhile](const Arguments& arguments) {
      if (meanwhile) meanwhile();
      if (arguments.integer(0) != 101 || arguments.text(1) != L"CUSTOM")
        throw ComError(E_INVALIDARG);
      return bytes_variant(sample("disc.gif"));
    });
  }
};

class AlphaImageLoadTest : public AlphaImageTest {
 protected:
  AlphaImageLoadTest() : site_(place(L"USAlphaImage", kPlace)) {
    put_property(image_of(*site_).get(), L"ShowMessages", Variant(false));
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    file_ = std::wstring(folder) + L"alpha_image_test.tmp";
  }
  ~AlphaImageLoadTest() override { DeleteFileW(file_.c_str()); }

  long type() { return number(*site_, L"ImageType"); }
  long width() { return number(*site_, L"imageWidth"); }
  bool do_it(const wchar_t* name, std::vector<Variant> arguments = {}) {
    return done(*site_, name, std::move(arguments));
  }
  // A bitmap of four quarters of 16 by 16 that the caller deletes.
  static HBITMAP quarters_bitmap() {
    const HBITMAP bitmap =
        static_cast<HBITMAP>(LoadImageW(nullptr, sample_path(L"coins-4bit.bmp").c_str(),
                                        IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION));
    return bitmap;
  }
  static ComPtr<IDispatch> picture(HBITMAP bitmap) {
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = bitmap;
    ComPtr<IDispatch> out;
    OleCreatePictureIndirect(&description, IID_IPictureDisp, FALSE, out.put_void());
    return out;
  }
  static void put_on_clipboard(UINT format, const void* bytes, size_t size) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(GlobalLock(memory), bytes, size);
    GlobalUnlock(memory);
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    SetClipboardData(format, memory);
    CloseClipboard();
  }

  ComPtr<ControlSite> site_;
  std::wstring file_;
};

TEST_F(AlphaImageLoadTest, ReadsFilesOfEveryKind) {
  struct Case {
    const wchar_t* name;
    long type, width;
  };
  for (const Case& c :
       {Case{L"disc.png", 10, 192}, Case{L"disc.gif", 9, 192}, Case{L"disc.tga", 128, 96},
        Case{L"kestrel.bmp", 1, 240}, Case{L"pointer.cur", 12, 32}, Case{L"kestrel.jpg", 1, 480}}) {
    EXPECT_TRUE(load(*site_, c.name)) << type();
    EXPECT_EQ(type(), c.type) << width();
    EXPECT_EQ(width(), c.width);
  }
  EXPECT_TRUE(do_it(L"LoadImage_FromFile", {Variant(sample_path(L"coins.ico").c_str()),
                                            Variant(32L), Variant(32L), Variant(32L)}));
  EXPECT_EQ(width(), 32);
}

TEST_F(AlphaImageLoadTest, ShowsNothingAfterALoadThatFails) {
  std::vector<uint8_t> cut = sample("disc.png");
  cut.resize(500);
  Variant nothing;
  V_VT(&nothing) = VT_DISPATCH;
  const std::vector<std::pair<const wchar_t*, std::vector<Variant>>> failures = {
      {L"LoadImage_FromFile", {Variant(L"Z:\\no such file.png")}},
      {L"LoadImage_FromFile", {Variant(L"")}},
      {L"LoadImage_FromFile", {Variant(sample_path(L"make_samples.sh").c_str())}},
      {L"LoadImage_FromArray", {bytes_variant(cut)}},
      {L"LoadImage_FromArray", {bytes_variant({})}},
      {L"SetStream", {bytes_variant({1, 2, 3})}},
      {L"LoadImage_FromStdPicture", {nothing}},
      {L"LoadImage_FromHandle", {Variant(0L)}},
      {L"LoadImage_FromHandle", {Variant(0x7FFFFFFFL)}},
      {L"LoadImage_FromResource", {nothing, Variant(L"CUSTOM"), Variant(999L)}},
      {L"LoadImage_FromUSImageList", {nothing, Variant(1L)}},
      {L"LoadImage_FromDropedFiles", {nothing}},
      {L"LoadImage_FromPastedFiles", {Variant(-1L)}},
      {L"LoadImage_FromOrignalBytes", {}},
  };
  put(*site_, L"MaskUsed", Variant(2L));  // the common end must stand an empty picture
  put(*site_, L"InversedImage", Variant(true));
  for (const auto& [name, arguments] : failures) {
    ASSERT_TRUE(load(*site_, L"coins-4bit.bmp"));
    EXPECT_FALSE(do_it(name, arguments)) << lower_case(name).size();
    EXPECT_EQ(type(), -1);
    EXPECT_EQ(width(), 0);
    EXPECT_EQ(shown(*site_).at(24, 24), kThrough);
  }
}

TEST_F(AlphaImageLoadTest, AnswersFalseOrDoesNothingWithoutAPicture) {
  Variant out, x, y;
  for (const wchar_t* name :
       {L"SaveToBMPStream", L"SaveToGIFStream", L"SaveToJPGStream", L"SaveToPNGStream",
        L"SaveToTGAStream", L"GetStream", L"GetImageBytes"})
    EXPECT_FALSE(do_it(name, {reference_to(out)}));
  for (const wchar_t* name :
       {L"SaveToBMP", L"SaveToGIF", L"SaveToJPG", L"SaveToPNG", L"SaveToTGA", L"SaveRederedToBMP",
        L"SaveRederedToGIF", L"SaveRederedToJPG", L"SaveRederedToPNG", L"SaveRederedToTGA"})
    EXPECT_FALSE(do_it(name, {Variant(file_.c_str())}));
  EXPECT_FALSE(do_it(L"GetImageScales", {reference_to(x), reference_to(y)}));
  EXPECT_FALSE(do_it(L"SetImageBytes", {bytes_variant({1, 2, 3, 4})}));
  EXPECT_FALSE(do_it(L"ResizeImage", {Variant(3L), Variant(4L)}));
  EXPECT_FALSE(do_it(L"TrimImage"));
  EXPECT_FALSE(do_it(L"Render", {Variant(0L)}));
  for (const wchar_t* name : {L"ClearImage", L"Refresh"}) EXPECT_NO_THROW(call(*site_, name));
  EXPECT_EQ(GetFileAttributesW(file_.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(AlphaImageLoadTest, TakesPicturesHandlesAndTheClipboard) {
  const HBITMAP bitmap = quarters_bitmap();
  EXPECT_TRUE(do_it(L"LoadImage_FromStdPicture", {Variant(picture(bitmap).get())}));
  EXPECT_EQ(width(), 64);
  EXPECT_TRUE(do_it(L"LoadImage_FromHandle",
                    {Variant(static_cast<long>(reinterpret_cast<INT_PTR>(bitmap)))}));
  EXPECT_EQ(type(), 1);
  DeleteObject(bitmap);
  call(*site_, L"ClearImage");
  std::vector<uint8_t> dib = sample("coins-4bit.bmp");
  dib.erase(dib.begin(), dib.begin() + 14);
  put_on_clipboard(CF_DIB, dib.data(), dib.size());
  EXPECT_TRUE(do_it(L"LoadImage_FromClipboard"));
  EXPECT_EQ(width(), 64);
  put_on_clipboard(CF_UNICODETEXT, L"x", 4);
  EXPECT_FALSE(do_it(L"LoadImage_FromClipboard"));
}

TEST_F(AlphaImageLoadTest, TakesPastedFilesAndTellsTheirNumber) {
  std::vector<uint8_t> block(sizeof(DROPFILES));
  const DROPFILES head = {sizeof(DROPFILES), {}, FALSE, TRUE};
  std::memcpy(block.data(), &head, sizeof head);
  for (const wchar_t* name : {L"disc.gif", L"coins.ico"}) {
    const std::wstring path = L"Z:" + sample_path(name);
    const auto* const bytes = reinterpret_cast<const uint8_t*>(path.c_str());
    block.insert(block.end(), bytes, bytes + (path.size() + 1) * 2);
  }
  block.resize(block.size() + 2);
  put_on_clipboard(CF_HDROP, block.data(), block.size());
  Variant count;
  const auto paste = [&](long index, bool keep) {
    return do_it(L"LoadImage_FromPastedFiles", {Variant(index), Variant(32L), Variant(32L),
                                                Variant(keep), Variant(32L), reference_to(count)});
  };
  EXPECT_TRUE(paste(2, true));
  EXPECT_EQ(width(), 32);
  EXPECT_EQ(to_long(count), 2);
  EXPECT_TRUE(do_it(L"LoadImage_FromOrignalBytes", {Variant(48L), Variant(48L), Variant(32L)}));
  EXPECT_EQ(width(), 48);
  EXPECT_TRUE(paste(0, false));  // asks for the number only
  EXPECT_EQ(width(), 48);
  EXPECT_FALSE(paste(3, false));
  EXPECT_EQ(width(), 0);
}

TEST_F(AlphaImageLoadTest, TakesTheHostsResources) {
  const auto program = make_com<Program>();
  const Variant global(static_cast<IDispatch*>(program.get()));
  EXPECT_TRUE(do_it(L"LoadImage_FromResource", {global, Variant(L"CUSTOM"), Variant(101L)}));
  EXPECT_EQ(type(), 9);
  EXPECT_FALSE(do_it(L"LoadImage_FromResource", {global, Variant(L"CUSTOM"), Variant(102L)}));
}

// The host's code runs in the middle of a load.
TEST_F(AlphaImageLoadTest, StandsWhatTheHostDoesWhileItLoads) {
  ASSERT_TRUE(load(*site_, L"coins-4bit.bmp"));
  put(*site_, L"MaskUsed", Variant(2L));
  put(*site_, L"InversedImage", Variant(true));
  auto program = make_com<Program>([this] {
    put(*site_, L"InversedImage", Variant(false));
    EXPECT_TRUE(load(*site_, L"kestrel.bmp"));
    put(*site_, L"MaskUsed", Variant(5L));
    call_method(image_of(*site_).get(), L"InitializeDIB", {Variant(3L), Variant(3L)});
    put(*site_, L"InversedImage", Variant(true));
  });
  Variant global(static_cast<IDispatch*>(program.get()));
  EXPECT_TRUE(do_it(L"LoadImage_FromResource", {global, Variant(L"CUSTOM"), Variant(101L)}));
  EXPECT_EQ(type(), 9);
  put(*site_, L"InversedImage", Variant(false));
  put(*site_, L"MaskUsed", Variant(0L));
  const auto other = place(L"USAlphaImage", kPlace);
  ASSERT_TRUE(load(*other, L"disc.gif"));
  EXPECT_EQ(shown(*site_), shown(*other));

  program = make_com<Program>([this] { form_.remove(*site_); });
  global = Variant(static_cast<IDispatch*>(program.get()));
  EXPECT_NO_THROW(do_it(L"LoadImage_FromResource", {global, Variant(L"CUSTOM"), Variant(101L)}));
}

TEST_F(AlphaImageLoadTest, AsksToBeSavedWhenThePictureHasChanged) {
  const auto persist = query<IPersistStreamInit>(site_->control());
  const auto changed = [&](const std::function<void()>& change) {
    save_stream(site_->control());
    EXPECT_EQ(persist->IsDirty(), S_FALSE);
    change();
    return persist->IsDirty() == S_OK;
  };
  EXPECT_TRUE(changed([&] { load(*site_); }));
  EXPECT_TRUE(changed([&] { call_method(image_of(*site_).get(), L"MakeImageInverse"); }));
  EXPECT_TRUE(changed([&] { call(*site_, L"ClearImage"); }));
  EXPECT_FALSE(changed([&] { call(*site_, L"Refresh"); }));
}

TEST_F(AlphaImageLoadTest, TakesAnImageOfAFormsList) {
  const auto lists = place(L"USImageList", RECT{100, 10, 138, 48});
  const auto collection = to_object(get(*lists, L"ImageLists"));
  for (const auto& [side, key] : {std::pair{16L, L"small"}, {32L, L"large"}}) {
    const auto list = to_object(
        call_method(collection.get(), L"Add", {Variant(side), Variant(side), Variant(key)}));
    const auto images = to_object(get_property(list.get(), L"Images"));
    ASSERT_TRUE(
        to_bool(call_method(images.get(), L"AddImage_fromStream",
                            {bytes_variant(sample("coins.ico")), missing(), Variant(L"moedas")})));
  }
  const Variant source(static_cast<IDispatch*>(lists->control_dispatch().get()));
  EXPECT_TRUE(do_it(L"LoadImage_FromUSImageList", {source, Variant(1L)}));
  EXPECT_EQ(width(), 16);
  EXPECT_TRUE(do_it(L"LoadImage_FromUSImageList", {source, Variant(L"moedas"), Variant(L"large")}));
  EXPECT_EQ(width(), 32);
  // The extender of a form's list is taken as well.
  const Variant extender(lists->dispatch());
  EXPECT_TRUE(do_it(L"LoadImage_FromUSImageList", {extender, Variant(1L), Variant(L"small")}));
  EXPECT_FALSE(do_it(L"LoadImage_FromUSImageList", {source, Variant(9L), Variant(L"large")}));
  EXPECT_EQ(width(), 0);
}

TEST_F(AlphaImageLoadTest, HandsPixelsOutAndTakesThemBack) {
  ASSERT_TRUE(load_quarters(*site_));
  call_method(image_of(*site_).get(), L"SetPixel",
              {Variant(1L), Variant(0L), Variant(0xFFL), Variant(128L)});
  Variant pixels, length;
  ASSERT_TRUE(do_it(L"GetImageBytes", {reference_to(pixels), reference_to(length)}));
  EXPECT_EQ(to_long(length), 64);
  std::vector<uint8_t> bytes = bytes_in(pixels);
  ASSERT_EQ(bytes.size(), 16u * 16 * 4);
  EXPECT_EQ(bytes[2], 255);  // red at the top left: blue first, from the top
  EXPECT_EQ(std::vector<uint8_t>(&bytes[4], &bytes[8]), (std::vector<uint8_t>{0, 0, 255, 128}));
  ASSERT_TRUE(do_it(L"GetImageBytes", {reference_to(pixels), reference_to(length), Variant(true),
                                       Variant(false), Variant(true), Variant(true)}));
  EXPECT_EQ(SafeArrayGetDim(V_ARRAY(&pixels)), 2u);
  const std::vector<uint8_t> turned = bytes_in(pixels);
  EXPECT_EQ(turned[15 * 64], 255);  // red first, from the bottom
  EXPECT_EQ(turned[15 * 64 + 4], 128);

  const Picture before = shown(*site_);
  ASSERT_TRUE(do_it(L"SetImageBytes", {bytes_variant(bytes)}));
  EXPECT_EQ(shown(*site_), before);  // straight colours become what they were
  std::reverse(bytes.begin(), bytes.end());
  bytes.pop_back();
  EXPECT_FALSE(do_it(L"SetImageBytes", {bytes_variant(bytes)}));
  EXPECT_EQ(shown(*site_), before);
  std::vector<uint8_t> blue(16 * 16 * 4, 0);
  for (size_t i = 0; i < blue.size(); i += 4) blue[i] = blue[i + 3] = 255;
  put(*site_, L"InversedImage", Variant(true));
  ASSERT_TRUE(do_it(L"SetImageBytes", {bytes_variant(blue), Variant(false)}));  // red first
  EXPECT_EQ(shown(*site_).at(24, 24), 0x00FFFFu);
  put(*site_, L"InversedImage", Variant(false));
  EXPECT_EQ(shown(*site_).at(24, 24), 0xFF0000u);
}

TEST_F(AlphaImageLoadTest, HandsFilesOut) {
  Variant bytes;
  const auto file = [&] {
    EXPECT_TRUE(
        do_it(L"GetImageBytes", {reference_to(bytes), missing(), Variant(false), Variant(true),
                                 Variant(false), Variant(false), Variant(true)}));
    return bytes_in(bytes);
  };
  ASSERT_TRUE(load(*site_, L"kestrel.bmp"));
  EXPECT_EQ(file()[1], 'P');  // PNG: the file itself was not kept
  put(*site_, L"KeepOriginalFormat", Variant(true));
  ASSERT_TRUE(load(*site_, L"kestrel.bmp"));
  EXPECT_EQ(file(), sample("kestrel.bmp"));
  ASSERT_TRUE(load(*site_, L"disc.gif"));
  ASSERT_TRUE(do_it(L"GetStream", {reference_to(bytes)}));
  EXPECT_EQ(bytes_in(bytes), sample("disc.gif"));
  const auto other = place(L"USAlphaImage", RECT{70, 10, 118, 58});
  ASSERT_TRUE(done(*other, L"SetStream", {bytes}));
  EXPECT_EQ(shown(*other), shown(*site_));
}

TEST_F(AlphaImageLoadTest, KeepsOriginalBytesFromTheMomentItIsTold) {
  ASSERT_TRUE(do_it(L"LoadImage_FromFile", {Variant(sample_path(L"coins.ico").c_str()),
                                            Variant(16L), Variant(16L), Variant(32L)}));
  Variant bytes;
  const auto kept = [&] {
    return to_bool(call_method(image_of(*site_).get(), L"GetOrginalFormat", {reference_to(bytes)}));
  };
  EXPECT_FALSE(kept());
  put(*site_, L"KeepOriginalFormat", Variant(true));
  EXPECT_TRUE(kept());
  EXPECT_TRUE(do_it(L"LoadImage_FromOrignalBytes", {Variant(48L), Variant(48L), Variant(32L)}));
  EXPECT_EQ(width(), 48);
}

TEST_F(AlphaImageLoadTest, SavesThePictureInEveryFormat) {
  ASSERT_TRUE(load(*site_, L"coins-4bit.bmp"));
  struct Case {
    const wchar_t* kind;
    ImageFormat type;
    int tolerance;
  };
  WindowsImage was;
  ASSERT_TRUE(was.LoadPicture_File(sample_path(L"coins-4bit.bmp")));
  put(*site_, L"Opacity", Variant(10L));  // how it shows does not matter here
  put(*site_, L"Mirror", Variant(1L));
  for (const Case& c : {Case{L"BMP", ImageFormat::Bitmap, 0}, Case{L"GIF", ImageFormat::Gif, 0},
                        Case{L"JPG", ImageFormat::Bitmap, 90}, Case{L"PNG", ImageFormat::Png, 0},
                        Case{L"TGA", ImageFormat::Tga, 0}}) {
    const std::wstring name = std::wstring(L"SaveTo") + c.kind;
    WindowsImage is;
    ASSERT_TRUE(do_it(name.c_str(), {Variant(file_.c_str())}));
    ASSERT_TRUE(is.LoadPicture_File(file_));
    EXPECT_EQ(is.ImageType(), c.type);
    EXPECT_LE(largest_difference(was, is), c.tolerance);
    Variant bytes;
    ASSERT_TRUE(do_it((name + L"Stream").c_str(), {reference_to(bytes)}));
    EXPECT_EQ(bytes_in(bytes), read_file(file_, 1 << 24).value());
  }
}

TEST_F(AlphaImageLoadTest, SavesThePictureAsItShows) {
  const auto site = place(L"USAlphaImage", RECT{10, 70, 42, 102});  // scales by two
  ASSERT_TRUE(load_quarters(*site));
  put(*site, L"Mirror", Variant(1L));
  put(*site, L"ShadowEnabled", Variant(true));  // stays behind
  WindowsImage is;
  const auto save = [&](const wchar_t* name, std::vector<Variant> more = {}) {
    std::vector<Variant> arguments{Variant(file_.c_str())};
    arguments.insert(arguments.end(), more.begin(), more.end());
    EXPECT_TRUE(done(*site, name, arguments));
    EXPECT_TRUE(is.LoadPicture_File(file_));
  };
  for (const wchar_t* name : {L"SaveRederedToBMP", L"SaveRederedToPNG", L"SaveRederedToGIF",
                              L"SaveRederedToTGA", L"SaveRederedToJPG"}) {
    save(name);
    EXPECT_EQ(is.Width(), 32);
    const long colour = is.GetPixel(3, 3);
    EXPECT_GT(GetGValue(colour), 240);
    EXPECT_LT(GetRValue(colour), 16);
  }
  put(*site, L"Mirror", Variant(0L));
  put(*site, L"Rotation", Variant(90L));
  put(*site, L"RotateEnabled", Variant(true));
  put(*site, L"Opacity", Variant(50L));
  save(L"SaveRederedToPNG");
  int32_t alpha = 0;
  EXPECT_EQ(is.GetPixel(5, 5, &alpha) & 0xF0F0F0, 0xF00000);  // blue has come up
  EXPECT_NEAR(alpha, 127, 1);
  save(L"SaveRederedToPNG", {Variant(-100.0f)});
  EXPECT_EQ(is.GetPixel(28, 28), 0);
  put(*site, L"Opacity", Variant(100L));
  // Cut to what is visible.
  for (long y = 0; y < 16; ++y)
    for (long x = 0; x < 8; ++x)
      call_method(image_of(*site).get(), L"SetPixel",
                  {Variant(x), Variant(y), Variant(0L), Variant(0L)});
  put(*site, L"RotateEnabled", Variant(false));
  put(*site, L"StretchQuality", Variant(false));
  save(L"SaveRederedToPNG");
  EXPECT_EQ(is.Width(), 16);
  EXPECT_EQ(is.Height(), 32);
}

TEST_F(AlphaImageLoadTest, TellsTheSizeAPictureWouldHave) {
  ASSERT_TRUE(load(*site_, L"kestrel.bmp"));  // 240 by 160 in 48 by 48
  Variant w, h;
  const auto size = [&](long method, long room_width, long room_height, bool turned) {
    EXPECT_TRUE(
        do_it(L"GetImageScales", {reference_to(w), reference_to(h), Variant(method),
                                  Variant(room_width), Variant(room_height), Variant(turned)}));
    return std::pair(to_long(w), to_long(h));
  };
  EXPECT_EQ(size(-1, 0, 0, false), std::pair(48L, 32L));
  EXPECT_EQ(size(1, 0, -5, false), std::pair(48L, 48L));
  EXPECT_EQ(size(2, 1000, 1000, false), std::pair(240L, 160L));
  EXPECT_EQ(size(0, 480, 480, false), std::pair(480L, 320L));
  EXPECT_EQ(size(3, 0, 0, false), std::pair(240L, 160L));
  put(*site_, L"Rotation", Variant(90L));
  EXPECT_EQ(size(3, 0, 0, true), std::pair(160L, 240L));
  put(*site_, L"ScaleMethod", Variant(4L));
  EXPECT_EQ(size(900, 10, 10, false), std::pair(48L, 32L));  // as locked
}

}  // namespace
}  // namespace kestrelon::host
