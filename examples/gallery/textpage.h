#pragma once

class wxWindow;

namespace Varnel::Gallery {

/// Static texts (bold, italic, wrapped), a link, text controls enabled and disabled, a log fed by
/// a timer, buttons that open each kind of message dialog and show the answer, and check boxes
/// enabled and disabled.
wxWindow* createTextPage(wxWindow* parent);

} // namespace Varnel::Gallery
