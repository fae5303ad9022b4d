#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/optional.h>
#include <varnellib/base/string.h>
#include <varnellib/color/color.h>
#include <varnellib/native/windowhandle.h>
#include <varnellibwx/export.h>
#include <varnellibwx/widgets/rawaborder.h>
#include <varnellibwx/widgets/tooltip.h>

#include <wx/bitmap.h>
#include <wx/weakref.h>

#include <memory>

namespace Varnel {
class ColorPortalRequest;
class EscapeKeyWatch;
} // namespace Varnel

namespace Varnel::Wx {

/// The picker's screen sampler, in the bordered look. A left press starts a pick: the button
/// captures the mouse, shows the cross-hair, calls the pick-started callback and takes the
/// keyboard focus (remembering who had it). While the button is held, every motion samples the
/// screen under the pointer (anywhere, across every window and monitor) and the face shows the
/// sampled colour at once. The release samples once more and hands the colour to the picked
/// callback, if one is set. A right press, Escape, or the loss of the mouse capture cancel the pick
/// without a colour. Every pick ends the same way, in this order: the arrow cursor, the mouse
/// released, the pick-ended callback, the focus given back, a repaint.
///
/// A sample is the average of the (2R + 1) x (2R + 1) screen pixels centred on the pointer, R the
/// averaging radius, as linear colours; pixels off every monitor do not count. Between picks the
/// face shows the icon. Owned by its parent; destroyed while picking, it lets go of the mouse and
/// the cursor without calling anything.
///
/// Where no program may read the screen (a Wayland display: Varnel::screenAccess), a press asks
/// the desktop portal to pick instead: the compositor shows its own picker, the face shows the
/// icon on the highlight until the answer, and the answer (one sRGB pixel, decoded to linear as a
/// screen sample is) is handed over as a release would hand it; a cancelled, failed or malformed
/// answer, Escape, a right press or the window closing end the pick without a colour, and a late
/// answer is ignored.
/// There is no sampling while the pointer moves and no averaging. Without a portal the button
/// looks disabled, takes no presses and its tooltip says why (kNoPortalHelp): the portal is asked
/// once per process without blocking (askColorPortal), and the button changes when it answers.
class VARNEL_LIBWX_EXPORT EyeDropperButton : public RawaBorder, public TooltipWindow {
public:
    /// `icon` is the idle face (EyeDropperButton::icon gives the library's); `help` the tooltip.
    EyeDropperButton(wxWindow* parent, int id, const wxBitmap& icon, const String& help);
    ~EyeDropperButton() override;

    enum class Icon : int { PickColor = 0, PickInverse = 1 };
    /// The help texts of the picker's two eyedroppers.
    static constexpr const wchar_t* kPickColorHelp =
        L"Pick Color\n\nPicks pixel color from anywhere on the screen.\n\nTo use this picker, just "
        L"drag the button to anywhere on the screen. While in this pick mode, the sampled color "
        L"will be displayed in the button.";
    static constexpr const wchar_t* kPickInverseHelp =
        L"Pick Inverse\n\nPicks inverse of a pixel color from anywhere on the screen.\n\nThe "
        L"inverse color is useful for example to select a color tint for the image.\n\nTo use "
        L"this picker, just drag the button to anywhere on the screen. While in this pick mode, "
        L"the sampled color will be displayed in the button.";
    /// The tooltip of an eyedropper that cannot pick: the desktop has no colour-picking portal.
    static constexpr const wchar_t* kNoPortalHelp =
        L"Picking colours from the screen is not available: this desktop lets no program read "
        L"the screen, and no desktop portal answers to pick a colour instead.";

    /// The library's pipette faces, drawn for the display's scale (a double-size image at 2x).
    static wxBitmap icon(Icon which);

    int getAveragingRadius() const { return m_averagingRadius; }
    /// Negative radii count as 0.
    void setAveragingRadius(int radius);

    bool isPicking() const { return m_picking; }
    /// Whether picks go through the desktop portal (decided when the button is made).
    bool picksThroughPortal() const { return m_portal; }
    /// Whether the button can pick at all: false without a screen to read and without a portal.
    bool canPick() const { return !m_unavailable; }
    /// The last colour sampled; shown only while picking.
    const Rgb& sampledColor() const { return m_sampledColor; }
    /// The averaged colour around a point of this button's client area.
    Rgb sampleAt(wxPoint client) const;

    void callOnPicked(Function<void(const Rgb&)> onPicked) { m_onPicked = std::move(onPicked); }
    void callOnPickStarted(Function<void()> onStarted) { m_onPickStarted = std::move(onStarted); }
    void callOnPickEnded(Function<void()> onEnded) { m_onPickEnded = std::move(onEnded); }

    /// Only a pick gives the button the focus: the Tab key never stops on it.
    bool AcceptsFocusFromKeyboard() const override { return false; }

    /// Draws the face (not the border) into `dc` for a client area of `size`.
    void paint(wxDC& dc, wxSize size) const;

private:
    Rgb sampleAtScreen(wxPoint screen) const;
    void startPortalPick();
    void onWindowKey(wxKeyEvent& event);
    void onWindowShown(wxShowEvent& event);
    void stopWatchingKeys();
    /// No portal answered: the button looks disabled and its tooltip says why.
    void showUnavailable();
    void endPick();
    void onLeftDown(wxMouseEvent& event);
    void onMotion(wxMouseEvent& event);
    void onLeftUp(wxMouseEvent& event);
    void onRightDown(wxMouseEvent& event);
    void onKeyDown(wxKeyEvent& event);
    void onCaptureLost(wxMouseCaptureLostEvent& event);
    void onFacePaint(wxPaintEvent& event);

    bool m_picking = false;
    int m_averagingRadius = 0;
    wxWeakRef<wxWindow> m_focusToRestore; // cleared if that window goes during the pick
    Rgb m_sampledColor;
    wxPoint m_screenOrigin;           // of the client area, taken when a pick starts
    Optional<RgbBytes> m_paintedFace; // what the face shows of the pick, once painted
    wxBitmap m_icon;
    Function<void(const Rgb&)> m_onPicked;
    Function<void()> m_onPickStarted;
    Function<void()> m_onPickEnded;
    // Escape while the mouse is captured: the toolkit does not deliver the key to a capturing
    // window, so the pick reads it from the X server while it lasts.
    std::unique_ptr<EscapeKeyWatch> m_escapeWatch;
    bool m_portal = false;
    bool m_unavailable = false;
    std::unique_ptr<ColorPortalRequest> m_portalRequest; // while the portal picks
    wxWeakRef<wxWindow> m_keyWindow; // whose key hook ends a portal pick on Escape
};

namespace Detail {

/// One row of the averaging list: the radius R and the label the list shows.
struct AveragingChoice {
    int radius;
    const wchar_t* label;
};
/// The averaging list, in the order it shows; the row index is the list's selection.
inline constexpr AveragingChoice kAveragingChoices[] = {
    {0, L"Point Sample"},     {1, L"3 by 3 Average"},    {2, L"5 by 5 Average"},
    {5, L"11 by 11 Average"}, {15, L"31 by 31 Average"},
};
/// The row a radius selects: the last row whose radius is not above it, negative radii counting
/// as 0 (3 selects 5 by 5, 100 selects 31 by 31).
VARNEL_LIBWX_EXPORT int averagingChoiceFor(int radius);
/// The screen rectangle sampled around `screenPoint`: from the point minus R to the point plus R,
/// inclusive.
VARNEL_LIBWX_EXPORT Bucket samplingRegion(Pixel screenPoint, int radius);
/// How far the face lies inside the border: 1 pixel for a flat look, 2 otherwise.
VARNEL_LIBWX_EXPORT int eyeDropperFaceInset(Flags<RawaBorderState> state);

} // namespace Detail
} // namespace Varnel::Wx
