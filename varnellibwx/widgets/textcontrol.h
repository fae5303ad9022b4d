#pragma once

#include <varnellib/base/flags.h>
#include <varnellib/base/string.h>
#include <varnellibwx/export.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/tooltip.h>

#include <wx/textctrl.h>

namespace Varnel::Wx {

/// A skinnable text entry at the standard text height. While disabled it draws its value itself,
/// in the skin's disabledText colour 3 scaled pixels from the left, rather than in the platform's
/// grey. A read-only one is skipped by the Tab key. Owned by its parent.
class VARNEL_LIBWX_EXPORT TextControl : public SkinnableMixin<wxTextCtrl>, public TooltipWindow {
public:
    TextControl(wxWindow* parent, int id, const String& value, unsigned int style = 0,
                Flags<TextFlag> flags = {}, wxSize size = wxDefaultSize);
    ~TextControl() override;

    bool AcceptsFocusFromKeyboard() const override;

    /// What the control shows while disabled, for a client area of `size`.
    void paintDisabled(wxDC& dc, wxSize size) const;
};

} // namespace Varnel::Wx
