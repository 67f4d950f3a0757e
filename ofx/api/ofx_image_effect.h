// "OfxImageEffectSuite", version 1, with image-effect actions, contexts, clips and image properties.
#pragma once

#include "ofx/api/ofx_core.h"

inline constexpr const char* kOfxImageEffectSuite = "OfxImageEffectSuite";
inline constexpr const char* kOfxImageEffectPluginApi = "OfxImageEffectPluginAPI";
inline constexpr int kOfxImageEffectPluginApiVersion = 1;

extern "C" {

struct OfxImageEffectSuiteV1 {
    OfxStatus (*getPropertySet)(OfxImageEffectHandle imageEffect, OfxPropertySetHandle* propHandle);
    OfxStatus (*getParamSet)(OfxImageEffectHandle imageEffect, OfxParamSetHandle* paramSet);
    OfxStatus (*clipDefine)(OfxImageEffectHandle imageEffect, const char* name, OfxPropertySetHandle* propertySet);
    OfxStatus (*clipGetHandle)(OfxImageEffectHandle imageEffect, const char* name, OfxImageClipHandle* clip,
                               OfxPropertySetHandle* propertySet);
    OfxStatus (*clipGetPropertySet)(OfxImageClipHandle clip, OfxPropertySetHandle* propHandle);
    OfxStatus (*clipGetImage)(OfxImageClipHandle clip, OfxTime time, const OfxRectD* region,
                              OfxPropertySetHandle* imageHandle);
    OfxStatus (*clipReleaseImage)(OfxPropertySetHandle imageHandle);
    OfxStatus (*clipGetRegionOfDefinition)(OfxImageClipHandle clip, OfxTime time, OfxRectD* bounds);
    int (*abort)(OfxImageEffectHandle imageEffect);
    OfxStatus (*imageMemoryAlloc)(OfxImageEffectHandle instanceHandle, size_t nBytes,
                                  OfxImageMemoryHandle* memoryHandle);
    OfxStatus (*imageMemoryFree)(OfxImageMemoryHandle memoryHandle);
    OfxStatus (*imageMemoryLock)(OfxImageMemoryHandle memoryHandle, void** returnedPtr);
    OfxStatus (*imageMemoryUnlock)(OfxImageMemoryHandle memoryHandle);
};

}  // extern "C"

// Image-effect actions.
inline constexpr const char* kOfxImageEffectActionDescribeInContext = "OfxImageEffectActionDescribeInContext";
inline constexpr const char* kOfxImageEffectActionRender = "OfxImageEffectActionRender";
inline constexpr const char* kOfxImageEffectActionBeginSequenceRender = "OfxImageEffectActionBeginSequenceRender";
inline constexpr const char* kOfxImageEffectActionEndSequenceRender = "OfxImageEffectActionEndSequenceRender";
inline constexpr const char* kOfxImageEffectActionGetRegionOfDefinition = "OfxImageEffectActionGetRegionOfDefinition";
inline constexpr const char* kOfxImageEffectActionGetRegionsOfInterest = "OfxImageEffectActionGetRegionsOfInterest";
inline constexpr const char* kOfxImageEffectActionGetClipPreferences = "OfxImageEffectActionGetClipPreferences";
inline constexpr const char* kOfxImageEffectActionIsIdentity = "OfxImageEffectActionIsIdentity";
inline constexpr const char* kOfxImageEffectActionGetTimeDomain = "OfxImageEffectActionGetTimeDomain";
inline constexpr const char* kOfxImageEffectActionGetFramesNeeded = "OfxImageEffectActionGetFramesNeeded";

// Contexts.
inline constexpr const char* kOfxImageEffectContextFilter = "OfxImageEffectContextFilter";
inline constexpr const char* kOfxImageEffectContextGenerator = "OfxImageEffectContextGenerator";
inline constexpr const char* kOfxImageEffectContextGeneral = "OfxImageEffectContextGeneral";
inline constexpr const char* kOfxImageEffectContextTransition = "OfxImageEffectContextTransition";
inline constexpr const char* kOfxImageEffectContextPaint = "OfxImageEffectContextPaint";
inline constexpr const char* kOfxImageEffectContextRetimer = "OfxImageEffectContextRetimer";

// Clip names of the filter context.
inline constexpr const char* kOfxImageEffectOutputClipName = "Output";
inline constexpr const char* kOfxImageEffectSimpleSourceClipName = "Source";

// Effect descriptor and instance properties.
inline constexpr const char* kOfxImageEffectPropSupportedContexts = "OfxImageEffectPropSupportedContexts";
inline constexpr const char* kOfxImageEffectPropSupportedPixelDepths = "OfxImageEffectPropSupportedPixelDepths";
inline constexpr const char* kOfxImageEffectPropSupportsMultipleClipDepths = "OfxImageEffectPropMultipleClipDepths";
inline constexpr const char* kOfxImageEffectPropSupportsMultipleClipPARs = "OfxImageEffectPropSupportsMultipleClipPARs";
inline constexpr const char* kOfxImageEffectPropSupportsMultiResolution = "OfxImageEffectPropSupportsMultiResolution";
inline constexpr const char* kOfxImageEffectPropSupportsTiles = "OfxImageEffectPropSupportsTiles";
inline constexpr const char* kOfxImageEffectPropTemporalClipAccess = "OfxImageEffectPropTemporalClipAccess";
inline constexpr const char* kOfxImageEffectPluginPropGrouping = "OfxImageEffectPluginPropGrouping";
inline constexpr const char* kOfxImageEffectPluginPropSingleInstance = "OfxImageEffectPluginPropSingleInstance";
inline constexpr const char* kOfxImageEffectPluginRenderThreadSafety = "OfxImageEffectPluginRenderThreadSafety";
inline constexpr const char* kOfxImageEffectPropContext = "OfxImageEffectPropContext";
inline constexpr const char* kOfxImageEffectPropFrameRange = "OfxImageEffectPropFrameRange";
inline constexpr const char* kOfxImageEffectPropFrameRate = "OfxImageEffectPropFrameRate";
inline constexpr const char* kOfxImageEffectPropProjectSize = "OfxImageEffectPropProjectSize";
inline constexpr const char* kOfxImageEffectPropProjectExtent = "OfxImageEffectPropProjectExtent";
inline constexpr const char* kOfxImageEffectPropProjectOffset = "OfxImageEffectPropProjectOffset";
inline constexpr const char* kOfxImageEffectPropProjectPixelAspectRatio = "OfxImageEffectPropPixelAspectRatio";
inline constexpr const char* kOfxImageEffectInstancePropSequentialRender = "OfxImageEffectInstancePropSequentialRender";
inline constexpr const char* kOfxImageEffectHostPropIsBackground = "OfxImageEffectHostPropIsBackground";
inline constexpr const char* kOfxImageEffectPropSupportsOverlays = "OfxImageEffectPropSupportsOverlays";

// Render arguments.
inline constexpr const char* kOfxImageEffectPropRenderWindow = "OfxImageEffectPropRenderWindow";
inline constexpr const char* kOfxImageEffectPropRenderScale = "OfxImageEffectPropRenderScale";
inline constexpr const char* kOfxImageEffectPropFieldToRender = "OfxImageEffectPropFieldToRender";

// Clip properties.
inline constexpr const char* kOfxImageEffectPropSupportedComponents = "OfxImageEffectPropSupportedComponents";
inline constexpr const char* kOfxImageClipPropOptional = "OfxImageClipPropOptional";
inline constexpr const char* kOfxImageClipPropIsMask = "OfxImageClipPropIsMask";
inline constexpr const char* kOfxImageClipPropConnected = "OfxImageClipPropConnected";
inline constexpr const char* kOfxImageClipPropUnmappedPixelDepth = "OfxImageClipPropUnmappedPixelDepth";
inline constexpr const char* kOfxImageClipPropUnmappedComponents = "OfxImageClipPropUnmappedComponents";

// Image properties (a host sets them on what clipGetImage returns).
inline constexpr const char* kOfxImagePropData = "OfxImagePropData";
inline constexpr const char* kOfxImagePropBounds = "OfxImagePropBounds";
inline constexpr const char* kOfxImagePropRegionOfDefinition = "OfxImagePropRegionOfDefinition";
inline constexpr const char* kOfxImagePropRowBytes = "OfxImagePropRowBytes";  // may be negative or padded
inline constexpr const char* kOfxImagePropPixelAspectRatio = "OfxImagePropPixelAspectRatio";
inline constexpr const char* kOfxImagePropField = "OfxImagePropField";
inline constexpr const char* kOfxImagePropUniqueIdentifier = "OfxImagePropUniqueIdentifier";
inline constexpr const char* kOfxImageEffectPropPixelDepth = "OfxImageEffectPropPixelDepth";
inline constexpr const char* kOfxImageEffectPropComponents = "OfxImageEffectPropComponents";
inline constexpr const char* kOfxImageEffectPropPreMultiplication = "OfxImageEffectPropPreMultiplication";

// Pixel depths.
inline constexpr const char* kOfxBitDepthNone = "OfxBitDepthNone";
inline constexpr const char* kOfxBitDepthByte = "OfxBitDepthByte";
inline constexpr const char* kOfxBitDepthShort = "OfxBitDepthShort";
inline constexpr const char* kOfxBitDepthHalf = "OfxBitDepthHalf";
inline constexpr const char* kOfxBitDepthFloat = "OfxBitDepthFloat";

// Components.
inline constexpr const char* kOfxImageComponentNone = "OfxImageComponentNone";
inline constexpr const char* kOfxImageComponentRGBA = "OfxImageComponentRGBA";
inline constexpr const char* kOfxImageComponentRGB = "OfxImageComponentRGB";
inline constexpr const char* kOfxImageComponentAlpha = "OfxImageComponentAlpha";

// Premultiplication.
inline constexpr const char* kOfxImageOpaque = "OfxImageOpaque";
inline constexpr const char* kOfxImagePreMultiplied = "OfxImageAlphaPremultiplied";
inline constexpr const char* kOfxImageUnPreMultiplied = "OfxImageAlphaUnPremultiplied";

// Fields.
inline constexpr const char* kOfxImageFieldNone = "OfxFieldNone";
inline constexpr const char* kOfxImageFieldLower = "OfxFieldLower";
inline constexpr const char* kOfxImageFieldUpper = "OfxFieldUpper";
inline constexpr const char* kOfxImageFieldBoth = "OfxFieldBoth";

// Render thread safety values.
inline constexpr const char* kOfxImageEffectRenderUnsafe = "OfxImageEffectRenderUnsafe";
inline constexpr const char* kOfxImageEffectRenderInstanceSafe = "OfxImageEffectRenderInstanceSafe";
inline constexpr const char* kOfxImageEffectRenderFullySafe = "OfxImageEffectRenderFullySafe";
