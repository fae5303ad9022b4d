#pragma once

#include <varnellib/base/string.h>
#include <varnellib/export.h>
#include <varnellib/native/windowhandle.h>

#include <string_view>
#include <vector>

namespace Varnel::Lib {

/// The width in pixels of every prefix of `text` in `widget`'s context with the font
/// `fontDescription` (a Pango font description, as wxFont::GetNativeFontInfoDesc gives it): entry
/// i is the width of characters 0 to i. Each distinct space-separated word (and the space) is
/// shaped once and the widths add up along the text: estimates of the one-line layout that differ
/// from it only by kerning across spaces and by rounding. The characters of one glyph cluster (a
/// ligature such as "ffi") all end where the cluster ends, so the widths stay in step with the
/// characters, as the toolkit's partial extents do not across ligatures. An empty widget or text,
/// or text that runs right to left, gives no widths.
VARNEL_LIB_EXPORT std::vector<int>
measureTextPrefixes(WindowHandle widget, const String& fontDescription, std::wstring_view text);

} // namespace Varnel::Lib
