#include <varnellibwx/widgets/curvepanel.h>

#include <varnellib/base/stopexception.h>
#include <varnellibwx/scopeguards.h>

#include <wx/dcbuffer.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <vector>

namespace Varnel::Wx {

namespace {

constexpr int kHitRadiusSquared = 144;
// The hit test's first "best so far": no limit beyond the radius.
constexpr int kNoBestYet = 100 * 100 + 100 * 100;
constexpr int kPointRadius = 4;
constexpr int kGridDivisions = 8;
constexpr int kUnitEdgeWidth = 3;
// The reference diagonal runs between these curve points, far outside any zoomed plot.
constexpr float kDiagonalEnd = 100.f;
// Where the unknown histogram type is reported from, as hosts have always seen it.
constexpr int kUnknownHistogramTypeLine = 135;

const wxColour kPlotFill(60, 60, 60);
const wxColour kGridColour(120, 120, 120);

wxColour histogramColour(CurveChannel channel) {
    switch (channel) {
    case CurveChannel::Red:
        return {220, 100, 100};
    case CurveChannel::Green:
        return {100, 220, 100};
    case CurveChannel::Blue:
        return {100, 100, 220};
    case CurveChannel::Master:
        break;
    }
    return {170, 170, 170};
}

wxColour curveColour(CurveChannel channel) {
    switch (channel) {
    case CurveChannel::Red:
        return *wxRED;
    case CurveChannel::Green:
        return *wxGREEN;
    case CurveChannel::Blue:
        return *wxBLUE;
    case CurveChannel::Master:
        break;
    }
    return *wxBLACK;
}

int squaredDistance(wxPoint a, wxPoint b) {
    const long long dx = a.x - b.x, dy = a.y - b.y;
    return static_cast<int>(std::min<long long>(dx * dx + dy * dy, INT_MAX));
}

} // namespace

const wchar_t* curveChannelName(CurveChannel channel) {
    static const wchar_t* const names[kCurveChannelCount] = {L"Master", L"Red", L"Green", L"Blue"};
    const int index = static_cast<int>(channel);
    VARNEL_REQUIRE(index >= 0 && index < kCurveChannelCount, "widgets/curvepanel");
    return names[index];
}

ICurvePanelCallbacks::~ICurvePanelCallbacks() = default;
ICurvePanelController::~ICurvePanelController() = default;

// ---- The model -------------------------------------------------------------------------------

void CurvePanelModel::setSize(wxSize size) {
    m_size = size;
}

wxPoint CurvePanelModel::toPixel(CurvePoint point) const {
    const float width = static_cast<float>(plotWidth()), height = static_cast<float>(plotHeight());
    return {Detail::truncToPixel(width * point.x * zoom) + kMargin,
            m_size.y - Detail::truncToPixel(height * point.y * zoom) - kMargin};
}

CurvePoint CurvePanelModel::toCurve(wxPoint pixel) const {
    // A plot narrower than a pixel divides as if it were one: positions stay finite.
    const float width = static_cast<float>(std::max(plotWidth(), 1));
    const float height = static_cast<float>(std::max(plotHeight(), 1));
    return {static_cast<float>(pixel.x - kMargin) * (1.f / zoom) / width,
            static_cast<float>(m_size.y - pixel.y - kMargin) * (1.f / zoom) / height};
}

wxPoint CurvePanelModel::clampToPlot(wxPoint position) const {
    const auto clamp = [](int value, int extent) {
        value = std::min(extent - kMargin, value);
        return value < kMargin + 1 ? kMargin : value;
    };
    wxPoint clamped(clamp(position.x, m_size.x), clamp(position.y, m_size.y));
    if (m_size.y < 2 * kMargin)
        clamped.y = m_size.y - kMargin;
    return clamped;
}

Optional<int> CurvePanelModel::hitTest(wxPoint position) const {
    const Stack<CurvePoint>& points = selectedCurve().points();
    Optional<int> found;
    int best = kNoBestYet;
    for (int i = 0; i < points.size(); ++i) {
        const int distance = squaredDistance(toPixel(points[i]), position);
        if (distance < kHitRadiusSquared && distance < best) {
            best = distance;
            found = i;
        }
    }
    return found;
}

void CurvePanelModel::sortPoints() {
    Stack<CurvePoint>& points = selectedCurve().points();
    std::stable_sort(points.begin(), points.end(),
                     [](const CurvePoint& a, const CurvePoint& b) { return a.x < b.x; });
}

bool CurvePanelModel::press(wxPoint position) {
    grabbedPoint.reset();
    dragMinX = dragMaxX = 0.f;
    dragging = true;
    bool changed = false;
    grabbedPoint = hitTest(position);
    if (!grabbedPoint) {
        const Curve& curve = selectedCurve();
        const float x = toCurve(position).x;
        const CurvePoint onCurve{x, curve(x)};
        if (squaredDistance(position, toPixel(onCurve)) > kHitRadiusSquared)
            return false;
        selectedCurve().points().push(onCurve);
        sortPoints();
        grabbedPoint = hitTest(position);
        changed = true;
    }
    const Stack<CurvePoint>& points = selectedCurve().points();
    if (grabbedPoint && *grabbedPoint > 0 && *grabbedPoint < points.size() - 1) {
        dragMinX = points[*grabbedPoint - 1].x + kMinGap;
        dragMaxX = points[*grabbedPoint + 1].x - kMinGap;
    }
    return changed;
}

void CurvePanelModel::drag(wxPoint position) {
    const wxPoint clamped = clampToPlot(position);
    const CurvePoint at = toCurve(clamped);
    Stack<CurvePoint>& points = selectedCurve().points();
    // The curve may have been replaced under the pointer: a grab that no longer names a point
    // ends the drag rather than reach past the list.
    if (grabbedPoint && *grabbedPoint >= points.size()) {
        release();
        return;
    }
    if (grabbedPoint) {
        const int i = *grabbedPoint;
        const int last = points.size() - 1;
        if (i == 0) {
            points[0] = at;
            // A lone point has no neighbour to keep away from.
            if (last > 0)
                points[0].x = std::min(at.x, points[1].x - kMinGap);
        } else if (i == last) {
            points[i] = at;
            points[i].x = std::max(at.x, points[i - 1].x + kMinGap);
        } else if (dragMinX <= at.x && at.x <= dragMaxX) {
            points[i] = at;
            sortPoints();
            grabbedPoint = hitTest(clamped);
        } else {
            // Dragged past a neighbour: the point goes (and comes back if the pointer returns).
            points.erase(i);
            grabbedPoint.reset();
        }
    } else if (dragMinX <= at.x && at.x <= dragMaxX) {
        points.push(at);
        sortPoints();
        grabbedPoint = hitTest(clamped);
    }
}

void CurvePanelModel::release() {
    grabbedPoint.reset();
    dragging = false;
}

bool CurvePanelModel::removeAt(wxPoint position) {
    const Optional<int> hit = hitTest(position);
    Stack<CurvePoint>& points = selectedCurve().points();
    if (!hit || *hit == 0 || *hit == points.size() - 1)
        return false;
    points.erase(*hit);
    return true;
}

void CurvePanelModel::selectKeyPoint(int direction) {
    const int count = selectedCurve().points().size();
    if (count == 0) {
        keyPoint.reset();
        return;
    }
    if (!keyPoint || *keyPoint >= count)
        keyPoint = direction > 0 ? 0 : count - 1;
    else
        keyPoint = (*keyPoint + direction + count) % count;
}

bool CurvePanelModel::moveKeyPoint(int dx, int dy) {
    Stack<CurvePoint>& points = selectedCurve().points();
    if (!keyPoint || *keyPoint >= points.size())
        return false;
    const int i = *keyPoint;
    const CurvePoint from = points[i];
    const CurvePoint moved = toCurve(clampToPlot(toPixel(from) + wxPoint(dx, dy)));
    // A coordinate the key did not move stays exactly where it was.
    CurvePoint at{dx != 0 ? moved.x : from.x, dy != 0 ? moved.y : from.y};
    const float low = i > 0 ? points[i - 1].x + kMinGap : -std::numeric_limits<float>::infinity();
    const float high =
        i < points.size() - 1 ? points[i + 1].x - kMinGap : std::numeric_limits<float>::infinity();
    // Neighbours closer than two gaps (curve files have points 1/255 apart) leave no room: the
    // point keeps its x, so the list stays sorted.
    at.x = low <= high ? std::clamp(at.x, low, high) : from.x;
    if (at == from)
        return false;
    points[i] = at;
    return true;
}

bool CurvePanelModel::removeKeyPoint() {
    Stack<CurvePoint>& points = selectedCurve().points();
    if (!keyPoint || *keyPoint <= 0 || *keyPoint >= points.size() - 1)
        return false;
    points.erase(*keyPoint);
    keyPoint = *keyPoint - 1;
    return true;
}

void CurvePanelModel::zoomBy(int rotation) {
    zoom = std::clamp(zoom * (rotation > 0 ? kZoomIn : kZoomOut), kMinZoom, kMaxZoom);
}

// ---- The panel -------------------------------------------------------------------------------

class CurvePanel::Controller : public ICurvePanelController {
public:
    explicit Controller(CurvePanel& panel) : m_panel(panel) {}

    void startPicking(Pixel pixel) override {
        if (!m_panel.m_callbacks)
            return;
        const Optional<Rgb> colour = m_panel.m_callbacks->getColorAt(pixel);
        if (!colour)
            return;
        CurvePanelModel& model = m_panel.m_model;
        float value = 0.f;
        switch (model.selectedChannel) {
        case CurveChannel::Master:
            value = colour->r * 0.33333334f + colour->g * 0.33333334f + colour->b * 0.33333334f;
            break;
        case CurveChannel::Red:
            value = colour->r;
            break;
        case CurveChannel::Green:
            value = colour->g;
            break;
        case CurveChannel::Blue:
            value = colour->b;
            break;
        }
        // A colour that is no number picks nothing.
        if (!std::isfinite(value))
            return;
        value = std::max(value, 0.f);
        m_panel.m_gestureStart = model.curves; // a pick is one edit, like a drag
        if (model.press(model.toPixel({value, model.selectedCurve()(value)})))
            m_panel.report({model.selectedChannel});
        m_last = pixel;
    }

    void stopPicking() override {
        if (m_panel.m_model.dragging)
            m_panel.m_model.release();
        m_panel.finishGesture();
    }

    void movePicking(Pixel pixel) override {
        CurvePanelModel& model = m_panel.m_model;
        if (!model.dragging)
            return;
        if (model.grabbedPoint && *model.grabbedPoint < model.selectedCurve().points().size()) {
            // Only the vertical movement of the picking pointer counts.
            wxPoint at = model.toPixel(model.selectedCurve().points()[*model.grabbedPoint]);
            at.y += pixel.y - m_last.y;
            model.drag(at);
            m_panel.report({model.selectedChannel});
        }
        m_last = pixel;
    }

private:
    CurvePanel& m_panel;
    Pixel m_last;
};

CurvePanel::CurvePanel(wxWindow* parent, const GuiSkin& skin, wxSize size, ColorCurve curves,
                       SharedPtr<ICurvePanelCallbacks> callbacks)
    // Tab and the arrows edit points, so the panel asks for every key.
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, size,
              wxTAB_TRAVERSAL | wxWANTS_CHARS | wxBORDER_NONE),
      m_histogramTimer(this, kHistogramTimer), m_callbacks(std::move(callbacks)),
      m_notifyTimer(this, kNotifyTimer), m_skin(skin) {
    m_model.curves = std::move(curves);
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    if (m_callbacks)
        if (const Optional<int> interval = m_callbacks->getHistogramRefreshInterval())
            m_histogramTimer.Start(std::max(*interval, 1));
    SetSize(size);
    m_model.setSize(GetSize());
    updateHistogram();

    Bind(wxEVT_PAINT, &CurvePanel::onPaint, this);
    Bind(wxEVT_ERASE_BACKGROUND, [](wxEraseEvent&) {});
    Bind(wxEVT_LEFT_DOWN, &CurvePanel::onLeftDown, this);
    Bind(wxEVT_LEFT_UP, &CurvePanel::onLeftUp, this);
    Bind(wxEVT_RIGHT_UP, &CurvePanel::onRightUp, this);
    Bind(wxEVT_MOTION, &CurvePanel::onMotion, this);
    Bind(wxEVT_MOUSEWHEEL, &CurvePanel::onWheel, this);
    Bind(wxEVT_TIMER, &CurvePanel::onTimer, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, &CurvePanel::onCaptureLost, this);
    Bind(wxEVT_KEY_DOWN, &CurvePanel::onKeyDown, this);
}

CurvePanel::~CurvePanel() {
    if (HasCapture())
        ReleaseMouse();
    m_notifyTimer.Stop();
    m_histogramTimer.Stop();
}

AutoPtr<ICurvePanelController> CurvePanel::getController() {
    return makeAuto<Controller>(*this);
}

void CurvePanel::resize(wxSize size) {
    SetSize(size);
    m_model.setSize(GetSize());
    updateHistogram();
}

void CurvePanel::endGesture() {
    m_keyRun.reset();
    if (!m_model.dragging && !m_gestureStart)
        return;
    m_model.release();
    if (HasCapture())
        ReleaseMouse();
    finishGesture();
}

void CurvePanel::setCurve(Curve curve, CurveChannel channel, bool notify) {
    endGesture();
    m_model.curves[channel] = std::move(curve);
    if (notify)
        report({channel});
    else
        Refresh(false);
}

void CurvePanel::setCurves(ColorCurve curves) {
    endGesture();
    m_model.curves = std::move(curves);
    report({CurveChannel::Master, CurveChannel::Red, CurveChannel::Green, CurveChannel::Blue});
}

void CurvePanel::setHistogramType(HistogramType type) {
    m_histogramType = type;
    updateHistogram();
}

void CurvePanel::setSelectedCurve(CurveChannel channel) {
    curveChannelName(channel); // a channel outside the four is a programming error
    endGesture();
    m_model.selectedChannel = channel;
    m_model.keyPoint.reset();
    Refresh(false);
}

void CurvePanel::updateHistogram() {
    if (m_callbacks)
        m_histogram = m_callbacks->getHistogram({0.f, 1.f / m_model.zoom}, m_model.selectedChannel,
                                                m_model.plotWidth());
    ++m_histogramVersion;
    Refresh(false);
}

void CurvePanel::report(std::initializer_list<CurveChannel> channels) {
    for (CurveChannel channel : channels)
        m_pendingChannels.insert(static_cast<int>(channel));
    const int delay = m_callbacks ? m_callbacks->getChangeNotificationDelay() : 0;
    if (delay < 1)
        flushReports();
    else
        m_notifyTimer.StartOnce(delay);
    Refresh(false);
}

void CurvePanel::flushReports() {
    const std::set<int> pending = std::exchange(m_pendingChannels, {});
    if (!m_callbacks)
        return;
    for (int channel : pending)
        m_callbacks->onCurveChanged(static_cast<CurveChannel>(channel),
                                    m_model.curves[static_cast<CurveChannel>(channel)]);
}

// ---- Painting --------------------------------------------------------------------------------

bool CurvePanel::Backdrop::matches(const CurvePanel& panel) const {
    const CurvePanelModel& model = panel.m_model;
    if (!bitmap.IsOk() || size != model.size() || zoom != model.zoom ||
        histogramType != panel.m_histogramType || selected != model.selectedChannel ||
        histogramVersion != panel.m_histogramVersion)
        return false;
    for (int index = 0; index < kCurveChannelCount; ++index) {
        const auto channel = static_cast<CurveChannel>(index);
        if (channel != selected && !(curves[channel] == model.curves[channel]))
            return false;
    }
    return true;
}

void CurvePanel::paint(wxDC& dc) const {
    const wxSize size = m_model.size();
    if (size.x < 1 || size.y < 1)
        return;
    if (!m_backdrop.matches(*this)) {
        m_backdrop.bitmap = wxBitmap(size, 24);
        wxMemoryDC backdrop(m_backdrop.bitmap);
        paintBackdrop(backdrop);
        backdrop.SelectObject(wxNullBitmap);
        m_backdrop.size = size;
        m_backdrop.zoom = m_model.zoom;
        m_backdrop.histogramType = m_histogramType;
        m_backdrop.selected = m_model.selectedChannel;
        m_backdrop.histogramVersion = m_histogramVersion;
        m_backdrop.curves = m_model.curves;
    }
    dc.DrawBitmap(m_backdrop.bitmap, 0, 0, false);
    const wxRect plot(CurvePanelModel::kMargin, CurvePanelModel::kMargin, m_model.plotWidth(),
                      m_model.plotHeight());
    if (plot.IsEmpty())
        return;
    const ScopedClippingRegion clip(dc, plot);
    drawCurves(dc, false, true);
    paintPoints(dc);
}

void CurvePanel::paintBackdrop(wxDC& dc) const {
    const wxSize size = m_model.size();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(toWxColour(m_skin.background)));
    dc.DrawRectangle(wxPoint(0, 0), size);
    const wxRect plot(CurvePanelModel::kMargin, CurvePanelModel::kMargin, m_model.plotWidth(),
                      m_model.plotHeight());
    if (plot.IsEmpty())
        return;
    dc.SetBrush(wxBrush(kPlotFill));
    dc.DrawRectangle(plot);

    const ScopedClippingRegion clip(dc, plot);
    paintHistogram(dc);
    paintGrid(dc);
    dc.SetPen(wxPen(*wxBLACK, 1, wxPENSTYLE_SHORT_DASH));
    dc.DrawLine(m_model.toPixel({-kDiagonalEnd, -kDiagonalEnd}),
                m_model.toPixel({kDiagonalEnd, kDiagonalEnd}));
    drawCurves(dc, true, false);
}

void CurvePanel::paintHistogram(wxDC& dc) const {
    if (m_histogram.bins().isEmpty())
        return;
    const Stack<float> cumulative = m_histogramType == HistogramType::Cumulative
                                        ? m_histogram.getCumulativeHistogram()
                                        : Stack<float>();
    const int plotHeight = m_model.plotHeight();
    const int bottom = plotHeight + CurvePanelModel::kMargin;
    dc.SetPen(wxPen(histogramColour(m_model.selectedChannel)));
    for (int column = 0; column < m_model.plotWidth(); ++column) {
        const float share =
            Detail::histogramColumn(m_histogram, cumulative, m_histogramType, column);
        const int x = column + CurvePanelModel::kMargin;
        dc.DrawLine(x, bottom, x,
                    plotHeight - Detail::truncToPixel(static_cast<float>(plotHeight) * share) +
                        CurvePanelModel::kMargin);
    }
}

void CurvePanel::paintGrid(wxDC& dc) const {
    const wxSize size = m_model.size();
    const float zoom = m_model.zoom;
    const int lines = static_cast<int>(std::ceil(static_cast<float>(kGridDivisions) / zoom));
    const float columnStep = static_cast<float>(m_model.plotWidth()) / kGridDivisions;
    const float rowStep = static_cast<float>(m_model.plotHeight()) / kGridDivisions;
    const int margin = CurvePanelModel::kMargin;
    for (int i = 0; i <= lines; ++i) {
        const bool unitEdge = i == 0 || i == kGridDivisions;
        const wxPen pen(kGridColour, unitEdge ? kUnitEdgeWidth : 1);
        dc.SetPen(pen);
        const int x = Detail::truncToPixel(static_cast<float>(i) * columnStep * zoom) + margin;
        dc.DrawLine(x, margin, x, size.y - margin);
        const int y =
            size.y - Detail::truncToPixel(static_cast<float>(i) * rowStep * zoom) - margin;
        dc.DrawLine(margin, y, size.x - margin, y);
    }
}

void CurvePanel::paintCurves(wxDC& dc) const {
    dc.SetPen(wxPen(*wxBLACK, 1, wxPENSTYLE_SHORT_DASH));
    dc.DrawLine(m_model.toPixel({-kDiagonalEnd, -kDiagonalEnd}),
                m_model.toPixel({kDiagonalEnd, kDiagonalEnd}));
    drawCurves(dc, true, true);
    paintPoints(dc);
}

void CurvePanel::drawCurves(wxDC& dc, bool others, bool selected) const {
    // One x per plot column, from the panel's left edge; every curve is evaluated over them in
    // one pass.
    const int columns = std::max(m_model.plotWidth(), 1);
    const float scale = static_cast<float>(columns) * m_model.zoom;
    std::vector<float> xs(static_cast<std::size_t>(columns)), ys(xs.size());
    xs[0] = -static_cast<float>(CurvePanelModel::kMargin) / scale;
    for (int c = 1; c < columns; ++c)
        xs[static_cast<std::size_t>(c)] = static_cast<float>(c) / scale;

    std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::CreateFromUnknownDC(dc));
    if (!gc)
        return;
    gc->SetAntialiasMode(wxANTIALIAS_DEFAULT);
    gc->Clip(CurvePanelModel::kMargin, CurvePanelModel::kMargin, m_model.plotWidth(),
             m_model.plotHeight());
    const auto drawCurve = [&](CurveChannel channel, bool isSelected) {
        const Curve& curve = m_model.curves[channel];
        curve.evaluate(ArrayView<const float>(xs.data(), columns),
                       ArrayView<float>(ys.data(), columns));
        wxGraphicsPath path = gc->CreatePath();
        for (int c = 0; c < columns; ++c) {
            const std::size_t i = static_cast<std::size_t>(c);
            const wxPoint at = m_model.toPixel({xs[i], std::max(0.f, ys[i])});
            if (c == 0)
                path.MoveToPoint(at.x, at.y);
            else
                path.AddLineToPoint(at.x, at.y);
        }
        gc->SetPen(wxPen(curveColour(channel), isSelected ? 2 : 1));
        gc->StrokePath(path);
    };
    for (int index = 0; others && index < kCurveChannelCount; ++index) {
        const auto channel = static_cast<CurveChannel>(index);
        if (channel != m_model.selectedChannel && !m_model.curves[channel].isIdentity())
            drawCurve(channel, false);
    }
    if (selected)
        drawCurve(m_model.selectedChannel, true);
}

void CurvePanel::paintPoints(wxDC& dc) const {
    const wxSize size = m_model.size();
    const auto visible = [size](wxPoint centre) {
        return centre.x >= kPointRadius && centre.y >= kPointRadius &&
               centre.x < size.x - kPointRadius && centre.y < size.y - kPointRadius;
    };
    dc.SetPen(wxPen(*wxBLACK, 1, wxPENSTYLE_SHORT_DASH));
    dc.SetBrush(*wxWHITE_BRUSH);
    const Stack<CurvePoint>& points = m_model.selectedCurve().points();
    for (int i = 0; i < points.size(); ++i) {
        const wxPoint centre = m_model.toPixel(points[i]);
        if (!visible(centre))
            continue;
        // The keyboard's point is filled with the skin's highlight.
        const bool chosen = m_model.keyPoint == i;
        if (chosen)
            dc.SetBrush(wxBrush(toWxColour(m_skin.toggledBackground)));
        dc.DrawCircle(centre, kPointRadius);
        if (chosen)
            dc.SetBrush(*wxWHITE_BRUSH);
    }
    if (!m_model.dragging && m_hoverPoint) {
        const float x = m_hoverPoint->x;
        const wxPoint centre = m_model.toPixel({x, m_model.selectedCurve()(x)});
        if (visible(centre)) {
            dc.SetPen(*wxWHITE_PEN);
            dc.SetBrush(*wxTRANSPARENT_BRUSH);
            dc.DrawCircle(centre, kPointRadius);
        }
    }
}

// ---- Wiring ----------------------------------------------------------------------------------

void CurvePanel::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    paint(dc);
}

void CurvePanel::onLeftDown(wxMouseEvent& event) {
    endGesture();
    m_gestureStart = m_model.curves;
    if (m_model.press(m_model.clampToPlot(event.GetPosition())))
        report({m_model.selectedChannel});
    if (!HasCapture())
        CaptureMouse();
    SetFocus(); // the keys edit what the mouse last touched
}

void CurvePanel::onLeftUp(wxMouseEvent&) {
    if (m_model.dragging)
        m_model.release();
    if (HasCapture())
        ReleaseMouse();
    finishGesture();
}

void CurvePanel::finishGesture() {
    if (!m_gestureStart)
        return;
    const ColorCurve before = std::move(*m_gestureStart);
    m_gestureStart.reset();
    if (before != m_model.curves && m_onEditFinished)
        m_onEditFinished(before);
}

void CurvePanel::onRightUp(wxMouseEvent& event) {
    endGesture();
    const ColorCurve before = m_model.curves;
    if (m_model.removeAt(event.GetPosition())) {
        report({m_model.selectedChannel});
        if (m_onEditFinished)
            m_onEditFinished(before);
    }
}

void CurvePanel::onKeyDown(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const int step = event.ShiftDown() ? 10 : 1;
    static constexpr int kMoves[][3] = {
        {WXK_LEFT, -1, 0}, {WXK_RIGHT, 1, 0}, {WXK_UP, 0, -1}, {WXK_DOWN, 0, 1}};
    const int* move = nullptr;
    for (const int* candidate : kMoves)
        if (candidate[0] == key)
            move = candidate;
    if (key != WXK_TAB && key != WXK_DELETE && !move) {
        event.Skip();
        return;
    }
    // A key edit while the mouse or a pick holds a point lets go of it first.
    const Optional<KeyRun> run = m_keyRun;
    endGesture();
    if (key == WXK_TAB) {
        m_model.selectKeyPoint(event.ShiftDown() ? -1 : 1);
        Refresh(false);
        return;
    }
    const ColorCurve before = m_model.curves;
    const KeyRun now{key * 16 + step, m_model.selectedChannel, m_model.keyPoint.value_or(-1)};
    const bool changed =
        move ? m_model.moveKeyPoint(move[1] * step, move[2] * step) : m_model.removeKeyPoint();
    if (!changed)
        return;
    report({m_model.selectedChannel});
    // Holding a key repeats it many times a second: the whole run on one point is one edit.
    if (move)
        m_keyRun = now;
    if (!(move && run == now) && m_onEditFinished)
        m_onEditFinished(before);
}

void CurvePanel::onMotion(wxMouseEvent& event) {
    event.Skip();
    if (m_model.dragging) {
        m_model.drag(event.GetPosition());
        m_hoverPoint.reset();
        SetCursor(wxCursor(wxCURSOR_CROSS));
        report({m_model.selectedChannel});
        return;
    }
    const CurvePoint at = m_model.toCurve(event.GetPosition());
    m_hoverPoint = CurvePoint{at.x, m_model.selectedCurve()(at.x)};
    SetCursor(wxCursor(m_model.hitTest(event.GetPosition()) ? wxCURSOR_SIZING : wxCURSOR_CROSS));
    Refresh(false);
}

void CurvePanel::onWheel(wxMouseEvent& event) {
    m_model.zoomBy(event.GetWheelRotation());
    updateHistogram();
}

void CurvePanel::onTimer(wxTimerEvent& event) {
    if (event.GetId() == kNotifyTimer)
        flushReports();
    else
        updateHistogram();
}

void CurvePanel::onCaptureLost(wxMouseCaptureLostEvent&) {
    // The capture is gone already; only the drag ends.
    if (m_model.dragging)
        m_model.release();
    finishGesture();
}

namespace Detail {

float histogramColumn(const Histogram& histogram, const Stack<float>& cumulative,
                      HistogramType type, int column) {
    const Stack<uint64>& bins = histogram.bins();
    const double count = column < bins.size() ? static_cast<double>(bins[column]) : 0.0;
    const auto max = static_cast<float>(histogram.maxCount());
    switch (type) {
    case HistogramType::Linear:
        return max > 0.f ? static_cast<float>(count) * (1.f / max) : 0.f;
    case HistogramType::Logarithmic:
        return max > 0.f ? std::log(static_cast<float>(count) + 1.f) * (1.f / std::log(max + 1.f))
                         : 0.f;
    case HistogramType::Cumulative:
        return column < cumulative.size() ? cumulative[column] : 0.f;
    }
    Varnel::Detail::throwStopException("widgets/curvepanel", kUnknownHistogramTypeLine);
}

} // namespace Detail
} // namespace Varnel::Wx
