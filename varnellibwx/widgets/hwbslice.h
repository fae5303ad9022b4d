#pragma once

#include <varnellib/base/function.h>
#include <varnellib/color/color.h>
#include <varnellibwx/export.h>

#include <wx/bitmap.h>
#include <wx/panel.h>

namespace Varnel::Wx {

/// The picker's two-dimensional field: hue from left to right, blackness from top to bottom, at
/// whiteness 0 (whiteness has a slider of its own). The field is rendered once for each size the
/// control takes; a marker, a closed five-point outline in the colour of the opposite hue, shows
/// the current hue and blackness.
///
/// The mouse works as on a ColorSlider: a left press calls the press callback, moves the marker to
/// the pointer and captures the mouse; motion while captured moves it, clamped to the field. The
/// hue runs over 0 up to, not including, 360 (the pointer's x clamped to the field's columns); the
/// blackness over 0..1 inclusive (y clamped to 0..height), so a drag past the bottom gives black.
/// With the focus, the arrow keys move the hue by one degree and the blackness by one hundredth
/// (Page Up and Page Down by ten), each press reported like a drag. Owned by its parent.
class VARNEL_LIBWX_EXPORT HwbSlice : public wxPanel {
public:
    /// `size` is in unscaled pixels.
    HwbSlice(wxWindow* parent, int id, wxSize size);
    ~HwbSlice() override;

    float getHue() const { return m_hue; }
    float getBlackness() const { return m_blackness; }
    /// Moves the marker without reporting: the hue wraps into 0..360, the blackness is clamped to
    /// 0..1, NaN gives 0.
    void setMarker(float hue, float blackness);

    void callOnChange(Function<void(float hue, float blackness)> onChange) {
        m_onChange = std::move(onChange);
    }
    void callOnPress(Function<void()> onPress) { m_onPress = std::move(onPress); }

    /// Draws the field and the marker into `dc` for a client area of `size`.
    void paint(wxDC& dc, wxSize size);

private:
    void report(float hue, float blackness);
    void onLeftDown(wxMouseEvent& event);
    void onMotion(wxMouseEvent& event);
    void onLeftUp(wxMouseEvent& event);
    void onKeyDown(wxKeyEvent& event);
    void onPaint(wxPaintEvent& event);

    wxBitmap m_field;
    float m_hue = 0.f;
    float m_blackness = 0.f;
    Function<void(float, float)> m_onChange;
    Function<void()> m_onPress;
};

namespace Detail {

/// The field's colour at pixel (x, y) of a field of `size`: HWB (x / width * 360, 0, y / height).
VARNEL_LIBWX_EXPORT Rgb hwbFieldColor(int x, int y, wxSize size);
/// The field's pixels, row by row from the top, three bytes each.
VARNEL_LIBWX_EXPORT void renderHwbField(wxSize size, unsigned char* rgb);
/// The hue and blackness a pointer at `pointer` picks on a field of `size`.
struct HueBlackness {
    float hue;
    float blackness;
};
VARNEL_LIBWX_EXPORT HueBlackness hwbAtPointer(wxPoint pointer, wxSize size);
/// Where the marker of `hue` and `blackness` is centred: (trunc(hue / 360 * width),
/// trunc(height * blackness)).
VARNEL_LIBWX_EXPORT wxPoint hwbMarkerCentre(float hue, float blackness, wxSize size);
/// The marker's colour: the opposite hue at full saturation and value, in 8 bits.
VARNEL_LIBWX_EXPORT RgbBytes hwbMarkerColor(float hue);

} // namespace Detail
} // namespace Varnel::Wx
