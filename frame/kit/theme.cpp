#include "frame/kit/theme.h"

namespace kestrelon::theme {
namespace {

constexpr ThemeEntry kButtonEntries[] = {
    {L"GradientColors", {1, 1, 0}},
    {L"ButtonShape", {0, 0, 3}},
    {L"ForeColor", {0x000000, 0x000000, 0x000000}},
    {L"BorderColor", {0xE2A981, 0x808080, 0xDBC9BA}},
    {L"BorderColorOver", {0x78A8C1, 0x78A8C1, 0xB17F3C}},
    {L"BorderColorDown", {0x78A8C1, 0x78A8C1, 0xB17F3C}},
    {L"GradientColor1", {0xFFEFE3, 0xFFFFFF, 0xFFFBF7}},
    {L"GradientColor2", {0xFFE3CE, 0xE0E0E0, 0xF6EAE0}},
    {L"GradientColor3", {0xFFD1AE, 0xC0C0C0, 0xDBC9BA}},
    {L"GradientColor4", {0xFFDABE, 0xC0C0C0, 0xF6E9DF}},
    {L"GradientColorDown1", {0xA4D6FF, 0xA4D6FF, 0xFBF0DD}},
    {L"GradientColorDown2", {0x79C0FF, 0x79C0FF, 0xF7E8CA}},
    {L"GradientColorDown3", {0x42AEFE, 0x42AEFE, 0xE7C584}},
    {L"GradientColorDown4", {0x70D8FE, 0x70D8FE, 0xDEB870}},
    {L"GradientColorOver1", {0xDBFDFF, 0xDBFDFF, 0xFDF5E8}},
    {L"GradientColorOver2", {0xBBF2FF, 0xBBF2FF, 0xFCF1DC}},
    {L"GradientColorOver3", {0x49D3FF, 0x49D3FF, 0xFAE1B4}},
    {L"GradientColorOver4", {0x92E6FF, 0x92E6FF, 0xF6DBAB}},
};

constexpr ThemeEntry kGroupBoxEntries[] = {
    {L"ForeColor", {0xB75F31, 0x917069, 0x9C321F}},
    {L"GradientColor1", {0xFCEDE1, 0xF5EFEC, 0xFEF9F4}},
    {L"GradientColor2", {0xFFFFFF, 0xE7DCD6, 0xF1F0EC}},
    {L"BorderColor", {0xE2A981, 0xBEBEBE, 0xDBC9BA}},
    {L"GradientHeader1", {0xFFEADA, 0xF5EFEC, 0xFEF9F4}},
    {L"GradientHeader2", {0xFFD7B8, 0xDDD4D0, 0xF1F0EC}},
};

constexpr ThemeEntry kProgressBarEntries[] = {
    {L"Color", {0xC56A31, 0x76AE83, 0x22C203}},
    {L"ForeColor1", {0x000000, 0x000000, 0xC56A31}},
    {L"ForeColor2", {0xFFFFFF, 0xFFFFFF, 0xFFFFFF}},
};

constexpr ThemeEntry kPictureLcdEntries[] = {
    {L"lblCaption(0).ForeColor", {0xB75F31, 0x000000, 0x3B3B3B}},
    {L"lblCaption(1).ForeColor", {0xB75F31, 0x917069, 0xB75F31}},
    {L"GradientColor1", {0xFDEEE3, 0xF8F4F1, 0xF9F9F9}},
    {L"GradientColor2", {0xF7DECA, 0xE7DCD6, 0xFFFFFF}},
};

constexpr ThemeEntry kTextBoxEntries[] = {
    {L"BorderColor", {0xF2CEB3, 0xBEBEBE, 0xDBC9BA}},
};

constexpr ThemeEntry kComboBoxEntries[] = {
    {L"BorderColor", {0xF2CEB3, 0xBEBEBE, 0xDBC9BA}},
    {L"BackColor", {0xFFFFFF, 0xFFFFFF, 0xFFFFFF}},
    {L"GradientColor1", {0xFEF9F4, 0xF8F4F1, 0xFEF9F4}},
    {L"GradientColor2", {0xFFEADA, 0xE7DCD6, 0xF5E7DC}},
    {L"HighLightColorText", {0x004080, 0x004080, 0x004080}},
    {L"ForeColor", {0xC56A31, 0xC56A31, 0xC56A31}},
    {L"SelectListBorderColor", {0xE7A665, 0xE7A665, 0xE7A665}},
    {L"SelectListColor", {0xFDF4E2, 0xFDF4E2, 0xFDF4E2}},
};

constexpr ThemeEntry kListBoxEntries[] = {
    {L"BackNormal", {0x80000005, 0x80000005, 0x80000005}},
    {L"BackSelected", {0xC0FFFF, 0xC0FFFF, 0xC0FFFF}},
    {L"ForeColorSelected", {0x004080, 0x004080, 0x004080}},
    {L"BorderColor", {0xF2CEB3, 0xBEBEBE, 0xDBC9BA}},
    {L"SelectedListColor1", {0xFDE6CF, 0xE0E0E0, 0xFDE6CF}},
    {L"SelectedListColor2", {0xFDE6CF, 0xE0E0E0, 0xFDE6CF}},
    {L"SelectedListBorderColor", {0xE7A665, 0x404040, 0xE7A665}},
    {L"ShadowColorText", {0x80000015, 0x80000015, 0x80000015}},
};

constexpr ThemeEntry kTreeViewEntries[] = {
    {L"BorderColor", {0xF2CEB3, 0xBEBEBE, 0xDBC9BA}},
    {L"FocusRectColor", {0x004080, 0x004080, 0xE7A665}},
    {L"BackColorSelected1", {0xFEF9F4, 0xF8F4F1, 0xFDF4E2}},
    {L"BackColorSelected2", {0xFFEADA, 0xE7DCD6, 0xFDF4E2}},
};

constexpr ThemeEntry kToolBarEntries[] = {
    {L"GripperColor", {0xF7DECA, 0xE7DCD6, 0xF1F0EC}},
    {L"GradientColorOverRight1", {0xFDEEE3, 0xF8F4F1, 0xFEF9F4}},
    {L"GradientColorOverRight2", {0xF7DECA, 0xE7DCD6, 0xF1F0EC}},
    {L"GradientColor1", {0xFDEEE3, 0xF8F4F1, 0xFEF9F4}},
    {L"GradientColor2", {0xF7DECA, 0xE7DCD6, 0xF1F0EC}},
    {L"RightColor1", {0xFDEEE3, 0xF8F4F1, 0xFEF9F4}},
    {L"RightColor2", {0xF7DECA, 0xE7DCD6, 0xF1F0EC}},
    {L"BackColor", {0xE2A981, 0xBEBEBE, 0xDBC9BA}},
};

constexpr ThemeEntry kFlexGridEntries[] = {
    {L"BorderColor", {0xF2CEB3, 0xBEBEBE, 0xDBC9BA}},
    {L"BackColorSelected1", {0xFEF9F4, 0xF8F4F1, 0xFDF4E2}},
    {L"BackColorSelected2", {0xFFEADA, 0xE7DCD6, 0xFDF4E2}},
    {L"BackColorEvenRows", {0xFEF9F4, 0xF9F9F9, 0xF9F9F9}},
    {L"ForeColorHeader", {0xB75F31, 0x917069, 0x917069}},
    {L"ForeColorHeaderOver", {0xB75F31, 0x917069, 0x917069}},
    {L"HeaderGradientColor1", {0xFEF9F4, 0xF8F4F1, 0xFDF7F2}},
    {L"HeaderGradientColor2", {0xFFEADA, 0xE7DCD6, 0xF9F3EF}},
    {L"CaptionGradientColor1", {0xFEF9F4, 0xF8F4F1, 0xFDF7F2}},
    {L"CaptionGradientColor2", {0xFFEADA, 0xE7DCD6, 0xF9F3EF}},
    {L"GridColor", {0xF7DECA, 0xE7DCD6, 0xF7EADF}},
    {L"ProgressBarColor1", {0xFFFFFF, 0xFFFFFF, 0xFFFFFF}},
    {L"ProgressBarColor2", {0xE2A981, 0xBEBEBE, 0xE7A665}},
    {L"ProgressBarBorderColor", {0xF2CEB3, 0xBEBEBE, 0xDBC9BA}},
    {L"FocusRectColor", {0x004080, 0x004080, 0xE7A665}},
};

}  // namespace

constinit const ThemeTable kButton(kButtonEntries);
constinit const ThemeTable kGroupBox(kGroupBoxEntries);
constinit const ThemeTable kProgressBar(kProgressBarEntries);
constinit const ThemeTable kPictureLcd(kPictureLcdEntries);
constinit const ThemeTable kTextBox(kTextBoxEntries);
constinit const ThemeTable kComboBox(kComboBoxEntries);
constinit const ThemeTable kListBox(kListBoxEntries);
constinit const ThemeTable kTreeView(kTreeViewEntries);
constinit const ThemeTable kToolBar(kToolBarEntries);
constinit const ThemeTable kFlexGrid(kFlexGridEntries);

}  // namespace kestrelon::theme
