// The combo box's rules without a display: row geometry, which rows a repaint touches, ids,
// wheel and key steps, and where the list goes on the monitor; the dropdown button's triangle.
#include <varnellibwx/dpi.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/dropdownbutton.h>

#include "prelude.h"

using namespace Varnel::Wx;
using namespace Varnel::Wx::Detail;

namespace {

Stack<ComboBox::Item> items(std::initializer_list<const wchar_t*> labels) {
    Stack<ComboBox::Item> result;
    int id = 100;
    for (const wchar_t* label : labels)
        result.push({String(label), id++});
    return result;
}

} // namespace

TEST(ComboBoxModel, RowsAreWholeScrollUnitsAndAtMost17Show) {
    EXPECT_EQ(comboScrollUnit(), 6);
    EXPECT_EQ(comboRowHeight(), 18);
    setDpiScaleOverride(2.0);
    EXPECT_EQ(comboRowHeight(), 36);
    setDpiScaleOverride(1.25); // 22 rounds up to 28 in units of 7
    EXPECT_EQ(comboScrollUnit(), 7);
    EXPECT_EQ(comboRowHeight(), 28);
    setDpiScaleOverride(0);

    EXPECT_EQ(comboListHeight(3, 18), 3 * 18 + 2);
    EXPECT_EQ(comboListHeight(30, 18), 17 * 18 + 2);
    EXPECT_EQ(comboListHeight(0, 18), 2);

    EXPECT_EQ(comboRowAt(1, 18, 10), std::nullopt);
    EXPECT_EQ(comboRowAt(2, 18, 10), 0);
    EXPECT_EQ(comboRowAt(19, 18, 10), 0);
    EXPECT_EQ(comboRowAt(20, 18, 10), 1);
    EXPECT_EQ(comboRowAt(2 + 18 * 10, 18, 10), std::nullopt);

    // A repaint of the visible part of 100,000 rows touches only those rows.
    EXPECT_EQ(comboRowsIn(180000, 180000 + 307, 18, 100000), std::make_pair(9999, 10016));
    EXPECT_EQ(comboRowsIn(0, 307, 18, 3), std::make_pair(0, 2));
    const auto none = comboRowsIn(0, 100, 18, 0);
    EXPECT_GT(none.first, none.second);
}

TEST(ComboBoxModel, IdsWheelAndKeys) {
    Stack<ComboBox::Item> list = items({L"Linear", L"Logarithmic", L"Cumulative", L"linear"});
    list[3].id = list[0].id; // a duplicate id: the last one wins
    EXPECT_EQ(comboIndexOfId(list.view(), 100), 3);
    EXPECT_EQ(comboIndexOfId(list.view(), 101), 1);
    EXPECT_EQ(comboIndexOfId(list.view(), 7), -1);

    EXPECT_EQ(comboWheelStep(-1, 4, -120), 0);
    EXPECT_EQ(comboWheelStep(3, 4, -120), std::nullopt);
    EXPECT_EQ(comboWheelStep(2, 4, 120), 1);
    EXPECT_EQ(comboWheelStep(-1, 4, 120), std::nullopt);
    EXPECT_EQ(comboWheelStep(-1, 0, -120), std::nullopt);

    const ArrayView<const ComboBox::Item> view = list.view();
    EXPECT_EQ(comboKeyStep(WXK_DOWN, 3, view), std::nullopt);
    EXPECT_EQ(comboKeyStep(WXK_UP, 2, view), 1);
    EXPECT_EQ(comboKeyStep(WXK_UP, 0, view), std::nullopt);
    EXPECT_EQ(comboKeyStep(WXK_END, 0, view), 3);
    EXPECT_EQ(comboKeyStep(WXK_HOME, 3, view), 0);
    // Letters jump to the next label starting with them, either case, wrapping around.
    EXPECT_EQ(comboKeyStep('L', 0, view), 1);
    EXPECT_EQ(comboKeyStep('L', 1, view), 3);
    EXPECT_EQ(comboKeyStep('L', 3, view), 0);
    EXPECT_EQ(comboKeyStep('Q', 0, view), std::nullopt);
    EXPECT_EQ(comboKeyStep(WXK_DOWN, -1, ArrayView<const ComboBox::Item>()), std::nullopt);

    Stack<ComboBox::Item> many;
    for (int i = 0; i < 100; ++i)
        many.push({String(L"x"), i});
    EXPECT_EQ(comboKeyStep(WXK_PAGEDOWN, 10, many.view()), 27);
    EXPECT_EQ(comboKeyStep(WXK_PAGEUP, 10, many.view()), 0);
}

TEST(ComboBoxModel, TheListStaysOnTheMonitor) {
    const wxRect work(0, 0, 1600, 1200);
    const wxSize list(200, 308);
    // Room below: directly under the field; preferring up: above it.
    EXPECT_EQ(comboDropdownPosition(wxRect(100, 100, 200, 22), list, work, false),
              wxPoint(100, 122));
    EXPECT_EQ(comboDropdownPosition(wxRect(100, 500, 200, 22), list, work, true),
              wxPoint(100, 192));
    // No room below: above. No room above either: as low as fits.
    EXPECT_EQ(comboDropdownPosition(wxRect(100, 1100, 200, 22), list, work, false),
              wxPoint(100, 792));
    EXPECT_EQ(comboDropdownPosition(wxRect(100, 100, 200, 22), list, work, true),
              wxPoint(100, 122));
    EXPECT_EQ(comboDropdownPosition(wxRect(100, 100, 200, 22), wxSize(200, 1190), work, false),
              wxPoint(100, 10));
    // Near the right edge: pulled in.
    EXPECT_EQ(comboDropdownPosition(wxRect(1500, 100, 200, 22), list, work, false),
              wxPoint(1400, 122));
}

TEST(DropdownButtonModel, TriangleSitsInTheBottomRightCorner) {
    const auto corners = dropdownTriangle(wxSize(73, 24));
    EXPECT_EQ(corners[0], wxPoint(71, 22));
    EXPECT_EQ(corners[1], wxPoint(63, 22));
    EXPECT_EQ(corners[2], wxPoint(71, 14));
    setDpiScaleOverride(2.0);
    EXPECT_EQ(dropdownTriangle(wxSize(146, 48))[1], wxPoint(126, 46));
    setDpiScaleOverride(0);
}
