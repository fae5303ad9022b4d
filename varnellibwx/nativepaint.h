#pragma once

#include <varnellib/base/function.h>
#include <varnellibwx/export.h>

class wxDC;
class wxWindow;

namespace Varnel::Wx {

/// Makes `window` (a native control that sends no paint events) draw itself through `paint`
/// whenever `when()` holds, and natively otherwise. `paint` gets a device context covering the
/// window's area, origin at its top-left corner.
VARNEL_LIBWX_EXPORT void paintNativeControl(wxWindow* window, Function<bool()> when,
                                            Function<void(wxDC&, int width, int height)> paint);

} // namespace Varnel::Wx
