#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/optional.h>
#include <varnellib/base/pointers.h>
#include <varnellib/color/color.h>
#include <varnellib/native/windowhandle.h>
#include <varnellib/utility/colorcurve.h>
#include <varnellib/utility/histogram.h>
#include <varnellibwx/export.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/pixelmath.h>

#include <wx/bitmap.h>
#include <wx/panel.h>
#include <wx/timer.h>

#include <set>
#include <utility>

class wxDC;

namespace Varnel::Wx {

/// The wide-character name of a channel: "Master", "Red", "Green", "Blue".
VARNEL_LIBWX_EXPORT const wchar_t* curveChannelName(CurveChannel channel);

enum class HistogramType : int { Linear = 0, Logarithmic = 1, Cumulative = 2 };

/// What a curve panel asks of, and tells, its owner. Called on the GUI thread.
class VARNEL_LIBWX_EXPORT ICurvePanelCallbacks {
public:
    virtual ~ICurvePanelCallbacks();
    /// The histogram of `channel`'s values over `range` (0 to 1/zoom), in `binCount` bins.
    virtual Histogram getHistogram(std::pair<float, float> range, CurveChannel channel,
                                   int binCount) = 0;
    /// When set, the panel asks for its histogram again at this interval (milliseconds).
    virtual Optional<int> getHistogramRefreshInterval() = 0;
    /// The colour under a position of the owner's image, if any.
    virtual Optional<Rgb> getColorAt(Pixel pixel) = 0;
    /// An edited curve.
    virtual void onCurveChanged(CurveChannel channel, const Curve& curve) = 0;
    /// Below 1, edits are reported at once; otherwise they are gathered and reported, once per
    /// channel in ascending order, when this many milliseconds have passed since the last edit.
    virtual int getChangeNotificationDelay() = 0;
};

/// The panel's five operations with neutral answers, over any interface that has them (the
/// panel's own, the curve dialog's): no histogram, no refreshing, no colour at a pixel, edits
/// reported at once and heard by nobody.
template <class Interface>
class NeutralCurvePanelAnswers : public Interface {
public:
    Histogram getHistogram(std::pair<float, float>, CurveChannel, int) override {
        return Histogram();
    }
    Optional<int> getHistogramRefreshInterval() override { return {}; }
    Optional<Rgb> getColorAt(Pixel) override { return {}; }
    void onCurveChanged(CurveChannel, const Curve&) override {}
    int getChangeNotificationDelay() override { return 0; }
};

/// ICurvePanelCallbacks with neutral answers, for a host that writes only what it uses.
using CurvePanelCallbacksBase = NeutralCurvePanelAnswers<ICurvePanelCallbacks>;

/// Lets an owner drive the selected curve from its image view: a press on the image picks the
/// colour there and adds (or grabs) the control point at that value; moving moves the point
/// vertically. It must not outlive its panel.
class VARNEL_LIBWX_EXPORT ICurvePanelController {
public:
    virtual ~ICurvePanelController();
    virtual void startPicking(Pixel pixel) = 0;
    virtual void stopPicking() = 0;
    virtual void movePicking(Pixel pixel) = 0;
};

/// The editing rules of a curve panel, over numbers: where curve points lie on the panel, which
/// control point a position grabs, and what a press, a drag, a right-click and the wheel do to
/// the selected curve. The plot is the panel less a 5-pixel margin on every side, showing x and
/// y from 0 to 1/zoom with the zoom anchored at the lower left corner.
class VARNEL_LIBWX_EXPORT CurvePanelModel {
public:
    static constexpr int kMargin = 5;
    /// 0.01 (the float with bits 0x3C23D70A): the closest two control points may come in x.
    static constexpr float kMinGap = 0.01f;
    static constexpr float kZoomIn = 1.5f;
    static constexpr float kZoomOut = 0.6666667f;
    static constexpr float kMinZoom = 0.13168724f;
    static constexpr float kMaxZoom = 7.59375f;

    ColorCurve curves;
    CurveChannel selectedChannel = CurveChannel::Master;
    Optional<int> grabbedPoint;
    float dragMinX = 0.f;
    float dragMaxX = 0.f;
    bool dragging = false;
    float zoom = 1.f;

    /// The panel's size; the plot is 10 pixels smaller in each direction.
    void setSize(wxSize size);
    wxSize size() const { return m_size; }
    int plotWidth() const { return m_size.x - 2 * kMargin; }
    int plotHeight() const { return m_size.y - 2 * kMargin; }

    Curve& selectedCurve() { return curves[selectedChannel]; }
    const Curve& selectedCurve() const { return curves[selectedChannel]; }

    wxPoint toPixel(CurvePoint point) const;
    /// Not clamped: positions outside the plot give points outside 0..1/zoom.
    CurvePoint toCurve(wxPoint pixel) const;
    /// Pulls a mouse position into the plot (the margin's inner edge at the left and top).
    wxPoint clampToPlot(wxPoint position) const;
    /// The control point of the selected curve strictly within 12 pixels of `position`, the
    /// nearest; of equally near points the first in the list.
    Optional<int> hitTest(wxPoint position) const;

    /// A press: grabs the point under `position`, or adds one on the curve when the curve passes
    /// within 12 pixels (at exactly 12 the point is added but, the hit test being strict, not
    /// grabbed). Returns whether the selected curve changed.
    bool press(wxPoint position);
    /// A drag to `position` (clamped to the plot). An interior point dragged outside the band
    /// between its neighbours is erased; it comes back when the pointer returns into the band.
    void drag(wxPoint position);
    /// Stops a press or drag.
    void release();
    /// Erases the interior point under `position`; the end points are never removed. Returns
    /// whether one was.
    bool removeAt(wxPoint position);

    /// The point the keyboard edits (Tab and Shift+Tab choose it), if any.
    Optional<int> keyPoint;
    /// Tab: the next point of the selected curve (`direction` 1) or the previous one (-1),
    /// wrapping; the first (or last) when none was chosen.
    void selectKeyPoint(int direction);
    /// Moves the keyboard's point by whole pixels, kept inside the plot and, as a drag keeps it,
    /// at least kMinGap away from its neighbours (here it stops there rather than leaving the
    /// curve). True when it moved.
    bool moveKeyPoint(int dx, int dy);
    /// Removes the keyboard's point when it is an interior one; the previous point is chosen.
    bool removeKeyPoint();
    /// One wheel step: in for a positive rotation, out otherwise, within [kMinZoom, kMaxZoom].
    void zoomBy(int rotation);

private:
    void sortPoints();
    wxSize m_size;
};

/// The tone-curve editor: the four curves of a ColorCurve over a grid and the histogram of the
/// selected channel, the selected curve's control points editable with the mouse (press on or
/// near the curve to add or grab a point, drag it, right-click an interior point to remove it,
/// wheel to zoom). Edits are reported to the callbacks, merged per channel when they ask for a
/// delay. Works without callbacks too (no histogram, no reports). Owned by its parent.
class VARNEL_LIBWX_EXPORT CurvePanel : public wxPanel {
public:
    CurvePanel(wxWindow* parent, const GuiSkin& skin, wxSize size, ColorCurve curves,
               SharedPtr<ICurvePanelCallbacks> callbacks);
    ~CurvePanel() override;

    AutoPtr<ICurvePanelController> getController();
    ColorCurve getCurrentCurves() const { return m_model.curves; }
    CurveChannel getSelectedCurveChannel() const { return m_model.selectedChannel; }
    void resize(wxSize size);
    void setCurve(Curve curve, CurveChannel channel, bool notify);
    /// Replaces all four curves and reports each, master first.
    void setCurves(ColorCurve curves);
    void setHistogramType(HistogramType type);
    void setSelectedCurve(CurveChannel channel);
    /// Asks the callbacks for the histogram of the shown range and repaints.
    void updateHistogram();
    /// Whether edits are waiting for the callbacks' notification delay to pass.
    bool hasPendingReports() const { return !m_pendingChannels.empty(); }
    /// Ends a drag or a pick in progress: the point is let go, the mouse capture released, and
    /// what the gesture changed so far is one finished edit. Every change of the curves from
    /// outside the gesture (setCurve, setCurves, a key, another channel) ends it first, so that a
    /// grab never names a point of curves that replaced its own.
    void endGesture();
    /// Called after each finished edit of the user's (a drag from press to release, a removal,
    /// a key's edit; a run of the same arrow key on the same point is one edit) with the curves
    /// as they were before it: one step for an undo history.
    void callOnEditFinished(Function<void(const ColorCurve& before)> onEditFinished) {
        m_onEditFinished = std::move(onEditFinished);
    }

    const CurvePanelModel& model() const { return m_model; }
    float zoom() const { return m_model.zoom; }
    HistogramType histogramType() const { return m_histogramType; }
    /// Draws the whole panel into `dc` as it looks now: the background and plot, then the
    /// layers below, each clipped to the plot by paint.
    void paint(wxDC& dc) const;
    /// The layers of paint, in order, on their own (for measuring where the time goes).
    void paintHistogram(wxDC& dc) const;
    void paintGrid(wxDC& dc) const;
    void paintCurves(wxDC& dc) const;

private:
    class Controller;
    enum TimerId { kNotifyTimer = 0, kHistogramTimer = 1 };

    void report(std::initializer_list<CurveChannel> channels);
    void flushReports();

    void onPaint(wxPaintEvent& event);
    void onLeftDown(wxMouseEvent& event);
    void onLeftUp(wxMouseEvent& event);
    void onRightUp(wxMouseEvent& event);
    void onMotion(wxMouseEvent& event);
    void onWheel(wxMouseEvent& event);
    void onTimer(wxTimerEvent& event);
    void onCaptureLost(wxMouseCaptureLostEvent& event);
    void onKeyDown(wxKeyEvent& event);
    void finishGesture();
    /// Everything below the selected curve: background, plot, histogram, grid, diagonal and the
    /// other channels' curves.
    void paintBackdrop(wxDC& dc) const;
    /// The curves (the other channels' and, or, the selected one) through a graphics context.
    void drawCurves(wxDC& dc, bool others, bool selected) const;
    /// The selected curve's points and the hover marker.
    void paintPoints(wxDC& dc) const;

    /// The backdrop as last painted, and what it was painted from: a drag changes only the
    /// selected curve, so a repaint while dragging copies the backdrop instead of drawing the
    /// histogram's thousand lines and the other curves again.
    struct Backdrop {
        wxBitmap bitmap;
        wxSize size;
        float zoom = 0.f;
        HistogramType histogramType = HistogramType::Linear;
        CurveChannel selected = CurveChannel::Master;
        uint64 histogramVersion = 0;
        ColorCurve curves;
        bool matches(const CurvePanel& panel) const;
    };

    CurvePanelModel m_model;
    std::set<int> m_pendingChannels;
    Histogram m_histogram;
    HistogramType m_histogramType = HistogramType::Linear;
    wxTimer m_histogramTimer;
    Optional<CurvePoint> m_hoverPoint;
    SharedPtr<ICurvePanelCallbacks> m_callbacks;
    wxTimer m_notifyTimer;
    GuiSkin m_skin;
    uint64 m_histogramVersion = 0;
    mutable Backdrop m_backdrop;
    Function<void(const ColorCurve&)> m_onEditFinished;
    Optional<ColorCurve> m_gestureStart; // the curves when the current press began
    /// The last key edit (key and step, channel, point), while nothing else has happened since.
    struct KeyRun {
        int key = 0;
        CurveChannel channel = CurveChannel::Master;
        int point = -1;
        bool operator==(const KeyRun&) const = default;
    };
    Optional<KeyRun> m_keyRun;
};

namespace Detail {

/// The height of histogram column `column` as a share of the plot (0..1 for sane data): linear
/// count / max, logarithmic ln(count + 1) / ln(max + 1), or the cumulative share. Missing bins
/// count 0 and an empty histogram gives 0; an unknown type raises the stop exception.
VARNEL_LIBWX_EXPORT float histogramColumn(const Histogram& histogram,
                                          const Stack<float>& cumulative, HistogramType type,
                                          int column);

} // namespace Detail
} // namespace Varnel::Wx
