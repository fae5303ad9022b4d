#include "buttonspage.h"
#include "gallerypage.h"
#include "librarypage.h"
#include "textpage.h"

namespace Varnel::Gallery {

std::vector<GalleryPage> galleryPages() {
    return {
        {"Library", "library", &createLibraryPage},
        {"Buttons and lines", "buttons-and-lines", &createButtonsPage},
        {"Text and check boxes", "text-and-check-boxes", &createTextPage},
    };
}

} // namespace Varnel::Gallery
