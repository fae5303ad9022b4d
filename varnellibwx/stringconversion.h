#pragma once

#include <varnellib/base/string.h>

#include <wx/string.h>

namespace Varnel::Wx {

/// Both sides hold wchar_t, so these conversions are a copy without decoding.
inline String toVarnelString(const wxString& text) {
    return String(text.wc_str(), static_cast<int>(text.length()));
}

inline wxString toWxString(const String& text) {
    return wxString(text.asWchar(), static_cast<std::size_t>(text.length()));
}

} // namespace Varnel::Wx
