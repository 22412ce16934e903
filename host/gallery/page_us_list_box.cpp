// USListBox: three themes side by side in the states that differ, then check boxes, columns,
// headings and wrapped texts, one enlarged.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USListBox";
constexpr int kWidth = 190, kHeight = 132, kStep = 264;

void put_item(IDispatch* list, const wchar_t* name, long index, const Variant& value) {
  std::wstring member(name);
  LPOLESTR names = member.data();
  DISPID id = 0, put = DISPID_PROPERTYPUT;
  list->GetIDsOfNames(IID_NULL, &names, 1, 0, &id);
  VARIANT arguments[] = {value, Variant(index)};
  DISPPARAMS parameters{arguments, &put, 2, 1};
  list->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr);
}

void add(IDispatch* list, const wchar_t* lines) {
  call_method(list, L"AddItems", {Variant(std::wstring_view(lines))});
}

Prepare cities(long theme, bool enabled = true) {
  return [=](IDispatch* list) {
    put_property(list, L"Theme", Variant(theme));
    put_property(list, L"MultiSelect", Variant(1L));
    add(list,
        L"Bel\u00e9m\nBras\u00edlia\nCuritiba\nFlorian\u00f3polis\nFortaleza\nGoi\u00e2nia\n"
        L"Macei\u00f3\nManaus\nPorto Alegre\nRecife\nSalvador\nS\u00e3o Paulo");
    put_property(list, L"ListIndex", Variant(2L));
    put_item(list, L"Selected", 2, Variant(true));
    put_item(list, L"Selected", 4, Variant(true));
    put_item(list, L"ItemEnabled", 5, Variant(false));
    put_property(list, L"Enabled", Variant(enabled));
  };
}

constexpr const wchar_t* kThemes[] = {L"Office Blue", L"Office Silver", L"Windows 8"};

void themes(Page& page) {
  const struct {
    const wchar_t* label;
    Situation situation;
    bool enabled;
  } rows[] = {{L"com o foco", Situation::kFocused, true},
              {L"sem o foco, ponteiro no meio", Situation::kOver, true},
              {L"inativa", Situation::kAway, false}};
  for (const auto& row : rows) {
    for (long theme = 0; theme < 3; ++theme) {
      const int x = look::kMargin + static_cast<int>(theme) * kStep;
      page.text(make_rect(x, page.y(), kWidth, 18),
                std::wstring(kThemes[theme]) + L", " + row.label, TextStyle::kSmall);
      page.picture(
          x, page.y() + 20,
          page.snapshot(kProgId, kWidth, kHeight, row.situation, cities(theme, row.enabled)));
    }
    page.skip(kHeight + 30);
  }
}

void groups(IDispatch* list) {
  put_property(list, L"CheckBoxes", Variant(true));
  add(list, L"Vendas\nEmitir pedidos\nConceder descontos\nEstoque\nAjustar saldos");
  for (const long heading : {0L, 3L}) put_item(list, L"ItemHeader", heading, Variant(true));
  for (const long checked : {1L, 4L}) put_item(list, L"ItemChecked", checked, Variant(true));
  put_item(list, L"ItemBold", 4, Variant(true));
  put_property(list, L"ListIndex", Variant(1L));
}

void columns(IDispatch* list) {
  put_property(list, L"ColumnWidths", Variant(L"46;70;60"));
  add(list,
      L"1001\tParafuso\t0,35\n1002\tPorca\t0,22\n1003\tArruela lisa grande\t0,08\n"
      L"1004\tRebite\t0,15");
  put_item(list, L"ItemForeColor", 2, Variant(0x2B2BD9L));
  put_item(list, L"ItemBackColor", 3, Variant(0xD7FCFEL));
  put_property(list, L"ListIndex", Variant(0L));
}

void wrapped(IDispatch* list) {
  put_property(list, L"WordWrap", Variant(true));
  put_property(list, L"ShadowText", Variant(true));
  add(list,
      L"Entregar na portaria dos fundos, somente pela manh\u00e3.\nLigar antes.\n"
      L"Conferir a nota com o respons\u00e1vel pelo almoxarifado.");
  put_property(list, L"ListIndex", Variant(0L));
}

void kinds(Page& page) {
  const Prepare prepared[] = {groups, columns, wrapped};
  int x = look::kMargin;
  for (const Prepare& prepare : prepared) {
    page.control(kProgId, make_rect(x, page.y(), kWidth, 110), prepare);
    x += kStep;
  }
  page.skip(124);
}

void enlarged(Page& page) {
  constexpr int kScale = 4, kPart = 90;
  int x = look::kMargin;
  const Prepare prepared[] = {groups, cities(0)};
  for (const Prepare& prepare : prepared) {
    page.picture(x, page.y(), page.snapshot(kProgId, kPart, 60, Situation::kFocused, prepare),
                 kScale);
    x += kPart * kScale + 24;
  }
  page.skip(60 * kScale + 16);
}

}  // namespace

void build_us_list_box_page(Page& page) {
  page.title(L"USListBox", L"Lista com imagens, caixas, colunas, filtros e edi\u00e7\u00e3o");
  page.section(L"Temas e estados");
  themes(page);
  page.section(L"Grupos e caixas, colunas, v\u00e1rias linhas");
  kinds(page);
  page.section(L"Ampliado quatro vezes");
  enlarged(page);
}

}  // namespace kestrelon::host
