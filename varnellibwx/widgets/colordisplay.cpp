#include <varnellibwx/widgets/colordisplay.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/widgets/colormodel.h>

#include <wx/dcbuffer.h>

namespace Varnel::Wx {

namespace {
const wxColour kOutline(105, 105, 105);
} // namespace

ColorDisplay::ColorDisplay(wxWindow* parent, int id, wxSize size, const Rgb& color)
    : wxPanel(parent, id, wxDefaultPosition, scaleByDpi(size), wxBORDER_NONE), m_color(color) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetOwnFont(GetFont()); // paint contexts copy it: no style lookup on every paint
    Bind(wxEVT_PAINT, &ColorDisplay::onPaint, this);
}

ColorDisplay::~ColorDisplay() = default;

void ColorDisplay::setColor(const Rgb& color) {
    const bool looksTheSame = Detail::toRgbBytes(color) == Detail::toRgbBytes(m_color);
    m_color = color;
    if (!looksTheSame)
        Refresh(false);
}

void ColorDisplay::paint(wxDC& dc, wxSize size) const {
    const RgbBytes fill = Detail::toRgbBytes(m_color);
    dc.SetPen(wxPen(kOutline, 1));
    dc.SetBrush(wxBrush(wxColour(fill.r, fill.g, fill.b)));
    dc.DrawRectangle(wxPoint(0, 0), size);
}

void ColorDisplay::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    paint(dc, GetClientSize());
}

} // namespace Varnel::Wx
