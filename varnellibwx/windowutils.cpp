#include <varnellibwx/bitmapconversion.h>
#include <varnellibwx/focusable.h>
#include <varnellibwx/resources/resources.h>
#include <varnellibwx/windowutils.h>

#include <varnellib/base/stack.h>

#include <wx/display.h>
#include <wx/icon.h>
#include <wx/toplevel.h>

#include <algorithm>
#include <limits>

namespace Varnel::Wx {

Focusable::~Focusable() = default;

namespace {

std::vector<wxRect> monitorGeometries() {
    std::vector<wxRect> monitors;
    for (unsigned i = 0; i < wxDisplay::GetCount(); ++i)
        monitors.push_back(wxDisplay(i).GetGeometry());
    return monitors;
}

Bucket toBucket(const wxRect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

} // namespace

WindowHandle getWindowNativeHandle(wxWindow* window) {
    return WindowHandle(window ? window->GetHandle() : nullptr);
}

wxTopLevelWindow* findTopLevelWxWindowForNativeHandle(WindowHandle handle) {
    for (wxWindow* window : wxTopLevelWindows)
        if (window->GetHandle() == handle.native())
            return static_cast<wxTopLevelWindow*>(window);
    return nullptr;
}

wxWindow* findWindowByNativeHandle(wxWindow* root, WindowHandle handle) {
    if (handle.isEmpty() || !root)
        return nullptr;
    Stack<wxWindow*> pending;
    pending.push(root);
    while (!pending.isEmpty()) {
        wxWindow* window = pending.pop();
        if (window->GetHandle() == handle.native())
            return window;
        for (wxWindow* child : window->GetChildren())
            pending.push(child);
    }
    return nullptr;
}

wxWindow* findWindowByPosition(wxWindow* root, Pixel point, Flags<FindWindowFlag> flags) {
    if (!root)
        return nullptr;
    wxWindow* found = nullptr;
    Stack<wxWindow*> pending;
    pending.push(root);
    while (!pending.isEmpty()) {
        wxWindow* window = pending.pop();
        if (!window->IsShown() && !flags.has(FindWindowFlag::IncludeHidden))
            continue;
        if (!window->IsThisEnabled() && !flags.has(FindWindowFlag::IncludeDisabled))
            continue;
        if (window->GetScreenRect().Contains(wxPoint(point.x, point.y)))
            found = window;
        for (wxWindow* child : window->GetChildren())
            pending.push(child);
    }
    return found;
}

Bucket getMonitorRegionByPoint(Pixel point, MonitorRegionType type) {
    const int index = Detail::chooseMonitor(monitorGeometries(), point);
    if (index < 0)
        return {};
    const wxDisplay display(static_cast<unsigned>(index));
    return toBucket(type == MonitorRegionType::WorkArea ? display.GetClientArea()
                                                        : display.GetGeometry());
}

Bucket getMonitorRegionByWindow(wxWindow* window, MonitorRegionType type) {
    const wxRect rect = window->GetScreenRect();
    return getMonitorRegionByPoint({rect.x + rect.width / 2, rect.y + rect.height / 2}, type);
}

void smartPositionWindow(wxWindow* window, Pixel position) {
    const Bucket area = getMonitorRegionByPoint(position, MonitorRegionType::WorkArea);
    const wxPoint target = Detail::smartPosition(wxRect(area.x, area.y, area.width, area.height),
                                                 window->GetSize(), position);
    window->Move(target);
}

void moveFocus(wxWindow* window, MoveFocusDirection direction) {
    wxWindow* parent = window ? window->GetParent() : nullptr;
    if (!parent)
        return;
    const wxWindowList& siblings = parent->GetChildren();
    const int count = static_cast<int>(siblings.size());
    const int self = siblings.IndexOf(window);
    if (self == wxNOT_FOUND)
        return;
    const int step = direction == MoveFocusDirection::Backward ? -1 : 1;
    for (int i = (self + step + count) % count; i != self; i = (i + step + count) % count) {
        wxWindow* candidate = siblings[static_cast<std::size_t>(i)];
        if (candidate->IsFocusable() && dynamic_cast<Focusable*>(candidate)) {
            candidate->SetFocus();
            return;
        }
    }
}

void setIcon(wxTopLevelWindow* window, const wxBitmap& bitmap) {
    wxIcon icon;
    icon.CopyFromBitmap(bitmap);
    window->SetIcon(icon);
}

void setVellumIcon(wxTopLevelWindow* window) {
    setIcon(window, convertMemoryToBitmap(Resources::kVellumIconPng, Resources::kVellumIconPngSize,
                                          wxBITMAP_TYPE_ANY));
}

namespace Detail {

int chooseMonitor(const std::vector<wxRect>& monitors, Pixel point) {
    int best = -1;
    float bestDistance = std::numeric_limits<float>::max();
    const float px = static_cast<float>(point.x), py = static_cast<float>(point.y);
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        const wxRect& m = monitors[i];
        const float left = static_cast<float>(m.x), top = static_cast<float>(m.y);
        const float right = static_cast<float>(m.x + m.width - 1);
        const float bottom = static_cast<float>(m.y + m.height - 1);
        const float dx = px - std::clamp(px, left, std::max(left, right));
        const float dy = py - std::clamp(py, top, std::max(top, bottom));
        const float distance = dx * dx + dy * dy;
        if (distance < bestDistance) {
            bestDistance = distance;
            best = static_cast<int>(i);
        }
    }
    return best;
}

wxPoint smartPosition(const wxRect& workArea, wxSize size, Pixel position) {
    const int left = workArea.x, top = workArea.y;
    const int right = workArea.x + workArea.width - 1;
    const int bottom = workArea.y + workArea.height - 1;
    return {std::max(left, std::min(std::max(left, right - size.x + 1), position.x)),
            std::max(top, std::min(std::max(top, bottom - size.y + 1), position.y))};
}

} // namespace Detail
} // namespace Varnel::Wx
