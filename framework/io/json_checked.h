// RapidJSON for documents that come from users and servers. Its assertions throw
// json_shape_error here instead of ending the process, so a document of an unexpected shape
// that slipped past the type checks still only fails the operation that read it. Include
// this header instead of RapidJSON's own, and before any of them.
#pragma once

#include <stdexcept>

namespace vl1 {

/// A JSON document doesn't have the shape an operation needs (a member missing or of the
/// wrong type); what() names the member.
class json_shape_error : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

}  // namespace vl1

#if defined(RAPIDJSON_RAPIDJSON_H_) && !defined(HUELOOM_RAPIDJSON_ASSERT_THROWS)
#error "framework/io/json_checked.h must be included before any RapidJSON header"
#endif

#ifndef HUELOOM_RAPIDJSON_ASSERT_THROWS
#define HUELOOM_RAPIDJSON_ASSERT_THROWS 1
#define RAPIDJSON_ASSERT(x) \
    ((x) ? static_cast<void>(0) : throw ::vl1::json_shape_error("JSON value of an unexpected type (" #x ")"))
#endif

#include <rapidjson/document.h>
