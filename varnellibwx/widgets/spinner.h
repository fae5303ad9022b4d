#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/optional.h>
#include <varnellib/base/string.h>
#include <varnellib/native/windowhandle.h>
#include <varnellibwx/export.h>
#include <varnellibwx/focusable.h>

#include <wx/event.h>
#include <wx/panel.h>
#include <wx/timer.h>

class wxBoxSizer;
class wxGenericStaticBitmap;

namespace Varnel {
class RawaBorder;
}

namespace Varnel::Wx {

class TextControl;

/// Sent when a gesture that changes a spinner's value begins (an arrow pressed, a typed value
/// committed) and ends, so that a host can make one undo step of it: wxActivateEvent, active
/// true for the start and false for the end, id and object the spinner's.
wxDECLARE_EXPORTED_EVENT(VARNEL_LIBWX_EXPORT, CUSTSPINNER_START_EDITING, wxActivateEvent);
wxDECLARE_EXPORTED_EVENT(VARNEL_LIBWX_EXPORT, CUSTSPINNER_END_EDITING, wxActivateEvent);
/// Sent when the spinner's text field gains or loses the keyboard focus: wxFocusEvent, id and
/// object the spinner's.
wxDECLARE_EXPORTED_EVENT(VARNEL_LIBWX_EXPORT, CUSTSPINNER_TEXT_FOCUS_GET, wxFocusEvent);
wxDECLARE_EXPORTED_EVENT(VARNEL_LIBWX_EXPORT, CUSTSPINNER_TEXT_FOCUS_LOST, wxFocusEvent);

/// The library's entry for one number: a right-aligned text field in the bordered look with a
/// small up arrow above a small down arrow at its right. The value changes by typing (Enter or
/// leaving the field commits; "," is read as the decimal separator too; text that is not a
/// number silently restores the value), by clicking an arrow (one step, on release), by holding
/// it (a step after 200 ms, then every 50 ms, and one more on release), and by pressing an arrow
/// and dragging up or down (a virtual slider; the pointer wraps at the monitor's top and bottom
/// rows). A right-click on an arrow resets to the default value, or cancels a drag in progress.
///
/// The value is always within [min, max] and is the number the field shows: it is rounded to the
/// precision (asked anew from the precision function at every change, clamped to 0..9 decimals)
/// and shown in fixed notation with the host's decimal separator, trailing zeros trimmed but
/// one decimal always kept (2.000 shows as 2.0). Steps below the shown resolution accumulate in
/// a residual until they move the value.
///
/// Every notified change is a wxEVT_SPINCTRLDOUBLE event (wxSpinDoubleEvent) that reaches the
/// value callback first and then the parents; gestures are bracketed by CUSTSPINNER_START_EDITING
/// and CUSTSPINNER_END_EDITING. The four library events travel to the parents like command
/// events. A min above max, or a bound that is not finite, is a programming error (the stop
/// exception). Owned by its parent.
class VARNEL_LIBWX_EXPORT Spinner : public wxPanel, public Focusable {
public:
    /// `width` is the text field's width. Construction notifies nothing.
    Spinner(wxWindow* parent, int id, int width, float min, float max, float defaultValue,
            int precision, float clickSpeed);
    ~Spinner() override;

    /// New bounds, default, precision and click speed; the value is clamped and re-formatted
    /// into the new range (notifying with `notify`) but not moved to the new default.
    void configure(float min, float max, float defaultValue, int precision, float clickSpeed,
                   bool notify);
    void setValue(float value, bool notify);
    float getValue() const { return m_value; }
    void setPrecision(int digits, bool notify);
    /// Installs a precision function, asked at every change; re-formats a finite value.
    void setPrecision(Function<int()> digits, bool notify);
    /// The same with the decimals asked for the value about to be shown, however it was entered
    /// (typed, stepped, set): a value of any size keeps its significant digits.
    void setPrecisionByValue(Function<int(float value)> digits, bool notify);
    /// When set and it yields a value, that value replaces the click step (never the drag
    /// speed): zero or a negative value steps by one resolution of the shown precision; only an
    /// empty Optional or NaN falls back to the click speed. An empty function removes it.
    void setClickSpeedOverride(Function<Optional<float>()> clickSpeedOverride);
    void callOnValueChange(Function<void(float)> onValueChange);
    /// Shows `text` in the field without changing the value (a placeholder such as "mixed"). It
    /// stays through Enter or a focus loss until something else is typed or a value is set.
    void setText(const String& text);
    /// Focuses the text field with all of its text selected.
    void SetFocus() override;

    TextControl* textField() const { return m_textField; }
    wxWindow* upArrow() const;
    wxWindow* downArrow() const;
    bool isDragging() const { return m_dragging; }

private:
    enum class ArrowLook { Normal = 0, Hover = 1, Pressed = 2 };

    void build(int width);
    void bindArrow(wxGenericStaticBitmap* arrow);
    void showArrow(wxGenericStaticBitmap* arrow, ArrowLook look);
    void step();
    void commitText();
    void sendActivate(const wxEventTypeTag<wxActivateEvent>& type, bool active);
    void sendFocus(const wxEventTypeTag<wxFocusEvent>& type);

    void onArrowDown(wxMouseEvent& event);
    void onArrowUp(wxMouseEvent& event);
    void onArrowMotion(wxMouseEvent& event);
    void onArrowRightUp(wxMouseEvent& event);
    void onArrowCaptureLost(wxMouseCaptureLostEvent& event);
    void onArrowHover(wxMouseEvent& event);
    void onRepeat(wxTimerEvent& event);
    /// Ends a press or drag of `arrow` when it holds the mouse.
    void release(wxWindow* arrow);
    void endPress();

    wxGenericStaticBitmap* m_upArrow = nullptr;
    wxGenericStaticBitmap* m_downArrow = nullptr;
    TextControl* m_textField = nullptr;
    RawaBorder* m_frame = nullptr;
    wxBoxSizer* m_mainSizer = nullptr;
    wxWindow* m_pressedArrow = nullptr;
    float m_dragStartValue = 0.f;
    float m_minValue = 0.f;
    float m_maxValue = 0.f;
    float m_defaultValue = 0.f;
    float m_clickSpeed = 0.f;
    Function<int(float)> m_precision;
    Function<Optional<float>()> m_clickSpeedOverride;
    Function<void(float)> m_onValueChange;
    Optional<String> m_placeholder; // shown by setText until a value replaces it
    float m_value;
    int m_digits = -1;
    float m_residual = 0.f;
    int m_lastMouseY = 0;
    bool m_dragging = false;
    bool m_incrementing = false;
    wxTimer m_repeatTimer;
};

namespace Detail {

/// The value a spinner starts with before its constructor sets one: a quiet NaN, bits 0x7FC00001.
VARNEL_LIBWX_EXPORT float spinnerUnsetValue();

/// The decimals a precision function's answer stands for: clamped to 0..9.
VARNEL_LIBWX_EXPORT int spinnerDigits(int precision);

/// What a spinner shows for `value` with `digits` decimals (fixed notation, exactly the digits
/// of printf's "%.*f", "." replaced by `decimalPoint`, then trailing zeros trimmed while more
/// than three characters remain and the last two are zeros), and the number those digits stand
/// for (read back as a float).
struct SpinnerText {
    String text;
    float value;
};
VARNEL_LIBWX_EXPORT SpinnerText formatSpinnerValue(float value, int digits, wchar_t decimalPoint);

/// `value` within [min, max]; a NaN gives max.
VARNEL_LIBWX_EXPORT float clampSpinnerValue(float value, float min, float max);

/// One click's step: the override's value whenever it yields one that is not NaN (a zero or
/// negative value is below the resolution and so moves by one resolution), else clickSpeed when
/// it is positive, else max(|value|, 1) x 0.004.
VARNEL_LIBWX_EXPORT float spinnerClickStep(float value, float clickSpeed,
                                           Optional<float> clickSpeedOverride);
/// The drag speed per pixel: clickSpeed when positive, else max(|value|, 1) x 0.004.
VARNEL_LIBWX_EXPORT float spinnerDragSpeed(float value, float clickSpeed);
/// 1 / 10^digits, the power of ten computed as an integer.
VARNEL_LIBWX_EXPORT float spinnerResolution(int digits);

/// Where one step sends the value. A step below the resolution moves by exactly the resolution
/// and drops the residual; a larger one adds the residual and is clamped, and the rounding loss
/// of the result is carried as the next residual.
struct SpinnerMove {
    float target;
    bool carriesResidual;
};
VARNEL_LIBWX_EXPORT SpinnerMove spinnerStep(float value, float residual, float step,
                                            bool incrementing, int digits, float min, float max);
/// Where a drag of `dy` pixels sends the value (moving up increases it), `sign` -1 for the event
/// that wrapped the pointer; `scale` is scaleByDpi(1).
VARNEL_LIBWX_EXPORT float spinnerDragTarget(float value, float residual, int dy, int sign,
                                            float speed, int scale, float min, float max);
/// Where the pointer wraps to during a drag on `monitor`: from its top row moving up to its
/// second row from the bottom, from its bottom row moving down to its second row; else nothing.
VARNEL_LIBWX_EXPORT Optional<Pixel> spinnerWrapTarget(Pixel mouse, const Bucket& monitor, int dy);

/// The number typed text stands for: "," read as ".", then a float read from the start of the
/// text by a wide input stream (leading spaces skipped, anything after the number ignored);
/// nothing when no number starts the text or it is too large for a float.
VARNEL_LIBWX_EXPORT Optional<float> parseSpinnerText(const String& text);

} // namespace Detail
} // namespace Varnel::Wx
