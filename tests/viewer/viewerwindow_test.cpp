// The viewer's window on an image the test writes: exposure typed and a curve dragged with real
// input, the shown pixels against the pipeline, the image saved and read back, and a file that
// is not an image.
#include "guitest.h"

#include "imagefiles.h"
#include "viewerframe.h"

#include <varnellib/native/screen.h>
#include <varnellibwx/widgets/eyedropperbutton.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/textcontrol.h>

#include <wx/dialog.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

using namespace Viewer;

namespace {

std::string temporary(const std::string& name) {
    return (std::filesystem::temp_directory_path() / ("varnel-viewer-window-" + name)).string();
}

class ViewerWindow : public GuiTest {
protected:
    void TearDown() override {
        if (frame)
            frame->Destroy();
        GuiTest::TearDown();
    }

    // Every shown byte against the pipeline's exact formula for the settings in force.
    int bytesOffByMoreThanOne() const {
        const wxImage& shown = frame->displayed();
        int off = 0;
        for (int y = 0; y < shown.GetHeight(); ++y)
            for (int x = 0; x < shown.GetWidth(); ++x) {
                const auto expected = displayBytes(
                    displayPixel(pixelFromTop(frame->image(), x, y), frame->settings()));
                const unsigned char* seen = shown.GetData() + 3 * (y * shown.GetWidth() + x);
                for (int c = 0; c < 3; ++c)
                    off += std::abs(int(seen[c]) - int(expected[std::size_t(c)])) > 1;
            }
        return off;
    }

    Input input;
    ViewerFrame* frame = nullptr;
};

} // namespace

TEST_F(ViewerWindow, EditsShowThePipelinesPixelsAndSavedFilesReadBack) {
    Image image({64, 48, 1.f, ImageFormat::RgbaFloat32});
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 64; ++x)
            image.setRgba(x, y, Rgb(x / 16.f, y / 12.f, 0.5f, 1.f));
    const std::string source = temporary("source.exr");
    ASSERT_FALSE(writeImage(source, FileType::Exr, {Wx::ImageColorFormat::LinearFloat, false},
                            image, [](const Rgb& p) { return p; }));
    frame = new ViewerFrame(source);
    frame->Show();
    ASSERT_TRUE(pumpUntil([&] { return frame->IsShownOnScreen(); }));
    raiseAndActivate(*frame);
    EXPECT_EQ(frame->image().descriptor().width, 64);

    Wx::TextControl& field = *frame->exposureSpinner()->textField();
    input.click(field, wxPoint(5, 5));
    field.SelectAll();
    input.typeText("-1.5");
    input.key(WXK_RETURN);
    EXPECT_EQ(frame->settings().exposureStops, -1.5f);

    Wx::CurveDialog* dialog = frame->openCurveDialog();
    ASSERT_TRUE(pumpUntil([&] { return dialog->IsShownOnScreen(); }));
    Wx::CurvePanel& panel = *dialog->panel();
    const wxPoint middle(panel.GetClientSize().x / 2, panel.GetClientSize().y / 2);
    input.drag(panel, middle, middle - wxPoint(0, 50));
    EXPECT_FALSE(frame->settings().curves[CurveChannel::Master].isIdentity());
    EXPECT_EQ(bytesOffByMoreThanOne(), 0);

    // The colour picker's eyedropper reads the shown image off the screen like any other pixels.
    auto* dropper = new Wx::EyeDropperButton(frame, wxID_ANY, wxNullBitmap, String());
    frame->view()->Refresh();
    frame->view()->Update();
    pumpPending();
    const wxPoint onImage =
        frame->view()->ClientToScreen(wxPoint(10, 20)) - dropper->ClientToScreen(wxPoint(0, 0));
    const Rgb sampled = dropper->sampleAt(onImage);
    const unsigned char* shownByte = frame->displayed().GetData() + 3 * (20 * 64 + 10);
    EXPECT_EQ(sampled, Rgb(srgbByteToLinear(shownByte[0]), srgbByteToLinear(shownByte[1]),
                           srgbByteToLinear(shownByte[2]), 1.f));

    // 16-bit PNG of what is shown, and 32-bit OpenEXR of the linear image.
    const std::string png = temporary("shown.png"), exr = temporary("linear.exr");
    ASSERT_TRUE(frame->save(png, {Wx::ImageColorFormat::Srgb16, false}));
    ASSERT_TRUE(frame->save(exr, {Wx::ImageColorFormat::LinearFloat, true}));
    const Expected<Image, std::string> shown = readImage(png), linear = readImage(exr);
    ASSERT_TRUE(shown && linear);
    for (const auto& [x, y] : {std::pair{0, 0}, {63, 0}, {30, 20}, {63, 47}}) {
        const Rgb expected = displayPixel(pixelFromTop(image, x, y), frame->settings());
        const Rgb seen = pixelFromTop(shown.value(), x, y);
        EXPECT_NEAR(encodeSrgb(seen.r), expected.r, 2e-3f) << x << "," << y;
        EXPECT_NEAR(encodeSrgb(seen.g), expected.g, 2e-3f) << x << "," << y;
        EXPECT_EQ(pixelFromTop(linear.value(), x, y), pixelFromTop(image, x, y));
    }

    // A file that is not an image: the library's message, and the image as it was.
    const std::string text = temporary("notes.exr");
    std::ofstream(text) << "not an image";
    wxString message;
    ModalDriver driver([&](wxDialog& shownDialog) {
        message = shownDialog.GetTitle();
        shownDialog.Close();
    });
    EXPECT_FALSE(frame->open(text));
    EXPECT_EQ(driver.entered(), 1);
    EXPECT_EQ(message, "Vellum Viewer");
    EXPECT_EQ(frame->image().descriptor().width, 64);
    for (const std::string& path : {source, png, exr, text})
        std::remove(path.c_str());
}
