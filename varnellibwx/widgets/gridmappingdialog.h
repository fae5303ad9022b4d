#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/pointers.h>
#include <varnellib/base/string.h>
#include <varnellib/color/color.h>
#include <varnellib/utility/colorgradient.h>
#include <varnellib/utility/curve.h>
#include <varnellibwx/export.h>
#include <varnellibwx/widgets/curvepanel.h>

#include <wx/frame.h>
#include <wx/panel.h>

namespace Varnel::Wx {

class Button;
class ComboBox;
class GradientControl;
class Spinner;

/// How the values of one data channel become colours: multiplied by inputScale, passed through
/// curve (whose interpolation is the dialog's choice), then looked up in gradient over [0, 1].
struct GridMapping {
    ColorGradient gradient;
    Curve curve;
    float inputScale = 1.f;

    bool operator==(const GridMapping&) const = default;
};

/// What a host gives a grid mapping dialog. Everything is called on the interface thread, from
/// the dialog's event handlers.
class VARNEL_LIBWX_EXPORT GridMappingDialogCallbacks {
public:
    virtual ~GridMappingDialogCallbacks();
    /// After every change, with the whole mapping: a gradient edit finished, a curve edit (at
    /// most one report per 200 ms of editing), the interpolation, the input scale, "Auto-scale",
    /// "Reset". On "Cancel" (and any close but the accepting button's) once more with the mapping
    /// the dialog opened with, so that a live preview reverts.
    virtual void onMappingChanged(const GridMapping& mapping) = 0;
    /// The input scale that brings every channel value into [0, 1]. An answer that is not a
    /// finite number above 0 leaves the scale as it is.
    virtual float computeAutoScale() = 0;
    /// The colour the mapping gives, with `inputScale`, to the preview strip's `value`: 0 at its
    /// left end, 1 at its right end (a host reads it as a share of its channel's range).
    virtual Rgb getPreviewColor(float value, float inputScale) = 0;
    /// How the dialog ended, from its close handler after the last onMappingChanged: wxOK (4)
    /// for the accepting button, wxCANCEL (16) for "Cancel", Escape and the frame's close box.
    /// `edited` is the mapping as the user left it (on a cancel, what the revert replaced), for a
    /// host that keeps edits either way. The dialog is destroyed right after.
    virtual void onDialogClosed(int result, const GridMapping& edited);
};

/// GridMappingDialogCallbacks with neutral answers, for a host that writes only what it uses:
/// changes heard by nobody, no automatic scale (the scale stays), and a preview of the value
/// itself as a grey (`value` times `inputScale`, as a plain ramp would map it).
class VARNEL_LIBWX_EXPORT GridMappingDialogCallbacksBase : public GridMappingDialogCallbacks {
public:
    void onMappingChanged(const GridMapping& mapping) override;
    float computeAutoScale() override;
    Rgb getPreviewColor(float value, float inputScale) override;
};

/// A strip whose column i has the colour colorAt(i / (width - 1)), over the default skin's
/// background. Owned by its parent.
class VARNEL_LIBWX_EXPORT CustomGradient : public wxPanel {
public:
    /// `size` is in unscaled pixels.
    CustomGradient(wxWindow* parent, wxSize size, Function<Rgb(float)> colorAt);
    ~CustomGradient() override;

    void paint(wxDC& dc) const;

private:
    void onPaint(wxPaintEvent& event);

    Function<Rgb(float)> m_colorAt;
};

/// The dialog that edits a GridMapping: the gradient control (positions 0 to 1), a preview strip
/// of the whole mapping painted by the host, the curve panel on the mapping's curve (its master
/// curve), the interpolation choice, the input-scale spinner with "Auto-scale", "Reset", "OK"
/// and "Cancel". Every change is reported live through onMappingChanged.
///
/// A modeless tool window that is shown by its constructor and destroys itself when closed:
/// "OK" closes with the result wxOK, "Cancel", Escape and the close box with wxCANCEL (after
/// reporting the mapping at opening); the host hears the result through onDialogClosed.
class VARNEL_LIBWX_EXPORT GridMappingDialog : public wxFrame {
public:
    /// The curve panel's callbacks: no histogram, no refreshing, no colours; an edited master
    /// curve becomes the mapping's curve and is reported, at most once per 200 ms.
    class VARNEL_LIBWX_EXPORT CurveCallbacksImpl : public ICurvePanelCallbacks {
    public:
        explicit CurveCallbacksImpl(GridMappingDialog& dialog) : m_dialog(dialog) {}
        Histogram getHistogram(std::pair<float, float> range, CurveChannel channel,
                               int binCount) override;
        Optional<int> getHistogramRefreshInterval() override;
        Optional<Rgb> getColorAt(Pixel pixel) override;
        void onCurveChanged(CurveChannel channel, const Curve& curve) override;
        int getChangeNotificationDelay() override;

    private:
        GridMappingDialog& m_dialog;
    };

    static const wchar_t* const kInputScaleHelp;
    static const wchar_t* const kAutoScaleHelp;
    static const wchar_t* const kResetHelp;

    /// Shows `current` (also kept as the mapping at opening); "Reset" restores `resetState`.
    GridMappingDialog(wxWindow* parent, const String& title, const GridMapping& current,
                      const GridMapping& resetState,
                      SharedPtr<GridMappingDialogCallbacks> callbacks, wxPoint position);
    ~GridMappingDialog() override;

    /// Replaces the mapping and brings every control in line, reporting nothing. An input scale
    /// that is not a finite number of at least 0 becomes 1; one above the spinner's 1e6 becomes
    /// 1e6; every scale is held as the spinner shows it, four significant digits (up to nine
    /// decimals), so that what the user reads is what the host is told.
    void setCurrentMapping(const GridMapping& mapping);
    const GridMapping& getCurrentMapping() const { return m_mapping; }

    /// The result the closing buttons set: wxOK (4) or wxCANCEL (16, also the close box's).
    int result() const { return m_result; }

    /// The actions of the buttons, for hosts and tests.
    void autoScale();
    void reset();

    GradientControl* gradientControl() const { return m_gradient; }
    CustomGradient* preview() const { return m_preview; }
    CurvePanel* curvePanel() const { return m_panel; }
    ComboBox* interpolationChoice() const { return m_interpolation; }
    Spinner* inputScaleSpinner() const { return m_scale; }
    /// The buttons by label: "Auto-scale", "Reset", "OK", "Cancel".
    Button* button(const wxString& label) const;

private:
    void build();
    /// Brings every control in line with the mapping, firing nothing: the one step that every
    /// change, from the user, the host or "Reset", ends with.
    void refresh();
    /// The scale as the spinner shows it (its digits follow the value): what is held and
    /// reported.
    static float shownScale(float scale);
    void report();
    void onCurve(const Curve& curve);
    void onInterpolation(int mode);
    void onScale(float scale);
    void close(int result);
    void onClose(wxCloseEvent& event);

    GridMapping m_opening;
    GridMapping m_resetState;
    GridMapping m_mapping;
    SharedPtr<GridMappingDialogCallbacks> m_callbacks;
    GradientControl* m_gradient = nullptr;
    CustomGradient* m_preview = nullptr;
    CurvePanel* m_panel = nullptr;
    ComboBox* m_interpolation = nullptr;
    Spinner* m_scale = nullptr;
    int m_result = wxCANCEL;
    bool m_closing = false;
};

namespace Detail {

/// The input scale after the host's automatic one: `proposed` when it is a finite number above
/// 0, else `current`.
VARNEL_LIBWX_EXPORT float acceptedAutoScale(float current, float proposed);

/// The digits the input-scale spinner shows for `scale`: four significant ones, between 2 and 9
/// decimals.
VARNEL_LIBWX_EXPORT int inputScaleDigits(float scale);

} // namespace Detail
} // namespace Varnel::Wx
