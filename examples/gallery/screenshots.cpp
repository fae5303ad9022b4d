#include "screenshots.h"
#include "galleryframe.h"
#include "gradientspage.h"
#include "imagetoolspage.h"

#include <varnellib/native/process.h>
#include <varnellibwx/messagedialog.h>
#include <varnellibwx/varnellibwx.h>
#include <varnellibwx/widgets/colorpicker.h>
#include <varnellibwx/widgets/curvedialog.h>
#include <varnellibwx/widgets/gridmappingdialog.h>
#include <varnellibwx/widgets/imagesavesettingsdialog.h>
#include <varnellibwx/windowcapture.h>
#include <varnellibwx/windowutils.h>

#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/filename.h>
#include <wx/modalhook.h>
#include <wx/timer.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <set>

namespace Varnel::Gallery {

namespace {

// Handles everything queued (layout, paint, idle) until the frame is on screen and the queues
// stay quiet, then lets GTK draw its own widgets (text entries draw on its frame clock, after
// wx's paint events), within deadlines so that a broken page cannot hang the run.
void settle(wxWindow& frame) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    int quietRounds = 0;
    while (std::chrono::steady_clock::now() < deadline && quietRounds < 3) {
        LibWx::processAllPendingEvents();
        const bool moreIdle = wxTheApp->ProcessIdle();
        frame.Update();
        quietRounds = frame.IsShownOnScreen() && !moreIdle ? quietRounds + 1 : 0;
    }
    Lib::waitForDrawnFrames(Wx::getWindowNativeHandle(&frame), 2, 1000);
}

/// Acts on the first modal dialog shown while it lives, from inside the dialog's own loop: once
/// the dialog has been on screen for a few ticks (so that it has painted), `act` runs on it (by
/// default: the dialog photographed into `path`) and the dialog is closed.
class DialogCapture : public wxModalDialogHook, public wxTimer {
public:
    explicit DialogCapture(wxString path) : m_path(std::move(path)) { Register(); }
    explicit DialogCapture(std::function<bool(wxDialog&)> act) : m_act(std::move(act)) {
        Register();
    }
    ~DialogCapture() override {
        Stop();
        Unregister();
    }
    bool saved() const { return m_saved; }

private:
    static constexpr int kTickMs = 50;
    static constexpr int kTicksShown = 4;
    static constexpr int kTicksAtMost = 100;

    int Enter(wxDialog* dialog) override {
        m_dialog = dialog;
        Start(kTickMs);
        return wxID_NONE;
    }
    void Exit(wxDialog*) override {
        Stop();
        m_dialog = nullptr;
    }
    void Notify() override {
        if (!m_dialog)
            return;
        ++m_ticks;
        m_shownTicks = m_dialog->IsShownOnScreen() ? m_shownTicks + 1 : 0;
        if (m_shownTicks < kTicksShown && m_ticks < kTicksAtMost)
            return;
        m_saved = m_act ? m_act(*m_dialog)
                        : Wx::captureWindow(*m_dialog).SaveFile(m_path, wxBITMAP_TYPE_PNG);
        m_dialog->Close();
    }

    wxString m_path;
    std::function<bool(wxDialog&)> m_act;
    wxDialog* m_dialog = nullptr;
    int m_ticks = 0;
    int m_shownTicks = 0;
    bool m_saved = false;
};

// The controls of `page` that lie outside it, where no scrolling reaches them: a page must grow
// (and scroll) to hold everything it lays out, at every scale.
int countCutOffControls(const wxWindow& page, const wxWindow& window) {
    int cutOff = 0;
    const wxRect area(page.GetSize());
    for (const wxWindow* child : window.GetChildren()) {
        if (!child->IsShown() || child->IsTopLevel())
            continue;
        const wxRect rect(page.ScreenToClient(child->GetScreenPosition()), child->GetSize());
        if (!area.Contains(rect)) {
            std::fprintf(stderr, "cut off: %s at (%d, %d) %d x %d on a page of %d x %d\n",
                         wxString(child->GetClassInfo()->GetClassName()).utf8_str().data(), rect.x,
                         rect.y, rect.width, rect.height, area.width, area.height);
            ++cutOff;
        }
        cutOff += countCutOffControls(page, *child);
    }
    return cutOff;
}

// One message dialog over the gallery, as a user meets it.
bool saveDialogScreenshot(GalleryFrame& frame, const wxString& path) {
    DialogCapture capture(path);
    Wx::showOkCancelDialog(Wx::getWindowNativeHandle(&frame), String(L"Vellum"),
                           String(L"The scene has unsaved changes.\n\nDiscard them and open "
                                  L"'atrium.vls'?"),
                           Wx::MessageDialogIcon::Warning);
    return capture.saved();
}

// The colour picker over the gallery, with alpha, as a swatch's click opens it.
bool savePickerScreenshot(GalleryFrame& frame, const wxString& path) {
    DialogCapture capture(path);
    Wx::ColorPicker picker(&frame, String(L"Color Selector: Diffuse"), wxDefaultPosition,
                           Rgb(0.8f, 0.35f, 0.1f, 1.f), Wx::ColorPicker::DialogType::Normal,
                           Wx::ColorPicker::ColorFormat::Rgba);
    picker.ShowModal();
    return capture.saved();
}

// The curve dialog over the gallery, as a host opens it.
class ScreenshotCurves : public Wx::ICurveDialogCallbacks {
public:
    Histogram getHistogram(std::pair<float, float>, CurveChannel, int bins) override {
        Stack<uint64> counts;
        for (int i = 0; i < bins; ++i)
            counts.push(static_cast<uint64>(1000 + 900 * std::sin(i * 0.05) + (i * 37) % 200));
        return Histogram(counts);
    }
    Optional<int> getHistogramRefreshInterval() override { return std::nullopt; }
    Optional<Rgb> getColorAt(Pixel) override { return std::nullopt; }
    void onCurveChanged(CurveChannel, const Curve&) override {}
    int getChangeNotificationDelay() override { return 0; }
    wxPoint getInitialPosition(wxWindow*) override { return {40, 40}; }
    void storePosition(wxPoint) override {}
    void onWindowOpened(wxWindow*) override {}
    void onWindowClosed(wxWindow*) override {}
};

// A modeless dialog over the gallery, once it is on screen and drawn; destroyed afterwards.
bool photographAndDestroy(GalleryFrame& frame, wxWindow* dialog, const wxString& path) {
    for (int round = 0; round < 50 && !dialog->IsShownOnScreen(); ++round)
        settle(frame);
    settle(frame);
    Lib::waitForDrawnFrames(Wx::getWindowNativeHandle(dialog), 2, 1000);
    const bool saved = Wx::captureWindow(*dialog).SaveFile(path, wxBITMAP_TYPE_PNG);
    dialog->Destroy();
    settle(frame);
    return saved;
}

bool saveCurveDialogScreenshot(GalleryFrame& frame, const wxString& path) {
    ColorCurve curves;
    curves[CurveChannel::Master].points() =
        Stack<CurvePoint>{{0.f, 0.f}, {0.3f, 0.22f}, {0.7f, 0.8f}, {1.f, 1.f}};
    return photographAndDestroy(frame,
                                new Wx::CurveDialog(&frame, Wx::GuiSkin(), String(L"Curves"),
                                                    curves, makeShared<ScreenshotCurves>()),
                                path);
}

// The save settings dialog as a file type of floats only offers it.
bool saveImageSaveSettingsScreenshot(GalleryFrame& frame, const wxString& path) {
    DialogCapture capture(path);
    Wx::showImageSaveSettingsDialog(&frame, {Wx::ImageColorFormat::LinearHalf, true},
                                    {{false, false, true, true}, true});
    return capture.saved();
}

// The grid mapping dialog over the gallery's height field.
bool saveGridMappingScreenshot(GalleryFrame& frame, const wxString& path) {
    return photographAndDestroy(frame, openHeightFieldMapping(&frame, {40, 40}), path);
}

// A window's own drawing of itself (not the screen: there may be none to read) holds more than
// a blank: at least three colours.
bool paintedSomething(const wxImage& drawn) {
    std::set<unsigned long> colours;
    if (drawn.IsOk()) {
        const unsigned char* p = drawn.GetData();
        const std::size_t count = std::size_t(drawn.GetWidth()) * std::size_t(drawn.GetHeight());
        for (std::size_t i = 0; i < count && colours.size() < 3; ++i, p += 3)
            colours.insert((unsigned long)p[0] << 16 | (unsigned long)p[1] << 8 | p[2]);
    }
    return colours.size() >= 3;
}

bool drawsItself(GalleryFrame& frame, wxWindow& window, const char* name) {
    // A window drawn before the toolkit has given it its size draws nothing: once it has shown
    // its first frames, it gets a few more rounds of the loop to settle.
    Lib::waitForDrawnFrames(Wx::getWindowNativeHandle(wxGetTopLevelParent(&window)), 2, 1000);
    bool painted = paintedSomething(Wx::drawWindow(window));
    for (int round = 0; round < 20 && !painted; ++round) {
        settle(frame);
        painted = paintedSomething(Wx::drawWindow(window));
    }
    std::printf("%s: %s\n", name, painted ? "painted" : "NOT PAINTED");
    return painted;
}

// Shows a top-level window, waits until it is on screen and settled, and checks its drawing.
bool showAndCheck(GalleryFrame& frame, wxTopLevelWindow& window, const char* name) {
    window.Show();
    for (int round = 0; round < 50 && !window.IsShownOnScreen(); ++round)
        settle(frame);
    settle(frame);
    return drawsItself(frame, window, name);
}

} // namespace

int checkPainting(GalleryFrame& frame) {
    int failures = 0;
    for (std::size_t index = 0; index < frame.pages().size(); ++index) {
        frame.showPage(static_cast<int>(index));
        settle(frame);
        failures +=
            !drawsItself(frame, *frame.page(), frame.pages()[index].fileName.utf8_str().data());
    }
    {
        Wx::ColorPicker picker(&frame, String(L"Color Selector: Check"), wxDefaultPosition,
                               Rgb(0.8f, 0.35f, 0.1f, 1.f), Wx::ColorPicker::DialogType::Normal,
                               Wx::ColorPicker::ColorFormat::Rgba);
        failures += !showAndCheck(frame, picker, "colour-picker-dialog");
        picker.Hide();
    }
    {
        Wx::ImageSaveSettingsDialog dialog(&frame, {});
        failures += !showAndCheck(frame, dialog, "image-save-settings-dialog");
        dialog.Hide();
    }
    auto* curves = new Wx::CurveDialog(&frame, Wx::GuiSkin(), String(L"Curves"), ColorCurve(),
                                       makeShared<ScreenshotCurves>());
    failures += !showAndCheck(frame, *curves, "curve-dialog");
    curves->Destroy();
    Wx::GridMappingDialog* mapping = openHeightFieldMapping(&frame, {40, 40});
    failures += !showAndCheck(frame, *mapping, "grid-mapping-dialog");
    mapping->Destroy();
    bool messagePainted = false;
    {
        DialogCapture check([&](wxDialog& dialog) {
            return messagePainted = drawsItself(frame, dialog, "message-dialog");
        });
        Wx::showOkDialog(Wx::getWindowNativeHandle(&frame), String(L"Vellum"),
                         String(L"A message dialog drawn for the check."),
                         Wx::MessageDialogIcon::Warning);
    }
    failures += !messagePainted;
    settle(frame);
    return failures;
}

int saveScreenshots(GalleryFrame& frame, const wxString& directory) {
    if (!wxFileName::Mkdir(directory, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL)) {
        std::fprintf(stderr, "cannot create %s\n", directory.utf8_str().data());
        return static_cast<int>(frame.pages().size());
    }
    int failures = 0;
    for (std::size_t index = 0; index < frame.pages().size(); ++index) {
        frame.showPage(static_cast<int>(index));
        settle(frame);
        if (frame.pages()[index].fileName == "image-tools") {
            showProbeAtFixedPixel(frame.page());
            settle(frame);
        }
        failures += countCutOffControls(*frame.page(), *frame.page());
        const wxString path =
            wxFileName(directory, frame.pages()[index].fileName, "png").GetFullPath();
        if (Wx::captureWindow(frame).SaveFile(path, wxBITMAP_TYPE_PNG)) {
            std::printf("%s\n", path.utf8_str().data());
        } else {
            std::fprintf(stderr, "cannot write %s\n", path.utf8_str().data());
            ++failures;
        }
    }
    const std::pair<const char*, bool (*)(GalleryFrame&, const wxString&)> dialogs[] = {
        {"message-dialog", &saveDialogScreenshot},
        {"colour-picker-dialog", &savePickerScreenshot},
        {"curve-dialog", &saveCurveDialogScreenshot},
        {"grid-mapping-dialog", &saveGridMappingScreenshot},
        {"image-save-settings-dialog", &saveImageSaveSettingsScreenshot},
    };
    for (const auto& [name, save] : dialogs) {
        const wxString dialogPath = wxFileName(directory, name, "png").GetFullPath();
        if (save(frame, dialogPath)) {
            std::printf("%s\n", dialogPath.utf8_str().data());
        } else {
            std::fprintf(stderr, "cannot write %s\n", dialogPath.utf8_str().data());
            ++failures;
        }
    }
    return failures;
}

} // namespace Varnel::Gallery
