#include <varnellibwx/widgets/staticline.h>

#include <varnellib/base/stopexception.h>

#include <wx/dcbuffer.h>

#include <algorithm>
#include <cmath>

namespace Varnel::Wx {

namespace {

constexpr const char* kSource = "widgets/staticline";
constexpr int kBadOrientationLine = 35;
constexpr int kBadOrientationPaintLine = 76;
constexpr RgbBytes kEtchedColors[] = {{37, 37, 37}, {100, 100, 100}};

// A partly drawn line is brighter: each channel doubled, capped at 255.
wxColour brightened(const wxColour& c) {
    auto twice = [](unsigned char v) {
        return static_cast<unsigned char>(std::min(2 * v, 255));
    };
    return wxColour(twice(c.Red()), twice(c.Green()), twice(c.Blue()));
}

} // namespace

StaticLine::StaticLine(wxWindow* parent, wxOrientation orientation)
    : StaticLine(parent, orientation, ArrayView<const RgbBytes>(kEtchedColors), 1.f) {}

StaticLine::StaticLine(wxWindow* parent, wxOrientation orientation,
                       ArrayView<const RgbBytes> colors, float lengthScale)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxTAB_TRAVERSAL,
              wxPanelNameStr),
      m_orientation(orientation) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, &StaticLine::onPaint, this);
    for (const RgbBytes& color : colors)
        m_colors.push(wxColour(color.r, color.g, color.b));
    const int thickness = m_colors.size();
    if (orientation == wxHORIZONTAL) {
        SetMinSize(wxSize(GetMinSize().x, thickness));
        SetMaxSize(wxSize(GetMaxSize().x, thickness));
    } else if (orientation == wxVERTICAL) {
        SetMinSize(wxSize(thickness, GetMinSize().y));
        SetMaxSize(wxSize(thickness, GetMaxSize().y));
    } else {
        Varnel::Detail::throwStopException(kSource, kBadOrientationLine);
    }
    setLengthScale(lengthScale);
}

StaticLine::~StaticLine() = default;

void StaticLine::setLengthScale(float lengthScale) {
    m_lengthScale = std::isnan(lengthScale) ? 0.f : std::clamp(lengthScale, 0.f, 1.f);
    Refresh(true);
    Update();
}

void StaticLine::paint(wxDC& dc, wxSize size) const {
    // Each line is a filled one-pixel band from the start up to, not including, trunc(length *
    // scale): exact pixels, where a stroked line would be blended at its ends.
    dc.SetPen(*wxTRANSPARENT_PEN);
    for (int i = 0; i < m_colors.size(); ++i) {
        const wxColour color = m_lengthScale == 1.f ? m_colors[i] : brightened(m_colors[i]);
        dc.SetBrush(wxBrush(color, wxBRUSHSTYLE_SOLID));
        switch (m_orientation) {
        case wxHORIZONTAL:
            dc.DrawRectangle(0, i, static_cast<int>(size.x * m_lengthScale), 1);
            break;
        case wxVERTICAL:
            dc.DrawRectangle(i, 0, 1, static_cast<int>(size.y * m_lengthScale));
            break;
        default:
            Varnel::Detail::throwStopException(kSource, kBadOrientationPaintLine);
        }
    }
}

void StaticLine::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(GetBackgroundColour()));
    dc.Clear();
    paint(dc, GetClientSize());
}

} // namespace Varnel::Wx
