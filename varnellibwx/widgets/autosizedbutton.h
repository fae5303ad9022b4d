#pragma once

#include <varnellibwx/widgets/button.h>

namespace Varnel::Wx {

/// A push button that sizes itself to its label: as wide as the label plus a margin at each
/// side, and never smaller than the minimum size given at construction. Message dialogs build
/// their button rows from it. Owned by its parent.
class VARNEL_LIBWX_EXPORT AutoSizedButton : public Button {
public:
    AutoSizedButton(wxWindow* parent, int id, const wxString& label, int minWidth, int minHeight,
                    Function<void()> onClick = {});
    ~AutoSizedButton() override;

    /// Shows the new label and re-sizes the button to it.
    void SetLabel(const wxString& label) override;
    bool Enable(bool enable = true) override;

private:
    void fitLabel();

    int m_minWidth;
    int m_minHeight;
};

namespace Detail {

/// The size of an AutoSizedButton whose label measures `text`: the label with a margin of 12
/// scaled pixels at each side and 4 above and below, at least the minimum.
VARNEL_LIBWX_EXPORT wxSize autoSizedButtonSize(wxSize text, int minWidth, int minHeight);

} // namespace Detail
} // namespace Varnel::Wx
