// The ways an image gets into a USButton: each shows the same picture, and what fails leaves the
// one before.
#include <fstream>
#include <iterator>

#include "tests/controls/control_fixture.h"

namespace kestrelon::host {
namespace {

constexpr int kWidth = 90, kHeight = 60;
const std::wstring kKestrel = L"Z:" KESTRELON_SOURCE_DIR L"/resources/samples/kestrel.bmp";

Variant byte_array(const std::vector<char>& bytes) {
  Variant out;
  SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  void* data = nullptr;
  if (array != nullptr && SUCCEEDED(SafeArrayAccessData(array, &data))) {
    std::copy(bytes.begin(), bytes.end(), static_cast<char*>(data));
    SafeArrayUnaccessData(array);
  }
  V_VT(&out) = VT_ARRAY | VT_UI1;
  V_ARRAY(&out) = array;
  return out;
}

std::vector<char> file_bytes() {
  std::ifstream file(KESTRELON_SOURCE_DIR "/resources/samples/kestrel.bmp", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class OwnedBitmap {
 public:
  ~OwnedBitmap() { DeleteObject(handle_); }
  long number() const { return static_cast<long>(reinterpret_cast<INT_PTR>(handle_)); }
  Variant picture() const {
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = static_cast<HBITMAP>(handle_);
    ComPtr<IPictureDisp> out;
    OleCreatePictureIndirect(&description, IID_IPictureDisp, FALSE, out.put_void());
    return Variant(static_cast<IDispatch*>(out.get()));
  }

 private:
  HANDLE handle_ = LoadImageW(nullptr, kKestrel.c_str(), IMAGE_BITMAP, 0, 0,
                              LR_LOADFROMFILE | LR_CREATEDIBSECTION);
};

// What a Basic program's global object offers to a library.
class Program final : public LateBound {
 public:
  explicit Program(const OwnedBitmap& bitmap) : LateBound(L"Global") {
    method(L"LoadResData", [](const Arguments& arguments) {
      if (arguments.integer(0) != 101 || arguments.text(1) != L"CUSTOM")
        throw ComError(E_INVALIDARG);
      return byte_array(file_bytes());
    });
    method(L"LoadResPicture", [&bitmap](const Arguments& arguments) {
      if (arguments.integer(0) != 102 || arguments.integer(1) != 0) throw ComError(E_INVALIDARG);
      return bitmap.picture();
    });
  }
};

class ButtonLoaders : public ControlTest {
 protected:
  ButtonLoaders() : site_(place(L"USButton", RECT{20, 20, 20 + kWidth, 20 + kHeight})) {
    put(*site_, L"Caption", Variant(L""));
    put(*site_, L"PictureSizeX", Variant(60L));
    put(*site_, L"PictureSizeY", Variant(40L));
    bring_up(form_);
    mouse_away();
    bare_ = shot();
    EXPECT_TRUE(load(L"File", {Variant(kKestrel.c_str())}));
    expected_ = shot();
    EXPECT_NE(expected_, bare_);
  }
  Picture shot() { return draw_control(*site_, kWidth, kHeight); }
  bool load(const std::wstring& from, std::vector<Variant> arguments) {
    return to_bool(call_method(site_->control_dispatch().get(), (L"LoadImage_From" + from).c_str(),
                               std::move(arguments)));
  }
  void expect_shown_after(const std::wstring& from, std::vector<Variant> arguments) {
    call_method(site_->control_dispatch().get(), L"ClearPicture32Dib");
    ASSERT_EQ(shot(), bare_);
    EXPECT_TRUE(load(from, std::move(arguments))) << to_narrow(from);
    EXPECT_EQ(shot(), expected_) << to_narrow(from);
  }
  void expect_refused(const std::wstring& from, std::vector<Variant> arguments) {
    EXPECT_FALSE(load(from, std::move(arguments))) << to_narrow(from);
    EXPECT_EQ(shot(), expected_) << to_narrow(from);
  }
  static std::string to_narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

  ComPtr<ControlSite> site_;
  Picture bare_, expected_;
  OwnedBitmap bitmap_;
};

TEST_F(ButtonLoaders, ShowTheSamePictureFromEverySource) {
  const auto program = make_com<Program>(bitmap_);
  const Variant global(static_cast<IDispatch*>(program.get()));
  expect_shown_after(L"Array", {byte_array(file_bytes())});
  expect_shown_after(L"Handle", {Variant(bitmap_.number())});
  expect_shown_after(L"StdPicture", {bitmap_.picture()});
  expect_shown_after(L"Resource", {global, Variant(L"CUSTOM"), Variant(101L)});
  expect_shown_after(L"Resource", {global, Variant(0L), Variant(102L)});
}

TEST_F(ButtonLoaders, LeaveThePictureBeforeWhenTheyFail) {
  const auto program = make_com<Program>(bitmap_);
  const Variant global(static_cast<IDispatch*>(program.get()));
  auto cut = file_bytes();
  cut.resize(40);
  expect_refused(L"Array", {byte_array(cut)});
  expect_refused(L"Array", {byte_array({})});
  expect_refused(L"Handle", {Variant(0L)});
  expect_refused(L"Handle", {Variant(12345L)});
  expect_refused(L"StdPicture", {Variant(static_cast<IDispatch*>(nullptr))});
  expect_refused(L"StdPicture", {global});
  expect_refused(L"Resource", {global, Variant(L"CUSTOM"), Variant(7L)});
  expect_refused(L"Resource", {global, Variant(0L), Variant(7L)});
  expect_refused(L"Resource",
                 {Variant(static_cast<IDispatch*>(nullptr)), Variant(0L), Variant(7L)});
}

}  // namespace
}  // namespace kestrelon::host
