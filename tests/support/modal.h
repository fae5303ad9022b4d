#pragma once

#include <wx/modalhook.h>
#include <wx/string.h>
#include <wx/timer.h>

#include <chrono>
#include <functional>

class wxDialog;

namespace Varnel::Test {

/// Drives the modal dialogs that code under test shows, from inside their own modal loop.
/// `answer` runs when a dialog is about to be shown: a result other than wxID_NONE is returned
/// from ShowModal without showing the dialog (the way to answer the toolkit's native message
/// box). Otherwise, once the dialog is on screen, `step` runs inside its loop (send a key, click
/// a button). A dialog still open 5 s later fails the test and is ended with wxID_ABORT.
class ModalDriver : public wxModalDialogHook {
public:
    using Step = std::function<void(wxDialog&)>;
    using Answer = std::function<int(wxDialog&)>;

    explicit ModalDriver(Step step, Answer answer = {});
    ~ModalDriver() override;

    /// How many dialogs were shown (or answered) so far.
    int entered() const { return m_entered; }
    /// What the last dialog driven here ended with (wxID_NONE before any).
    int lastResult() const { return m_lastResult; }

protected:
    int Enter(wxDialog* dialog) override;
    void Exit(wxDialog* dialog) override;

private:
    class Poll : public wxTimer {
    public:
        explicit Poll(ModalDriver& driver) : m_driver(driver) {}
        void Notify() override { m_driver.poll(); }

    private:
        ModalDriver& m_driver;
    };

    void poll();

    Step m_step;
    Answer m_answer;
    Poll m_poll{*this};
    wxDialog* m_dialog = nullptr;
    std::chrono::steady_clock::time_point m_deadline;
    int m_entered = 0;
    int m_lastResult = wxID_NONE;
    bool m_stepped = false;
};

/// Answers the file chooser that the code under test opens, as the user would: once the chooser
/// runs (and, for an existing file, once it shows it selected), its Save/Open button with `path`
/// chosen, or Cancel when `path` is empty. Notes what the chooser showed.
class FileChooserAnswer : public wxModalDialogHook, private wxTimer {
public:
    explicit FileChooserAnswer(wxString path = {});
    ~FileChooserAnswer() override;

    bool seen = false;
    wxString title, wildcard, directory, filename;
    long style = 0;

protected:
    int Enter(wxDialog* dialog) override;
    void Exit(wxDialog* dialog) override;

private:
    void Notify() override;

    wxString m_path;
    wxDialog* m_chooser = nullptr;
    int m_ticks = 0;
};

} // namespace Varnel::Test
