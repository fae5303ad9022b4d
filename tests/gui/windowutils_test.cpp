// Skin, fonts, window lookup, monitors, focus, icons and the small helpers, on a real display.
#include "guitest.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/focusable.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/scopeguards.h>
#include <varnellibwx/windowutils.h>
#include <varnellibwx/zoomablescrollable.h>

#include <wx/dcmemory.h>
#include <wx/panel.h>

namespace {

class FocusablePanel : public wxPanel, public Focusable {
public:
    FocusablePanel(wxWindow* parent, wxPoint position)
        : wxPanel(parent, wxID_ANY, position, wxSize(20, 20)) {}
    bool AcceptsFocus() const override { return true; }
};

class ZoomProbe : public wxPanel, public ZoomableScrollable {
public:
    explicit ZoomProbe(wxWindow* parent) : wxPanel(parent) { bindScrollAndZoomEvents(this); }
    std::vector<int> amounts;

protected:
    void zoom(wxMouseEvent&, int amount) override { amounts.push_back(amount); }
};

} // namespace

using WindowUtils = GuiTest;

TEST_F(WindowUtils, SkinReachesEveryWindowParentFirst) {
    auto* outer = new wxPanel(&parent());
    auto* inner = new wxPanel(outer);
    auto* leaf = new wxPanel(inner);
    GuiSkin skin;
    skin.background = {1, 2, 3};
    skin.text = {4, 5, 6};
    applySkinRecursive(&parent(), skin);
    for (wxWindow* window : std::vector<wxWindow*>{&parent(), outer, inner, leaf}) {
        EXPECT_EQ(window->GetBackgroundColour(), wxColour(1, 2, 3));
        EXPECT_EQ(window->GetForegroundColour(), wxColour(4, 5, 6));
    }
}

TEST_F(WindowUtils, FontsTakeTheStandardHeight) {
    const wxFont base = parent().GetFont().Bold().Italic();
    EXPECT_EQ(setDefaultFontSize(base, 1.5f).GetPixelSize().y, 18);
    const wxFont plain = setupStaticTextFont(base, {});
    EXPECT_EQ(std::make_pair(plain.GetWeight(), plain.GetStyle()),
              std::make_pair(wxFONTWEIGHT_NORMAL, wxFONTSTYLE_NORMAL));
    const wxFont bold = setupStaticTextFont(base, TextFlag::Bold);
    EXPECT_EQ(std::make_pair(bold.GetWeight(), bold.GetStyle()),
              std::make_pair(wxFONTWEIGHT_BOLD, wxFONTSTYLE_NORMAL));
    EXPECT_EQ(setupStaticTextFont(base, {TextFlag::Bold, TextFlag::Italic}).GetStyle(),
              wxFONTSTYLE_ITALIC);
}

TEST_F(WindowUtils, WindowsAreFoundByHandleAndByPosition) {
    auto* outer = new wxPanel(&parent(), wxID_ANY, wxPoint(10, 10), wxSize(200, 200));
    auto* inner = new wxPanel(outer, wxID_ANY, wxPoint(20, 20), wxSize(100, 100));
    auto* hidden = new wxPanel(inner, wxID_ANY, wxPoint(10, 10), wxSize(50, 50));
    hidden->Hide();
    pumpPending();

    EXPECT_EQ(findWindowByNativeHandle(&parent(), getWindowNativeHandle(inner)), inner);
    EXPECT_EQ(findWindowByNativeHandle(&parent(), WindowHandle()), nullptr);
    EXPECT_EQ(findTopLevelWxWindowForNativeHandle(getWindowNativeHandle(&parent())), &parent());
    EXPECT_EQ(findTopLevelWxWindowForNativeHandle(getWindowNativeHandle(inner)), nullptr);

    const wxPoint point = hidden->GetScreenPosition() + wxPoint(5, 5);
    const Pixel at{point.x, point.y};
    EXPECT_EQ(findWindowByPosition(&parent(), at), inner);
    EXPECT_EQ(findWindowByPosition(&parent(), at, FindWindowFlag::IncludeHidden), hidden);
    inner->Disable();
    EXPECT_EQ(findWindowByPosition(&parent(), at), outer);
    EXPECT_EQ(findWindowByPosition(&parent(), at, FindWindowFlag::IncludeDisabled), inner);
    EXPECT_EQ(findWindowByPosition(&parent(), {-5000, -5000}), nullptr);
}

TEST_F(WindowUtils, MonitorRegionsAndPlacementOnTheRealScreen) {
    const wxSize screen = wxGetDisplaySize();
    EXPECT_EQ(getMonitorRegionByPoint({5, 5}, MonitorRegionType::WholeMonitor),
              (Bucket{0, 0, screen.x, screen.y}));
    EXPECT_EQ(getMonitorRegionByWindow(&parent(), MonitorRegionType::WholeMonitor).height,
              screen.y);

    const Bucket work = getMonitorRegionByPoint({5, 5}, MonitorRegionType::WorkArea);
    smartPositionWindow(&parent(), {screen.x - 1, screen.y - 1});
    const wxRect placed = parent().GetRect();
    EXPECT_EQ(placed.GetRight(), work.x + work.width - 1);
    EXPECT_EQ(placed.GetBottom(), work.y + work.height - 1);
}

TEST_F(WindowUtils, FocusMovesToFocusableSiblingsAndWraps) {
    auto* first = new FocusablePanel(&parent(), {0, 0});
    new wxPanel(&parent(), wxID_ANY, {30, 0}, {20, 20}); // takes focus, but is not Focusable
    auto* third = new FocusablePanel(&parent(), {60, 0});
    first->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return first->HasFocus(); }));
    moveFocus(first, MoveFocusDirection::Forward);
    EXPECT_TRUE(pumpUntil([&] { return third->HasFocus(); }));
    moveFocus(third, MoveFocusDirection::Forward); // wraps to the start
    EXPECT_TRUE(pumpUntil([&] { return first->HasFocus(); }));
    moveFocus(first, MoveFocusDirection::Backward);
    EXPECT_TRUE(pumpUntil([&] { return third->HasFocus(); }));
    third->Destroy();
    first->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return first->HasFocus(); }));
    moveFocus(first, MoveFocusDirection::Forward); // nobody else: the focus stays
    pumpPending();
    EXPECT_TRUE(first->HasFocus());
}

TEST_F(WindowUtils, IconsAndBitmapScaling) {
    setVellumIcon(&parent());
    ASSERT_EQ(parent().GetIcons().GetIconCount(), 1u);
    EXPECT_TRUE(parent().GetIcons().GetIconByIndex(0).IsOk());
    EXPECT_EQ(parent().GetIcons().GetIconByIndex(0).GetWidth(), 48);

    const wxBitmap icon(16, 16);
    Wx::Detail::setDpiScaleOverride(1.5);
    EXPECT_EQ(scaleByDpi(icon).GetSize(), wxSize(16, 16)); // fractional scales never resample
    Wx::Detail::setDpiScaleOverride(2.0);
    EXPECT_EQ(scaleByDpi(icon).GetSize(), wxSize(32, 32));
    EXPECT_FALSE(scaleByDpi(wxNullBitmap).IsOk());
    Wx::Detail::setDpiScaleOverride(0.0);
}

TEST_F(WindowUtils, ClippingLastsForTheScopeOnly) {
    const wxImage image = renderOffscreen(wxSize(10, 10), [](wxDC& dc) {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(*wxRED_BRUSH);
        {
            ScopedClippingRegion clip(dc, wxRect(0, 0, 5, 10));
            dc.DrawRectangle(0, 0, 10, 5);
        }
        dc.SetBrush(*wxBLUE_BRUSH);
        dc.DrawRectangle(0, 5, 10, 5);
    });
    EXPECT_EQ(pixelAt(image, 2, 2), *wxRED);
    EXPECT_EQ(pixelAt(image, 7, 2), *wxBLACK); // clipped away
    EXPECT_EQ(pixelAt(image, 7, 7), *wxBLUE);  // no clipping after the scope
    {
        ScopedWindowFreezer freezer(&parent());
        EXPECT_TRUE(parent().IsFrozen());
    }
    EXPECT_FALSE(parent().IsFrozen());
}

TEST_F(WindowUtils, WheelAndPinchBecomeZoomSteps) {
    auto* probe = new ZoomProbe(&parent());
    sendWheel(*probe, 120);
    for (float magnification : {0.1f, -0.3f, 0.f, 0.5f}) {
        wxMouseEvent pinch(wxEVT_MAGNIFY);
        pinch.m_magnification = magnification;
        probe->GetEventHandler()->ProcessEvent(pinch);
    }
    // The pinch direction follows the sum so far: 0.1, then -0.2, then (no step for 0) 0.3.
    EXPECT_EQ(probe->amounts, (std::vector<int>{120, 1, -1, 1}));
}
