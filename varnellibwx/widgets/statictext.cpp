#include <varnellibwx/widgets/statictext.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/stringconversion.h>

#include <wx/dcclient.h>

namespace Varnel::Wx {

StaticText::StaticText(wxWindow* parent, int id, const String& label, unsigned int style,
                       Flags<TextFlag> flags, wxSize size)
    : wxGenericStaticText(parent, id, toWxString(label), wxDefaultPosition, scaleByDpi(size),
                          static_cast<long>(style), wxStaticTextNameStr),
      TooltipWindow(this) {
    Bind(wxEVT_PAINT, &StaticText::onPaint, this);
    SetFont(setupStaticTextFont(GetFont(), flags));
    m_label = label;
}

StaticText::~StaticText() = default;

void StaticText::SetLabel(const wxString& label) {
    m_label = toVarnelString(label);
    wxGenericStaticText::SetLabel(label);
}

void StaticText::Wrap(int width) {
    // Wrapping sets the wrapped text through SetLabel; the unwrapped text goes back afterwards,
    // so that the next Wrap starts from it again.
    const String unwrapped = m_label;
    SetLabel(toWxString(unwrapped));
    wxGenericStaticText::Wrap(width);
    m_label = unwrapped;
}

void StaticText::onPaint(wxPaintEvent&) {
    wxPaintDC dc(this);
    dc.SetFont(GetFont());
    dc.SetTextForeground(GetForegroundColour());
    dc.DrawLabel(GetLabel(), wxNullBitmap, wxRect(wxPoint(0, 0), GetClientSize()),
                 static_cast<int>(GetWindowStyle()), -1);
}

} // namespace Varnel::Wx
