#pragma once

#include <varnellib/base/function.h>

#include <wx/event.h>

#include <string>
#include <vector>

namespace Varnel::Test {

/// Counts the events of one type that reach a handler, letting them go on to other handlers.
class EventCounter {
public:
    template <class Event>
    EventCounter(wxEvtHandler& handler, const wxEventTypeTag<Event>& type)
        : m_unbind(
              [&handler, type, this] { handler.Unbind(type, &EventCounter::count<Event>, this); }) {
        handler.Bind(type, &EventCounter::count<Event>, this);
    }
    ~EventCounter() { m_unbind(); }
    EventCounter(const EventCounter&) = delete;
    EventCounter& operator=(const EventCounter&) = delete;

    int count() const { return m_count; }
    int lastId() const { return m_lastId; }

private:
    template <class Event>
    void count(Event& event) {
        ++m_count;
        m_lastId = event.GetId();
        event.Skip();
    }

    std::function<void()> m_unbind;
    int m_count = 0;
    int m_lastId = wxID_NONE;
};

/// Records calls by name, in order, from callbacks and event handlers alike.
class CallLog {
public:
    void record(std::string name) { m_calls.push_back(std::move(name)); }
    const std::vector<std::string>& calls() const { return m_calls; }
    void clear() { m_calls.clear(); }

    /// A callback that records `name` and ignores its arguments.
    template <class... Args>
    Function<void(Args...)> recorder(std::string name) {
        return [this, name](Args...) {
            record(name);
        };
    }

private:
    std::vector<std::string> m_calls;
};

} // namespace Varnel::Test
