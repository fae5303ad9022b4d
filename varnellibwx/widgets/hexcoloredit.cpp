#include <varnellibwx/widgets/hexcoloredit.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/colormodel.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textcontrol.h>

#include <wx/sizer.h>

namespace Varnel::Wx {

namespace {
constexpr int kGap = 4;
} // namespace

HexColorEdit::HexColorEdit(wxWindow* parent, int id, const String& label, int labelWidth,
                           int fieldWidth)
    : wxPanel(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxBORDER_NONE),
      m_shown(Detail::formatHexColor(Rgb(0, 0, 0, 1))) {
    m_label = new StaticText(this, wxID_ANY, label, 0, {}, wxSize(labelWidth, -1));
    m_field = new TextControl(this, wxID_ANY, m_shown, wxTE_PROCESS_ENTER, {},
                              scaleByDpi(wxSize(fieldWidth, -1)));
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(m_label, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, scaleByDpi(kGap));
    row->Add(m_field, 0, wxALIGN_CENTER_VERTICAL);
    SetSizerAndFit(row);

    m_field->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { commit(); });
    m_field->Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        m_onFocusGained();
        event.Skip();
    });
    m_field->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        m_onFocusLost();
        event.Skip();
    });
}

HexColorEdit::~HexColorEdit() = default;

void HexColorEdit::setColor(const Rgb& color) {
    const String shown = Detail::formatHexColor(color);
    if (shown == m_shown && m_field->GetValue() == toWxString(shown))
        return;
    m_shown = shown;
    m_field->ChangeValue(toWxString(m_shown));
}

void HexColorEdit::commit() {
    const Optional<Rgb> color = Detail::parseHexColor(toVarnelString(m_field->GetValue()));
    if (!color) {
        m_field->ChangeValue(toWxString(m_shown));
        return;
    }
    setColor(*color);
    m_onCommit(*color);
}

} // namespace Varnel::Wx
