#include <varnellibwx/widgets/hwbslice.h>

#include <varnellib/base/array.h>
#include <varnellib/color/byteencoding.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/widgets/colormodel.h>

#include <wx/dcbuffer.h>
#include <wx/image.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace Varnel::Wx {

namespace Detail {

namespace {
constexpr float kFullCircle = 360.f;

float fieldHue(int x, int width) {
    return static_cast<float>(x) / static_cast<float>(width) * kFullCircle;
}
} // namespace

Rgb hwbFieldColor(int x, int y, wxSize size) {
    return hwbToRgb(
        {fieldHue(x, size.x), 0.f, static_cast<float>(y) / static_cast<float>(size.y), 0.f});
}

void renderHwbField(wxSize size, unsigned char* rgb) {
    if (size.x <= 0 || size.y <= 0)
        return;
    // At whiteness 0 every row has saturation 1 (the scaling and the black rule both give 1), so
    // a pixel is value * q with q = (p - 1) * 1 + 1, the pure hue of its column: q is converted
    // once, each row only scales it. The same bits as converting pixel by pixel.
    const auto width = static_cast<std::size_t>(size.x);
    std::vector<Hsv> hues(width);
    for (std::size_t x = 0; x < width; ++x)
        hues[x] = {fieldHue(static_cast<int>(x), size.x), 1.f, 1.f, 0.f};
    std::vector<Rgb> pure(width);
    hsvToRgb(ArrayView<const Hsv>(hues.data(), size.x), ArrayView<Rgb>(pure.data(), size.x));
    std::vector<float> pureLanes(3 * width);
    for (std::size_t x = 0; x < width; ++x) {
        pureLanes[3 * x] = pure[x].r;
        pureLanes[3 * x + 1] = pure[x].g;
        pureLanes[3 * x + 2] = pure[x].b;
    }
    std::vector<float> row(3 * width);
    for (int y = 0; y < size.y; ++y, rgb += 3 * width) {
        const float value =
            hwbToHsv({0.f, 0.f, static_cast<float>(y) / static_cast<float>(size.y), 0.f}).v;
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = value * pureLanes[i];
        unitsToBytes(row.data(), rgb, row.size());
    }
}

HueBlackness hwbAtPointer(wxPoint pointer, wxSize size) {
    if (size.x <= 0 || size.y <= 0)
        return {0.f, 0.f};
    return {fieldHue(std::clamp(pointer.x, 0, size.x - 1), size.x),
            static_cast<float>(std::clamp(pointer.y, 0, size.y)) / static_cast<float>(size.y)};
}

wxPoint hwbMarkerCentre(float hue, float blackness, wxSize size) {
    return {static_cast<int>(hue / kFullCircle * static_cast<float>(size.x)),
            static_cast<int>(static_cast<float>(size.y) * blackness)};
}

RgbBytes hwbMarkerColor(float hue) {
    return toRgbBytes(hwbToRgb({hue + 180.f, 0.f, 0.f, 0.f}));
}

} // namespace Detail

namespace {

constexpr float kHueKeyStep = 1.f;
constexpr float kBlacknessKeyStep = 0.01f;
constexpr int kPageSteps = 10;
// The marker: a pentagon around the marked point, pointing up, in unscaled pixels.
constexpr int kMarkerShape[5][2] = {{0, -5}, {5, -1}, {3, 4}, {-3, 4}, {-5, -1}};

} // namespace

HwbSlice::HwbSlice(wxWindow* parent, int id, wxSize size)
    : wxPanel(parent, id, wxDefaultPosition, scaleByDpi(size), wxTAB_TRAVERSAL | wxBORDER_NONE) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetOwnFont(GetFont()); // paint contexts copy it: no style lookup on every paint
    Bind(wxEVT_PAINT, &HwbSlice::onPaint, this);
    Bind(wxEVT_ERASE_BACKGROUND, [](wxEraseEvent&) {});
    // A quick second press comes as a double click: it presses all the same.
    Bind(wxEVT_LEFT_DOWN, &HwbSlice::onLeftDown, this);
    Bind(wxEVT_LEFT_DCLICK, &HwbSlice::onLeftDown, this);
    Bind(wxEVT_MOTION, &HwbSlice::onMotion, this);
    Bind(wxEVT_LEFT_UP, &HwbSlice::onLeftUp, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [](wxMouseCaptureLostEvent&) {});
    Bind(wxEVT_KEY_DOWN, &HwbSlice::onKeyDown, this);
}

HwbSlice::~HwbSlice() {
    if (HasCapture())
        ReleaseMouse();
}

void HwbSlice::setMarker(float hue, float blackness) {
    const float wrapped = std::fmod(hue, 360.f);
    const float clamped = std::isnan(blackness) ? 0.f : std::clamp(blackness, 0.f, 1.f);
    const float hueNow = std::isnan(wrapped) ? 0.f : wrapped < 0.f ? wrapped + 360.f : wrapped;
    if (hueNow == m_hue && clamped == m_blackness)
        return;
    m_hue = hueNow;
    m_blackness = clamped;
    Refresh(false);
}

void HwbSlice::paint(wxDC& dc, wxSize size) {
    if (size.x <= 0 || size.y <= 0)
        return;
    if (!m_field.IsOk() || m_field.GetSize() != size) {
        wxImage image(size, false);
        Detail::renderHwbField(size, image.GetData());
        m_field = wxBitmap(image);
    }
    dc.DrawBitmap(m_field, 0, 0);
    const RgbBytes ink = Detail::hwbMarkerColor(m_hue);
    wxPoint points[5];
    for (int i = 0; i < 5; ++i)
        points[i] = wxPoint(scaleByDpi(kMarkerShape[i][0]), scaleByDpi(kMarkerShape[i][1]));
    dc.SetPen(wxPen(wxColour(ink.r, ink.g, ink.b), scaleByDpi(1)));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    const wxPoint centre = Detail::hwbMarkerCentre(m_hue, m_blackness, size);
    dc.DrawPolygon(5, points, centre.x, centre.y);
}

void HwbSlice::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    paint(dc, GetClientSize());
}

void HwbSlice::report(float hue, float blackness) {
    setMarker(hue, blackness);
    m_onChange(m_hue, m_blackness); // repainted with the owner's controls on the next frame
}

void HwbSlice::onLeftDown(wxMouseEvent& event) {
    m_onPress();
    const Detail::HueBlackness at = Detail::hwbAtPointer(event.GetPosition(), GetClientSize());
    report(at.hue, at.blackness);
    if (!HasCapture())
        CaptureMouse();
    SetFocus();
}

void HwbSlice::onMotion(wxMouseEvent& event) {
    if (!HasCapture() || !event.LeftIsDown())
        return;
    const Detail::HueBlackness at = Detail::hwbAtPointer(event.GetPosition(), GetClientSize());
    report(at.hue, at.blackness);
}

void HwbSlice::onLeftUp(wxMouseEvent&) {
    if (HasCapture())
        ReleaseMouse();
}

void HwbSlice::onKeyDown(wxKeyEvent& event) {
    float hue = m_hue, blackness = m_blackness;
    switch (event.GetKeyCode()) {
    case WXK_LEFT:
        hue -= kHueKeyStep;
        break;
    case WXK_RIGHT:
        hue += kHueKeyStep;
        break;
    case WXK_UP:
        blackness -= kBlacknessKeyStep;
        break;
    case WXK_DOWN:
        blackness += kBlacknessKeyStep;
        break;
    case WXK_PAGEUP:
        blackness -= kPageSteps * kBlacknessKeyStep;
        break;
    case WXK_PAGEDOWN:
        blackness += kPageSteps * kBlacknessKeyStep;
        break;
    default:
        event.Skip();
        return;
    }
    m_onPress();
    report(hue, blackness);
}

} // namespace Varnel::Wx
