#include "server/class_table.h"

#include "base/resource_ids.h"
#include "chrome/us_form/us_form.h"
#include "chrome/us_menu/us_menu.h"
#include "chrome/us_ribbon/us_ribbon.h"
#include "chrome/us_status_bar/us_status_bar.h"
#include "chrome/us_tab/us_tab.h"
#include "chrome/us_tool_bar/us_tool_bar.h"
#include "controls/us_alpha_image/us_alpha_image.h"
#include "controls/us_animated_image/us_animated_image.h"
#include "controls/us_button/us_button.h"
#include "controls/us_calendar/us_calendar.h"
#include "controls/us_check_box/us_check_box.h"
#include "controls/us_combo_box/us_combo_box.h"
#include "controls/us_flex_grid/us_flex_grid.h"
#include "controls/us_group_box/us_group_box.h"
#include "controls/us_image_list/us_image_list.h"
#include "controls/us_label/us_label.h"
#include "controls/us_list_box/us_list_box.h"
#include "controls/us_option_button/us_option_button.h"
#include "controls/us_picture_lcd/us_picture_lcd.h"
#include "controls/us_progress_bar/us_progress_bar.h"
#include "controls/us_scroll_bar/us_scroll_bar.h"
#include "controls/us_text_box/us_text_box.h"
#include "controls/us_tree_view/us_tree_view.h"
#include "frame/pages/theme_page.h"
#include "imaging/c32bpp_dib/image_object_win.h"
#include "imaging/image_list/image_lists_object_win.h"
#include "services/ajax/kn_ajax_win.h"
#include "services/kn/kn_win.h"
#include "services/kn_tooltip/kn_tooltip_win.h"
#include "services/msgbox/kn_msgbox_win.h"
#include "services/mysql/kn_mysql_win.h"
#include "services/nt_services/kn_ntservices_win.h"
#include "services/registry/kn_registry_win.h"

namespace kestrelon {
namespace {

template <class Class>
AutomationObject* create() {
  return new Class;
}

template <class Class>
ServerClass control(const wchar_t* description, int toolbox_bitmap,
                    DWORD misc_status = ControlTraits{}.misc_status) {
  return {Class::static_class_info(),
          ClassKind::kControl,
          description,
          toolbox_bitmap,
          misc_status,
          create<Class>};
}

template <class Class>
ServerClass service(const wchar_t* description) {
  return {Class::static_class_info(), ClassKind::kService, description, 0, 0, create<Class>};
}

template <class Class>
ServerClass page(const wchar_t* description) {
  return {Class::static_class_info(), ClassKind::kPage, description, 0, 0, create<Class>};
}

}  // namespace

std::span<const ServerClass> server_classes() {
  static const ServerClass kClasses[] = {
      control<USCheckBox>(L"Kestrelon: caixa de seleção com temas", IDB_TOOLBOX_USCHECKBOX),
      control<USOptionButton>(L"Kestrelon: botão de opção", IDB_TOOLBOX_USOPTIONBUTTON),
      control<USButton>(L"Kestrelon: botão com temas, imagens e dica", IDB_TOOLBOX_USBUTTON,
                        ControlTraits{}.misc_status | OLEMISC_ACTSLIKEBUTTON),
      control<USScrollBar>(L"Kestrelon: barra de rolagem desenhada com imagens",
                           IDB_TOOLBOX_USSCROLLBAR),
      control<USAlphaImage>(L"Kestrelon: imagem com transparência", IDB_TOOLBOX_USALPHAIMAGE),
      control<USAnimatedImage>(L"Kestrelon: imagem animada (GIF)", IDB_TOOLBOX_USANIMATEDIMAGE,
                               ControlTraits{}.misc_status | OLEMISC_NOUIACTIVATE),
      service<KN>(L"Kestrelon: funções utilitárias"),
      service<KN_MYSQL>(L"Kestrelon: cópia e manutenção de bancos MySQL"),
      service<KN_AJAX>(L"Kestrelon: requisições HTTP"),
      service<KN_REGISTRY>(L"Kestrelon: registro do Windows"),
      service<KN_TOOLTIP>(L"Kestrelon: dicas do sistema sob demanda"),
      service<ImageObject>(L"Kestrelon: imagem de 32 bits com transparência"),
      service<ImageListsObject>(L"Kestrelon: coleção de listas de imagens"),
      control<USImageList>(L"Kestrelon: listas de imagens para os controles de um formulário",
                           IDB_TOOLBOX_USIMAGELIST,
                           ControlTraits{}.misc_status | OLEMISC_INVISIBLEATRUNTIME),
      page<ThemePage>(L"Kestrelon: página de tema e cores"),
      control<USCalendar>(L"Kestrelon: calendário e campo de data com feriados e dias úteis",
                          IDB_TOOLBOX_USCALENDAR),
      control<USListBox>(L"Kestrelon: lista com imagens, caixas de marcação e pesquisa",
                         IDB_TOOLBOX_USLISTBOX),
      control<USTreeView>(L"Kestrelon: árvore com imagens, caixas de marcação, edição e arraste",
                          IDB_TOOLBOX_USTREEVIEW),
      control<USTextBox>(L"Kestrelon: caixa de texto com formatos e máscara",
                         IDB_TOOLBOX_USTEXTBOX),
      control<USToolBar>(L"Kestrelon: barra de ferramentas", IDB_TOOLBOX_USTOOLBAR),
      control<USLabel>(L"Kestrelon: texto, título ou link de formulário", IDB_TOOLBOX_USLABEL,
                       ControlTraits{}.misc_status | OLEMISC_ACTSLIKELABEL | OLEMISC_NOUIACTIVATE),
      control<USFlexGrid>(L"Kestrelon: grade de dados", IDB_TOOLBOX_USFLEXGRID),
      control<USProgressBar>(L"Kestrelon: barra de progresso com texto e tempo restante",
                             IDB_TOOLBOX_USPROGRESSBAR,
                             ControlTraits{}.misc_status | OLEMISC_NOUIACTIVATE),
      control<USPictureLCD>(L"Kestrelon: painel com dígitos grandes, relógio e contagem regressiva",
                            IDB_TOOLBOX_USPICTURELCD,
                            ControlTraits{}.misc_status | OLEMISC_NOUIACTIVATE),
      service<KN_MSGBOX>(L"Kestrelon: caixa de mensagem com temas"),
      control<USStatusBar>(L"Kestrelon: barra de status com painéis, relógio e teclas",
                           IDB_TOOLBOX_USSTATUSBAR,
                           ControlTraits{}.misc_status | OLEMISC_NOUIACTIVATE),
      control<USComboBox>(L"Kestrelon: campo com lista, que completa o que se digita",
                          IDB_TOOLBOX_USCOMBOBOX),
      control<USRibbon>(L"Kestrelon: faixa de opções com guias, categorias e botões",
                        IDB_TOOLBOX_USRIBBON),
      control<USForm>(L"Kestrelon: janela com aparência própria", IDB_TOOLBOX_USFORM),
      control<USTab>(L"Kestrelon: abas que contêm outros controles", IDB_TOOLBOX_USTAB,
                     ControlTraits{}.misc_status | OLEMISC_SIMPLEFRAME),
      service<KN_NTSERVICES>(L"Kestrelon: serviços do Windows"),
      control<USMenu>(L"Kestrelon: menu com imagens e temas", IDB_TOOLBOX_USMENU,
                      ControlTraits{}.misc_status | OLEMISC_ALIGNABLE),
      control<USGroupBox>(L"Kestrelon: moldura com título para outros controles",
                          IDB_TOOLBOX_USGROUPBOX,
                          ControlTraits{}.misc_status | OLEMISC_SIMPLEFRAME),
  };
  return kClasses;
}

const ServerClass* find_class(const CLSID& clsid) {
  for (const ServerClass& entry : server_classes())
    if (entry.info.clsid == clsid) return &entry;
  return nullptr;
}

}  // namespace kestrelon
