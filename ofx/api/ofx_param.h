// "OfxParameterSuite", version 1, with parameter types and properties.
// The value calls are variadic: getters take pointers, setters take values.
//   Double: double* / double.  Integer, Boolean, Choice: int* / int.
//   RGBA: four double* / four double, in the order r, g, b, a.
//   String, Custom: char** (the host keeps the text) / const char*.  PushButton: no value.
#pragma once

#include "ofx/api/ofx_core.h"

inline constexpr const char* kOfxParameterSuite = "OfxParameterSuite";

extern "C" {

struct OfxParameterSuiteV1 {
    OfxStatus (*paramDefine)(OfxParamSetHandle paramSet, const char* paramType, const char* name,
                             OfxPropertySetHandle* propertySet);
    OfxStatus (*paramGetHandle)(OfxParamSetHandle paramSet, const char* name, OfxParamHandle* param,
                                OfxPropertySetHandle* propertySet);
    OfxStatus (*paramSetGetPropertySet)(OfxParamSetHandle paramSet, OfxPropertySetHandle* propHandle);
    OfxStatus (*paramGetPropertySet)(OfxParamHandle param, OfxPropertySetHandle* propHandle);
    OfxStatus (*paramGetValue)(OfxParamHandle paramHandle, ...);
    OfxStatus (*paramGetValueAtTime)(OfxParamHandle paramHandle, OfxTime time, ...);
    OfxStatus (*paramGetDerivative)(OfxParamHandle paramHandle, OfxTime time, ...);
    OfxStatus (*paramGetIntegral)(OfxParamHandle paramHandle, OfxTime time1, OfxTime time2, ...);
    OfxStatus (*paramSetValue)(OfxParamHandle paramHandle, ...);
    OfxStatus (*paramSetValueAtTime)(OfxParamHandle paramHandle, OfxTime time, ...);
    OfxStatus (*paramGetNumKeys)(OfxParamHandle paramHandle, unsigned int* numberOfKeys);
    OfxStatus (*paramGetKeyTime)(OfxParamHandle paramHandle, unsigned int nthKey, OfxTime* time);
    OfxStatus (*paramGetKeyIndex)(OfxParamHandle paramHandle, OfxTime time, int direction, int* index);
    OfxStatus (*paramDeleteKey)(OfxParamHandle paramHandle, OfxTime time);
    OfxStatus (*paramDeleteAllKeys)(OfxParamHandle paramHandle);
    OfxStatus (*paramCopy)(OfxParamHandle paramTo, OfxParamHandle paramFrom, OfxTime dstOffset,
                           const OfxRangeD* frameRange);
    OfxStatus (*paramEditBegin)(OfxParamSetHandle paramSet, const char* name);
    OfxStatus (*paramEditEnd)(OfxParamSetHandle paramSet);
};

}  // extern "C"

// Parameter types.
inline constexpr const char* kOfxParamTypeInteger = "OfxParamTypeInteger";
inline constexpr const char* kOfxParamTypeDouble = "OfxParamTypeDouble";
inline constexpr const char* kOfxParamTypeBoolean = "OfxParamTypeBoolean";
inline constexpr const char* kOfxParamTypeChoice = "OfxParamTypeChoice";
inline constexpr const char* kOfxParamTypeRGBA = "OfxParamTypeRGBA";
inline constexpr const char* kOfxParamTypeRGB = "OfxParamTypeRGB";
inline constexpr const char* kOfxParamTypeDouble2D = "OfxParamTypeDouble2D";
inline constexpr const char* kOfxParamTypeInteger2D = "OfxParamTypeInteger2D";
inline constexpr const char* kOfxParamTypeDouble3D = "OfxParamTypeDouble3D";
inline constexpr const char* kOfxParamTypeInteger3D = "OfxParamTypeInteger3D";
inline constexpr const char* kOfxParamTypeString = "OfxParamTypeString";
inline constexpr const char* kOfxParamTypeCustom = "OfxParamTypeCustom";
inline constexpr const char* kOfxParamTypeGroup = "OfxParamTypeGroup";
inline constexpr const char* kOfxParamTypePage = "OfxParamTypePage";
inline constexpr const char* kOfxParamTypePushButton = "OfxParamTypePushButton";

// Parameter properties.
inline constexpr const char* kOfxParamPropType = "OfxParamPropType";
inline constexpr const char* kOfxParamPropScriptName = "OfxParamPropScriptName";
inline constexpr const char* kOfxParamPropDefault = "OfxParamPropDefault";
inline constexpr const char* kOfxParamPropMin = "OfxParamPropMin";
inline constexpr const char* kOfxParamPropMax = "OfxParamPropMax";
inline constexpr const char* kOfxParamPropDisplayMin = "OfxParamPropDisplayMin";
inline constexpr const char* kOfxParamPropDisplayMax = "OfxParamPropDisplayMax";
inline constexpr const char* kOfxParamPropSecret = "OfxParamPropSecret";
inline constexpr const char* kOfxParamPropPersistant = "OfxParamPropPersistant";  // the standard's spelling
inline constexpr const char* kOfxParamPropEvaluateOnChange = "OfxParamPropEvaluateOnChange";
inline constexpr const char* kOfxParamPropAnimates = "OfxParamPropAnimates";
inline constexpr const char* kOfxParamPropIsAnimating = "OfxParamPropIsAnimating";
inline constexpr const char* kOfxParamPropIsAutoKeying = "OfxParamPropIsAutoKeying";
inline constexpr const char* kOfxParamPropCanUndo = "OfxParamPropCanUndo";
inline constexpr const char* kOfxParamPropEnabled = "OfxParamPropEnabled";
inline constexpr const char* kOfxParamPropHint = "OfxParamPropHint";
inline constexpr const char* kOfxParamPropParent = "OfxParamPropParent";
inline constexpr const char* kOfxParamPropDataPtr = "OfxParamPropDataPtr";
inline constexpr const char* kOfxParamPropDoubleType = "OfxParamPropDoubleType";
inline constexpr const char* kOfxParamPropDigits = "OfxParamPropDigits";
inline constexpr const char* kOfxParamPropIncrement = "OfxParamPropIncrement";
inline constexpr const char* kOfxParamPropStringMode = "OfxParamPropStringMode";
inline constexpr const char* kOfxParamPropChoiceOption = "OfxParamPropChoiceOption";
inline constexpr const char* kOfxParamPropPluginMayWrite = "OfxParamPropPluginMayWrite";
inline constexpr const char* kOfxParamPropCacheInvalidation = "OfxParamPropCacheInvalidation";

// Host capabilities concerning parameters.
inline constexpr const char* kOfxParamHostPropSupportsCustomAnimation = "OfxParamHostPropSupportsCustomAnimation";
inline constexpr const char* kOfxParamHostPropSupportsStringAnimation = "OfxParamHostPropSupportsStringAnimation";
inline constexpr const char* kOfxParamHostPropSupportsBooleanAnimation = "OfxParamHostPropSupportsBooleanAnimation";
inline constexpr const char* kOfxParamHostPropSupportsChoiceAnimation = "OfxParamHostPropSupportsChoiceAnimation";
inline constexpr const char* kOfxParamHostPropSupportsCustomInteract = "OfxParamHostPropSupportsCustomInteract";
inline constexpr const char* kOfxParamHostPropMaxParameters = "OfxParamHostPropMaxParameters";
inline constexpr const char* kOfxParamHostPropMaxPages = "OfxParamHostPropMaxPages";
