#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/string.h>
#include <varnellibwx/export.h>
#include <varnellibwx/widgets/colormodel.h>
#include <varnellibwx/widgets/colorslider.h>

#include <wx/panel.h>

namespace Varnel::Wx {

class Spinner;
class StaticText;

/// A labelled row of the picker: a ColorSlider and a Spinner showing the same number. The
/// spinner shows the value of the slider's position through the row's position/value map,
/// which works on the value normalised to the spinner's minimum and maximum:
///   value = minimum + (maximum - minimum) * map(position, PositionToValue)
///   position = map((value - minimum) / (maximum - minimum), ValueToPosition)
/// With no map, the normalised value is the position. The picker's rows use gammaMap on red,
/// green and blue in linear space, and squareMap on the temperature.
///
/// Moving the slider reports the mapped value unrounded (the spinner shows it at its decimals);
/// a change in the spinner moves the slider and reports the spinner's value. Either way the
/// value-changed callback receives the new value, and the slider's marker shows. The gradient
/// receives the mapped value as its second argument. The slider's keys step the spinner's step.
///
/// A cleared row (the picker's temperature after another edit) hides the marker and empties the
/// spinner's text; it is then skipped by the Tab key, and comes back with the next value. Owned by
/// its parent.
class VARNEL_LIBWX_EXPORT ColorSliderWithSpinner : public wxPanel {
public:
    using Map = Function<float(float, Detail::PositionValueMap)>;

    /// `labelWidth` and `sliderSize` are in unscaled pixels (the spinner's field is 50 wide).
    ColorSliderWithSpinner(wxWindow* parent, int id, const String& label, int labelWidth,
                           wxSize sliderSize, SharedPtr<ColorSlider::Gradient> gradient,
                           int minimum, int maximum, int decimals, float step);
    ~ColorSliderWithSpinner() override;

    /// A new scale for the spinner; the slider keeps its position and the spinner shows the
    /// position's value on the new scale, without reporting.
    void setRange(int minimum, int maximum, int decimals, float step);
    /// Installs (or, empty, removes) the map and recomputes the spinner from the slider's
    /// position, without reporting.
    void setPositionValueMap(Map map);
    /// Sets the value from code: the spinner shows it, the slider moves to its position, nothing
    /// is reported. NaN is taken as the minimum.
    void setValue(float value);
    /// The last value set or reported.
    float getValue() const { return m_value; }
    /// Hides the marker and empties the spinner's text, until the next value.
    void clear();

    void callOnValueChange(Function<void(float)> onValueChange) {
        m_onValueChange = std::move(onValueChange);
    }

    /// Deliberately the marker's visibility: a cleared row is skipped by the Tab key.
    bool AcceptsFocusFromKeyboard() const override;

    ColorSlider* slider() const { return m_slider; }
    Spinner* spinner() const { return m_spinner; }

private:
    float valueAt(float position) const;
    float positionOf(float value) const;
    void showValue(float value);
    void onSliderChange(float position);
    void onSpinnerChange(float value);

    StaticText* m_label = nullptr;
    ColorSlider* m_slider = nullptr;
    Spinner* m_spinner = nullptr;
    int m_minimum;
    int m_maximum;
    float m_step;
    float m_value;
    Map m_map;
    Function<void(float)> m_onValueChange;
};

} // namespace Varnel::Wx
