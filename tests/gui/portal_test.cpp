// The eyedropper through the desktop portal, as on a Wayland display: a portal written for the
// test (tests/portal/fake_portal.py) on a private session bus answers each pick as it is told.
// The portal path is forced on the X display of the rest of the suite.
#include "guitest.h"

#include <varnellib/native/colorportal.h>
#include <varnellib/native/screen.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/colorpicker.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/eyedropperbutton.h>
#include <varnellibwx/widgets/textcontrol.h>
#include <varnellibwx/widgets/tooltip.h>

#include <gio/gio.h>

#include <csignal>
#include <optional>

namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";

GDBusConnection* bus() {
    static GDBusConnection* connection = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    return connection;
}

bool portalRuns() {
    GVariant* reply = g_dbus_connection_call_sync(
        bus(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "NameHasOwner", g_variant_new("(s)", kPortal), G_VARIANT_TYPE("(b)"),
        G_DBUS_CALL_FLAGS_NONE, 1000, nullptr, nullptr);
    gboolean owned = FALSE;
    if (reply) {
        g_variant_get(reply, "(b)", &owned);
        g_variant_unref(reply);
    }
    return owned;
}

std::string tellPortal(const char* method, const std::string& mode = {}) {
    GVariant* reply = g_dbus_connection_call_sync(
        bus(), kPortal, "/org/freedesktop/portal/desktop", "org.varnel.TestPortal", method,
        mode.empty() ? nullptr : g_variant_new("(s)", mode.c_str()), nullptr,
        G_DBUS_CALL_FLAGS_NONE, 2000, nullptr, nullptr);
    std::string answer;
    if (reply && g_variant_is_of_type(reply, G_VARIANT_TYPE("(s)"))) {
        const gchar* text = nullptr;
        g_variant_get(reply, "(&s)", &text);
        answer = text;
    }
    if (reply)
        g_variant_unref(reply);
    return answer;
}

// Starts the test's portal on the session bus; its process id, or 0 when it did not start.
GPid spawnPortal() {
    const gchar* argv[] = {"/usr/bin/python3", VARNEL_FAKE_PORTAL, nullptr};
    GPid pid = 0;
    if (!g_spawn_async(nullptr, const_cast<gchar**>(argv), nullptr, G_SPAWN_DEFAULT, nullptr,
                       nullptr, &pid, nullptr))
        return 0;
    return pid;
}

void endPortal(GPid& pid) {
    if (!pid)
        return;
    kill(pid, SIGTERM);
    g_spawn_close_pid(pid);
    pid = 0;
    pumpUntil([] { return !portalRuns(); }, 5s);
}

class Portal : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        Varnel::Detail::setScreenAccessOverride(ScreenAccess::Portal);
        Varnel::Detail::forgetColorPortalAnswer(); // each test starts its own portal, or none
    }
    void TearDown() override {
        stopPortal();
        Varnel::Detail::setScreenAccessOverride(std::nullopt);
        GuiTest::TearDown();
    }

    void startPortal() {
        m_portal = spawnPortal();
        ASSERT_NE(m_portal, 0);
        ASSERT_TRUE(pumpUntil(portalRuns, 10s)) << "the test's portal did not start";
    }
    void stopPortal() { endPortal(m_portal); }

    // A text field that has the focus before the pick, and an eyedropper beside it.
    EyeDropperButton& makeDropper() {
        field = new TextControl(&parent(), wxID_ANY, String(L"focus"));
        field->SetPosition(wxPoint(80, 20));
        auto* dropper = new EyeDropperButton(
            &parent(), wxID_ANY, EyeDropperButton::icon(EyeDropperButton::Icon::PickColor),
            String(EyeDropperButton::kPickColorHelp));
        dropper->SetPosition(wxPoint(20, 20));
        dropper->callOnPicked([this](const Rgb& colour) { picked.push_back(colour); });
        field->SetFocus();
        pumpPending();
        return *dropper;
    }

    GPid m_portal = 0;
    Input input;
    TextControl* field = nullptr;
    std::vector<Rgb> picked;
};

} // namespace

TEST_F(Portal, TheDesktopsColourArrivesLinearAndEveryOtherAnswerEndsThePickEmpty) {
    startPortal();
    EyeDropperButton& dropper = makeDropper();
    ASSERT_TRUE(dropper.picksThroughPortal());
    ASSERT_TRUE(pumpUntil(isColorPortalAvailable));
    ASSERT_TRUE(dropper.canPick());
    // Asked once for the whole process, however many buttons there are.
    auto* picker = new ColorPicker(&parent(), String(L"Color Selector: Portal"), wxPoint(60, 60),
                                   Rgb(0.2f, 0.3f, 0.4f, 1.f), ColorPicker::DialogType::Normal,
                                   ColorPicker::ColorFormat::Rgb);
    EXPECT_TRUE(picker->eyeDropper(true)->canPick());
    EXPECT_EQ(tellPortal("Asked"), "1");
    picker->Destroy();
    struct Row {
        const char* mode;
        std::optional<Rgb> expected;
    };
    const Row rows[] = {
        {"color 0.5 0.25 1.0", Rgb(srgbToLinear(0.5f), srgbToLinear(0.25f), 1.f, 1.f)},
        {"color 1.5 -0.2 0.5", Rgb(1.f, 0.f, srgbToLinear(0.5f), 1.f)}, // clamped into 0..1
        {"twice 0 0 1", Rgb(0.f, 0.f, 1.f, 1.f)},                       // the second is ignored
        {"cancel", {}},
        {"fail", {}},
        {"missing", {}},
        {"wrongtype", {}},
        {"nan", {}},
    };
    for (const Row& row : rows) {
        picked.clear();
        tellPortal("SetNext", row.mode);
        input.click(dropper, wxPoint(5, 5));
        EXPECT_TRUE(dropper.isPicking() || !picked.empty()) << row.mode;
        ASSERT_TRUE(pumpUntil([&] { return !dropper.isPicking(); })) << row.mode;
        pumpUntil([] { return false; }, 100ms); // room for a second answer
        if (row.expected) {
            ASSERT_EQ(picked.size(), 1u) << row.mode;
            EXPECT_EQ(picked[0], *row.expected) << row.mode;
        } else {
            EXPECT_TRUE(picked.empty()) << row.mode;
        }
        EXPECT_EQ(wxWindow::FindFocus(), field) << row.mode << ": the focus comes back";
    }
    EXPECT_EQ(tellPortal("Stats").rfind("x11:", 0), 0u) << "the parent window goes with the call";
}

TEST_F(Portal, APickWithoutAnswerEndsOnEscapeAndALateAnswerIsIgnored) {
    startPortal();
    EyeDropperButton& dropper = makeDropper();
    tellPortal("SetNext", "never");
    input.click(dropper, wxPoint(5, 5));
    ASSERT_TRUE(dropper.isPicking());
    input.key(WXK_ESCAPE);
    EXPECT_FALSE(dropper.isPicking());
    EXPECT_TRUE(pumpUntil([] { return tellPortal("Stats").ends_with(" 1"); }))
        << "the request is closed";
    tellPortal("Answer", "color 1 1 1");
    pumpUntil([] { return false; }, 150ms);
    EXPECT_TRUE(picked.empty());

    // The window closing ends a pick that has no answer.
    input.click(dropper, wxPoint(5, 5));
    ASSERT_TRUE(dropper.isPicking());
    parent().Hide();
    EXPECT_FALSE(dropper.isPicking());
    parent().Show();
    pumpUntil([&] { return parent().IsShownOnScreen(); });

    // Destroyed while its request is pending: the answer finds nobody.
    input.click(dropper, wxPoint(5, 5));
    ASSERT_TRUE(dropper.isPicking());
    dropper.Destroy();
    tellPortal("Answer", "color 1 1 1");
    pumpUntil([] { return false; }, 150ms);
    EXPECT_TRUE(picked.empty());
}

TEST_F(Portal, WithoutAPortalTheEyedropperSaysWhyAndThePickerAveragesNothing) {
    EyeDropperButton& dropper = makeDropper();
    ASSERT_TRUE(pumpUntil([&] { return !dropper.canPick(); }));
    ASSERT_TRUE(dropper.tooltip() && !dropper.tooltip()->lines().isEmpty());
    EXPECT_EQ(toWxString(dropper.tooltip()->lines()[0]).BeforeFirst(' '), "Picking");
    input.click(dropper, wxPoint(5, 5));
    EXPECT_FALSE(dropper.isPicking());

    auto* picker = new ColorPicker(&parent(), String(L"Color Selector: Portal"), wxPoint(60, 60),
                                   Rgb(0.2f, 0.3f, 0.4f, 1.f), ColorPicker::DialogType::Normal,
                                   ColorPicker::ColorFormat::Rgb);
    EXPECT_FALSE(picker->eyeDropper(false)->canPick());
    // The averaging list looks disabled and takes no input, yet its tooltip says why.
    ComboBox& averaging = *picker->averagingList();
    EXPECT_FALSE(averaging.isAvailable());
    Tooltip* tip = nullptr;
    for (wxWindow* child : averaging.GetChildren())
        tip = tip ? tip : dynamic_cast<Tooltip*>(child);
    ASSERT_NE(tip, nullptr);
    tip->setDelay(100);
    picker->Show();
    ASSERT_TRUE(pumpUntil([&] { return averaging.IsShownOnScreen(); }));
    input.moveTo(averaging, wxPoint(20, 8)); // in, then a move over it, as a user's pointer does
    input.moveTo(averaging, wxPoint(24, 9));
    EXPECT_TRUE(pumpUntil([&] { return tip->IsShown(); }, 2s));
    input.click(averaging, wxPoint(20, 8));
    sendWheel(averaging, -120);
    EXPECT_FALSE(averaging.isDropdownShown());
    EXPECT_EQ(averaging.getSelectedIndex(), 0);
    picker->Destroy();
}

// Run on a Wayland display (the wayland-portal test, under Weston): the request gives the portal
// the window's exported handle where the compositor can export one (xdg-foreign; Debian's Weston
// 10 cannot, and the request then goes without a parent), and no handle outlives its request.
// Without the toolkit's simulated input (it needs X), the press is sent to the button.
TEST(PortalOnWayland, TheWindowsHandleIsExportedForTheRequestAndReleasedAfter) {
    if (screenAccess() != ScreenAccess::Portal)
        GTEST_SKIP() << "not a Wayland display";
    GPid portal = spawnPortal();
    ASSERT_NE(portal, 0);
    ASSERT_TRUE(pumpUntil(portalRuns, 10s));
    auto* frame = new wxFrame(nullptr, wxID_ANY, "Portal", wxPoint(40, 40), wxSize(200, 100));
    auto* dropper = new EyeDropperButton(frame, wxID_ANY,
                                         EyeDropperButton::icon(EyeDropperButton::Icon::PickColor),
                                         String(EyeDropperButton::kPickColorHelp));
    std::vector<Rgb> picked;
    dropper->callOnPicked([&](const Rgb& colour) { picked.push_back(colour); });
    frame->Show();
    ASSERT_TRUE(pumpUntil([&] { return frame->IsShownOnScreen(); }));
    ASSERT_TRUE(pumpUntil(isColorPortalAvailable));
    for (const char* mode : {"color 0 0 1", "cancel"}) {
        tellPortal("SetNext", mode);
        wxMouseEvent press(wxEVT_LEFT_DOWN);
        press.SetPosition(wxPoint(5, 5));
        press.SetEventObject(dropper);
        dropper->GetEventHandler()->ProcessEvent(press);
        ASSERT_TRUE(dropper->isPicking()) << mode;
        ASSERT_TRUE(pumpUntil([&] { return !dropper->isPicking(); }, 10s)) << mode;
        const std::string stats = tellPortal("Stats");
        const std::string parent = stats.substr(0, stats.rfind(' '));
        EXPECT_TRUE(parent.empty() || parent.rfind("wayland:", 0) == 0) << parent;
        EXPECT_EQ(Varnel::Detail::exportedWindowHandles(), 0) << mode;
    }
    EXPECT_EQ(picked, std::vector<Rgb>{Rgb(0.f, 0.f, 1.f, 1.f)});
    frame->Destroy();
    pumpUntil([] { return wxTopLevelWindows.IsEmpty(); });
    endPortal(portal);
}
