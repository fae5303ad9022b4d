// The library's start and stop, each test from the Down state back to it. These tests own the
// whole wxWidgets lifetime, so this binary has its own main and no shared start-up.
#include "guitest.h"

#include <varnellib/native/process.h>
#include <varnellibwx/varnellibwx.h>

#include <wx/app.h>
#include <wx/image.h>
#include <wx/timer.h>

#include <algorithm>
#include <chrono>

using LibWx::ApplicationType;

namespace {

// What a host's own application saw. It lives outside the application object, which
// wxUninitialize deletes.
std::vector<std::string> gHostLog;

class HostApp : public wxApp {
public:
    ~HostApp() override { gHostLog.push_back("~HostApp"); }
    bool OnInit() override {
        gHostLog.push_back("OnInit");
        return true;
    }
    bool ProcessIdle() override {
        gHostLog.push_back("ProcessIdle");
        return wxApp::ProcessIdle();
    }
    int OnExit() override {
        gHostLog.push_back("OnExit");
        return wxApp::OnExit();
    }
    void ExitMainLoop() override {
        gHostLog.push_back("ExitMainLoop");
        wxApp::ExitMainLoop();
    }
};

int countOf(const std::string& call) {
    return static_cast<int>(std::count(gHostLog.begin(), gHostLog.end(), call));
}

class Lifecycle : public ::testing::Test {
protected:
    void SetUp() override {
        gHostLog.clear();
        ASSERT_EQ(LibWx::Detail::startCount(), 0);
        ASSERT_EQ(wxAppConsole::GetInstance(), nullptr);
    }
    void TearDown() override {
        EXPECT_EQ(LibWx::Detail::startCount(), 0);
        EXPECT_EQ(wxAppConsole::GetInstance(), nullptr) << "wxUninitialize owns the application";
    }
};

} // namespace

TEST_F(Lifecycle, NestedCallsOnlyCountAndTheLastShutdownTearsDown) {
    EXPECT_TRUE(LibWx::startup(ApplicationType::Default));
    wxAppConsole* app = wxAppConsole::GetInstance();
    ASSERT_NE(app, nullptr) << "no VarnelApp (is there a display?)";
    wxTimer* timer = LibWx::Detail::eventsTimer();
    ASSERT_NE(timer, nullptr);
    EXPECT_TRUE(timer->IsRunning());
    EXPECT_EQ(timer->GetInterval(), 2000);
    EXPECT_FALSE(timer->IsOneShot());

    EXPECT_TRUE(LibWx::startup(ApplicationType::Secondary));
    EXPECT_EQ(LibWx::Detail::startCount(), 2);
    EXPECT_EQ(wxAppConsole::GetInstance(), app);
    EXPECT_EQ(LibWx::Detail::eventsTimer(), timer);

    LibWx::shutdown();
    EXPECT_TRUE(timer->IsRunning());
    LibWx::shutdown();
    EXPECT_EQ(LibWx::Detail::eventsTimer(), nullptr);

    // An extra shutdown only counts down: a startup then counts back to zero, one more starts.
    LibWx::shutdown();
    EXPECT_EQ(LibWx::Detail::startCount(), -1);
    LibWx::startup(ApplicationType::Default);
    EXPECT_EQ(LibWx::Detail::eventsTimer(), nullptr);
    LibWx::startup(ApplicationType::Default);
    EXPECT_NE(LibWx::Detail::eventsTimer(), nullptr);
    LibWx::shutdown();
}

TEST_F(Lifecycle, ImageHandlersAreRegisteredInOrderAndAgainAfterRestart) {
    const std::vector<wxBitmapType> expected = {
        wxBITMAP_TYPE_PNG, wxBITMAP_TYPE_JPEG, wxBITMAP_TYPE_ICO, wxBITMAP_TYPE_BMP,
        wxBITMAP_TYPE_GIF, wxBITMAP_TYPE_TIFF, wxBITMAP_TYPE_TGA};
    for (int round = 0; round < 2; ++round) {
        LibWx::startup(ApplicationType::Default);
        ASSERT_NE(wxAppConsole::GetInstance(), nullptr) << "round " << round;
        ASSERT_NE(LibWx::Detail::eventsTimer(), nullptr);
        std::vector<wxBitmapType> types;
        for (wxObject* handler : wxImage::GetHandlers())
            types.push_back(static_cast<wxImageHandler*>(handler)->GetType());
        EXPECT_EQ(types, expected) << "round " << round;
        LibWx::shutdown();
        EXPECT_EQ(wxAppConsole::GetInstance(), nullptr);
    }
}

TEST_F(Lifecycle, CallOnInitRunsForDefaultAndSecondaryButNotNoInit) {
    const struct {
        ApplicationType type;
        int onInitCalls;
    } cases[] = {{ApplicationType::Default, 1},
                 {ApplicationType::Secondary, 1},
                 {ApplicationType::NoInit, 0}};
    for (const auto& c : cases) {
        gHostLog.clear();
        wxApp::SetInstance(new HostApp);
        LibWx::startup(c.type);
        EXPECT_EQ(countOf("OnInit"), c.onInitCalls) << static_cast<int>(c.type);
        LibWx::shutdown();
    }
}

TEST_F(Lifecycle, AHostApplicationIsKeptAndDrivenByTheTimer) {
    auto* host = new HostApp;
    wxApp::SetInstance(host);
    LibWx::startup(ApplicationType::NoInit);
    EXPECT_EQ(wxAppConsole::GetInstance(), host) << "the library must not replace the host's app";

    gHostLog.clear();
    LibWx::Detail::eventsTimer()->Notify();
    EXPECT_EQ(gHostLog, std::vector<std::string>{"ProcessIdle"});

    gHostLog.clear();
    LibWx::shutdown();
    // The application cleans up in this order, then wxUninitialize deletes it.
    ASSERT_GE(gHostLog.size(), 4u);
    EXPECT_EQ((std::vector<std::string>(gHostLog.begin(), gHostLog.begin() + 3)),
              (std::vector<std::string>{"ProcessIdle", "OnExit", "ExitMainLoop"}));
    EXPECT_EQ(gHostLog.back(), "~HostApp");
}

TEST_F(Lifecycle, AnInvalidTypeStopsOnlyTheFirstCall) {
    expectStop([] { LibWx::startup(static_cast<ApplicationType>(3)); }, "varnellibwx", 121);
    // The count stays raised and wxWidgets was initialised before the check; no timer started.
    EXPECT_EQ(LibWx::Detail::startCount(), 1);
    EXPECT_NE(wxAppConsole::GetInstance(), nullptr);
    EXPECT_EQ(LibWx::Detail::eventsTimer(), nullptr);
    EXPECT_TRUE(LibWx::startup(static_cast<ApplicationType>(3))) << "nested calls never check";
    LibWx::shutdown();
    LibWx::shutdown();
}

TEST_F(Lifecycle, TheLoopEntryPointsRunStopAndPump) {
    LibWx::startup(ApplicationType::Default);
    wxAppConsole* app = wxAppConsole::GetInstance();
    ASSERT_NE(app, nullptr);

    // processAllPendingEvents is the foreign host's loop; here the wx-only pump.
    int calls = 0;
    app->CallAfter([&] { ++calls; });
    LibWx::processWxWidgetsPendingEvents();
    EXPECT_EQ(calls, 1);

    // The library's loop runs queued work and returns when stopped from inside it.
    app->CallAfter([&] {
        ++calls;
        LibWx::stopEventLoop();
    });
    EXPECT_EQ(LibWx::runEventLoop(), 0);
    EXPECT_EQ(calls, 2);
    LibWx::shutdown();
}

TEST_F(Lifecycle, TheTimerTicksInTheNativeLoop) {
    LibWx::startup(ApplicationType::NoInit);
    int ticks = 0;
    wxTimer* timer = LibWx::Detail::eventsTimer();
    ASSERT_NE(timer, nullptr);
    // Shorten the period so the test does not wait two seconds; Notify is what runs.
    timer->Start(20, wxTIMER_CONTINUOUS);
    wxAppConsole::GetInstance()->Bind(wxEVT_IDLE, [&](wxIdleEvent& event) {
        ++ticks;
        event.Skip();
    });
    // Only the native loop runs here, as in a host with its own message loop; wxWidgets' own
    // idle handling is not called by the test.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (ticks < 5 && std::chrono::steady_clock::now() < deadline)
        Lib::runSingleEventLoopIteration(false);
    EXPECT_GE(ticks, 5);
    LibWx::shutdown();
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    Test::installAssertHandler();
    return RUN_ALL_TESTS();
}
