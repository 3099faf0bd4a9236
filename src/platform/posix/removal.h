// Removing directories with all that they hold.
#pragma once

namespace Zel::platform {

/// Removes what is below a directory under a name, a directory with all that it holds. Links are removed,
/// never followed. What cannot be removed stays.
void removeBelow(int directory, char const* name);

} // namespace Zel::platform
