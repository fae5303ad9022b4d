#include <varnellibwx/widgets/radiobutton.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>

#include <algorithm>

namespace Varnel::Wx {

namespace {
constexpr int kIndicator = 24; // GTK's circle and the gap after it
} // namespace

wxRadioButton* makeRadioButton(wxWindow* parent, const wxString& label, bool firstOfGroup) {
    auto* radio = new wxRadioButton(parent, wxID_ANY, label, wxDefaultPosition, wxDefaultSize,
                                    firstOfGroup ? wxRB_GROUP : 0);
    radio->SetFont(setupStaticTextFont(radio->GetFont(), {}));
    const wxSize text = radio->GetTextExtent(label);
    const wxSize reported = radio->GetBestSize();
    radio->SetMinSize(wxSize(std::max(reported.x, text.x + scaleByDpi(kIndicator)),
                             std::max({reported.y, text.y, scaleByDpi(kIndicator - 6)})));
    return radio;
}

} // namespace Varnel::Wx
