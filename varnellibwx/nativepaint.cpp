#include <varnellibwx/nativepaint.h>

#include <varnellib/native/drawhook.h>

#include <wx/defs.h> // dcgraph.h reads wxUSE_GRAPHICS_CONTEXT before including anything

#include <wx/dcgraph.h>
#include <wx/graphics.h>
#include <wx/window.h>

namespace Varnel::Wx {

void paintNativeControl(wxWindow* window, Function<bool()> when,
                        Function<void(wxDC&, int width, int height)> paint) {
    setDrawHook(
        WindowHandle(window->GetHandle()),
        [when = std::move(when), paint = std::move(paint)](void* context, int width, int height) {
            if (!when())
                return false;
            wxGraphicsContext* graphics =
                wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromNativeContext(context);
            if (!graphics)
                return false;
            wxGCDC dc(graphics);
            paint(dc, width, height);
            return true;
        });
}

} // namespace Varnel::Wx
