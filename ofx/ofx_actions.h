// One function per action the plug-in answers; the dispatcher picks among them.
#pragma once

#include "ofx/api/ofx_core.h"

namespace vl1 {

OfxStatus action_load();
OfxStatus action_unload();
OfxStatus action_describe(OfxImageEffectHandle effect);
OfxStatus action_describe_in_context(OfxImageEffectHandle effect);
OfxStatus action_create_instance(OfxImageEffectHandle effect);
OfxStatus action_instance_changed(OfxImageEffectHandle effect, OfxPropertySetHandle in_args);
OfxStatus action_destroy_instance(OfxImageEffectHandle effect);
/// Sync private data and the begin/end brackets of instance changes: moments a host allows
/// parameter writes, used to write what it refused during a render. Answers "reply default".
OfxStatus action_write_pending(OfxImageEffectHandle effect);
OfxStatus action_render(OfxImageEffectHandle effect, OfxPropertySetHandle in_args);
OfxStatus action_is_identity(OfxImageEffectHandle effect, OfxPropertySetHandle in_args, OfxPropertySetHandle out_args);

}  // namespace vl1
