// Host objects that travel to a plug-in as opaque C handles. Every live handle-bearing object
// is registered with its kind, so a handle of the wrong kind (a parameter passed where a
// property set is wanted), a destroyed one or a pointer the host never made is recognised and
// answered with kOfxStatErrBadHandle instead of being used. The registry is consulted rather
// than the memory behind the handle, which may have been freed.
#pragma once

#include <cstdint>

namespace vl1::ofxhost {

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

/// Base of every handle-bearing class; registers the object while it lives.
struct handle_tag {
    explicit handle_tag(handle_kind k);
    handle_tag(const handle_tag&) = delete;
    handle_tag& operator=(const handle_tag&) = delete;
    ~handle_tag();
    /// Makes the handle dead while the object lives on (an instance the plug-in destroyed).
    void kill();
    /// Makes a killed handle live again as `k` (a given-back image's set, lent anew).
    void revive(handle_kind k);
    handle_kind tag;
};

/// The kind of the live object at `handle`; dead for null, destroyed or foreign pointers.
handle_kind live_handle_kind(const void* handle);

/// The object behind a C handle, or null when the handle is null, dead or of another kind.
template <class T>
T* from_handle(const void* handle)
{
    if (live_handle_kind(handle) != T::kind)
        return nullptr;
    return static_cast<T*>(reinterpret_cast<handle_tag*>(const_cast<void*>(handle)));
}

}  // namespace vl1::ofxhost
