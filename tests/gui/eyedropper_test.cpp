// The eyedropper for real: a press on the button, the pointer moved over a window painted with
// known colours, and the release, cancel and teardown paths.
#include "guitest.h"

#include <varnellib/native/screen.h>
#include <varnellibwx/widgets/colormodel.h>
#include <varnellibwx/widgets/eyedropperbutton.h>
#include <varnellibwx/widgets/textcontrol.h>

#include <wx/dcclient.h>

namespace {

const wxColour kSolid(200, 100, 50);

// A window whose left half is one colour and whose right half is a checkerboard of single black
// and white pixels, white where x + y is even.
class Target : public wxWindow {
public:
    explicit Target(wxWindow* parent) : wxWindow(parent, wxID_ANY, {150, 20}, {120, 60}) {
        Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
            wxPaintDC dc(this);
            dc.SetPen(*wxTRANSPARENT_PEN);
            dc.SetBrush(wxBrush(kSolid));
            dc.DrawRectangle(0, 0, 60, 60);
            for (int y = 0; y < 60; ++y)
                for (int x = 60; x < 120; ++x) {
                    dc.SetPen((x + y) % 2 == 0 ? *wxWHITE_PEN : *wxBLACK_PEN);
                    dc.DrawPoint(x, y);
                }
        });
    }
};

class EyeDropper : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        target = new Target(&parent());
        other = new TextControl(&parent(), wxID_ANY, String(L"focused"));
        other->SetPosition(wxPoint(20, 120));
        button = new EyeDropperButton(&parent(), wxID_ANY,
                                      EyeDropperButton::icon(EyeDropperButton::Icon::PickColor),
                                      String(L"Pick Color"));
        button->SetPosition(wxPoint(20, 20));
        button->callOnPickStarted(log.recorder("started"));
        button->callOnPickEnded(log.recorder("ended"));
        button->callOnPicked([this](const Rgb& c) {
            log.record("picked");
            picked = c;
        });
        other->SetFocus();
        ASSERT_TRUE(pumpUntil([this] { return other->HasFocus(); }));
        ASSERT_TRUE(pumpUntil([this] { return captureOnScreen(*target).IsOk(); }));
    }

    void startPick() {
        input.press(*button, wxPoint(10, 10));
        ASSERT_TRUE(pumpUntil([this] { return button->isPicking(); }));
    }

    Target* target = nullptr;
    TextControl* other = nullptr;
    EyeDropperButton* button = nullptr;
    Input input;
    CallLog log;
    Rgb picked;
};

} // namespace

TEST_F(EyeDropper, APointSampleIsThePixelsLinearColourAndTheFaceFollows) {
    startPick();
    EXPECT_TRUE(button->HasFocus());
    EXPECT_TRUE(button->HasCapture());
    input.moveTo(*target, wxPoint(30, 30));
    ASSERT_TRUE(pumpUntil([this] { return button->sampledColor().a == 1.f; }));
    const Rgb expected(srgbByteToLinear(200), srgbByteToLinear(100), srgbByteToLinear(50), 1.f);
    EXPECT_EQ(button->sampledColor(), expected);
    const RgbBytes face = Wx::Detail::toRgbBytes(expected);
    EXPECT_EQ(pixelAt(captureOnScreen(*button), 12, 12), wxColour(face.r, face.g, face.b));

    input.release();
    EXPECT_EQ(log.calls(), (Calls{"started", "picked", "ended"}));
    EXPECT_EQ(picked, expected);
    EXPECT_FALSE(button->isPicking());
    EXPECT_FALSE(button->HasCapture());
    EXPECT_TRUE(pumpUntil([this] { return other->HasFocus(); })); // the focus goes back
    // Idle again, the face shows the icon, not the sampled colour.
    EXPECT_EQ(countPixels(captureOnScreen(*button), wxColour(face.r, face.g, face.b)), 0);
}

TEST_F(EyeDropper, AveragesTheSquareAroundThePointer) {
    button->setAveragingRadius(1);
    startPick();
    input.moveTo(*target, wxPoint(90, 30)); // a white pixel: five of the nine are white
    input.release();
    ASSERT_EQ(log.calls().size(), 3u);
    EXPECT_FLOAT_EQ(picked.r, 5.f / 9.f);
    EXPECT_FLOAT_EQ(picked.b, 5.f / 9.f);
    EXPECT_EQ(picked.a, 1.f);
}

TEST_F(EyeDropper, EscapeRightPressAndTeardownCancelWithoutAColour) {
    startPick();
    input.moveTo(*target, wxPoint(30, 30));
    input.key(WXK_ESCAPE);
    EXPECT_FALSE(button->isPicking());
    EXPECT_TRUE(pumpUntil([this] { return other->HasFocus(); }));
    input.release();
    EXPECT_EQ(log.calls(), (Calls{"started", "ended"}));

    // This press follows the last one closely: the toolkit makes it a double click.
    log.clear();
    startPick();
    input.press(*target, wxPoint(30, 30), wxMOUSE_BTN_RIGHT);
    EXPECT_FALSE(button->isPicking());
    EXPECT_FALSE(button->HasCapture());
    input.release(wxMOUSE_BTN_RIGHT);
    input.release();
    EXPECT_EQ(log.calls(), (Calls{"started", "ended"}));

    // Destroyed in the middle of a pick: nothing is called and the pointer is free.
    log.clear();
    startPick();
    button->Destroy();
    pumpPending();
    EXPECT_EQ(wxWindow::GetCapture(), nullptr);
    EXPECT_EQ(log.calls(), Calls{"started"});
    input.release();
}

TEST_F(EyeDropper, LosingTheMouseCaptureEndsThePickWithoutAColour) {
    startPick();
    input.moveTo(*target, wxPoint(30, 30));
    // Another program takes the pointer: the toolkit has let go of it before telling the button.
    button->ReleaseMouse();
    wxMouseCaptureLostEvent lost(button->GetId());
    lost.SetEventObject(button);
    button->GetEventHandler()->ProcessEvent(lost);
    EXPECT_FALSE(button->isPicking());
    input.release();
    EXPECT_EQ(log.calls(), (Calls{"started", "ended"}));
    EXPECT_TRUE(pumpUntil([this] { return other->HasFocus(); }));
}
