// The library inside a plain GTK 3 program that has its own window and its own GLib loop and no
// wxApp: the host of examples/foreignhost, driven with real input.
#include "foreignhost.h"
#include "guitest.h"

#include <varnellib/native/windowowner.h>
#include <varnellibwx/messagedialog.h>
#include <varnellibwx/widgets/button.h>
#include <varnellibwx/windowutils.h>

#include <wx/dialog.h>
#include <wx/uiaction.h>

using namespace std::chrono_literals;

namespace {

// A real click in the middle of `window`, handled by the host's own loop.
void clickInside(ForeignHost::Host& host, const wxWindow& window) {
    wxUIActionSimulator simulator;
    const wxPoint target = window.ClientToScreen(wxPoint(window.GetSize().x / 2, 10));
    simulator.MouseMove(target);
    host.runUntil([&] { return wxGetMousePosition() == target; }, 2s);
    simulator.MouseClick();
}

// Clicks the dialog's button with `id` for real, from inside the dialog's own loop.
void clickDialogButton(wxDialog& dialog, int id) {
    wxWindow* button = dialog.FindWindow(id);
    ASSERT_NE(button, nullptr);
    wxUIActionSimulator simulator;
    simulator.MouseMove(button->ClientToScreen(wxPoint(10, 10)));
    simulator.MouseClick();
}

class ForeignHostTest : public ::testing::Test {
protected:
    ForeignHost::Host host;

    void SetUp() override {
        ASSERT_TRUE(
            host.runUntil([&] { return host.button() && host.button()->IsShownOnScreen(); }, 5s));
    }
};

} // namespace

TEST_F(ForeignHostTest, ButtonAndDialogLiveInTheHostsWindowAndLoop) {
    // The button sits inside the host's own window.
    GdkWindow* native = gtk_widget_get_window(host.window());
    int hostX = 0, hostY = 0;
    gdk_window_get_origin(native, &hostX, &hostY);
    const wxRect hostArea(hostX, hostY, gdk_window_get_width(native),
                          gdk_window_get_height(native));
    EXPECT_TRUE(hostArea.Contains(host.button()->GetScreenRect()));

    {
        Varnel::Test::ModalDriver driver([&](wxDialog& dialog) {
            // Owned by the native window, found through its handle.
            EXPECT_EQ(getOwnerAsNativeHandle(Wx::getWindowNativeHandle(&dialog)),
                      WindowHandle(host.window()));
            clickDialogButton(dialog, Wx::MessageDialogButton::OK.id);
        });
        clickInside(host, *host.button());
        ASSERT_TRUE(host.runUntil([&] { return host.accepted() == 1; }, 5s));
        EXPECT_EQ(driver.lastResult(), Wx::MessageDialogButton::OK.id);
    }

    // The host goes on with its loop afterwards: a second click, answered with Cancel.
    Varnel::Test::ModalDriver cancel(
        [&](wxDialog& dialog) { clickDialogButton(dialog, Wx::MessageDialogButton::CANCEL.id); });
    clickInside(host, *host.button());
    ASSERT_TRUE(host.runUntil([&] { return host.declined() == 1; }, 5s));
    EXPECT_EQ(host.accepted(), 1);
}

TEST_F(ForeignHostTest, ClosingTheNativeWindowEndsAnOpenDialogWithTheFrameClose) {
    Varnel::Test::ModalDriver driver([&](wxDialog&) { host.closeWindow(); });
    clickInside(host, *host.button());
    ASSERT_TRUE(host.runUntil([&] { return host.declined() == 1; }, 5s));
    EXPECT_EQ(driver.lastResult(), Wx::MessageDialogControl::FRAME_CLOSE.id);
    EXPECT_FALSE(host.isOpen());
    // The library's widgets went with the native window.
    EXPECT_EQ(host.button(), nullptr);
}

int main(int argc, char** argv) {
    gtk_init(&argc, &argv);
    ::testing::InitGoogleTest(&argc, argv);
    Varnel::Test::installAssertHandler();
    return RUN_ALL_TESTS();
}
