#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/string.h>
#include <varnellib/color/color.h>
#include <varnellibwx/export.h>

#include <wx/panel.h>

namespace Varnel::Wx {

class StaticText;
class TextControl;

/// The picker's hex field: a label and a text field holding six hex digits. Enter reads the text
/// as one hexadecimal number (leading blanks skipped, either case, up to the first character that
/// is not a hex digit; the low 24 bits give red, green and blue, alpha 1) and reports the colour
/// through the commit callback, showing its six digits. Text without a hex digit reports nothing
/// and the field shows the last colour again. The focus callbacks run when the field gains or loses
/// the keyboard focus; the focus events always go on to the field's own handling. Owned by its
/// parent.
class VARNEL_LIBWX_EXPORT HexColorEdit : public wxPanel {
public:
    /// `labelWidth` and `fieldWidth` are in unscaled pixels.
    HexColorEdit(wxWindow* parent, int id, const String& label, int labelWidth, int fieldWidth);
    ~HexColorEdit() override;

    /// Shows the colour's six digits (8 bits a channel, rounded to even; alpha not shown).
    void setColor(const Rgb& color);

    void callOnCommit(Function<void(const Rgb&)> onCommit) { m_onCommit = std::move(onCommit); }
    void callOnFocusGained(Function<void()> onGained) { m_onFocusGained = std::move(onGained); }
    void callOnFocusLost(Function<void()> onLost) { m_onFocusLost = std::move(onLost); }

    TextControl* field() const { return m_field; }

private:
    void commit();

    StaticText* m_label = nullptr;
    TextControl* m_field = nullptr;
    String m_shown;
    Function<void(const Rgb&)> m_onCommit;
    Function<void()> m_onFocusGained;
    Function<void()> m_onFocusLost;
};

} // namespace Varnel::Wx
