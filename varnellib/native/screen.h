#pragma once

#include <varnellib/base/stack.h>
#include <varnellib/color/color.h>
#include <varnellib/export.h>
#include <varnellib/image/bitmap.h>
#include <varnellib/native/windowhandle.h>

namespace Varnel {

/// The rectangle a window covers on the screen, in screen pixels (empty for an empty handle or
/// a window that is not realised).
VARNEL_LIB_EXPORT Bucket getScreenRegion(WindowHandle window);

/// Whether this program may read the screen: true on an X display of its own; a Wayland
/// compositor lets no program read it (the desktop portal picks colours instead: colorportal.h).
/// An X display inside a Wayland session (XWayland, where a host forced GTK's X11 backend) is
/// not readable either: its root window shows the session's own windows as black.
VARNEL_LIB_EXPORT bool isScreenReadable();

/// An X display inside a Wayland session: WAYLAND_DISPLAY is set (and not empty) beside it.
VARNEL_LIB_EXPORT bool isXWaylandSession();

/// The device pixels one logical pixel of the screen spans each way: GTK's integer window scale
/// (GDK_SCALE, the desktop's 200 %), 1 on a plain desktop and where the screen cannot be read.
/// Asked anew on every call: a setting changed while the program runs is followed.
VARNEL_LIB_EXPORT int screenScale();

/// The screen's pixels inside `region` (logical pixels, as every coordinate of the library), taken
/// in one capture, as linear colours: each 8-bit channel is decoded with the sRGB transfer curve
/// of IEC 61966-2-1 (linear below 0.04045, a 2.4 power above), alpha 1. At a screen scale s, a
/// logical pixel is the mean of the s x s device pixels under it (so over a flat area exactly that
/// area's colour, over an edge their mix). Pixels of the region that lie on no monitor come back as
/// (0, 0, 0, 0), and one partly on a monitor has the shown share as its alpha, the colour
/// weighted alike, so an alpha-weighted average ignores what no monitor shows. Row 0 is the top
/// row. Where the screen cannot be read (isScreenReadable), or the X server refuses the read (a
/// screen resized under it), the answer is an empty bitmap: not available, never black.
VARNEL_LIB_EXPORT BitmapImpl<Rgb> getScreenRegionColors(const Bucket& region);

/// The screen's device pixels under `region` (logical pixels) as 8-bit red, green and blue, row by
/// row from the top, read straight from the X server (never from a cached copy): at a screen scale
/// s, s * width by s * height of them. Pixels on no monitor are black. Empty where the screen
/// cannot be read or the read is refused.
VARNEL_LIB_EXPORT Stack<RgbBytes> getScreenRegionBytes(const Bucket& region);

/// What a widget draws of itself, by its own drawing code into an image of its size (never read
/// from the screen, so it works on every display, hidden windows excepted): row by row from the
/// top, `width` and `height` set to the size. Empty for an empty handle or an unrealised widget.
VARNEL_LIB_EXPORT Stack<RgbBytes> drawWidget(WindowHandle window, int& width, int& height);

/// The sRGB decoding used above, for one 8-bit value.
VARNEL_LIB_EXPORT float srgbByteToLinear(uint8 value);
/// The same decoding for an encoded value in [0, 1] (the desktop portal's colours are such).
VARNEL_LIB_EXPORT float srgbToLinear(float encoded);

} // namespace Varnel
