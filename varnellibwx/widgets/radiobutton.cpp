#include <varnellibwx/widgets/radiobutton.h>

#include <varnellib/native/drawhook.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/nativepaint.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/rawaborder.h>

#include <wx/dc.h>

#include <algorithm>
#include <memory>

namespace Varnel::Wx {

namespace {

constexpr int kCircle = 13; // as wide as the check box's box

void paintRadioButton(const wxRadioButton& radio, bool hovered, wxDC& dc, wxSize size) {
    const GuiSkin skin;
    const bool enabled = radio.IsEnabled();
    dc.SetBackground(wxBrush(radio.GetBackgroundColour()));
    dc.Clear();

    // The bordered look's two frames as rings around the dark face; the dot in the toggled colour.
    const int side = scaleByDpi(kCircle);
    const int radius = side / 2;
    const wxPoint centre(radius, size.y / 2);
    dc.SetPen(wxPen(toWxColour(Varnel::Detail::kRawaOuterFrame)));
    dc.SetBrush(wxBrush(toWxColour(skin.darkBackground)));
    dc.DrawCircle(centre, radius);
    dc.SetPen(wxPen(toWxColour(hovered && enabled ? Varnel::Detail::kRawaHighlightFrame
                                                  : Varnel::Detail::kRawaInnerFrame)));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawCircle(centre, radius - 1);
    if (radio.GetValue()) {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(toWxColour(enabled ? skin.toggledBackground : skin.disabledText)));
        dc.DrawCircle(centre, std::max(2, radius - scaleByDpi(3)));
    }
    Detail::paintIndicatorLabel(dc, radio, side, size);
}

} // namespace

wxRadioButton* makeRadioButton(wxWindow* parent, const wxString& label, bool firstOfGroup) {
    auto* radio = new wxRadioButton(parent, wxID_ANY, label, wxDefaultPosition, wxDefaultSize,
                                    firstOfGroup ? wxRB_GROUP : 0);
    radio->SetFont(setupStaticTextFont(radio->GetFont(), {}));
    // GTK draws the button natively and sends no paint event: the look goes in through its
    // drawing, which GTK repeats whenever the button's state changes.
    auto hovered = std::make_shared<bool>(false);
    paintNativeControl(
        radio, [] { return true; },
        [radio, hovered](wxDC& dc, int width, int height) {
            paintRadioButton(*radio, *hovered, dc, wxSize(width, height));
        });
    relaxNativeMinimumSize(WindowHandle(radio->GetHandle()));
    for (const auto& [type, inside] :
         {std::pair{wxEVT_ENTER_WINDOW, true}, std::pair{wxEVT_LEAVE_WINDOW, false}})
        radio->Bind(type, [radio, hovered, inside = inside](wxMouseEvent& event) {
            *hovered = inside;
            radio->Refresh(true);
            event.Skip();
        });
    radio->Bind(wxEVT_KILL_FOCUS, [radio](wxFocusEvent& event) {
        radio->Refresh(true);
        event.Skip();
    });
    radio->SetInitialSize(Detail::indicatorLabelSize(*radio, scaleByDpi(kCircle)));
    return radio;
}

} // namespace Varnel::Wx
