#include "buttonspage.h"
#include "gallerypage.h"
#include "librarypage.h"

namespace Varnel::Gallery {

std::vector<GalleryPage> galleryPages() {
    return {
        {"Library", "library", &createLibraryPage},
        {"Buttons and lines", "buttons-and-lines", &createButtonsPage},
    };
}

} // namespace Varnel::Gallery
