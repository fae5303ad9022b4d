#include <varnellibwx/widgets/colorslider.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/widgets/colormodel.h>

#include <wx/dcbuffer.h>
#include <wx/image.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Varnel::Wx {

namespace Detail {

float sliderPositionAt(int coordinate, int extent, int thickness) {
    const int length = extent - thickness;
    if (length <= 0)
        return 0.f;
    return static_cast<float>(std::clamp(coordinate, 0, length)) / static_cast<float>(length);
}

wxRect sliderMarkerRect(float position, wxSize size, bool vertical, int thickness) {
    if (vertical)
        return {0, static_cast<int>(position * static_cast<float>(size.y - thickness)), size.x,
                thickness};
    return {static_cast<int>(position * static_cast<float>(size.x - thickness)), 0, thickness,
            size.y};
}

float sliderTrackPosition(int pixel, int extent, int thickness) {
    const int length = extent - thickness;
    if (length <= 0)
        return 0.f;
    const float start = static_cast<float>(pixel) + 0.5f - 0.5f * static_cast<float>(thickness);
    return std::clamp(start / static_cast<float>(length), 0.f, 1.f);
}

} // namespace Detail

namespace {

constexpr float kDefaultKeyStep = 0.01f;
constexpr int kPageSteps = 10;

float clampPosition(float position) {
    return std::isnan(position) ? 0.f : std::clamp(position, 0.f, 1.f);
}

} // namespace

ColorSlider::ColorSlider(wxWindow* parent, int id, wxSize size, SharedPtr<Gradient> gradient)
    : wxPanel(parent, id, wxDefaultPosition, scaleByDpi(size), wxTAB_TRAVERSAL | wxBORDER_NONE),
      m_gradient(std::move(gradient)), m_vertical(size.x < size.y) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    // A paint context takes the window's font; without one of its own, the window would ask the
    // toolkit's style for it on every paint.
    SetOwnFont(GetFont());
    Bind(wxEVT_PAINT, &ColorSlider::onPaint, this);
    Bind(wxEVT_ERASE_BACKGROUND, [](wxEraseEvent&) {});
    // A quick second press comes as a double click: it presses all the same.
    Bind(wxEVT_LEFT_DOWN, &ColorSlider::onLeftDown, this);
    Bind(wxEVT_LEFT_DCLICK, &ColorSlider::onLeftDown, this);
    Bind(wxEVT_MOTION, &ColorSlider::onMotion, this);
    Bind(wxEVT_LEFT_UP, &ColorSlider::onLeftUp, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [](wxMouseCaptureLostEvent&) {});
    Bind(wxEVT_KEY_DOWN, &ColorSlider::onKeyDown, this);
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        refreshTrack();
        event.Skip();
    });
}

ColorSlider::~ColorSlider() {
    if (HasCapture())
        ReleaseMouse();
}

void ColorSlider::setPosition(float position) {
    const float clamped = clampPosition(position);
    if (clamped == m_position && m_markerVisible)
        return; // the picture is already right: a picker refreshing every row repaints less
    m_position = clamped;
    m_markerVisible = true;
    Refresh(false);
}

void ColorSlider::setMarkerVisible(bool visible) {
    m_markerVisible = visible;
    Refresh(false);
}

void ColorSlider::refreshTrack() {
    m_track = wxBitmap();
    Refresh(false);
}

void ColorSlider::setGradient(SharedPtr<Gradient> gradient) {
    m_gradient = std::move(gradient);
    refreshTrack();
}

void ColorSlider::setValueFunction(Function<float(float)> valueOf) {
    m_valueOf = std::move(valueOf);
    refreshTrack();
}

void ColorSlider::setKeyStepper(Function<float(float, int)> stepper) {
    m_keyStepper = std::move(stepper);
}

const wxBitmap& ColorSlider::track(wxSize size) {
    if (m_track.IsOk() && m_track.GetSize() == size)
        return m_track;
    // One colour per pixel along the track, repeated across it.
    const int extent = m_vertical ? size.y : size.x;
    const int thickness = scaleByDpi(Detail::kSliderMarkerThickness);
    wxImage image(size, false);
    unsigned char* data = image.GetData();
    for (int i = 0; i < extent; ++i) {
        const float position = Detail::sliderTrackPosition(i, extent, thickness);
        const float value = m_valueOf ? m_valueOf(position) : position;
        const RgbBytes c =
            Detail::toRgbBytes(m_gradient ? (*m_gradient)(position, value) : Rgb(0, 0, 0, 1));
        if (m_vertical) {
            unsigned char* row = data + 3 * static_cast<std::size_t>(i) * size.x;
            for (int x = 0; x < size.x; ++x)
                std::memcpy(row + 3 * x, &c, 3);
        } else {
            std::memcpy(data + 3 * i, &c, 3);
        }
    }
    if (!m_vertical)
        for (int y = 1; y < size.y; ++y)
            std::memcpy(data + 3 * static_cast<std::size_t>(y) * size.x, data, 3 * size.x);
    m_track = wxBitmap(image);
    return m_track;
}

void ColorSlider::paint(wxDC& dc, wxSize size) {
    if (size.x <= 0 || size.y <= 0)
        return;
    dc.DrawBitmap(track(size), 0, 0);
    if (!m_markerVisible)
        return;
    dc.SetPen(*wxBLACK_PEN);
    dc.SetBrush(*wxWHITE_BRUSH);
    dc.DrawRectangle(Detail::sliderMarkerRect(m_position, size, m_vertical,
                                              scaleByDpi(Detail::kSliderMarkerThickness)));
}

void ColorSlider::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    paint(dc, GetClientSize());
}

void ColorSlider::report(float position) {
    setPosition(position);
    // The marker and the owner's answer (a picker refreshing every row) repaint together with the
    // toolkit's next frame: the pointer reports motions far more often than the screen shows
    // frames, and painting at once would cost the X server a round trip per motion.
    m_onChange(m_position);
}

void ColorSlider::moveTo(wxPoint pointer) {
    const wxSize size = GetClientSize();
    report(Detail::sliderPositionAt(m_vertical ? pointer.y : pointer.x,
                                    m_vertical ? size.y : size.x,
                                    scaleByDpi(Detail::kSliderMarkerThickness)));
}

void ColorSlider::onLeftDown(wxMouseEvent& event) {
    m_onPress();
    moveTo(event.GetPosition());
    if (!HasCapture())
        CaptureMouse();
    SetFocus();
}

void ColorSlider::onMotion(wxMouseEvent& event) {
    if (HasCapture() && event.LeftIsDown())
        moveTo(event.GetPosition());
}

void ColorSlider::onLeftUp(wxMouseEvent&) {
    if (HasCapture())
        ReleaseMouse();
}

void ColorSlider::onKeyDown(wxKeyEvent& event) {
    const int back = m_vertical ? WXK_UP : WXK_LEFT, forth = m_vertical ? WXK_DOWN : WXK_RIGHT;
    const int key = event.GetKeyCode();
    float target;
    if (key == WXK_HOME || key == WXK_END) {
        target = key == WXK_HOME ? 0.f : 1.f;
    } else {
        const int steps = key == back           ? -1
                          : key == forth        ? 1
                          : key == WXK_PAGEUP   ? -kPageSteps
                          : key == WXK_PAGEDOWN ? kPageSteps
                                                : 0;
        if (steps == 0) {
            event.Skip();
            return;
        }
        target = m_keyStepper ? m_keyStepper(m_position, steps)
                              : m_position + kDefaultKeyStep * static_cast<float>(steps);
    }
    m_onPress();
    report(target);
}

} // namespace Varnel::Wx
