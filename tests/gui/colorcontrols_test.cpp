// The colour controls under real input: sliders and the HWB slice dragged past their ends, rows
// typed into and cleared, the hex field, the keys, and what a user sees of the patch and track.
#include "guitest.h"

#include <varnellibwx/widgets/colordisplay.h>
#include <varnellibwx/widgets/colorsliderwithspinner.h>
#include <varnellibwx/widgets/hexcoloredit.h>
#include <varnellibwx/widgets/hwbslice.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/textcontrol.h>

namespace {

// A grey ramp up to mid-grey, so that white is the marker's alone: the track at p is grey p / 2.
SharedPtr<ColorSlider::Gradient> greyRamp() {
    return makeShared<ColorSlider::Gradient>(
        [](float p, float) { return Rgb(p / 2, p / 2, p / 2, 1.f); });
}

class ColorControls : public GuiTest {
protected:
    ColorSlider& makeSlider(wxSize size) {
        auto* slider = new ColorSlider(&parent(), wxID_ANY, size, greyRamp());
        slider->SetPosition(wxPoint(20, 20));
        slider->callOnPress([this] { log.record("press"); });
        slider->callOnChange([this](float p) { log.record(std::to_string(p)); });
        pumpPending();
        return *slider;
    }

    ColorSliderWithSpinner& makeRow() {
        auto* row = new ColorSliderWithSpinner(&parent(), wxID_ANY, String(L"Red:"), 50,
                                               wxSize(105, 14), greyRamp(), 0, 255, 0, 1.f);
        row->SetPosition(wxPoint(20, 60));
        row->callOnValueChange([this](float v) { log.record("value " + std::to_string(v)); });
        pumpPending();
        return *row;
    }

    static bool hasMarker(wxWindow& window) {
        return countPixels(captureOnScreen(window), *wxWHITE) > 0;
    }

    Input input;
    CallLog log;
};

} // namespace

TEST_F(ColorControls, SlidersFollowTheDragClampedPastBothEnds) {
    ColorSlider& slider = makeSlider(wxSize(105, 14));
    input.press(slider, wxPoint(50, 7));
    EXPECT_EQ(log.calls(), (Calls{"press", std::to_string(0.5f)})); // the press comes first
    EXPECT_TRUE(slider.HasCapture());
    input.moveTo(slider, wxPoint(300, -20)); // far past the end (the clamp is the model's)
    EXPECT_EQ(slider.getPosition(), 1.f);
    input.release();
    EXPECT_FALSE(slider.HasCapture());

    // At 1 the marker covers the last five columns: black frame, white inside.
    const wxImage seen = captureOnScreen(slider);
    EXPECT_EQ(pixelAt(seen, 104, 7), *wxBLACK);
    EXPECT_EQ(pixelAt(seen, 102, 7), *wxWHITE);
    EXPECT_EQ(pixelAt(seen, 52, 7), wxColour(64, 64, 64)); // the track under position 0.5

    // A vertical slider: the track runs downwards and position 1 touches the bottom edge.
    ColorSlider& vertical = makeSlider(wxSize(14, 105));
    ASSERT_TRUE(vertical.isVertical());
    input.drag(vertical, wxPoint(7, 10), wxPoint(7, 400));
    EXPECT_EQ(vertical.getPosition(), 1.f);
    const wxImage column = captureOnScreen(vertical);
    EXPECT_EQ(pixelAt(column, 7, 104), *wxBLACK);
    EXPECT_EQ(pixelAt(column, 7, 102), *wxWHITE);
}

TEST_F(ColorControls, KeysStepTheRowsSpinnerAndReportLikeADrag) {
    ColorSliderWithSpinner& row = makeRow();
    row.setValue(100.f);
    row.slider()->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return row.slider()->HasFocus(); }));
    const std::pair<int, float> keys[] = {
        {WXK_RIGHT, 101.f},  {WXK_LEFT, 100.f}, {WXK_PAGEDOWN, 110.f},
        {WXK_PAGEUP, 100.f}, {WXK_END, 255.f},  {WXK_HOME, 0.f},
    };
    for (const auto& [key, value] : keys) {
        input.key(key);
        EXPECT_NEAR(row.getValue(), value, 1e-3f) << key;
        EXPECT_EQ(row.spinner()->getValue(), value) << key;
    }
    EXPECT_EQ(log.calls().size(), std::size(keys));
}

TEST_F(ColorControls, RowsJoinSliderAndSpinnerThroughTheirMap) {
    ColorSliderWithSpinner& row = makeRow();
    row.setPositionValueMap(&Wx::Detail::gammaMap);
    // Typing into the spinner moves the slider to the value's gamma-encoded position.
    row.spinner()->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return row.spinner()->textField()->HasFocus(); }));
    input.typeText("51");
    input.key(WXK_RETURN);
    EXPECT_EQ(log.calls(), (Calls{"value " + std::to_string(51.f)}));
    EXPECT_FLOAT_EQ(row.slider()->getPosition(), std::pow(0.2f, Wx::Detail::kInverseGamma));

    // Dragging the slider to the middle shows 0.5^2.2 of the scale.
    log.clear();
    input.click(*row.slider(), wxPoint(50, 7));
    EXPECT_FLOAT_EQ(row.getValue(), 255.f * std::pow(0.5f, Wx::Detail::kGamma));
    EXPECT_EQ(row.spinner()->textField()->GetValue(), "55");

    // Changing the map keeps the slider and recomputes the number, quietly.
    log.clear();
    row.setPositionValueMap({});
    EXPECT_EQ(row.getValue(), 127.5f);
    EXPECT_TRUE(log.calls().empty());

    // A cleared row hides its marker and its number and is skipped by the Tab key; the mouse
    // still moves it, and the marker comes back with the value.
    row.clear();
    EXPECT_FALSE(row.AcceptsFocusFromKeyboard());
    EXPECT_EQ(row.spinner()->textField()->GetValue(), "");
    EXPECT_FALSE(hasMarker(*row.slider()));
    input.click(*row.slider(), wxPoint(25, 7));
    EXPECT_EQ(log.calls(), (Calls{"value " + std::to_string(63.75f)}));
    EXPECT_TRUE(row.AcceptsFocusFromKeyboard());
    EXPECT_TRUE(hasMarker(*row.slider()));
}

TEST_F(ColorControls, TheSliceFollowsTheDragAndDrawsItsField) {
    auto* slice = new HwbSlice(&parent(), wxID_ANY, wxSize(180, 100));
    slice->SetPosition(wxPoint(20, 20));
    std::vector<std::pair<float, float>> reports;
    slice->callOnPress([this] { log.record("press"); });
    slice->callOnChange([&](float hue, float black) { reports.emplace_back(hue, black); });
    pumpPending();

    input.press(*slice, wxPoint(90, 25));
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports[0], std::make_pair(180.f, 0.25f));
    input.moveTo(*slice, wxPoint(400, 300));
    EXPECT_EQ(reports.back(), std::make_pair(179 / 180.f * 360.f, 1.f));
    input.moveTo(*slice, wxPoint(-50, -50));
    EXPECT_EQ(reports.back(), std::make_pair(0.f, 0.f));
    input.release();
    EXPECT_EQ(log.calls(), Calls{"press"});

    // The field as the user sees it, away from the marker.
    slice->setMarker(270.f, 0.9f);
    const wxImage seen = captureOnScreen(*slice);
    EXPECT_EQ(pixelAt(seen, 0, 0), *wxRED);
    EXPECT_EQ(pixelAt(seen, 60, 0), wxColour(0, 255, 0));
    EXPECT_EQ(pixelAt(seen, 90, 99), wxColour(0, 3, 3)); // blackness 0.99
    // The marker at (135, 90) in the opposite hue's colour, (128, 255, 0).
    EXPECT_GT(countPixels(seen, wxColour(128, 255, 0)), 5);
}

TEST_F(ColorControls, TheHexFieldCommitsOnEnterAndIgnoresTextWithoutDigits) {
    auto* hex = new HexColorEdit(&parent(), wxID_ANY, String(L"Hex color:"), 60, 80);
    hex->SetPosition(wxPoint(20, 20));
    auto* other = new TextControl(&parent(), wxID_ANY, String(L"other"));
    other->SetPosition(wxPoint(20, 100));
    hex->setColor({0.2f, 0.4f, 0.6f, 1.f});
    EXPECT_EQ(hex->field()->GetValue(), "336699");
    std::vector<Rgb> commits;
    hex->callOnCommit([&](const Rgb& c) { commits.push_back(c); });
    hex->callOnFocusGained(log.recorder("gained"));
    hex->callOnFocusLost(log.recorder("lost"));
    pumpPending();

    hex->field()->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return log.calls() == Calls{"gained"}; }));
    for (const char* typed : {"  ff8000zz", "#", "   ", "0x"}) {
        hex->field()->SelectAll();
        input.typeText(typed);
        input.key(WXK_RETURN);
    }
    ASSERT_EQ(commits.size(), 1u);
    EXPECT_EQ(commits[0], Rgb(1.f, 128 * Wx::Detail::kOne255th, 0.f, 1.f));
    EXPECT_EQ(hex->field()->GetValue(), "FF8000"); // the last colour, after the text without one
    other->SetFocus();
    EXPECT_TRUE(pumpUntil([&] { return log.calls() == Calls{"gained", "lost"}; }));
}

TEST_F(ColorControls, PatchesAndTracksDrawInEightBitsWhateverTheyAreGiven) {
    auto* patch = new ColorDisplay(&parent(), wxID_ANY, wxSize(30, 20), Rgb(1.5f, 0.5f, -1.f));
    patch->SetPosition(wxPoint(20, 20));
    const wxImage seen = captureOnScreen(*patch);
    EXPECT_EQ(pixelAt(seen, 0, 0), wxColour(105, 105, 105));
    EXPECT_EQ(pixelAt(seen, 29, 19), wxColour(105, 105, 105));
    EXPECT_EQ(pixelAt(seen, 15, 10), wxColour(255, 128, 0)); // 127.5 rounds to even

    // Gradients answering NaN and infinities, and tracks too short to move on, still paint.
    for (const wxSize size : {wxSize(40, 10), wxSize(1, 1), wxSize(0, 10)}) {
        auto* odd = new ColorSlider(&parent(), wxID_ANY, size,
                                    makeShared<ColorSlider::Gradient>(
                                        [=](float, float) { return Rgb(kNaN, kInf, -kInf, 1.f); }));
        odd->SetPosition(wxPoint(20, 60));
        odd->setPosition(kNaN);
        EXPECT_EQ(odd->getPosition(), 0.f);
        odd->setPosition(7.f);
        EXPECT_EQ(odd->getPosition(), 1.f);
        if (size.x > 5) {
            EXPECT_EQ(pixelAt(captureOnScreen(*odd), 10, 5), wxColour(0, 255, 0));
        }
        odd->Destroy();
    }
}
