// The collapsible panel, the pixel probe and the save settings dialog under real input: toggles
// by mouse and keys and the space they give back, the probe at the screen's edges, through
// which the pointer passes, and how the dialog answers.
#include "guitest.h"

#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/collapsiblepanel.h>
#include <varnellibwx/widgets/imagesavesettingsdialog.h>
#include <varnellibwx/widgets/pixelprobe.h>
#include <varnellibwx/widgets/textcontrol.h>

#include <wx/dc.h>
#include <wx/display.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>

namespace {

class ImageTools : public GuiTest {
protected:
    // A panel holding a 200 x 150 block, with a strip below it in the frame's sizer.
    CollapsiblePanel& makePanel() {
        auto* panel = new CollapsiblePanel(&parent(), wxID_ANY, String(L"Details"), true);
        auto* pane = new wxBoxSizer(wxVERTICAL);
        pane->Add(new wxWindow(panel->getPane(), wxID_ANY, wxDefaultPosition, wxSize(200, 150)));
        panel->getPane()->SetSizer(pane);
        panel->callOnToggle(
            [this](bool expanded) { log.record(expanded ? "expanded" : "collapsed"); });
        below = new wxWindow(&parent(), wxID_ANY, wxDefaultPosition, wxSize(50, 20));
        auto* column = new wxBoxSizer(wxVERTICAL);
        column->Add(panel);
        column->Add(below);
        parent().SetSizer(column);
        parent().Layout();
        parent().Bind(wxEVT_COLLAPSIBLEPANE_CHANGED, [this](wxCollapsiblePaneEvent& event) {
            log.record(event.GetCollapsed() ? "event: collapsed" : "event: expanded");
        });
        pumpPending();
        return *panel;
    }

    Input input;
    CallLog log;
    wxWindow* below = nullptr;
};

} // namespace

TEST_F(ImageTools, CollapsibleHeaderTogglesByMouseAndKeysAndGivesTheSpaceBack) {
    CollapsiblePanel& panel = makePanel();
    const int bestOpen = parent().GetBestSize().y;
    const int belowOpen = below->GetPosition().y;
    input.click(*panel.header(), wxPoint(4, 4));
    EXPECT_EQ(log.calls(), (Calls{"collapsed", "event: collapsed"}));
    EXPECT_FALSE(panel.isExpanded());
    EXPECT_FALSE(panel.getPane()->IsShown());
    EXPECT_EQ(parent().GetBestSize().y, bestOpen - 150);
    EXPECT_EQ(below->GetPosition().y, belowOpen - 150) << "what follows moves up";

    // The click left the focus on the header: Space and Enter toggle.
    log.clear();
    input.key(WXK_SPACE);
    input.key(WXK_RETURN);
    EXPECT_EQ(log.calls(), (Calls{"expanded", "event: expanded", "collapsed", "event: collapsed"}));
    input.key(WXK_SPACE);
    EXPECT_EQ(parent().GetBestSize().y, bestOpen);
    EXPECT_EQ(below->GetPosition().y, belowOpen);

    log.clear();
    panel.collapse();
    panel.expand();
    EXPECT_TRUE(log.calls().empty()) << "code's toggles report nothing";
    EXPECT_TRUE(panel.tick()->isExpanded());

    // A host that destroys the panel from its callback: no event from a panel that is gone.
    panel.callOnToggle([&panel](bool) { panel.Destroy(); });
    input.click(*panel.header(), wxPoint(4, 4));
    EXPECT_TRUE(log.calls().empty());
}

TEST_F(ImageTools, TabReachesTheCollapsibleHeaderAndLeavesIt) {
    auto* before = new TextControl(&parent(), wxID_ANY, String(L"before"));
    auto* panel = new CollapsiblePanel(&parent(), wxID_ANY, String(L"Details"), false);
    auto* after = new TextControl(&parent(), wxID_ANY, String(L"after"));
    auto* column = new wxBoxSizer(wxVERTICAL);
    for (wxWindow* window : {static_cast<wxWindow*>(before), static_cast<wxWindow*>(panel),
                             static_cast<wxWindow*>(after)})
        column->Add(window);
    parent().SetSizer(column);
    parent().Layout();
    before->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return before->HasFocus(); }));
    input.key(WXK_TAB);
    EXPECT_TRUE(pumpUntil([&] { return panel->header()->HasFocus(); }));
    input.key(WXK_TAB);
    EXPECT_TRUE(pumpUntil([&] { return after->HasFocus(); }));
    input.key(WXK_TAB, wxMOD_SHIFT);
    EXPECT_TRUE(pumpUntil([&] { return panel->header()->HasFocus(); }));
    input.key(WXK_TAB, wxMOD_SHIFT);
    EXPECT_TRUE(pumpUntil([&] { return before->HasFocus(); }));
}

TEST_F(ImageTools, ProbeStaysOnScreenLetsThePointerThroughAndHides) {
    auto* view = new wxWindow(&parent(), wxID_ANY, wxPoint(0, 0), wxSize(400, 300));
    view->SetFocus();
    int motions = 0;
    view->Bind(wxEVT_MOTION, [&](wxMouseEvent&) { ++motions; });
    auto* probe = new PixelProbe(view);
    const PixelProbeValues values{
        {12, 34}, Rgb(2.f, 0.5f, 0.25f, 1.f), Rgb(1.f, 0.73f, 0.54f, 1.f)};

    const wxRect screen = wxDisplay(0u).GetGeometry();
    const wxPoint corner(screen.GetRight() - 2, screen.GetBottom() - 2);
    probe->show(values, corner);
    ASSERT_TRUE(pumpUntil([probe] { return probe->IsShownOnScreen(); }));
    const wxRect shown = probe->GetScreenRect();
    EXPECT_TRUE(screen.Contains(shown));
    EXPECT_LT(shown.GetRight(), corner.x) << "flipped to the pointer's left";
    EXPECT_LT(shown.GetBottom(), corner.y) << "and above it";
    EXPECT_EQ(probe->texts(), Wx::Detail::pixelProbeTexts(values));
    EXPECT_TRUE(parent().IsActive());
    EXPECT_EQ(wxWindow::FindFocus(), view);

    // Over the view, the pointer passes through the probe to the view.
    probe->show(values, view->ClientToScreen(wxPoint(20, 20)));
    pumpPending();
    const wxPoint onProbe = probe->GetScreenPosition() + wxPoint(10, 10);
    motions = 0;
    input.moveTo(*view, view->ScreenToClient(onProbe));
    EXPECT_GT(motions, 0);

    input.key(WXK_ESCAPE);
    EXPECT_TRUE(pumpUntil([probe] { return !probe->IsShown(); }));
    // It follows its host's visibility: the view or the frame hidden, the frame minimised.
    wxTopLevelWindow& frame = *static_cast<wxTopLevelWindow*>(wxGetTopLevelParent(view));
    const std::function<void()> hides[] = {
        [&] { view->Hide(); },
        [&] { frame.Hide(); },
        [&] {
            wxIconizeEvent minimised(frame.GetId(), true);
            frame.HandleWindowEvent(minimised);
        },
    };
    for (const auto& hideHost : hides) {
        probe->show(values, corner);
        hideHost();
        EXPECT_FALSE(probe->IsShown()) << &hideHost - hides;
        view->Show();
        frame.Show();
    }
}

TEST_F(ImageTools, TheProbeShowsWhatTheToolkitWritesForItsTexts) {
    auto* probe = new PixelProbe(&parent());
    for (const PixelProbeValues& values :
         {PixelProbeValues{{-2147483647 - 1, 2147483647},
                           Rgb(kNaN, -kInf, 1e30f, -0.f),
                           Rgb(0.f, 0.73f, 0.54f, 1.f)},
          PixelProbeValues{{640, 7}, Rgb(0.123456f, 8.f, 0.5f, 1.f), Rgb(1.f, 0.5f, 0.f, 1.f)}}) {
        probe->show(values, wxPoint(100, 100));
        const wxSize size = probe->GetClientSize();
        const wxImage drawn = renderOffscreen(size, [&](wxDC& dc) { probe->paint(dc); });
        // The same texts written by the toolkit at the same places, over the same background.
        const wxImage written = renderOffscreen(size, [&](wxDC& dc) {
            dc.SetPen(wxPen(wxColour(105, 105, 105)));
            dc.SetBrush(wxBrush(wxColour(37, 37, 37)));
            dc.DrawRectangle(wxPoint(0, 0), size);
            dc.SetFont(probe->GetFont());
            dc.SetTextForeground(wxColour(200, 200, 200));
            for (int i = 0; i < 4; ++i)
                dc.DrawText(wxString::FromUTF8(probe->texts()[i]), probe->columns()[i], 6);
        });
        // Glyphs copied one by one lose only the odd antialiased pixel past their advance.
        int differing = 0;
        for (int y = 0; y < size.y; ++y)
            for (int x = 0; x < probe->columns()[4]; ++x)
                differing += drawn.GetGreen(x, y) != written.GetGreen(x, y);
        EXPECT_LE(differing * 1000, size.y * probe->columns()[4]);
        const wxColour patch = pixelAt(drawn, probe->columns()[4] + 5, 10);
        EXPECT_EQ(patch, wxColour(unitToByte(values.tonemapped.r), unitToByte(values.tonemapped.g),
                                  unitToByte(values.tonemapped.b)));
        EXPECT_EQ(pixelAt(drawn, 0, 0), wxColour(105, 105, 105));
    }
}

TEST_F(ImageTools, SaveDialogAnswersAndSkipsDisabledFormats) {
    using F = ImageColorFormat;
    const ImageSaveCapabilities noSrgb16{{true, false, true, true}, true};
    struct Row {
        const char* what;
        std::function<void(Input&, ImageSaveSettingsDialog&)> act;
        Optional<ImageSaveSettings> expected;
    };
    const auto clickOn = [](Input& input, wxWindow& window) {
        input.click(window, wxPoint(window.GetSize().x / 2, window.GetSize().y / 2));
    };
    const Row rows[] = {
        {"Enter", [](Input& in, auto&) { in.key(WXK_RETURN); }, ImageSaveSettings{F::Srgb8, true}},
        {"Escape", [](Input& in, auto&) { in.key(WXK_ESCAPE); }, {}},
        {"the close box", [](Input&, auto& dialog) { dialog.Close(); }, {}},
        {"arrow past the disabled format",
         [](Input& in, auto&) {
             in.key(WXK_DOWN);
             in.key(WXK_RETURN);
         },
         ImageSaveSettings{F::LinearHalf, true}},
        {"clicks on the disabled format, then alpha, then OK",
         [&](Input& in, ImageSaveSettingsDialog& dialog) {
             clickOn(in, *dialog.formatButton(F::Srgb16));
             clickOn(in, *dialog.alphaBox());
             clickOn(in, *dialog.FindWindow(wxID_OK));
         },
         ImageSaveSettings{F::Srgb8, false}},
        {"Cancel",
         [&](Input& in, auto& dialog) { clickOn(in, *dialog.FindWindow(wxID_CANCEL)); },
         {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        ModalDriver driver([&](wxDialog& dialog) {
            auto& settings = dynamic_cast<ImageSaveSettingsDialog&>(dialog);
            EXPECT_EQ(dialog.GetTitle(), " Save Options");
            raiseAndActivate(dialog);
            row.act(input, settings);
        });
        EXPECT_EQ(showImageSaveSettingsDialog(&parent(), {F::Srgb16, true}, noSrgb16), row.expected)
            << row.what;
    }
}
