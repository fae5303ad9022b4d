// The curve dialog under Xvfb: its layout and the host's callbacks in order, the controls'
// actions, curve files through the real choosers and message dialogs, resizing, picking, undo and
// redo, and the keyboard's editing of points.
#include "guitest.h"

#include <varnellibwx/messagedialog.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/acvfile.h>
#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/curvedialog.h>
#include <varnellibwx/widgets/dropdownbutton.h>
#include <varnellibwx/widgets/statictext.h>

#include <wx/filename.h>

#include <cstdio>
#include <fstream>

namespace {

// A host that logs what the dialog and its panel ask and tell.
class Host : public ICurveDialogCallbacks {
public:
    explicit Host(CallLog& log) : m_log(log) {}
    Histogram getHistogram(std::pair<float, float> range, CurveChannel channel, int bins) override {
        asked.push_back({range, channel, bins});
        if (forcedBins >= 0)
            bins = forcedBins; // a host answering the wrong length
        Stack<uint64> counts;
        for (int i = 0; i < bins; ++i)
            counts.push(static_cast<uint64>(i % 7 + 1));
        return Histogram(counts);
    }
    Optional<int> getHistogramRefreshInterval() override { return std::nullopt; }
    Optional<Rgb> getColorAt(Pixel pixel) override {
        return Rgb(pixel.x / 100.f, pixel.x / 100.f, pixel.x / 100.f, 1.f);
    }
    void onCurveChanged(CurveChannel channel, const Curve&) override {
        m_log.record("changed " + std::to_string(static_cast<int>(channel)));
        if (destroyOnChange)
            destroyOnChange->Destroy();
    }
    int getChangeNotificationDelay() override { return 0; }
    wxPoint getInitialPosition(wxWindow*) override {
        m_log.record("position");
        return {90, 30};
    }
    void storePosition(wxPoint position) override {
        m_log.record("store");
        stored = position;
    }
    void onWindowOpened(wxWindow* window) override {
        m_log.record(dynamic_cast<CurveDialog*>(window) ? "opened dialog" : "opened list");
    }
    void onWindowClosed(wxWindow* window) override {
        m_log.record(dynamic_cast<CurveDialog*>(window) ? "closed dialog" : "closed list");
    }

    struct Asked {
        std::pair<float, float> range;
        CurveChannel channel;
        int bins;
    };
    std::vector<Asked> asked;
    wxPoint stored;
    wxWindow* destroyOnChange = nullptr;
    int forcedBins = -1;

private:
    CallLog& m_log;
};

// Every text a message dialog shows.
wxString textOf(wxWindow& window) {
    wxString text;
    for (wxWindow* child : window.GetChildren()) {
        if (auto* label = dynamic_cast<StaticText*>(child))
            text += toWxString(label->label());
        text += textOf(*child);
    }
    return text;
}

ColorCurve sampleCurves() {
    ColorCurve curves;
    curves[CurveChannel::Red].points() = {{0.f, 0.f}, {0.4f, 0.6f}, {1.f, 1.f}};
    curves[CurveChannel::Red].setInterpolation(Curve::Linear);
    curves[CurveChannel::Blue].points() = {{0.f, 0.2f}, {1.f, 0.8f}};
    return curves;
}

class CurveDialogs : public GuiTest {
protected:
    CurveDialog& open(const ColorCurve& curves = ColorCurve()) {
        host = makeShared<Host>(log);
        auto* dialog = new CurveDialog(&parent(), GuiSkin(), String(L"Curves"), curves, host);
        EXPECT_TRUE(raiseAndActivate(*dialog));
        pumpPending();
        log.clear();
        return *dialog;
    }

    // A master curve of three points, the panel with the focus and the middle point chosen by
    // two presses of Tab.
    CurveDialog& openWithTheMiddlePointChosen() {
        ColorCurve curves;
        curves[CurveChannel::Master].points() = {{0.f, 0.f}, {0.5f, 0.5f}, {1.f, 1.f}};
        CurveDialog& dialog = open(curves);
        CurvePanel& panel = *dialog.panel();
        panel.SetFocus();
        EXPECT_TRUE(pumpUntil([&] { return panel.HasFocus(); }));
        input.key(WXK_TAB);
        input.key(WXK_TAB);
        return dialog;
    }

    // Drives a file action: the chooser answers `path`, and a message dialog, if one shows, has
    // its text noted and is closed.
    wxString runFileAction(const std::function<void()>& action, const wxString& path) {
        FileChooserAnswer answer(path);
        wxString message;
        ModalDriver driver([&](wxDialog& dialog) {
            if (dynamic_cast<MessageDialog*>(&dialog)) {
                message = dialog.GetTitle() + ": " + textOf(dialog);
                dialog.EndModal(wxID_OK);
            }
        });
        action();
        EXPECT_TRUE(answer.seen);
        return message;
    }

    static wxString tempPath(const char* name) {
        return wxFileName(wxFileName::GetTempDir(), wxString::FromUTF8(name)).GetFullPath();
    }

    Input input;
    CallLog log;
    SharedPtr<Host> host;
};

} // namespace

TEST_F(CurveDialogs, LayoutAndTheHostsCallbacksAtOpeningAndClosing) {
    host = makeShared<Host>(log);
    ColorCurve curves;
    curves[CurveChannel::Master].setInterpolation(Curve::Linear);
    auto* dialog = new CurveDialog(&parent(), GuiSkin(), String(L"Curves"), curves, host);
    EXPECT_EQ(log.calls(), (Calls{"opened dialog", "position"}));
    EXPECT_EQ(dialog->GetPosition(), wxPoint(90, 30));
    const long style = dialog->GetWindowStyle();
    EXPECT_EQ(style & wxMAXIMIZE_BOX, 0);
    EXPECT_NE(style & wxFRAME_NO_TASKBAR, 0);
    EXPECT_NE(style & wxRESIZE_BORDER, 0);
    EXPECT_EQ(dialog->GetChildren().front(), dialog->pickButton()); // built first
    EXPECT_EQ(dialog->panel()->GetSize(), wxSize(256, 256));
    EXPECT_EQ(dialog->interpolationChoice()->getSelectedIndex(), 1);
    EXPECT_EQ(dialog->channelChoice()->getCount(), 4);
    EXPECT_EQ(dialog->histogramChoice()->getCount(), 3);
    EXPECT_EQ(dialog->GetBackgroundColour(), wxColour(68, 68, 68));

    // Growing the frame grows the panel by as much.
    const wxSize grown = dialog->GetSize() + wxSize(60, 40);
    dialog->SetSize(grown);
    EXPECT_TRUE(pumpUntil([&] { return dialog->panel()->GetSize() == wxSize(316, 296); }));

    // The combo boxes' lists are reported as they open and close.
    ASSERT_TRUE(raiseAndActivate(*dialog));
    log.clear();
    input.click(*dialog->histogramChoice(), wxPoint(20, 8));
    ASSERT_TRUE(pumpUntil([&] { return dialog->histogramChoice()->isDropdownShown(); }));
    input.key(WXK_ESCAPE);
    EXPECT_TRUE(pumpUntil([&] { return !dialog->histogramChoice()->isDropdownShown(); }));
    EXPECT_EQ(log.calls(), (Calls{"opened list", "closed list"}));

    log.clear();
    dialog->Close();
    EXPECT_TRUE(pumpUntil([&] { return log.calls().size() >= 2; }));
    EXPECT_EQ(log.calls(), (Calls{"closed dialog", "store"}));
}

TEST_F(CurveDialogs, ResetsAndEqualizeReportWhatTheyChange) {
    CurveDialog& dialog = open(sampleCurves());
    dialog.channelChoice()->selectIndex(1, true); // red
    input.click(*dialog.button("Reset"), wxPoint(10, 10));
    EXPECT_EQ(log.calls(), Calls{"changed 1"});
    EXPECT_EQ(dialog.panel()->getCurrentCurves()[CurveChannel::Red], Curve());
    EXPECT_EQ(dialog.panel()->getCurrentCurves()[CurveChannel::Blue],
              sampleCurves()[CurveChannel::Blue]);

    log.clear();
    host->asked.clear();
    input.click(*dialog.button("Equalize"), wxPoint(10, 10));
    ASSERT_EQ(host->asked.size(), 2u); // the equalizing request, then the cumulative view
    EXPECT_EQ(host->asked[0].range, std::make_pair(0.f, 2.f));
    EXPECT_EQ(host->asked[0].channel, CurveChannel::Master);
    EXPECT_EQ(host->asked[0].bins, 246);
    EXPECT_EQ(dialog.panel()->getCurrentCurves()[CurveChannel::Master].points().size(), 16);
    EXPECT_EQ(dialog.panel()->histogramType(), HistogramType::Cumulative);
    EXPECT_EQ(dialog.histogramChoice()->getSelectedIndex(), 2);
    EXPECT_EQ(log.calls(), Calls{"changed 0"});

    log.clear();
    dialog.resetAll();
    EXPECT_EQ(log.calls(), (Calls{"changed 0", "changed 1", "changed 2", "changed 3"}));
    EXPECT_TRUE(dialog.panel()->getCurrentCurves().isIdentity());

    // Histograms of no bins or the wrong number still give a curve.
    host->forcedBins = 0;
    dialog.equalize();
    EXPECT_TRUE(dialog.panel()->getCurrentCurves()[CurveChannel::Master].isIdentity());
    host->forcedBins = 3;
    dialog.equalize();
    EXPECT_EQ(dialog.panel()->getCurrentCurves()[CurveChannel::Master].points().size(), 16);
}

TEST_F(CurveDialogs, CurveFilesLoadPointsKeepModesAndFailuresSayWhy) {
    CurveDialog& dialog = open(sampleCurves());
    ColorCurve onDisk;
    onDisk[CurveChannel::Red].points() = {{0.f, 0.f}, {128 / 255.f, 64 / 255.f}, {1.f, 1.f}};
    const wxString file = tempPath("varnel-curves test é.acv");
    ASSERT_TRUE(Wx::Detail::writeAcvFile(onDisk, Io::Path(toVarnelString(file))));
    EXPECT_EQ(runFileAction([&] { dialog.load(); }, file), "");
    const ColorCurve loaded = dialog.panel()->getCurrentCurves();
    EXPECT_EQ(loaded[CurveChannel::Red].points(), onDisk[CurveChannel::Red].points());
    EXPECT_EQ(loaded[CurveChannel::Red].interpolation(), Curve::Linear); // kept
    EXPECT_EQ(log.calls(), (Calls{"changed 0", "changed 1", "changed 2", "changed 3"}));
    ASSERT_TRUE(dialog.undo()); // a load is one step
    EXPECT_EQ(dialog.panel()->getCurrentCurves(), sampleCurves());
    ASSERT_TRUE(dialog.redo());
    EXPECT_EQ(dialog.panel()->getCurrentCurves(), loaded);

    // A version-2 file, an empty one and a megabyte of noise: the curves stay. (GTK's chooser
    // refuses a file that is gone by the time the user presses Open, and a folder; reading
    // what cannot be opened is the curve files' own suite.)
    const wxString version2 = tempPath("varnel-version2.acv"), empty = tempPath("varnel-empty.acv"),
                   noise = tempPath("varnel-noise.acv");
    std::ofstream(version2.utf8_string(), std::ios::binary).write("\0\2\0\4\0\2\0\0\0\1", 10);
    std::ofstream(empty.utf8_string(), std::ios::binary);
    std::string bytes(1 << 20, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>((i * 2654435761u) >> 13);
    std::ofstream(noise.utf8_string(), std::ios::binary) << bytes;
    for (const wxString& bad : {version2, empty, noise}) {
        EXPECT_EQ(runFileAction([&] { dialog.load(); }, bad),
                  "Vellum Renderer Error: Cannot load curves from a file.")
            << bad;
        EXPECT_EQ(dialog.panel()->getCurrentCurves(), loaded);
    }

    // Saving where nothing can be written says so; a save and a load give the points back.
    EXPECT_EQ(runFileAction([&] { dialog.save(); }, "/sys/varnel-curves.acv"),
              "Vellum Renderer Error: Cannot save curves into a file.");
    const wxString saved = tempPath("varnel-saved.acv");
    EXPECT_EQ(runFileAction([&] { dialog.save(); }, saved), "");
    dialog.resetAll();
    runFileAction([&] { dialog.load(); }, saved);
    EXPECT_EQ(dialog.panel()->getCurrentCurves()[CurveChannel::Red].points(),
              loaded[CurveChannel::Red].points());
    for (const wxString& path : {file, version2, empty, noise, saved})
        std::remove(path.utf8_string().c_str());
}

TEST_F(CurveDialogs, EditsUndoAndRedoOneStepAtATime) {
    CurveDialog& dialog = open();
    CurvePanel& panel = *dialog.panel();
    // A drag adds a point and moves it: one step.
    input.drag(panel, wxPoint(128, 128), wxPoint(128, 90));
    const ColorCurve dragged = panel.getCurrentCurves();
    ASSERT_NE(dragged, ColorCurve());
    dialog.resetAll();
    EXPECT_TRUE(dialog.undo());
    EXPECT_EQ(panel.getCurrentCurves(), dragged);
    log.clear();
    panel.SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return panel.HasFocus(); }));
    input.key('Z', wxMOD_CONTROL);
    EXPECT_TRUE(panel.getCurrentCurves().isIdentity());
    EXPECT_EQ(log.calls(), (Calls{"changed 0", "changed 1", "changed 2", "changed 3"}));
    input.key('Y', wxMOD_CONTROL);
    EXPECT_EQ(panel.getCurrentCurves(), dragged);
    input.key('Z', wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_FALSE(dialog.canRedo());

    // Picking through the controller while "Pick" is down is one step too.
    input.click(*dialog.pickButton(), wxPoint(10, 10));
    ASSERT_TRUE(dialog.isPicking());
    const AutoPtr<ICurvePanelController> controller = dialog.getController();
    const ColorCurve beforePick = panel.getCurrentCurves();
    controller->startPicking({50, 0});
    controller->movePicking({50, -30});
    controller->stopPicking();
    ASSERT_NE(panel.getCurrentCurves(), beforePick);
    dialog.undo();
    EXPECT_EQ(panel.getCurrentCurves(), beforePick);
}

TEST_F(CurveDialogs, TheKeyboardChoosesMovesAndRemovesPoints) {
    CurveDialog& dialog = openWithTheMiddlePointChosen();
    CurvePanel& panel = *dialog.panel();
    EXPECT_EQ(panel.model().keyPoint, 1);
    input.key(WXK_UP, wxMOD_SHIFT); // ten pixels up
    const CurvePoint moved = panel.getCurrentCurves()[CurveChannel::Master].points()[1];
    EXPECT_EQ(moved.x, 0.5f);
    EXPECT_NEAR(moved.y, 0.5f + 10.f / 246.f, 0.005f);
    EXPECT_EQ(log.calls(), Calls{"changed 0"});
    input.key(WXK_DELETE);
    EXPECT_EQ(panel.getCurrentCurves()[CurveChannel::Master].points().size(), 2);
    EXPECT_TRUE(dialog.undo());
    EXPECT_EQ(panel.getCurrentCurves()[CurveChannel::Master].points()[1], moved);
}

TEST_F(CurveDialogs, AHostMayDestroyTheDialogFromItsCallback) {
    CurveDialog& dialog = open();
    host->destroyOnChange = &dialog;
    dialog.resetAll();
    EXPECT_TRUE(pumpUntil([&] { return log.calls().back() == "store"; }));
}

TEST_F(CurveDialogs, AChangeFromAnySideEndsADragOrPickAndTheDragIsItsOwnStep) {
    CurveDialog& dialog = open();
    CurvePanel& panel = *dialog.panel();
    // Three points added, the third dragged when the host's Edit menu undoes (it used to reach
    // past the shortened point list from the next motion, ending the host).
    input.click(panel, wxPoint(69, 197));
    input.click(panel, wxPoint(133, 133));
    input.press(panel, wxPoint(197, 69));
    input.moveTo(panel, wxPoint(197, 50));
    ASSERT_TRUE(pumpUntil([&] { return panel.model().dragging; }));
    EXPECT_TRUE(dialog.undo()); // takes the drag back
    EXPECT_FALSE(panel.model().dragging);
    EXPECT_FALSE(panel.HasCapture());
    EXPECT_EQ(panel.getCurrentCurves()[CurveChannel::Master].points().size(), 4);
    log.clear();
    input.moveTo(panel, wxPoint(197, 30));
    input.release();
    pumpPending();
    EXPECT_EQ(log.calls(), Calls{}) << "the dropped drag reports nothing more";
    EXPECT_TRUE(dialog.redo());
    EXPECT_EQ(panel.getCurrentCurves()[CurveChannel::Master].points().size(), 5);

    // Delete from the keyboard and a host's setCurves while the mouse holds a point; a pick.
    const std::function<void()> changes[] = {
        [&] { input.key(WXK_DELETE); },
        [&] { dialog.setCurves(ColorCurve()); },
    };
    // (Each press on a point of its own: two presses at one place would be a double click.)
    const wxPoint grabs[] = {{133, 133}, {69, 197}};
    for (int i = 0; i < 2; ++i) {
        input.press(panel, grabs[i]);
        input.moveTo(panel, grabs[i] - wxPoint(0, 13));
        ASSERT_TRUE(pumpUntil([&] { return panel.model().dragging; })) << i;
        changes[i]();
        EXPECT_FALSE(panel.model().dragging);
        input.moveTo(panel, grabs[i] - wxPoint(0, 30));
        input.release();
        pumpPending();
        EXPECT_FALSE(panel.HasCapture());
    }
    const AutoPtr<ICurvePanelController> controller = dialog.getController();
    controller->startPicking({50, 0});
    dialog.resetAll();
    controller->movePicking({50, -30});
    controller->stopPicking();
    EXPECT_TRUE(panel.getCurrentCurves().isIdentity());
}

TEST_F(CurveDialogs, ARunOfOneKeyAndAHostsSetCurvesAreOneStepEach) {
    CurveDialog& dialog = openWithTheMiddlePointChosen();
    CurvePanel& panel = *dialog.panel();
    const ColorCurve curves = panel.getCurrentCurves();
    for (int i = 0; i < 5; ++i)
        input.key(WXK_UP);
    const ColorCurve raised = panel.getCurrentCurves();
    input.key(WXK_LEFT);
    EXPECT_TRUE(dialog.undo());
    EXPECT_EQ(panel.getCurrentCurves(), raised);
    EXPECT_TRUE(dialog.undo());
    EXPECT_EQ(panel.getCurrentCurves(), curves);
    EXPECT_FALSE(dialog.canUndo());

    ColorCurve linear;
    linear[CurveChannel::Master].setInterpolation(Curve::Linear);
    dialog.setCurves(linear);
    EXPECT_EQ(dialog.interpolationChoice()->getSelectedIndex(), Curve::Linear);
    EXPECT_TRUE(dialog.undo());
    EXPECT_EQ(panel.getCurrentCurves(), curves);
    EXPECT_EQ(dialog.interpolationChoice()->getSelectedIndex(), Curve::Cubic);
    EXPECT_TRUE(dialog.redo());
    EXPECT_EQ(dialog.interpolationChoice()->getSelectedIndex(), Curve::Linear);
}

TEST_F(CurveDialogs, TheInterpolationChoiceReportsACopyOfTheSelectedCurveAsOneStep) {
    CurveDialog& dialog = open(sampleCurves());
    dialog.channelChoice()->selectIndex(3, true); // blue, cubic
    EXPECT_EQ(dialog.interpolationChoice()->getSelectedIndex(), Curve::Cubic);
    log.clear();
    dialog.interpolationChoice()->selectIndex(Curve::Linear, true);
    const ColorCurve now = dialog.panel()->getCurrentCurves();
    EXPECT_EQ(now[CurveChannel::Blue].interpolation(), Curve::Linear);
    EXPECT_EQ(now[CurveChannel::Blue].points(), sampleCurves()[CurveChannel::Blue].points());
    EXPECT_EQ(now[CurveChannel::Master], sampleCurves()[CurveChannel::Master]);
    EXPECT_EQ(log.calls(), Calls{"changed 3"});
    ASSERT_TRUE(dialog.undo());
    EXPECT_EQ(dialog.panel()->getCurrentCurves(), sampleCurves());
    EXPECT_FALSE(dialog.canUndo());
}

TEST_F(CurveDialogs, TheHistogramChoiceAndItsSwitchDriveThePanel) {
    CurveDialog& dialog = open();
    host->asked.clear();
    dialog.histogramChoice()->selectIndex(1, true);
    EXPECT_EQ(dialog.panel()->histogramType(), HistogramType::Logarithmic);
    EXPECT_EQ(host->asked.size(), 1u);
    dialog.enableHistogramControls(false);
    EXPECT_FALSE(dialog.histogramChoice()->IsEnabled());
    EXPECT_FALSE(dialog.button("Equalize")->IsEnabled());
    dialog.enableHistogramControls(true);
    EXPECT_TRUE(dialog.histogramChoice()->IsEnabled());
    EXPECT_TRUE(dialog.button("Equalize")->IsEnabled());
}

TEST_F(CurveDialogs, ResetAllRunsFromTheDropdownsMenu) {
    CurveDialog& dialog = open(sampleCurves());
    DropdownButton* dropdown = nullptr;
    for (wxWindow* child : dialog.GetChildren())
        dropdown = dropdown ? dropdown : dynamic_cast<DropdownButton*>(child);
    ASSERT_NE(dropdown, nullptr);
    input.press(*dropdown, wxPoint(10, 10));
    ASSERT_TRUE(pumpUntil([&] { return dropdown->isPopupShown(); }));
    input.moveTo(*dropdown->items()[0], wxPoint(10, 10));
    input.release();
    ASSERT_TRUE(pumpUntil([&] { return !dropdown->isPopupShown(); }));
    EXPECT_TRUE(dialog.panel()->getCurrentCurves().isIdentity());
    EXPECT_EQ(log.calls(), (Calls{"changed 0", "changed 1", "changed 2", "changed 3"}));
}
