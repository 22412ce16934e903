// The builders of the pages, one file each.
#pragma once

namespace kestrelon::host {

class Page;

void build_order_entry_page(Page& page);
void build_us_alpha_image_page(Page& page);
void build_us_button_page(Page& page);
void build_images_page(Page& page);
void build_image_list_page(Page& page);
void build_animated_image_page(Page& page);
void build_us_check_box_page(Page& page);
void build_us_list_box_page(Page& page);
void build_us_combo_box_page(Page& page);
void build_us_label_page(Page& page);
void build_us_progress_bar_page(Page& page);
void build_us_group_box_page(Page& page);
void build_us_picture_lcd_page(Page& page);
void build_us_flex_grid_page(Page& page);
void build_us_scroll_bar_page(Page& page);
void build_us_text_box_page(Page& page);
void build_us_option_button_page(Page& page);
void build_us_calendar_page(Page& page);
void build_us_tree_view_page(Page& page);
void build_us_tool_bar_page(Page& page);
void build_message_box_page(Page& page);
void build_us_status_bar_page(Page& page);
void build_us_ribbon_page(Page& page);
void build_us_ribbon_states_page(Page& page);
void build_us_form_page(Page& page);
void build_us_tab_page(Page& page);
void build_us_menu_page(Page& page);

}  // namespace kestrelon::host
