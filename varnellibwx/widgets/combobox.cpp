#include <varnellibwx/widgets/combobox.h>

#include <varnellib/base/timer.h>
#include <varnellib/native/outsideclick.h>

#include <varnellibwx/bitmapconversion.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/resources/resources.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/rawaborder.h>
#include <varnellibwx/windowutils.h>

#include <wx/control.h>
#include <wx/dcbuffer.h>
#include <wx/scrolwin.h>

#include <algorithm>
#include <cwctype>

namespace Varnel::Wx {

namespace {

constexpr int kRowHeight = 18;
constexpr int kScrollUnit = 6;
constexpr int kRowsTop = 2;
constexpr int kFieldHeight = 22;
constexpr int kTextIndent = 5;
constexpr int kArrowGap = 4;
const wxColour kHoverOutline(0, 114, 188);

wxBitmap loadArrow(const unsigned char* data, int size) {
    return scaleByDpi(convertMemoryToBitmap(data, size, wxBITMAP_TYPE_ANY));
}

bool isChooseKey(int keyCode) {
    return keyCode == WXK_RETURN || keyCode == WXK_NUMPAD_ENTER || keyCode == WXK_SPACE;
}

bool isNavigationKey(int keyCode) {
    switch (keyCode) {
    case WXK_UP:
    case WXK_DOWN:
    case WXK_HOME:
    case WXK_END:
    case WXK_PAGEUP:
    case WXK_PAGEDOWN:
        return true;
    default:
        return false;
    }
}

} // namespace

// ---- The list's canvas -----------------------------------------------------------------------

/// The rows of the list. It is only as large as the visible part; the scrolled window scrolls it
/// through a virtual height of all the rows, and it paints the rows its update region touches.
class ComboBoxDropdown::Canvas : public wxWindow {
public:
    Canvas(wxScrolledWindow* scroller, ComboBox::State* state, const GuiSkin& skin)
        : wxWindow(scroller, wxID_ANY), m_scroller(scroller), m_state(state),
          m_itemHeight(Detail::comboRowHeight()), m_hoverIndex(state->selectedIndex), m_skin(skin) {
        SetBackgroundStyle(wxBG_STYLE_PAINT);
        SetFont(setupStaticTextFont(GetFont(), {}));
        Bind(wxEVT_PAINT, &Canvas::onPaint, this);
        Bind(wxEVT_ERASE_BACKGROUND, [](wxEraseEvent&) {});
        Bind(wxEVT_MOTION, &Canvas::onMotion, this);
        Bind(wxEVT_LEFT_UP, &Canvas::onLeftUp, this);
    }

    int itemHeight() const { return m_itemHeight; }
    int hoverIndex() const { return m_hoverIndex; }
    void setHoverIndex(int index) {
        if (index == m_hoverIndex)
            return;
        refreshRow(m_hoverIndex);
        m_hoverIndex = index;
        refreshRow(m_hoverIndex);
    }
    /// How far the rows are scrolled, in pixels.
    int scrolledBy() const { return m_scroller->CalcUnscrolledPosition(wxPoint(0, 0)).y; }
    /// Scrolls just enough for `row` to be fully visible.
    void showRow(int row) {
        if (row < 0)
            return;
        const int unit = Detail::comboScrollUnit();
        const int top = m_itemHeight * row + kRowsTop, bottom = top + m_itemHeight;
        const int view = scrolledBy(), height = GetClientSize().y;
        if (top < view)
            m_scroller->Scroll(0, top / unit);
        else if (bottom > view + height)
            m_scroller->Scroll(0, (bottom - height + unit - 1) / unit);
    }

    void paint(wxDC& dc, const wxRect& area) const {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(toWxColour(m_skin.background)));
        dc.DrawRectangle(area);
        const int view = scrolledBy();
        const auto [first, last] = Detail::comboRowsIn(area.y + view, area.GetBottom() + view,
                                                       m_itemHeight, m_state->items.size());
        dc.SetFont(GetFont());
        const int width = GetClientSize().x;
        for (int row = first; row <= last; ++row) {
            const int y = m_itemHeight * row + kRowsTop - view;
            const wxRect rect(0, y, width, m_itemHeight);
            if (row == m_state->selectedIndex) {
                dc.SetPen(*wxTRANSPARENT_PEN);
                dc.SetBrush(wxBrush(toWxColour(m_skin.darkBackground)));
                dc.DrawRectangle(rect);
            }
            if (row == m_hoverIndex) {
                dc.SetPen(wxPen(kHoverOutline));
                dc.SetBrush(*wxTRANSPARENT_BRUSH);
                dc.DrawRectangle(rect);
            }
            const wxString label = toWxString(m_state->items[row].label);
            dc.SetTextForeground(toWxColour(m_skin.text));
            const wxDCClipper clip(dc, rect);
            dc.DrawText(label, scaleByDpi(kTextIndent),
                        y + (m_itemHeight - dc.GetCharHeight()) / 2);
        }
    }

private:
    void refreshRow(int row) {
        if (row < 0)
            return;
        RefreshRect(wxRect(0, m_itemHeight * row + kRowsTop - scrolledBy(), GetClientSize().x,
                           m_itemHeight),
                    false);
    }
    void onPaint(wxPaintEvent&) {
        wxAutoBufferedPaintDC dc(this);
        paint(dc, GetUpdateRegion().GetBox());
    }
    void onMotion(wxMouseEvent& event) {
        if (const Optional<int> row = Detail::comboRowAt(event.GetY() + scrolledBy(), m_itemHeight,
                                                         m_state->items.size()))
            setHoverIndex(*row);
    }
    void onLeftUp(wxMouseEvent& event) {
        const Optional<int> row =
            Detail::comboRowAt(event.GetY() + scrolledBy(), m_itemHeight, m_state->items.size());
        if (!row)
            return;
        m_state->selectedIndex = *row;
        ComboBox* combo = m_state->combo;
        combo->apply(true);
        combo->hideDropdown();
    }

    wxScrolledWindow* m_scroller;
    ComboBox::State* m_state;
    int m_itemHeight;
    int m_hoverIndex;
    GuiSkin m_skin;
};

// ---- The list --------------------------------------------------------------------------------

ComboBoxDropdown::ComboBoxDropdown(ComboBox* combo, ComboBox::State* state, const GuiSkin& skin)
    : wxFrame(combo, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
              wxBORDER_SIMPLE | wxSTAY_ON_TOP | wxFRAME_NO_TASKBAR),
      m_combo(combo), m_state(state) {
    const Varnel::Detail::FunctionElapsedTime timed(
        Timer(1000, {}), "Function call:", "Varnel::Wx::ComboBoxDropdown::ComboBoxDropdown");
    SetBackgroundColour(toWxColour(skin.background));
    m_scroller = new wxScrolledWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                      wxVSCROLL | wxBORDER_NONE);
    m_scroller->ShowScrollbars(wxSHOW_SB_NEVER, wxSHOW_SB_DEFAULT);
    m_scroller->SetBackgroundColour(toWxColour(skin.background));
    m_canvas = new Canvas(m_scroller, state, skin);
    m_scroller->SetTargetWindow(m_canvas);
    m_scroller->SetScrollRate(0, Detail::comboScrollUnit());
    m_scroller->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        m_canvas->SetSize(m_scroller->GetClientSize());
        event.Skip();
    });

    for (wxWindow* window : {static_cast<wxWindow*>(this), static_cast<wxWindow*>(m_scroller),
                             static_cast<wxWindow*>(m_canvas)}) {
        window->Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
            m_state->selectedIndex = m_canvas->hoverIndex();
            m_combo->Refresh(false);
            m_combo->step(event.GetWheelRotation());
            setHoverIndex(m_state->selectedIndex);
        });
        window->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
            if (!m_combo->handleKey(event.GetKeyCode()))
                event.Skip();
        });
        window->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
            if (!m_combo->handleKey(event.GetKeyCode()))
                event.Skip();
        });
        window->Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
            m_combo->tellWindowEvent(ComboBox::WindowEvent::FocusGained);
            event.Skip();
        });
        window->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
            event.Skip();
            m_combo->tellWindowEvent(ComboBox::WindowEvent::FocusLost);
            // Focus going to the field is the field's own click, which toggles the list itself.
            wxWindow* next = event.GetWindow();
            if (IsShown() && next != m_combo && (!next || wxGetTopLevelParent(next) != this))
                m_combo->hideDropdown();
        });
    }
    Hide();
}

ComboBoxDropdown::~ComboBoxDropdown() = default;

void ComboBoxDropdown::layoutFor(int width) {
    const int count = m_state->items.size();
    const int height = Detail::comboListHeight(count, rowHeight());
    m_canvas->SetVirtualSize(width, rowHeight() * count + kRowsTop);
    m_scroller->SetMinSize(wxSize(width, height));
    m_scroller->SetSize(width, height);
    m_scroller->SetScrollRate(0, Detail::comboScrollUnit());
    SetClientSize(width, height);
    m_scroller->SetSize(GetClientSize());
    m_canvas->SetSize(m_scroller->GetClientSize());
    m_scroller->Scroll(0, 0);
}

wxWindow* ComboBoxDropdown::canvas() const {
    return m_canvas;
}

int ComboBoxDropdown::hoverIndex() const {
    return m_canvas->hoverIndex();
}

void ComboBoxDropdown::setHoverIndex(int index) {
    m_canvas->setHoverIndex(index);
    m_canvas->showRow(index);
}

int ComboBoxDropdown::rowHeight() const {
    return m_canvas->itemHeight();
}

// ---- The field -------------------------------------------------------------------------------

ComboBox::ComboBox(wxWindow* parent, int id, int width, const Function<void(int)>& onSelect,
                   const Function<void(wxWindow*, WindowEvent)>& onWindowEvent, bool opensUpward)
    : wxPanel(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL),
      m_arrow(loadArrow(Resources::kComboArrowPng, Resources::kComboArrowPngSize)),
      m_disabledArrow(
          loadArrow(Resources::kComboArrowDisabledPng, Resources::kComboArrowDisabledPngSize)),
      m_state(std::make_unique<State>()), m_onWindowEvent(onWindowEvent),
      m_opensUpward(opensUpward) {
    m_state->onSelect = onSelect;
    m_state->combo = this;
    m_state->eventTarget = this;
    m_state->id = GetId();
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetFont(setupStaticTextFont(GetFont(), {}));

    Bind(wxEVT_PAINT, &ComboBox::onPaint, this);
    Bind(wxEVT_ENTER_WINDOW, [this](wxMouseEvent& event) {
        m_hovered = true;
        Refresh(false);
        event.Skip();
    });
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent& event) {
        m_hovered = false;
        Refresh(false);
        event.Skip();
    });
    Bind(wxEVT_LEFT_DOWN, &ComboBox::onMouseDown, this);
    // A quick second click toggles the list again, as the first did.
    Bind(wxEVT_LEFT_DCLICK, &ComboBox::onMouseDown, this);
    Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        Refresh(false);
        event.Skip();
    });
    Bind(wxEVT_MOUSEWHEEL, &ComboBox::onWheel, this);
    Bind(wxEVT_CHAR_HOOK, &ComboBox::onCharHook, this);

    // A panel with a child counts as a container whose native widget takes no focus; the combo
    // is a leaf that takes the keys itself (its only child is the floating list).
    SetCanFocus(true);

    const wxSize size(scaleByDpi(width), scaleByDpi(kFieldHeight));
    SetMinSize(size);
    SetSize(size);
}

ComboBox::~ComboBox() = default;

void ComboBox::SetFocus() {
    wxWindow::SetFocus();
}

void ComboBox::setData(ArrayView<const Item> items) {
    m_state->items = Stack<Item>(items);
    if (isDropdownShown())
        m_dropdown->layoutFor(GetClientSize().x);
    Refresh(false);
}

Optional<int> ComboBox::getSelectedId() const {
    if (m_state->selectedIndex == -1)
        return std::nullopt;
    return m_state->items[m_state->selectedIndex].id;
}

Optional<int> ComboBox::getSelectedIndex() const {
    const int index = m_state->selectedIndex;
    if (index < 0 || index >= getCount())
        return std::nullopt;
    return index;
}

void ComboBox::selectId(int id, bool notify) {
    m_state->selectedIndex = Detail::comboIndexOfId(m_state->items.view(), id);
    if (m_state->selectedIndex == -1)
        return;
    apply(notify);
}

void ComboBox::selectIndex(int index, bool notify) {
    m_state->selectedIndex = index;
    apply(notify);
}

bool ComboBox::isInside(wxPoint screenPoint) const {
    return GetScreenRect().Contains(screenPoint) ||
           (m_dropdown && m_dropdown->IsShown() &&
            m_dropdown->GetScreenRect().Contains(screenPoint));
}

bool ComboBox::Enable(bool enable) {
    if (!enable && isDropdownShown())
        hideDropdown();
    const bool changed = wxPanel::Enable(enable);
    Refresh(false);
    return changed;
}

void ComboBox::setAvailable(bool available) {
    if (!available && isDropdownShown())
        hideDropdown();
    m_available = available;
    Refresh(false);
}

bool ComboBox::isDropdownShown() const {
    return m_dropdown && m_dropdown->IsShown();
}

void ComboBox::apply(bool notify) {
    const int index = m_state->selectedIndex;
    if (index == -1)
        return;
    // An index outside the items (selectIndex is unchecked) repaints but reports nothing.
    if (notify && index >= 0 && index < getCount()) {
        const int itemId = m_state->items[index].id;
        wxCommandEvent event(wxEVT_COMBOBOX, m_state->id);
        event.SetEventObject(m_state->eventTarget);
        event.SetInt(index);
        event.SetExtraLong(itemId);
        m_state->eventTarget->GetEventHandler()->ProcessEvent(event);
        m_state->onSelect(itemId);
    }
    Refresh(true);
    if (isDropdownShown())
        m_dropdown->canvas()->Refresh(false);
}

void ComboBox::toggleDropdown() {
    if (isDropdownShown())
        hideDropdown();
    else
        showDropdown();
}

void ComboBox::showDropdown() {
    // An empty list has nothing to show.
    if (getCount() == 0)
        return;
    // Made on first opening: a top-level window costs more than the rest of a combo, and most
    // combos of a dialog are never opened.
    if (!m_dropdown)
        m_dropdown = new ComboBoxDropdown(this, m_state.get(), m_skin);
    m_dropdown->layoutFor(GetClientSize().x);
    const Bucket area = getMonitorRegionByWindow(this, MonitorRegionType::WorkArea);
    m_dropdown->Move(Detail::comboDropdownPosition(GetScreenRect(), m_dropdown->GetSize(),
                                                   wxRect(area.x, area.y, area.width, area.height),
                                                   m_opensUpward));
    m_dropdown->Show();
    m_dropdown->setHoverIndex(m_state->selectedIndex);
    m_dropdown->canvas()->Refresh(false);
    // A press anywhere but on the list and the field closes it.
    m_dropdown->m_outsideWatch =
        std::make_unique<OutsideClickWatch>(getWindowNativeHandle(m_dropdown), [this](Pixel at) {
            if (!GetScreenRect().Contains(wxPoint(at.x, at.y)))
                CallAfter([this] { hideDropdown(); });
        });
    tellWindowEvent(WindowEvent::DropdownShown);
    Refresh(false);
}

void ComboBox::hideDropdown() {
    if (!isDropdownShown())
        return;
    m_dropdown->m_outsideWatch.reset();
    m_dropdown->Hide();
    tellWindowEvent(WindowEvent::DropdownHidden);
    Refresh(false);
}

bool ComboBox::handleKey(int keyCode) {
    const bool open = isDropdownShown();
    if (open && keyCode == WXK_ESCAPE) {
        hideDropdown();
        return true;
    }
    if (isChooseKey(keyCode)) {
        if (!open) {
            showDropdown();
        } else if (const int hover = m_dropdown->hoverIndex(); hover >= 0 && hover < getCount()) {
            m_state->selectedIndex = hover;
            apply(true);
            hideDropdown();
        }
        return true;
    }
    const int from = open ? m_dropdown->hoverIndex() : m_state->selectedIndex;
    const Optional<int> to = Detail::comboKeyStep(keyCode, from, m_state->items.view());
    if (to) {
        if (open) {
            m_dropdown->setHoverIndex(*to);
        } else {
            m_state->selectedIndex = *to;
            apply(true);
        }
    }
    return to.has_value() || isNavigationKey(keyCode);
}

void ComboBox::step(int rotation) {
    if (const Optional<int> next =
            Detail::comboWheelStep(m_state->selectedIndex, getCount(), rotation)) {
        m_state->selectedIndex = *next;
        apply(true);
    }
}

void ComboBox::tellWindowEvent(WindowEvent event) {
    m_onWindowEvent(m_dropdown, event);
}

void ComboBox::paint(wxDC& dc, wxSize size) const {
    const bool enabled = usable();
    dc.SetBackground(wxBrush(toWxColour(m_skin.background)));
    dc.Clear();
    Flags<RawaBorderState> state;
    state.set(RawaBorderState::Enabled, enabled)
        .set(RawaBorderState::Hovered, enabled && m_hovered);
    Varnel::Detail::paintRawaBorder(dc, size, state);

    const wxBitmap& arrow = enabled ? m_arrow : m_disabledArrow;
    const int arrowX = size.x - arrow.GetWidth() - scaleByDpi(kArrowGap);
    if (arrow.IsOk())
        dc.DrawBitmap(arrow, arrowX, (size.y - arrow.GetHeight()) / 2, true);
    const int index = m_state->selectedIndex;
    if (index < 0 || index >= getCount())
        return;
    dc.SetFont(GetFont());
    dc.SetTextForeground(toWxColour(enabled ? m_skin.text : m_skin.disabledText));
    const int room = arrowX - 2 * scaleByDpi(kTextIndent);
    const wxString label = wxControl::Ellipsize(toWxString(m_state->items[index].label), dc,
                                                wxELLIPSIZE_END, std::max(room, 0));
    dc.DrawText(label, scaleByDpi(kTextIndent), (size.y - dc.GetCharHeight()) / 2);
}

void ComboBox::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    paint(dc, GetClientSize());
}

void ComboBox::onMouseDown(wxMouseEvent&) {
    if (!usable())
        return;
    SetFocus();
    toggleDropdown();
}

void ComboBox::onWheel(wxMouseEvent& event) {
    if (usable())
        step(event.GetWheelRotation());
}

void ComboBox::onCharHook(wxKeyEvent& event) {
    if (!usable() || !handleKey(event.GetKeyCode()))
        event.Skip();
}

namespace Detail {

int comboScrollUnit() {
    return scaleByDpi(kScrollUnit);
}

int comboRowHeight() {
    const int unit = comboScrollUnit();
    return (scaleByDpi(kRowHeight) + unit - 1) / unit * unit;
}

int comboListHeight(int count, int rowHeight) {
    return rowHeight * std::min(std::max(count, 0), kComboVisibleRows) + kRowsTop;
}

Optional<int> comboRowAt(int y, int rowHeight, int count) {
    if (rowHeight <= 0 || y < kRowsTop)
        return std::nullopt;
    const int row = (y - kRowsTop) / rowHeight;
    if (row >= count)
        return std::nullopt;
    return row;
}

std::pair<int, int> comboRowsIn(int top, int bottom, int rowHeight, int count) {
    if (rowHeight <= 0 || count <= 0)
        return {0, -1};
    const int first = std::max(0, (top - kRowsTop) / rowHeight);
    const int last = std::min(count - 1, std::max(-1, (bottom - kRowsTop) / rowHeight));
    return {first, last};
}

int comboIndexOfId(ArrayView<const ComboBox::Item> items, int id) {
    int found = -1;
    for (int i = 0; i < items.size(); ++i)
        if (items[i].id == id)
            found = i;
    return found;
}

Optional<int> comboWheelStep(int index, int count, int rotation) {
    if (rotation < 0) {
        if (index + 1 < count)
            return index + 1;
    } else if (index > 0 && index < count) {
        return index - 1;
    }
    return std::nullopt;
}

Optional<int> comboKeyStep(int keyCode, int index, ArrayView<const ComboBox::Item> items) {
    const int count = items.size();
    if (count == 0)
        return std::nullopt;
    const int last = count - 1;
    int to = index;
    switch (keyCode) {
    case WXK_UP:
        to = index > 0 ? std::min(index - 1, last) : index;
        break;
    case WXK_DOWN:
        to = index < last ? index + 1 : index;
        break;
    case WXK_HOME:
        to = 0;
        break;
    case WXK_END:
        to = last;
        break;
    case WXK_PAGEUP:
        to = std::clamp(index - kComboVisibleRows, 0, last);
        break;
    case WXK_PAGEDOWN:
        to = std::clamp(index + kComboVisibleRows, 0, last);
        break;
    default: {
        if (keyCode <= 0 || keyCode > 0xFFFF || !std::iswalnum(static_cast<wint_t>(keyCode)))
            return std::nullopt;
        const auto wanted = std::towupper(static_cast<wint_t>(keyCode));
        for (int offset = 1; offset <= count; ++offset) {
            const int candidate = ((index < 0 ? -1 : index) + offset) % count;
            const String& label = items[candidate].label;
            if (!label.isEmpty() && std::towupper(static_cast<wint_t>(label[0])) == wanted) {
                to = candidate;
                break;
            }
        }
    }
    }
    if (to == index)
        return std::nullopt;
    return to;
}

wxPoint comboDropdownPosition(const wxRect& field, wxSize listSize, const wxRect& workArea,
                              bool opensUpward) {
    const int below = field.GetBottom() + 1, above = field.y - listSize.y;
    const bool fitsBelow = below + listSize.y <= workArea.GetBottom() + 1;
    const bool fitsAbove = above >= workArea.y;
    const bool up = opensUpward ? (fitsAbove || !fitsBelow) : (!fitsBelow && fitsAbove);
    const wxPoint wanted(field.x, up ? above : below);
    return Detail::smartPosition(workArea, listSize, {wanted.x, wanted.y});
}

} // namespace Detail
} // namespace Varnel::Wx
