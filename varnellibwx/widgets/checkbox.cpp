#include <varnellibwx/widgets/checkbox.h>

#include <varnellib/native/drawhook.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/nativepaint.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/rawaborder.h>
#include <varnellibwx/windowutils.h>

#include <wx/dc.h>

namespace Varnel::Wx {

namespace {

constexpr int kStandardSide = 15;
constexpr int kBoxSide = 13;
constexpr int kLabelGap = 5;
constexpr int kTabKey = 9;

} // namespace

CheckBox::CheckBox(wxWindow* parent, int id, const String& label, const wxPoint& position,
                   const wxSize& size, bool enabled)
    : wxCheckBox(parent, id, toWxString(label), position,
                 Detail::checkBoxSize(!label.isEmpty(), size), 0, wxDefaultValidator,
                 wxCheckBoxNameStr) {
    Bind(wxEVT_CHECKBOX, &CheckBox::onCheckBox, this);
    // GTK draws the box natively and sends no paint event: the look goes in through its drawing.
    paintNativeControl(
        this, [] { return true; },
        [this](wxDC& dc, int width, int height) { paint(dc, wxSize(width, height)); });
    relaxNativeMinimumSize(WindowHandle(GetHandle()));
    Bind(wxEVT_KILL_FOCUS, &CheckBox::onKillFocus, this);
    Bind(wxEVT_KEY_DOWN, &CheckBox::onKeyDown, this);
    Bind(wxEVT_KEY_UP, &CheckBox::onKeyUp, this);
    Bind(wxEVT_ENTER_WINDOW, [this](wxMouseEvent& event) {
        m_hovered = true;
        Refresh(true);
        event.Skip();
    });
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent& event) {
        m_hovered = false;
        Refresh(true);
        event.Skip();
    });
    SetFont(GetFont());
    // Sized again now that the painter's best size answers (the toolkit sized it while it was
    // still being built, from its own label at its own scale).
    SetInitialSize(Detail::checkBoxSize(!label.isEmpty(), size));
    Enable(enabled);
}

wxSize CheckBox::DoGetBestSize() const {
    if (GetLabel().empty())
        return scaleByDpi(wxSize(kStandardSide, kStandardSide));
    return Detail::indicatorLabelSize(*this, scaleByDpi(kBoxSide));
}

CheckBox::~CheckBox() = default;

void CheckBox::setValue(bool value, bool notify) {
    SetValue(value);
    if (!notify)
        return;
    wxCommandEvent event(wxEVT_CHECKBOX, GetId());
    InitCommandEvent(event);
    event.SetInt(static_cast<int>(Get3StateValue()));
    event.SetEventObject(this);
    GetEventHandler()->ProcessEvent(event);
}

bool CheckBox::SetFont(const wxFont& font) {
    return wxCheckBox::SetFont(setDefaultFontSize(font, 1.f));
}

void CheckBox::onCheckBox(wxCommandEvent& event) {
    onChange(GetValue());
    Refresh(true);
    event.Skip();
}

void CheckBox::onKillFocus(wxFocusEvent& event) {
    Refresh(true);
    event.Skip();
}

void CheckBox::onKeyDown(wxKeyEvent& event) {
    if (event.GetKeyCode() == kTabKey)
        m_tabPressed = true;
    event.Skip();
}

void CheckBox::onKeyUp(wxKeyEvent& event) {
    event.Skip();
    if (!m_tabPressed)
        return;
    m_tabPressed = false;
    moveFocus(this, event.ShiftDown() ? MoveFocusDirection::Backward : MoveFocusDirection::Forward);
    Refresh(true);
}

void CheckBox::paint(wxDC& dc, wxSize size) const {
    const GuiSkin skin;
    const bool enabled = IsEnabled();
    dc.SetBackground(wxBrush(GetBackgroundColour()));
    dc.Clear();

    const int side = scaleByDpi(kBoxSide);
    const wxRect box(0, (size.y - side) / 2, side, side);
    {
        Flags<RawaBorderState> state;
        state.set(RawaBorderState::Enabled, enabled).set(RawaBorderState::Hovered, m_hovered);
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(toWxColour(skin.darkBackground)));
        dc.DrawRectangle(box);
        Varnel::Detail::paintRawaBorder(dc, box, state);
    }
    const wxColour ink =
        enabled ? toWxColour(skin.toggledBackground) : toWxColour(skin.disabledText);
    if (GetValue()) {
        // A tick from the left middle down to the lower third and up to the top right.
        const int inset = scaleByDpi(3);
        const wxPoint tick[] = {{box.x + inset, box.y + side / 2},
                                {box.x + side / 2 - 1, box.GetBottom() - inset},
                                {box.GetRight() - inset, box.y + inset}};
        dc.SetPen(wxPen(ink, std::max(2, scaleByDpi(2))));
        dc.DrawLines(3, tick);
    }

    Detail::paintIndicatorLabel(dc, *this, side, size);
}

namespace Detail {

void paintIndicatorLabel(wxDC& dc, const wxWindow& window, int indicatorWidth, wxSize size) {
    const wxString label = window.GetLabel();
    if (label.empty())
        return;
    dc.SetFont(window.GetFont());
    dc.SetTextForeground(window.IsEnabled() ? window.GetForegroundColour()
                                            : toWxColour(GuiSkin().disabledText));
    const wxSize text = dc.GetTextExtent(label);
    const wxPoint at(indicatorWidth + scaleByDpi(kLabelGap), (size.y - text.y) / 2);
    dc.DrawText(label, at);
    if (window.HasFocus()) {
        dc.SetPen(wxPen(toWxColour(Varnel::Detail::kRawaHighlightFrame), 1, wxPENSTYLE_DOT));
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(wxRect(at, text).Inflate(1, 0));
    }
}

wxSize indicatorLabelSize(const wxWindow& window, int indicatorWidth) {
    // One pixel more at each side for the focus outline around the label.
    return {indicatorWidth + scaleByDpi(kLabelGap) + window.GetTextExtent(window.GetLabel()).x + 2,
            scaleByDpi(kStandardSide)};
}

wxSize checkBoxSize(bool hasLabel, wxSize size) {
    if (hasLabel)
        return scaleByDpi(wxSize(size.x, size.y == wxDefaultCoord ? kStandardSide : size.y));
    if (size == wxDefaultSize)
        return scaleByDpi(wxSize(kStandardSide, kStandardSide));
    return scaleByDpi(size);
}

} // namespace Detail
} // namespace Varnel::Wx
