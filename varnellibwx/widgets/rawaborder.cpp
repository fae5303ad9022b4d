#include <varnellibwx/widgets/rawaborder.h>

#include <varnellibwx/guiskin.h>

#include <varnellib/native/drawhook.h>

#include <wx/dcbuffer.h>

namespace Varnel {

namespace {

const wxColour kOuterFrame = Wx::toWxColour(Detail::kRawaOuterFrame);
const wxColour kInnerFrame = Wx::toWxColour(Detail::kRawaInnerFrame);
const wxColour kHoveredFrame = Wx::toWxColour(Detail::kRawaHighlightFrame);
const wxColour kShadowEnds(70, 70, 70);
const wxColour kShadowMiddle(85, 85, 85);

} // namespace

RawaBorder::RawaBorder(wxWindow* parent, int id, const wxString& name, Flags<RawaBorderState> state)
    : wxPanel(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, name), m_state(state) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    // A paint context takes the window's font; made the window's own, the toolkit's style is
    // asked for it once rather than on every paint.
    SetOwnFont(GetFont());
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
    paintRawaBorder(dc, wxRect(wxPoint(0, 0), size), state);
}

namespace {

// A one-pixel frame just inside `rect`, as four filled bands: stroked rectangles fall on
// different pixels depending on the device context's pixel-centre rule, filled ones do not.
void frame(wxDC& dc, const wxRect& rect, const wxColour& colour) {
    dc.SetBrush(wxBrush(colour));
    dc.DrawRectangle(rect.x, rect.y, rect.width, 1);
    dc.DrawRectangle(rect.x, rect.GetBottom(), rect.width, 1);
    dc.DrawRectangle(rect.x, rect.y, 1, rect.height);
    dc.DrawRectangle(rect.GetRight(), rect.y, 1, rect.height);
}

} // namespace

void paintRawaBorder(wxDC& dc, const wxRect& rect, Flags<RawaBorderState> state) {
    if (rect.IsEmpty())
        return;
    const bool flat = state.has(RawaBorderState::Flat);
    dc.SetPen(*wxTRANSPARENT_PEN);
    wxRect inner = rect;
    if (!flat) {
        frame(dc, rect, kOuterFrame);
        inner.Deflate(1);
    }
    const bool highlighted =
        state.has(RawaBorderState::Hovered) && state.has(RawaBorderState::Enabled);
    if (!inner.IsEmpty())
        frame(dc, inner, highlighted ? kHoveredFrame : kInnerFrame);
    if (!flat) {
        // The bottom row: (70, 70, 70) over its whole width, then (85, 85, 85) over all but its
        // two end pixels.
        dc.SetBrush(wxBrush(kShadowEnds));
        dc.DrawRectangle(rect.x, rect.GetBottom(), rect.width, 1);
        dc.SetBrush(wxBrush(kShadowMiddle));
        dc.DrawRectangle(rect.x + 1, rect.GetBottom(), rect.width - 2, 1);
    }
}

void wearBorderedEntryFrame(wxWindow& entry) {
    if (!entry.HasFlag(wxBORDER_NONE))
        setNativeEntryFrame(WindowHandle(entry.GetHandle()), kRawaOuterFrame, kRawaInnerFrame,
                            kRawaHighlightFrame);
}

} // namespace Detail
} // namespace Varnel
