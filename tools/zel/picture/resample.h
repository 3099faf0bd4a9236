// Pictures of another size.
#pragma once

#include <zel/image.h>

namespace zel {

/// The picture in another size, opaque.
Zel::Image resampled(Zel::Image const& image, int width, int height);

} // namespace zel
