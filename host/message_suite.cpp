#include "host/message_suite.h"

#include "host/host_state.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

namespace vl1::ofxhost {

namespace {

std::string format_message(const char* format, std::va_list ap)
{
    std::va_list copy;
    va_copy(copy, ap);
    const int n = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (n < 0)
        return format;
    std::vector<char> buffer(static_cast<std::size_t>(n) + 1);
    std::vsnprintf(buffer.data(), buffer.size(), format, ap);
    return buffer.data();
}

OfxStatus message(void*, const char* type, const char* id, const char* format, ...)
{
    if (auto st = injected("message", type))
        return *st;
    if (type == nullptr || format == nullptr)
        return kOfxStatErrValue;
    std::va_list ap;
    va_start(ap, format);
    OfxStatus status = kOfxStatOK;
    try {
        host_state& state = current_state();
        message_record record{type, id ? id : "", format_message(format, ap)};
        if (state.echo_messages)
            std::fprintf(stderr, "[%s] %s\n", type, record.text.c_str());
        state.record_message(std::move(record));
        if (std::strcmp(type, kOfxMessageQuestion) == 0)
            status = state.question_reply;
    } catch (...) {
        status = kOfxStatFailed;
    }
    va_end(ap);
    return status;
}

const OfxMessageSuiteV1 suite = {message};

struct interact_record {
    const char* name;
} interact = {"OfxInteractSuite"};

}  // namespace

const OfxMessageSuiteV1* message_suite() { return &suite; }

const void* interact_suite() { return &interact; }

}  // namespace vl1::ofxhost
