#pragma once

#include <cstddef>
#include <vector>

namespace tamarind {

// Those who hear of the changes in one part of the session, in the order in which they came.
template <typename Listener>
class Listeners {
public:
    void Add(Listener& listener) { m_listeners.push_back(&listener); }
    void Remove(Listener& listener) { std::erase(m_listeners, &listener); }

    // Tells all of them. One that is added meanwhile hears of it, too.
    template <typename... Parameters, typename... Arguments>
    void Tell(void (Listener::*event)(Parameters...), const Arguments&... arguments) const {
        for (std::size_t at = 0; at < m_listeners.size(); ++at) {
            (m_listeners[at]->*event)(arguments...);
        }
    }

private:
    std::vector<Listener*> m_listeners;
};

}  // namespace tamarind
