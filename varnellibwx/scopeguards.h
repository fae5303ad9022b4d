#pragma once

#include <wx/dc.h>
#include <wx/window.h>

namespace Varnel::Wx {

/// Clips a DC to a rectangle for its lifetime; afterwards the DC has no clipping at all (an
/// earlier clipping region is not restored).
class ScopedClippingRegion {
public:
    ScopedClippingRegion(wxDC& dc, const wxRect& rect) : m_dc(dc) { m_dc.SetClippingRegion(rect); }
    ~ScopedClippingRegion() { m_dc.DestroyClippingRegion(); }
    ScopedClippingRegion(const ScopedClippingRegion&) = delete;
    ScopedClippingRegion& operator=(const ScopedClippingRegion&) = delete;

private:
    wxDC& m_dc;
};

/// Freezes a window's repainting for its lifetime.
class ScopedWindowFreezer {
public:
    explicit ScopedWindowFreezer(wxWindow* window) : m_window(window) { m_window->Freeze(); }
    ~ScopedWindowFreezer() { m_window->Thaw(); }
    ScopedWindowFreezer(const ScopedWindowFreezer&) = delete;
    ScopedWindowFreezer& operator=(const ScopedWindowFreezer&) = delete;

private:
    wxWindow* m_window;
};

} // namespace Varnel::Wx
