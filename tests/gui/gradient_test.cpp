// The gradient control under real input: points added, dragged past each other, erased and
// recoloured through the picker; and the grid mapping dialog around it: reset, the curve's
// delayed reports, interpolation, the input scale and its preview, and how it closes.
#include "guitest.h"

#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/colorpicker.h>
#include <varnellibwx/widgets/colorsliderwithspinner.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/gradientcontrol.h>
#include <varnellibwx/widgets/gridmappingdialog.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/textcontrol.h>

#include <wx/weakref.h>

#include <chrono>
#include <cstring>

namespace {

const Rgb kRed(1, 0, 0, 1), kGreen(0, 1, 0, 1), kBlue(0, 0, 1, 1), kWhite(1, 1, 1, 1);

ColorGradient gradientOf(std::initializer_list<ColorGradient::Point> points) {
    ColorGradient gradient;
    for (const ColorGradient::Point& point : points)
        gradient.addPoint(point.color, point.position);
    return gradient;
}

// A 212 x 30 control: markers of radius 5 on y = 24, x = 6 + trunc(200 p).
class Gradients : public GuiTest {
protected:
    GradientControl& makeControl(const ColorGradient& gradient) {
        auto* control = new GradientControl(&parent(), wxSize(212, 30), 0.f, 1.f);
        control->SetPosition(wxPoint(20, 20));
        control->setGradient(gradient);
        control->setOnChangeCallback([this](const ColorGradient& g) {
            reported = g;
            log.record("change");
        });
        pumpPending();
        return *control;
    }

    static wxPoint marker(float position) { return {6 + int(200 * position), 24}; }

    // Double-clicks at `at` and runs `step` in the picker that opens.
    void recolorAt(GradientControl& control, wxPoint at, std::function<void(ColorPicker&)> step) {
        ModalDriver driver([&](wxDialog& dialog) { step(dynamic_cast<ColorPicker&>(dialog)); });
        input.moveTo(control, at);
        wxUIActionSimulator().MouseDblClick();
        pumpPending();
        EXPECT_EQ(driver.entered(), 1);
    }

    void dragRedToTheEnd(ColorPicker& picker) {
        ColorSlider& red = *picker.row(ColorPicker::Row::Red)->slider();
        input.drag(red, wxPoint(2, 3), wxPoint(red.GetClientSize().x + 20, 3));
    }

    Input input;
    CallLog log;
    ColorGradient reported;
};

} // namespace

TEST_F(Gradients, DoubleClickBetweenPointsAddsThePointTheRampAlreadyShows) {
    GradientControl& control = makeControl(gradientOf({{kRed, 0.f}, {kBlue, 1.f}}));
    const auto rampAboveMarkers = [&] {
        const wxImage drawn =
            renderOffscreen(control.GetClientSize(), [&](wxDC& dc) { control.paint(dc); });
        return drawn.GetSubImage(wxRect(0, 0, 212, 18));
    };
    const wxImage before = rampAboveMarkers();
    const float position = 74.f / 199.f; // the pointer at x = 80
    const Rgb there = control.getGradient().getColorAt(position);

    recolorAt(control, wxPoint(80, 10), [&](ColorPicker& picker) {
        EXPECT_EQ(picker.GetTitle(), "Set gradient control point color");
        EXPECT_EQ(picker.getColor(), there);
        picker.button("OK")->doClick(wxPoint(5, 5));
    });
    ASSERT_EQ(control.getGradient().points().size(), 3);
    EXPECT_EQ(control.getGradient().points()[1], (ColorGradient::Point{there, position}));
    EXPECT_EQ(log.calls(), Calls{"change"});
    EXPECT_EQ(reported, control.getGradient());
    const wxImage after = rampAboveMarkers();
    EXPECT_EQ(std::memcmp(before.GetData(), after.GetData(), 212 * 18 * 3), 0);
}

TEST_F(Gradients, DraggingPastANeighbourKeepsTheSamePointAndReportsOnRelease) {
    GradientControl& control =
        makeControl(gradientOf({{kRed, 0.f}, {kGreen, 0.3f}, {kBlue, 0.6f}, {kWhite, 1.f}}));
    input.press(control, marker(0.3f));
    EXPECT_EQ(control.grabbedPoint(), 1);
    EXPECT_TRUE(control.HasCapture());
    for (int x = 70; x <= 166; x += 16)
        input.moveTo(control, wxPoint(x, 24));
    // Past the blue point at 0.6, the grabbed green point is the third.
    EXPECT_TRUE(pumpUntil([&] { return control.grabbedPoint() == 2; }));
    EXPECT_EQ(control.getGradient().points()[2].color, kGreen);
    EXPECT_EQ(control.getGradient().points()[1].color, kBlue);
    input.moveTo(control, wxPoint(400, 24)); // far past the right end: held at 1
    EXPECT_TRUE(log.calls().empty()) << "nothing is reported during the drag";
    input.release();
    EXPECT_EQ(control.getGradient().points()[3], (ColorGradient::Point{kGreen, 1.f}));
    EXPECT_EQ(log.calls(), Calls{"change"});
    EXPECT_FALSE(control.grabbedPoint());
    EXPECT_FALSE(control.HasCapture());
}

TEST_F(Gradients, LosingTheMouseMidDragEndsTheDragAsAReleaseWould) {
    GradientControl& control = makeControl(gradientOf({{kRed, 0.f}, {kBlue, 1.f}}));
    input.press(control, marker(0.f));
    input.moveTo(control, wxPoint(80, 24));
    ASSERT_TRUE(pumpUntil([&] { return control.getGradient().points()[0].position > 0.f; }));
    // Another program takes the pointer: the toolkit has let go of it before telling the control.
    control.ReleaseMouse();
    wxMouseCaptureLostEvent lost(control.GetId());
    lost.SetEventObject(&control);
    control.GetEventHandler()->ProcessEvent(lost);
    EXPECT_FALSE(control.grabbedPoint());
    EXPECT_EQ(log.calls(), Calls{"change"});
    const ColorGradient left = control.getGradient();
    input.moveTo(control, wxPoint(140, 24));
    input.release();
    EXPECT_EQ(control.getGradient(), left);
    EXPECT_EQ(log.calls(), Calls{"change"});
}

TEST_F(Gradients, RightClickErasesOnlyAHitPoint) {
    GradientControl& control = makeControl(gradientOf({{kRed, 0.f}, {kBlue, 1.f}}));
    input.click(control, wxPoint(100, 8), wxMOUSE_BTN_RIGHT);
    input.click(control, wxPoint(100, 24), wxMOUSE_BTN_RIGHT);
    EXPECT_TRUE(log.calls().empty());
    EXPECT_EQ(control.getGradient().points().size(), 2);
    input.click(control, marker(1.f) + wxPoint(3, 4), wxMOUSE_BTN_RIGHT); // on the rim
    EXPECT_EQ(log.calls(), Calls{"change"});
    EXPECT_EQ(control.getGradient(), gradientOf({{kRed, 0.f}}));
}

TEST_F(Gradients, ThePickerRecoloursLiveAndOnlyOkReports) {
    const ColorGradient start = gradientOf({{kBlue, 0.f}, {Rgb(0, 0, 0, 0.5f), 1.f}});
    GradientControl& control = makeControl(start);
    recolorAt(control, marker(1.f), [&](ColorPicker& picker) {
        EXPECT_EQ(picker.getColor(), Rgb(0, 0, 0, 1));
        log.clear(); // the double click's first click pressed and released the point: a report
        dragRedToTheEnd(picker);
        EXPECT_EQ(control.getGradient().points()[1].color, Rgb(1, 0, 0, 0.5f)) << "live";
        EXPECT_TRUE(log.calls().empty());
        picker.button("OK")->doClick(wxPoint(5, 5));
    });
    EXPECT_EQ(log.calls(), Calls{"change"});
    EXPECT_EQ(reported.points()[1].color, Rgb(1, 0, 0, 0.5f)) << "the point keeps its alpha";

    // "Cancel" takes back a live edit of an existing point, and a point the double click added.
    const ColorGradient edited = control.getGradient();
    for (const wxPoint at : {marker(0.f), wxPoint(120, 10)}) {
        recolorAt(control, at, [&](ColorPicker& picker) {
            log.clear();
            dragRedToTheEnd(picker);
            EXPECT_NE(control.getGradient(), edited);
            picker.button("Cancel")->doClick(wxPoint(5, 5));
        });
        EXPECT_EQ(control.getGradient(), edited) << at.x;
    }
    EXPECT_TRUE(log.calls().empty());
}

TEST_F(Gradients, NonsenseFromTheHostPaintsAndEditsWithoutHarm) {
    GradientControl& control = makeControl(ColorGradient());
    // An empty gradient answers black: the double click adds a black point and "OK" keeps it.
    recolorAt(control, wxPoint(106, 10),
              [](ColorPicker& picker) { picker.button("OK")->doClick(wxPoint(5, 5)); });
    ASSERT_EQ(control.getGradient().points().size(), 1);
    EXPECT_EQ(control.getGradient().points()[0].color, ColorGradient::kEmptyColor);

    // Points at NaN and outside [0, 1] with colours no screen shows: drawn, and still dragged.
    control.setGradient(gradientOf(
        {{Rgb(kNaN, 1e30f, -5.f, 1), 0.5f}, {kRed, kNaN}, {kBlue, -3.f}, {kGreen, 40.f}}));
    renderOffscreen(control.GetClientSize(), [&](wxDC& dc) { control.paint(dc); });
    const int before = control.getGradient().points().size();
    input.drag(control, marker(0.5f), wxPoint(150, 24)); // the NaN-coloured point moves
    EXPECT_EQ(log.calls().back(), "change");
    EXPECT_EQ(control.getGradient().points().size(), before);
}

// ---- The grid mapping dialog -------------------------------------------------------------------

namespace {

// A host that records what the dialog tells it and paints the preview grey by value x scale.
class Host : public GridMappingDialogCallbacks {
public:
    void onMappingChanged(const GridMapping& mapping) override { reports.push_back(mapping); }
    float computeAutoScale() override { return autoScale; }
    Rgb getPreviewColor(float value, float inputScale) override {
        const float grey = value * inputScale;
        return Rgb(grey, grey, grey, 1);
    }
    void onDialogClosed(int result, const GridMapping& edited) override {
        closed.push_back(result);
        lastEdited = edited;
    }

    std::vector<GridMapping> reports;
    std::vector<int> closed;
    GridMapping lastEdited;
    float autoScale = 0.25f;
};

GridMapping mappingOf(ColorGradient gradient, std::initializer_list<CurvePoint> points,
                      int interpolation, float scale) {
    GridMapping mapping{std::move(gradient), Curve(), scale};
    mapping.curve.points() = Stack<CurvePoint>(points);
    mapping.curve.setInterpolation(interpolation);
    return mapping;
}

class GridMappings : public GuiTest {
protected:
    GridMappingDialog& open() {
        auto* dialog = new GridMappingDialog(&parent(), String(L"Channel mapping"), current,
                                             resetState, host, wxPoint(60, 60));
        raiseAndActivate(*dialog);
        return *dialog;
    }

    // Grabs the curve's first point (a grab alone changes nothing) and moves it `motions` times,
    // the motions handled at once one after another, then releases: a drag that the panel holds
    // back for its delay.
    void dragCurve(GridMappingDialog& dialog, int motions) {
        CurvePanel& panel = *dialog.curvePanel();
        const wxPoint middle = panel.model().toPixel({0.f, 0.f}) + wxPoint(1, -1);
        input.press(panel, middle);
        ASSERT_TRUE(pumpUntil([&] { return panel.model().dragging; }));
        for (int step = 1; step <= motions; ++step) {
            wxMouseEvent motion(wxEVT_MOTION);
            motion.SetPosition(middle - wxPoint(0, step % 20 + 10));
            motion.SetLeftDown(true);
            motion.SetEventObject(&panel);
            panel.GetEventHandler()->ProcessEvent(motion);
        }
        input.release();
        pumpPending();
    }

    static int previewRightEnd(GridMappingDialog& dialog) {
        const wxImage seen = captureOnScreen(*dialog.preview());
        return seen.GetRed(seen.GetWidth() - 1, seen.GetHeight() / 2);
    }

    GridMapping current = mappingOf(gradientOf({{kRed, 0.f}, {kBlue, 1.f}}),
                                    {{0.f, 0.f}, {1.f, 1.f}}, Curve::Cubic, 1.f);
    GridMapping resetState =
        mappingOf(gradientOf({{kWhite, 0.f}, {kGreen, 0.4f}, {kRed, 1.f}}),
                  {{0.f, 0.1f}, {0.5f, 0.3f}, {1.f, 0.9f}}, Curve::Linear, 0.5f);
    SharedPtr<Host> host = makeShared<Host>();
    Input input;
};

} // namespace

TEST_F(GridMappings, ResetAfterEditsRestoresEveryControlAndReportsOnce) {
    GridMappingDialog& dialog = open();
    EXPECT_TRUE(host->reports.empty()) << "opening reports nothing";
    GradientControl& gradient = *dialog.gradientControl();
    input.click(gradient, wxPoint(gradient.GetClientSize().x - 6, 20), wxMOUSE_BTN_RIGHT);
    dialog.interpolationChoice()->selectIndex(1, true);
    dialog.inputScaleSpinner()->setValue(3.f, true);
    ASSERT_EQ(host->reports.size(), 3u);
    EXPECT_EQ(host->reports.back().inputScale, 3.f);

    // A curve edit still held back by the panel's delay, then "Reset": one report.
    // (On a busy machine the delay may pass before the click: still one report each.)
    dragCurve(dialog, 5);
    const std::size_t edits = host->reports.size();
    input.click(*dialog.button("Reset"), wxPoint(5, 5));
    ASSERT_EQ(host->reports.size(), edits + 1);
    EXPECT_EQ(host->reports.back(), resetState);
    EXPECT_EQ(dialog.getCurrentMapping(), resetState);
    EXPECT_EQ(gradient.getGradient(), resetState.gradient);
    EXPECT_EQ(dialog.curvePanel()->getCurrentCurves()[CurveChannel::Master], resetState.curve);
    EXPECT_EQ(dialog.interpolationChoice()->getSelectedId(), Curve::Linear);
    EXPECT_EQ(dialog.inputScaleSpinner()->getValue(), 0.5f);
    ASSERT_TRUE(pumpUntil([&] { return !dialog.curvePanel()->hasPendingReports(); }));
    EXPECT_EQ(host->reports.size(), edits + 1);
}

TEST_F(GridMappings, ACurveDragIsOneReportOnceThePanelsDelayHasPassed) {
    GridMappingDialog& dialog = open();
    // The motions come faster than any timer can fire: handled one after another, with no
    // event loop between them.
    dragCurve(dialog, 40);
    ASSERT_TRUE(pumpUntil([&] { return !dialog.curvePanel()->hasPendingReports(); }));
    ASSERT_EQ(host->reports.size(), 1u);
    EXPECT_EQ(host->reports.back().curve,
              dialog.curvePanel()->getCurrentCurves()[CurveChannel::Master]);
}

TEST_F(GridMappings, InterpolationIsOneReportAndTheScaleRepaintsThePreview) {
    GridMappingDialog& dialog = open();
    dragCurve(dialog, 3);
    const std::size_t edits = host->reports.size(); // 0, or 1 when the machine was slow
    dialog.interpolationChoice()->selectIndex(1, true);
    ASSERT_TRUE(pumpUntil([&] { return !dialog.curvePanel()->hasPendingReports(); }));
    ASSERT_EQ(host->reports.size(), edits + 1) << "no second report from the panel";
    EXPECT_EQ(host->reports.back().curve.interpolation(), Curve::Linear);
    EXPECT_EQ(host->reports.back().curve,
              dialog.curvePanel()->getCurrentCurves()[CurveChannel::Master]);
    dialog.setCurrentMapping(current);
    host->reports.clear();

    EXPECT_EQ(previewRightEnd(dialog), 255);
    TextControl& field = *dialog.inputScaleSpinner()->textField();
    const auto type = [&](const char* text) {
        input.click(field, wxPoint(5, 5));
        field.SelectAll();
        input.typeText(text);
        input.key(WXK_RETURN);
    };
    type("0.5");
    EXPECT_EQ(host->reports.back().inputScale, 0.5f);
    EXPECT_EQ(previewRightEnd(dialog), 128); // 127.5 to the even 128
    type("scale");
    EXPECT_EQ(dialog.getCurrentMapping().inputScale, 0.5f);
    // Below the digits a scale of 1 shows: the digits follow, and what shows is reported.
    type("0.0004");
    EXPECT_EQ(host->reports.back().inputScale, 0.0004f);
    EXPECT_EQ(wxAtof(field.GetValue()), 0.0004);
    dialog.setCurrentMapping(mappingOf(current.gradient, {{0.f, 0.f}, {1.f, 1.f}}, 0, 1.234567f));
    EXPECT_EQ(dialog.getCurrentMapping().inputScale, dialog.inputScaleSpinner()->getValue());
    EXPECT_EQ(field.GetValue(), "1.235");

    input.click(*dialog.button("Auto-scale"), wxPoint(5, 5));
    EXPECT_EQ(host->reports.back().inputScale, 0.25f);
    EXPECT_EQ(field.GetValue(), "0.250");   // four significant digits
    EXPECT_EQ(previewRightEnd(dialog), 64); // 63.75
    const std::size_t reports = host->reports.size();
    for (float answer : {0.f, -1.f, kNaN, kInf}) {
        host->autoScale = answer;
        dialog.autoScale();
        EXPECT_EQ(dialog.getCurrentMapping().inputScale, 0.25f) << answer;
        EXPECT_EQ(dialog.inputScaleSpinner()->getValue(), 0.25f);
    }
    EXPECT_EQ(host->reports.size(), reports);
}

TEST_F(GridMappings, CancelRevertsTheHostAndOkKeepsTheEdits) {
    GridMapping edited = current;
    edited.inputScale = 2.f;
    for (const auto& [button, last] : {std::pair{"Cancel", current}, {"OK", edited}}) {
        GridMappingDialog& dialog = open();
        dialog.inputScaleSpinner()->setValue(2.f, true);
        const wxWeakRef<GridMappingDialog> alive(&dialog);
        input.click(*dialog.button(button), wxPoint(5, 5));
        EXPECT_TRUE(pumpUntil([&] { return !alive; })) << "destroyed by its close";
        EXPECT_EQ(host->reports.back(), last) << button;
        EXPECT_EQ(host->lastEdited, edited);
    }
    EXPECT_EQ(host->closed, (std::vector<int>{wxCANCEL, wxOK}));
}

TEST_F(GridMappings, EscapeAndTheCloseBoxCancelAndOkTakesACurveEditStillHeldBack) {
    const std::function<void(GridMappingDialog&)> cancels[] = {
        [&](GridMappingDialog&) { input.key(WXK_ESCAPE); },
        [](GridMappingDialog& dialog) { dialog.Close(); }, // as the window frame's close box
    };
    for (const auto& cancel : cancels) {
        GridMappingDialog& dialog = open();
        dialog.inputScaleSpinner()->setValue(2.f, true);
        const wxWeakRef<GridMappingDialog> alive(&dialog);
        cancel(dialog);
        ASSERT_TRUE(pumpUntil([&] { return !alive; })) << &cancel - cancels;
        EXPECT_EQ(host->reports.back(), current) << "reverted, as Cancel reverts";
        EXPECT_EQ(host->closed.back(), wxCANCEL);
    }

    GridMappingDialog& dialog = open();
    dragCurve(dialog, 5);
    const Curve edited = dialog.curvePanel()->getCurrentCurves()[CurveChannel::Master];
    ASSERT_NE(edited, current.curve);
    const wxWeakRef<GridMappingDialog> alive(&dialog);
    input.click(*dialog.button("OK"), wxPoint(5, 5));
    ASSERT_TRUE(pumpUntil([&] { return !alive; }));
    EXPECT_EQ(host->closed.back(), wxOK);
    EXPECT_EQ(host->reports.back().curve, edited);
    EXPECT_EQ(host->lastEdited.curve, edited);
}
