#pragma once

class wxWindow;

namespace Varnel::Gallery {

/// Colour swatches (one disabled) that open the picker and trade colours by drag-and-drop and the
/// clipboard, two buttons that open the picker with and without alpha, and a log of what the
/// swatches and pickers report.
wxWindow* createColorPickerPage(wxWindow* parent);

} // namespace Varnel::Gallery
