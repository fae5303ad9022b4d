#include <varnellibwx/widgets/colorsliderwithspinner.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/statictext.h>

#include <wx/sizer.h>

#include <algorithm>
#include <cmath>

namespace Varnel::Wx {

namespace {
constexpr int kSpinnerWidth = 50;
constexpr int kGap = 4;
} // namespace

ColorSliderWithSpinner::ColorSliderWithSpinner(wxWindow* parent, int id, const String& label,
                                               int labelWidth, wxSize sliderSize,
                                               SharedPtr<ColorSlider::Gradient> gradient,
                                               int minimum, int maximum, int decimals, float step)
    : wxPanel(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxBORDER_NONE),
      m_minimum(minimum), m_maximum(maximum), m_step(step), m_value(static_cast<float>(minimum)) {
    m_label = new StaticText(this, wxID_ANY, label, 0, {}, wxSize(labelWidth, -1));
    m_slider = new ColorSlider(this, wxID_ANY, sliderSize, std::move(gradient));
    m_spinner =
        new Spinner(this, wxID_ANY, kSpinnerWidth, static_cast<float>(minimum),
                    static_cast<float>(maximum), static_cast<float>(minimum), decimals, step);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(m_label, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, scaleByDpi(kGap));
    row->Add(m_slider, 1, wxALIGN_CENTER_VERTICAL | wxRIGHT, scaleByDpi(kGap));
    row->Add(m_spinner, 0, wxALIGN_CENTER_VERTICAL);
    SetSizerAndFit(row);

    m_slider->setValueFunction([this](float position) { return valueAt(position); });
    m_slider->setKeyStepper([this](float position, int steps) {
        return positionOf(valueAt(position) + m_step * static_cast<float>(steps));
    });
    m_slider->callOnChange([this](float position) { onSliderChange(position); });
    m_spinner->callOnValueChange([this](float value) { onSpinnerChange(value); });
    setValue(static_cast<float>(minimum));
}

ColorSliderWithSpinner::~ColorSliderWithSpinner() = default;

float ColorSliderWithSpinner::valueAt(float position) const {
    const float normalised =
        m_map ? m_map(position, Detail::PositionValueMap::PositionToValue) : position;
    return static_cast<float>(m_minimum) + static_cast<float>(m_maximum - m_minimum) * normalised;
}

float ColorSliderWithSpinner::positionOf(float value) const {
    if (m_maximum == m_minimum)
        return 0.f;
    const float normalised =
        (value - static_cast<float>(m_minimum)) / static_cast<float>(m_maximum - m_minimum);
    // Values beyond the scale sit at its ends (and keep a map's root away from negatives).
    const float clamped = std::isnan(normalised) ? 0.f : std::clamp(normalised, 0.f, 1.f);
    return m_map ? m_map(clamped, Detail::PositionValueMap::ValueToPosition) : clamped;
}

void ColorSliderWithSpinner::showValue(float value) {
    m_value = value;
    m_spinner->setValue(value, false);
}

void ColorSliderWithSpinner::setRange(int minimum, int maximum, int decimals, float step) {
    m_minimum = minimum;
    m_maximum = maximum;
    m_step = step;
    m_spinner->configure(static_cast<float>(minimum), static_cast<float>(maximum),
                         static_cast<float>(minimum), decimals, step, false);
    showValue(valueAt(m_slider->getPosition()));
    m_slider->refreshTrack();
}

void ColorSliderWithSpinner::setPositionValueMap(Map map) {
    m_map = std::move(map);
    if (m_slider->isMarkerVisible())
        showValue(valueAt(m_slider->getPosition()));
    m_slider->refreshTrack();
}

void ColorSliderWithSpinner::setValue(float value) {
    if (std::isnan(value))
        value = static_cast<float>(m_minimum);
    m_slider->setPosition(positionOf(value));
    showValue(value);
}

void ColorSliderWithSpinner::clear() {
    m_slider->setMarkerVisible(false);
    m_spinner->setText(String());
}

bool ColorSliderWithSpinner::AcceptsFocusFromKeyboard() const {
    return m_slider->isMarkerVisible();
}

void ColorSliderWithSpinner::onSliderChange(float position) {
    showValue(valueAt(position));
    m_onValueChange(m_value);
}

void ColorSliderWithSpinner::onSpinnerChange(float value) {
    m_value = value;
    m_slider->setPosition(positionOf(value));
    m_onValueChange(value);
}

} // namespace Varnel::Wx
