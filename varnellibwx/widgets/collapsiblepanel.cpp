#include <varnellibwx/widgets/collapsiblepanel.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/widgets/statictext.h>

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/weakref.h>

#include <cmath>

namespace Varnel::Wx {

namespace {
constexpr int kTickSide = 11;
constexpr int kHeaderGap = 4;
} // namespace

// ---- Tick --------------------------------------------------------------------------------------

Tick::Tick(wxWindow* parent, const GuiSkin& skin, bool expanded)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, scaleByDpi(wxSize(kTickSide, kTickSide)),
               wxBORDER_NONE),
      m_skin(skin), m_expanded(expanded) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        wxAutoBufferedPaintDC dc(this);
        paint(dc);
    });
    // A click on the marker is a click on the header it sits in.
    for (const auto type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK})
        Bind(type, [this](wxMouseEvent& event) {
            event.SetPosition(event.GetPosition() + GetPosition());
            GetParent()->GetEventHandler()->ProcessEvent(event);
        });
}

Tick::~Tick() = default;

void Tick::setExpanded(bool expanded) {
    if (expanded == m_expanded)
        return;
    m_expanded = expanded;
    Refresh(false);
}

void Tick::paint(wxDC& dc) const {
    const wxSize size = GetClientSize();
    dc.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
    dc.Clear();
    std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::CreateFromUnknownDC(dc));
    if (!context)
        return;
    const auto corners =
        Detail::tickTriangle(std::min(size.x, size.y), m_expanded, GetContentScaleFactor());
    wxGraphicsPath path = context->CreatePath();
    path.MoveToPoint(corners[0]);
    path.AddLineToPoint(corners[1]);
    path.AddLineToPoint(corners[2]);
    path.CloseSubpath();
    context->SetBrush(context->CreateBrush(wxBrush(toWxColour(m_skin.text))));
    context->FillPath(path);
}

// ---- CollapsiblePanel --------------------------------------------------------------------------

CollapsiblePanel::CollapsiblePanel(wxWindow* parent, int id, const String& title, bool expanded,
                                   const GuiSkin& skin)
    : wxPanel(parent, id), m_skin(skin), m_expanded(expanded) {
    SetBackgroundColour(toWxColour(skin.background));
    SetForegroundColour(toWxColour(skin.text));

    m_header = new wxWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                            wxWANTS_CHARS | wxBORDER_NONE);
    m_header->SetBackgroundColour(toWxColour(skin.background));
    m_header->SetForegroundColour(toWxColour(skin.text));
    m_tick = new Tick(m_header, skin, expanded);
    m_title = new StaticText(m_header, wxID_ANY, title);
    auto* headerRow = new wxBoxSizer(wxHORIZONTAL);
    const int gap = scaleByDpi(kHeaderGap);
    headerRow->Add(m_tick, 0, wxALIGN_CENTER_VERTICAL | wxALL, gap / 2);
    headerRow->Add(m_title, 0, wxALIGN_CENTER_VERTICAL | wxLEFT | wxTOP | wxBOTTOM | wxRIGHT,
                   gap / 2);
    m_header->SetSizer(headerRow);

    m_header->Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) {
        m_header->SetFocus();
        toggleByUser();
    });
    m_header->Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { toggleByUser(); });
    m_title->Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) {
        m_header->SetFocus();
        toggleByUser();
    });
    m_title->Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { toggleByUser(); });
    m_header->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        const int key = event.GetKeyCode();
        if (event.GetModifiers() == wxMOD_NONE &&
            (key == WXK_SPACE || key == WXK_RETURN || key == WXK_NUMPAD_ENTER))
            toggleByUser();
        else
            event.Skip();
    });
    // The header shows the focus with a frame in the skin's highlight.
    m_header->Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        wxPaintDC dc(m_header);
        if (!m_header->HasFocus())
            return;
        dc.SetPen(wxPen(toWxColour(m_skin.toggledBackground), 1));
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(wxPoint(0, 0), m_header->GetClientSize());
    });
    for (const auto type : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
        m_header->Bind(type, [this](wxFocusEvent& event) {
            m_header->Refresh();
            event.Skip();
        });

    m_pane = new wxPanel(this, wxID_ANY);
    m_pane->Show(expanded);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(m_header, 0, wxEXPAND);
    column->Add(m_pane, 1, wxEXPAND);
    SetSizer(column);
}

CollapsiblePanel::~CollapsiblePanel() = default;

void CollapsiblePanel::SetFocus() {
    m_header->SetFocus();
}

void CollapsiblePanel::setExpanded(bool expanded) {
    if (expanded == m_expanded)
        return;
    m_expanded = expanded;
    m_tick->setExpanded(expanded);
    m_pane->Show(expanded);
    layOutAgain();
}

void CollapsiblePanel::toggleByUser() {
    const wxWeakRef<CollapsiblePanel> alive(this);
    setExpanded(!m_expanded);
    if (m_onToggle)
        m_onToggle(m_expanded);
    if (!alive) // the host's callback destroyed the panel
        return;
    wxCollapsiblePaneEvent event(this, GetId(), !m_expanded);
    GetEventHandler()->ProcessEvent(event);
}

void CollapsiblePanel::layOutAgain() {
    // Nothing to lay out in a window tree that is going away.
    for (wxWindow* window = this; window; window = window->GetParent())
        if (window->IsBeingDeleted())
            return;
    // Every window from here to the top asks its sizer again, so that the pane's space goes to
    // what follows it; scrolled windows learn their new virtual size.
    for (wxWindow* window = this; window; window = window->GetParent()) {
        window->InvalidateBestSize();
        window->Layout();
        if (auto* scrolled = dynamic_cast<wxScrolledWindow*>(window))
            scrolled->FitInside();
        if (window->IsTopLevel())
            break;
    }
}

namespace Detail {

std::array<wxPoint2DDouble, 3> tickTriangle(int side, bool expanded, double deviceScale) {
    const double s = side;
    const double scale = deviceScale >= 1.0 ? deviceScale : 1.0;
    const auto whole = [scale](double logical) {
        return std::round(logical * scale) / scale;
    };
    const double near = whole(0.25 * s), far = whole(0.75 * s), start = whole(0.2 * s),
                 end = whole(0.8 * s), middle = (start + end) / 2;
    if (expanded)
        return {wxPoint2DDouble(start, near), wxPoint2DDouble(end, near),
                wxPoint2DDouble(middle, far)};
    return {wxPoint2DDouble(near, start), wxPoint2DDouble(near, end), wxPoint2DDouble(far, middle)};
}

} // namespace Detail
} // namespace Varnel::Wx
