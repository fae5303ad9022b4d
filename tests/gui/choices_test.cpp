// The combo box and the dropdown button under real input: opening, choosing with the mouse and
// the keys, the wheel, closing, the events and callbacks in order, and bad data.
#include "guitest.h"

#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/dropdownbutton.h>

#include <wx/display.h>
#include <wx/scrolwin.h>

#include <chrono>

namespace {

Stack<ComboBox::Item> numbered(int count, const wchar_t* prefix = L"Item ") {
    Stack<ComboBox::Item> items;
    for (int i = 0; i < count; ++i)
        items.push({String(prefix) + String(std::to_wstring(i).c_str()), 1000 + i});
    return items;
}

class Choices : public GuiTest {
protected:
    ComboBox& makeCombo(int count, wxPoint at = wxPoint(20, 20)) {
        auto* combo = new ComboBox(
            &parent(), 77, 150, [this](int id) { log.record("select " + std::to_string(id)); },
            [this](wxWindow*, ComboBox::WindowEvent event) {
                static const char* names[] = {"shown", "hidden", "focus", "unfocus"};
                windowEvents.push_back(names[static_cast<int>(event)]);
            });
        combo->SetPosition(at);
        const Stack<ComboBox::Item> items = numbered(count);
        combo->setData(items.view());
        parent().Bind(wxEVT_COMBOBOX, [this, combo](wxCommandEvent& event) {
            EXPECT_EQ(event.GetEventObject(), combo);
            EXPECT_EQ(event.GetId(), 77);
            log.record("event " + std::to_string(event.GetInt()) + "/" +
                       std::to_string(event.GetExtraLong()));
        });
        pumpPending();
        return *combo;
    }
    static wxPoint rowCentre(int row) { return {20, 2 + 18 * row + 9}; }
    static bool scrolls(const ComboBoxDropdown& list) {
        return list.scroller()->GetScrollRange(wxVERTICAL) >
               list.scroller()->GetScrollThumb(wxVERTICAL);
    }
    bool opened(const ComboBox& combo) {
        return pumpUntil([&] { return combo.isDropdownShown(); }) &&
               pumpUntil([&] { return combo.dropdown()->IsShownOnScreen(); });
    }

    Input input;
    CallLog log;
    std::vector<std::string> windowEvents;
};

} // namespace

TEST_F(Choices, ClickOpensAndARowIsChosenWithTheMouse) {
    ComboBox& combo = makeCombo(30);
    input.click(combo, wxPoint(30, 10));
    ASSERT_TRUE(opened(combo));
    ComboBoxDropdown& list = *combo.dropdown();
    // 17 of 30 rows, directly under the field, as wide as it; the rest scroll.
    EXPECT_EQ(list.scroller()->GetSize().y, 17 * 18 + 2);
    EXPECT_EQ(list.GetScreenPosition(), combo.GetScreenPosition() + wxPoint(0, combo.GetSize().y));
    EXPECT_EQ(list.GetClientSize().x, combo.GetClientSize().x);
    EXPECT_TRUE(scrolls(list));

    input.moveTo(*list.canvas(), rowCentre(3));
    EXPECT_TRUE(pumpUntil([&] { return list.hoverIndex() == 3; }));
    input.click(*list.canvas(), rowCentre(3));
    EXPECT_TRUE(pumpUntil([&] { return !combo.isDropdownShown(); }));
    EXPECT_EQ(log.calls(), (Calls{"event 3/1003", "select 1003"}));
    EXPECT_EQ(combo.getSelectedId(), 1003);
    EXPECT_EQ(windowEvents.front(), "shown");
    EXPECT_EQ(windowEvents.back(), "hidden");

    // A click elsewhere closes it without choosing.
    input.click(combo, wxPoint(30, 10));
    ASSERT_TRUE(opened(combo));
    log.clear();
    input.click(parent(), wxPoint(400, 300));
    EXPECT_TRUE(pumpUntil([&] { return !combo.isDropdownShown(); }));
    EXPECT_TRUE(log.calls().empty());
}

// Which row a key or a wheel step chooses is the model's (unit-tested); here: that they reach it,
// choose only when the list is closed, and close it.
TEST_F(Choices, KeysAndTheWheelReachTheFieldAndTheOpenList) {
    ComboBox& combo = makeCombo(5);
    combo.SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return combo.HasFocus(); }));
    input.key(WXK_DOWN); // nothing selected: the first item, reported at once
    EXPECT_EQ(log.calls(), (Calls{"event 0/1000", "select 1000"}));

    log.clear();
    input.key(WXK_RETURN);
    ASSERT_TRUE(opened(combo));
    input.key(WXK_DOWN);
    EXPECT_EQ(combo.dropdown()->hoverIndex(), 1);
    EXPECT_TRUE(log.calls().empty()); // moving in the open list chooses nothing yet
    input.key(WXK_RETURN);
    EXPECT_TRUE(pumpUntil([&] { return !combo.isDropdownShown(); }));
    EXPECT_EQ(log.calls(), (Calls{"event 1/1001", "select 1001"}));

    log.clear();
    input.key(WXK_SPACE);
    ASSERT_TRUE(opened(combo));
    input.key(WXK_ESCAPE);
    EXPECT_TRUE(pumpUntil([&] { return !combo.isDropdownShown(); }));
    EXPECT_TRUE(log.calls().empty());

    const auto wheel = [](wxWindow& window) {
        sendWheel(window, -120);
    };
    wheel(combo);
    EXPECT_EQ(combo.getSelectedIndex(), 2);
    input.click(combo, wxPoint(30, 10));
    ASSERT_TRUE(opened(combo));
    wheel(*combo.dropdown()->canvas());
    EXPECT_EQ(combo.getSelectedIndex(), 3);
    EXPECT_EQ(combo.dropdown()->hoverIndex(), 3);
    combo.Disable();
    EXPECT_FALSE(combo.isDropdownShown());
    wheel(combo);
    EXPECT_EQ(combo.getSelectedIndex(), 3);
}

TEST_F(Choices, SelectionRulesAndBadDataStaySafe) {
    ComboBox& combo = makeCombo(0);
    input.click(combo, wxPoint(30, 10));
    pumpPending();
    EXPECT_FALSE(combo.isDropdownShown()); // nothing to show
    EXPECT_EQ(combo.getSelectedId(), std::nullopt);

    Stack<ComboBox::Item> items = numbered(3);
    items[0].label = String(std::wstring(5000, L'W').c_str());
    combo.setData(items.view());
    combo.selectId(4242, true);
    EXPECT_EQ(combo.getSelectedId(), std::nullopt);
    EXPECT_TRUE(log.calls().empty());
    combo.selectIndex(99, true);
    EXPECT_EQ(combo.getSelectedIndex(), std::nullopt);
    EXPECT_TRUE(log.calls().empty());
    combo.selectIndex(0, false);
    const wxImage field = captureOnScreen(combo); // the long label is cut, not overflowing
    EXPECT_EQ(pixelAt(field, 0, 1), wxColour(54, 54, 54));
    EXPECT_TRUE(combo.isInside(combo.GetScreenPosition() + wxPoint(3, 3)));
    EXPECT_FALSE(combo.isInside(combo.GetScreenPosition() + wxPoint(3, 300)));

    // At the bottom of the monitor the list opens above the field, still on the monitor.
    const wxRect work = wxDisplay(0u).GetClientArea();
    parent().SetSize(wxRect(work.GetRight() - 300, work.GetBottom() - 120, 300, 120));
    pumpUntil([&] { return parent().GetScreenRect().GetBottom() > work.GetBottom() - 130; });
    const Stack<ComboBox::Item> many = numbered(10000);
    combo.setData(many.view());
    combo.selectIndex(5000, false);
    input.click(combo, wxPoint(30, 10));
    ASSERT_TRUE(opened(combo));
    EXPECT_TRUE(work.Contains(combo.dropdown()->GetScreenRect()));
    EXPECT_LT(combo.dropdown()->GetScreenPosition().y, combo.GetScreenPosition().y);
    EXPECT_TRUE(combo.isInside(combo.dropdown()->GetScreenPosition() + wxPoint(5, 5)));
    EXPECT_EQ(combo.dropdown()->hoverIndex(), 5000);
    input.key(WXK_ESCAPE);
}

TEST_F(Choices, DropdownButtonOpensItsMenuOnlyAfterAHold) {
    CallLog actions;
    const Array<Function<void()>> functions = {actions.recorder<>("Reset"),
                                               actions.recorder<>("Reset All")};
    GuiSkin skin;
    skin.toggledBackground = {200, 40, 90};
    auto* button =
        new DropdownButton(&parent(), skin, Array<int>{1, 2}, Array<wxString>{"Reset", "Reset All"},
                           wxNullBitmap, wxNullBitmap, functions,
                           static_cast<Button::Behavior>(DropdownButton::kSwapOnChoose), true);
    button->SetPosition(wxPoint(20, 20));
    pumpPending();
    ASSERT_EQ(button->items().size(), 1);

    // A click runs the main action and never shows the menu.
    input.click(*button, wxPoint(10, 10));
    EXPECT_EQ(actions.calls(), Calls{"Reset"});
    EXPECT_FALSE(button->isPopupShown());

    // A hold shows it after 150 ms; releasing on the item runs the item only, and swaps.
    actions.clear();
    const auto pressed = std::chrono::steady_clock::now();
    input.press(*button, wxPoint(10, 10));
    ASSERT_TRUE(pumpUntil([&] { return button->isPopupShown(); }));
    EXPECT_GE(std::chrono::steady_clock::now() - pressed, 150ms);
    EXPECT_EQ(button->popup()->GetScreenPosition(),
              button->GetScreenPosition() + wxPoint(0, button->GetSize().y));
    Button& item = *button->items()[0];
    input.moveTo(item, wxPoint(10, 10));
    input.release();
    EXPECT_TRUE(pumpUntil([&] { return !button->isPopupShown(); }));
    EXPECT_EQ(actions.calls(), Calls{"Reset All"});
    EXPECT_EQ(button->GetLabel(), "Reset All");
    EXPECT_EQ(item.GetLabel(), "Reset");
    // The swapped action goes with the label.
    actions.clear();
    input.click(*button, wxPoint(10, 10));
    EXPECT_EQ(actions.calls(), Calls{"Reset All"});

    button->setText(1, String(L"Reset Curve"));
    EXPECT_EQ(item.GetLabel(), "Reset Curve");
    button->setText(5, String(L"ignored"));

    // The corner triangle in the toggled colour of the button's own skin.
    const wxImage seen = captureOnScreen(*button);
    const wxSize size = button->GetSize();
    EXPECT_EQ(pixelAt(seen, size.x - 4, size.y - 4), wxColour(200, 40, 90));
}
