// Text widgets, the check box and the radio button: what they show and what their owners receive.
#include "guitest.h"
#include <varnellib/native/process.h>
#include <wx/dcclient.h>

#include <varnellib/native/textmeasure.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/radiobutton.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textbutton.h>
#include <varnellibwx/widgets/textcontrol.h>
#include <varnellibwx/widgets/textctrl.h>
#include <varnellibwx/widgets/tooltip.h>

#include <wx/dcclient.h>

#include <algorithm>

namespace {

// The brightest green channel in an image: antialiased text reaches its colour only at the
// heart of its strokes.
int brightest(const wxImage& image) {
    int value = 0;
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            value = std::max<int>(value, image.GetGreen(x, y));
    return value;
}

class TextWidgets : public GuiTest {
protected:
    Input input;
    CallLog log;
};

} // namespace

TEST_F(TextWidgets, StaticTextWrapsFromTheUnwrappedTextAndDrawsInItsForeground) {
    const String text(L"Tone curves map the brightness of every pixel through a smooth function "
                      L"that the user shapes by dragging control points over the histogram.");
    auto* once = new StaticText(&parent(), wxID_ANY, text);
    once->Wrap(300);
    auto* twice = new StaticText(&parent(), wxID_ANY, text);
    twice->Wrap(100);
    twice->Wrap(300);
    EXPECT_EQ(twice->GetLabel(), once->GetLabel());
    EXPECT_EQ(twice->label(), text);

    twice->SetForegroundColour(wxColour(0, 250, 0));
    twice->SetBackgroundColour(*wxBLACK);
    EXPECT_GT(brightest(captureOnScreen(*twice)), 200);
}

TEST_F(TextWidgets, WrappingGivesTheToolkitsLinesAtEveryWidth) {
    std::wstring log;
    for (int i = 0; i < 40; ++i)
        log += L"Pass " + std::to_wstring(i) + L": AVA Wolf office  fjord, \u00e9t\u00e9 " +
               (i % 9 == 8 ? L"\n" : L"");
    const std::wstring texts[] = {log, L" leading and trailing \n\nspaces ",
                                  L"an_unbreakably_long_word_that_never_fits and more", L"a\n",
                                  L""};
    auto* ours = new StaticText(&parent(), wxID_ANY, String());
    auto* theirs = new wxGenericStaticText(&parent(), wxID_ANY, "");
    theirs->SetFont(ours->GetFont());
    for (const std::wstring& text : texts)
        for (int width = -1; width < 700; width += width < 40 ? 1 : 23) {
            ours->SetLabel(text);
            ours->Wrap(width);
            theirs->SetLabel(text);
            theirs->Wrap(width);
            ASSERT_EQ(ours->GetLabel(), theirs->GetLabel()) << "width " << width;
        }

    // Tooltips wrap by estimates from prefix widths: the lines of measuring every candidate.
    wxClientDC dc(ours);
    dc.SetFont(ours->GetFont());
    const Function<int(const String&)> measure = [&dc](const String& line) {
        return dc.GetTextExtent(toWxString(line)).x;
    };
    const auto prefixes = [ours](std::wstring_view line) {
        return Lib::measureTextPrefixes(WindowHandle(ours->GetHandle()),
                                        toVarnelString(ours->GetFont().GetNativeFontInfoDesc()),
                                        line);
    };
    for (const std::wstring& text : texts)
        for (int width = 0; width < 700; width += width < 40 ? 1 : 17) {
            const Stack<String> estimated =
                Wx::Detail::wrapText(String(text), width, measure, prefixes);
            const Stack<String> measured = Wx::Detail::wrapText(String(text), width, measure);
            ASSERT_EQ(estimated, measured) << width;
        }
}

TEST_F(TextWidgets, LinksClickOnReleaseAndKeepTheirColoursByState) {
    auto* link = new TextButton(&parent(), wxID_ANY, String(L"Documentation"),
                                log.recorder<>("click"), wxPoint(20, 20));
    const wxColour normal(10, 20, 30), hover(40, 50, 60), visited(70, 80, 90);
    link->setNormalColour(normal);
    link->setHoverColour(hover);
    link->setVisitedColour(visited);
    link->setVisited(true);
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

TEST_F(TextWidgets, EntriesWearTheBorderedFrameAndShowDisabledValuesInTheSkin) {
    auto* entry = new TextControl(&parent(), wxID_ANY, String(L"Gain"), 0, {}, wxSize(120, -1));
    entry->SetPosition(wxPoint(10, 10));
    applySkinRecursive(&parent(), GuiSkin());
    const int middle = entry->GetSize().y / 2;
    wxImage seen = captureOnScreen(*entry);
    EXPECT_EQ(pixelAt(seen, 0, 0), wxColour(54, 54, 54)); // square, not rounded
    EXPECT_EQ(pixelAt(seen, 1, middle), wxColour(37, 37, 37));
    entry->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return entry->HasFocus(); }));
    seen = captureOnScreen(*entry);
    EXPECT_EQ(pixelAt(seen, 0, middle), wxColour(54, 54, 54));
    EXPECT_EQ(pixelAt(seen, 1, middle), wxColour(0, 114, 188));
    // Made without a border (the spinner's field, framed by the spinner), it draws none.
    auto* bare =
        new TextControl(&parent(), wxID_ANY, String(L"1.0"), wxBORDER_NONE, {}, wxSize(120, -1));
    bare->SetPosition(wxPoint(10, 160));
    applySkinRecursive(bare, GuiSkin());
    EXPECT_EQ(pixelAt(captureOnScreen(*bare), 0, middle), wxColour(68, 68, 68));
    // A log's multi-line control wears the same outer frame (its text view covers the inner).
    auto* log =
        new TextCtrl(&parent(), wxID_ANY, "line", wxPoint(10, 60), wxSize(200, 80), wxTE_MULTILINE);
    applySkinRecursive(log, GuiSkin());
    const wxImage logSeen = captureOnScreen(*log);
    EXPECT_EQ(pixelAt(logSeen, 0, 0), wxColour(54, 54, 54));
    EXPECT_EQ(pixelAt(logSeen, 199, 40), wxColour(54, 54, 54));
    // Scrolled, it draws no frame across its top lines: the frame is around the box only.
    for (int i = 0; i < 40; ++i)
        log->AppendText("appended line\n");
    ASSERT_TRUE(pumpUntil([&] {
        const wxImage scrolled = captureOnScreen(*log);
        return scrolled.IsOk() && pixelAt(scrolled, 0, 0) == wxColour(54, 54, 54);
    }));
    pumpPending();
    const wxImage scrolled = captureOnScreen(*log);
    int framed = 0;
    for (int y = 2; y < 78; ++y)
        framed += pixelAt(scrolled, 100, y) == wxColour(54, 54, 54) ||
                  pixelAt(scrolled, 100, y) == wxColour(37, 37, 37);
    EXPECT_EQ(framed, 0);

    // Disabled, the value is drawn in disabledText (110) from 3 pixels in.
    entry->Disable();
    seen = captureOnScreen(*entry);
    EXPECT_LE(brightest(seen), 110);
    EXPECT_GT(brightest(seen), 90);
    int firstInk = 0;
    while (firstInk < 20 &&
           brightest(seen.GetSubImage(wxRect(firstInk, 0, 1, seen.GetHeight()))) <= 80)
        ++firstInk;
    EXPECT_GE(firstInk, 3);
    EXPECT_LE(firstInk, 5);

    EXPECT_FALSE((new TextControl(&parent(), wxID_ANY, String(L"fixed"), wxTE_READONLY))
                     ->AcceptsFocusFromKeyboard());
    EXPECT_TRUE(
        (new TextControl(&parent(), wxID_ANY, String(L"free")))->AcceptsFocusFromKeyboard());
}

TEST_F(TextWidgets, EveryTextWidgetWritesTheStandardFontAtTheLibrarysScale) {
    for (const double scale : {1.0, 2.0}) {
        Wx::Detail::setDpiScaleOverride(scale);
        wxWindow* widgets[] = {new StaticText(&parent(), wxID_ANY, String(L"label")),
                               new TextControl(&parent(), wxID_ANY, String(L"entry")),
                               new TextCtrl(&parent(), wxID_ANY, "log", wxDefaultPosition,
                                            wxDefaultSize, wxTE_MULTILINE),
                               new CheckBox(&parent(), wxID_ANY, String(L"check")),
                               makeRadioButton(&parent(), "radio", true)};
        widgets[3]->SetFont(wxFont(wxFontInfo(30))); // a check box keeps its own size
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

    // The user's selection in the middle survives new text; at the end, the caret follows.
    text->SetSelection(0, 5);
    text->appendText("third line\n");
    text->GetSelection(&from, &to);
    EXPECT_EQ(std::make_pair(from, to), std::make_pair(0L, 5L));
    text->SetInsertionPointEnd();
    text->appendText("fourth line\n");
    EXPECT_EQ(text->GetInsertionPoint(), text->GetLastPosition());
}

TEST_F(TextWidgets, CheckBoxSizesAndNotifications) {
    EXPECT_EQ(Wx::Detail::checkBoxSize(false, wxDefaultSize), wxSize(15, 15));
    EXPECT_EQ(Wx::Detail::checkBoxSize(true, wxSize(120, -1)), wxSize(120, 15));
    EXPECT_EQ(Wx::Detail::checkBoxSize(true, wxSize(-1, 20)), wxSize(-1, 20));

    auto* box = new CheckBox(&parent(), wxID_ANY, String(L"sRGB"), wxPoint(10, 10));
    EXPECT_EQ(box->GetSize().y, 15);
    box->onChange = [&](bool value) {
        log.record("onChange " + std::to_string(value));
    };
    parent().Bind(wxEVT_CHECKBOX, [&](wxCommandEvent& event) {
        log.record("parent " + std::to_string(event.GetInt()));
    });
    box->setValue(true, false);
    EXPECT_TRUE(box->GetValue());
    EXPECT_TRUE(log.calls().empty());
    box->setValue(false, true);
    EXPECT_EQ(log.calls(), (std::vector<std::string>{"onChange 0", "parent 0"}));

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
    EXPECT_GT(countPixels(captureOnScreen(*box), blue), 5);
    box->Disable();
    seen = captureOnScreen(*box);
    EXPECT_EQ(countPixels(seen, blue), 0);
    EXPECT_GT(countPixels(seen, grey), 5);
}

TEST_F(TextWidgets, RadioButtonsDrawTheLibrarysLookAtTheLibrarysScale) {
    const wxColour blue(39, 147, 255), grey(110, 110, 110);
    for (const int scale : {1, 2}) {
        Wx::Detail::setDpiScaleOverride(scale); // for the painting too
        wxRadioButton* chosen = makeRadioButton(&parent(), "0-255", true);
        wxRadioButton* other = makeRadioButton(&parent(), "0-1", false);
        chosen->SetPosition(wxPoint(10, 10));
        other->SetPosition(wxPoint(10, 60));
        applySkinRecursive(&parent(), GuiSkin());
        input.moveTo(parent(), wxPoint(300, 250));
        EXPECT_EQ(chosen->GetSize().y, 15 * scale);
        EXPECT_GE(chosen->GetSize().x, 18 * scale + chosen->GetTextExtent("0-255").x);

        // The dot, 7 pixels across per unit of scale, in the toggled colour; none on the other.
        const wxImage seen = captureOnScreen(*chosen);
        EXPECT_EQ(pixelAt(seen, 6 * scale, seen.GetHeight() / 2), blue) << scale;
        EXPECT_GE(countPixels(seen, blue), 12 * scale * scale) << scale;
        EXPECT_EQ(countPixels(captureOnScreen(*other), blue), 0) << scale;
        chosen->Disable();
        EXPECT_EQ(countPixels(captureOnScreen(*chosen), blue), 0) << scale;
        EXPECT_GT(countPixels(captureOnScreen(*chosen), grey), 5) << scale;
        chosen->Destroy();
        other->Destroy();
    }
    Wx::Detail::setDpiScaleOverride(0);
}

TEST_F(TextWidgets, TabMovesTheFocusOnKeyUpOnlyAfterItsOwnKeyDown) {
    auto* first = new CheckBox(&parent(), wxID_ANY, String(L"one"), wxPoint(10, 10));
    auto* second = new CheckBox(&parent(), wxID_ANY, String(L"two"), wxPoint(10, 40));
    first->SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return first->HasFocus(); }));
    wxKeyEvent up(wxEVT_KEY_UP), down(wxEVT_KEY_DOWN);
    up.m_keyCode = down.m_keyCode = WXK_TAB;
    first->GetEventHandler()->ProcessEvent(up); // no key-down reached the box: nothing moves
    pumpPending();
    EXPECT_TRUE(first->HasFocus());
    first->GetEventHandler()->ProcessEvent(down);
    first->GetEventHandler()->ProcessEvent(up);
    EXPECT_TRUE(pumpUntil([&] { return second->HasFocus(); }));
}

TEST_F(TextWidgets, TextKeepsItsPixelHeightAtAnyDesktopTextScaleUnlessTheHostAsks) {
    // Run at the desktop's text scale too (the textscale test): the height stays, as the
    // controls around the text are laid out for it.
    const auto height = [&] {
        auto* label = new StaticText(&parent(), wxID_ANY, String(L"Hxgj"));
        wxClientDC dc(label);
        dc.SetFont(label->GetFont());
        return dc.GetTextExtent("Hxgj").y;
    };
    EXPECT_EQ(height(), 12) << "at a font resolution of " << Varnel::getFontResolution();
    for (const double ignored : {0.0, -1.0, double(kNaN), double(kInf)}) {
        setFontFactor(ignored);
        EXPECT_EQ(fontFactor(), 1.0);
    }
    setFontFactor(1.5); // a host that follows the desktop's text scale
    EXPECT_EQ(height(), 18);
    setFontFactor(1.0);
}
