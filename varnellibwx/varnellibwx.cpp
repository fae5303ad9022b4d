#include <varnellibwx/stringconversion.h>
#include <varnellibwx/varnellibwx.h>

#include <varnellib/base/serializer.h>
#include <varnellib/base/stopexception.h>
#include <varnellib/native/process.h>

#include <wx/app.h>
#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/socket.h>
#include <wx/timer.h>

#include <atomic>
#include <memory>

namespace Varnel {

namespace {

/// The application object the library makes when the host has none. It is wxWidgets' own wxApp
/// in every respect; wxUninitialize deletes it.
class VarnelApp : public wxApp {
public:
    ~VarnelApp() override = default;
};

} // namespace

/// Keeps wxWidgets' idle-time work (idle events, pending window deletions, update-UI events)
/// going while a host runs its own message loop: every tick runs the current application's idle
/// processing, whoever's application that is.
class ProcessEventsTimer : public wxTimer {
public:
    ProcessEventsTimer() { SetOwner(this, wxID_ANY); }
    ~ProcessEventsTimer() override = default;

    void Notify() override {
        if (wxAppConsole* app = wxAppConsole::GetInstance())
            app->ProcessIdle();
    }
};

} // namespace Varnel

namespace Varnel::LibWx {

namespace {

constexpr int kIdleProcessingPeriodMs = 2000;
// Where a bad ApplicationType is reported: hosts match on this source position.
constexpr const char* kLifecycleSource = "varnellibwx";
constexpr int kBadApplicationTypeLine = 121;

std::atomic<int32> gStartCount{0};
std::unique_ptr<ProcessEventsTimer> gEventsTimer;

wxAppConsole* application() {
    return wxAppConsole::GetInstance();
}

void registerImageHandlers() {
    wxImage::AddHandler(new wxPNGHandler);
    wxImage::AddHandler(new wxJPEGHandler);
    wxImage::AddHandler(new wxICOHandler);
    wxImage::AddHandler(new wxBMPHandler);
    wxImage::AddHandler(new wxGIFHandler);
    wxImage::AddHandler(new wxTIFFHandler);
    wxImage::AddHandler(new wxTGAHandler);
}

} // namespace

const char* version() {
    return VARNEL_VERSION_STRING;
}

bool startup(ApplicationType type) {
    if (gStartCount.fetch_add(1) != 0)
        return true;

    wxLog::EnableLogging(false);
    if (!application())
        wxApp::SetInstance(new VarnelApp);
    registerImageHandlers();
    wxInitialize();
    wxSocketBase::Initialize();

    switch (type) {
    case ApplicationType::Default:
    case ApplicationType::Secondary:
        // Without a display wxWidgets cannot initialise and drops the application object; the
        // library then stays counted but inert.
        if (wxAppConsole* app = application())
            app->CallOnInit();
        break;
    case ApplicationType::NoInit:
        break;
    default:
        Varnel::Detail::throwStopException(kLifecycleSource, kBadApplicationTypeLine);
    }

    if (application()) {
        gEventsTimer = std::make_unique<ProcessEventsTimer>();
        gEventsTimer->Start(kIdleProcessingPeriodMs, wxTIMER_CONTINUOUS);
    }
    return true;
}

void shutdown() {
    if (gStartCount.fetch_sub(1) != 1)
        return;

    if (gEventsTimer) {
        gEventsTimer->Stop();
        gEventsTimer.reset();
    }
    if (wxAppConsole* app = application()) {
        app->ProcessIdle();
        app->OnExit();
        app->ExitMainLoop();
    }
    wxSocketBase::Shutdown();
    wxUninitialize();
}

int runEventLoop() {
    wxAppConsole* app = application();
    return app ? app->OnRun() : 0;
}

void stopEventLoop() {
    if (wxAppConsole* app = application())
        app->ExitMainLoop();
}

void processWxWidgetsPendingEvents() {
    if (wxAppConsole* app = application())
        app->ProcessPendingEvents();
}

void processAllPendingEvents() {
    processWxWidgetsPendingEvents();
    while (Lib::runSingleEventLoopIteration(true)) {
    }
}

namespace Detail {

int startCount() {
    return gStartCount.load();
}

wxTimer* eventsTimer() {
    return gEventsTimer.get();
}

} // namespace Detail
} // namespace Varnel::LibWx

namespace Varnel::Wx {

namespace {

// The fixed pieces of the assertion text go through the core serializer, so that the text is
// built the same way as every other text the renderer's tools write.
String serialized(const char* literal) {
    SimpleTextSerializer serializer(L" ", SimpleTextSerializer::VariableNames::Plain);
    serializer.serialize(literal);
    return serializer.getResult();
}

String serialized(int32 number) {
    SimpleTextSerializer serializer(L" ", SimpleTextSerializer::VariableNames::Plain);
    serializer.serialize(nullptr, number);
    return serializer.getResult();
}

} // namespace

Optional<String> formatWxAssertFailure(const wxString& file, int line, const wxString& function,
                                       const wxString& condition, const wxString& message) {
    // wxLocale::GetInfo asserts whenever the C library's locale is not "C"; it is harmless.
    if (function == "wxLocale::GetInfo" && condition == "strcmp(setlocale(0, 0), \"C\") == 0")
        return {};

    String text = serialized("An internal error occurred: wxWidgets assertion failure. Please, "
                             "report this problem to us.\n");
    text += serialized("File: ");
    text += toVarnelString(file);
    text += serialized("(");
    text += serialized(static_cast<int32>(line));
    text += serialized(")\n");
    text += serialized("Function: ");
    text += toVarnelString(function);
    text += serialized("\n");
    text += serialized("Condition: ");
    text += toVarnelString(condition);
    text += serialized("\n");
    text += serialized("Message: ");
    text += toVarnelString(message);
    return text;
}

} // namespace Varnel::Wx
