#include "screenshots.h"
#include "galleryframe.h"

#include <varnellibwx/varnellibwx.h>
#include <varnellibwx/windowcapture.h>

#include <wx/app.h>
#include <wx/filename.h>

#include <chrono>
#include <cstdio>

namespace Varnel::Gallery {

namespace {

// Handles everything queued (layout, paint, idle) until the frame is on screen and the queues
// stay quiet, within a deadline so that a broken page cannot hang the run.
void settle(wxWindow& frame) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    int quietRounds = 0;
    while (std::chrono::steady_clock::now() < deadline && quietRounds < 3) {
        LibWx::processAllPendingEvents();
        const bool moreIdle = wxTheApp->ProcessIdle();
        frame.Update();
        quietRounds = frame.IsShownOnScreen() && !moreIdle ? quietRounds + 1 : 0;
    }
}

} // namespace

int saveScreenshots(GalleryFrame& frame, const wxString& directory) {
    if (!wxFileName::Mkdir(directory, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL)) {
        std::fprintf(stderr, "cannot create %s\n", directory.utf8_str().data());
        return static_cast<int>(frame.pages().size());
    }
    int failures = 0;
    for (std::size_t index = 0; index < frame.pages().size(); ++index) {
        frame.showPage(static_cast<int>(index));
        settle(frame);
        const wxString path =
            wxFileName(directory, frame.pages()[index].fileName, "png").GetFullPath();
        if (Wx::captureWindow(frame).SaveFile(path, wxBITMAP_TYPE_PNG)) {
            std::printf("%s\n", path.utf8_str().data());
        } else {
            std::fprintf(stderr, "cannot write %s\n", path.utf8_str().data());
            ++failures;
        }
    }
    return failures;
}

} // namespace Varnel::Gallery
