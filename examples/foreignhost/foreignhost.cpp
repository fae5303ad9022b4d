#include "foreignhost.h"

#include <varnellib/native/windowhandle.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/messagedialog.h>
#include <varnellibwx/varnellibwx.h>
#include <varnellibwx/widgets/button.h>

#include <wx/nativewin.h>

namespace Varnel::ForeignHost {

namespace {
const wxPoint kButtonPosition(24, 24);
const wxSize kButtonSize(160, 28);
} // namespace

Host::Host() {
    m_window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_title(GTK_WINDOW(m_window), "Foreign host");
    g_signal_connect(m_window, "destroy", G_CALLBACK(&Host::onDestroy), this);
    gtk_widget_show(m_window);

    LibWx::startup(LibWx::ApplicationType::Default);
    // The toolkit's container window adopts the native window's drawing area, so that library
    // widgets can be its children. It keeps the size it was made with (resizing it from wx makes
    // GTK treat it as a top-level window again), so the native window takes that size.
    m_container = new wxNativeContainerWindow(gtk_widget_get_window(m_window));
    const wxSize size = m_container->GetSize();
    gtk_window_resize(GTK_WINDOW(m_window), size.x, size.y);
    // The library's widgets leave before the native window's drawing area does.
    g_signal_connect(m_window, "unrealize", G_CALLBACK(&Host::onUnrealize), this);
    m_button = new Wx::Button(m_container, Wx::GuiSkin(), wxID_ANY, "Render settings...",
                              wxNullBitmap, wxNullBitmap, [this] { askLater(); });
    m_button->SetSize(wxRect(kButtonPosition, kButtonSize));
    Wx::applySkinRecursive(m_container, Wx::GuiSkin());
}

Host::~Host() {
    if (m_pendingQuestion)
        g_source_remove(m_pendingQuestion);
    closeWindow();
    LibWx::shutdown();
}

void Host::askLater() {
    // The question runs from the host's own loop, not inside the button's click: the native
    // window may be closed while the dialog is open, which takes the button with it.
    if (m_pendingQuestion)
        return;
    m_pendingQuestion = g_idle_add(
        [](gpointer self) {
            auto& host = *static_cast<Host*>(self);
            host.m_pendingQuestion = 0;
            host.askTheUser();
            return G_SOURCE_REMOVE;
        },
        this);
}

void Host::askTheUser() {
    const bool ok = Wx::showOkCancelDialog(
        WindowHandle(m_window), String(L"Foreign host"),
        String(L"This message belongs to a GTK window that knows nothing of wxWidgets."),
        Wx::MessageDialogIcon::Question);
    ++(ok ? m_accepted : m_declined);
}

void Host::iterate(std::chrono::milliseconds slice) {
    const guint wake = g_timeout_add(
        static_cast<guint>(slice.count()), [](gpointer) { return G_SOURCE_REMOVE; }, nullptr);
    g_main_context_iteration(nullptr, TRUE);
    if (GSource* pending = g_main_context_find_source_by_id(nullptr, wake))
        g_source_destroy(pending);
    LibWx::processAllPendingEvents();
}

bool Host::runUntil(const std::function<bool()>& done, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!done()) {
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        iterate(std::chrono::milliseconds(10));
    }
    return true;
}

void Host::run() {
    while (isOpen()) {
        g_main_context_iteration(nullptr, TRUE);
        LibWx::processAllPendingEvents();
    }
}

void Host::closeWindow() {
    if (m_window)
        gtk_widget_destroy(m_window);
}

void Host::onUnrealize(GtkWidget*, gpointer self) {
    auto& host = *static_cast<Host*>(self);
    if (!host.m_container)
        return;
    // The container's own drawing area lives inside the native window's, which is about to go:
    // it moves out, hidden, and wx deletes it (with the button) once the current event is done,
    // so that closing the window from inside a widget's own handler is safe too.
    host.m_container->Hide();
    gdk_window_reparent(
        gtk_widget_get_window(static_cast<GtkWidget*>(host.m_container->GetHandle())),
        gdk_get_default_root_window(), 0, 0);
    host.m_container->Destroy();
    host.m_container = nullptr;
    host.m_button = nullptr;
}

void Host::onDestroy(GtkWidget*, gpointer self) {
    auto& host = *static_cast<Host*>(self);
    host.m_window = nullptr;
}

} // namespace Varnel::ForeignHost
