#pragma once

#include <varnellib/color/color.h>
#include <varnellibwx/export.h>

#include <wx/colour.h>

class wxWindow;

namespace Varnel::Wx {

/// The colours of the library's look, eight in a fixed order. A default GuiSkin is the dark
/// theme. Widgets take it by reference and keep a copy.
struct GuiSkin {
    RgbBytes text{200, 200, 200};
    RgbBytes disabledText{110, 110, 110};
    RgbBytes background{68, 68, 68};
    RgbBytes darkBackground{37, 37, 37};
    RgbBytes toggledText{0, 0, 0};
    RgbBytes toggledBackground{39, 147, 255};
    RgbBytes pressedBackground{0, 73, 112};
    RgbBytes link{81, 167, 241};

    bool operator==(const GuiSkin&) const = default;
};
static_assert(sizeof(GuiSkin) == 24, "eight colours of three bytes, without gaps");

/// An opaque wxColour of skin colour.
inline wxColour toWxColour(RgbBytes colour) {
    return wxColour(colour.r, colour.g, colour.b);
}

/// Gives `window` and every window below it, parent before children, the skin's background and
/// text colours, and text buttons the link colour for their normal and hover states.
VARNEL_LIBWX_EXPORT void applySkinRecursive(wxWindow* window, const GuiSkin& skin);

} // namespace Varnel::Wx

namespace Varnel {

/// A widget that can take a whole skin after it was made.
class VARNEL_LIBWX_EXPORT ISkinnable {
public:
    virtual ~ISkinnable();
    virtual void setSkin(const Wx::GuiSkin& skin) = 0;
};

} // namespace Varnel

namespace Varnel::Wx {

/// A wxWidgets control `T` that keeps a skin and takes a new one through ISkinnable.
template <class T>
class SkinnableMixin : public T, public ISkinnable {
public:
    using T::T;

    void setSkin(const GuiSkin& skin) override {
        m_skin = skin;
        this->SetBackgroundColour(toWxColour(skin.background));
        this->SetForegroundColour(toWxColour(skin.text));
        this->Refresh();
    }
    const GuiSkin& skin() const { return m_skin; }

protected:
    GuiSkin m_skin;
};

} // namespace Varnel::Wx
