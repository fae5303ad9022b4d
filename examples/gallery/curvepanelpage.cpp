#include "curvepanelpage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/curvedialog.h>
#include <varnellibwx/widgets/curvepanel.h>
#include <varnellibwx/widgets/textctrl.h>

#include <wx/dcclient.h>
#include <wx/panel.h>
#include <wx/sizer.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace Varnel::Gallery {

namespace {

constexpr int kImageSide = 256;
constexpr int kPanelSide = 300;
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 24;

/// The page's image and its histograms: the owner a host would be, for the page's panel and for
/// the curve dialogs the page opens.
class ImageOwner : public Wx::ICurveDialogCallbacks {
public:
    explicit ImageOwner(Wx::TextCtrl* log) : m_log(log) {
        // A warm-to-cool diagonal gradient with a brighter disc and some noise, so that the three
        // histogram modes and the four channels all look different.
        std::mt19937 random(7);
        std::normal_distribution<float> noise(0.f, 0.04f);
        for (int y = 0; y < kImageSide; ++y)
            for (int x = 0; x < kImageSide; ++x) {
                const float u = static_cast<float>(x) / kImageSide;
                const float v = static_cast<float>(y) / kImageSide;
                const float disc = std::hypot(u - 0.65f, v - 0.35f) < 0.2f ? 0.25f : 0.f;
                m_pixels.push_back({0.15f + 0.7f * u * u + disc + noise(random),
                                    0.2f + 0.5f * v + noise(random),
                                    0.9f - 0.6f * u * v + disc + noise(random), 1.f});
            }
    }

    Histogram getHistogram(std::pair<float, float> range, CurveChannel channel,
                           int binCount) override {
        Stack<uint64> bins;
        bins.resize(std::max(binCount, 0));
        const float width = range.second - range.first;
        if (binCount <= 0 || width <= 0.f)
            return Histogram(bins);
        for (const Rgb& pixel : m_pixels) {
            const float value = valueOf(pixel, channel);
            const int bin = static_cast<int>((value - range.first) / width * binCount);
            if (bin >= 0 && bin < binCount)
                ++bins[bin];
        }
        return Histogram(bins);
    }
    Optional<int> getHistogramRefreshInterval() override { return std::nullopt; }
    Optional<Rgb> getColorAt(Pixel pixel) override {
        if (pixel.x < 0 || pixel.y < 0 || pixel.x >= kImageSide || pixel.y >= kImageSide)
            return std::nullopt;
        return m_pixels[static_cast<std::size_t>(pixel.y * kImageSide + pixel.x)];
    }
    void onCurveChanged(CurveChannel channel, const Curve& curve) override {
        m_log->appendText(wxString::Format("onCurveChanged(%s): %d points\n",
                                           Wx::curveChannelName(channel), curve.points().size()));
    }
    int getChangeNotificationDelay() override { return 200; }
    wxPoint getInitialPosition(wxWindow*) override { return m_lastPosition; }
    void storePosition(wxPoint position) override { m_lastPosition = position; }
    void onWindowOpened(wxWindow* window) override {
        m_log->appendText(dynamic_cast<Wx::CurveDialog*>(window) ? "dialog opened\n"
                                                                 : "list opened\n");
    }
    void onWindowClosed(wxWindow* window) override {
        m_log->appendText(dynamic_cast<Wx::CurveDialog*>(window) ? "dialog closed\n"
                                                                 : "list closed\n");
    }

    /// The image as a display shows it (gamma 2.2).
    wxBitmap bitmap() const {
        wxImage image(kImageSide, kImageSide);
        unsigned char* data = image.GetData();
        for (const Rgb& pixel : m_pixels)
            for (const float lane : {pixel.r, pixel.g, pixel.b})
                *data++ = static_cast<unsigned char>(
                    255.f * std::pow(std::clamp(lane, 0.f, 1.f), 1.f / 2.2f) + 0.5f);
        return wxBitmap(image);
    }

    wxWeakRef<Wx::CurveDialog> dialog;
    AutoPtr<Wx::ICurvePanelController> picking; // while a press on the image picks

private:
    static float valueOf(const Rgb& pixel, CurveChannel channel) {
        switch (channel) {
        case CurveChannel::Red:
            return pixel.r;
        case CurveChannel::Green:
            return pixel.g;
        case CurveChannel::Blue:
            return pixel.b;
        case CurveChannel::Master:
            break;
        }
        return (pixel.r + pixel.g + pixel.b) / 3.f;
    }

    std::vector<Rgb> m_pixels;
    Wx::TextCtrl* m_log;
    wxPoint m_lastPosition = wxDefaultPosition;
};

/// The image the curves apply to: while a curve dialog's "Pick" is down, presses and moves on it
/// go to the dialog's controller.
wxWindow* imageView(wxWindow* parent, const SharedPtr<ImageOwner>& owner) {
    auto* view = new wxPanel(parent, wxID_ANY, wxDefaultPosition, wxSize(kImageSide, kImageSide));
    const wxBitmap bitmap = owner->bitmap();
    view->Bind(wxEVT_PAINT, [view, bitmap](wxPaintEvent&) {
        wxPaintDC dc(view);
        dc.DrawBitmap(bitmap, 0, 0);
    });
    const auto at = [](const wxMouseEvent& event) {
        return Pixel{event.GetPosition().x, event.GetPosition().y};
    };
    view->Bind(wxEVT_LEFT_DOWN, [owner, at](wxMouseEvent& event) {
        if (!owner->dialog || !owner->dialog->isPicking())
            return;
        owner->picking = owner->dialog->getController();
        owner->picking->startPicking(at(event));
    });
    view->Bind(wxEVT_MOTION, [owner, at](wxMouseEvent& event) {
        if (owner->picking && owner->dialog)
            owner->picking->movePicking(at(event));
    });
    view->Bind(wxEVT_LEFT_UP, [owner](wxMouseEvent&) {
        if (owner->picking && owner->dialog)
            owner->picking->stopPicking();
        owner->picking.reset();
    });
    return view;
}

} // namespace

wxWindow* createCurvePanelPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    auto* log =
        new Wx::TextCtrl(page, wxID_ANY, wxEmptyString, wxDefaultPosition,
                         Wx::scaleByDpi(wxSize(kPanelSide, 120)), wxTE_MULTILINE | wxTE_READONLY);
    ColorCurve curves;
    curves[CurveChannel::Master].points() =
        Stack<CurvePoint>{{0.f, 0.f}, {0.3f, 0.22f}, {0.7f, 0.8f}, {1.f, 1.f}};
    curves[CurveChannel::Blue].points() = Stack<CurvePoint>{{0.f, 0.1f}, {1.f, 0.9f}};
    const auto owner = makeShared<ImageOwner>(log);
    auto* panel = new Wx::CurvePanel(page, Wx::GuiSkin(),
                                     Wx::scaleByDpi(wxSize(kPanelSide, kPanelSide)), curves, owner);

    const auto button = [page](const wchar_t* label, Function<void()> action) {
        return new Wx::AutoSizedButton(page, wxID_ANY, label, Wx::scaleByDpi(kButtonWidth),
                                       Wx::scaleByDpi(kButtonHeight), std::move(action));
    };
    auto* modes = new wxBoxSizer(wxHORIZONTAL);
    const std::pair<const wchar_t*, Wx::HistogramType> types[] = {
        {L"Linear", Wx::HistogramType::Linear},
        {L"Logarithmic", Wx::HistogramType::Logarithmic},
        {L"Cumulative", Wx::HistogramType::Cumulative}};
    for (const auto& [label, type] : types)
        modes->Add(button(label, [panel, type] { panel->setHistogramType(type); }), 0, wxRIGHT,
                   Wx::scaleByDpi(kGap));
    auto* channels = new wxBoxSizer(wxHORIZONTAL);
    for (int index = 0; index < kCurveChannelCount; ++index) {
        const auto channel = static_cast<CurveChannel>(index);
        channels->Add(button(Wx::curveChannelName(channel),
                             [panel, channel] {
                                 panel->setSelectedCurve(channel);
                                 panel->updateHistogram();
                             }),
                      0, wxRIGHT, Wx::scaleByDpi(kGap));
    }

    auto* dialogRow = new wxBoxSizer(wxHORIZONTAL);
    dialogRow->Add(button(L"Open curve dialog",
                          [page, panel, owner] {
                              if (owner->dialog) {
                                  owner->dialog->Raise();
                                  return;
                              }
                              owner->dialog =
                                  new Wx::CurveDialog(page, Wx::GuiSkin(), String(L"Curves"),
                                                      panel->getCurrentCurves(), owner);
                          }),
                   0, wxALIGN_CENTER_VERTICAL | wxRIGHT, Wx::scaleByDpi(kGap));
    dialogRow->Add(imageView(page, owner));

    auto* controls = new wxBoxSizer(wxVERTICAL);
    controls->Add(modes, 0, wxBOTTOM, Wx::scaleByDpi(kGap));
    controls->Add(channels, 0, wxBOTTOM, Wx::scaleByDpi(2 * kGap));
    controls->Add(log, 1, wxEXPAND);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(panel, 0, wxRIGHT, Wx::scaleByDpi(2 * kGap));
    row->Add(controls, 1, wxEXPAND);
    auto* outer = new wxBoxSizer(wxVERTICAL);
    outer->Add(row, 0, wxALL, Wx::scaleByDpi(kMargin));
    outer->Add(dialogRow, 0, wxLEFT | wxRIGHT | wxBOTTOM, Wx::scaleByDpi(kMargin));
    page->SetSizer(outer);
    Wx::applySkinRecursive(page, Wx::GuiSkin());
    return page;
}

} // namespace Varnel::Gallery
