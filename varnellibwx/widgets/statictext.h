#pragma once

#include <varnellib/base/flags.h>
#include <varnellib/base/string.h>
#include <varnellibwx/export.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/widgets/tooltip.h>

// First the toolkit's own static text: the generic header includes it with the platform class
// switched off, after which nobody could declare wxStaticText any more.
#include <wx/stattext.h>

#include <wx/generic/stattextg.h>

#include <string_view>
#include <vector>

namespace Varnel::Wx {

/// A static label that draws itself, so that it always takes the window's foreground colour and
/// font (the skin's), at the standard text height. It keeps the unwrapped text: Wrap starts from
/// it every time, so wrapping to 100 and then to 300 pixels gives the lines of a single wrap to
/// 300. On GTK the toolkit's static text is a native label that cannot be drawn by the program,
/// so the class builds on wxWidgets' generic, self-drawn static text. Owned by its parent.
class VARNEL_LIBWX_EXPORT StaticText : public wxGenericStaticText, public TooltipWindow {
public:
    StaticText(wxWindow* parent, int id, const String& label, unsigned int style = 0,
               Flags<TextFlag> flags = {}, wxSize size = wxDefaultSize);
    ~StaticText() override;

    /// Stores the text as the label and shows it.
    void SetLabel(const wxString& label) override;
    /// Wraps the stored, unwrapped label to `width` pixels.
    void Wrap(int width);

    const String& label() const { return m_label; }

    /// The system's font and colours. The label replaces them at once (the standard font, the
    /// skin's colours); asking the toolkit for a label's own would build the theme's style for
    /// every label made, a large part of building a dialog of labels.
    wxVisualAttributes GetDefaultAttributes() const override;

private:
    void onPaint(wxPaintEvent& event);

    String m_label;
};

namespace Detail {

/// The widths of every prefix of a text, as the device context's partial extents give them.
using PrefixWidths = Function<std::vector<int>(std::wstring_view)>;

/// The lines the toolkit's label wrapping makes of `text` at `widthMax` pixels: every line of
/// the text, in turn, up to the first character whose prefix reaches the width, broken at the
/// last space up to there (the space dropped), the rest wrapped again; a line without such a
/// space, or a negative width, stays whole; lines are joined with line feeds. The toolkit
/// measures the whole rest of the line for every line it outputs; this measures a window a
/// little longer than the line it is about to output (a character's position does not depend on
/// text far after it), so a long label costs its length, not its length times its lines.
VARNEL_LIBWX_EXPORT String wrapLabel(std::wstring_view text, int widthMax,
                                     const PrefixWidths& prefixWidths);

} // namespace Detail
} // namespace Varnel::Wx
