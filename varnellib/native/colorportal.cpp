#include <varnellib/native/colorportal.h>

#include <varnellib/native/screen.h>

#include <gdk/gdk.h>
#include <gio/gio.h>
#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif
#ifdef GDK_WINDOWING_WAYLAND
#include <gdk/gdkwayland.h>
#endif
#include <gtk/gtk.h>

#include <atomic>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace Varnel {

namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kScreenshot = "org.freedesktop.portal.Screenshot";
constexpr const char* kRequest = "org.freedesktop.portal.Request";

std::atomic<int> gOverride{-1};
int gExportedHandles = 0;

// The one question of the process: whether a portal can pick colours. Main thread only.
struct PortalQuestion {
    enum class Stage { NotAsked, Asking, Known } stage = Stage::NotAsked;
    bool available = false;
    unsigned generation = 0; // bumped when the answer is forgotten: late replies are dropped
    std::vector<Function<void(bool)>> waiting;
};

PortalQuestion& portalQuestion() {
    static PortalQuestion question;
    return question;
}

void answerPortalQuestion(bool available) {
    PortalQuestion& question = portalQuestion();
    question.stage = PortalQuestion::Stage::Known;
    question.available = available;
    // A callback may ask again (a button made from another's callback): it is answered at once.
    const std::vector<Function<void(bool)>> waiting = std::exchange(question.waiting, {});
    for (const Function<void(bool)>& onKnown : waiting)
        onKnown(available);
}

GDBusConnection* sessionBus() {
    // The process's shared connection: made once, kept for the process's life.
    static GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    return bus;
}

} // namespace

struct ColorPortalRequest::State {
    Function<void(const Answer&)> onAnswer;
    GCancellable* cancellable = g_cancellable_new();
    guint subscription = 0;
    std::string path;  // the request object the answer comes from
    bool done = false; // answered, failed or given up: nothing more is delivered
    bool closing = false;
    GdkWindow* exported = nullptr; // a Wayland window whose handle the portal was given

    ~State() {
        releaseHandle();
        g_object_unref(cancellable);
    }

    // The compositor keeps an exported handle until it is released: once per request.
    void releaseHandle() {
#ifdef GDK_WINDOWING_WAYLAND
        if (exported) {
            gdk_wayland_window_unexport_handle(exported);
            g_object_unref(exported);
            --gExportedHandles;
        }
#endif
        exported = nullptr;
    }

    void unsubscribe() {
        if (subscription)
            g_dbus_connection_signal_unsubscribe(sessionBus(), subscription);
        subscription = 0;
    }
    void deliver(const Answer& answer) {
        if (done)
            return;
        done = true;
        unsubscribe();
        releaseHandle();
        const Function<void(const Answer&)> call = onAnswer; // may destroy the request
        call(answer);
    }
};

namespace {

using State = ColorPortalRequest::State;

/// The colour of a Response's results: (ddd) under "color", each finite, clamped to [0, 1].
ColorPortalRequest::Answer colorOf(GVariant* results) {
    GVariant* color = g_variant_lookup_value(results, "color", G_VARIANT_TYPE("(ddd)"));
    if (!color)
        return {};
    double r = 0, g = 0, b = 0;
    g_variant_get(color, "(ddd)", &r, &g, &b);
    g_variant_unref(color);
    if (!std::isfinite(r) || !std::isfinite(g) || !std::isfinite(b))
        return {};
    const auto unit = [](double v) {
        return static_cast<float>(v < 0 ? 0 : v > 1 ? 1 : v);
    };
    return std::array<float, 3>{unit(r), unit(g), unit(b)};
}

void onResponse(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                GVariant* parameters, gpointer data) {
    // Kept alive here: delivering ends the subscription that holds it.
    const std::shared_ptr<State> keep = *static_cast<std::shared_ptr<State>*>(data);
    State& state = *keep;
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ua{sv})"))) {
        state.deliver({});
        return;
    }
    guint32 response = 2;
    GVariant* results = nullptr;
    g_variant_get(parameters, "(u@a{sv})", &response, &results);
    const ColorPortalRequest::Answer answer = response == 0 ? colorOf(results) : std::nullopt;
    g_variant_unref(results);
    state.deliver(answer);
}

void subscribe(const std::shared_ptr<State>& state, const std::string& path) {
    state->unsubscribe();
    state->path = path;
    state->subscription = g_dbus_connection_signal_subscribe(
        sessionBus(), kPortal, kRequest, "Response", path.c_str(), nullptr,
        G_DBUS_SIGNAL_FLAGS_NONE, &onResponse, new std::shared_ptr<State>(state),
        [](gpointer data) { delete static_cast<std::shared_ptr<State>*>(data); });
}

void onCalled(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<std::shared_ptr<State>> holder(
        static_cast<std::shared_ptr<State>*>(data));
    const std::shared_ptr<State>& state = *holder;
    GError* error = nullptr;
    GVariant* reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error);
    if (!reply) {
        const bool cancelled = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
        g_error_free(error);
        if (!cancelled)
            state->deliver({});
        return;
    }
    // Older portals choose the request's path themselves: follow the one they give.
    const gchar* path = nullptr;
    g_variant_get(reply, "(&o)", &path);
    if (!state->done && path && state->path != path)
        subscribe(state, path);
    g_variant_unref(reply);
}

void callPickColor(const std::shared_ptr<State>& state, const std::string& parent) {
    if (state->done)
        return;
    static std::atomic<unsigned> counter{0};
    const std::string token = "varnel" + std::to_string(++counter);
    // The request's path as the portal will make it: the caller's unique name without its colon,
    // dots as underscores, then the token.
    std::string sender = g_dbus_connection_get_unique_name(sessionBus());
    sender.erase(0, 1);
    for (char& c : sender)
        if (c == '.')
            c = '_';
    subscribe(state, std::string(kPortalPath) + "/request/" + sender + "/" + token);
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&options, "{sv}", "handle_token", g_variant_new_string(token.c_str()));
    g_dbus_connection_call(sessionBus(), kPortal, kPortalPath, kScreenshot, "PickColor",
                           g_variant_new("(sa{sv})", parent.c_str(), &options),
                           G_VARIANT_TYPE("(o)"), G_DBUS_CALL_FLAGS_NONE, -1, state->cancellable,
                           &onCalled, new std::shared_ptr<State>(state));
}

#ifdef GDK_WINDOWING_WAYLAND
void onExported(GdkWindow* window, const char* handle, gpointer data) {
    const std::shared_ptr<State>& state = *static_cast<std::shared_ptr<State>*>(data);
    // Ended before the compositor answered: the handle goes back at once.
    if (state->done) {
        gdk_wayland_window_unexport_handle(window);
        return;
    }
    state->exported = GDK_WINDOW(g_object_ref(window));
    ++gExportedHandles;
    callPickColor(state, std::string("wayland:") + handle);
}
#endif

} // namespace

ScreenAccess screenAccess() {
    if (const int forced = gOverride.load(); forced >= 0)
        return static_cast<ScreenAccess>(forced);
    // An X display of its own can be read; one inside a Wayland session (XWayland) shows the
    // session's windows as black, so the portal picks there too.
    return isScreenReadable() ? ScreenAccess::Direct : ScreenAccess::Portal;
}

namespace {

// The version of the Screenshot interface, 2 or later, means a portal that picks colours.
void onPortalVersion(GObject* source, GAsyncResult* result, gpointer data) {
    const auto generation = static_cast<unsigned>(GPOINTER_TO_UINT(data));
    GVariant* reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr);
    bool picks = false;
    if (reply) {
        GVariant* boxed = nullptr;
        g_variant_get(reply, "(v)", &boxed);
        picks =
            g_variant_is_of_type(boxed, G_VARIANT_TYPE_UINT32) && g_variant_get_uint32(boxed) >= 2;
        g_variant_unref(boxed);
        g_variant_unref(reply);
    }
    if (generation == portalQuestion().generation)
        answerPortalQuestion(picks);
}

} // namespace

void askColorPortal(Function<void(bool available)> onKnown) {
    PortalQuestion& question = portalQuestion();
    if (question.stage == PortalQuestion::Stage::Known) {
        onKnown(question.available);
        return;
    }
    question.waiting.push_back(std::move(onKnown));
    if (question.stage == PortalQuestion::Stage::Asking)
        return;
    GDBusConnection* bus = sessionBus();
    if (!bus) {
        answerPortalQuestion(false);
        return;
    }
    question.stage = PortalQuestion::Stage::Asking;
    // Asking for the interface's version starts a portal that is activatable but not running.
    g_dbus_connection_call(bus, kPortal, kPortalPath, "org.freedesktop.DBus.Properties", "Get",
                           g_variant_new("(ss)", kScreenshot, "version"), G_VARIANT_TYPE("(v)"),
                           G_DBUS_CALL_FLAGS_NONE, 1000, nullptr, &onPortalVersion,
                           GUINT_TO_POINTER(question.generation));
}

bool isColorPortalAvailable() {
    const PortalQuestion& question = portalQuestion();
    if (question.stage == PortalQuestion::Stage::NotAsked)
        askColorPortal({});
    return question.stage == PortalQuestion::Stage::Known && question.available;
}

ColorPortalRequest::ColorPortalRequest(WindowHandle parent, Function<void(const Answer&)> onAnswer)
    : m_state(std::make_shared<State>()) {
    m_state->onAnswer = std::move(onAnswer);
    if (!sessionBus()) {
        // Answered from the loop, as a portal would, never from inside the constructor.
        g_idle_add(
            [](gpointer data) {
                const std::unique_ptr<std::shared_ptr<State>> holder(
                    static_cast<std::shared_ptr<State>*>(data));
                (*holder)->deliver({});
                return G_SOURCE_REMOVE;
            },
            new std::shared_ptr<State>(m_state));
        return;
    }
    auto* widget = static_cast<GtkWidget*>(parent.native());
    GdkWindow* window = widget && GTK_IS_WIDGET(widget)
                            ? gtk_widget_get_window(gtk_widget_get_toplevel(widget))
                            : nullptr;
#ifdef GDK_WINDOWING_WAYLAND
    if (window && GDK_IS_WAYLAND_WINDOW(window)) {
        auto* holder = new std::shared_ptr<State>(m_state);
        if (gdk_wayland_window_export_handle(window, &onExported, holder, [](gpointer data) {
                delete static_cast<std::shared_ptr<State>*>(data);
            }))
            return;
        // A compositor that cannot export (no xdg-foreign) takes nothing: the request goes
        // without a parent, and the holder is ours to free.
        delete holder;
    }
#endif
    std::string handle;
#ifdef GDK_WINDOWING_X11
    if (window && GDK_IS_X11_WINDOW(window)) {
        char text[32];
        std::snprintf(text, sizeof text, "x11:%lx",
                      static_cast<unsigned long>(gdk_x11_window_get_xid(window)));
        handle = text;
    }
#endif
    callPickColor(m_state, handle);
}

ColorPortalRequest::~ColorPortalRequest() {
    State& state = *m_state;
    state.onAnswer = {};
    const bool pending = !state.done && !state.path.empty();
    state.done = true;
    state.unsubscribe();
    state.releaseHandle();
    g_cancellable_cancel(state.cancellable);
    // The compositor's picker goes away with the request.
    if (pending)
        g_dbus_connection_call(sessionBus(), kPortal, state.path.c_str(), kRequest, "Close",
                               nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr,
                               nullptr);
}

namespace Detail {

void setScreenAccessOverride(Optional<ScreenAccess> access) {
    gOverride.store(access ? static_cast<int>(*access) : -1);
}

void forgetColorPortalAnswer() {
    PortalQuestion& question = portalQuestion();
    question.stage = PortalQuestion::Stage::NotAsked;
    question.waiting.clear();
    ++question.generation;
}

int exportedWindowHandles() {
    return gExportedHandles;
}

} // namespace Detail
} // namespace Varnel
