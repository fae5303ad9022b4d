#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/textbutton.h>

#include <wx/window.h>

namespace Varnel {

ISkinnable::~ISkinnable() = default;

} // namespace Varnel

namespace Varnel::Wx {

void applySkinRecursive(wxWindow* window, const GuiSkin& skin) {
    if (!window)
        return;
    window->SetBackgroundColour(toWxColour(skin.background));
    window->SetForegroundColour(toWxColour(skin.text));
    if (auto* link = dynamic_cast<TextButton*>(window)) {
        link->setNormalColour(toWxColour(skin.link));
        link->setHoverColour(toWxColour(skin.link));
    }
    for (wxWindow* child : window->GetChildren())
        applySkinRecursive(child, skin);
}

} // namespace Varnel::Wx
