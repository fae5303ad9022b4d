#pragma once

#include <varnellib/native/windowhandle.h>
#include <varnellibwx/export.h>

#include <wx/bitmap.h>
#include <wx/gdicmn.h>

namespace Varnel::Wx {

// Every pixel constant of the library is in device-independent pixels at 96 DPI and goes
// through scaleByDpi. The scale comes from wxWindow::FromDIP without a window, and the result is
// truncated toward zero (so 1 pixel at 150 % stays 1, and bitmaps scale only by whole factors).
// On GTK3 the toolkit scales logical pixels itself and the factor is 1.

VARNEL_LIBWX_EXPORT int scaleByDpi(int value);
/// A component of -1 (wxWidgets' "default") stays -1.
VARNEL_LIBWX_EXPORT wxSize scaleByDpi(wxSize size);
VARNEL_LIBWX_EXPORT Pixel scaleByDpi(Pixel point);
/// Enlarged by the whole factor scaleByDpi(1) when that is above 1; otherwise a copy.
VARNEL_LIBWX_EXPORT wxBitmap scaleByDpi(const wxBitmap& bitmap);

namespace Detail {

/// Replaces the display's scale (tests reach the HiDPI paths through it); 0 restores it.
VARNEL_LIBWX_EXPORT void setDpiScaleOverride(double scale);

} // namespace Detail
} // namespace Varnel::Wx
