#include <varnellibwx/widgets/pixelprobe.h>

#include <varnellib/native/windowowner.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/windowutils.h>

#include <wx/dcbuffer.h>
#include <wx/dcmemory.h>

#include <clocale>
#include <cstdio>
#include <cstring>
#include <locale.h>
#include <string_view>

namespace Varnel::Wx {

namespace {

constexpr int kPadding = 6;
constexpr int kBlockGap = 12;
constexpr int kPatchWidth = 36;
const wxColour kFrame(105, 105, 105);

/// The "C" locale, made once: printing switches to it on its own thread only, so a host's
/// locale (with a comma for the point) stays in force everywhere else.
locale_t cLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    return locale;
}

template <class... Args>
std::string print(const char* format, Args... args) {
    const locale_t previous = uselocale(cLocale());
    const int length = std::snprintf(nullptr, 0, format, args...);
    std::string text(static_cast<std::size_t>(length > 0 ? length : 0), '\0');
    std::snprintf(text.data(), text.size() + 1, format, args...);
    uselocale(previous);
    return text;
}

// The glyphs a number prints.
constexpr std::string_view kNumberGlyphs = "0123456789.-+naif";

// A line is a label ("R: ", "Position:") and perhaps a number after its last space.
std::pair<std::string_view, std::string_view> splitLine(std::string_view line) {
    const std::size_t space = line.rfind(' ');
    std::string_view number = space == std::string_view::npos ? line : line.substr(space + 1);
    if (number.find_first_not_of(kNumberGlyphs) != std::string_view::npos)
        number = {};
    return {line.substr(0, line.size() - number.size()), number};
}

// Rows of RGB bytes, the probe composed in them before it is drawn.
struct Canvas {
    unsigned char* data;
    wxSize size;

    unsigned char* at(int x, int y) const {
        return data + (static_cast<std::size_t>(y) * size.x + x) * 3;
    }
};

void fill(const Canvas& canvas, const wxRect& rect, const wxColour& colour) {
    const wxRect clipped = rect.Intersect(wxRect(canvas.size));
    if (clipped.IsEmpty())
        return;
    const unsigned char rgb[3] = {colour.Red(), colour.Green(), colour.Blue()};
    unsigned char* first = canvas.at(clipped.x, clipped.y);
    for (int x = 0; x < clipped.width; ++x)
        std::memcpy(first + x * 3, rgb, 3);
    for (int y = 1; y < clipped.height; ++y)
        std::memcpy(canvas.at(clipped.x, clipped.y + y), first, clipped.width * 3u);
}

// What a wxDC draws for a rectangle with a one-pixel pen: the outline on its outermost pixels.
void frameAndFill(const Canvas& canvas, const wxRect& rect, const wxColour& frame,
                  const wxColour& inside) {
    fill(canvas, rect, frame);
    fill(canvas, wxRect(rect).Deflate(1), inside);
}

void copyInto(const Canvas& canvas, const unsigned char* rgb, wxSize size, wxPoint at) {
    const wxRect target = wxRect(at, size).Intersect(wxRect(canvas.size));
    if (target.IsEmpty())
        return;
    for (int y = target.y; y < target.y + target.height; ++y)
        std::memcpy(canvas.at(target.x, y),
                    rgb + (static_cast<std::size_t>(y - at.y) * size.x + (target.x - at.x)) * 3,
                    target.width * 3u);
}

} // namespace

PixelProbe::PixelProbe(wxWindow* view, const GuiSkin& skin)
    : wxPopupWindow(view, wxBORDER_NONE), m_view(view), m_viewTop(wxGetTopLevelParent(view)),
      m_skin(skin) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetFont(setupStaticTextFont(view->GetFont(), {}));
    SetBackgroundColour(toWxColour(skin.darkBackground));
    SetForegroundColour(toWxColour(skin.text));
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        wxAutoBufferedPaintDC dc(this);
        paint(dc);
    });
    setInputTransparent(getWindowNativeHandle(this));
    if (m_viewTop) {
        m_viewTop->Bind(wxEVT_CHAR_HOOK, &PixelProbe::onKey, this);
        // A popup is no child of the frame to the window manager: minimised, the frame would
        // leave it on screen.
        m_viewTop->Bind(wxEVT_ICONIZE, &PixelProbe::onViewIconized, this);
    }
    // Hidden with the view, or with any window around it (a page switched away, the frame).
    for (wxWindow* window = m_view; window; window = window->GetParent()) {
        window->Bind(wxEVT_SHOW, &PixelProbe::onViewShown, this);
        m_watched.push_back(window);
        if (window->IsTopLevel())
            break;
    }
}

PixelProbe::~PixelProbe() {
    if (m_viewTop) {
        m_viewTop->Unbind(wxEVT_CHAR_HOOK, &PixelProbe::onKey, this);
        m_viewTop->Unbind(wxEVT_ICONIZE, &PixelProbe::onViewIconized, this);
    }
    for (wxWindow* window : m_watched)
        window->Unbind(wxEVT_SHOW, &PixelProbe::onViewShown, this);
}

void PixelProbe::show(const PixelProbeValues& values, wxPoint pointer) {
    m_values = values;
    std::array<std::string, 4> texts = Detail::pixelProbeTexts(values);
    const bool sameTexts = texts == m_texts;
    if (!sameTexts)
        layOut(std::move(texts));
    const Bucket monitor =
        getMonitorRegionByPoint({pointer.x, pointer.y}, MonitorRegionType::WholeMonitor);
    const wxPoint at =
        Detail::pixelProbePosition(wxRect(monitor.x, monitor.y, monitor.width, monitor.height),
                                   GetSize(), pointer, scaleByDpi(kPointerOffset));
    if (at != GetPosition())
        Move(at);
    if (!IsShown())
        Show();
    else if (!sameTexts)
        Refresh(false);
}

void PixelProbe::hide() {
    if (IsShown())
        Hide();
}

void PixelProbe::layOut(std::array<std::string, 4>&& texts) {
    m_texts = std::move(texts);
    m_placed.clear();
    if (m_numberGlyph == 0)
        for (std::size_t i = 0; i < kNumberGlyphs.size(); ++i)
            m_numberGlyph = std::max(m_numberGlyph, piece(kNumberGlyphs.substr(i, 1)).width);
    const int padding = scaleByDpi(kPadding);
    int x = padding;
    int lines = 0;
    for (std::size_t i = 0; i < m_texts.size(); ++i) {
        m_columns[i] = x;
        int width = 0;
        std::string_view rest = m_texts[i];
        for (int count = 1;; ++count) {
            const std::size_t end = rest.find('\n');
            width = std::max(width, placeLine(rest.substr(0, end),
                                              wxPoint(x, padding + (count - 1) * m_lineHeight)));
            if (end == std::string_view::npos) {
                lines = std::max(lines, count);
                break;
            }
            rest.remove_prefix(end + 1);
        }
        x += width + scaleByDpi(kBlockGap);
    }
    m_columns[4] = x;
    m_textHeight = lines * m_lineHeight;
    const wxSize size(x + scaleByDpi(kPatchWidth) + padding, m_textHeight + 2 * padding);
    if (size != GetSize())
        SetSize(size);
}

const PixelProbe::Piece& PixelProbe::piece(std::string_view text) {
    const auto known = m_pieces.find(text);
    if (known != m_pieces.end())
        return known->second;
    wxMemoryDC dc;
    dc.SetFont(GetFont());
    if (m_lineHeight == 0)
        m_lineHeight = dc.GetCharHeight();
    const wxString label = wxString::FromUTF8(text.data(), text.size());
    Piece drawn;
    drawn.width = text.empty() ? 0 : dc.GetTextExtent(label).x;
    if (drawn.width > 0) {
        wxBitmap bitmap(drawn.width, m_lineHeight, 24);
        dc.SelectObject(bitmap);
        dc.SetBackground(wxBrush(toWxColour(m_skin.darkBackground)));
        dc.Clear();
        dc.SetTextForeground(toWxColour(m_skin.text));
        dc.DrawText(label, 0, 0);
        dc.SelectObject(wxNullBitmap);
        const wxImage image = bitmap.ConvertToImage();
        drawn.rgb.assign(image.GetData(), image.GetData() + static_cast<std::size_t>(drawn.width) *
                                                                m_lineHeight * 3);
    }
    return m_pieces.emplace(std::string(text), std::move(drawn)).first->second;
}

int PixelProbe::placeLine(std::string_view line, wxPoint at) {
    // A label is measured once; a number takes as many of the widest glyph a number prints as it
    // has characters, so the columns hold still while the pointer moves. Its glyphs sit at their
    // own widths.
    const auto [label, number] = splitLine(line);
    const Piece& labelPiece = piece(label);
    const auto place = [&](const Piece& drawn) {
        if (drawn.width > 0)
            m_placed.push_back({&drawn, at});
        at.x += drawn.width;
    };
    place(labelPiece);
    for (std::size_t i = 0; i < number.size(); ++i)
        place(piece(number.substr(i, 1)));
    return labelPiece.width + static_cast<int>(number.size()) * m_numberGlyph;
}

void PixelProbe::paint(wxDC& dc) const {
    const wxSize size = GetClientSize();
    if (size.x <= 0 || size.y <= 0)
        return;
    m_canvas.resize(static_cast<std::size_t>(size.x) * size.y * 3);
    const Canvas canvas{m_canvas.data(), size};
    frameAndFill(canvas, wxRect(size), kFrame, toWxColour(m_skin.darkBackground));
    for (const Placed& placed : m_placed)
        copyInto(canvas, placed.piece->rgb.data(), wxSize(placed.piece->width, m_lineHeight),
                 placed.at);
    const int padding = scaleByDpi(kPadding);
    const Rgb& shown = m_values.tonemapped;
    frameAndFill(canvas, wxRect(m_columns[4], padding, scaleByDpi(kPatchWidth), m_textHeight),
                 kFrame, wxColour(unitToByte(shown.r), unitToByte(shown.g), unitToByte(shown.b)));
    dc.DrawBitmap(wxBitmap(wxImage(size, m_canvas.data(), true)), 0, 0);
}

void PixelProbe::onKey(wxKeyEvent& event) {
    if (IsShown() && event.GetKeyCode() == WXK_ESCAPE) {
        hide();
        return;
    }
    event.Skip();
}

void PixelProbe::onViewIconized(wxIconizeEvent& event) {
    event.Skip();
    if (event.IsIconized())
        hide();
}

void PixelProbe::onViewShown(wxShowEvent& event) {
    event.Skip();
    if (!event.IsShown())
        hide();
}

namespace Detail {

std::array<std::string, 4> pixelProbeTexts(const PixelProbeValues& values) {
    const Rgb& o = values.original;
    const Rgb& t = values.tonemapped;
    const auto d = [](float lane) {
        return static_cast<double>(lane);
    };
    return {
        print("Position:\n%d\n%d", values.pixel.x, values.pixel.y),
        print("Original\nLinear RGB:\nR: %.5f\nG: %.5f\nB: %.5f\nA: %.5f", d(o.r), d(o.g), d(o.b),
              d(o.a)),
        print("Tonemapped\nsRGB:\nR: %.5f\nG: %.5f\nB: %.5f\nA: %.5f", d(t.r), d(t.g), d(t.b),
              d(t.a)),
        print("Tonemapped\nsRGB 8-bit:\nR: %d\nG: %d\nB: %d\nA: %d", int(unitToByte(t.r)),
              int(unitToByte(t.g)), int(unitToByte(t.b)), int(unitToByte(t.a))),
    };
}

wxPoint pixelProbePosition(const wxRect& monitor, wxSize size, wxPoint pointer, int offset) {
    const auto place = [offset](int64 at, int64 extent, int64 start, int64 length) {
        int64 position = at + offset;
        if (position + extent > start + length)
            position = at - offset - extent;
        // Wholly inside, the start edge winning when the probe is larger than the monitor.
        position = std::min(position, start + length - extent);
        return static_cast<int>(std::max(position, start));
    };
    return {place(pointer.x, size.x, monitor.x, monitor.width),
            place(pointer.y, size.y, monitor.y, monitor.height)};
}

} // namespace Detail
} // namespace Varnel::Wx
