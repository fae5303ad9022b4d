// Message dialogs: the answers a caller gets for each key, button and frame action, what the
// dialog shows, where it goes, and the native box shown for callers on other threads.
#include "guitest.h"

#include <varnellib/native/process.h>
#include <varnellibwx/messagedialog.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/windowutils.h>

#include <gtk/gtk.h>
#include <wx/display.h>
#include <wx/msgdlg.h>
#include <wx/scrolwin.h>
#include <wx/statbmp.h>

#include <atomic>
#include <thread>

namespace {

using Controls = std::vector<const MessageDialogControl*>;

template <class T>
std::vector<T*> descendants(wxWindow& root) {
    std::vector<T*> found;
    for (wxWindow* child : root.GetChildren()) {
        if (auto* match = dynamic_cast<T*>(child))
            found.push_back(match);
        for (T* deeper : descendants<T>(*child))
            found.push_back(deeper);
    }
    return found;
}

int show(const Controls& controls, const wchar_t* message = L"Render finished.",
         WindowHandle parent = {}, MessageDialogIcon icon = MessageDialogIcon::Information) {
    return Wx::Detail::showMessageDialogImpl(
        parent, String(L"Vellum"), String(message), icon,
        ArrayView<const MessageDialogControl* const>(controls.data(), int(controls.size())));
}

// Keys reach the dialog the way a user's do: through the X server to the focused window.
ModalDriver::Step pressKeys(std::vector<int> keys) {
    return [keys](wxDialog& dialog) {
        dialog.Raise();
        dialog.SetFocus();
        pumpUntil([&] { return dialog.IsActive(); }, 1s);
        wxUIActionSimulator simulator;
        for (int key : keys)
            simulator.Char(key);
    };
}

// Runs `steps` in turn, one for each dialog shown.
ModalDriver::Step inTurn(std::vector<ModalDriver::Step> steps) {
    auto next = std::make_shared<std::size_t>(0);
    return [steps = std::move(steps), next](wxDialog& dialog) {
        if (*next < steps.size())
            steps[(*next)++](dialog);
    };
}

void closeIt(wxDialog& dialog) {
    dialog.Close();
}

bool pointerIsGrabbed() {
    GdkDisplay* display = gdk_display_get_default();
    return gdk_display_device_is_grabbed(
        display, gdk_seat_get_pointer(gdk_display_get_default_seat(display)));
}

class MessageDialogs : public GuiTest {
protected:
    Input input;
};

} // namespace

TEST_F(MessageDialogs, KeysButtonsAndTheFrameGiveTheirAnswers) {
    long style = 0;
    std::vector<wxString> labels;
    ModalDriver driver(inTurn({
        pressKeys({WXK_RETURN}),
        pressKeys({'X', WXK_ESCAPE}), // an unknown key is passed on and ends nothing
        closeIt,
        [this](wxDialog& dialog) {
            auto buttons = descendants<AutoSizedButton>(dialog);
            ASSERT_EQ(buttons.size(), 1u);
            input.click(*buttons[0], wxPoint(10, 10));
        },
        [&](wxDialog& dialog) {
            style = dialog.GetWindowStyle();
            for (AutoSizedButton* button : descendants<AutoSizedButton>(dialog))
                labels.push_back(button->GetLabel());
            pressKeys({WXK_ESCAPE, 'N'})(dialog); // Escape is not among a yes-no box's keys
        },
        pressKeys({'Y'}),
    }));
    EXPECT_TRUE(showOkDialog({}, String(L"Vellum"), String(L"Saved."), {}));
    EXPECT_EQ(show({&MessageDialogButton::OK, &MessageDialogControl::FRAME_CLOSE}),
              MessageDialogControl::FRAME_CLOSE.id);
    EXPECT_FALSE(showOkDialog({}, String(L"Vellum"), String(L"Saved."), {}));
    EXPECT_TRUE(showOkDialog({}, String(L"Vellum"), String(L"Saved."), {}));
    EXPECT_FALSE(showYesNoDialog({}, String(L"Vellum"), String(L"Overwrite?"), {}));
    EXPECT_EQ(style & (wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX), wxCAPTION | wxSYSTEM_MENU);
    EXPECT_EQ(labels, (std::vector<wxString>{"Yes", "No"}));
    EXPECT_TRUE(showYesNoDialog({}, String(L"Vellum"), String(L"Overwrite?"), {}));
}

TEST_F(MessageDialogs, ContentOrderAndPlacementOnTheWorkAreaAndOverTheOwner) {
    String shown;
    bool hasIcon = false;
    std::vector<int> buttonIds;
    wxRect huge, owned;
    bool scrolls = false;
    ModalDriver driver(inTurn({
        [&](wxDialog& dialog) {
            shown = descendants<StaticText>(dialog).at(0)->label();
            hasIcon = !descendants<wxStaticBitmap>(dialog).empty();
            for (AutoSizedButton* button : descendants<AutoSizedButton>(dialog)) {
                buttonIds.push_back(button->GetId());
                EXPECT_GE(button->GetSize().x, 80);
            }
            dialog.Close();
        },
        [&](wxDialog& dialog) {
            huge = dialog.GetScreenRect();
            auto* area = descendants<wxScrolledWindow>(dialog).at(0);
            scrolls = area->GetVirtualSize().y > area->GetClientSize().y &&
                      area->GetVirtualSize().x > area->GetClientSize().x;
            dialog.Close();
        },
        [&](wxDialog& dialog) {
            owned = dialog.GetScreenRect();
            dialog.Close();
        },
    }));
    show({&MessageDialogButton::OK, &MessageDialogButton::CANCEL}, L"Pass\t1:\t4.1 s", {},
         MessageDialogIcon::Error);
    EXPECT_EQ(shown, String(L"Pass    1:    4.1 s"));
    EXPECT_TRUE(hasIcon);
    EXPECT_EQ(buttonIds,
              (std::vector<int>{MessageDialogButton::OK.id, MessageDialogButton::CANCEL.id}));

    std::wstring message(3000, L'W'); // one word far wider than any monitor
    for (int line = 0; line < 400; ++line)
        message += L"\nLine " + std::to_wstring(line) + L"\tof a very long log";
    show({&MessageDialogButton::OK}, message.c_str());
    EXPECT_TRUE(wxDisplay(0u).GetClientArea().Contains(huge));
    EXPECT_TRUE(scrolls);

    show({&MessageDialogButton::OK}, L"Over the owner", getWindowNativeHandle(&parent()));
    const wxPoint offset = owned.GetPosition() + owned.GetSize() / 2 -
                           parent().GetScreenPosition() - parent().GetSize() / 2;
    EXPECT_LE(std::abs(offset.x), 2);
    EXPECT_LE(std::abs(offset.y), 2);
}

TEST_F(MessageDialogs, OutsideCloseEndsOnAClickElsewhereOrAnotherActiveWindow) {
    const Controls controls = {&MessageDialogButton::OK, &MessageDialogControl::OUTSIDE_CLOSE};
    {
        // A click inside the dialog ends nothing; a click on another window of ours does.
        ModalDriver driver([this](wxDialog& dialog) {
            ASSERT_TRUE(pumpUntil(pointerIsGrabbed));
            input.click(dialog, wxPoint(4, 4));
            pumpPending();
            EXPECT_TRUE(dialog.IsShown());
            input.click(parent(), wxPoint(20, 20));
        });
        EXPECT_EQ(show(controls), MessageDialogControl::OUTSIDE_CLOSE.id);
    }
    {
        // The desktop, where no window of the application is.
        ModalDriver driver([this](wxDialog& dialog) {
            ASSERT_TRUE(pumpUntil(pointerIsGrabbed));
            const wxRect work = wxDisplay(0u).GetGeometry();
            input.click(dialog,
                        dialog.ScreenToClient(wxPoint(work.GetRight() - 5, work.GetBottom() - 5)));
        });
        EXPECT_EQ(show(controls), MessageDialogControl::OUTSIDE_CLOSE.id);
    }
    {
        // Another window of the application becomes active (as after Alt+Tab).
        ModalDriver driver([this](wxDialog&) {
            wxActivateEvent activate(wxEVT_ACTIVATE, true, parent().GetId());
            activate.SetEventObject(&parent());
            parent().GetEventHandler()->ProcessEvent(activate);
        });
        EXPECT_EQ(show(controls), MessageDialogControl::OUTSIDE_CLOSE.id);
    }
}

TEST_F(MessageDialogs, OtherThreadsGetTheNativeBoxWithTheSameAnswers) {
    bool onMainThread = false;
    wxString message;
    ModalDriver driver({}, [&](wxDialog& dialog) {
        onMainThread = isMainThread();
        auto* native = dynamic_cast<wxMessageDialog*>(&dialog);
        if (!native)
            return static_cast<int>(wxID_ABORT);
        message = native->GetMessage();
        return native->GetMessageDialogStyle() & wxYES_NO ? static_cast<int>(wxID_YES)
                                                          : static_cast<int>(wxID_CANCEL);
    });
    std::atomic<int> answers{0};
    bool yes = false, ok = true;
    std::thread worker([&] {
        yes = showYesNoDialog({}, String(L"Vellum"), String(L"From a worker"),
                              MessageDialogIcon::Question);
        ++answers;
        ok = showOkDialog({}, String(L"Vellum"), String(L"Also from a worker"),
                          MessageDialogIcon::Error);
        ++answers;
    });
    const bool answered = pumpUntil([&] { return answers == 2; });
    worker.join();
    ASSERT_TRUE(answered);
    EXPECT_TRUE(onMainThread);
    EXPECT_TRUE(yes);
    EXPECT_FALSE(ok); // closed without a button: FRAME_CLOSE
    EXPECT_EQ(message, "Also from a worker");
}
