// What is dragged over a picture: a data object that stands in for a drag source.
#include <shlobj.h>

#include <map>

#include "tests/controls/us_alpha_image_fixture.h"

namespace kestrelon::host {
namespace {

using testing::ElementsAre;

// Blocks of memory by format.
class Source final : public ComObject<IDataObject> {
 public:
  void put(CLIPFORMAT format, const void* bytes, size_t size) {
    const auto* const data = static_cast<const uint8_t*>(bytes);
    blocks_[format].assign(data, data + size);
  }
  void put_files(const std::vector<std::wstring>& names) {
    std::vector<uint8_t> block(sizeof(DROPFILES));
    const DROPFILES head = {sizeof(DROPFILES), {}, FALSE, TRUE};
    std::memcpy(block.data(), &head, sizeof head);
    for (const std::wstring& name : names) {
      const auto* const data = reinterpret_cast<const uint8_t*>(name.c_str());
      block.insert(block.end(), data, data + (name.size() + 1) * 2);
    }
    block.resize(block.size() + 2);
    put(CF_HDROP, block.data(), block.size());
  }

  STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* out) override {
    const HRESULT hr = QueryGetData(format);
    if (hr != S_OK) return hr;
    const auto& block = blocks_[format->cfFormat];
    *out = {};
    out->tymed = TYMED_HGLOBAL;
    out->hGlobal = GlobalAlloc(GMEM_MOVEABLE, block.size());
    std::memcpy(GlobalLock(out->hGlobal), block.data(), block.size());
    GlobalUnlock(out->hGlobal);
    return S_OK;
  }
  STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
  STDMETHODIMP QueryGetData(FORMATETC* format) override {
    const bool here = (format->tymed & TYMED_HGLOBAL) != 0 && blocks_.count(format->cfFormat) != 0;
    return here ? S_OK : DV_E_FORMATETC;
  }
  STDMETHODIMP GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
  STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
  STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP DUnadvise(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

 private:
  std::map<CLIPFORMAT, std::vector<uint8_t>> blocks_;
};

class AlphaImageDropTest : public AlphaImageTest {
 protected:
  AlphaImageDropTest() : site_(place(L"USAlphaImage", RECT{30, 20, 94, 84})) {
    put(*site_, L"OLEDropMode", Variant(1L));
    bring_up(form_);
    mouse_away();
    take_log(*site_);
  }
  ComPtr<IDropTarget> target() {
    ComPtr<IDropTarget> out;
    query<IOleInPlaceObjectWindowless>(site_->control())->GetDropTarget(out.put());
    return out;
  }
  POINTL at(int x, int y) {
    POINT point{30 + x, 20 + y};
    ClientToScreen(form_.hwnd(), &point);
    return {point.x, point.y};
  }
  void handle(EventHandler handler) { site_->on_event(std::move(handler)); }

  ComPtr<ControlSite> site_;
  ComPtr<Source> source_ = make_com<Source>();
};

TEST_F(AlphaImageDropTest, TellsEveryStepWithPositionAndState) {
  const auto drop = target();
  ASSERT_TRUE(drop);
  std::vector<std::wstring> steps;
  handle([&](const std::wstring& name, DISPPARAMS& params) {
    std::wstring line = name;
    for (UINT i = 1; i < params.cArgs; ++i) line += L" " + describe_value(event_value(params, i));
    steps.push_back(line);
  });
  DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
  drop->DragEnter(source_.get(), MK_LBUTTON, at(5, 7), &effect);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));  // never moved unless asked for
  effect = DROPEFFECT_MOVE;
  drop->DragOver(MK_LBUTTON | MK_CONTROL, at(6, 8), &effect);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_MOVE));
  drop->DragLeave();
  effect = DROPEFFECT_COPY;
  drop->DragEnter(source_.get(), MK_RBUTTON | MK_SHIFT, at(1, 1), &effect);
  drop->Drop(source_.get(), MK_SHIFT, at(2, 3), &effect);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
  EXPECT_THAT(steps, ElementsAre(L"OLEDragOver 3 1 0 5 7 0", L"OLEDragOver 2 1 2 6 8 2",
                                 L"OLEDragOver 0 1 2 6 8 1", L"OLEDragOver 1 2 1 1 1 0",
                                 L"OLEDragDrop 1 0 1 2 3"));
}

TEST_F(AlphaImageDropTest, AnswersWithTheEffectOfTheHandlerAsFarAsItIsAllowed) {
  const auto drop = target();
  long wanted = DROPEFFECT_NONE;
  handle([&](const std::wstring&, DISPPARAMS& params) {
    set_event_argument(params, 1, Variant(wanted));
  });
  DWORD effect = DROPEFFECT_COPY;
  drop->DragEnter(source_.get(), 0, at(5, 5), &effect);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
  wanted = DROPEFFECT_MOVE;
  effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
  drop->DragOver(0, at(5, 5), &effect);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_MOVE));
  effect = DROPEFFECT_COPY;
  drop->DragOver(0, at(5, 5), &effect);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
}

TEST_F(AlphaImageDropTest, LoadsDroppedFilesThroughTheEvent) {
  source_->put_files({L"Z:" + sample_path(L"disc.gif"), L"Z:" + sample_path(L"coins.ico")});
  std::vector<std::wstring> names;
  handle([&](const std::wstring& name, DISPPARAMS& params) {
    if (name != L"OLEDragDrop") return;
    const auto data = to_object(event_value(params, 0));
    EXPECT_TRUE(to_bool(call_method(data.get(), L"GetFormat", {Variant(short{CF_HDROP})})));
    EXPECT_FALSE(to_bool(call_method(data.get(), L"GetFormat", {Variant(short{CF_TEXT})})));
    EXPECT_TRUE(done(*site_, L"LoadImage_FromDropedFiles", {Variant(data.get()), Variant(2L)}));
    EXPECT_EQ(number(*site_, L"imageWidth"), 32);
    const auto files = to_object(get_property(data.get(), L"Files"));
    for (long i = 1; i <= to_long(get_property(files.get(), L"Count")); ++i)
      names.push_back(to_text(get_property(files.get(), L"Item", {Variant(i)})));
    EXPECT_THROW(get_property(files.get(), L"Item", {Variant(3L)}), ComError);
    EXPECT_FALSE(done(*site_, L"LoadImage_FromDropedFiles", {Variant(data.get()), Variant(3L)}));
  });
  DWORD effect = DROPEFFECT_COPY;
  target()->Drop(source_.get(), 0, at(5, 5), &effect);
  EXPECT_THAT(names,
              ElementsAre(L"Z:" + sample_path(L"disc.gif"), L"Z:" + sample_path(L"coins.ico")));
}

TEST_F(AlphaImageDropTest, HandsOverTextPicturesAndBytes) {
  std::vector<uint8_t> dib = sample("coins-4bit.bmp");
  dib.erase(dib.begin(), dib.begin() + 14);
  source_->put(CF_DIB, dib.data(), dib.size());
  source_->put(CF_UNICODETEXT, L"a\u00e7\u00e3o", 10);
  source_->put(0xC123, "\1\2\3", 3);
  bool seen = false;
  handle([&](const std::wstring&, DISPPARAMS& params) {
    seen = true;
    const auto data = to_object(event_value(params, 0));
    const auto value = [&](int format) {
      return call_method(data.get(), L"GetData", {Variant(static_cast<short>(format))});
    };
    EXPECT_TRUE(to_bool(call_method(data.get(), L"GetFormat", {Variant(short{CF_TEXT})})));
    EXPECT_EQ(to_text(value(CF_TEXT)), L"a\u00e7\u00e3o");
    EXPECT_EQ(to_text(value(CF_UNICODETEXT)), L"a\u00e7\u00e3o");
    EXPECT_EQ(bytes_in(value(0xC123)).size() >= 3, true);
    EXPECT_EQ(V_VT(&static_cast<const VARIANT&>(value(0xC124))), VT_EMPTY);
    EXPECT_TRUE(done(*site_, L"LoadImage_FromStdPicture", {value(CF_DIB)}));
    EXPECT_EQ(number(*site_, L"imageWidth"), 64);
    EXPECT_TRUE(done(*site_, L"LoadImage_FromStdPicture", {value(CF_BITMAP)}));
    EXPECT_EQ(to_long(get_property(to_object(get_property(data.get(), L"Files")).get(), L"Count")),
              0);
  });
  DWORD effect = DROPEFFECT_COPY;
  target()->DragEnter(source_.get(), 0, at(5, 5), &effect);
  EXPECT_TRUE(seen);
}

TEST_F(AlphaImageDropTest, HandsOverNothingForDamagedData) {
  std::vector<uint8_t> dib = sample("coins-4bit.bmp");
  dib.erase(dib.begin(), dib.begin() + 14);
  auto many_colours = dib;
  many_colours[32] = many_colours[35] = 0xFF;  // biClrUsed
  auto huge = dib;
  huge[7] = huge[11] = 0x70;  // width and height
  dib.resize(dib.size() / 2);
  for (const auto& bytes : {dib, many_colours, huge, std::vector<uint8_t>(39, 40)}) {
    source_ = make_com<Source>();
    source_->put(CF_DIB, bytes.data(), bytes.size());
    source_->put(CF_HDROP, bytes.data(), bytes.size());
    bool seen = false;
    handle([&](const std::wstring&, DISPPARAMS& params) {
      seen = true;
      const auto data = to_object(event_value(params, 0));
      const Variant picture = call_method(data.get(), L"GetData", {Variant(short{CF_DIB})});
      EXPECT_EQ(V_VT(&picture), VT_EMPTY);
      EXPECT_FALSE(done(*site_, L"LoadImage_FromDropedFiles", {Variant(data.get())}));
    });
    DWORD effect = DROPEFFECT_COPY;
    target()->Drop(source_.get(), 0, at(5, 5), &effect);
    EXPECT_TRUE(seen);
  }
}

TEST_F(AlphaImageDropTest, TakesNothingUnlessItIsTold) {
  put(*site_, L"OLEDropMode", Variant(0L));
  EXPECT_FALSE(target());
  put(*site_, L"OLEDropMode", Variant(1L));
  const auto drop = target();
  put(*site_, L"OLEDropMode", Variant(0L));  // in the middle of a drag
  DWORD effect = DROPEFFECT_COPY;
  drop->DragEnter(source_.get(), 0, at(5, 5), &effect);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
  put(*site_, L"OLEDropMode", Variant(1L));
  put(*site_, L"Enabled", Variant(false));
  effect = DROPEFFECT_COPY;
  drop->DragOver(0, at(5, 5), &effect);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
  EXPECT_TRUE(take_log(*site_).empty());
  const auto fresh = place_new(L"USAlphaImage", RECT{200, 20, 230, 50});  // as in a designer
  put(*fresh, L"OLEDropMode", Variant(1L));
  ComPtr<IDropTarget> none;
  EXPECT_NE(query<IOleInPlaceObjectWindowless>(fresh->control())->GetDropTarget(none.put()), S_OK);
}

TEST_F(AlphaImageDropTest, StandsAHandlerThatDestroysTheControl) {
  const auto drop = target();
  handle([&](const std::wstring& name, DISPPARAMS&) {
    if (name == L"OLEDragDrop") form_.remove(*site_);
  });
  DWORD effect = DROPEFFECT_COPY;
  drop->DragEnter(source_.get(), 0, at(5, 5), &effect);
  drop->Drop(source_.get(), 0, at(5, 5), &effect);
  effect = DROPEFFECT_COPY;
  EXPECT_EQ(drop->DragEnter(source_.get(), 0, at(5, 5), &effect), S_OK);
  EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
}

// Lets go after a few looks at the mouse.
class Hand final : public ComObject<IDropSource> {
 public:
  STDMETHODIMP QueryContinueDrag(BOOL, DWORD) override {
    return ++looks_ < 4 ? S_OK : DRAGDROP_S_DROP;
  }
  STDMETHODIMP GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }

 private:
  int looks_ = 0;
};

// The system's own drag, over a control in the container's window and over one in its own.
TEST_F(AlphaImageDropTest, TakesADropOfTheSystemWithAndWithoutAWindow) {
  form_.set_accepts_drops(true);
  source_->put_files({L"Z:" + sample_path(L"coins.ico")});
  form_.allow_windowless = false;
  const auto bag = make_com<PropertyBag>();
  bag->set(L"OLEdrop", Variant(1L));
  const auto windowed = place(L"USAlphaImage", RECT{120, 20, 184, 84}, bag.get());
  ASSERT_NE(windowed->window(), nullptr);
  for (ControlSite* const site : {site_.get(), windowed.get()}) {
    std::wstring at;
    site->on_event([&](const std::wstring& name, DISPPARAMS& params) {
      if (name != L"OLEDragDrop") return;
      at = describe_value(event_value(params, 4)) + L"," + describe_value(event_value(params, 5));
      done(*site, L"LoadImage_FromDropedFiles", {event_value(params, 0)});
    });
    POINT point{site->bounds().left + 9, site->bounds().top + 11};
    ClientToScreen(form_.hwnd(), &point);
    SetCursorPos(static_cast<int>(point.x), static_cast<int>(point.y));
    DWORD effect = DROPEFFECT_NONE;
    EXPECT_EQ(DoDragDrop(source_.get(), make_com<Hand>().get(), DROPEFFECT_COPY, &effect),
              DRAGDROP_S_DROP);
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    EXPECT_EQ(at, L"9,11");
    EXPECT_EQ(number(*site, L"imageWidth"), 32);
    EXPECT_EQ(take_names(*site).front(), L"OLEDragOver");
  }
}

TEST_F(AlphaImageDropTest, RegistersAWindowOfItsOwn) {
  form_.allow_windowless = false;
  const auto bag = make_com<PropertyBag>();
  bag->set(L"OLEdrop", Variant(1L));
  const auto site = place(L"USAlphaImage", RECT{120, 20, 184, 84}, bag.get());
  ASSERT_NE(site->window(), nullptr);
  EXPECT_EQ(RevokeDragDrop(site->window()), S_OK);
  put(*site, L"OLEDropMode", Variant(0L));
  put(*site, L"OLEDropMode", Variant(1L));
  put(*site, L"OLEDropMode", Variant(0L));
  EXPECT_EQ(RevokeDragDrop(site->window()), DRAGDROP_E_NOTREGISTERED);
}

}  // namespace
}  // namespace kestrelon::host
