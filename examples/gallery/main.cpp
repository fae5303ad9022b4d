// varnel-gallery: a host program that shows every widget of the library on a page of its own.
//   varnel-gallery                    opens the gallery window
//   varnel-gallery --screenshots DIR  writes DIR/<page>.png for every page and exits
//   varnel-gallery --paint-check      shows every page and dialog, checks that each draws itself
//                                     (on any display, Wayland included) and exits
//   varnel-gallery --scale 2 ...      draws the library's widgets at twice their size, as on a
//                                     HiDPI display (GTK itself reports a scale of 1 here)
#include "galleryframe.h"
#include "screenshots.h"

#include <varnellib/native/process.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/varnellibwx.h>

#include <wx/app.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argc, char** argv) {
    const char* screenshotDir = nullptr;
    bool paintCheck = false;
    double scale = 0;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--screenshots") == 0 && i + 1 < argc) {
            screenshotDir = argv[++i];
        } else if (std::strcmp(argv[i], "--paint-check") == 0) {
            paintCheck = true;
        } else if (std::strcmp(argv[i], "--scale") == 0 && i + 1 < argc &&
                   (scale = std::atof(argv[++i])) >= 1) {
        } else {
            std::fprintf(stderr, "usage: %s [--scale FACTOR] [--screenshots DIR | --paint-check]\n",
                         argv[0]);
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

    if (scale >= 1)
        Wx::Detail::setDpiScaleOverride(scale);
    auto* frame = new Gallery::GalleryFrame(Gallery::galleryPages());
    frame->Show();
    int result = 0;
    if (screenshotDir) {
        // Pictures of the final look, not of the theme's colour transitions half way.
        Lib::setNativeAnimations(false);
        wxTheApp->CallAfter([&] {
            result =
                Gallery::saveScreenshots(*frame, wxString::FromUTF8(screenshotDir)) == 0 ? 0 : 1;
            frame->Destroy();
            LibWx::stopEventLoop();
        });
    }
    if (paintCheck) {
        Lib::setNativeAnimations(false);
        wxTheApp->CallAfter([&] {
            result = Gallery::checkPainting(*frame) == 0 ? 0 : 1;
            frame->Destroy();
            LibWx::stopEventLoop();
        });
    }
    LibWx::runEventLoop();
    LibWx::shutdown();
    return result;
}
