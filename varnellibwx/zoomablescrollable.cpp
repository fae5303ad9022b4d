#include <varnellibwx/zoomablescrollable.h>

#include <wx/window.h>

namespace Varnel {

ZoomableScrollable::~ZoomableScrollable() = default;

void ZoomableScrollable::bindScrollAndZoomEvents(wxWindow* window) {
    window->Bind(wxEVT_MOUSEWHEEL, &ZoomableScrollable::onWheel, this);
    window->Bind(wxEVT_MAGNIFY, &ZoomableScrollable::onMagnify, this);
}

void ZoomableScrollable::onWheel(wxMouseEvent& event) {
    zoom(event, event.GetWheelRotation());
}

void ZoomableScrollable::onMagnify(wxMouseEvent& event) {
    m_magnification += event.GetMagnification();
    if (event.GetMagnification() != 0.f)
        zoom(event, m_magnification > 0.f ? 1 : -1);
}

} // namespace Varnel
