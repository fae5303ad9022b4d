#pragma once

#include <varnellib/base/types.h>

#include <algorithm>

namespace Varnel {

/// A native window: the GtkWidget behind a wx window (wxWindow::GetHandle()) or a host's own GTK
/// widget. Default-constructed it is empty.
class WindowHandle {
public:
    WindowHandle() = default;
    explicit WindowHandle(void* gtkWidget) : m_widget(gtkWidget) {}

    void* native() const noexcept { return m_widget; }
    bool isEmpty() const noexcept { return m_widget == nullptr; }
    bool operator==(const WindowHandle&) const = default;

private:
    void* m_widget = nullptr;
};

/// A screen or client position.
struct Pixel {
    int32 x = 0;
    int32 y = 0;
    bool operator==(const Pixel&) const = default;
};

/// A rectangle on the screen: its top-left corner and its size.
struct Bucket {
    int32 x = 0;
    int32 y = 0;
    int32 width = 0;
    int32 height = 0;

    bool isEmpty() const noexcept { return width <= 0 || height <= 0; }
    bool contains(Pixel p) const noexcept {
        return p.x >= x && p.y >= y && p.x - x < width && p.y - y < height;
    }
    /// The overlap of two rectangles (empty when they do not overlap).
    Bucket intersect(const Bucket& o) const noexcept {
        const int32 left = std::max(x, o.x), top = std::max(y, o.y);
        const int32 right = std::min(x + width, o.x + o.width);
        const int32 bottom = std::min(y + height, o.y + o.height);
        if (right <= left || bottom <= top)
            return {left, top, 0, 0};
        return {left, top, right - left, bottom - top};
    }
    bool operator==(const Bucket&) const = default;
};

} // namespace Varnel
