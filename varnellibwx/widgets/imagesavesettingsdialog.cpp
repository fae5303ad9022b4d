#include <varnellibwx/widgets/imagesavesettingsdialog.h>

#include <varnellib/base/stopexception.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/radiobutton.h>
#include <varnellibwx/widgets/statictext.h>

#include <wx/sizer.h>

namespace Varnel::Wx {

namespace {
constexpr int kMargin = 14;
constexpr int kGap = 6;
constexpr int kIndent = 12;
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 24;
} // namespace

ImageSaveSettingsDialog::ImageSaveSettingsDialog(wxWindow* parent, const ImageSaveSettings& start,
                                                 const ImageSaveCapabilities& capabilities)
    : wxDialog(parent, wxID_ANY, " Save Options") {
    const ImageSaveSettings settings = Detail::startingSettings(start, capabilities);

    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(new StaticText(this, wxID_ANY, String(L"Color format")), 0, wxBOTTOM,
                scaleByDpi(kGap));
    for (int i = 0; i < 4; ++i) {
        m_formats[i] = makeRadioButton(this, kFormatLabels[i], i == 0);
        m_formats[i]->Enable(capabilities.formats[i]);
        column->Add(m_formats[i], 0, wxLEFT | wxBOTTOM, scaleByDpi(kIndent));
    }
    formatButton(settings.format)->SetValue(true);
    m_alpha = new CheckBox(this, wxID_ANY, String(L"Include alpha channel"));
    m_alpha->setValue(settings.alpha, false);
    m_alpha->Enable(capabilities.alpha);
    column->Add(m_alpha, 0, wxTOP, scaleByDpi(kGap));

    // The buttons' clicks reach the dialog as the toolkit's OK and Cancel commands, which end it.
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    for (const auto& [id, label] : {std::pair{wxID_OK, "OK"}, {wxID_CANCEL, "Cancel"}})
        buttons->Add(new AutoSizedButton(this, id, label, scaleByDpi(kButtonWidth),
                                         scaleByDpi(kButtonHeight)),
                     0, wxLEFT, scaleByDpi(kGap));
    column->Add(buttons, 0, wxALIGN_RIGHT | wxTOP, scaleByDpi(2 * kMargin));

    auto* outer = new wxBoxSizer(wxVERTICAL);
    outer->Add(column, 1, wxEXPAND | wxALL, scaleByDpi(kMargin));
    const GuiSkin skin;
    applySkinRecursive(this, skin);
    // The skin's text colour would hide that a format is out of reach: those show as disabled.
    for (wxRadioButton* format : m_formats)
        if (!format->IsEnabled())
            format->SetForegroundColour(toWxColour(skin.disabledText));
    SetSizerAndFit(outer);
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const int key = event.GetKeyCode();
        if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER)
            EndModal(wxID_OK);
        else if (key == WXK_ESCAPE)
            EndModal(wxID_CANCEL);
        else
            event.Skip();
    });
    formatButton(settings.format)->SetFocus();
}

ImageSaveSettingsDialog::~ImageSaveSettingsDialog() = default;

wxRadioButton* ImageSaveSettingsDialog::formatButton(ImageColorFormat format) const {
    return m_formats[static_cast<std::size_t>(format)];
}

ImageSaveSettings ImageSaveSettingsDialog::settings() const {
    ImageSaveSettings chosen;
    for (int i = 0; i < 4; ++i)
        if (m_formats[i]->GetValue())
            chosen.format = static_cast<ImageColorFormat>(i);
    chosen.alpha = m_alpha->IsEnabled() && m_alpha->GetValue();
    return chosen;
}

Optional<ImageSaveSettings> showImageSaveSettingsDialog(wxWindow* parent,
                                                        const ImageSaveSettings& start,
                                                        const ImageSaveCapabilities& capabilities) {
    ImageSaveSettingsDialog dialog(parent, start, capabilities);
    if (dialog.ShowModal() != wxID_OK)
        return {};
    return dialog.settings();
}

namespace Detail {

ImageSaveSettings startingSettings(const ImageSaveSettings& start,
                                   const ImageSaveCapabilities& capabilities) {
    const int asked = static_cast<int>(start.format);
    VARNEL_REQUIRE(asked >= 0 && asked < 4, "widgets/imagesavesettingsdialog");
    ImageSaveSettings settings{start.format, start.alpha && capabilities.alpha};
    if (capabilities.formats[static_cast<std::size_t>(asked)])
        return settings;
    for (int i = 0; i < 4; ++i)
        if (capabilities.formats[static_cast<std::size_t>(i)]) {
            settings.format = static_cast<ImageColorFormat>(i);
            return settings;
        }
    VARNEL_STOP("widgets/imagesavesettingsdialog");
}

} // namespace Detail
} // namespace Varnel::Wx
