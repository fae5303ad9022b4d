#pragma once

class wxWindow;

namespace Varnel::Gallery {

/// The picker's controls over one shared colour: a row of each kind of slider with its spinner
/// (red, green and blue in linear numbers, alpha, hue, saturation, value, temperature), the HWB
/// slice, the hex field, the current and starting colour patches, and the two eyedroppers with
/// the averaging list, all writing what they report into a log.
wxWindow* createColorControlsPage(wxWindow* parent);

} // namespace Varnel::Gallery
