#pragma once

// The viewer's main window: an image view with a side panel of collapsible groups, and the
// library's dialogs working on the image.

#include "pipeline.h"

#include <varnellibwx/widgets/curvedialog.h>
#include <varnellibwx/widgets/gridmappingdialog.h>
#include <varnellibwx/widgets/imagesavesettingsdialog.h>

#include <wx/frame.h>
#include <wx/image.h>
#include <wx/scrolwin.h>
#include <wx/weakref.h>

#include <memory>
#include <string>

namespace Varnel::Wx {
class CheckBox;
class ColorPickerButton;
class ComboBox;
class PixelProbe;
class Spinner;
class StaticText;
} // namespace Varnel::Wx

namespace Viewer {

class ImageView;

/// The main window. Opens an image from a path (the command line), the File menu or a file
/// dropped on it; without one it shows the rendered test scene.
class ViewerFrame : public wxFrame {
public:
    explicit ViewerFrame(const std::string& path = {});
    ~ViewerFrame() override;

    /// Opens an image, or shows the library's message dialog and keeps the one shown. True when
    /// it opened.
    bool open(const std::string& path);
    /// Writes the image as `settings` say, or shows the message dialog. True when written.
    bool save(const std::string& path, const Wx::ImageSaveSettings& settings);
    /// The File menu's actions, with their file and settings dialogs.
    void openWithDialog();
    void saveWithDialogs();

    void setExposure(float stops);
    void setTint(const Rgb& tint);
    void setFalseColor(bool on);
    Wx::CurveDialog* openCurveDialog();
    Wx::GridMappingDialog* openMappingDialog();
    void showProbe(bool on);

    const Image& image() const { return m_image; }
    const DisplaySettings& settings() const { return m_settings; }
    /// What the view shows: RGB bytes, rows from the top.
    const wxImage& displayed() const { return m_displayed; }
    ImageView* view() const { return m_view; }
    Wx::Spinner* exposureSpinner() const { return m_exposure; }
    Wx::PixelProbe* probe() const { return m_probe; }
    Wx::CurveDialog* curveDialog() const { return m_curveDialog.get(); }

    /// Encodes the image again with the current settings and repaints the view.
    void refreshDisplay();

private:
    class CurveHost;
    class MappingHost;
    friend class ImageView;

    void show(Image image, const std::string& name);
    wxWindow* buildSidePanel(wxWindow* parent);
    void buildMenus();

    Image m_image;
    DisplaySettings m_settings;
    wxImage m_displayed;
    ImageView* m_view = nullptr;
    Wx::Spinner* m_exposure = nullptr;
    Wx::ColorPickerButton* m_tint = nullptr;
    Wx::CheckBox* m_falseColor = nullptr;
    Wx::ComboBox* m_channel = nullptr;
    Wx::StaticText* m_info = nullptr;
    Wx::PixelProbe* m_probe = nullptr;
    bool m_probing = true;
    wxWeakRef<Wx::CurveDialog> m_curveDialog;
    wxWeakRef<Wx::GridMappingDialog> m_mappingDialog;
    AutoPtr<Wx::ICurvePanelController> m_picking; // while a press on the image picks
    Wx::ImageSaveSettings m_lastSave{Wx::ImageColorFormat::Srgb16, false};
};

/// The image at 1:1, scrolling; presses go to the curve dialog's controller while "Pick" is
/// down, motion to the pixel probe.
class ImageView : public wxScrolled<wxWindow> {
public:
    explicit ImageView(ViewerFrame& frame);
    /// Sets the bitmap to draw (and the scrolled size).
    void setBitmap(const wxBitmap& bitmap);
    /// The image pixel under a client position, when there is one.
    Optional<Pixel> pixelAt(wxPoint client) const;

private:
    ViewerFrame& m_frame;
    wxBitmap m_bitmap;
};

} // namespace Viewer
