// The test harness itself against a real X server: the pixels it reads back, the input it sends
// and the events it counts. Later widget tests stand on these.
#include "guitest.h"
#include "input.h"
#include "pixels.h"
#include "pump.h"
#include "recorders.h"

#include <varnellib/native/process.h>

#include <wx/button.h>
#include <wx/dc.h>
#include <wx/dcbuffer.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

#include <thread>

using namespace Varnel::Test;

namespace {

// A panel that paints a known picture: a left half and a right half.
class TwoColourPanel : public wxPanel {
public:
    TwoColourPanel(wxWindow* parent, wxColour left, wxColour right)
        : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxSize(100, 60)), m_left(left),
          m_right(right) {
        SetBackgroundStyle(wxBG_STYLE_PAINT);
        Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
            wxAutoBufferedPaintDC dc(this);
            paint(dc);
        });
    }
    void paint(wxDC& dc) const {
        const wxSize size = dc.GetSize();
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(m_left));
        dc.DrawRectangle(0, 0, size.x / 2, size.y);
        dc.SetBrush(wxBrush(m_right));
        dc.DrawRectangle(size.x / 2, 0, size.x - size.x / 2, size.y);
    }

private:
    wxColour m_left, m_right;
};

} // namespace

using Harness = GuiTest;

TEST_F(Harness, ScreenAndOffscreenShowTheSamePainting) {
    const wxColour left(0, 114, 188), right(200, 200, 200);
    auto* panel = new TwoColourPanel(&parent(), left, right);
    panel->SetPosition(wxPoint(10, 10));

    const wxImage onScreen = captureOnScreen(*panel);
    ASSERT_EQ(onScreen.GetSize(), wxSize(100, 60));
    EXPECT_EQ(pixelAt(onScreen, 5, 30), left);
    EXPECT_EQ(pixelAt(onScreen, 94, 30), right);
    EXPECT_EQ(countPixels(onScreen, left), 50 * 60);

    const wxImage offscreen = renderOffscreen(wxSize(100, 60), [&](wxDC& dc) { panel->paint(dc); });
    EXPECT_EQ(pixelAt(offscreen, 49, 0), left);
    EXPECT_EQ(pixelAt(offscreen, 50, 59), right);
}

TEST_F(Harness, RealClicksReachAButtonAndItsParentInOrder) {
    auto* button = new wxButton(&parent(), wxID_OK, "OK", wxPoint(20, 20), wxSize(120, 40));
    CallLog log;
    button->Bind(wxEVT_BUTTON, [&](wxCommandEvent& event) {
        log.record("button");
        event.Skip();
    });
    parent().Bind(wxEVT_BUTTON, [&](wxCommandEvent&) { log.record("parent"); });
    EventCounter downs(*button, wxEVT_LEFT_DOWN);
    pumpPending();

    Input input;
    input.click(*button, wxPoint(60, 20));
    ASSERT_TRUE(pumpUntil([&] { return log.calls().size() >= 2; }));
    EXPECT_EQ(log.calls(), (std::vector<std::string>{"button", "parent"}));
    EXPECT_EQ(downs.count(), 1);
}

TEST_F(Harness, DragsAndTypedKeysArriveAsTheUserMadeThem) {
    auto* panel = new wxPanel(&parent(), wxID_ANY, wxPoint(0, 0), wxSize(200, 100));
    std::vector<wxPoint> moves;
    panel->Bind(wxEVT_MOTION, [&](wxMouseEvent& event) {
        if (event.LeftIsDown())
            moves.push_back(event.GetPosition());
    });
    EventCounter ups(*panel, wxEVT_LEFT_UP);
    pumpPending();

    Input input;
    input.drag(*panel, wxPoint(10, 50), wxPoint(170, 50));
    ASSERT_TRUE(pumpUntil([&] { return ups.count() == 1; }));
    ASSERT_FALSE(moves.empty());
    EXPECT_EQ(moves.back(), wxPoint(170, 50));

    auto* text = new wxTextCtrl(&parent(), wxID_ANY, "", wxPoint(0, 120), wxSize(200, 30));
    text->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return text->HasFocus(); }));
    input.typeText("1,5");
    ASSERT_TRUE(pumpUntil([&] { return text->GetValue() == "1,5"; }))
        << text->GetValue().ToStdString();
}

TEST_F(Harness, PumpingRunsTimersAndStopsAtTheDeadline) {
    wxTimer timer;
    int fired = 0;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { ++fired; });
    timer.Start(10, wxTIMER_ONE_SHOT);
    EXPECT_TRUE(pumpUntil([&] { return fired == 1; }));

    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(pumpUntil([] { return false; }, std::chrono::milliseconds(50)));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
}

TEST_F(Harness, TheMainThreadIsTheInterfaceThread) {
    EXPECT_TRUE(Varnel::isMainThread());
    bool elsewhere = true;
    std::thread([&] { elsewhere = Varnel::isMainThread(); }).join();
    EXPECT_FALSE(elsewhere);
    EXPECT_GT(Varnel::getFontScale(), 0.0);
}
