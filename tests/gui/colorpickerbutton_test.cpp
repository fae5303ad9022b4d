// The colour swatch: its stripes as the screen shows them, the picker it opens and where, the
// drag from one swatch to another with real input, the clipboard, and the format's bytes.
#include "guitest.h"

#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/colorpicker.h>
#include <varnellibwx/widgets/colorpickerbutton.h>

#include <wx/clipbrd.h>
#include <wx/dcmemory.h>
#include <wx/uiaction.h>

#include <cstring>

namespace {

// Finishes a gesture from inside the drag's own loop: the drag holds the test's call stack until
// the button is released, so the pointer's last moves come from a timer.
class LaterInput : public wxTimer {
public:
    LaterInput(const wxWindow& target, wxPoint at) : m_target(target), m_at(at) {}
    void Notify() override {
        wxUIActionSimulator simulator;
        simulator.MouseMove(m_target.ClientToScreen(m_at));
        wxYield();
        simulator.MouseMove(m_target.ClientToScreen(m_at + wxPoint(1, 1)));
        simulator.MouseUp();
    }

private:
    const wxWindow& m_target;
    wxPoint m_at;
};

// Chooses from a popup menu of `owner` from inside the menu's own loop, once the menu has
// opened: `downs` presses of Down, then Return (or Escape when `downs` is negative).
class LaterMenuChoice : public wxTimer {
public:
    LaterMenuChoice(wxWindow& owner, int downs) : m_owner(owner), m_downs(downs) {
        owner.Bind(wxEVT_MENU_OPEN, &LaterMenuChoice::onOpen, this);
        Start(50);
    }
    ~LaterMenuChoice() override { m_owner.Unbind(wxEVT_MENU_OPEN, &LaterMenuChoice::onOpen, this); }
    void onOpen(wxMenuEvent& event) {
        event.Skip();
        m_opened = true;
    }
    void Notify() override {
        if (!m_opened)
            return;
        Stop();
        wxUIActionSimulator simulator;
        for (int i = 0; i < m_downs; ++i)
            simulator.Char(WXK_DOWN);
        simulator.Char(m_downs < 0 ? WXK_ESCAPE : WXK_RETURN);
    }

private:
    wxWindow& m_owner;
    int m_downs;
    bool m_opened = false;
};

class Swatches : public GuiTest {
protected:
    ColorPickerButton& make(const wchar_t* title, wxPoint at, const Rgb& color,
                            bool enabled = true) {
        auto* swatch = new ColorPickerButton(&parent(), String(title), wxSize(60, 30), enabled);
        swatch->SetPosition(at);
        swatch->setColor(color, false);
        const std::string name = String(title).toUtf8().data();
        swatch->callOnCommittedChange([this, name](const Rgb& c) {
            log.record(name + " committed");
            received = c;
        });
        swatch->callOnLiveChange(log.recorder<const Rgb&>(name + " live"));
        pumpPending();
        return *swatch;
    }

    Input input;
    CallLog log;
    Rgb received;
};

} // namespace

TEST_F(Swatches, DisabledSwatchesStripeTheirColour) {
    // The stripes' colour is the model's (stripeColor); here, where the screen shows them.
    {
        const Rgb color(1, 1, 1, 1);
        const RgbBytes fill = Wx::Detail::toRgbBytes(color);
        const RgbBytes shifted = Wx::Detail::stripeColor(fill);
        const wxColour stripe(shifted.r, shifted.g, shifted.b);
        ColorPickerButton& swatch = make(L"locked", {20, 20}, color, false);
        const wxImage seen = captureOnScreen(swatch);
        EXPECT_EQ(pixelAt(seen, 0, 0), *wxBLACK);
        EXPECT_EQ(pixelAt(seen, 59, 29), *wxBLACK);
        EXPECT_EQ(pixelAt(seen, 1, 1), stripe);                           // (1 + 1) mod 10 < 5
        EXPECT_EQ(pixelAt(seen, 4, 1), wxColour(fill.r, fill.g, fill.b)); // 5 mod 10 is not < 5
        EXPECT_EQ(pixelAt(seen, 12, 7), wxColour(fill.r, fill.g, fill.b));
        swatch.Enable(true);
        EXPECT_EQ(countPixels(captureOnScreen(swatch), stripe), 0);
        swatch.Destroy();
    }
    // Too narrow or too low for an inside: the outline alone, nothing drawn flipped over it.
    for (const wxSize size : {wxSize(1, 30), wxSize(2, 30), wxSize(60, 1)}) {
        ColorPickerButton& thin = make(L"thin", {20, 20}, Rgb(0, 1, 0, 1));
        thin.SetSize(size);
        pumpPending();
        wxBitmap drawn(size, 24);
        {
            wxMemoryDC dc(drawn);
            dc.SetBackground(*wxRED_BRUSH);
            dc.Clear();
            thin.paint(dc, size);
        }
        const wxImage seen = drawn.ConvertToImage();
        EXPECT_EQ(countPixels(seen, *wxGREEN), 0) << size.x << "x" << size.y;
        thin.Destroy();
    }
}

TEST_F(Swatches, ADisabledSwatchRefusesADropAndSaysSo) {
    ColorPickerButton& swatch = make(L"locked", {20, 20}, Rgb(0, 0, 1, 1), false);
    auto* target = dynamic_cast<Wx::Detail::ColorPickerButtonDropTarget*>(swatch.GetDropTarget());
    ASSERT_NE(target, nullptr);
    EXPECT_EQ(target->OnDragOver(5, 5, wxDragCopy), wxDragNone);
    EXPECT_EQ(target->OnData(5, 5, wxDragCopy), wxDragNone);
    EXPECT_EQ(swatch.getColor(), Rgb(0, 0, 1, 1));
    EXPECT_EQ(log.calls(), Calls{});
    swatch.Enable(true);
    EXPECT_EQ(target->OnDragOver(5, 5, wxDragCopy), wxDragCopy);
}

TEST_F(Swatches, AClickOpensThePickerWhereTheLastOneClosed) {
    ColorPickerButton& swatch = make(L"Diffuse", {20, 20}, {0.8f, 0.35f, 0.1f, 0.5f});
    std::vector<wxPoint> openedAt;
    ModalDriver driver([&](wxDialog& dialog) {
        auto& picker = dynamic_cast<ColorPicker&>(dialog);
        EXPECT_EQ(picker.GetTitle(), "Color Selector: Diffuse");
        EXPECT_EQ(picker.getColor().a, 1.f); // format 0
        EXPECT_EQ(picker.row(ColorPicker::Row::Alpha), nullptr);
        if (!openedAt.empty()) // the picker moves back there once the toolkit has placed it
            pumpUntil(
                [&] { return picker.GetPosition() == ColorPickerButton::lastPickerPosition(); },
                2s);
        openedAt.push_back(picker.GetPosition());
        picker.Move(wxPoint(130 + 10 * int(openedAt.size()), 90));
        pumpUntil([&] { return picker.GetPosition().x == 130 + 10 * int(openedAt.size()); });
        picker.setColor({0.2f, 0.4f, 0.6f, 1.f});
        picker.button("OK")->doClick(wxPoint(5, 5));
    });
    input.click(swatch, wxPoint(30, 15));
    ASSERT_EQ(driver.entered(), 1);
    EXPECT_EQ(log.calls(), (Calls{"Diffuse live", "Diffuse committed"})); // "OK" commits
    EXPECT_EQ(swatch.getColor(), Rgb(0.2f, 0.4f, 0.6f, 1.f));
    EXPECT_EQ(ColorPickerButton::lastPickerPosition(), wxPoint(140, 90));

    input.click(swatch, wxPoint(30, 15));
    ASSERT_EQ(openedAt.size(), 2u);
    EXPECT_EQ(openedAt[1], wxPoint(140, 90));
}

TEST_F(Swatches, CommittedComesBeforeLiveAndCancelOnlyRevertsTheLiveColour) {
    ColorPickerButton& swatch = make(L"Base", {20, 20}, Rgb(0.5f, 0.5f, 0.5f, 1.f));
    swatch.setColor(Rgb(0.1f, 0.2f, 0.3f, 1.f), true);
    EXPECT_EQ(log.calls(), (Calls{"Base committed", "Base live"}));
    const Rgb set(0.1f, 0.2f, 0.3f, 1.f);
    struct Case {
        const char* button;
        Calls calls;
        Rgb committed;
    };
    const Rgb edited(0.9f, 0.2f, 0.3f, 1.f);
    const Case cases[] = {
        {"Add color", {"Base committed"}, edited},
        {"Cancel", {"Base live"}, set}, // the picker's revert to the colour it opened with
    };
    for (const Case& c : cases) {
        swatch.setColor(set, false);
        ModalDriver driver([&](wxDialog& dialog) {
            auto& picker = dynamic_cast<ColorPicker&>(dialog);
            picker.setColor(edited);
            log.clear();
            picker.button(c.button)->doClick(wxPoint(5, 5));
        });
        swatch.openPicker();
        EXPECT_EQ(log.calls(), c.calls) << c.button;
        EXPECT_EQ(swatch.getColor(), c.committed) << c.button;
    }
}

TEST_F(Swatches, ADragCarriesTheColourExactlyAndNeverOpensThePicker) {
    const Rgb exact(1.5f, -0.25f, 0.123456789f, 0.3f);
    ColorPickerButton& source = make(L"source", {20, 20}, exact);
    ColorPickerButton& target = make(L"target", {200, 20}, {0, 0, 0, 1});
    ModalDriver driver([](wxDialog& dialog) { dialog.Close(); });

    LaterInput finish(target, wxPoint(30, 15));
    finish.StartOnce(300);
    input.press(source, wxPoint(30, 15));
    input.moveTo(parent(), wxPoint(150, 35)); // leaving the swatch starts the drag
    ASSERT_TRUE(pumpUntil([&] { return !log.calls().empty(); }));
    EXPECT_EQ(log.calls(), (Calls{"target committed", "target live"}));
    EXPECT_EQ(std::memcmp(&received, &exact, sizeof exact), 0);
    EXPECT_EQ(target.getColor(), exact);

    // Press, leave and come back: the drag ends on the swatch itself, which takes its own colour
    // again; no click, no picker.
    log.clear();
    LaterInput back(source, wxPoint(30, 15));
    back.StartOnce(300);
    input.press(source, wxPoint(30, 15));
    input.moveTo(parent(), wxPoint(150, 35));
    ASSERT_TRUE(pumpUntil([&] { return !log.calls().empty(); }));
    EXPECT_EQ(log.calls(), (Calls{"source committed", "source live"}));
    pumpPending();
    EXPECT_EQ(driver.entered(), 0);
}

TEST_F(Swatches, TheClipboardCarriesTheFormatAndHexText) {
    const Rgb color(0.25f, 2.f, -1.f, 0.75f);
    ASSERT_TRUE(ColorPickerButton::copyToClipboard(color));
    EXPECT_EQ(ColorPickerButton::clipboardColor(), color);
    {
        wxClipboardLocker locker;
        wxTheClipboard->SetData(new wxTextDataObject(" #FF8000\n"));
    }
    EXPECT_EQ(ColorPickerButton::clipboardColor(), Rgb(1.f, 128 * Wx::Detail::kOne255th, 0.f, 1.f));
    {
        wxClipboardLocker locker;
        wxTheClipboard->SetData(new wxTextDataObject("Dead end"));
    }
    EXPECT_EQ(ColorPickerButton::clipboardColor(), std::nullopt);
}

TEST_F(Swatches, TheRightClickMenuCopiesAndPastes) {
    ColorPickerButton& source = make(L"source", {20, 20}, Rgb(0.25f, 0.5f, 2.f, 1.f));
    ColorPickerButton& target = make(L"target", {200, 20}, Rgb(0.f, 0.f, 0.f, 1.f));
    {
        wxClipboardLocker locker;
        wxTheClipboard->Clear();
    }
    // "Copy" is the first item, "Paste" the second.
    const auto choose = [&](ColorPickerButton& swatch, int downs) {
        LaterMenuChoice later(swatch, downs);
        input.click(swatch, wxPoint(30, 15), wxMOUSE_BTN_RIGHT);
        pumpPending();
    };
    choose(source, 1);
    EXPECT_EQ(ColorPickerButton::clipboardColor(), Rgb(0.25f, 0.5f, 2.f, 1.f));
    log.clear();
    choose(target, 2);
    EXPECT_EQ(target.getColor(), Rgb(0.25f, 0.5f, 2.f, 1.f));
    EXPECT_EQ(log.calls(), (Calls{"target committed", "target live"}));
}

TEST_F(Swatches, TheFormatIsSixteenNativeBytesAndShortDataIsRefused) {
    EXPECT_EQ(Wx::Detail::RgbDataObject::format().GetId(), "Tamarack-Rgb");
    const Rgb color(0.1f, -2.f, 1e30f, 0.5f);
    Wx::Detail::RgbDataObject data(color);
    EXPECT_EQ(data.GetDataSize(), 16u);
    float bytes[5] = {};
    ASSERT_TRUE(data.GetDataHere(bytes));
    EXPECT_EQ(bytes[0], 0.1f);
    EXPECT_EQ(bytes[1], -2.f);
    EXPECT_EQ(bytes[2], 1e30f);
    EXPECT_EQ(bytes[3], 0.5f);

    const float longer[5] = {1.f, 2.f, 3.f, 4.f, 5.f};
    EXPECT_TRUE(data.SetData(sizeof longer, longer));
    EXPECT_EQ(data.color(), Rgb(1.f, 2.f, 3.f, 4.f));
    const float shorter[2] = {9.f, 9.f};
    EXPECT_FALSE(data.SetData(sizeof shorter, shorter)); // never read past the end
    EXPECT_EQ(data.color(), Rgb(1.f, 2.f, 3.f, 4.f));
}

TEST_F(Swatches, APickerDestroyedWithItsSwatchWhileOpenLeavesNothingBehind) {
    auto* holder = new wxPanel(&parent(), wxID_ANY, {0, 0}, {300, 100});
    auto* swatch = new ColorPickerButton(holder, String(L"doomed"), wxSize(60, 30), true);
    ModalDriver driver([holder](wxDialog&) { delete holder; });
    swatch->openPicker();
    EXPECT_EQ(driver.entered(), 1);
    pumpPending();
}
