#pragma once

#include <varnellib/base/function.h>
#include <varnellib/color/color.h>
#include <varnellib/export.h>
#include <varnellib/native/windowhandle.h>

namespace Varnel {

/// Lets code draw a native widget itself. `draw(context, width, height)` is called whenever the
/// toolkit draws the widget, with the toolkit's drawing context (a cairo_t*) set up for the
/// widget's own area, and returns true when it drew everything (the toolkit's drawing is then
/// skipped) or false to let the toolkit draw as usual. The hook lives as long as the widget.
/// Native controls such as check boxes and text entries send no paint events of their own, so
/// this is how they take the library's look.
VARNEL_LIB_EXPORT void setDrawHook(WindowHandle widget,
                                   Function<bool(void* context, int width, int height)> draw);

/// Lets a widget drawn through setDrawHook be smaller than the toolkit's own drawing of it would
/// need (a check box of the library's 15 pixels, say), by lifting the theme's minimum sizes,
/// margins and padding from the widget and its parts.
VARNEL_LIB_EXPORT void relaxNativeMinimumSize(WindowHandle widget);

/// Replaces the theme's rounded frame of a native text entry by a square one in the library's
/// colours: one pixel of `outer` around it and one of `inner` inside that, `focusedInner` while
/// the entry has the keyboard focus. The entry's own background and text colours are untouched.
VARNEL_LIB_EXPORT void setNativeEntryFrame(WindowHandle entry, RgbBytes outer, RgbBytes inner,
                                           RgbBytes focusedInner);

} // namespace Varnel
