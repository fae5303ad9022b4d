// varnel-viewer: an image viewer for linear, high-dynamic-range images, built on the library's
// widgets and dialogs the way a host application uses them.
//   varnel-viewer [IMAGE]                 opens IMAGE, or shows a rendered test scene
//   varnel-viewer --screenshot FILE       writes a picture of the window with the curve dialog
//                                         open over the test scene, and exits
#include "viewerframe.h"

#include <varnellib/native/process.h>
#include <varnellibwx/varnellibwx.h>
#include <varnellibwx/windowcapture.h>
#include <varnellibwx/windowutils.h>

#include <wx/app.h>

#include <cstdio>
#include <cstring>
#include <string>

int main(int argc, char** argv) {
    std::string image, screenshot;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--screenshot") == 0 && i + 1 < argc)
            screenshot = argv[++i];
        else if (argv[i][0] != '-' && image.empty())
            image = argv[i];
        else {
            std::fprintf(stderr, "usage: %s [IMAGE] [--screenshot FILE]\n", argv[0]);
            return 2;
        }
    }
    using namespace Varnel;
    LibWx::startup(LibWx::ApplicationType::Default);
    if (!wxTheApp) {
        std::fprintf(stderr, "varnel-viewer: wxWidgets could not start (no X display?)\n");
        LibWx::shutdown();
        return 1;
    }
    auto* frame = new Viewer::ViewerFrame(image);
    frame->Show();
    int result = 0;
    if (!screenshot.empty()) {
        Lib::setNativeAnimations(false);
        wxTheApp->CallAfter([&] {
            Wx::CurveDialog* dialog = frame->openCurveDialog();
            // Wait until both windows are on screen and drawn, within a deadline.
            for (int round = 0; round < 200 && !dialog->IsShownOnScreen(); ++round)
                LibWx::processAllPendingEvents();
            for (int round = 0; round < 20; ++round) {
                LibWx::processAllPendingEvents();
                wxTheApp->ProcessIdle();
            }
            Lib::waitForDrawnFrames(Wx::getWindowNativeHandle(dialog), 2, 1000);
            Lib::waitForDrawnFrames(Wx::getWindowNativeHandle(frame), 2, 1000);
            result = Wx::captureWindow(*frame).SaveFile(wxString::FromUTF8(screenshot),
                                                        wxBITMAP_TYPE_PNG)
                         ? 0
                         : 1;
            frame->Destroy();
            LibWx::stopEventLoop();
        });
    }
    LibWx::runEventLoop();
    LibWx::shutdown();
    return result;
}
