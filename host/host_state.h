// What the suites need that no handle leads to: the failure table, the message log and the
// counters of allocations. Suites without a handle (memory, threads, messages) and the checks
// for injected failures use the state of the most recently created host that is still alive;
// one host at a time is the intended use, and a process-wide fallback serves calls made while
// none exists.
#pragma once

#include "host/failure_injection.h"

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

namespace vl1::ofxhost {

struct message_record {
    std::string type;  // "OfxMessageError", ...
    std::string id;    // may be empty
    std::string text;  // formatted
};

class host_state {
public:
    failure_table failures;

    void record_message(message_record message);
    std::vector<message_record> messages() const;
    void clear_messages();

    std::atomic<bool> echo_messages{false};  // also print messages to stderr
    std::atomic<OfxStatus> question_reply{kOfxStatReplyYes};
    std::atomic<unsigned> cpu_count{0};      // what multiThreadNumCPUs reports; 0: the machine's
    std::atomic<long> memory_blocks{0};       // memory suite allocations not yet freed
    std::atomic<long> image_memory_blocks{0};  // imageMemoryAlloc blocks not yet freed

private:
    mutable std::mutex messages_mutex;
    std::vector<message_record> message_log;
};

host_state& current_state();
void push_state(host_state* state);
void pop_state(host_state* state);

/// The status an injected failure prescribes for this call, if any.
inline std::optional<OfxStatus> injected(const char* function, const char* argument = nullptr)
{
    return current_state().failures.check(function, argument);
}

}  // namespace vl1::ofxhost
