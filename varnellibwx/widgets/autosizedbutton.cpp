#include <varnellibwx/widgets/autosizedbutton.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>

#include <wx/dcclient.h>

#include <algorithm>

namespace Varnel::Wx {

namespace {
constexpr int kSideMargin = 12;
constexpr int kVerticalMargin = 4;
} // namespace

AutoSizedButton::AutoSizedButton(wxWindow* parent, int id, const wxString& label, int minWidth,
                                 int minHeight, Function<void()> onClick)
    : Button(parent, GuiSkin(), id, label, wxNullBitmap, wxNullBitmap, std::move(onClick)),
      m_minWidth(minWidth), m_minHeight(minHeight) {
    fitLabel();
}

AutoSizedButton::~AutoSizedButton() = default;

void AutoSizedButton::SetLabel(const wxString& label) {
    Button::SetLabel(label);
    fitLabel();
}

bool AutoSizedButton::Enable(bool enable) {
    const bool changed = Button::Enable(enable);
    Refresh(true);
    return changed;
}

void AutoSizedButton::fitLabel() {
    wxClientDC dc(this);
    dc.SetFont(setDefaultFontSize(GetFont(), 1.f));
    const wxSize size =
        Detail::autoSizedButtonSize(dc.GetTextExtent(GetLabel()), m_minWidth, m_minHeight);
    SetMinSize(size);
    SetSize(size);
}

namespace Detail {

wxSize autoSizedButtonSize(wxSize text, int minWidth, int minHeight) {
    return {std::max(minWidth, text.x + 2 * scaleByDpi(kSideMargin)),
            std::max(minHeight, text.y + 2 * scaleByDpi(kVerticalMargin))};
}

} // namespace Detail
} // namespace Varnel::Wx
