#pragma once

#include <wx/gdicmn.h>
#include <wx/uiaction.h>

#include <chrono>
#include <functional>

class wxWindow;

namespace Varnel::Test {

/// Real input through the X server's XTEST extension: the events a user would make, at
/// positions given in a window's client coordinates. Every action ends with the resulting events
/// handled.
class Input {
public:
    void moveTo(const wxWindow& window, wxPoint client);
    void click(const wxWindow& window, wxPoint client, int button = wxMOUSE_BTN_LEFT);
    void press(const wxWindow& window, wxPoint client, int button = wxMOUSE_BTN_LEFT);
    void release(int button = wxMOUSE_BTN_LEFT);
    /// Presses at `from`, moves to `to` in `steps` straight steps, and releases there.
    void drag(const wxWindow& window, wxPoint from, wxPoint to, int button = wxMOUSE_BTN_LEFT,
              int steps = 8);
    /// Presses at `client` and keeps the button down until `until` holds (or 5 s pass).
    bool hold(const wxWindow& window, wxPoint client, const std::function<bool()>& until,
              int button = wxMOUSE_BTN_LEFT);
    void typeText(const char* text);
    void key(int keyCode, int modifiers = wxMOD_NONE);

private:
    wxUIActionSimulator m_simulator;
};

/// A wheel notch (`rotation` of 120 per notch, positive away from the user) as the toolkit
/// delivers it to `window`: the input simulator has no wheel.
void sendWheel(wxWindow& window, int rotation);

} // namespace Varnel::Test
