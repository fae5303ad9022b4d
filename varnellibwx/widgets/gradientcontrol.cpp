#include <varnellibwx/widgets/gradientcontrol.h>

#include <varnellib/base/stopexception.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/pixelmath.h>
#include <varnellibwx/widgets/colorpicker.h>

#include <wx/dcbuffer.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Varnel::Wx {

namespace Detail {

wxRect GradientGeometry::ramp() const {
    const int m = margin();
    return wxRect(m, 0, size.x - 2 * m, size.y - m);
}

wxPoint GradientGeometry::markerCentre(float position) const {
    const int m = margin();
    const float share = std::min(1.f, (position - minPosition) / (maxPosition - minPosition));
    return wxPoint(m + truncToPixel(static_cast<float>(size.x - 2 * m) * share), size.y - m);
}

float GradientGeometry::positionAt(int x) const {
    const int m = margin();
    const float position = static_cast<float>(x - m) / static_cast<float>(size.x - 2 * m - 1) *
                               (maxPosition - minPosition) +
                           minPosition;
    if (std::isnan(position))
        return 0.f;
    return std::clamp(position, 0.f, 1.f);
}

Optional<int> gradientHitTest(const ColorGradient& gradient, const GradientGeometry& geometry,
                              wxPoint pointer) {
    const int64 radius = geometry.radius();
    const Stack<ColorGradient::Point>& points = gradient.points();
    for (int i = 0; i < points.size(); ++i) {
        const wxPoint centre = geometry.markerCentre(points[i].position);
        const int64 dx = int64(centre.x) - pointer.x;
        const int64 dy = int64(centre.y) - pointer.y;
        if (dx * dx + dy * dy <= radius * radius)
            return i;
    }
    return {};
}

int findGradientPoint(const ColorGradient& gradient, const ColorGradient::Point& point) {
    const auto same = [](float a, float b) {
        return a == b || (std::isnan(a) && std::isnan(b));
    };
    const Stack<ColorGradient::Point>& points = gradient.points();
    for (int i = 0; i < points.size(); ++i) {
        const ColorGradient::Point& candidate = points[i];
        if (same(candidate.color.r, point.color.r) && same(candidate.color.g, point.color.g) &&
            same(candidate.color.b, point.color.b) && same(candidate.position, point.position))
            return i;
    }
    // Reported where the gradient's own lookup would report a point that is not there.
    Varnel::Detail::throwStopException("utility/colorgradient", 100);
}

unsigned char gradientByte(float lane) {
    return unitToByte(lane);
}

wxImage columnStrip(wxSize size, const Function<Rgb(int column)>& columnColor) {
    if (size.x <= 0 || size.y <= 0)
        return wxImage();
    wxImage image(size, false);
    unsigned char* data = image.GetData();
    const std::size_t rowBytes = static_cast<std::size_t>(size.x) * 3;
    for (int column = 0; column < size.x; ++column) {
        const Rgb color = columnColor(column);
        unsigned char* pixel = data + static_cast<std::size_t>(column) * 3;
        pixel[0] = gradientByte(color.r);
        pixel[1] = gradientByte(color.g);
        pixel[2] = gradientByte(color.b);
    }
    for (int row = 1; row < size.y; ++row)
        std::memcpy(data + rowBytes * static_cast<std::size_t>(row), data, rowBytes);
    return image;
}

} // namespace Detail

GradientControl::GradientControl(wxWindow* parent, wxSize size, float minPosition,
                                 float maxPosition)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, scaleByDpi(size),
              wxTAB_TRAVERSAL | wxBORDER_NONE),
      m_minPosition(minPosition), m_maxPosition(maxPosition) {
    SetBackgroundStyle(wxBG_STYLE_PAINT); // the paint covers everything: no erasing
    SetOwnFont(GetFont());                // paint contexts copy it: no style lookup per paint
    Bind(wxEVT_PAINT, &GradientControl::onPaint, this);
    Bind(wxEVT_LEFT_DOWN, &GradientControl::onLeftDown, this);
    Bind(wxEVT_MOTION, &GradientControl::onMotion, this);
    Bind(wxEVT_LEFT_UP, &GradientControl::onLeftUp, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, &GradientControl::onCaptureLost, this);
    Bind(wxEVT_RIGHT_UP, &GradientControl::onRightUp, this);
    Bind(wxEVT_LEFT_DCLICK, &GradientControl::onDoubleClick, this);
}

GradientControl::~GradientControl() = default;

void GradientControl::setGradient(const ColorGradient& gradient) {
    m_gradient = gradient;
    m_grabbed.reset();
    Refresh(false);
}

void GradientControl::setMinMaxPosition(float minPosition, float maxPosition) {
    m_minPosition = minPosition;
    m_maxPosition = maxPosition;
    Refresh(false);
}

void GradientControl::setOnChangeCallback(Function<void(const ColorGradient&)> onChange) {
    m_onChange = std::move(onChange);
}

Detail::GradientGeometry GradientControl::geometry() const {
    return {GetClientSize(), m_minPosition, m_maxPosition, scaleByDpi(10)};
}

ColorPicker& GradientControl::picker() {
    if (!m_picker)
        m_picker = new ColorPicker(this, String(L"Set gradient control point color"),
                                   wxDefaultPosition, m_gradient.getColorAt(0.f),
                                   ColorPicker::DialogType::Normal, ColorPicker::ColorFormat::Rgb);
    return *m_picker;
}

void GradientControl::report() {
    if (m_onChange)
        m_onChange(m_gradient);
}

void GradientControl::paint(wxDC& dc) const {
    const Detail::GradientGeometry at = geometry();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(toWxColour(GuiSkin().background)));
    dc.DrawRectangle(wxPoint(0, 0), at.size);

    const wxRect ramp = at.ramp();
    if (!(at == m_rampGeometry && m_gradient == m_rampGradient && m_ramp.IsOk())) {
        const wxImage strip = Detail::columnStrip(ramp.GetSize(), [&](int column) {
            return m_gradient.getColorAt(at.positionAt(ramp.x + column));
        });
        m_ramp = strip.IsOk() ? wxBitmap(strip) : wxBitmap();
        m_rampGradient = m_gradient;
        m_rampGeometry = at;
    }
    if (m_ramp.IsOk())
        dc.DrawBitmap(m_ramp, ramp.GetPosition());

    const Stack<ColorGradient::Point>& points = m_gradient.points();
    const auto drawMarker = [&](int index) {
        const Rgb& color = points[index].color;
        dc.SetBrush(wxBrush(wxColour(Detail::gradientByte(color.r), Detail::gradientByte(color.g),
                                     Detail::gradientByte(color.b))));
        dc.DrawCircle(at.markerCentre(points[index].position), at.radius());
    };
    dc.SetPen(*wxBLACK_PEN);
    for (int i = 0; i < points.size(); ++i)
        if (i != m_grabbed)
            drawMarker(i);
    if (m_grabbed && *m_grabbed < points.size()) {
        dc.SetPen(*wxWHITE_PEN);
        drawMarker(*m_grabbed);
    }
}

void GradientControl::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    paint(dc);
}

void GradientControl::onLeftDown(wxMouseEvent& event) {
    m_grabbed = Detail::gradientHitTest(m_gradient, geometry(), event.GetPosition());
    m_moved = false;
    if (!HasCapture() && m_grabbed) {
        CaptureMouse();
        Refresh(false);
    }
}

void GradientControl::onMotion(wxMouseEvent& event) {
    if (!HasCapture() || !m_grabbed)
        return;
    moveGrabbedTo(event.GetX());
    m_moved = true;
}

void GradientControl::moveGrabbedTo(int x) {
    ColorGradient::Point moved = m_gradient.points()[*m_grabbed];
    moved.position = geometry().positionAt(x);
    m_gradient.setPosition(*m_grabbed, moved.position);
    m_grabbed = Detail::findGradientPoint(m_gradient, moved);
    Refresh(false);
}

void GradientControl::onLeftUp(wxMouseEvent& event) {
    // A dragged point ends where the button is released: the toolkit may not have delivered the
    // pointer's last motion (X sends one hint and waits to be asked again). A click without a
    // motion leaves the point where it was.
    if (HasCapture() && m_grabbed && m_moved)
        moveGrabbedTo(event.GetX());
    m_grabbed.reset();
    if (!HasCapture())
        return;
    ReleaseMouse();
    Refresh(false);
    report();
}

void GradientControl::onCaptureLost(wxMouseCaptureLostEvent&) {
    // The toolkit has already taken the capture away; the drag ends as a release would end it.
    m_grabbed.reset();
    Refresh(false);
    report();
}

void GradientControl::onRightUp(wxMouseEvent& event) {
    const Optional<int> hit = Detail::gradientHitTest(m_gradient, geometry(), event.GetPosition());
    if (!hit)
        return;
    m_gradient.removePoint(*hit);
    m_grabbed.reset();
    Refresh(false);
    report();
}

void GradientControl::onDoubleClick(wxMouseEvent& event) {
    m_grabbed.reset();
    const Detail::GradientGeometry at = geometry();
    if (const Optional<int> hit = Detail::gradientHitTest(m_gradient, at, event.GetPosition())) {
        recolor(*hit, false);
        return;
    }
    if (!wxRect(at.size).Contains(event.GetPosition()))
        return;
    ColorGradient::Point added;
    added.position = at.positionAt(event.GetX());
    added.color = m_gradient.getColorAt(added.position);
    m_gradient.addPoint(added.color, added.position);
    recolor(Detail::findGradientPoint(m_gradient, added), true);
}

void GradientControl::recolor(int index, bool added) {
    Refresh(false);
    const Rgb original = m_gradient.points()[index].color;
    // The picker edits red, green and blue; a point keeps its own alpha.
    const auto setColor = [this, index, alpha = original.a](const Rgb& color) {
        if (index >= m_gradient.points().size())
            return;
        m_gradient.setColor(index, Rgb(color.r, color.g, color.b, alpha));
        Refresh(false);
    };
    const auto confirm = [this, setColor](const Rgb& color) {
        setColor(color);
        report();
    };
    const auto erase = [this, index] {
        if (index >= m_gradient.points().size())
            return;
        m_gradient.removePoint(index);
        Refresh(false);
    };

    ColorPicker& dialog = picker();
    dialog.callOnLiveChange(setColor);
    dialog.callOnAddColor(confirm);
    dialog.callOnConfirm([this, confirm] { confirm(m_picker->getColor()); });
    dialog.callOnClosed([this, added, erase] {
        if (m_picker->resultMarker() != 0)
            return;
        if (added)
            erase();
    });
    dialog.setReferenceColor(original);
    dialog.setColor(original);
    dialog.ShowModal();
}

} // namespace Varnel::Wx
