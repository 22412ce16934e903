// USAnimatedImage: plays an animated GIF over whatever lies behind it.
#pragma once

#include <optional>

#include "frame/async_read.h"
#include "frame/control_frame.h"
#include "imaging/gif_animation/gif_canvas.h"
#include "imaging/gif_animation/gif_layout.h"
#include "imaging/gif_animation/gif_player.h"
#include "us_animated_image_glue.h"

namespace kestrelon {

class USAnimatedImage final : public USAnimatedImageGlue<USAnimatedImage, ControlFrame> {
  /// The file as it was loaded, with the colours that were changed since.
  class FileProperty final : public PropertyBase {
   public:
    explicit FileProperty(USAnimatedImage& owner);
    Variant empty_value() const override;
    void load(const VARIANT& value) override;
    void reset() override { file.clear(); }
    Variant save() const override;
    bool is_default() const override { return file.frames().empty(); }
    GifFile file;
  };

  /// A number of loops that was set, be it 0, as opposed to the file's own.
  class LoopsProperty final : public PropertyBase {
   public:
    explicit LoopsProperty(USAnimatedImage& owner);
    Variant empty_value() const override;
    void load(const VARIANT& value) override;
    void reset() override { number.reset(); }
    Variant save() const override;
    bool is_default() const override { return !number; }
    void put(long value);
    std::optional<long> number;
  };

 public:
  USAnimatedImage();

 private:
  FileProperty gif_{*this};

 public:
  // In the order of the property bag.
  Property<long> MinFrameDelay{*this,
                               {L"MinFrameDelay", L"Delay"},
                               GifPlayer::kDefaultMinDelay,
                               &USAnimatedImage::timing_changed};
  Property<ENUM_SCALE_GIF_CONSTANTS> Stretch{*this, L"Stretch", Scale_Always,
                                             &USAnimatedImage::layout_changed};

 private:
  LoopsProperty loops_{*this};

 public:
  Property<ENUM_DELAY_MODE_CONSTANTS> DelayAnimation{
      *this, {L"DelayAnimation", L"DelayLoad"}, Delay_Startup};
  Property<ENUM_MIRROR_CONSTANTS> Mirrored{
      *this, {L"Mirrored", L"Mirror"}, None_Mirror, &USAnimatedImage::redraw};
  PictureProperty MouseIcon{*this, L"MouseIcon", &USAnimatedImage::apply_mouse_pointer};
  Property<MousePointerConstants> MousePointer{*this, L"MousePointer", vbDefault,
                                               &USAnimatedImage::apply_mouse_pointer};
  Property<bool> Enabled{*this, L"Enabled", true, &USAnimatedImage::apply_enabled};
  Property<long> OffsetX{*this, L"OffsetX", 0, &USAnimatedImage::redraw};
  Property<long> OffsetY{*this, L"OffsetY", 0, &USAnimatedImage::redraw};
  Property<OLE_COLOR> BackColor{
      *this, {L"BackColor", L"BkgFill"}, 0x8000000F, &USAnimatedImage::redraw};
  Property<ENUM_GIF_BACKSTYLE> BackStyle{
      *this, {L"BackStyle", L"BkgUsed"}, Transparent_Gif, &USAnimatedImage::redraw};
  Property<long> SteppedDelay{
      *this, {L"SteppedDelay", L"StepDelay"}, 0, &USAnimatedImage::timing_changed};

  // The rest of the interface.
  ComPtr<IPictureDisp> animated_gif() const;
  void set_animated_gif(IPictureDisp* picture);
  long current_frame() const { return player_.current(); }
  bool auto_size() const { return auto_size_; }
  void set_auto_size(bool value);
  long frame_count() const { return static_cast<long>(player_.frame_count()); }
  void set_frame_count(long) {}
  long actual_width() const { return gif_.file.width(); }
  long actual_height() const { return gif_.file.height(); }
  long loops() const { return loops_.number.value_or(gif_.file.loops()); }
  void set_loops(long value);
  long loops_remaining() const { return player_.loops_remaining(); }
  ENUM_ANIMATION_ACTIONS action() const;
  void set_action(ENUM_ANIMATION_ACTIONS action);
  bool load_animated_gif_file(const std::wstring& name);
  bool load_animated_gif_remote(const std::wstring& name);
  bool load_animated_gif_array(SAFEARRAY** bytes);
  bool get_palette(long frame, SAFEARRAY** entries);
  bool set_palette(long frame, SAFEARRAY** entries);
  void refresh();
  void cache_color_tables() { tables_.store(gif_.file); }
  void restore_color_tables(bool release);

 private:
  // Loading and playing (us_animated_image_play.cpp).
  bool load(std::vector<uint8_t> bytes);
  void show_file();
  void begin();
  void remote_read(HRESULT result, std::vector<uint8_t> bytes);
  void perform(GifPlayer::Outcome outcome, bool via_timer);
  void tick();
  bool may_run();
  void sync_timer();
  void timing_changed();
  void colours_changed();

  // Drawing.
  GifLook look();
  void redraw();
  void layout_changed();
  bool fit();

  void init_properties() override { redraw(); }
  void properties_read() override;
  void resized() override;
  void shown() override;
  void ambient_changed(DISPID id) override;
  void terminate() override;
  void mouse_down(short button, short shift, float x, float y) override;
  void mouse_move(short button, short shift, float x, float y) override;
  void mouse_up(short button, short shift, float x, float y) override;
  void click() override;
  void double_click() override;
  bool has_alpha() const override { return BackStyle.get() != Solid_Gif; }
  const Property<bool>* enabled_property() const override { return &Enabled; }
  void describe(AccessibleItem& item) const override { item.role = ROLE_SYSTEM_GRAPHIC; }
  long mouse_pointer() const override { return MousePointer.get(); }
  const PictureProperty* mouse_icon() const override { return &MouseIcon; }

  GifCanvas canvas_;
  GifPlayer player_;
  GifTableCache tables_;
  PrivateTimer timer_;
  AsyncRead remote_;
  unsigned loads_ = 0;  // so that a handler's load is told from the one it was called for
  bool auto_size_ = false;
  bool fitting_ = false;
  bool shown_once_ = false;

  std::optional<GifLook> drawn_;  // what the surface shows, unless the canvas has changed
  struct Press {
    short button = 0, shift = 0;
    float x = 0, y = 0;
  } press_;
};

}  // namespace kestrelon
