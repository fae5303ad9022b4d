#pragma once

#include <varnellib/base/arrayview.h>
#include <varnellib/base/optional.h>
#include <varnellib/base/string.h>
#include <varnellib/color/color.h>
#include <varnellib/image/bitmap.h>
#include <varnellibwx/export.h>
#include <varnellibwx/widgets/colorpickertypes.h>

// The colour model of the picker family: every conversion among the forms a colour takes in the
// picker (RGB, HSV, HWB, hex text, spinner numbers, temperatures), written in 32-bit floats
// exactly as the picker, its sub-controls, the swatch button and the eyedropper must agree on
// them to the last bit. Exported for hosts that build rows of their own from the picker's controls
// (a track's gradient, a row's position/value map).
namespace Varnel::Wx::Detail {

/// Hue (degrees, shared with HSV), whiteness and blackness, and a fourth lane as in Hsv.
struct Hwb {
    float h = 0.f;
    float w = 0.f;
    float b = 0.f;
    float a = 0.f;
    bool operator==(const Hwb&) const = default;
};

/// The direction of a slider's position/value map.
enum class PositionValueMap : int { PositionToValue = 0, ValueToPosition = 1 };

/// The sliders of the picker whose tracks show colours.
enum class SliderTrack : int { Red, Green, Blue, Alpha, Hue, Sat, Value, Temperature };

/// What a spinner of the picker shows: its limits, decimals and step.
struct SpinnerScale {
    float minimum;
    float maximum;
    int decimals;
    float step;
};

inline constexpr SpinnerScale kTemperatureScale{1700.f, 15000.f, 0, 1.f};

/// The float constants of the model.
inline constexpr float kOneSixth = 0.16666667f;
inline constexpr float kOneThird = 0.33333334f;
inline constexpr float kTwoThirds = 0.6666667f;
inline constexpr float kOne360th = 0.0027777778f;
inline constexpr float kOne255th = 0.003921569f;
inline constexpr float kGamma = 2.2f;
inline constexpr float kInverseGamma = 0.45454544f;

VARNEL_LIBWX_EXPORT Hsv rgbToHsv(const Rgb& color);
/// Wraps for any hue, negative or past 360; the fourth lane of the result is 0.
VARNEL_LIBWX_EXPORT Rgb hsvToRgb(const Hsv& hsv);
/// Both conversions over runs of colours (as many as the shorter view holds), four at a time
/// where the processor has vector instructions: the same bits as one at a time, for callers that
/// convert whole rows (slider tracks, the HWB field).
VARNEL_LIBWX_EXPORT void rgbToHsv(ArrayView<const Rgb> colors, ArrayView<Hsv> out);
VARNEL_LIBWX_EXPORT void hsvToRgb(ArrayView<const Hsv> colors, ArrayView<Rgb> out);
VARNEL_LIBWX_EXPORT Hwb hsvToHwb(const Hsv& hsv);
/// Whiteness and blackness summing past 1 are scaled to sum to 1; pure black keeps full
/// saturation.
VARNEL_LIBWX_EXPORT Hsv hwbToHsv(const Hwb& hwb);
VARNEL_LIBWX_EXPORT Rgb hwbToRgb(const Hwb& hwb);

/// The picker's colour for a black body at `kelvin`, relative to the 6500 K white, encoded with
/// the 2.2 power law and clamped to 0..1. The algorithm leaves the fourth lane undefined; it is
/// answered as 1.
VARNEL_LIBWX_EXPORT Rgb temperatureToRgb(float kelvin);

/// Reads text the way a wide input stream reads one hexadecimal integer (leading blanks
/// skipped, either case, stopping at the first non-hex character) and takes the low 24 bits as
/// red, green and blue, alpha 1. Text without a hex digit gives nothing; a number too large for
/// the stream keeps the largest value it holds.
VARNEL_LIBWX_EXPORT Optional<Rgb> parseHexColor(const String& text);
/// A colour written as people copy one: six or three hex digits (three stand for doubled
/// digits, F80 for FF8800), either case, after an optional "#" or "0x", with blanks around.
/// Anything else ("Dead end", "#FF80", "FF8000 px") gives nothing.
VARNEL_LIBWX_EXPORT Optional<Rgb> parsePastedColor(const String& text);
/// Six upper-case hex digits of the 8-bit red, green and blue; no "#", no alpha.
VARNEL_LIBWX_EXPORT String formatHexColor(const Rgb& color);

/// The colour to draw on screen: each lane clamped, times 255, rounded to nearest-even.
VARNEL_LIBWX_EXPORT RgbBytes toRgbBytes(const Rgb& color);

/// What a slider's track shows at position `position` (0..1), given the picker's colour in both
/// forms. The alpha track is quantised to 8 bits by truncation; the temperature track maps the
/// position through the square map of the temperature scale.
VARNEL_LIBWX_EXPORT Rgb sliderTrackColor(SliderTrack track, float position, const Rgb& color,
                                         const Hsv& hsv);

/// value = position^2.2 and back (position = value^0.45454544), for linear-space spinners.
VARNEL_LIBWX_EXPORT float gammaMap(float x, PositionValueMap direction);
/// value = position^2 and back (position = sqrt(value)), on a value normalised to its row's
/// minimum and maximum: the temperature row's map.
VARNEL_LIBWX_EXPORT float squareMap(float x, PositionValueMap direction);
/// The same over the scale itself: value = minimum + (maximum - minimum) * position^2 and back.
VARNEL_LIBWX_EXPORT float squareMap(float x, PositionValueMap direction, float minimum,
                                    float maximum);

/// The spinner scale of a range; an unknown range raises the stop exception.
VARNEL_LIBWX_EXPORT SpinnerScale rangeScale(ColorPickerTypes::Range range);

/// The eyedropper's average of screen samples: the lane-wise sum divided, in all four lanes, by
/// max(sum of alpha, 1), so transparent samples off the screen do not count.
VARNEL_LIBWX_EXPORT Rgb averageSamples(const BitmapImpl<Rgb>& samples);

/// The colour "Pick Inverse" answers: the reciprocals scaled so the brightest channel is 1, or,
/// when a channel is exactly 0, 1 in every lane that was 0 and 0 elsewhere.
VARNEL_LIBWX_EXPORT Rgb inverseColor(const Rgb& color);

/// The colour the picker edits, in its three forms, and the three entry paths of an edit. After
/// each, hsv is rgbToHsv(rgb) or the HSV rgb was made from, hwb is hsvToHwb(hsv) or the HWB hsv was
/// made from, and the fourth lanes of hsv and hwb hold the colour's alpha.
struct VARNEL_LIBWX_EXPORT PickerColor {
    Rgb rgb{0.f, 0.f, 0.f, 1.f};
    Hsv hsv{0.f, 0.f, 0.f, 1.f};
    Hwb hwb{0.f, 0.f, 1.f, 1.f};

    /// From RGB (the red, green and blue rows, the hex field, the eyedroppers, the temperature):
    /// the colour as given, alpha included.
    void fromRgb(const Rgb& color);
    /// From HSV (the hue, saturation and value rows): kept as given, so the hue of a grey or of
    /// black survives; the colour keeps its alpha.
    void fromHsv(const Hsv& given);
    /// From HWB (the slice): kept as given; the colour keeps its alpha.
    void fromHwb(const Hwb& given);

    /// What the row of `track` shows over its scale's maximum: red, green and blue as they are or
    /// (with `gammaEncoded`) raised to 1 / 2.2, alpha, hue / 360, saturation, value. The
    /// temperature row shows no number of the colour: 0.
    float rowUnit(SliderTrack track, bool gammaEncoded) const;
    /// An edit of the row of `track`, `unit` being its number over the scale's maximum (for hue,
    /// saturation and value, the slider's position): red, green and blue (decoded with the 2.2
    /// power when `gammaEncoded`) and alpha replace their lane and enter from RGB; hue (unit *
    /// 360), saturation and value replace theirs and enter from HSV. The temperature row enters
    /// its colour itself; given here it is a programming error (the stop exception).
    void editRow(SliderTrack track, float unit, bool gammaEncoded);
};

} // namespace Varnel::Wx::Detail
