// USButton: themes, states, shapes, pictures in nine places, check mode, focus.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/gallery/sample_files.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USButton";

void put(IDispatch* control, const wchar_t* name, long value) {
  put_property(control, name, Variant(value));
}

Prepare captioned(const wchar_t* caption) {
  return [caption](IDispatch* control) { put_property(control, L"Caption", Variant(caption)); };
}

Prepare shaped(long shape) {
  return [shape](IDispatch* control) {
    captioned(L"Gravar")(control);
    put(control, L"ButtonShape", shape);
  };
}

Prepare pictured(const wchar_t* file, const wchar_t* caption, long place, long side) {
  return [=](IDispatch* control) {
    put_property(control, L"Caption", Variant(caption));
    put(control, L"PictureAlignment", place);
    put(control, L"PictureSizeX", side);
    put(control, L"PictureSizeY", side);
    call_method(control, L"LoadImage_FromFile",
                {Variant(sample_file(file)), Variant(side), Variant(side), Variant(32L)});
  };
}

void picture_places(Page& page) {
  constexpr const wchar_t* kPlaces[] = {L"atrás do texto",  L"borda inferior", L"abaixo do texto",
                                        L"borda esquerda",  L"antes do texto", L"borda direita",
                                        L"depois do texto", L"borda superior", L"acima do texto"};
  constexpr int kStep = 90;
  for (long place = 0; place < 9; ++place) {
    const int x = look::kMargin + static_cast<int>(place) * kStep;
    page.text(make_rect(x, page.y(), kStep, 14), kPlaces[place], TextStyle::kSmall);
    page.control(kProgId, make_rect(x, page.y() + 18, kStep - 6, 54), [=](IDispatch* control) {
      pictured(L"disc.png", L"Gravar", place, 24)(control);
      put(control, L"Theme", place % 3);
    });
    page.control(kProgId, make_rect(x, page.y() + 78, kStep - 6, 40),
                 pictured(L"coins.ico", L"", place, 16));
  }
  page.skip(128);
}

void magnified(Page& page) {
  constexpr Situation kSituations[] = {Situation::kAway, Situation::kOver, Situation::kPressed,
                                       Situation::kFocused};
  for (int theme = 0; theme < 3; theme += 2)
    for (int i = 0; i < 4; ++i) {
      const Prepare prepare = [theme](IDispatch* control) {
        put(control, L"Theme", theme);
        captioned(L"&Ok")(control);
      };
      page.picture(look::kMargin + i * 204, page.y() + theme / 2 * 70,
                   page.snapshot(kProgId, 48, 22, kSituations[i], prepare), 3);
    }
  page.skip(2 * 70);
}

void details(Page& page) {
  const int y = page.y();
  const auto place = [&](int column, int row) {
    return make_rect(look::kMargin + column * 166, y + row * 38, 156, 30);
  };
  for (long theme = 0; theme < 3; ++theme)
    page.control(kProgId, place(static_cast<int>(theme), 0), [theme](IDispatch* control) {
      captioned(L"Fixado (CheckBoxMode)")(control);
      put(control, L"Theme", theme);
      put_property(control, L"CheckBoxMode", Variant(true));
      put_property(control, L"Value", Variant(true));
    });
  page.control(kProgId, place(3, 0), [](IDispatch* control) {
    captioned(L"À esquerda, 10 pixels")(control);
    put(control, L"Alignment", 0);
    put(control, L"CaptionDistance", 10);
  });
  page.control(kProgId, place(4, 0), [](IDispatch* control) {
    captioned(L"À direita")(control);
    put(control, L"Alignment", 2);
    put(control, L"CaptionDistance", 10);
    put(control, L"Theme", 0);
  });
  constexpr long kOpacity[] = {100, 60, 25};
  for (int i = 0; i < 3; ++i)
    page.control(kProgId, place(i, 1), [&, i](IDispatch* control) {
      pictured(L"calendar.ico", L"Opacidade", 4, 24)(control);
      put(control, L"PictureOpacity", kOpacity[i]);
      put(control, L"Theme", i);
    });
  page.control(kProgId, place(3, 1), [](IDispatch* control) {
    pictured(L"calendar.ico", L"Desabilitado", 4, 24)(control);
    put_property(control, L"Enabled", Variant(false));
  });
  page.control(kProgId, place(4, 1), [](IDispatch* control) {
    captioned(L"Contas a &pagar && receber")(control);
    put(control, L"Theme", 1);
  });
  page.skip(82);
}

}  // namespace

void build_us_button_page(Page& page) {
  page.title(L"USButton", L"Botão com temas, imagens em nove lugares, modo de marcação e dica.");
  page.section(L"Temas e estados");
  page.state_table(kProgId, 58, 30,
                   {{L"Arredondado", shaped(0)},
                    {L"Esquerda reta", shaped(1)},
                    {L"Direita reta", shaped(2)},
                    {L"Lados retos", shaped(3)}});
  page.section(L"Lugares da imagem, com texto e sem ele");
  picture_places(page);
  page.section(L"Marcação, alinhamento, opacidade, teclas de acesso");
  details(page);
  page.section(L"Normal, sob o ponteiro, pressionado e com o foco, três vezes ampliados");
  magnified(page);
}

}  // namespace kestrelon::host
