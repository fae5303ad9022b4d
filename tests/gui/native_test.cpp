// The native services against a real X server: where windows are, what the screen shows, which
// window owns which, and the file choosers.
#include "guitest.h"

#include <varnellib/native/colorportal.h>
#include <varnellib/native/filedialog.h>
#include <varnellib/native/process.h>
#include <varnellib/native/screen.h>
#include <varnellib/native/windowowner.h>

#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/filedlg.h>
#include <wx/modalhook.h>
#include <wx/panel.h>

#include <gtk/gtk.h>

#include <thread>

namespace {

// A panel painted in one colour by its own paint handler.
class SolidPanel : public wxPanel {
public:
    SolidPanel(wxWindow* parent, wxPoint position, wxSize size, wxColour colour)
        : wxPanel(parent, wxID_ANY, position, size) {
        Bind(wxEVT_PAINT, [this, colour](wxPaintEvent&) {
            wxPaintDC dc(this);
            dc.SetBackground(wxBrush(colour));
            dc.Clear();
            ++paints;
        });
    }
    int paints = 0;
};

const String kFilter(L"Photoshop curve files (*.acv)|*.acv");

WindowHandle handleOf(const wxWindow& window) {
    return WindowHandle(window.GetHandle());
}

} // namespace

using Native = GuiTest;

TEST_F(Native, TheMainThreadIsTheInterfaceThread) {
    EXPECT_TRUE(isMainThread());
    bool elsewhere = true;
    std::thread([&] { elsewhere = isMainThread(); }).join();
    EXPECT_FALSE(elsewhere);
    EXPECT_GT(getFontScale(), 0.0);
}

TEST_F(Native, TheScreenRegionIsWhereWxSaysAndItsColoursAreDecodedToLinearInOneCapture) {
    EXPECT_EQ(srgbByteToLinear(0), 0.f);
    EXPECT_EQ(srgbByteToLinear(255), 1.f);
    EXPECT_NEAR(srgbByteToLinear(10), 10 / 255.0 / 12.92, 1e-7); // the linear toe
    EXPECT_NEAR(srgbByteToLinear(128), 0.2158605, 1e-6);

    auto* panel = new SolidPanel(&parent(), wxPoint(0, 0), wxSize(40, 30), wxColour(128, 255, 10));
    ASSERT_TRUE(pumpUntil([&] { return panel->paints > 0; }));
    pumpPending();
    const Bucket region = getScreenRegion(handleOf(*panel));
    const wxRect expected = panel->GetScreenRect();
    EXPECT_EQ(region, (Bucket{expected.x, expected.y, expected.width, expected.height}));
    EXPECT_EQ(getScreenRegion(WindowHandle()), Bucket());
    const BitmapImpl<Rgb> colors = getScreenRegionColors(region);
    ASSERT_EQ(colors.width(), 40);
    ASSERT_EQ(colors.height(), 30);
    const Rgb linear(srgbByteToLinear(128), 1.f, srgbByteToLinear(10), 1.f);
    EXPECT_EQ(colors(0, 0), linear);
    EXPECT_EQ(colors(39, 29), linear);
    EXPECT_FLOAT_EQ(srgbToLinear(128 / 255.f), srgbByteToLinear(128));

    // The panel's own drawing, without the screen: what the Wayland paint check reads.
    int width = 0, height = 0;
    const Stack<RgbBytes> drawn = drawWidget(handleOf(*panel), width, height);
    ASSERT_EQ(width * height, 40 * 30);
    EXPECT_EQ(drawn[0], (RgbBytes{128, 255, 10}));
    EXPECT_EQ(drawn[40 * 30 - 1], (RgbBytes{128, 255, 10}));
}

TEST_F(Native, AnXDisplayInsideAWaylandSessionIsNotReadAndThePortalPicks) {
    ASSERT_TRUE(isScreenReadable());
    setenv("WAYLAND_DISPLAY", "wayland-0", 1);
    EXPECT_TRUE(isXWaylandSession());
    EXPECT_FALSE(isScreenReadable());
    EXPECT_EQ(screenAccess(), ScreenAccess::Portal);
    EXPECT_TRUE(getScreenRegionColors({0, 0, 4, 4}).isEmpty());
    setenv("WAYLAND_DISPLAY", "", 1);
    EXPECT_EQ(screenAccess(), ScreenAccess::Direct);
    EXPECT_EQ(getScreenRegionColors({0, 0, 4, 4}).width(), 4);
}

TEST_F(Native, PixelsOffEveryMonitorComeBackTransparent) {
    const wxSize screen = wxGetDisplaySize();
    // Three columns left of the screen, three on it; and a corner hanging off the bottom right.
    const BitmapImpl<Rgb> left = getScreenRegionColors({-3, 0, 6, 2});
    for (int x = 0; x < 6; ++x)
        EXPECT_EQ(left(x, 1).a, x < 3 ? 0.f : 1.f) << x;
    EXPECT_EQ(left(0, 0), Rgb(0, 0, 0, 0));

    const BitmapImpl<Rgb> corner = getScreenRegionColors({screen.x - 2, screen.y - 2, 4, 4});
    EXPECT_EQ(corner(1, 1).a, 1.f);
    EXPECT_EQ(corner(1, 2).a, 0.f);
    EXPECT_EQ(getScreenRegionColors({-100, -100, 5, 5})(4, 4), Rgb(0, 0, 0, 0));
    EXPECT_TRUE(getScreenRegionColors({0, 0, 0, 5}).isEmpty());
}

TEST_F(Native, OwnersAreSetReadAndCleared) {
    auto* owned = new wxFrame(nullptr, wxID_ANY, "Owned");
    owned->Show();
    const WindowHandle ownedHandle = handleOf(*owned);
    const WindowHandle ownerHandle = handleOf(parent());

    EXPECT_TRUE(getOwnerAsNativeHandle(ownedHandle).isEmpty());
    EXPECT_TRUE(setOwnerFromNativeHandle(ownedHandle, ownerHandle).isEmpty());
    EXPECT_EQ(getOwnerAsNativeHandle(ownedHandle), ownerHandle);
    // A child widget answers for its top-level window.
    auto* child = new wxPanel(owned);
    EXPECT_EQ(getOwnerAsNativeHandle(handleOf(*child)), ownerHandle);
    EXPECT_EQ(setOwnerFromNativeHandle(ownedHandle, WindowHandle()), ownerHandle);
    EXPECT_TRUE(getOwnerAsNativeHandle(ownedHandle).isEmpty());
    owned->Destroy();
}

TEST_F(Native, ADisabledWindowTakesNoClicksUntilTheDisablerGoes) {
    auto* button = new wxButton(&parent(), wxID_ANY, "Press", wxPoint(10, 10), wxSize(100, 40));
    int clicks = 0;
    button->Bind(wxEVT_BUTTON, [&](wxCommandEvent&) { ++clicks; });
    pumpPending();
    Input input;
    {
        WindowDisabler disabler(handleOf(*button));
        input.click(*button, wxPoint(50, 20));
        pumpPending();
        EXPECT_EQ(clicks, 0);
    }
    input.click(*button, wxPoint(50, 20));
    EXPECT_TRUE(pumpUntil([&] { return clicks == 1; }));
}

TEST_F(Native, FileChoosersShowTheirArgumentsAndOnlyFlagOneAsksBeforeOverwriting) {
    {
        FileChooserAnswer cancel; // no path: Cancel
        EXPECT_TRUE(filenameOpenDlg(handleOf(parent()), String(L"Select file"), kFilter,
                                    Io::Path(String(L"/tmp/curves.acv")))
                        .isEmpty());
        ASSERT_TRUE(cancel.seen);
        EXPECT_EQ(cancel.title, "Select file");
        EXPECT_EQ(cancel.wildcard, "Photoshop curve files (*.acv)|*.acv");
        EXPECT_EQ(cancel.directory, "/tmp");
        EXPECT_TRUE(cancel.style & wxFD_OPEN);
    }
    for (uint32 raw : {0u, 1u}) {
        FileChooserAnswer answer("/tmp/varnel-saved.acv");
        const Io::Path chosen =
            filenameSaveDlg(handleOf(parent()), String(L"Save as"), kFilter,
                            Flags<FileSelect>::fromRaw(raw), Io::Path(String(L"/tmp/old.acv")));
        ASSERT_TRUE(answer.seen);
        EXPECT_EQ(answer.filename, "old.acv");
        EXPECT_EQ((answer.style & wxFD_OVERWRITE_PROMPT) != 0, raw == 1u);
        EXPECT_EQ(chosen.string(), String(L"/tmp/varnel-saved.acv"));
    }
}
