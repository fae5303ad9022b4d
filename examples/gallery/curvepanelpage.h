#pragma once

class wxWindow;

namespace Varnel::Gallery {

/// A curve panel over the histograms of an image the page generates (a smooth gradient with some
/// noise), buttons for the histogram modes and the channels, and a log of the reports.
wxWindow* createCurvePanelPage(wxWindow* parent);

} // namespace Varnel::Gallery
