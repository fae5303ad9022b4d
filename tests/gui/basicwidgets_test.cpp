// The bordered look, the button, the static line and the tooltip: what a user sees and what a
// host receives, with real input.
#include "guitest.h"

#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/staticline.h>
#include <varnellibwx/widgets/tooltip.h>

#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/settings.h>

#include <chrono>

namespace {

const wxColour kOuter(54, 54, 54), kInner(37, 37, 37), kHovered(0, 114, 188);
const wxColour kShadowEnds(70, 70, 70), kShadowMiddle(85, 85, 85);
const wxColour kFace(68, 68, 68), kPressed(0, 73, 112), kToggled(39, 147, 255);
const wxSize kButtonSize(120, 30);

class ButtonTest : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        // Keep the pointer away from the widgets until a test moves it.
        input.moveTo(parent(),
                     wxPoint(parent().GetClientSize().x - 5, parent().GetClientSize().y - 5));
    }

    Button* makeButton(Function<void()> onClick = {},
                       Button::Behavior behavior = Button::Behavior::Normal,
                       Flags<RawaBorderState> state = {}, const wxBitmap& bitmap = wxNullBitmap) {
        auto* button = new Button(&parent(), GuiSkin(), wxID_OK, "Apply", bitmap, wxNullBitmap,
                                  std::move(onClick), behavior, true, state);
        button->SetSize(wxRect(wxPoint(10, 10), kButtonSize));
        parent().Bind(wxEventTypeTag<wxMouseEvent>(wxEVT_BUTTON), [this](wxMouseEvent& event) {
            log.record("event");
            lastClick = event.GetPosition();
        });
        pumpPending();
        return button;
    }

    Input input;
    CallLog log;
    wxPoint lastClick;
};

} // namespace

TEST_F(ButtonTest, BorderColoursAtRestAndHovered) {
    Button* button = makeButton();
    wxImage seen = captureOnScreen(*button);
    const int w = kButtonSize.x, h = kButtonSize.y;
    EXPECT_EQ(pixelAt(seen, w - 1, 5), kOuter);
    EXPECT_EQ(pixelAt(seen, 1, 1), kInner);
    EXPECT_EQ(pixelAt(seen, 5, 5), kFace);
    EXPECT_EQ(pixelAt(seen, w - 1, h - 1), kShadowEnds);
    EXPECT_EQ(pixelAt(seen, 1, h - 1), kShadowMiddle);
    EXPECT_GE(button->GetMinSize().y, 24);

    input.moveTo(*button, wxPoint(60, 15));
    ASSERT_TRUE(pumpUntil([&] { return button->state().has(RawaBorderState::Hovered); }));
    seen = captureOnScreen(*button);
    EXPECT_EQ(pixelAt(seen, 1, h / 2), kHovered);
    EXPECT_EQ(pixelAt(seen, 0, 0), kOuter);
}

TEST_F(ButtonTest, FlatButtonsHaveNoOuterFrameOrShading) {
    Button* button = makeButton({}, Button::Behavior::Normal, RawaBorderState::Flat);
    const wxImage seen = captureOnScreen(*button);
    EXPECT_EQ(pixelAt(seen, 0, 0), kInner);
    EXPECT_EQ(pixelAt(seen, 5, kButtonSize.y - 1), kInner);
    EXPECT_EQ(pixelAt(seen, 1, 1), kFace);
}

TEST_F(ButtonTest, AClickReachesTheParentThenTheCallbackAndTogglesAToggleButton) {
    Button* button = makeButton([this] { log.record("callback"); }, Button::Behavior::Toggle);
    input.click(*button, wxPoint(30, 12));
    ASSERT_TRUE(pumpUntil([&] { return log.calls().size() == 2; }));
    EXPECT_EQ(log.calls(), (std::vector<std::string>{"event", "callback"}));
    EXPECT_EQ(lastClick, wxPoint(30, 12));
    EXPECT_FALSE(button->HasCapture());
    EXPECT_TRUE(button->isToggled());
    input.moveTo(parent(), wxPoint(300, 200)); // off the button, so the face is not hovered
    EXPECT_EQ(pixelAt(captureOnScreen(*button), 5, 5), kToggled);
    EXPECT_EQ(button->GetForegroundColour(), wxColour(0, 0, 0));
    input.click(*button, wxPoint(60, 15));
    ASSERT_TRUE(pumpUntil([&] { return log.calls().size() == 4; }));
    EXPECT_FALSE(button->isToggled());
}

TEST_F(ButtonTest, APressShowsThePressedFaceAndOnlyAReleaseInsideClicks) {
    Button* button = makeButton([this] { log.record("callback"); }, Button::Behavior::Toggle);
    wxMouseEvent releaseOnly(wxEVT_LEFT_UP); // a release without a press does nothing
    releaseOnly.SetPosition(wxPoint(60, 15));
    button->GetEventHandler()->ProcessEvent(releaseOnly);

    input.press(*button, wxPoint(60, 15));
    ASSERT_TRUE(pumpUntil([&] { return button->isPressed(); }));
    EXPECT_EQ(pixelAt(captureOnScreen(*button), 5, 5), kPressed);
    input.moveTo(parent(), wxPoint(300, 200));
    input.release();
    ASSERT_TRUE(pumpUntil([&] { return !button->isPressed(); }));
    EXPECT_EQ(pixelAt(captureOnScreen(*button), 5, 5), kFace);

    // A lost capture returns to rest without a click.
    input.press(*button, wxPoint(60, 15));
    ASSERT_TRUE(pumpUntil([&] { return button->isPressed(); }));
    wxMouseCaptureLostEvent lost(button->GetId());
    button->GetEventHandler()->ProcessEvent(lost);
    EXPECT_FALSE(button->isPressed());
    EXPECT_FALSE(button->HasCapture());
    input.release();
    pumpPending();
    EXPECT_TRUE(log.calls().empty());
    EXPECT_FALSE(button->isToggled());
}

TEST_F(ButtonTest, DisabledButtonsShowTheNormalBitmapAndGreyTextAndIgnorePresses) {
    wxBitmap red(8, 8);
    {
        wxMemoryDC dc(red);
        dc.SetBackground(*wxRED_BRUSH);
        dc.Clear();
    }
    Button* button =
        makeButton([this] { log.record("callback"); }, Button::Behavior::Normal, {}, red);
    button->Enable(false);
    // The label is antialiased: its brightest pixels come near the text colour, never past it.
    auto brightestLabelPixel = [&] {
        const wxImage face =
            renderOffscreen(kButtonSize, [&](wxDC& dc) { button->paint(dc, kButtonSize); });
        EXPECT_EQ(pixelAt(face, 2, 2), *wxRED); // the normal bitmap, for want of a disabled one
        EXPECT_EQ(pixelAt(face, 9, 9), *wxRED);
        int brightest = 0;
        for (int y = 4; y < kButtonSize.y - 4; ++y)
            for (int x = 12; x < kButtonSize.x - 4; ++x)
                brightest = std::max<int>(brightest, face.GetGreen(x, y));
        return brightest;
    };
    const int disabledBrightest = brightestLabelPixel();
    EXPECT_LE(disabledBrightest, 110);
    EXPECT_GT(disabledBrightest, 95);

    input.click(*button, wxPoint(60, 15));
    pumpPending();
    EXPECT_TRUE(log.calls().empty());
    EXPECT_FALSE(button->isPressed());

    button->Enable(true);
    EXPECT_GT(brightestLabelPixel(), 150);
}

using StaticLineTest = GuiTest;

TEST_F(StaticLineTest, OneRowPerColourBrightenedWhenPartial) {
    const RgbBytes colors[] = {{200, 10, 130}, {37, 37, 37}, {100, 100, 100}};
    auto* line = new StaticLine(&parent(), wxHORIZONTAL, ArrayView<const RgbBytes>(colors), 1.f);
    line->SetSize(wxRect(10, 10, 100, 3));
    EXPECT_EQ(line->GetMinSize().y, 3);
    EXPECT_EQ(line->GetMaxSize().y, 3);
    wxImage seen = captureOnScreen(*line);
    EXPECT_EQ(pixelAt(seen, 50, 0), wxColour(200, 10, 130));
    EXPECT_EQ(pixelAt(seen, 99, 1), wxColour(37, 37, 37));
    EXPECT_EQ(pixelAt(seen, 0, 2), wxColour(100, 100, 100));

    line->setLengthScale(0.5f);
    seen = captureOnScreen(*line);
    EXPECT_EQ(pixelAt(seen, 10, 0), wxColour(255, 20, 255));
    EXPECT_EQ(pixelAt(seen, 10, 1), wxColour(74, 74, 74));
    EXPECT_NE(pixelAt(seen, 70, 0), wxColour(255, 20, 255));

    line->setLengthScale(1.5f);
    EXPECT_EQ(line->lengthScale(), 1.f);
    line->setLengthScale(-1.f);
    EXPECT_EQ(line->lengthScale(), 0.f);
    EXPECT_EQ(countPixels(captureOnScreen(*line), wxColour(200, 10, 130)), 0);
}

TEST_F(StaticLineTest, VerticalLinesAreAsWideAsTheirColoursAndOtherOrientationsStop) {
    auto* line = new StaticLine(&parent(), wxVERTICAL);
    EXPECT_EQ(line->GetMinSize().x, 2);
    EXPECT_EQ(line->GetMaxSize().x, 2);
    expectStop([&] { new StaticLine(&parent(), wxOrientation(wxBOTH), {}, 1.f); },
               "widgets/staticline", 35);
}

namespace {

class TooltipTest : public ButtonTest {
protected:
    static constexpr int kDelayMs = 150;

    Button* owner() {
        Button* button = makeButton();
        button->setTooltip(String(L"Resets the curve\nto the identity"));
        button->tooltip()->setDelay(kDelayMs);
        return button;
    }
};

} // namespace

TEST_F(TooltipTest, ShowsAfterThePointerRestsAndMotionPostponesIt) {
    Button* button = owner();
    Tooltip* tip = button->tooltip();
    ASSERT_EQ(tip->lines().size(), 2);
    const auto start = std::chrono::steady_clock::now();
    int x = 5;
    while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(3 * kDelayMs)) {
        input.moveTo(*button, wxPoint(x, 15));
        x = x < 110 ? x + 3 : 5;
        ASSERT_FALSE(tip->IsShown()) << "shown while the pointer kept moving";
    }
    const auto rest = std::chrono::steady_clock::now();
    ASSERT_TRUE(pumpUntil([&] { return tip->IsShown(); }));
    EXPECT_GE(std::chrono::steady_clock::now() - rest, std::chrono::milliseconds(kDelayMs - 20));

    // The size is the text plus 3 pixels all round, and it sits right of and below the pointer.
    wxClientDC dc(tip);
    dc.SetFont(tip->GetFont());
    const wxSize first = dc.GetTextExtent("Resets the curve"),
                 second = dc.GetTextExtent("to the identity");
    EXPECT_EQ(tip->GetClientSize(),
              wxSize(std::max(first.x, second.x) + 6, first.y + second.y + 6));
    EXPECT_EQ(tip->GetScreenPosition(), wxGetMousePosition() + wxPoint(10, 5));

    // The system's tooltip colours, opaque: a frame in the text colour around the background.
    const wxImage seen = captureOnScreen(*tip);
    const wxSize size = tip->GetClientSize();
    auto opaque = [](wxSystemColour which) {
        const wxColour c = wxSystemSettings::GetColour(which);
        return wxColour(c.Red(), c.Green(), c.Blue());
    };
    EXPECT_EQ(pixelAt(seen, 0, 0), opaque(wxSYS_COLOUR_INFOTEXT));
    EXPECT_EQ(pixelAt(seen, size.x - 1, size.y - 1), opaque(wxSYS_COLOUR_INFOTEXT));
    EXPECT_EQ(pixelAt(seen, size.x - 2, size.y - 2), opaque(wxSYS_COLOUR_INFOBK));
}

TEST_F(TooltipTest, AClickOrLeavingHidesItAndAnEmptyTextNeverShows) {
    Button* button = owner();
    Tooltip* tip = button->tooltip();
    input.moveTo(*button, wxPoint(20, 15));
    ASSERT_TRUE(pumpUntil([&] { return tip->IsShown(); }));
    input.click(*button, wxPoint(20, 15));
    EXPECT_TRUE(pumpUntil([&] { return !tip->IsShown(); }));
    // The click also cancelled the wait: no tooltip appears while the pointer rests.
    EXPECT_FALSE(
        pumpUntil([&] { return tip->IsShown(); }, std::chrono::milliseconds(3 * kDelayMs)));

    input.moveTo(*button, wxPoint(30, 15));
    ASSERT_TRUE(pumpUntil([&] { return tip->IsShown(); }));
    input.moveTo(parent(), wxPoint(300, 200));
    EXPECT_TRUE(pumpUntil([&] { return !tip->IsShown(); }));

    button->setTooltip(String());
    input.moveTo(*button, wxPoint(40, 15));
    EXPECT_FALSE(
        pumpUntil([&] { return tip->IsShown(); }, std::chrono::milliseconds(3 * kDelayMs)));
}
