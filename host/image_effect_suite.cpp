#include "host/image_effect_suite.h"

#include "host/effect.h"
#include "host/host_state.h"

#include <new>
#include <vector>

namespace vl1::ofxhost {

namespace {

struct image_memory : handle_tag {
    static constexpr handle_kind kind = handle_kind::image_memory;
    explicit image_memory(std::size_t n) : handle_tag(kind), bytes(n) {}
    std::vector<unsigned char> bytes;
    int locks = 0;
};

template <class Body>
OfxStatus guarded(Body&& body)
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return kOfxStatErrMemory;
    } catch (...) {
        return kOfxStatFailed;
    }
}

OfxStatus get_property_set(OfxImageEffectHandle h, OfxPropertySetHandle* props)
{
    return guarded([&] {
        if (auto st = injected("getPropertySet"))
            return *st;
        effect* e = from_handle<effect>(h);
        if (e == nullptr)
            return kOfxStatErrBadHandle;
        if (props == nullptr)
            return kOfxStatErrValue;
        *props = e->properties().handle();
        return kOfxStatOK;
    });
}

OfxStatus get_param_set(OfxImageEffectHandle h, OfxParamSetHandle* params)
{
    return guarded([&] {
        if (auto st = injected("getParamSet"))
            return *st;
        effect* e = from_handle<effect>(h);
        if (e == nullptr)
            return kOfxStatErrBadHandle;
        if (params == nullptr)
            return kOfxStatErrValue;
        *params = e->params().handle();
        return kOfxStatOK;
    });
}

OfxStatus clip_define(OfxImageEffectHandle h, const char* name, OfxPropertySetHandle* props)
{
    return guarded([&] {
        if (auto st = injected("clipDefine", name))
            return *st;
        effect* e = from_handle<effect>(h);
        if (e == nullptr)
            return kOfxStatErrBadHandle;
        clip* c = nullptr;
        OfxStatus st = e->define_clip(name, &c);
        if (st == kOfxStatOK && props != nullptr)
            *props = c->properties().handle();
        return st;
    });
}

OfxStatus clip_get_handle(OfxImageEffectHandle h, const char* name, OfxImageClipHandle* out,
                          OfxPropertySetHandle* props)
{
    return guarded([&] {
        if (auto st = injected("clipGetHandle", name))
            return *st;
        effect* e = from_handle<effect>(h);
        if (e == nullptr)
            return kOfxStatErrBadHandle;
        if (name == nullptr || out == nullptr)
            return kOfxStatErrValue;
        clip* c = e->find_clip(name);
        if (c == nullptr)
            return kOfxStatErrUnknown;
        *out = c->handle();
        if (props != nullptr)
            *props = c->properties().handle();
        return kOfxStatOK;
    });
}

OfxStatus clip_get_property_set(OfxImageClipHandle h, OfxPropertySetHandle* props)
{
    return guarded([&] {
        clip* c = from_handle<clip>(h);
        if (c == nullptr)
            return kOfxStatErrBadHandle;
        if (auto st = injected("clipGetPropertySet", c->name().c_str()))
            return *st;
        if (props == nullptr)
            return kOfxStatErrValue;
        *props = c->properties().handle();
        return kOfxStatOK;
    });
}

OfxStatus clip_get_image(OfxImageClipHandle h, OfxTime time, const OfxRectD*, OfxPropertySetHandle* image)
{
    return guarded([&] {
        clip* c = from_handle<clip>(h);
        if (c == nullptr || c->is_descriptor())
            return kOfxStatErrBadHandle;
        if (auto st = injected("clipGetImage", c->name().c_str()))
            return *st;
        if (image == nullptr)
            return kOfxStatErrValue;
        OfxPropertySetHandle lent = c->owner()->lend_image(*c, time);
        if (lent == nullptr)
            return kOfxStatFailed;
        *image = lent;
        return kOfxStatOK;
    });
}

OfxStatus clip_release_image(OfxPropertySetHandle image)
{
    return guarded([&] {
        if (auto st = injected("clipReleaseImage"))
            return *st;
        return effect::release_image(image) ? kOfxStatOK : kOfxStatErrBadHandle;
    });
}

OfxStatus clip_get_region_of_definition(OfxImageClipHandle h, OfxTime, OfxRectD* bounds)
{
    return guarded([&] {
        clip* c = from_handle<clip>(h);
        if (c == nullptr || c->is_descriptor())
            return kOfxStatErrBadHandle;
        if (auto st = injected("clipGetRegionOfDefinition", c->name().c_str()))
            return *st;
        if (bounds == nullptr)
            return kOfxStatErrValue;
        *bounds = c->region_of_definition();
        return kOfxStatOK;
    });
}

int abort_render(OfxImageEffectHandle h)
{
    effect* e = from_handle<effect>(h);
    return e == nullptr ? 0 : e->answer_abort();
}

OfxStatus image_memory_alloc(OfxImageEffectHandle, size_t n, OfxImageMemoryHandle* out)
{
    return guarded([&] {
        if (auto st = injected("imageMemoryAlloc"))
            return *st;
        if (out == nullptr)
            return kOfxStatErrValue;
        *out = reinterpret_cast<OfxImageMemoryHandle>(static_cast<handle_tag*>(new image_memory(n)));
        ++current_state().image_memory_blocks;
        return kOfxStatOK;
    });
}

OfxStatus image_memory_free(OfxImageMemoryHandle h)
{
    return guarded([&] {
        if (auto st = injected("imageMemoryFree"))
            return *st;
        image_memory* m = from_handle<image_memory>(h);
        if (m == nullptr)
            return kOfxStatErrBadHandle;
        delete m;
        --current_state().image_memory_blocks;
        return kOfxStatOK;
    });
}

OfxStatus image_memory_lock(OfxImageMemoryHandle h, void** ptr)
{
    return guarded([&] {
        if (auto st = injected("imageMemoryLock"))
            return *st;
        image_memory* m = from_handle<image_memory>(h);
        if (m == nullptr)
            return kOfxStatErrBadHandle;
        if (ptr == nullptr)
            return kOfxStatErrValue;
        ++m->locks;
        *ptr = m->bytes.data();
        return kOfxStatOK;
    });
}

OfxStatus image_memory_unlock(OfxImageMemoryHandle h)
{
    return guarded([&] {
        if (auto st = injected("imageMemoryUnlock"))
            return *st;
        image_memory* m = from_handle<image_memory>(h);
        if (m == nullptr || m->locks == 0)
            return kOfxStatErrBadHandle;
        --m->locks;
        return kOfxStatOK;
    });
}

const OfxImageEffectSuiteV1 suite = {
    get_property_set,    get_param_set,       clip_define,
    clip_get_handle,     clip_get_property_set, clip_get_image,
    clip_release_image,  clip_get_region_of_definition, abort_render,
    image_memory_alloc,  image_memory_free,   image_memory_lock,
    image_memory_unlock,
};

}  // namespace

const OfxImageEffectSuiteV1* image_effect_suite() { return &suite; }

}  // namespace vl1::ofxhost
