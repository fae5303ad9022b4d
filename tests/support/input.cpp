#include "input.h"
#include "pump.h"

#include <wx/utils.h>
#include <wx/window.h>

namespace Varnel::Test {

void Input::moveTo(const wxWindow& window, wxPoint client) {
    const wxPoint target = window.ClientToScreen(client);
    m_simulator.MouseMove(target);
    pumpUntil([&] { return wxGetMousePosition() == target; }, 2s);
    pumpPending();
}

void Input::click(const wxWindow& window, wxPoint client, int button) {
    moveTo(window, client);
    m_simulator.MouseClick(button);
    pumpPending();
}

void Input::press(const wxWindow& window, wxPoint client, int button) {
    moveTo(window, client);
    m_simulator.MouseDown(button);
    pumpPending();
}

void Input::release(int button) {
    m_simulator.MouseUp(button);
    pumpPending();
}

void Input::drag(const wxWindow& window, wxPoint from, wxPoint to, int button, int steps) {
    press(window, from, button);
    for (int step = 1; step <= steps; ++step) {
        const wxPoint at(from.x + (to.x - from.x) * step / steps,
                         from.y + (to.y - from.y) * step / steps);
        moveTo(window, at);
    }
    release(button);
}

bool Input::hold(const wxWindow& window, wxPoint client, const std::function<bool()>& until,
                 int button) {
    press(window, client, button);
    const bool reached = pumpUntil(until);
    release(button);
    return reached;
}

void Input::typeText(const char* text) {
    m_simulator.Text(text);
    pumpPending();
}

void Input::key(int keyCode, int modifiers) {
    m_simulator.Char(keyCode, modifiers);
    pumpPending();
}

void sendWheel(wxWindow& window, int rotation) {
    wxMouseEvent wheel(wxEVT_MOUSEWHEEL);
    wheel.m_wheelRotation = rotation;
    window.GetEventHandler()->ProcessEvent(wheel);
}

} // namespace Varnel::Test
