#include <varnellibwx/widgets/tooltip.h>

#include <varnellib/native/textmeasure.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/windowutils.h>

#include <wx/dcclient.h>
#include <wx/settings.h>

#include <algorithm>

namespace Varnel::Wx {

namespace {

constexpr int kWrapWidth = 250;
// Fixed pixels on purpose: the frame and margin of the text, not scaled.
constexpr int kMargin = 3;
const wxPoint kPointerOffset(10, 5);

// GTK themes give the tooltip colours from CSS, often translucent; the popup has nothing to
// blend with, so the colours are used opaque.
wxColour opaqueSystemColour(wxSystemColour which) {
    const wxColour colour = wxSystemSettings::GetColour(which);
    return wxColour(colour.Red(), colour.Green(), colour.Blue());
}

} // namespace

Tooltip::Tooltip(wxWindow* owner, const String& text)
    : wxPopupWindow(owner), m_owner(owner), m_timer(this) {
    Hide();
    Bind(wxEVT_PAINT, &Tooltip::onPaint, this);
    Bind(wxEVT_TIMER, &Tooltip::onTimer, this);
    m_owner->Bind(wxEVT_LEAVE_WINDOW, &Tooltip::onHide, this);
    m_owner->Bind(wxEVT_LEFT_UP, &Tooltip::onHide, this);
    m_owner->Bind(wxEVT_ENTER_WINDOW, &Tooltip::onRestart, this);
    m_owner->Bind(wxEVT_MOTION, &Tooltip::onRestart, this);
    setText(text);
}

Tooltip::~Tooltip() {
    m_timer.Stop();
    m_owner->Unbind(wxEVT_LEAVE_WINDOW, &Tooltip::onHide, this);
    m_owner->Unbind(wxEVT_LEFT_UP, &Tooltip::onHide, this);
    m_owner->Unbind(wxEVT_ENTER_WINDOW, &Tooltip::onRestart, this);
    m_owner->Unbind(wxEVT_MOTION, &Tooltip::onRestart, this);
}

void Tooltip::setText(const String& text) {
    wxClientDC dc(this);
    dc.SetFont(GetFont());
    m_lines = Detail::wrapText(
        text, scaleByDpi(kWrapWidth),
        [&dc](const String& line) { return dc.GetTextExtent(toWxString(line)).x; },
        [this](std::wstring_view line) {
            return Lib::measureTextPrefixes(
                WindowHandle(GetHandle()), toVarnelString(GetFont().GetNativeFontInfoDesc()), line);
        });
}

void Tooltip::onRestart(wxMouseEvent& event) {
    m_timer.StartOnce(static_cast<int>(m_delayMs));
    event.Skip();
}

void Tooltip::onHide(wxMouseEvent& event) {
    Hide();
    m_timer.Stop();
    event.Skip();
}

void Tooltip::onTimer(wxTimerEvent&) {
    const wxPoint pointer = wxGetMousePosition();
    const wxPoint inOwner = pointer - m_owner->GetScreenPosition();
    const wxSize ownerSize = m_owner->GetSize();
    const bool inside =
        inOwner.x >= 0 && inOwner.y >= 0 && inOwner.x < ownerSize.x && inOwner.y < ownerSize.y;
    if (!inside || m_lines.isEmpty())
        return;
    Freeze();
    Show();
    wxClientDC dc(this);
    dc.SetFont(GetFont());
    int width = 0, height = 0;
    for (const String& line : m_lines) {
        const wxSize extent = dc.GetTextExtent(toWxString(line));
        width = std::max(width, extent.x);
        height += extent.y;
    }
    SetClientSize(width + 2 * kMargin, height + 2 * kMargin);
    const wxPoint corner = pointer + kPointerOffset;
    smartPositionWindow(this, {corner.x, corner.y});
    Thaw();
}

void Tooltip::onPaint(wxPaintEvent&) {
    wxPaintDC dc(this);
    const wxColour background = opaqueSystemColour(wxSYS_COLOUR_INFOBK);
    const wxColour foreground = opaqueSystemColour(wxSYS_COLOUR_INFOTEXT);
    dc.SetBrush(wxBrush(background));
    dc.SetPen(wxPen(foreground, 1));
    dc.DrawRectangle(wxPoint(0, 0), GetClientSize());
    dc.SetFont(GetFont());
    dc.SetTextForeground(foreground);
    dc.SetTextBackground(background);
    int y = kMargin;
    for (const String& line : m_lines) {
        const wxString text = toWxString(line);
        dc.DrawText(text, kMargin, y);
        y += dc.GetTextExtent(text).y;
    }
}

TooltipWindow::~TooltipWindow() = default;

void TooltipWindow::setTooltip(const String& text) {
    if (m_tooltip)
        m_tooltip->setText(text);
    else
        m_tooltip = new Tooltip(m_window, text);
}

namespace Detail {

Stack<String> wrapText(const String& text, int maxWidth,
                       const Function<int(const String&)>& textWidth,
                       const Function<std::vector<int>(std::wstring_view)>& prefixWidths) {
    Stack<String> lines;
    if (text.isEmpty())
        return lines;
    const std::wstring_view all = text.view();
    std::size_t lineStart = 0;
    for (;;) {
        const std::size_t lineEnd = std::min(all.find(L'\n', lineStart), all.size());
        const std::wstring_view source = all.substr(lineStart, lineEnd - lineStart);
        std::vector<int> prefixes;
        if (prefixWidths)
            prefixes = prefixWidths(source);
        // The width of source[from, to): measured, or estimated when that settles the question.
        const auto exceeds = [&](std::size_t from, std::size_t to) {
            if (prefixes.size() == source.size() && to > 0) {
                const int estimate = prefixes[to - 1] - (from > 0 ? prefixes[from - 1] : 0);
                if (estimate <= maxWidth - kWrapEstimateTolerance)
                    return false;
                if (estimate > maxWidth + kWrapEstimateTolerance)
                    return true;
            }
            return textWidth(String(source.substr(from, to - from))) > maxWidth;
        };
        // The line being filled is source[first, end): its words and the spaces between them.
        std::size_t first = 0, end = 0;
        std::size_t wordStart = 0;
        for (;;) {
            const std::size_t wordEnd = std::min(source.find(L' ', wordStart), source.size());
            if (wordStart == 0) {
                end = wordEnd;
            } else if (exceeds(first, wordEnd)) {
                lines.push(String(source.substr(first, end - first)));
                first = wordStart;
                end = wordEnd;
            } else {
                end = wordEnd;
            }
            if (wordEnd >= source.size())
                break;
            wordStart = wordEnd + 1;
        }
        lines.push(String(source.substr(first, end - first)));
        if (lineEnd >= all.size())
            break;
        lineStart = lineEnd + 1;
    }
    return lines;
}

} // namespace Detail
} // namespace Varnel::Wx
