// Host objects that travel to a plug-in as opaque C handles. Each starts with a tag, so a handle
// of the wrong kind (a parameter passed where a property set is wanted, an instance that was
// destroyed) is recognised and answered with kOfxStatErrBadHandle instead of being used.
#pragma once

#include <cstdint>
#include <cstring>

namespace ofxhost {

enum class handle_kind : std::uint32_t {
    dead = 0,
    property_set = 0x50524f50,  // "PROP"
    param_set = 0x50534554,     // "PSET"
    param = 0x5041524d,         // "PARM"
    effect = 0x45464654,        // "EFFT"
    clip = 0x434c4950,          // "CLIP"
    image_memory = 0x494d454d,  // "IMEM"
    mutex = 0x4d555458,         // "MUTX"
};

/// First base of every handle-bearing class, so the tag sits at offset 0 of the object.
struct handle_tag {
    explicit handle_tag(handle_kind k) : tag(k) {}
    handle_tag(const handle_tag&) = delete;
    handle_tag& operator=(const handle_tag&) = delete;
    ~handle_tag() { tag = handle_kind::dead; }
    handle_kind tag;
};

/// The object behind a C handle, or null when the handle is null or of another kind.
template <class T>
T* from_handle(const void* handle)
{
    if (handle == nullptr) return nullptr;
    handle_kind found;
    std::memcpy(&found, handle, sizeof found);
    if (found != T::kind) return nullptr;
    return static_cast<T*>(reinterpret_cast<handle_tag*>(const_cast<void*>(handle)));
}

}  // namespace ofxhost
