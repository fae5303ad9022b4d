#pragma once

class wxWindow;

namespace Varnel::Gallery {

/// Spinners for an integer, three decimals, a huge range, a negative range and one with a click
/// speed override, and a live log of the events they send.
wxWindow* createSpinnersPage(wxWindow* parent);

} // namespace Varnel::Gallery
