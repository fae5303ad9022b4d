#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>

namespace Varnel::Wx {

wxFont setDefaultFontSize(wxFont font, float factor) {
    font.SetPixelSize(wxSize(0, static_cast<int>(scaleByDpi(kStandardTextHeight) * factor)));
    return font;
}

wxFont setupStaticTextFont(wxFont font, Flags<TextFlag> flags) {
    font.SetPixelSize(wxSize(0, scaleByDpi(kStandardTextHeight)));
    font = font.GetBaseFont();
    if (flags.has(TextFlag::Bold))
        font.MakeBold();
    if (flags.has(TextFlag::Italic))
        font.MakeItalic();
    return font;
}

} // namespace Varnel::Wx
