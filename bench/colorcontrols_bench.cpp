// The colour controls against the simplest version of the same job: a slider's track and the HWB
// field against plain fills of the same size, and an eyedropper motion against the bare X read of
// its square.
#include "startedlibrary.h"

#include <varnellib/native/screen.h>
#include <varnellibwx/widgets/colormodel.h>
#include <varnellibwx/widgets/colorslider.h>
#include <varnellibwx/widgets/eyedropperbutton.h>
#include <varnellibwx/widgets/hwbslice.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <gdk/gdkx.h>
#include <wx/dcbuffer.h>
#include <wx/dcclient.h>
#include <wx/image.h>
#include <wx/panel.h>

namespace {

using namespace Varnel;
using Wx::Detail::SliderTrack;

constexpr int kTrackLength = 256;
constexpr int kFieldSize = 256;

// The hue track: the colour changes before every repaint, so the track is rebuilt each time.
void SliderTrackRepaint_ColorSlider(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    Wx::Detail::PickerColor color;
    color.fromRgb({0.8f, 0.3f, 0.1f, 1.f});
    auto* slider = new Wx::ColorSlider(
        host.frame, wxID_ANY, wxSize(kTrackLength, 14),
        makeShared<Wx::ColorSlider::Gradient>([&color](float p, float) {
            return Wx::Detail::sliderTrackColor(SliderTrack::Sat, p, color.rgb, color.hsv);
        }));
    slider->setPosition(0.3f);
    PaintCount paints(slider);
    paints.waitForFirst();
    for (auto _ : state) {
        color.fromHsv({color.hsv.h + 1.f, color.hsv.s, color.hsv.v, 1.f});
        slider->refreshTrack();
        slider->Update();
    }
    paints.report(state);
}
BENCHMARK(SliderTrackRepaint_ColorSlider)->Unit(benchmark::kMicrosecond);

// The same slider repainted with nothing changed: the cached track is drawn again.
void SliderRepaint_CachedTrack(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* slider =
        new Wx::ColorSlider(host.frame, wxID_ANY, wxSize(kTrackLength, 14),
                            makeShared<Wx::ColorSlider::Gradient>([](float p, float) {
                                return Wx::Detail::sliderTrackColor(SliderTrack::Hue, p, {}, {});
                            }));
    timeRepaints(state, slider);
}
BENCHMARK(SliderRepaint_CachedTrack)->Unit(benchmark::kMicrosecond);

void SliderTrackRepaint_PlainFill(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* fill = new PlainFill(host.frame);
    fill->SetSize(wxSize(kTrackLength, 14));
    timeRepaints(state, fill);
}
BENCHMARK(SliderTrackRepaint_PlainFill)->Unit(benchmark::kMicrosecond);

void HwbField256_Render(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    for (auto _ : state) {
        wxImage image(kFieldSize, kFieldSize, false);
        Wx::Detail::renderHwbField(image.GetSize(), image.GetData());
        wxBitmap bitmap(image);
        benchmark::DoNotOptimize(bitmap.IsOk());
    }
}
BENCHMARK(HwbField256_Render)->Unit(benchmark::kMicrosecond);

void HwbField256_PlainFill(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    unsigned char shade = 0;
    for (auto _ : state) {
        wxImage image(kFieldSize, kFieldSize, false);
        image.SetRGB(wxRect(0, 0, kFieldSize, kFieldSize), ++shade, 128, 64);
        wxBitmap bitmap(image);
        benchmark::DoNotOptimize(bitmap.IsOk());
    }
}
BENCHMARK(HwbField256_PlainFill)->Unit(benchmark::kMicrosecond);

// A panel of grey rising by one step every pixel from left to right: every step of the pointer
// along it averages to a different colour.
class Ramp : public wxPanel {
public:
    explicit Ramp(wxWindow* parent) : wxPanel(parent, wxID_ANY, {0, 0}, {200, 100}) {
        Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
            wxPaintDC dc(this);
            for (int x = 0; x < 200; ++x) {
                dc.SetPen(wxPen(wxColour(x, x, x)));
                dc.DrawLine(x, 0, x, 100);
            }
        });
    }
};

// One motion of a pick at radius 15 through the button's own handler: the screen read of
// 31 x 31 logical pixels (62 x 62 device pixels at GDK_SCALE=2), the conversion and the average
// (a face that changes repaints with the next frame).
// The pointer walks along a row of the frame starting at `from` (frame coordinates).
void eyeDropperMotion(benchmark::State& state, wxPoint from) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* ramp = new Ramp(host.frame);
    auto* button = new Wx::EyeDropperButton(
        host.frame, wxID_ANY, Wx::EyeDropperButton::icon(Wx::EyeDropperButton::Icon::PickColor),
        String(L"Pick Color"));
    button->SetPosition(wxPoint(250, 150));
    button->setAveragingRadius(15);
    PaintCount(ramp).waitForFirst(); // on screen before it is read
    wxMouseEvent press(wxEVT_LEFT_DOWN);
    button->GetEventHandler()->ProcessEvent(press);
    int step = 0;
    for (auto _ : state) {
        wxMouseEvent motion(wxEVT_MOTION);
        motion.SetPosition(from + wxPoint(step++ % 120, 0) - button->GetPosition());
        motion.SetLeftDown(true);
        button->GetEventHandler()->ProcessEvent(motion);
    }
    wxMouseEvent cancel(wxEVT_RIGHT_DOWN);
    button->GetEventHandler()->ProcessEvent(cancel);
}

void EyeDropperMotionRadius15_AlongARamp(benchmark::State& state) {
    eyeDropperMotion(state, wxPoint(40, 50));
}
BENCHMARK(EyeDropperMotionRadius15_AlongARamp)->Unit(benchmark::kMicrosecond);

void EyeDropperMotionRadius15_OverFlatColour(benchmark::State& state) {
    eyeDropperMotion(state, wxPoint(40, 230));
}
BENCHMARK(EyeDropperMotionRadius15_OverFlatColour)->Unit(benchmark::kMicrosecond);

void EyeDropperMotionRadius15_XGetImage(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host; // the same windows on the screen as the eyedropper reads
    PaintCount(new Ramp(host.frame)).waitForFirst();
    Display* display = gdk_x11_display_get_xdisplay(gdk_display_get_default());
    const Window root = DefaultRootWindow(display);
    // The same square in device pixels: 62 x 62 of them at a window scale of 2.
    const int scale = screenScale();
    const auto side = static_cast<unsigned>(31 * scale);
    int step = 0;
    for (auto _ : state) {
        XImage* image = XGetImage(display, root, (25 + step++ % 120) * scale, 35 * scale, side,
                                  side, AllPlanes, ZPixmap);
        benchmark::DoNotOptimize(image->data);
        XDestroyImage(image);
    }
}
BENCHMARK(EyeDropperMotionRadius15_XGetImage)->Unit(benchmark::kMicrosecond);

} // namespace
