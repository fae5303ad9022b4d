#include "modal.h"

#include <gtest/gtest.h>
#include <wx/dialog.h>

namespace Varnel::Test {

namespace {
constexpr int kPollMs = 10;
constexpr auto kDeadline = std::chrono::seconds(5);
} // namespace

ModalDriver::ModalDriver(Step step, Answer answer)
    : m_step(std::move(step)), m_answer(std::move(answer)) {
    Register();
}

ModalDriver::~ModalDriver() {
    m_poll.Stop();
    Unregister();
}

int ModalDriver::Enter(wxDialog* dialog) {
    ++m_entered;
    if (m_answer) {
        if (const int result = m_answer(*dialog); result != wxID_NONE)
            return result;
    }
    m_dialog = dialog;
    m_stepped = false;
    m_deadline = std::chrono::steady_clock::now() + kDeadline;
    m_poll.Start(kPollMs);
    return wxID_NONE;
}

void ModalDriver::Exit(wxDialog* dialog) {
    if (dialog == m_dialog) {
        m_lastResult = dialog->GetReturnCode();
        m_poll.Stop();
        m_dialog = nullptr;
    }
}

void ModalDriver::poll() {
    if (!m_dialog)
        return;
    if (std::chrono::steady_clock::now() > m_deadline) {
        m_poll.Stop();
        ADD_FAILURE() << "a modal dialog was still open after 5 s";
        m_dialog->EndModal(wxID_ABORT);
        return;
    }
    if (m_stepped || !m_dialog->IsShownOnScreen())
        return;
    // One step per dialog; if it does not end the dialog, the deadline above will.
    m_stepped = true;
    if (m_step)
        m_step(*m_dialog);
}

} // namespace Varnel::Test
