// A small plug-in that drives the host for the host's own tests. Bundle "HostFixture" holds two
// plug-ins: "org.hueloom.test.fixture" (filter and general contexts, several parameter types,
// inverts RGB of byte, short and float images honouring row bytes, splits rows over the
// multi-thread suite, writes a key when its "Write Key" button is pressed, reports the suites
// it found) and "org.hueloom.test.fixture.second" (general context, one parameter). Built with
// FIXTURE_WRONG_API it claims an API a host must refuse.
#include "ofx/api/ofx_image_effect.h"
#include "ofx/api/ofx_memory.h"
#include "ofx/api/ofx_message.h"
#include "ofx/api/ofx_multithread.h"
#include "ofx/api/ofx_param.h"
#include "ofx/api/ofx_property.h"
#include "tests/host/fixture_plugin/fixture_instance.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <string>

#define FIXTURE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using host_fixture::instance_record;

OfxHost* host = nullptr;
const OfxImageEffectSuiteV1* effects = nullptr;
const OfxPropertySuiteV1* props = nullptr;
const OfxParameterSuiteV1* params = nullptr;
const OfxMemorySuiteV1* memory = nullptr;
const OfxMultiThreadSuiteV1* threads = nullptr;
const OfxMessageSuiteV1* messages = nullptr;
const void* interact = nullptr;
std::string suites_found;

template <class T>
const T* fetch(const char* name)
{
    const void* s = host->fetchSuite(host->host, name, 1);
    if (s != nullptr) suites_found += (suites_found.empty() ? "" : ",") + std::string(name);
    return static_cast<const T*>(s);
}

OfxStatus on_load()
{
    if (host == nullptr) return kOfxStatErrMissingHostFeature;
    suites_found.clear();
    effects = fetch<OfxImageEffectSuiteV1>(kOfxImageEffectSuite);
    props = fetch<OfxPropertySuiteV1>(kOfxPropertySuite);
    params = fetch<OfxParameterSuiteV1>(kOfxParameterSuite);
    memory = fetch<OfxMemorySuiteV1>(kOfxMemorySuite);
    threads = fetch<OfxMultiThreadSuiteV1>(kOfxMultiThreadSuite);
    messages = fetch<OfxMessageSuiteV1>(kOfxMessageSuite);
    interact = fetch<void>(kOfxInteractSuite);
    return effects && props && params ? kOfxStatOK : kOfxStatErrMissingHostFeature;
}

void say(OfxImageEffectHandle effect, const char* type, const std::string& text)
{
    if (messages) messages->message(effect, type, nullptr, "%s", text.c_str());
}

OfxStatus on_describe(OfxImageEffectHandle effect, bool second)
{
    OfxPropertySetHandle p = nullptr;
    if (OfxStatus st = effects->getPropertySet(effect, &p); st != kOfxStatOK) return st;
    props->propSetString(p, kOfxPropLabel, 0, second ? "Host Fixture Two" : "Host Fixture");
    props->propSetString(p, kOfxImageEffectPluginPropGrouping, 0, "Hueloom/Tests");
    if (second) {
        props->propSetString(p, kOfxImageEffectPropSupportedContexts, 0, kOfxImageEffectContextGeneral);
    } else {
        const char* contexts[] = {kOfxImageEffectContextFilter, kOfxImageEffectContextGeneral};
        props->propSetStringN(p, kOfxImageEffectPropSupportedContexts, 2, contexts);
    }
    const char* depths[] = {kOfxBitDepthByte, kOfxBitDepthShort, kOfxBitDepthFloat};
    props->propSetStringN(p, kOfxImageEffectPropSupportedPixelDepths, 3, depths);
    props->propSetString(p, kOfxImageEffectPluginRenderThreadSafety, 0, kOfxImageEffectRenderFullySafe);
    return kOfxStatOK;
}

OfxPropertySetHandle define(OfxParamSetHandle set, const char* type, const char* name)
{
    OfxPropertySetHandle p = nullptr;
    params->paramDefine(set, type, name, &p);
    return p;
}

void define_params(OfxParamSetHandle set)
{
    OfxPropertySetHandle p = define(set, kOfxParamTypeBoolean, "Invert");
    props->propSetInt(p, kOfxParamPropDefault, 0, 1);
    props->propSetString(p, kOfxPropLabel, 0, "Invert colours");

    p = define(set, kOfxParamTypeDouble, "Gain");
    props->propSetDouble(p, kOfxParamPropDefault, 0, 1.0);
    props->propSetDouble(p, kOfxParamPropMin, 0, 0.0);
    props->propSetDouble(p, kOfxParamPropMax, 0, 4.0);
    props->propSetDouble(p, kOfxParamPropDisplayMin, 0, 0.0);
    props->propSetDouble(p, kOfxParamPropDisplayMax, 0, 2.0);
    props->propSetString(p, kOfxParamPropScriptName, 0, "gain");

    p = define(set, kOfxParamTypeInteger, "Count");
    props->propSetInt(p, kOfxParamPropDefault, 0, 3);
    props->propSetInt(p, kOfxParamPropMin, 0, 0);
    props->propSetInt(p, kOfxParamPropMax, 0, 10);

    p = define(set, kOfxParamTypeRGBA, "Tint");
    const double tint[] = {1.0, 0.5, 0.25, 1.0};
    props->propSetDoubleN(p, kOfxParamPropDefault, 4, tint);

    p = define(set, kOfxParamTypeChoice, "Mode");
    props->propSetString(p, kOfxParamPropChoiceOption, 0, "Plain");
    props->propSetString(p, kOfxParamPropChoiceOption, 1, "Fancy");
    props->propSetInt(p, kOfxParamPropDefault, 0, 1);

    p = define(set, kOfxParamTypeString, "Note");
    props->propSetString(p, kOfxParamPropDefault, 0, "hello");

    p = define(set, kOfxParamTypeDouble2D, "Offset");
    const double offset[] = {1.0, 2.0};
    props->propSetDoubleN(p, kOfxParamPropDefault, 2, offset);

    p = define(set, kOfxParamTypeCustom, "binaryStateParam");
    props->propSetInt(p, kOfxParamPropSecret, 0, 1);
    props->propSetInt(p, kOfxParamPropPersistant, 0, 1);

    p = define(set, kOfxParamTypePushButton, "Write Key");
    props->propSetInt(p, kOfxParamPropEvaluateOnChange, 0, 0);
    define(set, kOfxParamTypePushButton, "Report");
}

OfxStatus on_describe_in_context(OfxImageEffectHandle effect, OfxPropertySetHandle in_args, bool second)
{
    char* context = nullptr;
    if (OfxStatus st = props->propGetString(in_args, kOfxImageEffectPropContext, 0, &context); st != kOfxStatOK) {
        return st;
    }
    for (const char* name : {kOfxImageEffectOutputClipName, kOfxImageEffectSimpleSourceClipName}) {
        OfxPropertySetHandle clip = nullptr;
        if (OfxStatus st = effects->clipDefine(effect, name, &clip); st != kOfxStatOK) return st;
        props->propSetString(clip, kOfxImageEffectPropSupportedComponents, 0, kOfxImageComponentRGBA);
    }
    if (std::strcmp(context, kOfxImageEffectContextGeneral) == 0) {
        OfxPropertySetHandle clip = nullptr;
        effects->clipDefine(effect, "Matte", &clip);
        props->propSetString(clip, kOfxImageEffectPropSupportedComponents, 0, kOfxImageComponentAlpha);
        props->propSetInt(clip, kOfxImageClipPropOptional, 0, 1);
    }
    OfxParamSetHandle set = nullptr;
    if (OfxStatus st = effects->getParamSet(effect, &set); st != kOfxStatOK) return st;
    if (second) {
        OfxPropertySetHandle p = define(set, kOfxParamTypeDouble, "Level");
        props->propSetDouble(p, kOfxParamPropDefault, 0, 0.5);
    } else {
        define_params(set);
    }
    return kOfxStatOK;
}

instance_record* record_of(OfxImageEffectHandle effect)
{
    OfxPropertySetHandle p = nullptr;
    void* data = nullptr;
    if (effects->getPropertySet(effect, &p) != kOfxStatOK) return nullptr;
    if (props->propGetPointer(p, kOfxPropInstanceData, 0, &data) != kOfxStatOK) return nullptr;
    return static_cast<instance_record*>(data);
}

OfxParamHandle param_named(OfxImageEffectHandle effect, const char* name)
{
    OfxParamSetHandle set = nullptr;
    OfxParamHandle h = nullptr;
    if (effects->getParamSet(effect, &set) != kOfxStatOK) return nullptr;
    if (params->paramGetHandle(set, name, &h, nullptr) != kOfxStatOK) return nullptr;
    return h;
}

OfxStatus on_create(OfxImageEffectHandle effect)
{
    OfxPropertySetHandle p = nullptr;
    if (OfxStatus st = effects->getPropertySet(effect, &p); st != kOfxStatOK) return st;
    auto* record = new instance_record;
    record->suites_found = suites_found;
    if (OfxParamHandle state = param_named(effect, "binaryStateParam")) {
        char* text = nullptr;
        if (params->paramGetValue(state, &text) == kOfxStatOK && text) record->state_at_create = text;
    }
    if (threads) {
        OfxMutexHandle m = nullptr;
        if (threads->mutexCreate(&m, 0) == kOfxStatOK) record->mutex = m;
    }
    return props->propSetPointer(p, kOfxPropInstanceData, 0, record);
}

OfxStatus on_destroy(OfxImageEffectHandle effect)
{
    instance_record* record = record_of(effect);
    if (record == nullptr) return kOfxStatErrBadHandle;
    if (threads && record->mutex) threads->mutexDestroy(static_cast<OfxMutexHandle>(record->mutex));
    delete record;
    return kOfxStatOK;
}

OfxStatus on_instance_changed(OfxImageEffectHandle effect, OfxPropertySetHandle in_args)
{
    char* name = nullptr;
    double time = 0.0;
    if (OfxStatus st = props->propGetString(in_args, kOfxPropName, 0, &name); st != kOfxStatOK) return st;
    props->propGetDouble(in_args, kOfxPropTime, 0, &time);
    OfxParamSetHandle set = nullptr;
    effects->getParamSet(effect, &set);
    if (std::strcmp(name, "Write Key") == 0) {
        params->paramEditBegin(set, "Write Key");
        OfxStatus st = params->paramSetValueAtTime(param_named(effect, "Gain"), time, 2.5);
        if (st == kOfxStatOK) st = params->paramSetValue(param_named(effect, "Note"), "written");
        params->paramEditEnd(set);
        return st;
    }
    if (std::strcmp(name, "Report") == 0) {
        instance_record* record = record_of(effect);
        if (record == nullptr) return kOfxStatErrBadHandle;
        say(effect, kOfxMessageMessage, "suites=" + record->suites_found + " state=" + record->state_at_create);
        return kOfxStatOK;
    }
    return kOfxStatReplyDefault;
}

// One image as the plug-in reads it from the image's property set.
struct image_view {
    OfxPropertySetHandle handle = nullptr;
    unsigned char* data = nullptr;
    OfxRectI bounds{};
    int row_bytes = 0;
    std::string depth;
};

OfxStatus read_image(OfxPropertySetHandle h, image_view& v)
{
    v.handle = h;
    void* data = nullptr;
    char* depth = nullptr;
    OfxStatus st = props->propGetPointer(h, kOfxImagePropData, 0, &data);
    if (st == kOfxStatOK) st = props->propGetIntN(h, kOfxImagePropBounds, 4, &v.bounds.x1);
    if (st == kOfxStatOK) st = props->propGetInt(h, kOfxImagePropRowBytes, 0, &v.row_bytes);
    if (st == kOfxStatOK) st = props->propGetString(h, kOfxImageEffectPropPixelDepth, 0, &depth);
    v.data = static_cast<unsigned char*>(data);
    if (depth) v.depth = depth;
    return st;
}

struct render_job {
    OfxImageEffectHandle effect;
    instance_record* record;
    image_view src, dst;
    OfxRectI rows;  // the window clipped to both images
    bool invert;
    std::atomic<bool> aborted{false};
};

template <class T>
void process_row(render_job& job, int y, T max)
{
    auto* in = reinterpret_cast<T*>(job.src.data + std::ptrdiff_t(y - job.src.bounds.y1) * job.src.row_bytes) +
               std::ptrdiff_t(job.rows.x1 - job.src.bounds.x1) * 4;
    auto* out = reinterpret_cast<T*>(job.dst.data + std::ptrdiff_t(y - job.dst.bounds.y1) * job.dst.row_bytes) +
                std::ptrdiff_t(job.rows.x1 - job.dst.bounds.x1) * 4;
    for (int x = job.rows.x1; x < job.rows.x2; ++x, in += 4, out += 4) {
        for (int c = 0; c < 3; ++c) out[c] = job.invert ? T(max - in[c]) : in[c];
        out[3] = in[3];
    }
}

void render_rows(unsigned int index, unsigned int count, void* arg)
{
    auto& job = *static_cast<render_job*>(arg);
    const bool spawned = threads && threads->multiThreadIsSpawnedThread();
    for (int y = job.rows.y1 + int(index); y < job.rows.y2; y += int(count)) {
        if (job.aborted || effects->abort(job.effect)) {
            job.aborted = true;
            return;
        }
        if (job.src.depth == kOfxBitDepthByte) process_row<std::uint8_t>(job, y, 255);
        else if (job.src.depth == kOfxBitDepthShort) process_row<std::uint16_t>(job, y, 65535);
        else process_row<float>(job, y, 1.0f);
        ++job.record->rows_done;
        if (spawned) ++job.record->rows_on_spawned_threads;
    }
    if (threads && job.record->mutex) {
        auto m = static_cast<OfxMutexHandle>(job.record->mutex);
        if (threads->mutexLock(m) == kOfxStatOK) threads->mutexUnLock(m);
        else ++job.record->mutex_lock_failures;
    }
}

OfxStatus render_images(render_job& job, const OfxRectI& window)
{
    if (job.src.depth != job.dst.depth) return kOfxStatErrImageFormat;
    if (job.src.depth != kOfxBitDepthByte && job.src.depth != kOfxBitDepthShort && job.src.depth != kOfxBitDepthFloat) {
        return kOfxStatErrImageFormat;
    }
    auto clip = [](int a, int b, int c) { return std::max(a, std::max(b, c)); };
    auto clip_hi = [](int a, int b, int c) { return std::min(a, std::min(b, c)); };
    job.rows = {clip(window.x1, job.src.bounds.x1, job.dst.bounds.x1), clip(window.y1, job.src.bounds.y1, job.dst.bounds.y1),
                clip_hi(window.x2, job.src.bounds.x2, job.dst.bounds.x2),
                clip_hi(window.y2, job.src.bounds.y2, job.dst.bounds.y2)};
    if (job.rows.x2 <= job.rows.x1 || job.rows.y2 <= job.rows.y1) return kOfxStatOK;
    unsigned int n = 1;
    if (threads && threads->multiThreadNumCPUs(&n) == kOfxStatOK &&
        threads->multiThread(render_rows, n < 2 ? 2 : n, &job) == kOfxStatOK) {
        return kOfxStatOK;
    }
    render_rows(0, 1, &job);
    return kOfxStatOK;
}

OfxStatus on_render(OfxImageEffectHandle effect, OfxPropertySetHandle in_args)
{
    instance_record* record = record_of(effect);
    if (record == nullptr) return kOfxStatFailed;
    double time = 0.0;
    OfxRectI window{};
    props->propGetDouble(in_args, kOfxPropTime, 0, &time);
    if (OfxStatus st = props->propGetIntN(in_args, kOfxImageEffectPropRenderWindow, 4, &window.x1); st != kOfxStatOK) {
        return st;
    }
    int invert = 1;
    params->paramGetValueAtTime(param_named(effect, "Invert"), time, &invert);

    OfxImageClipHandle source = nullptr, output = nullptr;
    effects->clipGetHandle(effect, kOfxImageEffectSimpleSourceClipName, &source, nullptr);
    effects->clipGetHandle(effect, kOfxImageEffectOutputClipName, &output, nullptr);
    OfxPropertySetHandle dst_image = nullptr, src_image = nullptr;
    OfxStatus st = effects->clipGetImage(output, time, nullptr, &dst_image);
    if (st == kOfxStatOK) st = effects->clipGetImage(source, time, nullptr, &src_image);

    render_job job{effect, record, {}, {}, {}, invert != 0};
    if (st == kOfxStatOK) st = read_image(src_image, job.src);
    if (st == kOfxStatOK) st = read_image(dst_image, job.dst);
    if (st == kOfxStatOK) st = render_images(job, window);
    if (st != kOfxStatOK) say(effect, kOfxMessageError, "render failed");
    if (src_image) effects->clipReleaseImage(src_image);
    if (dst_image) effects->clipReleaseImage(dst_image);
    if (job.aborted) ++record->aborted_renders;
    return st;
}

OfxStatus dispatch(const char* action, const void* handle, OfxPropertySetHandle in_args, bool second)
{
    auto effect = static_cast<OfxImageEffectHandle>(const_cast<void*>(handle));
    if (std::strcmp(action, kOfxActionLoad) == 0) return on_load();
    if (effects == nullptr || props == nullptr || params == nullptr) return kOfxStatFailed;
    if (std::strcmp(action, kOfxActionDescribe) == 0) return on_describe(effect, second);
    if (std::strcmp(action, kOfxImageEffectActionDescribeInContext) == 0) {
        return on_describe_in_context(effect, in_args, second);
    }
    if (std::strcmp(action, kOfxActionCreateInstance) == 0) return on_create(effect);
    if (std::strcmp(action, kOfxActionDestroyInstance) == 0) return on_destroy(effect);
    if (std::strcmp(action, kOfxActionInstanceChanged) == 0) return on_instance_changed(effect, in_args);
    if (std::strcmp(action, kOfxImageEffectActionRender) == 0) return on_render(effect, in_args);
    return kOfxStatReplyDefault;
}

template <bool second>
OfxStatus entry(const char* action, const void* handle, OfxPropertySetHandle in_args, OfxPropertySetHandle)
{
    return action == nullptr ? kOfxStatErrBadHandle : dispatch(action, handle, in_args, second);
}

void set_host(OfxHost* h) { host = h; }

#ifdef FIXTURE_WRONG_API
constexpr const char* api = "OfxSomethingElseAPI";
#else
constexpr const char* api = kOfxImageEffectPluginApi;
#endif

OfxPlugin plugins[] = {
    {api, 1, "org.hueloom.test.fixture", 2, 5, set_host, entry<false>},
    {api, 1, "org.hueloom.test.fixture.second", 1, 0, set_host, entry<true>},
};

}  // namespace

FIXTURE_EXPORT int OfxGetNumberOfPlugins(void) { return 2; }

FIXTURE_EXPORT OfxPlugin* OfxGetPlugin(int nth) { return nth >= 0 && nth < 2 ? &plugins[nth] : nullptr; }
