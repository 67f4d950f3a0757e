#include "host/host_state.h"

#include <algorithm>

namespace vl1::ofxhost {

namespace {

std::mutex stack_mutex;
std::vector<host_state*> live_states;

host_state& fallback_state()
{
    static host_state state;
    return state;
}

}  // namespace

void host_state::record_message(message_record message)
{
    std::lock_guard lock(messages_mutex);
    message_log.push_back(std::move(message));
}

std::vector<message_record> host_state::messages() const
{
    std::lock_guard lock(messages_mutex);
    return message_log;
}

void host_state::clear_messages()
{
    std::lock_guard lock(messages_mutex);
    message_log.clear();
}

host_state& current_state()
{
    std::lock_guard lock(stack_mutex);
    return live_states.empty() ? fallback_state() : *live_states.back();
}

void push_state(host_state* state)
{
    std::lock_guard lock(stack_mutex);
    live_states.push_back(state);
}

void pop_state(host_state* state)
{
    std::lock_guard lock(stack_mutex);
    live_states.erase(std::remove(live_states.begin(), live_states.end(), state), live_states.end());
}

}  // namespace vl1::ofxhost
