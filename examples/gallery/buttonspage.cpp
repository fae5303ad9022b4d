#include "buttonspage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/staticline.h>

#include <wx/dcmemory.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/timer.h>

namespace Varnel::Gallery {

namespace {

constexpr int kButtonWidth = 130;
constexpr int kIconSize = 16;
constexpr float kProgressStep = 0.05f;
constexpr int kProgressTickMs = 40;
constexpr float kShownProgress = 0.6f;

// A small round icon in one colour, drawn here rather than loaded.
wxBitmap makeIcon(const wxColour& colour) {
    wxBitmap bitmap(kIconSize, kIconSize, 24);
    wxMemoryDC dc(bitmap);
    dc.SetBackground(wxBrush(Wx::toWxColour(Wx::GuiSkin().background)));
    dc.Clear();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(colour));
    dc.DrawCircle(kIconSize / 2, kIconSize / 2, kIconSize / 2 - 2);
    return bitmap;
}

wxStaticText* heading(wxWindow* page, const wxString& text) {
    auto* label = new wxStaticText(page, wxID_ANY, text);
    label->SetForegroundColour(Colors::text);
    return label;
}

Wx::Button* addButton(wxWindow* page, wxSizer* row, const wxString& label, const wxBitmap& icon,
                      Wx::Button::Behavior behavior, bool enabled, Flags<RawaBorderState> state,
                      const wchar_t* tooltip) {
    auto* button = new Wx::Button(page, Wx::GuiSkin(), wxID_ANY, label, icon, wxNullBitmap, {},
                                  behavior, enabled, state);
    button->SetMinSize(wxSize(Wx::scaleByDpi(kButtonWidth), button->GetMinSize().y));
    button->setTooltip(String(tooltip));
    row->Add(button, 0, wxRIGHT, kGap);
    return button;
}

/// Steps a static line from empty to full, as a long operation would.
class ProgressDriver : public wxTimer {
public:
    explicit ProgressDriver(Wx::StaticLine* line) : m_line(line) {}
    void Notify() override {
        const float next = m_line->lengthScale() + kProgressStep;
        m_line->setLengthScale(next);
        if (next >= 1.f)
            Stop();
    }

private:
    Wx::StaticLine* m_line;
};

} // namespace

wxWindow* createButtonsPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    page->SetBackgroundColour(Colors::background);
    auto* column = new wxBoxSizer(wxVERTICAL);

    const wxBitmap orange = makeIcon(wxColour(255, 150, 60));
    const wxBitmap blue = makeIcon(wxColour(81, 167, 241));
    using Behavior = Wx::Button::Behavior;

    column->Add(heading(page, "Push and toggle"), 0, wxBOTTOM, kGap);
    auto* pushRow = new wxBoxSizer(wxHORIZONTAL);
    addButton(page, pushRow, "Render", wxNullBitmap, Behavior::Normal, true, {},
              L"Starts a render with the current settings");
    addButton(page, pushRow, "Denoise", orange, Behavior::Normal, true, {},
              L"Push button with a bitmap");
    Wx::Button* lockView = addButton(page, pushRow, "Lock view", wxNullBitmap, Behavior::Toggle,
                                     true, {}, L"Toggle button: each click flips it");
    addButton(page, pushRow, "Region", blue, Behavior::Toggle, true, {},
              L"Toggle button with a bitmap");
    column->Add(pushRow, 0, wxBOTTOM, 2 * kGap);

    column->Add(heading(page, "Flat and disabled"), 0, wxBOTTOM, kGap);
    auto* flatRow = new wxBoxSizer(wxHORIZONTAL);
    addButton(page, flatRow, "Flat", wxNullBitmap, Behavior::Normal, true, RawaBorderState::Flat,
              L"No outer frame and no shading");
    addButton(page, flatRow, "Flat icon", orange, Behavior::Normal, true, RawaBorderState::Flat,
              L"The bitmap sits at (1, 1) when flat");
    addButton(page, flatRow, "Disabled", wxNullBitmap, Behavior::Normal, false, {},
              L"Disabled: grey text, no clicks");
    addButton(page, flatRow, "Disabled icon", blue, Behavior::Normal, false, {},
              L"Disabled with the normal bitmap, for want of a disabled one");
    column->Add(flatRow, 0, wxBOTTOM, 2 * kGap);

    column->Add(heading(page, "Static lines"), 0, wxBOTTOM, kGap);
    column->Add(new Wx::StaticLine(page, wxHORIZONTAL), 0, wxEXPAND | wxBOTTOM, kGap);
    const RgbBytes warm[] = {{200, 60, 30}, {120, 40, 20}, {60, 20, 10}};
    column->Add(new Wx::StaticLine(page, wxHORIZONTAL, ArrayView<const RgbBytes>(warm), 1.f), 0,
                wxEXPAND | wxBOTTOM, kGap);

    auto* progressRow = new wxBoxSizer(wxHORIZONTAL);
    const RgbBytes progressColours[] = {{0, 73, 112}, {39, 147, 255 / 2}, {0, 73, 112}};
    auto* progress = new Wx::StaticLine(page, wxHORIZONTAL,
                                        ArrayView<const RgbBytes>(progressColours), kShownProgress);
    auto* driver = new ProgressDriver(progress);
    page->Bind(wxEVT_DESTROY, [driver, page](wxWindowDestroyEvent& event) {
        if (event.GetEventObject() == page)
            delete driver;
        event.Skip();
    });
    auto* run = new Wx::Button(page, Wx::GuiSkin(), wxID_ANY, "Run", wxNullBitmap, wxNullBitmap,
                               [progress, driver] {
                                   progress->setLengthScale(0.f);
                                   driver->Start(kProgressTickMs);
                               });
    run->setTooltip(String(L"Drives the line below as a progress bar"));
    run->SetMinSize(wxSize(Wx::scaleByDpi(kButtonWidth), run->GetMinSize().y));
    progressRow->Add(run, 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, kGap);
    progressRow->Add(progress, 1, wxALIGN_CENTER_VERTICAL);
    column->Add(progressRow, 0, wxEXPAND | wxBOTTOM, kGap);

    auto* vertical = new wxBoxSizer(wxHORIZONTAL);
    for (int i = 0; i < 4; ++i) {
        vertical->Add(new Wx::StaticLine(page, wxVERTICAL), 0, wxEXPAND | wxRIGHT, 3 * kGap);
    }
    vertical->SetMinSize(wxSize(-1, Wx::scaleByDpi(40)));
    column->Add(vertical, 0, wxEXPAND);

    // Skinning sets every face to the background, so the toggled look comes after it.
    finishPage(page, column);
    lockView->setToggled(true);
    return page;
}

} // namespace Varnel::Gallery
