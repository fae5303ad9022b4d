#pragma once

#include <varnellibwx/export.h>

class wxMouseEvent;
class wxWindow;

namespace Varnel {

/// A mixin for views that zoom with the mouse wheel and with touchpad pinches: it binds both
/// events of a window and hands each to zoom() with an amount, the wheel's rotation or, for a
/// pinch, +1 or -1 by the sign of the magnification gathered so far.
class VARNEL_LIBWX_EXPORT ZoomableScrollable {
public:
    virtual ~ZoomableScrollable();

protected:
    void bindScrollAndZoomEvents(wxWindow* window);
    virtual void zoom(wxMouseEvent& event, int amount) = 0;

private:
    void onWheel(wxMouseEvent& event);
    void onMagnify(wxMouseEvent& event);

    float m_magnification = 0.f;
};

} // namespace Varnel
