#include "host/gallery/page_list.h"

#include "host/gallery/page.h"

namespace kestrelon::host {

const std::vector<PageEntry>& pages() {
  static const std::vector<PageEntry> list = {
      {L"USFlexGrid", L"Grade", build_us_flex_grid_page},
      {L"USButton", L"Controles básicos", build_us_button_page},
      {L"USCheckBox", L"Controles básicos", build_us_check_box_page},
      {L"USOptionButton", L"Controles básicos", build_us_option_button_page},
      {L"USScrollBar", L"Controles básicos", build_us_scroll_bar_page},
      {L"USCalendar", L"Listas", build_us_calendar_page},
      {L"USTreeView", L"Listas", build_us_tree_view_page},
      {L"USTextBox", L"Controles básicos", build_us_text_box_page},
      {L"USLabel", L"Controles básicos", build_us_label_page},
      {L"USProgressBar", L"Controles básicos", build_us_progress_bar_page},
      {L"USGroupBox", L"Controles básicos", build_us_group_box_page},
      {L"USPictureLCD", L"Controles básicos", build_us_picture_lcd_page},
      {L"Pedido de venda", L"Controles básicos", build_order_entry_page},
      {L"USListBox", L"Listas", build_us_list_box_page},
      {L"USComboBox", L"Listas", build_us_combo_box_page},
      {L"c32bppDIB", L"Imagens", build_images_page},
      {L"USAlphaImage", L"Imagens", build_us_alpha_image_page},
      {L"USAnimatedImage", L"Imagens", build_animated_image_page},
      {L"USImageList", L"Imagens", build_image_list_page},
      {L"USToolBar", L"Janelas", build_us_tool_bar_page},
      {L"KN_MSGBOX", L"Janelas", build_message_box_page},
      {L"USStatusBar", L"Janelas", build_us_status_bar_page},
      {L"USRibbon", L"Janelas", build_us_ribbon_page},
      {L"USRibbon estados", L"Janelas", build_us_ribbon_states_page},
      {L"USForm", L"Janelas", build_us_form_page},
      {L"USTab", L"Janelas", build_us_tab_page},
      {L"USMenu", L"Janelas", build_us_menu_page},
  };
  return list;
}

}  // namespace kestrelon::host
