// Text widgets and the check box: what they show and what their owners receive.
#include "guitest.h"
#include "input.h"
#include "pixels.h"
#include "pump.h"
#include "recorders.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textbutton.h>
#include <varnellibwx/widgets/textcontrol.h>
#include <varnellibwx/widgets/textctrl.h>

#include <wx/frame.h>

#include <algorithm>

using namespace Varnel;
using namespace Varnel::Wx;
using namespace Varnel::Test;

namespace {

const wchar_t* const kLongText =
    L"Tone curves map the brightness of every pixel through a smooth function that the user "
    L"shapes by dragging control points over the histogram of the image.";

// The brightest green channel in a rectangle: antialiased text reaches its colour only at the
// heart of its strokes.
int brightest(const wxImage& image, const wxRect& rect) {
    int value = 0;
    for (int y = rect.y; y < rect.GetBottom(); ++y)
        for (int x = rect.x; x < rect.GetRight(); ++x)
            value = std::max<int>(value, image.GetGreen(x, y));
    return value;
}

class TextWidgets : public GuiTest {
protected:
    Input input;
    CallLog log;
};

} // namespace

TEST_F(TextWidgets, WrapAlwaysStartsFromTheUnwrappedText) {
    auto* once = new StaticText(&parent(), wxID_ANY, String(kLongText));
    once->Wrap(300);
    auto* twice = new StaticText(&parent(), wxID_ANY, String(kLongText));
    twice->Wrap(100);
    const wxString narrow = twice->GetLabel();
    twice->Wrap(300);
    EXPECT_EQ(twice->GetLabel(), once->GetLabel());
    EXPECT_NE(narrow, once->GetLabel());
    EXPECT_EQ(twice->label(), String(kLongText));
}

TEST_F(TextWidgets, StaticTextDrawsInItsForegroundColour) {
    auto* text = new StaticText(&parent(), wxID_ANY, String(L"Exposure"), 0, TextFlag::Bold);
    text->SetPosition(wxPoint(10, 10));
    text->SetForegroundColour(wxColour(255, 40, 40));
    text->SetBackgroundColour(*wxBLACK);
    const wxImage seen = captureOnScreen(*text);
    int reddest = 0;
    for (int y = 0; y < seen.GetHeight(); ++y)
        for (int x = 0; x < seen.GetWidth(); ++x)
            if (seen.GetGreen(x, y) < 60)
                reddest = std::max<int>(reddest, seen.GetRed(x, y));
    EXPECT_GT(reddest, 200);
}

TEST_F(TextWidgets, LinksClickOnReleaseAndKeepTheirColoursByState) {
    auto* link = new TextButton(&parent(), wxID_ANY, String(L"Documentation"),
                                log.recorder<>("click"), wxPoint(20, 20));
    const wxColour normal(10, 20, 30), hover(40, 50, 60), visited(70, 80, 90);
    link->setNormalColour(normal);
    link->setHoverColour(hover);
    link->setVisitedColour(visited);
    EXPECT_EQ(link->GetForegroundColour(), normal);
    link->setVisited(true);
    EXPECT_EQ(link->GetForegroundColour(), visited);
    link->setNormalColour(wxColour(1, 2, 3)); // not shown while visited
    EXPECT_EQ(link->GetForegroundColour(), visited);
    pumpPending();

    // A release clicks it; no press has to come first.
    wxMouseEvent release(wxEVT_LEFT_UP);
    link->GetEventHandler()->ProcessEvent(release);
    EXPECT_EQ(log.calls().size(), 1u);
    input.moveTo(*link, wxPoint(5, 5));
    ASSERT_TRUE(pumpUntil([&] { return link->isHovered(); }));
    EXPECT_EQ(link->GetForegroundColour(), hover);
    input.moveTo(parent(), wxPoint(300, 250));
    ASSERT_TRUE(pumpUntil([&] { return !link->isHovered(); }));
    EXPECT_EQ(link->GetForegroundColour(), visited);

    link->setVisited(false);
    applySkinRecursive(&parent(), GuiSkin());
    EXPECT_EQ(link->GetForegroundColour(), wxColour(81, 167, 241));
}

TEST_F(TextWidgets, DisabledTextControlsShowTheirValueInTheSkinsColour) {
    auto* entry =
        new TextControl(&parent(), wxID_ANY, String(L"Reference white"), 0, {}, wxSize(200, 30));
    entry->SetPosition(wxPoint(10, 10));
    applySkinRecursive(&parent(), GuiSkin());
    entry->Disable();
    const wxImage seen = captureOnScreen(*entry);
    const int value = brightest(seen, wxRect(0, 0, 200, 30));
    EXPECT_LE(value, 110);
    EXPECT_GT(value, 90);
    // The text starts 3 pixels from the left edge.
    int firstInk = -1;
    for (int x = 0; x < 20 && firstInk < 0; ++x)
        for (int y = 0; y < 30; ++y)
            if (seen.GetGreen(x, y) > 80) {
                firstInk = x;
                break;
            }
    EXPECT_GE(firstInk, 3);
    EXPECT_LE(firstInk, 5);

    EXPECT_TRUE(entry->AcceptsFocusFromKeyboard() || !entry->IsEnabled());
    auto* readOnly = new TextControl(&parent(), wxID_ANY, String(L"fixed"), wxTE_READONLY);
    EXPECT_FALSE(readOnly->AcceptsFocusFromKeyboard());
    auto* editable = new TextControl(&parent(), wxID_ANY, String(L"free"));
    EXPECT_TRUE(editable->AcceptsFocusFromKeyboard());
}

TEST_F(TextWidgets, EntriesWearTheBorderedLooksFrameFocusedOrNot) {
    auto* entry = new TextControl(&parent(), wxID_ANY, String(L"Gain"), 0, {}, wxSize(120, -1));
    entry->SetPosition(wxPoint(10, 10));
    applySkinRecursive(&parent(), GuiSkin());
    const int middle = entry->GetSize().y / 2;
    wxImage seen = captureOnScreen(*entry);
    EXPECT_EQ(pixelAt(seen, 0, middle), wxColour(54, 54, 54));
    EXPECT_EQ(pixelAt(seen, 1, middle), wxColour(37, 37, 37));
    EXPECT_EQ(pixelAt(seen, 0, 0), wxColour(54, 54, 54)); // square, not rounded
    entry->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return entry->HasFocus(); }));
    seen = captureOnScreen(*entry);
    EXPECT_EQ(pixelAt(seen, 0, middle), wxColour(54, 54, 54));
    EXPECT_EQ(pixelAt(seen, 1, middle), wxColour(0, 114, 188));
}

TEST_F(TextWidgets, EveryTextWidgetWritesTheStandardFontAtTheLibrarysScale) {
    for (const double scale : {1.0, 2.0}) {
        Wx::Detail::setDpiScaleOverride(scale);
        const wxWindow* widgets[] = {new StaticText(&parent(), wxID_ANY, String(L"label")),
                                     new TextControl(&parent(), wxID_ANY, String(L"entry")),
                                     new TextCtrl(&parent(), wxID_ANY, "log", wxDefaultPosition,
                                                  wxDefaultSize, wxTE_MULTILINE)};
        for (const wxWindow* widget : widgets)
            EXPECT_EQ(widget->GetFont().GetPixelSize().y, scaleByDpi(12))
                << widget->GetClassInfo()->GetClassName() << " at " << scale;
    }
    Wx::Detail::setDpiScaleOverride(0);
}

TEST_F(TextWidgets, TextCtrlIsPlainDragsClampAndAppendsFollowOnlyAtTheEnd) {
    auto* text = new TextCtrl(&parent(), wxID_ANY, "first line\nsecond line\n", wxPoint(10, 10),
                              wxSize(300, 120), wxTE_MULTILINE | wxTE_RICH2);
    EXPECT_EQ(text->GetWindowStyle() & 0x8080, 0);
    pumpPending();

    // A drag from the first line to far below the control selects to the last visible
    // character and no further, and ends at the release outside.
    input.drag(*text, wxPoint(3, 5), wxPoint(290, 200));
    ASSERT_TRUE(pumpUntil([&] { return !text->isDragging(); }));
    long from = 0, to = 0;
    text->GetSelection(&from, &to);
    EXPECT_LE(from, 1);
    EXPECT_EQ(to, text->GetLastPosition());
    // Back up and out to the left: the selection clamps to the first character.
    input.drag(*text, wxPoint(60, 25), wxPoint(-40, -45));
    ASSERT_TRUE(pumpUntil([&] { return !text->isDragging(); }));
    text->GetSelection(&from, &to);
    EXPECT_EQ(from, 0);
    EXPECT_GT(to, 5);

    // The user's selection in the middle survives new text.
    text->SetSelection(0, 5);
    text->appendText("third line\n");
    text->GetSelection(&from, &to);
    EXPECT_EQ(from, 0);
    EXPECT_EQ(to, 5);
    // At the end, the caret follows.
    text->SetInsertionPointEnd();
    text->appendText("fourth line\n");
    EXPECT_EQ(text->GetInsertionPoint(), text->GetLastPosition());
}

TEST_F(TextWidgets, CheckBoxSizesAndNotifications) {
    EXPECT_EQ(Wx::Detail::checkBoxSize(false, wxDefaultSize), wxSize(15, 15));
    EXPECT_EQ(Wx::Detail::checkBoxSize(true, wxSize(120, -1)), wxSize(120, 15));
    EXPECT_EQ(Wx::Detail::checkBoxSize(true, wxSize(-1, 20)), wxSize(-1, 20));
    EXPECT_EQ(Wx::Detail::checkBoxSize(false, wxSize(30, 20)), wxSize(30, 20));

    auto* box = new CheckBox(&parent(), wxID_ANY, String(L"sRGB"), wxPoint(10, 10));
    EXPECT_EQ(box->GetSize().y, 15);
    box->SetFont(wxFont(wxFontInfo(30)));
    EXPECT_EQ(box->GetFont().GetPixelSize().y, 12);

    std::vector<bool> changes;
    box->onChange = [&](bool value) {
        changes.push_back(value);
        log.record("onChange");
    };
    parent().Bind(wxEVT_CHECKBOX, [&](wxCommandEvent& event) {
        log.record("parent:" + std::to_string(event.GetInt()));
    });
    box->setValue(true, false);
    EXPECT_TRUE(box->GetValue());
    EXPECT_TRUE(log.calls().empty());
    box->setValue(false, true);
    EXPECT_EQ(log.calls(), (std::vector<std::string>{"onChange", "parent:0"}));

    box->setValue(true, true);
    EXPECT_EQ(changes, (std::vector<bool>{false, true}));

    // Its own painter decides its width, at any scale: the whole label fits.
    Wx::Detail::setDpiScaleOverride(2.0);
    auto* large = new CheckBox(&parent(), wxID_ANY, String(L"Include alpha channel"));
    Wx::Detail::setDpiScaleOverride(0);
    EXPECT_EQ(large->GetSize().y, 30);
    EXPECT_GE(large->GetSize().x, 26 + 10 + large->GetTextExtent(large->GetLabel()).x);
}

TEST_F(TextWidgets, CheckBoxesDrawTheLibrarysLook) {
    auto* box = new CheckBox(&parent(), wxID_ANY, String(L"Include alpha"), wxPoint(10, 10),
                             wxSize(150, -1));
    applySkinRecursive(&parent(), GuiSkin());
    input.moveTo(parent(), wxPoint(300, 250));
    const wxColour blue(39, 147, 255), grey(110, 110, 110);
    wxImage seen = captureOnScreen(*box);
    EXPECT_EQ(pixelAt(seen, 0, 1), wxColour(54, 54, 54)); // the box's outer frame
    EXPECT_EQ(pixelAt(seen, 1, 2), wxColour(37, 37, 37));
    EXPECT_EQ(countPixels(seen, blue), 0);
    box->SetValue(true);
    seen = captureOnScreen(*box);
    EXPECT_GT(countPixels(seen, blue), 5);
    box->Disable();
    seen = captureOnScreen(*box);
    EXPECT_EQ(countPixels(seen, blue), 0);
    EXPECT_GT(countPixels(seen, grey), 5);
}

TEST_F(TextWidgets, TabMovesTheFocusOnKeyUpOnlyAfterItsOwnKeyDown) {
    auto* first = new CheckBox(&parent(), wxID_ANY, String(L"one"), wxPoint(10, 10));
    auto* second = new CheckBox(&parent(), wxID_ANY, String(L"two"), wxPoint(10, 40));
    first->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return first->HasFocus(); }));

    wxKeyEvent up(wxEVT_KEY_UP);
    up.m_keyCode = WXK_TAB;
    first->GetEventHandler()->ProcessEvent(up); // no key-down reached the box: nothing moves
    pumpPending();
    EXPECT_TRUE(first->HasFocus());

    wxKeyEvent down(wxEVT_KEY_DOWN);
    down.m_keyCode = WXK_TAB;
    first->GetEventHandler()->ProcessEvent(down);
    first->GetEventHandler()->ProcessEvent(up);
    EXPECT_TRUE(pumpUntil([&] { return second->HasFocus(); }));
}
