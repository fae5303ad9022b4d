#include "buttonspage.h"
#include "choicespage.h"
#include "curvepanelpage.h"
#include "gallerypage.h"
#include "librarypage.h"
#include "spinnerspage.h"
#include "textpage.h"

namespace Varnel::Gallery {

std::vector<GalleryPage> galleryPages() {
    return {
        {"Library", "library", &createLibraryPage},
        {"Buttons and lines", "buttons-and-lines", &createButtonsPage},
        {"Text and dialogs", "text-and-dialogs", &createTextPage},
        {"Spinners", "spinners", &createSpinnersPage},
        {"Choices", "choices", &createChoicesPage},
        {"Curve panel", "curve-panel", &createCurvePanelPage},
    };
}

} // namespace Varnel::Gallery
