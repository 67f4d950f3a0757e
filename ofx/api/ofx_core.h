// OpenFX 1.x core declarations: basic types, the host and plug-in records, status codes and
// the names of generic actions and properties. Written for this project; the layouts follow
// the published C ABI member for member, so any host compiled against the standard headers
// can call us (and our host can call any plug-in).
#pragma once

#include <cstddef>

extern "C" {

using OfxStatus = int;
using OfxTime = double;

typedef struct OfxPropertySetStruct* OfxPropertySetHandle;
typedef struct OfxParamSetStruct* OfxParamSetHandle;
typedef struct OfxParamStruct* OfxParamHandle;
typedef struct OfxImageEffectStruct* OfxImageEffectHandle;
typedef struct OfxImageClipStruct* OfxImageClipHandle;
typedef struct OfxImageMemoryStruct* OfxImageMemoryHandle;
typedef struct OfxMutex* OfxMutexHandle;

// Rectangles: x2 and y2 are exclusive.
struct OfxRectI { int x1, y1, x2, y2; };
struct OfxRectD { double x1, y1, x2, y2; };
struct OfxRangeD { double min, max; };
struct OfxPointD { double x, y; };

typedef OfxStatus(OfxPluginEntryPoint)(const char* action, const void* handle,
                                      OfxPropertySetHandle inArgs, OfxPropertySetHandle outArgs);

struct OfxHost {
    OfxPropertySetHandle host;
    const void* (*fetchSuite)(OfxPropertySetHandle host, const char* suiteName, int suiteVersion);
};

struct OfxPlugin {
    const char* pluginApi;
    int apiVersion;
    const char* pluginIdentifier;
    unsigned int pluginVersionMajor;
    unsigned int pluginVersionMinor;
    void (*setHost)(OfxHost* host);
    OfxPluginEntryPoint* mainEntry;
};

typedef int (*OfxGetNumberOfPluginsFn)(void);
typedef OfxPlugin* (*OfxGetPluginFn)(int nth);

}  // extern "C"

// Status codes.
inline constexpr OfxStatus kOfxStatOK = 0;
inline constexpr OfxStatus kOfxStatFailed = 1;
inline constexpr OfxStatus kOfxStatErrFatal = 2;
inline constexpr OfxStatus kOfxStatErrUnknown = 3;
inline constexpr OfxStatus kOfxStatErrMissingHostFeature = 4;
inline constexpr OfxStatus kOfxStatErrUnsupported = 5;
inline constexpr OfxStatus kOfxStatErrExists = 6;
inline constexpr OfxStatus kOfxStatErrFormat = 7;
inline constexpr OfxStatus kOfxStatErrMemory = 8;
inline constexpr OfxStatus kOfxStatErrBadHandle = 9;
inline constexpr OfxStatus kOfxStatErrBadIndex = 10;
inline constexpr OfxStatus kOfxStatErrValue = 11;
inline constexpr OfxStatus kOfxStatReplyYes = 12;
inline constexpr OfxStatus kOfxStatReplyNo = 13;
inline constexpr OfxStatus kOfxStatReplyDefault = 14;
inline constexpr OfxStatus kOfxStatErrImageFormat = 1000;

// Generic actions.
inline constexpr const char* kOfxActionLoad = "OfxActionLoad";
inline constexpr const char* kOfxActionUnload = "OfxActionUnload";
inline constexpr const char* kOfxActionDescribe = "OfxActionDescribe";
inline constexpr const char* kOfxActionCreateInstance = "OfxActionCreateInstance";
inline constexpr const char* kOfxActionDestroyInstance = "OfxActionDestroyInstance";
inline constexpr const char* kOfxActionInstanceChanged = "OfxActionInstanceChanged";
inline constexpr const char* kOfxActionBeginInstanceChanged = "OfxActionBeginInstanceChanged";
inline constexpr const char* kOfxActionEndInstanceChanged = "OfxActionEndInstanceChanged";
inline constexpr const char* kOfxActionPurgeCaches = "OfxActionPurgeCaches";
inline constexpr const char* kOfxActionSyncPrivateData = "OfxActionSyncPrivateData";
inline constexpr const char* kOfxActionBeginInstanceEdit = "OfxActionBeginInstanceEdit";
inline constexpr const char* kOfxActionEndInstanceEdit = "OfxActionEndInstanceEdit";

// Generic properties.
inline constexpr const char* kOfxPropAPIVersion = "OfxPropAPIVersion";
inline constexpr const char* kOfxPropType = "OfxPropType";
inline constexpr const char* kOfxPropName = "OfxPropName";
inline constexpr const char* kOfxPropLabel = "OfxPropLabel";
inline constexpr const char* kOfxPropShortLabel = "OfxPropShortLabel";
inline constexpr const char* kOfxPropLongLabel = "OfxPropLongLabel";
inline constexpr const char* kOfxPropVersion = "OfxPropVersion";
inline constexpr const char* kOfxPropVersionLabel = "OfxPropVersionLabel";
inline constexpr const char* kOfxPropPluginDescription = "OfxPropPluginDescription";
inline constexpr const char* kOfxPropTime = "OfxPropTime";
inline constexpr const char* kOfxPropInstanceData = "OfxPropInstanceData";
inline constexpr const char* kOfxPropIsInteractive = "OfxPropIsInteractive";
inline constexpr const char* kOfxPropChangeReason = "OfxPropChangeReason";
inline constexpr const char* kOfxPropEffectInstance = "OfxPropEffectInstance";
inline constexpr const char* kOfxPropHostOSHandle = "OfxPropHostOSHandle";

// Values of kOfxPropChangeReason.
inline constexpr const char* kOfxChangeUserEdited = "OfxChangeUserEdited";
inline constexpr const char* kOfxChangePluginEdited = "OfxChangePluginEdited";
inline constexpr const char* kOfxChangeTime = "OfxChangeTime";

// Values of kOfxPropType.
inline constexpr const char* kOfxTypeImageEffectHost = "OfxTypeImageEffectHost";
inline constexpr const char* kOfxTypeImageEffect = "OfxTypeImageEffect";
inline constexpr const char* kOfxTypeImageEffectInstance = "OfxTypeImageEffectInstance";
inline constexpr const char* kOfxTypeParameter = "OfxTypeParameter";
inline constexpr const char* kOfxTypeParameterInstance = "OfxTypeParameterInstance";
inline constexpr const char* kOfxTypeClip = "OfxTypeClip";
inline constexpr const char* kOfxTypeImage = "OfxTypeImage";
