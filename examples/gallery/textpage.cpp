#include "textpage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/messagedialog.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textbutton.h>
#include <varnellibwx/widgets/textcontrol.h>
#include <varnellibwx/widgets/textctrl.h>
#include <varnellibwx/windowutils.h>

#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/timer.h>

namespace Varnel::Gallery {

namespace {

constexpr int kWrapWidth = 420;
constexpr int kLogTickMs = 700;
constexpr int kButtonWidth = 90;
constexpr int kButtonHeight = 24;
constexpr std::size_t kShownLogLines = 6;

const wchar_t* const kLogLines[] = {
    L"Loading scene 'atrium.vls'", L"Building acceleration structure: 1.2 M triangles",
    L"Compiling 48 materials",     L"Pass 1 of 256: 4.1 s",
    L"Pass 2 of 256: 3.9 s",       L"Denoiser ready",
};

/// Feeds the log view one line at a time, as a renderer's output would arrive.
class LogFeeder : public wxTimer {
public:
    explicit LogFeeder(Wx::TextCtrl* log) : m_log(log) {}
    void Notify() override {
        m_log->appendText(wxString(kLogLines[m_next % std::size(kLogLines)]) + "\n");
        ++m_next;
    }

private:
    Wx::TextCtrl* m_log;
    std::size_t m_next = kShownLogLines;
};

/// A row of buttons that open each kind of message dialog, and the answer of the last one.
wxSizer* createDialogRow(wxWindow* page) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* answer = new Wx::StaticText(page, wxID_ANY, String(L"Answer: none yet"));
    const auto owner = [page] {
        return Wx::getWindowNativeHandle(wxGetTopLevelParent(page));
    };
    const auto report = [answer](const wchar_t* what, bool value) {
        answer->SetLabel(wxString::Format("Answer: %s %s", what, value ? "true" : "false"));
    };
    const auto add = [&](const wchar_t* label, Function<void()> open) {
        row->Add(new Wx::AutoSizedButton(page, wxID_ANY, label, Wx::scaleByDpi(kButtonWidth),
                                         Wx::scaleByDpi(kButtonHeight), std::move(open)),
                 0, wxRIGHT, kGap);
    };
    add(L"Error", [=] {
        report(L"OK dialog:", Wx::showOkDialog(owner(), String(L"Vellum Renderer Error"),
                                               String(L"Cannot load curves from a file."),
                                               Wx::MessageDialogIcon::Error));
    });
    add(L"Warning", [=] {
        report(L"OK/Cancel dialog:",
               Wx::showOkCancelDialog(owner(), String(L"Vellum"),
                                      String(L"The scene has unsaved changes.\tDiscard them?"),
                                      Wx::MessageDialogIcon::Warning));
    });
    add(L"Question", [=] {
        report(L"Yes/No dialog:", Wx::showYesNoDialog(owner(), String(L"Vellum"),
                                                      String(L"Overwrite the existing image?"),
                                                      Wx::MessageDialogIcon::Question));
    });
    add(L"Information", [=] {
        report(L"OK dialog:",
               Wx::showOkDialog(owner(), String(L""),
                                String(L"Rendering finished in 4 minutes 12 seconds."),
                                Wx::MessageDialogIcon::Information));
    });
    row->Add(answer, 0, wxALIGN_CENTER_VERTICAL | wxLEFT, kGap);
    return row;
}

} // namespace

wxWindow* createTextPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    auto* column = new wxBoxSizer(wxVERTICAL);

    column->Add(new Wx::StaticText(page, wxID_ANY, String(L"Static text at the standard size")), 0,
                wxBOTTOM, kGap);
    column->Add(new Wx::StaticText(page, wxID_ANY, String(L"Bold and italic"), 0,
                                   {Wx::TextFlag::Bold, Wx::TextFlag::Italic}),
                0, wxBOTTOM, kGap);
    auto* wrapped = new Wx::StaticText(
        page, wxID_ANY,
        String(L"A longer label wraps to the width it is given, and wrapping again to another "
               L"width starts from the unwrapped text, never from lines wrapped before."));
    wrapped->Wrap(Wx::scaleByDpi(kWrapWidth));
    column->Add(wrapped, 0, wxBOTTOM, kGap);
    auto* link = new Wx::TextButton(page, wxID_ANY, String(L"Open the renderer's documentation"),
                                    String(L"https://example.invalid/vellum/docs"));
    link->setTooltip(String(L"A link: hover shows the hand cursor"));
    column->Add(link, 0, wxBOTTOM, 2 * kGap);

    auto* entries = new wxBoxSizer(wxHORIZONTAL);
    entries->Add(
        new Wx::TextControl(page, wxID_ANY, String(L"Editable value"), 0, {}, wxSize(180, -1)), 0,
        wxRIGHT, kGap);
    auto* disabled =
        new Wx::TextControl(page, wxID_ANY, String(L"Disabled value"), 0, {}, wxSize(180, -1));
    disabled->Disable();
    entries->Add(disabled, 0);
    column->Add(entries, 0, wxBOTTOM, 2 * kGap);

    auto* log =
        new Wx::TextCtrl(page, wxID_ANY, wxEmptyString, wxDefaultPosition,
                         Wx::scaleByDpi(wxSize(kWrapWidth, 110)), wxTE_MULTILINE | wxTE_READONLY);
    for (std::size_t i = 0; i < kShownLogLines; ++i)
        log->appendText(wxString(kLogLines[i]) + "\n");
    auto* feeder = new LogFeeder(log);
    feeder->Start(kLogTickMs);
    page->Bind(wxEVT_DESTROY, [feeder, page](wxWindowDestroyEvent& event) {
        if (event.GetEventObject() == page)
            delete feeder;
        event.Skip();
    });
    column->Add(log, 0, wxBOTTOM, 2 * kGap);

    column->Add(createDialogRow(page), 0, wxBOTTOM, 2 * kGap);

    auto* boxes = new wxBoxSizer(wxHORIZONTAL);
    auto* srgb = new Wx::CheckBox(page, wxID_ANY, String(L"sRGB"));
    srgb->SetValue(true);
    boxes->Add(srgb, 0, wxRIGHT, 3 * kGap);
    boxes->Add(new Wx::CheckBox(page, wxID_ANY, String(L"Include alpha channel")), 0, wxRIGHT,
               3 * kGap);
    auto* locked = new Wx::CheckBox(page, wxID_ANY, String(L"Locked (disabled)"), wxDefaultPosition,
                                    wxDefaultSize, false);
    locked->SetValue(true);
    boxes->Add(locked, 0);
    column->Add(boxes, 0);

    return finishPage(page, column);
}

} // namespace Varnel::Gallery
