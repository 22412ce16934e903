// USTextBox: the field in which text, numbers, money, masks and dates are typed. Two edit windows
// of the system, of which one is shown, a button of ours and a drawn frame.
#pragma once

#include <memory>
#include <optional>

#include "controls/us_button/us_button.h"
#include "controls/us_text_box/c_text_events.h"
#include "controls/us_text_box/entry_box.h"
#include "controls/us_text_box/suggestion_list.h"
#include "controls/us_text_box/us_text_box_layout.h"
#include "frame/control_frame.h"
#include "frame/inner/inner_control.h"
#include "frame/private_timer.h"
#include "frame/tooltip.h"
#include "services/typing/entry_leaving.h"
#include "services/typing/suggestions.h"
#include "us_text_box_glue.h"

namespace kestrelon {

class USTextBox final : public USTextBoxGlue<USTextBox, ControlFrame>,
                        private EntryBox::Owner,
                        private SuggestionOwner {
 public:
  USTextBox();

  // In the order of the property bag.
  Property<bool> Locked{*this, L"Locked", false, &USTextBox::apply_locked};
  Property<bool> AllowNegativeNumber{*this, L"AllowNegativeNumber", true, &USTextBox::apply_rules};
  Property<ENUM_THEME> Theme{*this, L"Theme", Windows_8, &USTextBox::apply_theme};
  Property<OLE_COLOR> ToolTipBackColor{*this, L"ToolTipBackColor", 0xD7FCFE, &USTextBox::tip};
  Property<OLE_COLOR> ToolTipForeColor{*this, L"ToolTipForeColor", 0, &USTextBox::tip};
  Property<ENUM_TOOLTIP_ICON> ToolTipIcon{*this, L"ToolTipIcon", No_Icon, &USTextBox::tip};
  Property<bool> ToolTipCentered{*this, L"ToolTipCentered", false, &USTextBox::tip};
  Property<long> ToolTipVisibleTime{*this, L"ToolTipVisibleTime", 5000, &USTextBox::tip};
  Property<long> ToolDelayTime{*this, L"ToolDelayTime", 500, &USTextBox::tip};
  Property<ENUM_TOOLTIP_STYLE> ToolTipStyle{*this, L"ToolTipStyle", ToolTip_Balloon,
                                            &USTextBox::tip};
  Property<std::wstring> ToolTipTitle{*this, L"ToolTipTitle", L"", &USTextBox::tip};
  Property<std::wstring> ToolTipDescription{*this, L"ToolTipDescription", L"", &USTextBox::tip};
  Property<ENUM_TEXT_ALIGNMENT> Alignment{*this, L"Alignment", Text_At_Left,
                                          &USTextBox::apply_form};
  Property<bool> AutoFormatCurrency{*this, L"AutoFormatCurrency", false};
  Property<bool> AutoFormatDate{*this, L"AutoFormatDate", false};
  Property<bool> AutoSelect{*this, L"AutoSelect", false};
  Property<OLE_COLOR> BackColorDisabled{*this, L"BackColorDisabled", 0x8000000F,
                                        &USTextBox::repaint};
  Property<OLE_COLOR> BackColorOver{*this, L"BackColorOver", 0xD7FCFE, &USTextBox::repaint};
  Property<OLE_COLOR> BorderColor{*this, L"BorderColor", 0xDBC9BA, &USTextBox::repaint};
  Property<OLE_COLOR> BorderColorDisabled{*this, L"BorderColorDisabled", 0xC8D0D4,
                                          &USTextBox::repaint};
  Property<OLE_COLOR> BorderColorOver{*this, L"BorderColorOver", 0x80C0FF, &USTextBox::repaint};
  Property<std::wstring> DataField{*this, L"DataField", L""};
  Property<short> Decimals{*this, L"Decimals", 2, &USTextBox::apply_look};
  Property<std::wstring> DecimalSimbol{*this, L"DecimalSimbol", L",", &USTextBox::apply_look};
  Property<bool> Enabled{*this, L"Enabled", true, &USTextBox::enabled_changed};
  OptionalFontProperty FontDisabled{*this, L"FontDisabled", &USTextBox::relayout};
  OptionalFontProperty FontOver{*this, L"FontOver", &USTextBox::relayout};
  Property<OLE_COLOR> ForeColorDisabled{*this, L"ForeColorDisabled", 0xC8D0D4, &USTextBox::repaint};
  Property<OLE_COLOR> ForeColorOver{*this, L"ForeColorOver", 0x000080, &USTextBox::repaint};
  Property<ENUM_FORMAT_TYPE> FormatType{*this, L"FormatType", To_Text};
  Property<std::wstring> FormatDate{*this, L"FormatDate", L"dd/mm/yyyy"};
  Property<std::wstring> Mask{*this, L"Mask", L""};
  Property<ENUM_MASK_TYPE> MaskType{*this, L"MaskType", Text_And_Number, &USTextBox::apply_rules};
  Property<long> MaxLength{*this, L"MaxLength", 0, &USTextBox::apply_rules};
  Property<bool> Multiline{*this, L"Multiline", false, &USTextBox::multiline_changed};
  Property<std::wstring> PasswordChar{*this, L"PasswordChar", L"", &USTextBox::apply_password};
  Property<bool> Required{*this, L"Required", false, &USTextBox::repaint};
  Property<OLE_COLOR> RequiredColor{*this, L"RequiredColor", 0x0061FF, &USTextBox::repaint};
  Property<long> SelLength{*this, L"SelLength", 0};
  Property<long> SelStart{*this, L"SelStart", 0};
  Property<ENUM_TEXT_CASE> TextCase{*this, L"TextCase", Case_Normal, &USTextBox::apply_rules};
  Property<std::wstring> Value{*this, L"Value", L""};
  Property<std::wstring> AditionalTag1{*this, L"AditionalTag1", L""};
  Property<std::wstring> AditionalTag2{*this, L"AditionalTag2", L""};
  Property<std::wstring> AditionalTag3{*this, L"AditionalTag3", L""};
  Property<std::wstring> AditionalTag4{*this, L"AditionalTag4", L""};
  Property<std::wstring> CoinIntSingularText{*this, L"CoinIntSingularText", L"real"};
  Property<std::wstring> CoinIntPluralText{*this, L"CoinIntPluralText", L"reais"};
  Property<std::wstring> CoinDecSingularText{*this, L"CoinDecSingularText", L"centavo"};
  Property<std::wstring> CoinDecPluralText{*this, L"CoinDecPluralText", L"centavos"};
  Property<bool> NumberOnly{*this, L"NumberOnly", false, &USTextBox::apply_rules};
  Property<std::wstring> CurrencyChar{*this, L"CurrencyChar", L"R$", &USTextBox::apply_look};
  Property<bool> ButtonVisible{*this, L"ButtonVisible", false, &USTextBox::button_changed};
  Property<bool> ButtonEnabled{*this, L"ButtonEnabled", true, &USTextBox::button_changed};
  Property<std::wstring> ButtonCaption{*this, L"ButtonCaption", L"...", &USTextBox::button_changed};
  Property<OLE_COLOR> ButtonForeColor{*this, L"ButtonForeColor", 0xB75F31,
                                      &USTextBox::button_changed};
  Property<ENUM_PIC_ALIGNMENTS> ButtonPictureAlignment{
      *this, L"ButtonPictureAlignment", Picture_LeftOfCaption, &USTextBox::button_changed};
  FontProperty ButtonFont{*this, L"ButtonFont", &USTextBox::button_changed};
  PictureProperty ButtonPicture{*this, L"ButtonPicture", &USTextBox::button_pictures_changed};
  PictureProperty ButtonPictureOver{*this, L"ButtonPictureOver",
                                    &USTextBox::button_pictures_changed};
  Property<ENUM_PICTURE_SIZES> ButtonPictureSize{*this, L"ButtonPictureSize", Picture_Normal,
                                                 &USTextBox::button_pictures_changed};
  Property<long> ButtonPictureSizeX{*this, L"ButtonPictureSizeX", 16,
                                    &USTextBox::button_pictures_changed};
  Property<long> ButtonPictureSizeY{*this, L"ButtonPictureSizeY", 16,
                                    &USTextBox::button_pictures_changed};
  Property<ENUM_GRADIENT_COLORS> ButtonGradientColors{*this, L"ButtonGradientColors", Two_Colors,
                                                      &USTextBox::button_changed};
  Property<bool> ButtonHandPointer{*this, L"ButtonHandPointer", true, &USTextBox::button_changed};
  FontProperty Font{*this, L"Font", &USTextBox::relayout};
  Property<OLE_COLOR> BackColor{*this, L"BackColor", 0x80000005, &USTextBox::repaint};
  Property<OLE_COLOR> ForeColor{*this, L"ForeColor", 0x80000008, &USTextBox::repaint};
  Property<ENUM_TEXT_SCROLLBARS> ScrollBars{*this, L"ScrollBars", Bars_None,
                                            &USTextBox::apply_form};
  Property<bool> AutoCompleteAnyWord{*this, L"AutoCompleteAnyWord", false};
  Property<bool> AutoCompleteDropDown{*this, L"AutoCompleteDropDown", false};
  Property<bool> AutoCompleteIgnoreAccents{*this, L"AutoCompleteIgnoreAccents", false};
  Property<bool> ClearButton{*this, L"ClearButton", false, &USTextBox::relayout};
  Property<OLE_COLOR> ErrorColor{*this, L"ErrorColor", 0x0000C0, &USTextBox::repaint};
  Property<std::wstring> GroupSimbol{*this, L"GroupSimbol", L".", &USTextBox::apply_look};
  Property<ENUM_MASK_PRESET> MaskPreset{*this, L"MaskPreset", Preset_None};
  Property<std::wstring> MaxValue{*this, L"MaxValue", L""};
  Property<std::wstring> MinValue{*this, L"MinValue", L""};
  Property<bool> MoneyFromRight{*this, L"MoneyFromRight", false, &USTextBox::apply_rules};
  Property<std::wstring> PlaceHolder{*this, L"PlaceHolder", L"", &USTextBox::repaint};
  Property<bool> SpinButtons{*this, L"SpinButtons", false, &USTextBox::relayout};
  Property<bool> ValidateOnExit{*this, L"ValidateOnExit", false};

  // Members of the interface that are more than a stored value.
  void refresh();
  void disable_refresh() { redraw_enabled_ = false; }
  std::wstring text() { return box_.text(); }
  void set_text(const std::wstring& text);
  std::wstring value() { return box_.text(); }
  void set_value(const std::wstring& text) { set_text(text); }
  void set_format_type(ENUM_FORMAT_TYPE type);
  void set_mask(const std::wstring& pattern);
  void set_mask_preset(ENUM_MASK_PRESET preset);
  long sel_start();
  void set_sel_start(long start);
  long sel_length();
  void set_sel_length(long length);
  std::wstring sel_text();
  void set_sel_text(const std::wstring& text);
  bool is_valid_email();
  bool is_valid_email_ex();
  double text_cdbl();
  long text_len_ex();
  Variant text_split(const std::wstring& delimiter);
  std::wstring text_field(long column);
  long numbers_of();
  std::wstring return_numbers_only();
  long lines_of();
  std::wstring text_extenso();
  Variant max_value() { return bound(MaxValue.get()); }
  void set_max_value(const VARIANT& value) { MaxValue.put(bound_text(value)); }
  Variant min_value() { return bound(MinValue.get()); }
  void set_min_value(const VARIANT& value) { MinValue.put(bound_text(value)); }
  void create_tool_tip();
  void destroy_tool_tip();
  void append_text_file(const std::wstring& name);
  void save_text_file(const std::wstring& name);
  void load_text_file(const std::wstring& name);
  void auto_complete_ex(long flags);
  void initialize_auto_complete(IDispatch* connection, const std::wstring& table,
                                const std::wstring& field);
  void finalize_auto_complete();
  void auto_complete_list(const VARIANT& items);
  void clear_control();

 private:
  // us_text_box.cpp
  void take_ambient_defaults() override;
  void init_properties() override;
  void properties_read() override;
  void window_created() override;
  void resized() override;
  void rescaled() override { relayout(); }
  void shown() override;
  void hidden() override { suggestions_.close(); }
  void terminate() override;
  FontProperty* font_property() override { return &Font; }
  const Property<bool>* enabled_property() const override { return &Enabled; }
  void describe(AccessibleItem& item) const override;
  void apply_theme();
  void apply_locked();
  void apply_password();
  void apply_form();
  void enabled_changed();
  void tip();

  // us_text_box_rules.cpp
  EntrySettings settings() const;
  LeavingRules leaving_rules() const;
  void apply_rules();
  void apply_look();
  void multiline_changed();
  void keep_selection();
  static Variant bound(const std::wstring& text);
  static std::wstring bound_text(const VARIANT& value);

  // us_text_box_input.cpp
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override { raise_click(); }
  void double_click() override { raise_dbl_click(); }
  void key_down(short& key, short& shift) override;
  void key_press(short& character) override { raise_key_press(character); }
  void key_up(short& key, short& shift) override { raise_key_up(key, shift); }
  bool wants_key(int key, short shift) const override;
  bool wants_characters() const override { return true; }
  HWND focus_target() override { return box_.window().hwnd(); }
  void got_focus() override;
  void lost_focus() override;
  bool takes_drops() const override { return user_mode(); }
  void drag(Drag& drag) override;
  void entry_changed() override;
  bool entry_spin(int step) override;
  bool entry_key(WPARAM key) override;
  void enter_hover();
  void look_after_hover();
  void part_pressed(TextBoxPart part);
  void repeat_spin(int step);
  void leave();
  void select_all_soon();
  void return_soon();
  void look_again_after_change();
  void drop_text(const std::wstring& text, POINT point);

  // us_text_box_paint.cpp
  enum class Look { kNormal, kOver, kDisabled };
  Look look() const;
  bool lacks_required() const;
  COLORREF back_color() const;
  COLORREF fore_color() const;
  COLORREF border_color() const;
  HFONT current_font();
  void repaint();
  void relayout();
  void lay_out();
  void draw_parts();
  bool entry_hint(HDC dc, const RECT& area) override;

  // us_text_box_button.cpp
  void button_changed();
  void button_pictures_changed();
  void make_button();
  void push_button();
  void push_button_pictures();
  void button_event(DISPID event);

  // us_text_box_complete.cpp
  void complete();
  void suggest();
  void suggestion_taken(const std::wstring& text) override;

  EntryBox box_{*this, *this};
  std::unique_ptr<InnerControl<USButton>> botao_;
  CTooltip tip_;
  cTextEvents text_events_;
  Suggestions values_;
  SuggestionList suggestions_{*this};
  TextBoxPlaces places_;
  PrivateTimer hover_watch_, spin_watch_, soon_;
  std::optional<Amount> kept_amount_;  // more places than `kept_text_` shows
  std::wstring kept_text_;
  bool over_ = false;
  bool was_empty_ = true, lacked_required_ = false, showed_failure_ = false;  // what shows
  bool spin_repeats_ = false;
  bool scanned_ = false;            // the values are those of the records
  bool failed_ = false;             // the text was refused when the box was left
  bool by_code_ = false;            // the change was made by the program
  bool select_on_release_ = false;  // focus came by a press
  bool redraw_enabled_ = false;
  bool leaving_ = false;
};

}  // namespace kestrelon
