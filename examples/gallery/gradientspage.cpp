#include "gradientspage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/gradientcontrol.h>
#include <varnellibwx/widgets/gridmappingdialog.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textctrl.h>

#include <wx/dcclient.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/weakref.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace Varnel::Gallery {

namespace {

constexpr int kFieldSide = 200;
constexpr int kControlWidth = 420;

ColorGradient terrainColors() {
    ColorGradient gradient;
    gradient.addPoint(Rgb(0.02f, 0.05f, 0.35f, 1.f), 0.f);
    gradient.addPoint(Rgb(0.05f, 0.45f, 0.55f, 1.f), 0.3f);
    gradient.addPoint(Rgb(0.2f, 0.6f, 0.15f, 1.f), 0.5f);
    gradient.addPoint(Rgb(0.6f, 0.45f, 0.25f, 1.f), 0.75f);
    gradient.addPoint(Rgb(1.f, 1.f, 1.f, 1.f), 1.f);
    return gradient;
}

/// Two hills and a ripple, heights from 0 to a little over 3: a channel that needs scaling
/// before a gradient over [0, 1] can colour it.
float heightAt(float u, float v) {
    const auto hill = [u, v](float x, float y, float spread) {
        return std::exp(-((u - x) * (u - x) + (v - y) * (v - y)) / spread);
    };
    return 2.5f * hill(0.3f, 0.35f, 0.02f) + 1.6f * hill(0.7f, 0.65f, 0.04f) +
           0.4f * (1.f + std::sin(12.f * u) * std::cos(9.f * v));
}

/// The host of the page's grid mapping dialogs: a height field, the mapping it is shown with,
/// and what to do when the mapping changes.
class HeightField : public Wx::GridMappingDialogCallbacks {
public:
    explicit HeightField(int side) : m_side(side) {
        m_heights.reserve(static_cast<std::size_t>(side) * side);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                m_heights.push_back(
                    heightAt(static_cast<float>(x) / side, static_cast<float>(y) / side));
        m_max = *std::max_element(m_heights.begin(), m_heights.end());
        mapping.gradient = terrainColors();
        mapping.inputScale = 0.5f;
    }

    void onMappingChanged(const Wx::GridMapping& changed) override {
        mapping = changed;
        if (onChange)
            onChange(
                wxString::Format("onMappingChanged: %d points, %s curve of %d points, "
                                 "scale %g",
                                 mapping.gradient.points().size(),
                                 mapping.curve.interpolation() == Curve::Cubic ? "cubic" : "linear",
                                 mapping.curve.points().size(), mapping.inputScale));
    }
    float computeAutoScale() override { return 1.f / m_max; }
    /// The strip spans the field's heights, from 0 to the highest.
    Rgb getPreviewColor(float value, float inputScale) override {
        return colorOf(value * m_max, inputScale);
    }
    void onDialogClosed(int result, const Wx::GridMapping&) override {
        if (onChange)
            onChange(result == wxOK ? "closed with OK" : "closed with Cancel");
    }

    Rgb colorOf(float height, float inputScale) const {
        return mapping.gradient.getColorAt(mapping.curve(height * inputScale));
    }

    /// The field in false colour, drawn as the gradient control draws its ramp.
    wxBitmap render() const {
        wxImage image(m_side, m_side, false);
        unsigned char* data = image.GetData();
        for (const float height : m_heights) {
            const Rgb color = colorOf(height, mapping.inputScale);
            *data++ = Wx::Detail::gradientByte(color.r);
            *data++ = Wx::Detail::gradientByte(color.g);
            *data++ = Wx::Detail::gradientByte(color.b);
        }
        return wxBitmap(image);
    }

    Wx::GridMapping mapping;
    Function<void(const wxString&)> onChange;
    wxWeakRef<Wx::GridMappingDialog> dialog;

private:
    int m_side;
    float m_max = 1.f;
    std::vector<float> m_heights;
};

Wx::GridMapping resetMapping() {
    Wx::GridMapping mapping;
    mapping.gradient = terrainColors();
    return mapping;
}

} // namespace

Wx::GridMappingDialog* openHeightFieldMapping(wxWindow* parent, wxPoint position) {
    auto host = makeShared<HeightField>(Wx::scaleByDpi(kFieldSide));
    return new Wx::GridMappingDialog(parent, String(L"Height mapping"), host->mapping,
                                     resetMapping(), host, position);
}

wxWindow* createGradientsPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    auto* log =
        new Wx::TextCtrl(page, wxID_ANY, wxEmptyString, wxDefaultPosition,
                         Wx::scaleByDpi(wxSize(kControlWidth, 90)), wxTE_MULTILINE | wxTE_READONLY);
    const auto write = [log](const wxString& line) {
        log->appendText(line + "\n");
    };

    auto* control = new Wx::GradientControl(page, wxSize(kControlWidth, 26), 0.f, 1.f);
    ColorGradient sunset;
    sunset.addPoint(Rgb(0.1f, 0.05f, 0.3f, 1.f), 0.f);
    sunset.addPoint(Rgb(0.8f, 0.2f, 0.3f, 1.f), 0.35f);
    sunset.addPoint(Rgb(1.f, 0.6f, 0.1f, 1.f), 0.7f);
    sunset.addPoint(Rgb(1.f, 0.95f, 0.6f, 1.f), 1.f);
    control->setGradient(sunset);
    control->setOnChangeCallback([write](const ColorGradient& gradient) {
        wxString line = "onChange:";
        for (const ColorGradient::Point& point : gradient.points())
            line += wxString::Format(" %.3f", point.position);
        write(line);
    });

    const auto host = makeShared<HeightField>(Wx::scaleByDpi(kFieldSide));
    auto* view = new wxPanel(page, wxID_ANY, wxDefaultPosition,
                             Wx::scaleByDpi(wxSize(kFieldSide, kFieldSide)));
    auto shown = std::make_shared<wxBitmap>(host->render());
    view->Bind(wxEVT_PAINT, [view, shown](wxPaintEvent&) {
        wxPaintDC dc(view);
        dc.DrawBitmap(*shown, 0, 0);
    });
    host->onChange = [write, view, shown, host = host.get()](const wxString& line) {
        write(line);
        *shown = host->render();
        view->Refresh(false);
    };

    auto* open = new Wx::AutoSizedButton(
        page, wxID_ANY, "Open grid mapping dialog", Wx::scaleByDpi(80), Wx::scaleByDpi(24),
        [view, host] {
            if (host->dialog) {
                host->dialog->Raise();
                return;
            }
            const wxPoint beside =
                view->GetScreenPosition() + wxPoint(view->GetSize().x + Wx::scaleByDpi(kGap), 0);
            host->dialog = new Wx::GridMappingDialog(view, String(L"Height mapping"), host->mapping,
                                                     resetMapping(), host, beside);
        });

    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(new Wx::StaticText(page, wxID_ANY,
                                   String(L"Double-click to add or recolour a point, drag it, "
                                          L"right-click to remove it.")),
                0, wxBOTTOM, Wx::scaleByDpi(kGap));
    column->Add(control, 0, wxBOTTOM, Wx::scaleByDpi(kGap));
    column->Add(log, 0, wxBOTTOM, Wx::scaleByDpi(2 * kGap));
    auto* fieldRow = new wxBoxSizer(wxHORIZONTAL);
    fieldRow->Add(view, 0, wxRIGHT, Wx::scaleByDpi(2 * kGap));
    auto* side = new wxBoxSizer(wxVERTICAL);
    side->Add(new Wx::StaticText(page, wxID_ANY,
                                 String(L"A height field in false colour: heights x scale, "
                                        L"through the curve, into the gradient.")),
              0, wxBOTTOM, Wx::scaleByDpi(kGap));
    side->Add(open);
    fieldRow->Add(side, 1);
    column->Add(fieldRow, 0, wxEXPAND);
    return finishPage(page, column);
}

} // namespace Varnel::Gallery
