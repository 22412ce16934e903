// USComboBox: three themes side by side in the states that differ, the open lists, one enlarged.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USComboBox";
constexpr int kWidth = 190, kHeight = 21, kStep = 264;
constexpr const wchar_t* kThemes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};

Prepare customers(long theme, const wchar_t* text, bool enabled = true, bool required = false) {
  return [=](IDispatch* combo) {
    put_property(combo, L"Theme", Variant(theme));
    call_method(
        combo, L"AddItems",
        {Variant(L"A\u00e7os Paran\u00e1 Ltda.\nCasa das Ferragens\nConstrutora Ip\u00ea\n"
                 L"Ferragens S\u00e3o Jorge\nIndustrial Norte\nMarcenaria Cedro\n"
                 L"Metal\u00fargica \u00c1guia\nOficina do Jo\u00e3o\nPara\u00edso das Tintas\n"
                 L"Serralheria Uni\u00e3o")});
    put_property(combo, L"PlaceHolder", Variant(L"Escolha o cliente"));
    put_property(combo, L"Text", Variant(std::wstring_view(text)));
    put_property(combo, L"Required", Variant(required));
    put_property(combo, L"Enabled", Variant(enabled));
  };
}

void themes(Page& page) {
  const struct {
    const wchar_t* label;
    Situation situation;
    const wchar_t* text;
    bool enabled, required;
  } rows[] = {{L"em repouso", Situation::kAway, L"Construtora Ip\u00ea", true, false},
              {L"sob o ponteiro", Situation::kOver, L"Construtora Ip\u00ea", true, false},
              {L"com o foco", Situation::kFocused, L"Construtora Ip\u00ea", true, false},
              {L"vazio", Situation::kAway, L"", true, false},
              {L"obrigat\u00f3rio", Situation::kAway, L"", true, true},
              {L"inativo", Situation::kAway, L"Construtora Ip\u00ea", false, false}};
  for (const auto& row : rows) {
    for (long theme = 0; theme < 3; ++theme) {
      const int x = look::kMargin + static_cast<int>(theme) * kStep;
      page.text(make_rect(x, page.y(), kWidth, 18),
                std::wstring(kThemes[theme]) + L", " + row.label, TextStyle::kSmall);
      page.picture(x, page.y() + 20,
                   page.snapshot(kProgId, kWidth, kHeight, row.situation,
                                 customers(theme, row.text, row.enabled, row.required)));
    }
    page.skip(kHeight + 32);
  }
}

void choices(IDispatch* combo) {
  put_property(combo, L"Style", Variant(1L));
  customers(2, L"Marcenaria Cedro")(combo);
}

void kinds(Page& page) {
  page.control(kProgId, make_rect(look::kMargin, page.y(), kWidth, kHeight),
               customers(0, L"Industrial Norte"));
  page.control(kProgId, make_rect(look::kMargin + kStep, page.y(), kWidth, kHeight), choices);
  page.skip(kHeight + 16);
}

void enlarged(Page& page) {
  constexpr int kScale = 4, kPart = 90;
  for (long theme = 0; theme < 2; ++theme)
    page.picture(
        look::kMargin + static_cast<int>(theme) * (kPart * kScale + 24), page.y(),
        page.snapshot(kProgId, kPart, kHeight, Situation::kAway, customers(theme * 2, L"Cedro")),
        kScale);
  page.skip(kHeight * kScale + 16);
}

}  // namespace

void build_us_combo_box_page(Page& page) {
  page.title(L"USComboBox", L"Campo com lista, que completa o que se digita");
  page.section(L"Temas e estados");
  themes(page);
  page.section(L"Para digitar e s\u00f3 para escolher");
  kinds(page);
  page.section(L"Ampliado quatro vezes");
  enlarged(page);
}

}  // namespace kestrelon::host
