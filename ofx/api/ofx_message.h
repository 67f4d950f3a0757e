// "OfxMessageSuite", version 1, and the interact suite's name (fetched, never called).
#pragma once

#include "ofx/api/ofx_core.h"

inline constexpr const char* kOfxMessageSuite = "OfxMessageSuite";
inline constexpr const char* kOfxInteractSuite = "OfxInteractSuite";

inline constexpr const char* kOfxMessageFatal = "OfxMessageFatal";
inline constexpr const char* kOfxMessageError = "OfxMessageError";
inline constexpr const char* kOfxMessageMessage = "OfxMessageMessage";
inline constexpr const char* kOfxMessageLog = "OfxMessageLog";
inline constexpr const char* kOfxMessageQuestion = "OfxMessageQuestion";

extern "C" {

struct OfxMessageSuiteV1 {
    OfxStatus (*message)(void* handle, const char* messageType, const char* messageId, const char* format, ...);
};

}  // extern "C"
