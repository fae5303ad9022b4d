#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/pointers.h>
#include <varnellib/color/color.h>
#include <varnellibwx/export.h>

#include <wx/bitmap.h>
#include <wx/panel.h>

namespace Varnel::Wx {

/// A one-dimensional colour track with a draggable marker: the picker's sliders. The track's
/// colour at each position comes from the gradient function, called as (position, value) where
/// the value is what the slider's owner makes of the position (the position itself unless the
/// owner installs a value function: a row with a spinner passes its mapped number, so a
/// temperature track is asked in kelvin). The slider runs along y when the requested width is
/// smaller than the requested height, else along x.
///
/// The mouse: a left press calls the press callback, moves the marker to the pointer and captures
/// the mouse; motion while captured moves it, clamped to the track even outside the control; the
/// release ends the drag. Each move reports the new position through the change callback. The
/// position at coordinate c is clamp(c, 0, length) / length, length being the extent along the
/// track minus the marker's thickness (5 scaled pixels), so the marker's leading edge follows the
/// pointer and the whole marker stays on the track.
///
/// The keyboard, when the slider has the focus: Left and Right (Up and Down when vertical) move by
/// one step, Page Up and Page Down by ten, Home and End to the ends; each key press reports like a
/// drag (the press callback, then the change callback). The step is the key stepper's answer:
/// one hundredth of the track unless the owner installs its own (a row steps its spinner).
///
/// The track is drawn into a cached bitmap that is rebuilt only when the size, the gradient or
/// the owner's colour (refreshTrack) changes; the marker is drawn over it: a rectangle as thick
/// as the marker across the whole track, with the black pen and the white brush. A hidden marker
/// shows again as soon as the position is set or moved. Owned by its parent.
class VARNEL_LIBWX_EXPORT ColorSlider : public wxPanel {
public:
    using Gradient = Function<Rgb(float position, float value)>;

    /// `size` is in unscaled pixels. The position starts at 0 with the marker visible.
    ColorSlider(wxWindow* parent, int id, wxSize size, SharedPtr<Gradient> gradient);
    ~ColorSlider() override;

    float getPosition() const { return m_position; }
    /// Moves the marker without reporting; positions outside 0..1 are clamped, NaN gives 0.
    void setPosition(float position);
    bool isVertical() const { return m_vertical; }
    bool isMarkerVisible() const { return m_markerVisible; }
    void setMarkerVisible(bool visible);

    /// The gradient's inputs changed (the colour the track is drawn around): rebuild the track.
    void refreshTrack();
    void setGradient(SharedPtr<Gradient> gradient);
    /// What the gradient receives as its value for a position; empty: the position itself.
    void setValueFunction(Function<float(float position)> valueOf);
    /// Where `steps` key steps (negative: backwards) take the slider from `position`.
    void setKeyStepper(Function<float(float position, int steps)> stepper);

    void callOnChange(Function<void(float position)> onChange) { m_onChange = std::move(onChange); }
    void callOnPress(Function<void()> onPress) { m_onPress = std::move(onPress); }

    /// Draws track and marker into `dc` for a client area of `size`.
    void paint(wxDC& dc, wxSize size);

private:
    void moveTo(wxPoint pointer);
    void report(float position);
    const wxBitmap& track(wxSize size);
    void onPaint(wxPaintEvent& event);
    void onLeftDown(wxMouseEvent& event);
    void onMotion(wxMouseEvent& event);
    void onLeftUp(wxMouseEvent& event);
    void onKeyDown(wxKeyEvent& event);

    SharedPtr<Gradient> m_gradient;
    Function<float(float)> m_valueOf;
    Function<float(float, int)> m_keyStepper;
    Function<void(float)> m_onChange;
    Function<void()> m_onPress;
    float m_position = 0.f;
    bool m_vertical;
    bool m_markerVisible = true;
    wxBitmap m_track; // invalid when it must be rebuilt
};

namespace Detail {

/// The marker's thickness across the track, in unscaled pixels.
inline constexpr int kSliderMarkerThickness = 5;

/// The position a pointer at `coordinate` along a track of `extent` pixels gives: clamp(c, 0,
/// length) / length with length = extent - thickness; a track no longer than the marker gives 0.
VARNEL_LIBWX_EXPORT float sliderPositionAt(int coordinate, int extent, int thickness);
/// Where the marker of `position` lies in a client area of `size`: across the whole track,
/// `thickness` thick, starting at trunc(position * (extent - thickness)) along it.
VARNEL_LIBWX_EXPORT wxRect sliderMarkerRect(float position, wxSize size, bool vertical,
                                            int thickness);
/// The position whose colour the track shows at pixel `pixel`: the position of a marker centred
/// on that pixel, clamped to 0..1, so the colour under the marker is the colour of its position.
VARNEL_LIBWX_EXPORT float sliderTrackPosition(int pixel, int extent, int thickness);

} // namespace Detail
} // namespace Varnel::Wx
