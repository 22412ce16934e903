// USTextBox: formats, masks and states in three themes, on one baseline with a button and a check
// box.
#include "host/gallery/page.h"
#include "host/gallery/page_list.h"
#include "host/late_bound.h"

namespace kestrelon::host {
namespace {

constexpr wchar_t kProgId[] = L"Kestrelon2012.USTextBox";
constexpr int kWidth = 170, kHeight = 25, kStep = 190;

Prepare with(std::vector<std::pair<const wchar_t*, Variant>> properties) {
  return [properties](IDispatch* control) {
    for (const auto& [name, value] : properties) put_property(control, name, value);
  };
}

Prepare with_text(const wchar_t* text) {
  return with({{L"Text", Variant(text)}});
}

struct Sample {
  const wchar_t* label;
  Prepare prepare;
};

// Four samples a row, each under its name.
void samples(Page& page, const std::vector<Sample>& list) {
  constexpr int kColumns = 4;
  for (size_t i = 0; i < list.size(); ++i) {
    const int x = look::kMargin + static_cast<int>(i % kColumns) * kStep;
    page.text(make_rect(x, page.y(), kWidth, 14), list[i].label, TextStyle::kSmall);
    page.control(kProgId, make_rect(x, page.y() + 16, kWidth, kHeight), list[i].prepare);
    if (i % kColumns == kColumns - 1 || i + 1 == list.size()) page.skip(50);
  }
}

void formats(Page& page) {
  const Variant number(1L), currency(2L);
  samples(page,
          {{L"Texto", with_text(L"Maria da Conceição")},
           {L"Número", with({{L"FormatType", number}, {L"Text", Variant(L"1234567,5")}})},
           {L"Moeda", with({{L"FormatType", currency}, {L"Text", Variant(L"1234,56")}})},
           {L"Moeda negativa", with({{L"FormatType", currency}, {L"Text", Variant(L"-9,9")}})},
           {L"CPF", with({{L"MaskPreset", Variant(1L)}, {L"Text", Variant(L"52998224725")}})},
           {L"CNPJ", with({{L"MaskPreset", Variant(2L)}, {L"Text", Variant(L"12ABC34501DE35")}})},
           {L"Telefone", with({{L"MaskPreset", Variant(4L)}, {L"Text", Variant(L"11987654321")}})},
           {L"Data", with({{L"MaskPreset", Variant(6L)}, {L"Text", Variant(L"05032026")}})},
           {L"Máscara vazia", with({{L"Mask", Variant(L"##.###-##")}})},
           {L"Senha", with({{L"PasswordChar", Variant(L"*")}, {L"Text", Variant(L"segredo")}})},
           {L"Obrigatório", with({{L"Required", Variant(true)}})},
           {L"Dica na caixa vazia", with({{L"PlaceHolder", Variant(L"Nome do cliente")}})},
           {L"Com botão", with({{L"ButtonVisible", Variant(true)}, {L"Text", Variant(L"42")}})},
           {L"Com setas", with({{L"FormatType", number}, {L"SpinButtons", Variant(true)}})},
           {L"Com limpeza", with({{L"ClearButton", Variant(true)}, {L"Text", Variant(L"abc")}})},
           {L"Desabilitado",
            with({{L"Text", Variant(L"Somente leitura")}, {L"Enabled", Variant(false)}})}});
}

// Text of the three controls stands on one line.
void baseline(Page& page) {
  const int y = page.y();
  page.control(kProgId, make_rect(look::kMargin, y, 120, kHeight), with_text(L"Linha de base"));
  page.control(L"Kestrelon2012.USButton", make_rect(look::kMargin + 128, y, 100, kHeight),
               with({{L"Caption", Variant(L"Linha de base")}}));
  page.control(L"Kestrelon2012.USCheckBox", make_rect(look::kMargin + 236, y, 130, kHeight),
               with({{L"Caption", Variant(L"Linha de base")}}));
  page.skip(kHeight + 10);
}

void enlarged(Page& page) {
  for (long theme = 0; theme < 3; ++theme) {
    const Prepare prepare = [theme](IDispatch* control) {
      put_property(control, L"ButtonVisible", Variant(true));
      put_property(control, L"Theme", Variant(theme));
      put_property(control, L"Text", Variant(L"Pedido"));
    };
    const Situation situation = theme == 1 ? Situation::kOver : Situation::kAway;
    page.picture(look::kMargin + static_cast<int>(theme) * 292, page.y(),
                 page.snapshot(kProgId, 70, kHeight, situation, prepare), 4);
  }
  page.skip(4 * kHeight + 8);
}

}  // namespace

void build_us_text_box_page(Page& page) {
  page.title(L"USTextBox", L"Caixa de texto com formatos, máscaras, botão e autocompletar.");
  page.section(L"Temas e estados");
  page.state_table(
      kProgId, 110, kHeight,
      {{L"Texto", with_text(L"Ação")},
       {L"Moeda", with({{L"FormatType", Variant(2L)}, {L"Text", Variant(L"1234,5")}})}});
  page.section(L"Formatos, máscaras e partes");
  formats(page);
  page.section(L"Na mesma linha de base que um botão e uma caixa de seleção");
  baseline(page);
  page.section(L"Ampliação de quatro vezes: Office Blue, Office Silver sob o ponteiro, Windows 8");
  enlarged(page);
}

}  // namespace kestrelon::host
