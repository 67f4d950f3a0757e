// The undo ring as the editor uses it, with the built-in theme: the time of one gesture (the
// whole state taken twice and its pieces compared with the ring's) and what the ring holds
// once it is full.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>

#include "effect/hueloom.h"

namespace vl1::bench {

class undo_rig {
public:
    /// An effect with the theme of `builtin_theme_file` current and an open editor, its ring
    /// filled with 32 steps. The vault works under HOME: point HOME somewhere disposable.
    explicit undo_rig(const std::filesystem::path& builtin_theme_file);

    /// One gesture: a step pushed, "Angle" moved, the step refreshed.
    void gesture();
    std::size_t ring_bytes() const { return effect->undo_memory_bytes(); }
    std::size_t state_bytes() const { return effect->get_state_size(); }

private:
    std::shared_ptr<hueloom> effect;
    int gestures = 0;
};

}  // namespace vl1::bench
