#include <varnellibwx/widgets/colorpickerbutton.h>

#include <varnellib/native/process.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/colormodel.h>
#include <varnellibwx/widgets/colorpicker.h>

#include <wx/clipbrd.h>
#include <wx/dcbuffer.h>
#include <wx/menu.h>
#include <wx/weakref.h>

#include <cstring>

namespace Varnel::Wx {

namespace Detail {

namespace {
constexpr size_t kRgbBytes = sizeof(Rgb);
static_assert(kRgbBytes == 16, "four 32-bit floats, nothing between them");
} // namespace

RgbDataObject::RgbDataObject(const Rgb& color) : wxDataObjectSimple(format()), m_color(color) {}

const wxDataFormat& RgbDataObject::format() {
    static const wxDataFormat registered(kRgbFormatName);
    return registered;
}

size_t RgbDataObject::GetDataSize() const {
    return kRgbBytes;
}

bool RgbDataObject::GetDataHere(void* buffer) const {
    std::memcpy(buffer, &m_color, kRgbBytes);
    return true;
}

bool RgbDataObject::SetData(size_t length, const void* buffer) {
    if (!buffer || length < kRgbBytes)
        return false;
    std::memcpy(&m_color, buffer, kRgbBytes);
    return true;
}

ColorPickerButtonDropTarget::ColorPickerButtonDropTarget(ColorPickerButton& button)
    : wxDropTarget(new RgbDataObject), m_button(button) {
    SetDefaultAction(wxDragCopy);
}

wxDragResult ColorPickerButtonDropTarget::OnDragOver(wxCoord, wxCoord, wxDragResult proposed) {
    return m_button.IsThisEnabled() ? proposed : wxDragNone;
}

wxDragResult ColorPickerButtonDropTarget::OnData(wxCoord, wxCoord, wxDragResult proposed) {
    // A disabled swatch takes nothing, as it takes no paste; a refused drop answers "none" so
    // that the source does not take its colour for delivered.
    if (!m_button.IsThisEnabled() || !GetData())
        return wxDragNone;
    m_button.receive(static_cast<RgbDataObject*>(GetDataObject())->color());
    return proposed;
}

RgbBytes stripeColor(RgbBytes color) {
    const auto shift = [](uint8 c) {
        return static_cast<uint8>(c < 31 ? c + 30 : c - 30);
    };
    return {shift(color.r), shift(color.g), shift(color.b)};
}

} // namespace Detail

namespace {

constexpr int kStripePeriod = 10;
constexpr int kStripeWidth = 5;
enum MenuId { kCopy = wxID_HIGHEST + 1, kPaste };

wxPoint& lastPosition() {
    static wxPoint position = wxDefaultPosition;
    return position;
}

} // namespace

ColorPickerButton::ColorPickerButton(wxWindow* parent, const String& title, wxSize size,
                                     bool enabled)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, scaleByDpi(size),
              wxTAB_TRAVERSAL | wxBORDER_NONE),
      m_title(title), m_enabled(enabled) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, &ColorPickerButton::onPaint, this);
    Bind(wxEVT_ERASE_BACKGROUND, [](wxEraseEvent&) {});
    Bind(wxEVT_LEFT_DOWN, &ColorPickerButton::onLeftDown, this);
    Bind(wxEVT_LEFT_DCLICK, &ColorPickerButton::onLeftDown, this);
    Bind(wxEVT_LEFT_UP, &ColorPickerButton::onLeftUp, this);
    Bind(wxEVT_LEAVE_WINDOW, &ColorPickerButton::onLeave, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [](wxMouseCaptureLostEvent&) {});
    Bind(wxEVT_CONTEXT_MENU, &ColorPickerButton::onContextMenu, this);
    SetDropTarget(new Detail::ColorPickerButtonDropTarget(*this));
    wxPanel::Enable(enabled);
}

ColorPickerButton::~ColorPickerButton() {
    if (HasCapture())
        ReleaseMouse();
    // Destroyed while its picker is open (its parent went): the toolkit would delete the picker
    // with its parent in the middle of the picker's modal loop and then use it. The picker is let
    // go instead, told nothing more about this swatch, and ended; the loop's caller destroys it.
    if (m_openPicker) {
        m_openPicker->callOnLiveChange({});
        m_openPicker->callOnAddColor({});
        m_openPicker->callOnConfirm({});
        RemoveChild(m_openPicker);
        m_openPicker->EndModal(wxID_CANCEL);
    }
}

void ColorPickerButton::setColor(const Rgb& color, bool notify) {
    m_committed = m_displayed = color;
    Refresh(false);
    Update();
    if (!notify)
        return;
    m_onCommittedChange(color);
    m_onLiveChange(color);
}

bool ColorPickerButton::Enable(bool enable) {
    m_enabled = enable;
    const bool changed = wxPanel::Enable(enable);
    Refresh(false);
    return changed;
}

void ColorPickerButton::receive(const Rgb& color) {
    m_committed = m_displayed = color;
    Refresh(false);
    m_onCommittedChange(color);
    m_onLiveChange(color);
}

wxPoint ColorPickerButton::lastPickerPosition() {
    return lastPosition();
}

void ColorPickerButton::paint(wxDC& dc, wxSize size) const {
    dc.SetPen(*wxBLACK_PEN);
    dc.DrawRectangle(wxPoint(0, 0), size);
    const RgbBytes fill = Detail::toRgbBytes(m_displayed);
    const wxColour colour(fill.r, fill.g, fill.b);
    // A swatch of two pixels or less has only its outline: a negative size would draw flipped.
    if (size.x <= 2 || size.y <= 2)
        return;
    dc.SetPen(wxPen(colour));
    dc.SetBrush(wxBrush(colour));
    dc.DrawRectangle(1, 1, size.x - 2, size.y - 2);
    if (m_enabled)
        return;
    // Point by point, as one-pixel fills: exact pixels whatever the context's line rules.
    const RgbBytes stripe = Detail::stripeColor(fill);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxColour(stripe.r, stripe.g, stripe.b)));
    for (int y = 1; y < size.y - 1; ++y)
        for (int x = 1; x < size.x - 1; ++x)
            if ((x + y) % kStripePeriod < kStripeWidth)
                dc.DrawRectangle(x, y, 1, 1);
}

void ColorPickerButton::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    paint(dc, GetClientSize());
}

void ColorPickerButton::onLeftDown(wxMouseEvent&) {
    if (!HasCapture())
        CaptureMouse();
}

void ColorPickerButton::onLeave(wxMouseEvent& event) {
    event.Skip();
    if (!HasCapture())
        return;
    // The drag takes the pointer over: the release that ends it is no click on this swatch.
    ReleaseMouse();
    Detail::RgbDataObject data(m_committed);
    wxDropSource source(data, this);
    source.DoDragDrop(wxDrag_CopyOnly);
}

void ColorPickerButton::onLeftUp(wxMouseEvent& event) {
    if (!HasCapture())
        return;
    ReleaseMouse();
    if (wxRect(GetClientSize()).Contains(event.GetPosition()))
        openPicker();
}

void ColorPickerButton::openPicker() {
    auto* picker =
        new ColorPicker(this, String(L"Color Selector: ") + m_title, lastPosition(), m_committed,
                        ColorPicker::DialogType::Normal, ColorPicker::ColorFormat::Rgb);
    picker->callOnLiveChange([this](const Rgb& color) {
        m_onLiveChange(color);
        m_displayed = color;
        Refresh(false);
        if (isMainThread())
            Update(); // the swatch follows a slider's drag
    });
    picker->callOnAddColor([this](const Rgb& color) {
        m_committed = m_displayed = color;
        Refresh(false);
        m_onCommittedChange(color);
    });
    // "OK" keeps what the picker shows: the live change before it brought it here.
    picker->callOnConfirm([this] {
        m_committed = m_displayed;
        m_onCommittedChange(m_committed);
    });
    // Where the user left it, read while it is still on screen.
    picker->callOnClosed([picker] { lastPosition() = picker->GetPosition(); });
    const wxWeakRef<ColorPickerButton> self(this);
    m_openPicker = picker;
    picker->ShowModal();
    // The swatch may have been destroyed while the picker was open; it let the picker go.
    if (self)
        m_openPicker = nullptr;
    picker->Destroy();
}

Optional<Rgb> ColorPickerButton::clipboardColor() {
    wxClipboardLocker locker;
    if (!locker)
        return std::nullopt;
    if (wxTheClipboard->IsSupported(Detail::RgbDataObject::format())) {
        Detail::RgbDataObject data;
        if (wxTheClipboard->GetData(data))
            return data.color();
    }
    if (wxTheClipboard->IsSupported(wxDF_UNICODETEXT)) {
        wxTextDataObject text;
        if (wxTheClipboard->GetData(text))
            return Detail::parsePastedColor(toVarnelString(text.GetText()));
    }
    return std::nullopt;
}

bool ColorPickerButton::copyToClipboard(const Rgb& color) {
    wxClipboardLocker locker;
    if (!locker)
        return false;
    auto* both = new wxDataObjectComposite;
    both->Add(new Detail::RgbDataObject(color), true);
    both->Add(new wxTextDataObject(toWxString(Detail::formatHexColor(color))));
    return wxTheClipboard->SetData(both);
}

void ColorPickerButton::onContextMenu(wxContextMenuEvent&) {
    wxMenu menu;
    menu.Append(kCopy, "Copy");
    menu.Append(kPaste, "Paste");
    menu.Enable(kPaste, m_enabled && clipboardColor().has_value());
    const int chosen = GetPopupMenuSelectionFromUser(menu);
    if (chosen == kCopy) {
        copyToClipboard(m_committed);
    } else if (chosen == kPaste) {
        if (const Optional<Rgb> pasted = clipboardColor())
            receive(*pasted);
    }
}

} // namespace Varnel::Wx
