#pragma once

#include <varnellib/base/types.h>
#include <varnellib/color/color.h>
#include <varnellib/native/windowhandle.h>
#include <varnellibwx/export.h>
#include <varnellibwx/guiskin.h>

#include <wx/popupwin.h>

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Varnel::Wx {

/// What a pixel probe shows: the pixel, its original linear value and its tonemapped sRGB value.
struct PixelProbeValues {
    Pixel pixel;
    Rgb original;
    Rgb tonemapped;
};

/// A small popup that a host's image view shows next to the pointer while the user inspects
/// pixels: four blocks of text side by side (the position, the original linear value, the
/// tonemapped value and its 8-bit bytes) and a patch of the tonemapped colour. Numbers are
/// printed with a point as the decimal separator whatever the host's locale.
///
/// It sits `kPointerOffset` pixels right of and below the pointer, or left of or above it where
/// it would leave the pointer's monitor (the nearest one when the pointer is on none), and
/// always wholly on that monitor. It never takes the focus and lets the pointer through, so the
/// view keeps its events. It hides on hide(), on Escape in the view's window, and when the view
/// or any window around it is hidden or its frame minimised (the host's next show() brings it
/// back). Made with the view as owner, it dies with it.
class VARNEL_LIBWX_EXPORT PixelProbe : public wxPopupWindow {
public:
    static constexpr int kPointerOffset = 16;

    explicit PixelProbe(wxWindow* view, const GuiSkin& skin = GuiSkin());
    ~PixelProbe() override;

    /// Shows `values` next to `pointer` (screen coordinates), repainting only what changed.
    void show(const PixelProbeValues& values, wxPoint pointer);
    void hide();

    /// The four blocks as shown.
    const std::array<std::string, 4>& texts() const { return m_texts; }
    const PixelProbeValues& values() const { return m_values; }
    /// The left edges of the four blocks and of the colour patch.
    const std::array<int, 5>& columns() const { return m_columns; }

    /// Draws the probe: its frame, the blocks (labels and number glyphs drawn once and copied,
    /// so a move shapes no text) and the patch of the tonemapped colour.
    void paint(wxDC& dc) const;

private:
    void layOut(std::array<std::string, 4>&& texts);
    // A label or a glyph drawn once over the probe's background: its width and rows of RGB.
    struct Piece {
        int width = 0;
        std::vector<unsigned char> rgb;
    };
    struct Placed {
        const Piece* piece; // in m_pieces, whose nodes never move
        wxPoint at;
    };
    const Piece& piece(std::string_view text);
    /// Places `line`'s pieces from `at` and gives the width the line takes in its column.
    int placeLine(std::string_view line, wxPoint at);
    void onKey(wxKeyEvent& event);
    void onViewIconized(wxIconizeEvent& event);
    void onViewShown(wxShowEvent& event);

    wxWindow* m_view;
    wxWindow* m_viewTop;
    std::vector<wxWindow*> m_watched; // the view and the windows around it, up to its frame
    GuiSkin m_skin;
    PixelProbeValues m_values;
    std::array<std::string, 4> m_texts;
    // Each label and each glyph a number prints, drawn once over the probe's background.
    std::map<std::string, Piece, std::less<>> m_pieces;
    std::vector<Placed> m_placed; // the shown texts' pieces and where they go
    int m_numberGlyph = 0;        // the widest glyph a number prints
    int m_lineHeight = 0;
    std::array<int, 5> m_columns{}; // the blocks' and the patch's left edges
    int m_textHeight = 0;
    mutable std::vector<unsigned char> m_canvas; // the whole probe, composed before it is drawn
};

namespace Detail {

/// The probe's four blocks for `values`, printed as the C library prints in its "C" locale.
VARNEL_LIBWX_EXPORT std::array<std::string, 4> pixelProbeTexts(const PixelProbeValues& values);

/// Where a probe of `size` goes for a pointer at `pointer` on `monitor`: `offset` right of and
/// below the pointer, flipped to the left of (above) it where it would pass the monitor's right
/// (bottom) edge, then pulled inside the monitor (to its left or top edge when it is larger).
VARNEL_LIBWX_EXPORT wxPoint pixelProbePosition(const wxRect& monitor, wxSize size, wxPoint pointer,
                                               int offset);

} // namespace Detail
} // namespace Varnel::Wx
