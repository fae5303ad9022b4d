#pragma once

#include <varnellibwx/export.h>

#include <wx/gdicmn.h>
#include <wx/image.h>

class wxWindow;

namespace Varnel::Wx {

/// The pixels inside a rectangle of the screen, as the display shows them now (whatever window
/// is on top). Parts outside the screen read as black.
VARNEL_LIBWX_EXPORT wxImage captureScreenRect(const wxRect& screenRect);

/// What a window shows on screen, over its whole rectangle (a frame with its menu bar and
/// borders drawn by the toolkit).
VARNEL_LIBWX_EXPORT wxImage captureWindow(const wxWindow& window);

} // namespace Varnel::Wx
