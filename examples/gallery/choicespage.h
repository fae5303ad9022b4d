#pragma once

class wxWindow;

namespace Varnel::Gallery {

/// Combo boxes (short, 30 items, 10,000 items, disabled) and dropdown buttons that keep or swap
/// their main entry, all writing into a log.
wxWindow* createChoicesPage(wxWindow* parent);

} // namespace Varnel::Gallery
