// varnel-gallery: a host program that shows every widget of the library on a page of its own.
//   varnel-gallery                    opens the gallery window
//   varnel-gallery --screenshots DIR  writes DIR/<page>.png for every page and exits
#include "galleryframe.h"
#include "screenshots.h"

#include <varnellibwx/varnellibwx.h>

#include <wx/app.h>

#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    const char* screenshotDir = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--screenshots") == 0 && i + 1 < argc) {
            screenshotDir = argv[++i];
        } else {
            std::fprintf(stderr, "usage: %s [--screenshots DIR]\n", argv[0]);
            return 2;
        }
    }

    using namespace Varnel;
    LibWx::startup(LibWx::ApplicationType::Default);
    if (!wxTheApp) {
        std::fprintf(stderr, "varnel-gallery: wxWidgets could not start (no X display?)\n");
        LibWx::shutdown();
        return 1;
    }

    auto* frame = new Gallery::GalleryFrame(Gallery::galleryPages());
    frame->Show();
    int result = 0;
    if (screenshotDir) {
        wxTheApp->CallAfter([&] {
            result =
                Gallery::saveScreenshots(*frame, wxString::FromUTF8(screenshotDir)) == 0 ? 0 : 1;
            frame->Destroy();
            LibWx::stopEventLoop();
        });
    }
    LibWx::runEventLoop();
    LibWx::shutdown();
    return result;
}
