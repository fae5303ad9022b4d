#include "viewerframe.h"

#include "imagefiles.h"
#include "testscene.h"

#include <varnellib/native/filedialog.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/messagedialog.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/collapsiblepanel.h>
#include <varnellibwx/widgets/colorpickerbutton.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/pixelprobe.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/windowutils.h>

#include <wx/dcclient.h>
#include <wx/dnd.h>
#include <wx/filename.h>
#include <wx/menu.h>
#include <wx/sizer.h>

namespace Viewer {

namespace {

constexpr int kSceneWidth = 640;
constexpr int kSceneHeight = 400;
constexpr int kGap = 6;
const wchar_t* const kErrorTitle = L"Vellum Viewer";
const wchar_t* const kImageFilter =
    L"Images (*.exr;*.hdr;*.png;*.tif;*.tiff;*.jpg;*.jpeg)|*.exr;*.hdr;*.png;*.tif;*.tiff;*.jpg;"
    L"*.jpeg|All files (*)|*";
const wchar_t* const kSaveFilter =
    L"PNG (*.png)|*.png|TIFF (*.tif;*.tiff)|*.tif;*.tiff|OpenEXR (*.exr)|*.exr";

void complain(wxWindow* window, const std::string& message) {
    Wx::showOkDialog(Wx::getWindowNativeHandle(window), String(kErrorTitle),
                     String::fromUtf8(message.c_str()), Wx::MessageDialogIcon::Error);
}

/// Files dropped on the window: the first one is opened.
class DropTarget : public wxFileDropTarget {
public:
    explicit DropTarget(ViewerFrame& frame) : m_frame(frame) {}
    bool OnDropFiles(wxCoord, wxCoord, const wxArrayString& names) override {
        if (names.empty())
            return false;
        // Opened once the drop is over: a message box inside the drop would hold the source.
        const std::string path = names[0].utf8_string();
        m_frame.CallAfter([this, path] { m_frame.open(path); });
        return true;
    }

private:
    ViewerFrame& m_frame;
};

} // namespace

// ---- The hosts of the library's dialogs --------------------------------------------------------

/// The curve dialog's host: histograms of the image, colours under the picked pixel, and each
/// edited curve into the display at once (a drag updates the image while it goes).
class ViewerFrame::CurveHost : public Wx::ICurveDialogCallbacks {
public:
    explicit CurveHost(ViewerFrame& frame) : m_frame(frame) {}
    Histogram getHistogram(std::pair<float, float> range, CurveChannel channel, int bins) override {
        return imageHistogram(m_frame.m_image, m_frame.m_settings.exposureStops, channel, range,
                              bins);
    }
    Optional<int> getHistogramRefreshInterval() override { return {}; }
    Optional<Rgb> getColorAt(Pixel pixel) override {
        const Image::Descriptor& image = m_frame.m_image.descriptor();
        if (pixel.x < 0 || pixel.y < 0 || pixel.x >= image.width || pixel.y >= image.height)
            return {};
        return exposed(pixelFromTop(m_frame.m_image, pixel.x, pixel.y),
                       m_frame.m_settings.exposureStops);
    }
    void onCurveChanged(CurveChannel channel, const Curve& curve) override {
        m_frame.m_settings.curves[channel] = curve;
        if (!m_frame.m_settings.falseColor)
            m_frame.refreshDisplay();
    }
    int getChangeNotificationDelay() override { return 0; }
    /// Over the right of the image, inside the window, so that both stay in sight.
    wxPoint getInitialPosition(wxWindow* dialog) override {
        const wxRect frame = m_frame.GetScreenRect();
        return wxPoint(frame.GetRight() - dialog->GetSize().x - Wx::scaleByDpi(2 * kGap),
                       frame.y + Wx::scaleByDpi(8 * kGap));
    }
    void storePosition(wxPoint) override {}
    void onWindowOpened(wxWindow*) override {}
    void onWindowClosed(wxWindow*) override {}

private:
    ViewerFrame& m_frame;
};

/// The grid mapping dialog's host: false colour of the chosen channel through the same mapping
/// code that draws the image.
class ViewerFrame::MappingHost : public Wx::GridMappingDialogCallbacks {
public:
    explicit MappingHost(ViewerFrame& frame) : m_frame(frame) {}
    void onMappingChanged(const Wx::GridMapping& mapping) override {
        m_frame.m_settings.mapping = mapping;
        m_frame.refreshDisplay();
    }
    float computeAutoScale() override {
        const float largest = largestValue(m_frame.m_image, m_frame.m_settings.channel);
        return largest > 0.f ? 1.f / largest : 1.f;
    }
    /// The strip spans the channel's values from 0 to the image's largest.
    Rgb getPreviewColor(float value, float inputScale) override {
        Wx::GridMapping mapping = m_frame.m_settings.mapping;
        mapping.inputScale = inputScale;
        return falseColor(value * largestValue(m_frame.m_image, m_frame.m_settings.channel),
                          mapping);
    }

private:
    ViewerFrame& m_frame;
};

// ---- The view ----------------------------------------------------------------------------------

ImageView::ImageView(ViewerFrame& frame)
    : wxScrolled<wxWindow>(&frame, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                           wxHSCROLL | wxVSCROLL | wxBORDER_NONE),
      m_frame(frame) {
    SetBackgroundColour(wxColour(30, 30, 30));
    SetScrollRate(16, 16);
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        wxPaintDC dc(this);
        DoPrepareDC(dc);
        if (m_bitmap.IsOk())
            dc.DrawBitmap(m_bitmap, 0, 0);
    });
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        const Optional<Pixel> pixel = pixelAt(event.GetPosition());
        Wx::CurveDialog* dialog = m_frame.m_curveDialog.get();
        if (!pixel || !dialog || !dialog->isPicking())
            return;
        m_frame.m_picking = dialog->getController();
        m_frame.m_picking->startPicking(*pixel);
        CaptureMouse();
    });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) {
        if (HasCapture())
            ReleaseMouse();
        if (m_frame.m_picking && m_frame.m_curveDialog)
            m_frame.m_picking->stopPicking();
        m_frame.m_picking.reset();
    });
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) {
        if (m_frame.m_picking && m_frame.m_curveDialog)
            m_frame.m_picking->stopPicking();
        m_frame.m_picking.reset();
    });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
        const Optional<Pixel> pixel = pixelAt(event.GetPosition());
        if (pixel && m_frame.m_picking && m_frame.m_curveDialog)
            m_frame.m_picking->movePicking(*pixel);
        if (!m_frame.m_probing)
            return;
        if (!pixel) {
            m_frame.m_probe->hide();
            return;
        }
        const Rgb original = pixelFromTop(m_frame.m_image, pixel->x, pixel->y);
        m_frame.m_probe->show({*pixel, original, displayPixel(original, m_frame.m_settings)},
                              ClientToScreen(event.GetPosition()));
    });
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { m_frame.m_probe->hide(); });
}

void ImageView::setBitmap(const wxBitmap& bitmap) {
    const bool resized = !m_bitmap.IsOk() || bitmap.GetSize() != m_bitmap.GetSize();
    m_bitmap = bitmap;
    if (resized)
        SetVirtualSize(bitmap.GetSize());
    Refresh(false);
}

Optional<Pixel> ImageView::pixelAt(wxPoint client) const {
    const wxPoint at = CalcUnscrolledPosition(client);
    const Image::Descriptor& image = m_frame.m_image.descriptor();
    if (at.x < 0 || at.y < 0 || at.x >= image.width || at.y >= image.height)
        return {};
    return Pixel{at.x, at.y};
}

// ---- The frame ---------------------------------------------------------------------------------

ViewerFrame::ViewerFrame(const std::string& path)
    : wxFrame(nullptr, wxID_ANY, "Vellum Viewer", wxDefaultPosition,
              Wx::scaleByDpi(wxSize(1000, 640))) {
    const Wx::GuiSkin skin;
    SetBackgroundColour(Wx::toWxColour(skin.background));
    Wx::setVellumIcon(this);
    buildMenus();
    m_view = new ImageView(*this);
    m_probe = new Wx::PixelProbe(m_view);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(buildSidePanel(this), 0, wxEXPAND | wxALL, Wx::scaleByDpi(kGap));
    row->Add(m_view, 1, wxEXPAND);
    SetSizer(row);
    SetDropTarget(new DropTarget(*this));
    Wx::applySkinRecursive(this, skin);
    m_view->SetBackgroundColour(wxColour(30, 30, 30));

    show(renderTestScene(Wx::scaleByDpi(kSceneWidth), Wx::scaleByDpi(kSceneHeight)), "test scene");
    if (!path.empty())
        open(path);
}

ViewerFrame::~ViewerFrame() {
    // The dialogs' hosts reach into this frame: the dialogs go while it is whole.
    m_picking.reset();
    DestroyChildren();
}

void ViewerFrame::buildMenus() {
    auto* file = new wxMenu;
    file->Append(wxID_OPEN, "&Open...\tCtrl+O");
    file->Append(wxID_SAVEAS, "Save &as...\tCtrl+S");
    file->AppendSeparator();
    file->Append(wxID_EXIT, "&Quit\tCtrl+Q");
    auto* view = new wxMenu;
    const int probeId = wxWindow::NewControlId();
    const int curvesId = wxWindow::NewControlId();
    const int mappingId = wxWindow::NewControlId();
    view->AppendCheckItem(probeId, "Pixel &probe\tCtrl+P")->Check(m_probing);
    view->Append(curvesId, "&Curves...");
    view->Append(mappingId, "False colour &mapping...");
    auto* bar = new wxMenuBar;
    bar->Append(file, "&File");
    bar->Append(view, "&View");
    SetMenuBar(bar);
    Bind(
        wxEVT_MENU, [this](wxCommandEvent&) { openWithDialog(); }, wxID_OPEN);
    Bind(
        wxEVT_MENU, [this](wxCommandEvent&) { saveWithDialogs(); }, wxID_SAVEAS);
    Bind(
        wxEVT_MENU, [this](wxCommandEvent&) { Close(); }, wxID_EXIT);
    Bind(
        wxEVT_MENU, [this](wxCommandEvent& event) { showProbe(event.IsChecked()); }, probeId);
    Bind(
        wxEVT_MENU, [this](wxCommandEvent&) { openCurveDialog(); }, curvesId);
    Bind(
        wxEVT_MENU, [this](wxCommandEvent&) { openMappingDialog(); }, mappingId);
}

wxWindow* ViewerFrame::buildSidePanel(wxWindow* parent) {
    auto* side = new wxPanel(parent);
    auto* column = new wxBoxSizer(wxVERTICAL);
    const int gap = Wx::scaleByDpi(kGap);
    const auto button = [](wxWindow* pane, const char* label, Function<void()> action) {
        return new Wx::AutoSizedButton(pane, wxID_ANY, label, Wx::scaleByDpi(90),
                                       Wx::scaleByDpi(24), std::move(action));
    };

    auto* display = new Wx::CollapsiblePanel(side, wxID_ANY, String(L"Display"), true);
    wxWindow* pane = display->getPane();
    auto* grid = new wxFlexGridSizer(2, gap, gap);
    grid->Add(new Wx::StaticText(pane, wxID_ANY, String(L"Exposure (stops)")), 0,
              wxALIGN_CENTER_VERTICAL);
    m_exposure = new Wx::Spinner(pane, wxID_ANY, 60, -20.f, 20.f, 0.f, 2, 0.1f);
    m_exposure->callOnValueChange([this](float stops) { setExposure(stops); });
    grid->Add(m_exposure);
    grid->Add(new Wx::StaticText(pane, wxID_ANY, String(L"Tint")), 0, wxALIGN_CENTER_VERTICAL);
    m_tint = new Wx::ColorPickerButton(pane, String(L"Tint"), wxSize(60, 20), true);
    m_tint->setColor(m_settings.tint, false);
    m_tint->callOnLiveChange([this](const Rgb& tint) { setTint(tint); });
    grid->Add(m_tint);
    auto* displayColumn = new wxBoxSizer(wxVERTICAL);
    displayColumn->Add(grid, 0, wxALL, gap);
    displayColumn->Add(button(pane, "Curves...", [this] { openCurveDialog(); }), 0,
                       wxLEFT | wxBOTTOM, gap);
    pane->SetSizer(displayColumn);
    column->Add(display, 0, wxEXPAND | wxBOTTOM, gap);

    auto* mapping = new Wx::CollapsiblePanel(side, wxID_ANY, String(L"False colour"), true);
    pane = mapping->getPane();
    auto* mappingColumn = new wxBoxSizer(wxVERTICAL);
    m_falseColor = new Wx::CheckBox(pane, wxID_ANY, String(L"Show false colour"));
    m_falseColor->onChange = [this](bool on) {
        setFalseColor(on);
    };
    mappingColumn->Add(m_falseColor, 0, wxALL, gap);
    m_channel = new Wx::ComboBox(pane, wxID_ANY, 110,
                                 [this](int channel) {
                                     m_settings.channel = static_cast<Channel>(channel);
                                     if (m_settings.falseColor)
                                         refreshDisplay();
                                 },
                                 {});
    const Wx::ComboBox::Item channels[] = {{String(L"Luminance"), 0},
                                           {String(L"Red"), 1},
                                           {String(L"Green"), 2},
                                           {String(L"Blue"), 3},
                                           {String(L"Alpha"), 4}};
    m_channel->setData(ArrayView<const Wx::ComboBox::Item>(channels, 5));
    m_channel->selectIndex(0, false);
    mappingColumn->Add(m_channel, 0, wxLEFT | wxBOTTOM, gap);
    mappingColumn->Add(button(pane, "Mapping...", [this] { openMappingDialog(); }), 0,
                       wxLEFT | wxBOTTOM, gap);
    pane->SetSizer(mappingColumn);
    column->Add(mapping, 0, wxEXPAND | wxBOTTOM, gap);

    auto* about = new Wx::CollapsiblePanel(side, wxID_ANY, String(L"Image"), true);
    pane = about->getPane();
    m_info = new Wx::StaticText(pane, wxID_ANY, String(L""));
    auto* aboutColumn = new wxBoxSizer(wxVERTICAL);
    aboutColumn->Add(m_info, 0, wxALL, gap);
    pane->SetSizer(aboutColumn);
    column->Add(about, 0, wxEXPAND);
    side->SetSizer(column);
    return side;
}

void ViewerFrame::show(Image image, const std::string& name) {
    m_image = std::move(image);
    const Image::Descriptor& d = m_image.descriptor();
    m_displayed = wxImage(std::max(d.width, 1), std::max(d.height, 1), true);
    m_info->SetLabel(wxString::Format("%s\n%d x %d\nlargest value %g", wxString::FromUTF8(name),
                                      d.width, d.height,
                                      largestValue(m_image, Channel::Luminance)));
    SetTitle("Vellum Viewer - " + wxString::FromUTF8(name));
    Layout();
    refreshDisplay();
    if (m_curveDialog)
        m_curveDialog->updateHistogram();
}

void ViewerFrame::refreshDisplay() {
    if (m_image.descriptor().width > 0 && m_image.descriptor().height > 0)
        encodeImage(m_image, DisplayTables(m_settings), m_displayed.GetData());
    m_view->setBitmap(wxBitmap(m_displayed));
}

bool ViewerFrame::open(const std::string& path) {
    if (wxFileName::DirExists(wxString::FromUTF8(path))) {
        complain(this, "\"" + path + "\" is a folder, not an image.");
        return false;
    }
    Expected<Image, std::string> read = readImage(path);
    if (!read) {
        complain(this, "Cannot open \"" + path + "\".\n" + read.error());
        return false;
    }
    show(std::move(read.value()), wxFileName(wxString::FromUTF8(path)).GetFullName().utf8_string());
    return true;
}

void ViewerFrame::openWithDialog() {
    const Io::Path path = filenameOpenDlg(Wx::getWindowNativeHandle(this), String(L"Open image"),
                                          String(kImageFilter), Io::Path());
    if (!path.isEmpty())
        open(path.native().data());
}

bool ViewerFrame::save(const std::string& path, const Wx::ImageSaveSettings& settings) {
    const Optional<FileType> type = fileTypeOf(path);
    if (!type) {
        complain(this, "The viewer writes PNG, TIFF and OpenEXR files; give the name one of "
                       "their extensions (.png, .tif, .exr).");
        return false;
    }
    const DisplaySettings display = m_settings;
    const Optional<std::string> failure =
        writeImage(path, *type, settings, m_image,
                   [&display](const Rgb& pixel) { return displayPixel(pixel, display); });
    if (failure) {
        complain(this, "Cannot save \"" + path + "\".\n" + *failure);
        return false;
    }
    return true;
}

void ViewerFrame::saveWithDialogs() {
    const Io::Path path =
        filenameSaveDlg(Wx::getWindowNativeHandle(this), String(L"Save image"), String(kSaveFilter),
                        Flags<FileSelect>::fromRaw(1), Io::Path());
    if (path.isEmpty())
        return;
    const std::string name = path.native().data();
    const Optional<FileType> type = fileTypeOf(name);
    if (!type) {
        save(name, m_lastSave); // explains the extensions
        return;
    }
    const Optional<Wx::ImageSaveSettings> settings =
        Wx::showImageSaveSettingsDialog(this, m_lastSave, capabilitiesOf(*type));
    if (!settings)
        return;
    m_lastSave = *settings;
    save(name, *settings);
}

void ViewerFrame::setExposure(float stops) {
    m_settings.exposureStops = stops;
    if (m_exposure->getValue() != stops)
        m_exposure->setValue(stops, false);
    refreshDisplay();
    if (m_curveDialog)
        m_curveDialog->updateHistogram();
}

void ViewerFrame::setTint(const Rgb& tint) {
    m_settings.tint = tint;
    refreshDisplay();
}

void ViewerFrame::setFalseColor(bool on) {
    m_settings.falseColor = on;
    if (m_falseColor->GetValue() != on)
        m_falseColor->setValue(on, false);
    refreshDisplay();
}

Wx::CurveDialog* ViewerFrame::openCurveDialog() {
    if (!m_curveDialog)
        m_curveDialog = new Wx::CurveDialog(this, Wx::GuiSkin(), String(L"Curves"),
                                            m_settings.curves, makeShared<CurveHost>(*this));
    m_curveDialog->Raise();
    return m_curveDialog.get();
}

Wx::GridMappingDialog* ViewerFrame::openMappingDialog() {
    if (!m_mappingDialog) {
        setFalseColor(true);
        m_mappingDialog = new Wx::GridMappingDialog(
            this, String(L"False colour mapping"), m_settings.mapping, m_settings.mapping,
            makeShared<MappingHost>(*this), GetScreenRect().GetTopRight());
    }
    m_mappingDialog->Raise();
    return m_mappingDialog.get();
}

void ViewerFrame::showProbe(bool on) {
    m_probing = on;
    if (!on)
        m_probe->hide();
}

} // namespace Viewer
