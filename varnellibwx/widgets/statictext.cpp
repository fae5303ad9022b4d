#include <varnellibwx/widgets/statictext.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/stringconversion.h>

#include <wx/dcclient.h>

#include <algorithm>
#include <string>

namespace Varnel::Wx {

StaticText::StaticText(wxWindow* parent, int id, const String& label, unsigned int style,
                       Flags<TextFlag> flags, wxSize size)
    : TooltipWindow(this) {
    // Created in two steps, so that the label's own default attributes below are the ones asked
    // while the toolkit sizes it.
    Create(parent, id, toWxString(label), wxDefaultPosition, scaleByDpi(size),
           static_cast<long>(style), wxStaticTextNameStr);
    Bind(wxEVT_PAINT, &StaticText::onPaint, this);
    SetFont(setupStaticTextFont(GetFont(), flags));
    m_label = label;
}

StaticText::~StaticText() = default;

wxVisualAttributes StaticText::GetDefaultAttributes() const {
    return wxWindow::GetClassDefaultAttributes();
}

void StaticText::SetLabel(const wxString& label) {
    m_label = toVarnelString(label);
    wxGenericStaticText::SetLabel(label);
}

void StaticText::Wrap(int width) {
    // The stored label stays the unwrapped text, so that the next Wrap starts from it again.
    wxClientDC dc(this);
    dc.SetFont(GetFont());
    const String wrapped = Detail::wrapLabel(m_label.view(), width, [&dc](std::wstring_view text) {
        wxArrayInt widths;
        dc.GetPartialTextExtents(wxString(text.data(), text.size()), widths);
        return std::vector<int>(widths.begin(), widths.end());
    });
    wxGenericStaticText::SetLabel(toWxString(wrapped));
}

void StaticText::onPaint(wxPaintEvent&) {
    wxPaintDC dc(this);
    dc.SetFont(GetFont());
    dc.SetTextForeground(GetForegroundColour());
    dc.DrawLabel(GetLabel(), wxNullBitmap, wxRect(wxPoint(0, 0), GetClientSize()),
                 static_cast<int>(GetWindowStyle()), -1);
}

namespace Detail {

namespace {

// Characters of context kept after a break: a character's position depends on its neighbours
// (kerning, ligatures), never on text this far on.
constexpr std::size_t kContext = 16;
constexpr std::size_t kFirstWindow = 96;

// The first character whose prefix reaches `widthMax` (the line's length when none does), as
// measuring the whole line would find it, from the widths of windows that grow until the answer
// lies well inside one.
std::size_t firstOverflow(std::wstring_view line, int widthMax, const PrefixWidths& prefixWidths,
                          std::size_t& window) {
    for (;;) {
        const std::size_t length = std::min(window, line.size());
        const std::vector<int> widths = prefixWidths(line.substr(0, length));
        const std::size_t end = static_cast<std::size_t>(
            std::lower_bound(widths.begin(), widths.end(), widthMax) - widths.begin());
        if (length == line.size() || end + kContext < length)
            return std::min(end, line.size());
        window *= 2;
    }
}

} // namespace

String wrapLabel(std::wstring_view text, int widthMax, const PrefixWidths& prefixWidths) {
    std::wstring wrapped;
    std::size_t window = kFirstWindow;
    std::size_t lineStart = 0;
    for (bool first = true;; first = false) {
        const std::size_t lineEnd = std::min(text.find(L'\n', lineStart), text.size());
        std::wstring_view line = text.substr(lineStart, lineEnd - lineStart);
        if (!first)
            wrapped += L'\n';
        for (bool newLine = false; !line.empty(); newLine = true) {
            if (newLine)
                wrapped += L'\n';
            if (widthMax < 0) {
                wrapped += line;
                break;
            }
            const std::size_t end = firstOverflow(line, widthMax, prefixWidths, window);
            const std::size_t space = end == line.size() ? line.npos : line.rfind(L' ', end);
            if (space == line.npos) {
                wrapped += line;
                break;
            }
            wrapped += line.substr(0, space);
            line.remove_prefix(space + 1);
            // The next line is about as long as this one was.
            window = std::max(kFirstWindow, space + 2 * kContext);
        }
        if (lineEnd == text.size())
            break;
        lineStart = lineEnd + 1;
    }
    return String(std::wstring_view(wrapped));
}

} // namespace Detail
} // namespace Varnel::Wx
