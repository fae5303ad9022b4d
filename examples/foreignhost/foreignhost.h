#pragma once

#include <gtk/gtk.h>

#include <chrono>
#include <functional>

class wxNativeContainerWindow;

namespace Varnel::Wx {
class Button;
}

namespace Varnel::ForeignHost {

/// A plain GTK 3 program's side of the library: its own GtkWindow, its own GLib loop, no wxApp.
/// It starts the library, puts a library Button into its window through the toolkit's native
/// container window, and the button shows a library message dialog owned by that window.
class Host {
public:
    /// Opens the native window and starts the library inside it.
    Host();
    /// Closes the window if it is still open, then shuts the library down.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    GtkWidget* window() const { return m_window; }
    bool isOpen() const { return m_window != nullptr; }
    /// The library's button in the window; null once the window is closed.
    Wx::Button* button() const { return m_button; }
    /// How many times the dialog was answered with OK and how many times otherwise.
    int accepted() const { return m_accepted; }
    int declined() const { return m_declined; }

    /// One turn of the host's loop: waits for GLib's next event (at most `slice`), dispatches it,
    /// then lets the library handle what it has queued.
    void iterate(std::chrono::milliseconds slice);
    /// Turns the loop until `done` holds or `timeout` passes; says whether it holds.
    bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds timeout);
    /// Turns the loop until the window is closed.
    void run();
    /// Closes the native window, as its close box would.
    void closeWindow();

private:
    static void onUnrealize(GtkWidget* window, gpointer self);
    static void onDestroy(GtkWidget* window, gpointer self);
    void askLater();
    void askTheUser();

    GtkWidget* m_window = nullptr;
    wxNativeContainerWindow* m_container = nullptr;
    Wx::Button* m_button = nullptr;
    guint m_pendingQuestion = 0;
    int m_accepted = 0;
    int m_declined = 0;
};

} // namespace Varnel::ForeignHost
