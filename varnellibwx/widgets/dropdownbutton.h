#pragma once

#include <varnellib/base/array.h>
#include <varnellib/base/stack.h>
#include <varnellib/base/string.h>
#include <varnellibwx/widgets/button.h>

#include <wx/timer.h>

#include <array>

class wxFrame;

namespace Varnel::Wx {

/// A button with a menu of alternative actions. A click runs the main action; holding the button
/// for 150 ms opens a borderless popup of item buttons under it, and releasing the mouse over an
/// item runs that item's action (a release elsewhere counts as a click on the main button only
/// when it is over the button). A triangle in the bottom-right corner marks the menu. With
/// Behavior 2 the alternative last chosen swaps places with the main entry: it becomes the
/// button's label and action, and the former main entry takes its place in the menu. Entry 0 of
/// the arrays is the main button, entries 1 to n-1 the alternatives. Owned by its parent; the
/// popup belongs to the button.
class VARNEL_LIBWX_EXPORT DropdownButton : public Button {
public:
    /// Behavior 1 makes the main button a toggle; 2 swaps a chosen alternative with the main entry.
    DropdownButton(wxWindow* parent, const GuiSkin& skin, const Array<int>& ids,
                   const Array<wxString>& labels, const wxBitmap& bitmap,
                   const wxBitmap& disabledBitmap, const Array<Function<void()>>& actions,
                   Button::Behavior behavior, bool enabled);
    ~DropdownButton() override;

    /// Index 0 labels the main button, index k the item button k-1; an index past the items does
    /// nothing.
    void setText(int index, const String& text);

    bool isPopupShown() const;
    const Stack<Button*>& items() const { return m_items; }
    wxFrame* popup() const { return m_popup; }

    /// The value of Behavior that swaps a chosen alternative with the main entry.
    static constexpr int kSwapOnChoose = 2;

protected:
    void onButtonPaint(wxPaintEvent& event) override;
    void onMouseDown(wxMouseEvent& event) override;
    void onMouseUp(wxMouseEvent& event) override;
    void onCaptureLost(wxMouseCaptureLostEvent& event) override;

private:
    void onPressTimer(wxTimerEvent& event);
    /// The item under the pointer, given in this button's client coordinates; -1 for none.
    int itemAt(wxPoint pointer) const;

    Stack<Button*> m_items;
    wxFrame* m_popup = nullptr;
    wxTimer m_pressTimer;
    bool m_swapOnChoose;
    DropdownButton* m_pressedBy = nullptr;
};

namespace Detail {

/// The corners of the menu triangle of a button of `size`: (w-2, h-2), (w-s, h-2), (w-2, h-s)
/// with s = scaleByDpi(10).
VARNEL_LIBWX_EXPORT std::array<wxPoint, 3> dropdownTriangle(wxSize size);

} // namespace Detail
} // namespace Varnel::Wx
