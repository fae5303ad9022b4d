#include "gallerypage.h"
#include "librarypage.h"

namespace Varnel::Gallery {

std::vector<GalleryPage> galleryPages() {
    return {
        {"Library", "library", &createLibraryPage},
    };
}

} // namespace Varnel::Gallery
