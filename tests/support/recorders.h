#pragma once

#include <varnellib/base/function.h>

#include <wx/event.h>

#include <string>
#include <vector>

namespace Varnel::Test {

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
