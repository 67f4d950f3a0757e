// Process-wide settings that every fuzz body relies on, made once.
#pragma once

namespace vl1::fuzz {

/// Log lines are still formatted (their formatting is part of what runs on bad input) but go
/// to a sink that drops them, not to syslog: millions of inputs would flood the system log.
/// Idempotent and thread-safe; every body calls it first.
void prepare_process();

}  // namespace vl1::fuzz
