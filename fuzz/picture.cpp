// Pictures: the input is the file.

#include "picture.h"

#include "host_file.h"

#include <zel/zel.h>

namespace fuzz {

int loadPicture(std::uint8_t const* data, std::size_t size, std::string const& extension) {
    std::string const name = hostFile({reinterpret_cast<char const*>(data), size}, extension);
    try {
        Zel::Image const image(name);
        image.sampleBilinear(0.5F, 0.5F);
    } catch (Zel::ImageException const&) {
    } catch (Zel::FileException const&) {
    }
    return 0;
}

} // namespace fuzz
