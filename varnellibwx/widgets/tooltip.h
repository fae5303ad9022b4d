#pragma once

#include <string_view>
#include <vector>

#include <varnellib/base/function.h>
#include <varnellib/base/stack.h>
#include <varnellib/base/string.h>
#include <varnellib/base/types.h>
#include <varnellibwx/export.h>

#include <wx/popupwin.h>
#include <wx/timer.h>

namespace Varnel::Wx {

/// The library's own tooltip: a popup belonging to one owner window that appears once the
/// pointer has rested over the owner for the delay (600 ms; every motion restarts the wait) and
/// shows the text word-wrapped at 250 scaled pixels, next to the pointer, in the system's tooltip
/// colours (made opaque: themes often give them translucent). Leaving the owner or releasing a
/// click on it hides it. An empty text never shows. It is a child of the owner and dies with it.
class VARNEL_LIBWX_EXPORT Tooltip : public wxPopupWindow {
public:
    static constexpr int64 kDefaultDelayMs = 600;

    Tooltip(wxWindow* owner, const String& text);
    ~Tooltip() override;

    void setDelay(int64 milliseconds) { m_delayMs = milliseconds; }
    /// Wraps and stores the text; line feeds always break.
    void setText(const String& text);
    const Stack<String>& lines() const { return m_lines; }

private:
    void onRestart(wxMouseEvent& event);
    void onHide(wxMouseEvent& event);
    void onTimer(wxTimerEvent& event);
    void onPaint(wxPaintEvent& event);

    wxWindow* m_owner;
    Stack<String> m_lines;
    wxTimer m_timer;
    int64 m_delayMs = kDefaultDelayMs;
};

/// The base through which a widget gets a tooltip: the first setTooltip creates it.
class VARNEL_LIBWX_EXPORT TooltipWindow {
public:
    explicit TooltipWindow(wxWindow* window) : m_window(window) {}
    virtual ~TooltipWindow();

    void setTooltip(const String& text);
    Tooltip* tooltip() const { return m_tooltip; }

private:
    wxWindow* m_window;
    Tooltip* m_tooltip = nullptr; // a child of m_window, destroyed with it
};

namespace Detail {

/// Splits `text` at line feeds, then fills each line word by word (words split at spaces) while
/// its width, as `textWidth` measures it, stays within `maxWidth`. A word wider than that stays
/// alone on its line, unbroken. An empty text gives no lines.
///
/// With `prefixWidths` (the widths of every prefix of a text, kept in step with its characters
/// across ligatures: Lib::measureTextPrefixes) each line of the text is measured once, and a
/// candidate line's width is estimated from it; only a candidate whose estimate comes within
/// `kWrapEstimateTolerance` pixels of `maxWidth` is measured on its own, so the lines are those of
/// measuring every candidate.
VARNEL_LIBWX_EXPORT Stack<String>
wrapText(const String& text, int maxWidth, const Function<int(const String&)>& textWidth,
         const Function<std::vector<int>(std::wstring_view)>& prefixWidths = {});

/// How far (in pixels) a width estimated from prefix widths may be from the measured width of
/// the same text: rounding at both ends and kerning across a space.
inline constexpr int kWrapEstimateTolerance = 4;

} // namespace Detail
} // namespace Varnel::Wx
