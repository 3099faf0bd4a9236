// The shape of every image codec: a class constructed for one call, which loads into an image or saves from
// one. A new format is one more of these and one more line in formats.cpp.
#pragma once

#include <concepts>
#include <string>
#include <type_traits>
#include <zel/image.h>

namespace Zel {

/// `load` replaces the image by the picture in the file.
template <class Codec>
concept ImageLoader = std::has_virtual_destructor_v<Codec> &&
    requires(Codec codec, Image& image, std::string const& fileName) {
    { codec.load(image, fileName) } -> std::same_as<void>;
};

/// `save` writes the file, and tells when the disk refuses it.
template <class Codec>
concept ImageSaver = std::has_virtual_destructor_v<Codec> &&
    requires(Codec codec, Image const& image, std::string const& fileName) {
    { codec.save(image, fileName) } -> std::same_as<void>;
};

} // namespace Zel
