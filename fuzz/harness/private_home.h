// A private HOME for processes that are no test binary (the libFuzzer targets and the seed
// maker), so that the theme and preset folders under HOME are never the user's.
#pragma once

namespace vl1::fuzz {

/// Points HOME at a fresh folder below the system's temporary folder, removed when the
/// process ends normally. False if the folder can't be made.
bool use_private_home();

}  // namespace vl1::fuzz
