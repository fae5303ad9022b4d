#pragma once

#include <varnellib/base/flags.h>
#include <varnellib/base/types.h>
#include <varnellibwx/export.h>

#include <wx/font.h>

namespace Varnel::Wx {

/// The library's standard text height, in device-independent pixels.
inline constexpr int kStandardTextHeight = 12;

enum class TextFlag : uint32 { Bold = 1, Italic = 2 };

/// The font at the standard height times `factor` (truncated), scaled by DPI. Owner-drawn
/// controls call it with 1.0 before they draw text.
VARNEL_LIBWX_EXPORT wxFont setDefaultFontSize(wxFont font, float factor);

/// The font at the standard height, plain, then bold and italic as the flags say.
VARNEL_LIBWX_EXPORT wxFont setupStaticTextFont(wxFont font, Flags<TextFlag> flags);

} // namespace Varnel::Wx
