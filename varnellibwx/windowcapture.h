#pragma once

#include <varnellibwx/export.h>

#include <wx/gdicmn.h>
#include <wx/image.h>

class wxWindow;

namespace Varnel::Wx {

/// The pixels inside a rectangle of the screen (logical pixels), as the display shows them now
/// (whatever window is on top): its device pixels, so at a screen scale s (screenScale) the
/// picture is s times the rectangle's size each way. Parts outside the screen read as black. An
/// invalid image where the screen cannot be read (a Wayland display).
VARNEL_LIBWX_EXPORT wxImage captureScreenRect(const wxRect& screenRect);

/// What a window shows on screen, over its whole rectangle (a frame with its menu bar and
/// borders drawn by the toolkit), in device pixels as captureScreenRect.
VARNEL_LIBWX_EXPORT wxImage captureWindow(const wxWindow& window);

/// What a window draws of itself and its children, through their own drawing into an image of
/// its size (not read from the screen: it works on every display). Invalid for a window that is
/// not realised.
VARNEL_LIBWX_EXPORT wxImage drawWindow(wxWindow& window);

} // namespace Varnel::Wx
