#include <varnellibwx/guiskin.h>

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
    for (wxWindow* child : window->GetChildren())
        applySkinRecursive(child, skin);
}

} // namespace Varnel::Wx
