#pragma once

#include <varnellib/base/flags.h>
#include <varnellib/base/types.h>
#include <varnellibwx/export.h>

#include <wx/font.h>

namespace Varnel::Wx {

/// The library's standard text height, in device-independent pixels.
inline constexpr int kStandardTextHeight = 12;

enum class TextFlag : uint32 { Bold = 1, Italic = 2 };

/// The library's text keeps its pixel size whatever the desktop's text scale (a font DPI other
/// than 96, GDK_DPI_SCALE): its controls are laid out around it. A host that wants the library's
/// text to follow the desktop's text scale sets this factor (getFontScale() for the desktop's
/// own, or any factor above 0; 1.0 by default, and anything else is ignored); fonts made after
/// the call take it.
VARNEL_LIBWX_EXPORT void setFontFactor(double factor);
VARNEL_LIBWX_EXPORT double fontFactor();

/// The font at the standard height times `factor` (truncated), scaled by DPI. Owner-drawn
/// controls call it with 1.0 before they draw text.
VARNEL_LIBWX_EXPORT wxFont setDefaultFontSize(wxFont font, float factor);

/// The font at the standard height, plain, then bold and italic as the flags say.
VARNEL_LIBWX_EXPORT wxFont setupStaticTextFont(wxFont font, Flags<TextFlag> flags);

} // namespace Varnel::Wx
