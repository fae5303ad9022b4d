#include <varnellibwx/widgets/eyedropperbutton.h>

#include <varnellib/base/stopexception.h>
#include <varnellib/native/colorportal.h>
#include <varnellib/native/escapekey.h>
#include <varnellib/native/screen.h>
#include <varnellibwx/bitmapconversion.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/resources/resources.h>
#include <varnellibwx/widgets/colormodel.h>

#include <wx/dcbuffer.h>

#include <algorithm>
#include <iterator>

namespace Varnel::Wx {

namespace Detail {

int averagingChoiceFor(int radius) {
    radius = std::max(radius, 0);
    for (int row = static_cast<int>(std::size(kAveragingChoices)) - 1; row >= 0; --row)
        if (kAveragingChoices[row].radius <= radius)
            return row;
    // The first row's radius is 0, so a clamped radius always finds a row.
    Varnel::Detail::throwStopException("widgets/colorpicker", 869);
}

Bucket samplingRegion(Pixel screenPoint, int radius) {
    return {screenPoint.x - radius, screenPoint.y - radius, 2 * radius + 1, 2 * radius + 1};
}

int eyeDropperFaceInset(Flags<RawaBorderState> state) {
    return state.has(RawaBorderState::Flat) ? 1 : 2;
}

} // namespace Detail

namespace {

// The idle face's size, in unscaled pixels, and the button's around it.
constexpr int kIconSize = 20;
constexpr int kButtonSize = kIconSize + 4;

} // namespace

EyeDropperButton::EyeDropperButton(wxWindow* parent, int id, const wxBitmap& icon,
                                   const String& help)
    : RawaBorder(parent, id, "eyedropper", RawaBorderState::Enabled), TooltipWindow(this),
      m_icon(icon) {
    const wxSize size = scaleByDpi(wxSize(kButtonSize, kButtonSize));
    SetSize(size);
    SetMinSize(size);
    // Bound after the border's own paint handler, so it runs first and replaces it.
    Bind(wxEVT_PAINT, &EyeDropperButton::onFacePaint, this);
    // A quick second press comes as a double click: it presses all the same.
    Bind(wxEVT_LEFT_DOWN, &EyeDropperButton::onLeftDown, this);
    Bind(wxEVT_LEFT_DCLICK, &EyeDropperButton::onLeftDown, this);
    Bind(wxEVT_MOTION, &EyeDropperButton::onMotion, this);
    Bind(wxEVT_LEFT_UP, &EyeDropperButton::onLeftUp, this);
    Bind(wxEVT_RIGHT_DOWN, &EyeDropperButton::onRightDown, this);
    // The hook sees Escape before a dialog around the button would take it as its cancel key.
    Bind(wxEVT_CHAR_HOOK, &EyeDropperButton::onKeyDown, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, &EyeDropperButton::onCaptureLost, this);
    m_portal = screenAccess() == ScreenAccess::Portal;
    setTooltip(help);
    // The portal is asked once per process and answers later: until then the button can pick
    // (a pick without a portal only ends empty), and it changes its look when the answer comes.
    if (m_portal) {
        const wxWeakRef<EyeDropperButton> self(this);
        askColorPortal([self](bool available) {
            if (EyeDropperButton* button = self.get(); button && !available)
                button->showUnavailable();
        });
    }
}

void EyeDropperButton::showUnavailable() {
    if (m_unavailable)
        return;
    m_unavailable = true;
    // Looks disabled, yet still shows why when the pointer rests on it.
    m_state.set(RawaBorderState::Enabled, false);
    setTooltip(String(kNoPortalHelp));
    Refresh(false);
}

EyeDropperButton::~EyeDropperButton() {
    // Destroyed in the middle of a pick: let go of the pointer and the window's keys, call nobody.
    if (HasCapture())
        ReleaseMouse();
    stopWatchingKeys();
}

wxBitmap EyeDropperButton::icon(Icon which) {
    const bool large = scaleByDpi(1) >= 2;
    const bool inverse = which == Icon::PickInverse;
    const unsigned char* data =
        inverse ? (large ? Resources::kEyeDropperInverse2xPng : Resources::kEyeDropperInversePng)
                : (large ? Resources::kEyeDropperColor2xPng : Resources::kEyeDropperColorPng);
    const int size = inverse ? (large ? Resources::kEyeDropperInverse2xPngSize
                                      : Resources::kEyeDropperInversePngSize)
                             : (large ? Resources::kEyeDropperColor2xPngSize
                                      : Resources::kEyeDropperColorPngSize);
    return convertMemoryToBitmap(data, size, wxBITMAP_TYPE_PNG);
}

void EyeDropperButton::setAveragingRadius(int radius) {
    m_averagingRadius = std::max(radius, 0);
}

Rgb EyeDropperButton::sampleAt(wxPoint client) const {
    return sampleAtScreen(ClientToScreen(client));
}

Rgb EyeDropperButton::sampleAtScreen(wxPoint screen) const {
    return Detail::averageSamples(getScreenRegionColors(
        Detail::samplingRegion(Pixel{screen.x, screen.y}, m_averagingRadius)));
}

void EyeDropperButton::paint(wxDC& dc, wxSize size) const {
    const int inset = Detail::eyeDropperFaceInset(m_state);
    const wxRect face = wxRect(wxPoint(0, 0), size).Deflate(inset);
    if (m_picking && m_portal) { // the desktop is picking: the icon on the highlight
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(toWxColour(GuiSkin().toggledBackground)));
        dc.DrawRectangle(face);
        if (m_icon.IsOk())
            dc.DrawBitmap(m_icon, face.GetTopLeft(), true);
    } else if (m_picking) {
        const RgbBytes c = Detail::toRgbBytes(m_sampledColor);
        const wxColour colour(c.r, c.g, c.b);
        dc.SetPen(wxPen(colour));
        dc.SetBrush(wxBrush(colour));
        dc.DrawRectangle(face);
    } else if (m_icon.IsOk()) {
        dc.DrawBitmap(m_icon, face.GetTopLeft(), true);
    }
}

void EyeDropperButton::onFacePaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(GetBackgroundColour()));
    dc.Clear();
    Varnel::Detail::paintRawaBorder(dc, GetClientSize(), m_state);
    paint(dc, GetClientSize());
}

void EyeDropperButton::onLeftDown(wxMouseEvent& event) {
    if (m_picking || HasCapture() || m_unavailable) {
        event.Skip();
        return;
    }
    if (m_portal) {
        startPortalPick();
        return;
    }
    m_picking = true;
    m_paintedFace.reset();
    // The button stays where it is during a pick; asking for its place on every motion would cost
    // a round trip to the X server each time.
    m_screenOrigin = ClientToScreen(wxPoint(0, 0));
    // Ended later, never inside the watch's own report.
    m_escapeWatch = std::make_unique<EscapeKeyWatch>([this] {
        CallAfter([this] {
            if (m_picking)
                endPick();
        });
    });
    CaptureMouse();
    SetCursor(wxCursor(wxCURSOR_CROSS));
    m_onPickStarted();
    m_focusToRestore = FindFocus();
    SetFocus();
}

void EyeDropperButton::startPortalPick() {
    m_picking = true;
    m_onPickStarted();
    m_focusToRestore = FindFocus();
    // Escape anywhere in the window ends the pick: the window's key hook sees it wherever the
    // focus is (there is no capture to hold the keys back, nor an X server to read them from).
    // The window closing (a picker's "Cancel" hides it) ends the pick too.
    m_keyWindow = wxGetTopLevelParent(this);
    if (m_keyWindow) {
        m_keyWindow->Bind(wxEVT_CHAR_HOOK, &EyeDropperButton::onWindowKey, this);
        m_keyWindow->Bind(wxEVT_SHOW, &EyeDropperButton::onWindowShown, this);
    }
    m_portalRequest = std::make_unique<ColorPortalRequest>(
        WindowHandle(wxGetTopLevelParent(this)->GetHandle()),
        [this](const ColorPortalRequest::Answer& answer) {
            if (!m_picking)
                return;
            if (answer && m_onPicked)
                m_onPicked(Rgb(srgbToLinear((*answer)[0]), srgbToLinear((*answer)[1]),
                               srgbToLinear((*answer)[2]), 1.f));
            endPick();
        });
    Refresh(false);
}

void EyeDropperButton::onMotion(wxMouseEvent& event) {
    if (!m_picking || m_portal)
        return;
    m_sampledColor = sampleAtScreen(m_screenOrigin + event.GetPosition());
    // The face shows the sample in 8 bits: while those stay the same (a flat area under the
    // pointer) the painted face is already right. Otherwise it repaints with the toolkit's next
    // frame rather than inside the motion: the pointer reports far more often than the screen
    // shows a frame, and every motion gets its read.
    const RgbBytes face = Detail::toRgbBytes(m_sampledColor);
    if (m_paintedFace == face)
        return;
    m_paintedFace = face;
    Refresh(false);
}

void EyeDropperButton::onLeftUp(wxMouseEvent& event) {
    if (!m_picking || m_portal)
        return;
    if (m_onPicked)
        m_onPicked(sampleAtScreen(m_screenOrigin + event.GetPosition()));
    endPick();
}

void EyeDropperButton::onRightDown(wxMouseEvent&) {
    if (m_picking)
        endPick();
}

void EyeDropperButton::onKeyDown(wxKeyEvent& event) {
    if (!m_picking) {
        event.Skip();
        return;
    }
    if (event.GetKeyCode() == WXK_ESCAPE)
        endPick();
}

void EyeDropperButton::onCaptureLost(wxMouseCaptureLostEvent&) {
    if (m_picking)
        endPick();
}

void EyeDropperButton::onWindowKey(wxKeyEvent& event) {
    if (m_picking && event.GetKeyCode() == WXK_ESCAPE)
        endPick();
    else
        event.Skip();
}

void EyeDropperButton::onWindowShown(wxShowEvent& event) {
    event.Skip();
    if (m_picking && !event.IsShown())
        endPick();
}

void EyeDropperButton::stopWatchingKeys() {
    if (wxWindow* window = m_keyWindow.get()) {
        window->Unbind(wxEVT_CHAR_HOOK, &EyeDropperButton::onWindowKey, this);
        window->Unbind(wxEVT_SHOW, &EyeDropperButton::onWindowShown, this);
    }
    m_keyWindow = nullptr;
}

void EyeDropperButton::endPick() {
    m_picking = false;
    m_escapeWatch.reset();
    m_portalRequest.reset(); // a late answer is ignored
    stopWatchingKeys();
    SetCursor(wxCursor(wxCURSOR_ARROW));
    if (HasCapture())
        ReleaseMouse();
    m_onPickEnded();
    if (wxWindow* focus = m_focusToRestore.get()) {
        m_focusToRestore = nullptr;
        focus->SetFocus();
    }
    Refresh(false);
}

} // namespace Varnel::Wx
