#pragma once

#include <varnellib/base/arrayview.h>
#include <varnellib/base/function.h>
#include <varnellib/base/optional.h>
#include <varnellib/base/stack.h>
#include <varnellib/base/string.h>
#include <varnellib/native/windowhandle.h>
#include <varnellibwx/export.h>
#include <varnellibwx/guiskin.h>

#include <wx/bitmap.h>
#include <wx/frame.h>
#include <wx/panel.h>

#include <memory>

class wxScrolledWindow;

namespace Varnel {
class OutsideClickWatch;
}

namespace Varnel::Wx {

class ComboBoxDropdown;

/// The library's read-only choice control: a field in the bordered look showing the selected
/// item's label (cut with an ellipsis when too long) and an arrow at its right; a click drops
/// down a floating list of the items under it (above it when there is no room below, and always
/// on the field's monitor), at most 17 rows high, scrolling for the rest. Items carry ids chosen
/// by the host; a selection is reported as a wxEVT_COMBOBOX event on the combo (int: the index,
/// extra long: the id) and then to onSelect with the id.
///
/// Mouse: a click on the field opens or closes the list; a release on a row chooses it and closes
/// the list; a press anywhere outside the list and the field, or the list losing the focus,
/// closes it without choosing. The wheel steps through the items over the field (when enabled)
/// and over the open list.
/// Keyboard (on the field, and on the list while it is open): Up and Down move the selection (on
/// the open list, the highlighted row), Home and End go to the first and last item, Page Up and
/// Page Down move by the visible rows (17), Enter or Space opens the list or chooses the
/// highlighted row, Escape closes the list without choosing, and a letter or digit jumps to the
/// next item whose label starts with it.
///
/// The window-event callback hears of the list: WindowEvent::DropdownShown and DropdownHidden
/// when it appears and goes, FocusGained and FocusLost when it gains or loses the keyboard focus;
/// the window passed is the list's. Owned by its parent; the list belongs to the combo.
class VARNEL_LIBWX_EXPORT ComboBox : public wxPanel {
public:
    /// One entry of the list: the text shown and the id reported when it is chosen.
    struct Item {
        String label;
        int id = 0;
    };

    enum class WindowEvent : int {
        DropdownShown = 0,
        DropdownHidden = 1,
        FocusGained = 2,
        FocusLost = 3
    };

    /// The state the combo shares with its list: one object, owned by the combo.
    struct State {
        Stack<Item> items;
        Function<void(int)> onSelect;
        ComboBox* combo = nullptr;
        wxWindow* eventTarget = nullptr;
        int selectedIndex = -1;
        int id = 0;
    };

    /// `width` is the field's width. With `opensUpward` the list opens above the field when it
    /// fits there (for combos at the bottom of a window), and below otherwise; without, the other
    /// way round.
    ComboBox(wxWindow* parent, int id, int width, const Function<void(int)>& onSelect,
             const Function<void(wxWindow*, WindowEvent)>& onWindowEvent, bool opensUpward = false);
    ~ComboBox() override;

    void setData(ArrayView<const Item> items);
    int getCount() const { return m_state->items.size(); }
    Optional<int> getSelectedId() const;
    Optional<int> getSelectedIndex() const;
    /// Selects the item with `id` (with duplicate ids the last one); an unknown id clears the
    /// selection without repainting or notifying.
    void selectId(int id, bool notify);
    /// Selects `index`, unchecked: an index outside the items leaves getSelectedIndex empty.
    void selectIndex(int index, bool notify);
    /// Whether a screen point is on the field or on the open list.
    bool isInside(wxPoint screenPoint) const;

    bool Enable(bool enable = true) override;
    /// An unavailable combo box looks and acts disabled (greyed, deaf to clicks, keys and the
    /// wheel) yet stays enabled, so that a tooltip on it can still say why: GTK gives a disabled
    /// window no pointer events at all.
    void setAvailable(bool available);
    bool isAvailable() const { return m_available; }
    /// The combo itself takes the keyboard focus (a panel would pass it to a child).
    bool AcceptsFocus() const override { return usable(); }
    bool AcceptsFocusFromKeyboard() const override { return usable(); }
    void SetFocus() override;

    bool isDropdownShown() const;
    /// The list, once it has been opened; nothing before.
    ComboBoxDropdown* dropdown() const { return m_dropdown; }
    /// Draws the field into `dc` for a client area of `size`.
    void paint(wxDC& dc, wxSize size) const;

private:
    friend class ComboBoxDropdown;

    void apply(bool notify);
    bool usable() const { return IsEnabled() && m_available; }
    void toggleDropdown();
    void showDropdown();
    void hideDropdown();
    /// Handles a key for the field or the open list; false when the key is not the combo's.
    bool handleKey(int keyCode);
    void step(int rotation);
    void tellWindowEvent(WindowEvent event);

    void onPaint(wxPaintEvent& event);
    void onMouseDown(wxMouseEvent& event);
    void onWheel(wxMouseEvent& event);
    void onCharHook(wxKeyEvent& event);

    ComboBoxDropdown* m_dropdown = nullptr;
    wxBitmap m_arrow;
    wxBitmap m_disabledArrow;
    std::unique_ptr<State> m_state;
    Function<void(wxWindow*, WindowEvent)> m_onWindowEvent;
    GuiSkin m_skin;
    bool m_hovered = false;
    bool m_available = true;
    bool m_opensUpward;
};

/// The floating list of a ComboBox: a borderless stay-on-top frame holding a scrolled window
/// whose canvas paints only the rows in its update region, so that opening and scrolling a list
/// cost what the visible rows cost, whatever the number of items.
class VARNEL_LIBWX_EXPORT ComboBoxDropdown : public wxFrame {
public:
    class Canvas;

    ComboBoxDropdown(ComboBox* combo, ComboBox::State* state, const GuiSkin& skin);
    ~ComboBoxDropdown() override;

    /// Sizes the list to the items (at most 17 rows visible) and the combo's width.
    void layoutFor(int width);
    int hoverIndex() const;
    void setHoverIndex(int index);
    int rowHeight() const;
    /// The window that shows the rows.
    wxWindow* canvas() const;
    wxScrolledWindow* scroller() const { return m_scroller; }

private:
    friend class ComboBox;

    ComboBox* m_combo;
    ComboBox::State* m_state;
    wxScrolledWindow* m_scroller = nullptr;
    Canvas* m_canvas = nullptr;
    std::unique_ptr<OutsideClickWatch> m_outsideWatch;
};

namespace Detail {

/// A row's height: scaleByDpi(18) rounded up to whole scroll units of scaleByDpi(6).
VARNEL_LIBWX_EXPORT int comboRowHeight();
VARNEL_LIBWX_EXPORT int comboScrollUnit();
/// At most this many rows show at once.
inline constexpr int kComboVisibleRows = 17;
/// The height of the list's visible part for `count` items.
VARNEL_LIBWX_EXPORT int comboListHeight(int count, int rowHeight);
/// The row at canvas height `y` (rows start 2 pixels down), or nothing.
VARNEL_LIBWX_EXPORT Optional<int> comboRowAt(int y, int rowHeight, int count);
/// The first and last rows that touch canvas heights top..bottom (inclusive), clipped to the
/// items; first > last when none does.
VARNEL_LIBWX_EXPORT std::pair<int, int> comboRowsIn(int top, int bottom, int rowHeight, int count);
/// The index of the last item with `id`, or -1.
VARNEL_LIBWX_EXPORT int comboIndexOfId(ArrayView<const ComboBox::Item> items, int id);
/// Where one wheel step from `index` goes: a negative rotation to the next item, a positive one
/// to the previous; nothing at the ends, and nothing upward from no selection.
VARNEL_LIBWX_EXPORT Optional<int> comboWheelStep(int index, int count, int rotation);
/// Where a navigation key moves from `index` (Up, Down, Home, End, Page Up, Page Down, or a
/// character jumping to the next label that starts with it, case-insensitively, wrapping
/// around); nothing for other keys or when nothing changes.
VARNEL_LIBWX_EXPORT Optional<int> comboKeyStep(int keyCode, int index,
                                               ArrayView<const ComboBox::Item> items);
/// Where the list of `listSize` goes for a field at `field` (screen) on `workArea`: below the
/// field, or above it when preferred or needed, then pulled inside the work area.
VARNEL_LIBWX_EXPORT wxPoint comboDropdownPosition(const wxRect& field, wxSize listSize,
                                                  const wxRect& workArea, bool opensUpward);

} // namespace Detail
} // namespace Varnel::Wx
