// The colour picker dialog wired up: real drags over its rows and what every other control shows,
// the temperature row, alpha by format, the settings that persist through the accessor, the
// buttons and the closing rule, and colours no screen can show.
#include "guitest.h"

#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/colordisplay.h>
#include <varnellibwx/widgets/colorpicker.h>
#include <varnellibwx/widgets/colorsliderwithspinner.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/eyedropperbutton.h>
#include <varnellibwx/widgets/hexcoloredit.h>
#include <varnellibwx/widgets/hwbslice.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/textcontrol.h>

#include <wx/radiobut.h>

#include <climits>

namespace {

using Row = ColorPicker::Row;
const Rgb kStart(0.8f, 0.35f, 0.1f, 0.5f);

// A host's accessor that records what the dialogs store and answers what it is told to.
class HostAccessor : public ColorPicker::IGlobalStateAccessor {
public:
    HostAccessor(int space, int range, std::vector<std::string>& calls)
        : m_space(space), m_range(range), m_calls(calls) {}
    void setSpace(ColorPicker::Space space) override {
        m_calls.push_back("setSpace " + std::to_string(int(space)));
    }
    ColorPicker::Space getSpace() const override { return ColorPicker::Space(m_space); }
    void setRange(ColorPicker::Range range) override {
        m_calls.push_back("setRange " + std::to_string(int(range)));
    }
    ColorPicker::Range getRange() const override { return ColorPicker::Range(m_range); }

private:
    int m_space, m_range;
    std::vector<std::string>& m_calls;
};

class Pickers : public GuiTest {
protected:
    void TearDown() override {
        ColorPicker::setGlobalStateAccessor(makeAuto<ColorPicker::DefaultGlobalStateAccessor>());
        GuiTest::TearDown();
    }

    ColorPicker& open(ColorPicker::ColorFormat format = ColorPicker::ColorFormat::Rgb,
                      const Rgb& color = kStart) {
        auto* picker = new ColorPicker(&parent(), String(L"Color Selector: Test"), wxPoint(60, 60),
                                       color, ColorPicker::DialogType::Normal, format);
        picker->callOnLiveChange([this](const Rgb& c) {
            live.push_back(c);
            log.record("live");
        });
        picker->callOnAddColor(log.recorder<const Rgb&>("add"));
        picker->callOnConfirm(log.recorder<>("confirm"));
        picker->callOnClosed(log.recorder<>("closed"));
        picker->Show();
        EXPECT_TRUE(raiseAndActivate(*picker));
        pumpPending();
        return *picker;
    }

    static ColorSlider& slider(ColorPicker& picker, Row row) { return *picker.row(row)->slider(); }

    Input input;
    CallLog log;
    std::vector<Rgb> live;
};

} // namespace

TEST_F(Pickers, AHueDragMovesEveryOtherControlWithOneLiveChangePerMotion) {
    ColorPicker& picker = open();
    const float sat = picker.row(Row::Sat)->getValue(), value = picker.row(Row::Value)->getValue();
    std::size_t presses = 0; // the press and each motion the toolkit delivers while it is held
    for (const auto type : {wxEVT_LEFT_DOWN, wxEVT_MOTION})
        slider(picker, Row::Hue).Bind(type, [&](wxMouseEvent& event) {
            presses += event.LeftIsDown() ? 1 : 0;
            event.Skip();
        });
    input.drag(slider(picker, Row::Hue), wxPoint(10, 7), wxPoint(150, 7), wxMOUSE_BTN_LEFT, 8);
    EXPECT_GE(presses, 5u);
    EXPECT_EQ(live.size(), presses);
    const Wx::Detail::PickerColor& color = picker.pickerColor();
    EXPECT_EQ(live.back(), color.rgb);
    EXPECT_NEAR(color.hsv.h, 150.f / 195.f * 360.f, 0.01f);
    EXPECT_EQ(picker.row(Row::Sat)->getValue(), sat);
    EXPECT_EQ(picker.row(Row::Value)->getValue(), value);
    EXPECT_FLOAT_EQ(picker.row(Row::Red)->getValue(), color.rgb.r * 255.f);
    EXPECT_EQ(toVarnelString(picker.hexField()->field()->GetValue()),
              Wx::Detail::formatHexColor(color.rgb));
    EXPECT_EQ(picker.hwbSlice()->getHue(), color.hsv.h);
    EXPECT_EQ(picker.currentPatch()->getColor(), color.rgb);
    EXPECT_EQ(picker.referencePatch()->getColor(), Rgb(0.8f, 0.35f, 0.1f, 1.f));
}

TEST_F(Pickers, EveryOtherEditClearsTheTemperatureRowAndItsOwnSetsIt) {
    ColorPicker& picker = open(ColorPicker::ColorFormat::Rgba);
    ColorSliderWithSpinner& temperature = *picker.row(Row::Temperature);
    EXPECT_FALSE(temperature.AcceptsFocusFromKeyboard()); // nothing to show at first
    const auto type = [&](const char* text) {
        temperature.spinner()->SetFocus();
        ASSERT_TRUE(pumpUntil([&] { return temperature.spinner()->textField()->HasFocus(); }));
        input.typeText(text);
        input.key(WXK_RETURN);
    };
    // The number the cleared row held behind its empty text is entered too (1700, the least).
    type("1700");
    EXPECT_EQ(picker.getColor().b, Wx::Detail::temperatureToRgb(1700.f).b);
    type("6500");
    EXPECT_TRUE(temperature.slider()->isMarkerVisible());
    Rgb white = Wx::Detail::temperatureToRgb(6500.f);
    white.a = kStart.a; // the temperature keeps the colour's alpha
    EXPECT_EQ(picker.getColor(), white);
    EXPECT_EQ(temperature.spinner()->textField()->GetValue(), "6500");

    input.click(slider(picker, Row::Red), wxPoint(50, 7));
    EXPECT_FALSE(temperature.slider()->isMarkerVisible());
    EXPECT_EQ(temperature.spinner()->textField()->GetValue(), "");
    EXPECT_EQ(picker.getColor().g, white.g);
    type("6500"); // the last temperature again, after another edit
    EXPECT_EQ(picker.getColor(), white);
}

TEST_F(Pickers, AlphaIsEditedOnlyInFormatOne) {
    ColorPicker& rgb = open();
    EXPECT_EQ(rgb.row(Row::Alpha), nullptr);
    EXPECT_EQ(rgb.getColor().a, 1.f);
    rgb.setColor({0.1f, 0.2f, 0.3f, 0.25f});
    EXPECT_EQ(rgb.getColor().a, 1.f);
    EXPECT_EQ(rgb.pickerColor().hsv.a, 1.f);
    input.click(slider(rgb, Row::Hue), wxPoint(40, 7));
    EXPECT_EQ(live.back().a, 1.f);

    ColorPicker& rgba = open(ColorPicker::ColorFormat::Rgba);
    EXPECT_EQ(rgba.getColor().a, 0.5f);
    input.click(slider(rgba, Row::Alpha), wxPoint(39, 7));
    EXPECT_FLOAT_EQ(live.back().a, 0.2f);
    EXPECT_EQ(rgba.pickerColor().hwb.a, live.back().a);
}

TEST_F(Pickers, RangeAndSpaceChangeOnlyTheNumbers) {
    ColorPicker& picker = open(ColorPicker::ColorFormat::Rgb, {0.5f, 0.25f, 1.f, 1.f});
    EXPECT_EQ(picker.row(Row::Red)->spinner()->textField()->GetValue(), "128"); // 127.5, linear
    const Rgb before = picker.getColor();
    picker.srgbBox()->setValue(true, true);
    EXPECT_EQ(picker.getSpace(), ColorPicker::Space::Srgb);
    EXPECT_FLOAT_EQ(picker.row(Row::Red)->getValue(), 255.f * std::pow(0.5f, 0.45454544f));
    picker.rangeButton(ColorPicker::Range::ZeroToOne)->SetValue(true);
    wxCommandEvent chosen(wxEVT_RADIOBUTTON);
    picker.rangeButton(ColorPicker::Range::ZeroToOne)->GetEventHandler()->ProcessEvent(chosen);
    EXPECT_EQ(picker.getRange(), ColorPicker::Range::ZeroToOne);
    EXPECT_EQ(picker.row(Row::Blue)->spinner()->textField()->GetValue(), "1.0");
    EXPECT_NEAR(picker.row(Row::Hue)->getValue(), picker.pickerColor().hsv.h / 360.f, 1e-6f);
    picker.row(Row::Temperature)->setValue(3000.f); // keeps its own scale
    EXPECT_EQ(picker.row(Row::Temperature)->spinner()->textField()->GetValue(), "3000");
    EXPECT_EQ(picker.getColor(), before);
    EXPECT_TRUE(live.empty());

    expectStop([&] { picker.setSpace(ColorPicker::Space(2)); }, "widgets/colorpicker", 841);
    expectStop([&] { picker.setRange(ColorPicker::Range(-1)); }, "widgets/colorpicker", 798);
    EXPECT_EQ(picker.getRange(), ColorPicker::Range::ZeroToOne);

    const std::pair<int, int> radii[] = {{INT_MIN, 0}, {10, 5}, {INT_MAX, 15}, {3, 2}};
    for (const auto& [asked, radius] : radii) {
        picker.setEyeDropperAveragingRadius(asked);
        EXPECT_EQ(picker.getEyeDropperAveragingRadius(), radius);
        EXPECT_EQ(picker.eyeDropper(true)->getAveragingRadius(), radius);
        EXPECT_EQ(Wx::Detail::kAveragingChoices[*picker.averagingList()->getSelectedIndex()].radius,
                  radius);
    }
}

TEST_F(Pickers, SpaceAndRangePersistThroughTheAccessorInForce) {
    ColorPicker& first = open();
    first.setSpace(ColorPicker::Space::Srgb);
    first.setRange(ColorPicker::Range::Percent);
    first.Close();
    ColorPicker& second = open();
    EXPECT_TRUE(second.srgbBox()->GetValue());
    EXPECT_TRUE(second.rangeButton(ColorPicker::Range::Percent)->GetValue());
    EXPECT_EQ(second.row(Row::Red)->spinner()->textField()->GetValue(),
              wxString::Format("%.1f", 100.f * std::pow(0.8f, 0.45454544f)));

    std::vector<std::string> stored;
    ColorPicker::setGlobalStateAccessor(makeAuto<HostAccessor>(0, 1, stored));
    ColorPicker& third = open();
    EXPECT_EQ(third.getRange(), ColorPicker::Range::ZeroToOne);
    EXPECT_FALSE(third.srgbBox()->GetValue());
    third.Close();
    EXPECT_EQ(stored, (std::vector<std::string>{"setSpace 0", "setRange 1"}));

    // A host answering values outside the enums is a programming error.
    ColorPicker::setGlobalStateAccessor(makeAuto<HostAccessor>(5, 0, stored));
    EXPECT_THROW(open(), StopException);
    ColorPicker::setGlobalStateAccessor(makeAuto<HostAccessor>(0, 7, stored));
    EXPECT_THROW(open(), StopException);
}

TEST_F(Pickers, ButtonsFollowTheClosingRule) {
    const auto press = [this](ColorPicker& picker, const wxString& label) {
        log.clear();
        live.clear();
        Button* button = picker.button(label);
        input.click(*button, wxPoint(10, 10));
        return picker.resultMarker();
    };
    ColorPicker& ok = open();
    input.click(slider(ok, Row::Green), wxPoint(20, 7));
    const Rgb edited = ok.getColor();
    EXPECT_EQ(press(ok, "OK"), 16);
    EXPECT_EQ(log.calls(), (Calls{"live", "confirm", "closed"}));
    EXPECT_EQ(live, std::vector<Rgb>{edited}); // the current patch: the edited colour
    EXPECT_FALSE(ok.IsShown());

    ColorPicker& add = open();
    EXPECT_EQ(press(add, "Add color"), 4);
    EXPECT_EQ(log.calls(), (Calls{"add", "closed"}));

    ColorPicker& cancel = open();
    input.click(slider(cancel, Row::Green), wxPoint(20, 7));
    EXPECT_EQ(press(cancel, "Cancel"), 0);
    EXPECT_EQ(log.calls(), (Calls{"live", "closed"}));
    EXPECT_EQ(live, std::vector<Rgb>{Rgb(0.8f, 0.35f, 0.1f, 1.f)}); // back to the reference

    ColorPicker& reset = open();
    input.click(slider(reset, Row::Green), wxPoint(20, 7));
    press(reset, "Reset");
    EXPECT_EQ(reset.getColor(), Rgb(0.8f, 0.35f, 0.1f, 1.f));
    EXPECT_TRUE(reset.IsShown());

    // Shown modally, the loop ends with the marker; Escape cancels.
    ColorPicker modal(&parent(), String(L"Modal"), wxDefaultPosition, kStart,
                      ColorPicker::DialogType::Normal, ColorPicker::ColorFormat::Rgb);
    ModalDriver driver([this](wxDialog& dialog) {
        raiseAndActivate(dialog);
        input.key(WXK_ESCAPE);
    });
    EXPECT_EQ(modal.ShowModal(), 0);
}

TEST_F(Pickers, ColoursNoScreenCanShowStayDefined) {
    ColorPicker& picker = open(ColorPicker::ColorFormat::Rgba);
    for (const Rgb& odd : {Rgb(kNaN, kInf, -1.f, kNaN), Rgb(1e30f, -kInf, 0.5f, 1e30f)}) {
        picker.setColor(odd);
        EXPECT_EQ(picker.hexField()->field()->GetValue().length(), 6u);
        for (const Row row :
             {Row::Red, Row::Green, Row::Blue, Row::Alpha, Row::Hue, Row::Sat, Row::Value})
            EXPECT_TRUE(std::isfinite(picker.row(row)->spinner()->getValue())) << int(row);
        const RgbBytes shown = Wx::Detail::toRgbBytes(odd);
        EXPECT_EQ(pixelAt(captureOnScreen(*picker.currentPatch()), 10, 10),
                  wxColour(shown.r, shown.g, shown.b));
    }
}

TEST_F(Pickers, TheInverseEyedropperEntersTheNormalisedInverse) {
    ColorPicker& picker = open(ColorPicker::ColorFormat::Rgba);
    EyeDropperButton& dropper = *picker.eyeDropper(true);
    input.press(dropper, wxPoint(10, 10));
    input.moveTo(*picker.currentPatch(), wxPoint(20, 15));
    ASSERT_TRUE(pumpUntil([&] { return dropper.sampledColor().a == 1.f; }));
    const Rgb sampled = dropper.sampledColor();
    input.release();
    Rgb expected = Wx::Detail::inverseColor(sampled);
    expected.a = kStart.a;
    EXPECT_EQ(picker.getColor(), expected);
    EXPECT_EQ(log.calls(), Calls{"live"});
}

TEST_F(Pickers, EscapeDuringAnEyedropperPickEndsThePickAndLeavesThePickerOpen) {
    // Pressed on the dropper, the pointer away over the picker, Escape: the pick ends, no colour,
    // the picker stays open, modeless and modal alike.
    const auto pickThenEscape = [&](ColorPicker& picker) {
        EyeDropperButton& dropper = *picker.eyeDropper(false);
        const wxPoint middle(dropper.GetClientSize().x / 2, dropper.GetClientSize().y / 2);
        input.moveTo(dropper, middle);
        pumpPending();
        input.press(dropper, middle);
        EXPECT_TRUE(pumpUntil([&] { return dropper.isPicking(); }));
        input.moveTo(picker, wxPoint(40, 40));
        input.key(WXK_ESCAPE);
        EXPECT_TRUE(pumpUntil([&] { return !dropper.isPicking(); }));
        input.release();
        pumpPending();
        EXPECT_TRUE(picker.IsShown());
        EXPECT_EQ(picker.getColor(), kStart);
    };
    ColorPicker& modeless = open(ColorPicker::ColorFormat::Rgba);
    pickThenEscape(modeless);
    EXPECT_EQ(log.calls(), Calls{});
    input.key(WXK_ESCAPE); // without a pick, Escape still cancels
    EXPECT_TRUE(pumpUntil([&] { return !modeless.IsShown(); }));
    modeless.Destroy();

    log.clear();
    auto* modal =
        new ColorPicker(&parent(), String(L"Color Selector: Modal"), wxPoint(60, 60), kStart,
                        ColorPicker::DialogType::Normal, ColorPicker::ColorFormat::Rgba);
    bool stillOpen = false;
    ModalDriver driver([&](wxDialog&) {
        pickThenEscape(*modal);
        stillOpen = modal->IsModal();
        modal->button("Cancel")->doClick(wxPoint(5, 5));
    });
    modal->ShowModal();
    EXPECT_EQ(driver.entered(), 1);
    EXPECT_TRUE(stillOpen);
    modal->Destroy();
}

TEST_F(Pickers, TheSliceAndTheWhitenessSliderDriveTheDialogByMouseAndKeys) {
    ColorPicker& picker = open();
    HwbSlice& slice = *picker.hwbSlice();
    // The slice's left edge at mid height: hue 0, blackness a half, whiteness as it was.
    const float whiteness = picker.pickerColor().hwb.w;
    input.click(slice, wxPoint(0, slice.GetClientSize().y / 2));
    EXPECT_EQ(picker.pickerColor().hwb.h, 0.f);
    EXPECT_NEAR(picker.pickerColor().hwb.b, 0.5f, 0.01f);
    EXPECT_EQ(picker.pickerColor().hwb.w, whiteness);
    EXPECT_EQ(picker.row(Row::Hue)->spinner()->getValue(), 0.f);
    EXPECT_EQ(live.size(), 1u);

    // With the focus the keys step: one degree, a hundredth, ten hundredths.
    const struct {
        int key;
        float hue, blackness;
    } keys[] = {{WXK_RIGHT, 1.f, 0.f}, {WXK_DOWN, 0.f, 0.01f}, {WXK_PAGEUP, 0.f, -0.1f}};
    for (const auto& [key, hue, blackness] : keys) {
        const Wx::Detail::Hwb before = picker.pickerColor().hwb;
        input.key(key);
        EXPECT_NEAR(picker.pickerColor().hwb.h, before.h + hue, 1e-3f) << key;
        EXPECT_NEAR(picker.pickerColor().hwb.b, before.b + blackness, 1e-4f) << key;
    }
    EXPECT_EQ(live.size(), 4u);

    input.click(*picker.whitenessSlider(),
                wxPoint(picker.whitenessSlider()->GetClientSize().x / 2, 7));
    EXPECT_NEAR(picker.pickerColor().hwb.w, 0.5f, 0.02f);
    EXPECT_EQ(picker.hexField()->field()->GetValue(),
              toWxString(Wx::Detail::formatHexColor(picker.getColor())));
    EXPECT_EQ(live.size(), 5u);
}

TEST_F(Pickers, ClosingByTheWindowFrameConfirms) {
    ColorPicker& picker = open();
    picker.setColor({0.1f, 0.2f, 0.3f, 1.f});
    log.clear();
    picker.Close(); // as the window frame's close box
    EXPECT_EQ(log.calls(), (Calls{"live", "confirm", "closed"}));
    EXPECT_EQ(live.back(), Rgb(0.1f, 0.2f, 0.3f, 1.f));
    EXPECT_FALSE(picker.IsShown());
    picker.Destroy();
}
