#include <varnellibwx/widgets/textcontrol.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/nativepaint.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/rawaborder.h>

#include <wx/dc.h>

namespace Varnel::Wx {

namespace {
constexpr int kDisabledTextIndent = 3;
} // namespace

TextControl::TextControl(wxWindow* parent, int id, const String& value, unsigned int style,
                         Flags<TextFlag> flags, wxSize size)
    : SkinnableMixin<wxTextCtrl>(parent, id, toWxString(value), wxDefaultPosition, scaleByDpi(size),
                                 static_cast<long>(style), wxDefaultValidator, wxTextCtrlNameStr),
      TooltipWindow(this) {
    // The entry is drawn by GTK, which sends no paint event: the disabled look goes in through
    // the toolkit's own drawing.
    paintNativeControl(
        this, [this] { return !IsEnabled(); },
        [this](wxDC& dc, int width, int height) { paintDisabled(dc, wxSize(width, height)); });
    // GTK's own frame is light and rounded; a dark skin wants the bordered look's square rings.
    Varnel::Detail::wearBorderedEntryFrame(*this);
    SetFont(setupStaticTextFont(GetFont(), flags));
}

TextControl::~TextControl() = default;

bool TextControl::AcceptsFocusFromKeyboard() const {
    return (GetWindowStyle() & wxTE_READONLY) == 0 && wxTextCtrl::AcceptsFocusFromKeyboard();
}

void TextControl::paintDisabled(wxDC& dc, wxSize size) const {
    dc.SetBackground(wxBrush(GetBackgroundColour()));
    dc.Clear();
    dc.SetFont(GetFont());
    dc.SetTextForeground(toWxColour(m_skin.disabledText));
    const wxString value = GetValue();
    dc.DrawText(value, scaleByDpi(kDisabledTextIndent), (size.y - dc.GetTextExtent(value).y) / 2);
}

} // namespace Varnel::Wx
