#include <varnellibwx/widgets/rawaborder.h>

#include <wx/dcbuffer.h>
#include <wx/graphics.h>

namespace Varnel {

namespace {

const wxColour kOuterFrame(54, 54, 54);
const wxColour kInnerFrame(37, 37, 37);
const wxColour kHoveredFrame(0, 114, 188);
const wxColour kShadowEnds(70, 70, 70);
const wxColour kShadowMiddle(85, 85, 85);

} // namespace

RawaBorder::RawaBorder(wxWindow* parent, int id, const wxString& name, Flags<RawaBorderState> state)
    : wxPanel(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, name), m_state(state) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, &RawaBorder::onPaint, this);
    Bind(wxEVT_ENTER_WINDOW, &RawaBorder::onEnter, this);
    Bind(wxEVT_LEAVE_WINDOW, &RawaBorder::onLeave, this);
}

RawaBorder::~RawaBorder() = default;

bool RawaBorder::Enable(bool enable) {
    m_state.set(RawaBorderState::Enabled, enable);
    const bool changed = wxPanel::Enable(enable);
    Refresh(false);
    return changed;
}

void RawaBorder::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(GetBackgroundColour()));
    dc.Clear();
    Detail::paintRawaBorder(dc, GetClientSize(), m_state);
}

void RawaBorder::onEnter(wxMouseEvent& event) {
    m_state.set(RawaBorderState::Hovered);
    Refresh(true);
    event.Skip();
}

void RawaBorder::onLeave(wxMouseEvent& event) {
    m_state.clear(RawaBorderState::Hovered);
    Refresh(true);
    event.Skip();
}

namespace Detail {

void paintRawaBorder(wxDC& dc, wxSize size, Flags<RawaBorderState> state) {
    // The frame is drawn to the pixel: no blended corners or line ends.
    wxGraphicsContext* context = dc.GetGraphicsContext();
    const wxAntialiasMode antialias = context ? context->GetAntialiasMode() : wxANTIALIAS_NONE;
    if (context)
        context->SetAntialiasMode(wxANTIALIAS_NONE);
    const int w = size.x, h = size.y;
    const bool flat = state.has(RawaBorderState::Flat);
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    wxRect inner(0, 0, w, h);
    if (!flat) {
        dc.SetPen(wxPen(kOuterFrame, 1, wxPENSTYLE_SOLID));
        dc.DrawRectangle(0, 0, w, h);
        inner = wxRect(1, 1, w - 2, h - 2);
    }
    const bool highlighted =
        state.has(RawaBorderState::Hovered) && state.has(RawaBorderState::Enabled);
    dc.SetPen(wxPen(highlighted ? kHoveredFrame : kInnerFrame, 1, wxPENSTYLE_SOLID));
    dc.DrawRectangle(inner);
    if (!flat) {
        // The bottom row: (70, 70, 70) over its whole width, then (85, 85, 85) over all but its
        // two end pixels. Filled one-pixel rows, because whether a line covers its end point
        // depends on the device context.
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(kShadowEnds));
        dc.DrawRectangle(0, h - 1, w, 1);
        dc.SetBrush(wxBrush(kShadowMiddle));
        dc.DrawRectangle(1, h - 1, w - 2, 1);
    }
    if (context)
        context->SetAntialiasMode(antialias);
}

} // namespace Detail
} // namespace Varnel
