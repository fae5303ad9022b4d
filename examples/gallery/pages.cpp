#include "buttonspage.h"
#include "choicespage.h"
#include "colorcontrolspage.h"
#include "colorpickerpage.h"
#include "curvepanelpage.h"
#include "gallerypage.h"
#include "gradientspage.h"
#include "imagetoolspage.h"
#include "librarypage.h"
#include "spinnerspage.h"
#include "textpage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>

#include <wx/sizer.h>
#include <wx/window.h>

namespace Varnel::Gallery {

wxWindow* finishPage(wxWindow* page, wxSizer* content) {
    auto* outer = new wxBoxSizer(wxVERTICAL);
    outer->Add(content, 1, wxEXPAND | wxALL, Wx::scaleByDpi(kMargin));
    page->SetSizer(outer);
    Wx::applySkinRecursive(page, Wx::GuiSkin());
    return page;
}

std::vector<GalleryPage> galleryPages() {
    return {
        {"Library", "library", &createLibraryPage},
        {"Buttons and lines", "buttons-and-lines", &createButtonsPage},
        {"Text and dialogs", "text-and-dialogs", &createTextPage},
        {"Spinners", "spinners", &createSpinnersPage},
        {"Choices", "choices", &createChoicesPage},
        {"Curve panel", "curve-panel", &createCurvePanelPage},
        {"Colour controls", "colour-controls", &createColorControlsPage},
        {"Colour picker", "colour-picker", &createColorPickerPage},
        {"Gradients", "gradients", &createGradientsPage},
        {"Image tools", "image-tools", &createImageToolsPage},
    };
}

} // namespace Varnel::Gallery
