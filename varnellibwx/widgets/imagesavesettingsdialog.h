#pragma once

#include <varnellib/base/optional.h>
#include <varnellibwx/export.h>

#include <wx/dialog.h>

#include <array>

class wxRadioButton;

namespace Varnel::Wx {

class CheckBox;

/// How an image is written: 8 or 16 bits of gamma-encoded sRGB, or 16-bit (half) or 32-bit
/// floating-point linear RGB, in the dialog's order.
enum class ImageColorFormat : int { Srgb8 = 0, Srgb16 = 1, LinearHalf = 2, LinearFloat = 3 };

/// The user's choice: a format and whether the alpha channel is written.
struct ImageSaveSettings {
    ImageColorFormat format = ImageColorFormat::Srgb8;
    bool alpha = false;
    bool operator==(const ImageSaveSettings&) const = default;
};

/// What the host's chosen file type can hold: each format in ImageColorFormat's order, and alpha.
struct ImageSaveCapabilities {
    std::array<bool, 4> formats{true, true, true, true};
    bool alpha = true;
};

/// The modal dialog in which the user chooses how an image is saved: " Save Options", the group
/// "Color format" with a radio button per format (those the file type cannot hold are disabled,
/// so neither the mouse nor the arrow keys choose them), "Include alpha channel" (disabled and
/// clear when the file type has no alpha), "OK" and "Cancel". Enter accepts; Escape and the
/// close box cancel. Owned by its creator (usually on the stack, shown with ShowModal).
class VARNEL_LIBWX_EXPORT ImageSaveSettingsDialog : public wxDialog {
public:
    static constexpr const wchar_t* kFormatLabels[] = {L"8-bit sRGB", L"16-bit sRGB",
                                                       L"16-bit floating-point linear RGB",
                                                       L"32-bit floating-point linear RGB"};

    /// Starts from `start` as Detail::startingSettings adjusts it to `capabilities`.
    ImageSaveSettingsDialog(wxWindow* parent, const ImageSaveSettings& start,
                            const ImageSaveCapabilities& capabilities = {});
    ~ImageSaveSettingsDialog() override;

    /// The settings as the controls show them.
    ImageSaveSettings settings() const;

    wxRadioButton* formatButton(ImageColorFormat format) const;
    CheckBox* alphaBox() const { return m_alpha; }

private:
    std::array<wxRadioButton*, 4> m_formats{};
    CheckBox* m_alpha = nullptr;
};

/// Shows the dialog modally: the settings chosen with "OK" or Enter, nothing on "Cancel",
/// Escape or the close box.
VARNEL_LIBWX_EXPORT Optional<ImageSaveSettings>
showImageSaveSettingsDialog(wxWindow* parent, const ImageSaveSettings& start,
                            const ImageSaveCapabilities& capabilities = {});

namespace Detail {

/// The settings a dialog starts from: `start`'s format when the file type holds it, else the
/// first format it holds; alpha only when both ask for it. A file type that holds no format (or a
/// format outside the enum) is a programming error: the stop exception.
VARNEL_LIBWX_EXPORT ImageSaveSettings startingSettings(const ImageSaveSettings& start,
                                                       const ImageSaveCapabilities& capabilities);

} // namespace Detail
} // namespace Varnel::Wx
