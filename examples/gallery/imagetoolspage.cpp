#include "imagetoolspage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/collapsiblepanel.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/imagesavesettingsdialog.h>
#include <varnellibwx/widgets/pixelprobe.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/statictext.h>

#include <wx/dcclient.h>
#include <wx/panel.h>
#include <wx/sizer.h>

#include <cmath>
#include <vector>

namespace Varnel::Gallery {

namespace {

constexpr int kImageSide = 240;
const wxPoint kFixedPixel(145, 66); // in the sun

/// A scene-referred image: a sky from deep blue to bright, a sun far above 1, and a dark ground;
/// tonemapped by x / (1 + x), then encoded for an sRGB display.
class HdrImage : public wxPanel {
public:
    explicit HdrImage(wxWindow* parent)
        : wxPanel(parent, wxID_ANY, wxDefaultPosition,
                  Wx::scaleByDpi(wxSize(kImageSide, kImageSide))),
          m_side(Wx::scaleByDpi(kImageSide)) {
        wxImage image(m_side, m_side, false);
        unsigned char* bytes = image.GetData();
        for (int y = 0; y < m_side; ++y)
            for (int x = 0; x < m_side; ++x) {
                const Rgb linear =
                    sceneAt(static_cast<float>(x) / m_side, static_cast<float>(y) / m_side);
                m_linear.push_back(linear);
                const Rgb shown = tonemap(linear);
                for (const float lane : {shown.r, shown.g, shown.b})
                    *bytes++ = unitToByte(lane);
            }
        m_bitmap = wxBitmap(image);
        probe = new Wx::PixelProbe(this);
        Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
            wxPaintDC dc(this);
            dc.DrawBitmap(m_bitmap, 0, 0);
        });
        Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
            showProbe(event.GetPosition(), ClientToScreen(event.GetPosition()));
        });
        Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { probe->hide(); });
    }

    void showProbe(wxPoint pixel, wxPoint pointer) {
        if (!wxRect(0, 0, m_side, m_side).Contains(pixel))
            return;
        const Rgb& linear = m_linear[static_cast<std::size_t>(pixel.y * m_side + pixel.x)];
        probe->show({{pixel.x, pixel.y}, linear, tonemap(linear)}, pointer);
    }

    Wx::PixelProbe* probe;

private:
    static Rgb sceneAt(float u, float v) {
        if (v > 0.72f) // ground
            return Rgb(0.05f + 0.04f * u, 0.04f, 0.03f, 1.f);
        const float sun = std::exp(-((u - 0.65f) * (u - 0.65f) + (v - 0.3f) * (v - 0.3f)) / 0.004f);
        const float sky = 1.f - v;
        return Rgb(0.2f * sky + 40.f * sun, 0.35f * sky + 36.f * sun, 1.2f * sky + 30.f * sun, 1.f);
    }
    static float encode(float lane) {
        const float mapped = lane / (1.f + lane);
        return mapped <= 0.0031308f ? 12.92f * mapped
                                    : 1.055f * std::pow(mapped, 1.f / 2.4f) - 0.055f;
    }
    static Rgb tonemap(const Rgb& linear) {
        return Rgb(encode(linear.r), encode(linear.g), encode(linear.b), linear.a);
    }

    int m_side;
    std::vector<Rgb> m_linear;
    wxBitmap m_bitmap;
};

Wx::CollapsiblePanel* renderSettings(wxWindow* page) {
    auto* panel = new Wx::CollapsiblePanel(page, wxID_ANY, String(L"Render settings"), true);
    wxWindow* pane = panel->getPane();
    auto* grid = new wxFlexGridSizer(2, Wx::scaleByDpi(kGap / 2), Wx::scaleByDpi(kGap));
    grid->Add(new Wx::StaticText(pane, wxID_ANY, String(L"Samples per pixel")), 0,
              wxALIGN_CENTER_VERTICAL);
    grid->Add(new Wx::Spinner(pane, wxID_ANY, 70, 1.f, 4096.f, 256.f, 0, 1.f));
    grid->Add(new Wx::StaticText(pane, wxID_ANY, String(L"Exposure (stops)")), 0,
              wxALIGN_CENTER_VERTICAL);
    grid->Add(new Wx::Spinner(pane, wxID_ANY, 70, -10.f, 10.f, 0.f, 1, 0.f));
    grid->Add(new Wx::StaticText(pane, wxID_ANY, String(L"Tone mapping")), 0,
              wxALIGN_CENTER_VERTICAL);
    auto* combo = new Wx::ComboBox(pane, wxID_ANY, 120, {}, {});
    const Wx::ComboBox::Item items[] = {
        {String(L"Reinhard"), 0}, {String(L"Filmic"), 1}, {String(L"Clamp"), 2}};
    combo->setData(ArrayView<const Wx::ComboBox::Item>(items, 3));
    combo->selectIndex(0, false);
    grid->Add(combo);
    auto* margin = new wxBoxSizer(wxVERTICAL);
    margin->Add(grid, 0, wxLEFT | wxTOP | wxBOTTOM, Wx::scaleByDpi(kGap));
    pane->SetSizer(margin);
    return panel;
}

Wx::CollapsiblePanel* outputSettings(wxWindow* page) {
    auto* panel = new Wx::CollapsiblePanel(page, wxID_ANY, String(L"Output"));
    wxWindow* pane = panel->getPane();
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(new Wx::CheckBox(pane, wxID_ANY, String(L"Write the alpha channel")), 0,
                wxLEFT | wxTOP, Wx::scaleByDpi(kGap));
    column->Add(new Wx::CheckBox(pane, wxID_ANY, String(L"Open the file when done")), 0,
                wxLEFT | wxTOP | wxBOTTOM, Wx::scaleByDpi(kGap));
    pane->SetSizer(column);
    return panel;
}

} // namespace

wxWindow* createImageToolsPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    auto* image = new HdrImage(page);
    auto* answer = new Wx::StaticText(page, wxID_ANY, String(L"No answer yet."));
    auto* save = new Wx::AutoSizedButton(
        page, wxID_ANY, "Save options...", Wx::scaleByDpi(80), Wx::scaleByDpi(24), [page, answer] {
            static Wx::ImageSaveSettings last;
            const Wx::ImageSaveCapabilities openExr{{false, false, true, true}, true};
            const auto chosen = Wx::showImageSaveSettingsDialog(page, last, openExr);
            if (!chosen) {
                answer->SetLabel("Cancelled.");
                return;
            }
            last = *chosen;
            answer->SetLabel(wxString::Format(
                "%ls, %s", Wx::ImageSaveSettingsDialog::kFormatLabels[int(chosen->format)],
                chosen->alpha ? "with alpha" : "without alpha"));
        });

    auto* left = new wxBoxSizer(wxVERTICAL);
    left->Add(renderSettings(page), 0, wxEXPAND | wxBOTTOM, Wx::scaleByDpi(kGap));
    left->Add(outputSettings(page), 0, wxEXPAND | wxBOTTOM, Wx::scaleByDpi(2 * kGap));
    left->Add(new Wx::StaticText(page, wxID_ANY,
                                 String(L"The save dialog as a file type with floats only\n"
                                        L"(16 and 32 bits, alpha) offers it:")),
              0, wxBOTTOM, Wx::scaleByDpi(kGap));
    left->Add(save, 0, wxBOTTOM, Wx::scaleByDpi(kGap));
    left->Add(answer);
    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(
        new Wx::StaticText(page, wxID_ANY, String(L"Move the pointer over the image to probe it.")),
        0, wxBOTTOM, Wx::scaleByDpi(kGap));
    right->Add(image);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(right, 0, wxRIGHT, Wx::scaleByDpi(3 * kGap));
    row->Add(left);
    return finishPage(page, row);
}

void showProbeAtFixedPixel(wxWindow* page) {
    for (wxWindow* child : page->GetChildren()) {
        showProbeAtFixedPixel(child);
        if (auto* image = dynamic_cast<HdrImage*>(child)) {
            const wxSize scaled = Wx::scaleByDpi(wxSize(kFixedPixel.x, kFixedPixel.y));
            const wxPoint pixel(scaled.x, scaled.y);
            image->showProbe(pixel, image->ClientToScreen(pixel));
        }
    }
}

} // namespace Varnel::Gallery
