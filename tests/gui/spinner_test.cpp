// The spinner wired up under real input: clicks, holds and drags on its arrows, right-clicks,
// typing, and the events its parents receive, in order. Its arithmetic is the model's suite.
#include "guitest.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/textcontrol.h>

#include <gtk/gtk.h>
#include <wx/display.h>
#include <wx/spinctrl.h>

#include <clocale>

namespace {

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

class Spinners : public GuiTest {
protected:
    // A spinner at (20, 20) whose value callback and events (as the parent receives them, from
    // the spinner and with its id) are logged in order.
    Spinner& make(float min, float max, float value, int precision, float clickSpeed) {
        auto* spinner = new Spinner(&parent(), 4242, 60, min, max, value, precision, clickSpeed);
        spinner->SetPosition(wxPoint(20, 20));
        spinner->callOnValueChange([this](float v) { log.record("value " + number(v)); });
        const auto logged = [this, spinner](const char* name, auto describe) {
            return [this, spinner, name, describe](auto& event) {
                EXPECT_EQ(event.GetId(), 4242);
                EXPECT_EQ(event.GetEventObject(), spinner);
                log.record(name + describe(event));
            };
        };
        const auto active = [](wxActivateEvent& e) {
            return std::string(e.GetActive() ? "" : "!");
        };
        parent().Bind(CUSTSPINNER_START_EDITING, logged("start", active));
        parent().Bind(CUSTSPINNER_END_EDITING, logged("end", [](wxActivateEvent& e) {
                          return std::string(e.GetActive() ? "!" : "");
                      }));
        parent().Bind(wxEVT_SPINCTRLDOUBLE,
                      logged("event ", [](wxSpinDoubleEvent& e) { return number(e.GetValue()); }));
        pumpPending();
        return *spinner;
    }
    static wxString shown(const Spinner& spinner) { return spinner.textField()->GetValue(); }
    static wxPoint middle(const wxWindow& window) { return wxPoint(5, window.GetSize().y / 2); }

    Input input;
    CallLog log;
};

} // namespace

TEST_F(Spinners, LayoutAndAQuietConstruction) {
    Spinner& spinner = make(0.f, 10.f, 2.f, 3, 0.f);
    EXPECT_TRUE(log.calls().empty());
    EXPECT_EQ(shown(spinner), "2.0");
    EXPECT_EQ(spinner.textField()->GetSize(), wxSize(60, 14));
    EXPECT_EQ(spinner.upArrow()->GetSize(), wxSize(11, 9));
    EXPECT_EQ(spinner.downArrow()->GetPosition(), spinner.upArrow()->GetPosition() + wxPoint(0, 9));
    Wx::Detail::setDpiScaleOverride(2.0);
    auto* large = new Spinner(&parent(), wxID_ANY, 60, 0.f, 1.f, 0.f, 0, 0.f);
    Wx::Detail::setDpiScaleOverride(0);
    EXPECT_EQ(large->textField()->GetSize(), wxSize(120, 32));

    EXPECT_THROW(Spinner(&parent(), wxID_ANY, 60, 2.f, 1.f, 0.f, 0, 0.f), StopException);
    EXPECT_THROW(spinner.configure(0.f, kInf, 0.f, 1, 0.f, true), StopException);
    EXPECT_EQ(spinner.getValue(), 2.f);
}

TEST_F(Spinners, ClicksStepOnReleaseAndHoldsRepeatWithOneMoreStepOnRelease) {
    Spinner& spinner = make(0.f, 1000.f, 500.f, 1, 0.f);
    input.click(*spinner.downArrow(), middle(*spinner.downArrow()));
    EXPECT_EQ(log.calls(), (Calls{"start", "value 498", "event 498", "end"}));
    EXPECT_EQ(shown(spinner), "498.0");

    spinner.configure(0.f, 1000.f, 0.f, 0, 1.f, false);
    spinner.setValue(0.f, false);
    log.clear();
    const auto changes = [&] {
        return std::count_if(log.calls().begin(), log.calls().end(),
                             [](const std::string& c) { return c.rfind("event", 0) == 0; });
    };
    ASSERT_TRUE(
        input.hold(*spinner.upArrow(), middle(*spinner.upArrow()), [&] { return changes() >= 3; }));
    ASSERT_TRUE(pumpUntil([&] { return log.calls().back() == "end"; }));
    EXPECT_EQ(std::count(log.calls().begin(), log.calls().end(), "start"), 1);
    EXPECT_EQ(spinner.getValue(), static_cast<float>(changes())); // one per repeat and release
    EXPECT_GE(changes(), 4);
}

TEST_F(Spinners, DraggingIsAVirtualSliderAndRightClicksCancelOrReset) {
    Spinner& spinner = make(-100.f, 100.f, 0.f, 1, 0.5f);
    wxWindow& up = *spinner.upArrow();
    input.press(up, wxPoint(5, 4));
    input.moveTo(up, wxPoint(5, -6)); // 10 pixels up: +5
    EXPECT_TRUE(spinner.isDragging());
    EXPECT_EQ(spinner.getValue(), 5.f);
    input.moveTo(up, wxPoint(5, 14)); // 20 down: -10
    input.release();
    EXPECT_EQ(spinner.getValue(), -5.f); // no step after a drag
    EXPECT_EQ(log.calls().front(), "start");
    EXPECT_EQ(log.calls().back(), "end");

    // A right-click during a drag restores the value from the press and ends the gesture.
    input.press(up, wxPoint(5, 4));
    input.moveTo(up, wxPoint(5, -16));
    input.click(up, wxPoint(5, -16), wxMOUSE_BTN_RIGHT);
    EXPECT_EQ(spinner.getValue(), -5.f);
    EXPECT_EQ(log.calls().back(), "end");
    EXPECT_FALSE(up.HasCapture());
    input.release();

    // At rest a right-click resets to the default, notifying without a gesture.
    log.clear();
    input.click(up, middle(up), wxMOUSE_BTN_RIGHT);
    EXPECT_EQ(log.calls(), (Calls{"value 0", "event 0"}));
}

TEST_F(Spinners, ADragReachingTheMonitorsTopRowWrapsThePointerToTheBottom) {
    Spinner& spinner = make(-1000.f, 1000.f, 0.f, 1, 0.5f);
    const wxRect monitor = wxDisplay(0u).GetGeometry();
    input.press(*spinner.upArrow(), wxPoint(5, 4));
    input.moveTo(*spinner.upArrow(), wxPoint(5, -4));
    ASSERT_TRUE(pumpUntil([&] { return spinner.isDragging(); }));
    // One jump to the top row, as a fast flick would make (the input simulator would keep
    // moving the pointer back to its own target after the spinner wrapped it).
    GdkDisplay* display = gdk_display_get_default();
    gdk_device_warp(gdk_seat_get_pointer(gdk_display_get_default_seat(display)),
                    gdk_display_get_default_screen(display), monitor.x + 300, monitor.y);
    EXPECT_TRUE(pumpUntil([&] { return wxGetMousePosition().y == monitor.GetBottom() - 1; }));
    EXPECT_TRUE(spinner.isDragging());
    input.release();
}

TEST_F(Spinners, TypedTextCommitsOnEnterAndOnFocusLoss) {
    Spinner& spinner = make(-10.f, 10.f, 1.f, 2, 0.f);
    auto* other = new TextControl(&parent(), wxID_ANY, String(L"other"));
    other->SetPosition(wxPoint(20, 100));
    Calls focus;
    parent().Bind(CUSTSPINNER_TEXT_FOCUS_GET, [&](wxFocusEvent& e) {
        EXPECT_EQ(e.GetEventObject(), &spinner);
        focus.push_back("get");
    });
    parent().Bind(CUSTSPINNER_TEXT_FOCUS_LOST, [&](wxFocusEvent&) { focus.push_back("lost"); });

    spinner.SetFocus();
    ASSERT_TRUE(pumpUntil([&] { return spinner.textField()->HasFocus(); }));
    long from = 0, to = 0;
    spinner.textField()->GetSelection(&from, &to);
    EXPECT_EQ(to - from, 3); // "1.0" all selected
    input.typeText("1,5");
    input.key(WXK_RETURN);
    EXPECT_EQ(log.calls(), (Calls{"start", "value 1.5", "event 1.5", "end"}));
    EXPECT_EQ(shown(spinner), "1.50");

    // Typed text committed by the focus leaving the field.
    const auto losses = [&] {
        return std::count(focus.begin(), focus.end(), "lost");
    };
    const auto commitByLeaving = [&](const wxString& text) {
        const auto before = losses();
        spinner.SetFocus();
        pumpUntil([&] { return spinner.textField()->HasFocus(); });
        spinner.textField()->ChangeValue(text);
        other->SetFocus();
        return pumpUntil([&] { return losses() == before + 1; });
    };
    // The same value again: re-formatted, no events.
    log.clear();
    ASSERT_TRUE(commitByLeaving("1.500"));
    EXPECT_TRUE(log.calls().empty());
    EXPECT_EQ(shown(spinner), "1.50");
    // Text that is no number restores the shown value quietly; a number out of range clamps.
    ASSERT_TRUE(commitByLeaving("letters"));
    EXPECT_TRUE(log.calls().empty());
    EXPECT_EQ(shown(spinner), "1.50");
    ASSERT_TRUE(commitByLeaving("-25"));
    EXPECT_EQ(spinner.getValue(), -10.f);
}

TEST_F(Spinners, PrecisionRangeTextAndTheHostsSeparator) {
    Spinner& spinner = make(0.f, 100.f, 12.345f, 3, 0.f);
    EXPECT_EQ(shown(spinner), "12.345");
    int asked = 0;
    spinner.setPrecision(
        [&] {
            ++asked;
            return 1;
        },
        false);
    EXPECT_EQ(shown(spinner), "12.3");
    spinner.setValue(50.f, false);
    EXPECT_EQ(asked, 2); // asked anew at every change
    EXPECT_TRUE(log.calls().empty());

    // configure clamps and re-formats into the new range without moving to the new default.
    spinner.configure(0.f, 20.f, 3.f, 0, 0.f, true);
    EXPECT_EQ(shown(spinner), "20");
    EXPECT_EQ(log.calls(), (Calls{"value 20", "event 20"}));
    spinner.setText(String(L"mixed"));
    EXPECT_EQ(shown(spinner), "mixed");
    EXPECT_EQ(spinner.getValue(), 20.f);

    const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
    ASSERT_NE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), nullptr);
    spinner.configure(0.f, 20.f, 3.f, 2, 0.f, false);
    spinner.setValue(1.5f, false);
    EXPECT_EQ(shown(spinner), "1,50");
    std::setlocale(LC_NUMERIC, previous.c_str());
}
