#pragma once

#include <wx/gdicmn.h>

class wxWindow;

namespace Varnel::Wx {
class GridMappingDialog;
}

namespace Varnel::Gallery {

/// A gradient control over a few colours with a log of its reports, and a false-colour view of a
/// generated height field with a button that opens the grid mapping dialog on it: the view and
/// the dialog's preview follow every change.
wxWindow* createGradientsPage(wxWindow* parent);

/// A grid mapping dialog over the page's height field at `position`, with a host that only
/// computes (for the screenshots).
Wx::GridMappingDialog* openHeightFieldMapping(wxWindow* parent, wxPoint position);

} // namespace Varnel::Gallery
