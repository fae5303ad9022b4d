#include <varnellibwx/guiskin.h>

#include <wx/generic/stattextg.h>
#include <wx/panel.h>
#include <wx/window.h>

namespace Varnel {

ISkinnable::~ISkinnable() = default;

} // namespace Varnel

namespace Varnel::Wx {

namespace {

// Panels and self-drawn labels keep both colours for their own painting and change nothing else
// when given them. On GTK each colour given to a window rebuilds and parses the window's style
// sheet, which holds both colours: for these the text colour is stored first and the style built
// once, with the background. (Other windows, native controls among them, may do more with a
// colour and are given both the usual way.)
bool takesBothColoursInOneStyle(wxWindow* window, const wxColour& background) {
    return (dynamic_cast<wxPanel*>(window) || dynamic_cast<wxGenericStaticText*>(window)) &&
           window->GetBackgroundColour() != background;
}

} // namespace

void applySkinRecursive(wxWindow* window, const GuiSkin& skin) {
    if (!window)
        return;
    const wxColour background = toWxColour(skin.background), text = toWxColour(skin.text);
    if (takesBothColoursInOneStyle(window, background)) {
        window->wxWindowBase::SetForegroundColour(text);
        window->SetBackgroundColour(background);
    } else {
        window->SetBackgroundColour(background);
        window->SetForegroundColour(text);
    }
    // Widgets with colours of their own beyond these two (a link's) take the whole skin.
    if (auto* skinnable = dynamic_cast<ISkinnable*>(window))
        skinnable->setSkin(skin);
    for (wxWindow* child : window->GetChildren())
        applySkinRecursive(child, skin);
}

} // namespace Varnel::Wx
