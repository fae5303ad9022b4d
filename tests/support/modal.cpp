#include "modal.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/dialog.h>
#include <wx/filedlg.h>

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

FileChooserAnswer::FileChooserAnswer(wxString path) : m_path(std::move(path)) {
    Register();
}

FileChooserAnswer::~FileChooserAnswer() {
    Stop();
    Unregister();
}

int FileChooserAnswer::Enter(wxDialog* dialog) {
    auto* chooser = dynamic_cast<wxFileDialog*>(dialog);
    if (!chooser)
        return wxID_NONE;
    seen = true;
    title = chooser->GetMessage();
    wildcard = chooser->GetWildcard();
    directory = chooser->GetDirectory();
    filename = chooser->GetFilename();
    style = chooser->GetWindowStyle();
    m_chooser = chooser;
    m_ticks = 0;
    Start(kPollMs);
    return wxID_NONE;
}

void FileChooserAnswer::Exit(wxDialog* dialog) {
    if (dialog == m_chooser) {
        Stop();
        m_chooser = nullptr;
    }
}

// Presses the chooser's Cancel or Open/Save button the way GTK reports a click: a chooser loads
// its folder in the background, so the chosen path is given a few ticks to show.
void FileChooserAnswer::Notify() {
    auto* chooser = static_cast<wxFileDialog*>(m_chooser);
    if (!chooser)
        return;
    constexpr int kTicksForTheFolder = 50;
    if (!m_path.empty()) {
        if (m_ticks == 0)
            chooser->SetPath(m_path);
        if (chooser->GetPath() != m_path && ++m_ticks < kTicksForTheFolder)
            return;
    }
    Stop();
    gtk_dialog_response(GTK_DIALOG(chooser->GetHandle()),
                        m_path.empty() ? GTK_RESPONSE_CANCEL : GTK_RESPONSE_ACCEPT);
}

} // namespace Varnel::Test
