// JPEG by libjpeg-turbo. Its errors leave it by longjmp, the way it offers: every function that calls it has
// no object with a destructor of its own.

#include "platform/jpeg_size.h"
#include "platform/platform.h"

#include <array>
#include <csetjmp>
#include <cstdio> // before jpeglib.h, which needs it

#include <jerror.h>
#include <jpeglib.h>

namespace Zel::platform {
namespace {

/// A picture of more scans is refused: each one costs the time of decoding the whole picture.
constexpr int kMostScans = 100;

struct ErrorHandler {
    jpeg_error_mgr manager;
    std::jmp_buf failed;
    bool fileEnded;
};

[[noreturn]] void fail(j_common_ptr state) {
    std::longjmp(reinterpret_cast<ErrorHandler*>(state->err)->failed, 1); // NOLINT(cert-err52-cpp)
}

/// Data that is damaged decodes as well as it can, but a file that ends before its last row is a failure.
void onMessage(j_common_ptr state, int level) {
    if (level >= 0)
        return;
    auto* const handler = reinterpret_cast<ErrorHandler*>(state->err);
    if (handler->manager.msg_code == JWRN_JPEG_EOF)
        handler->fileEnded = true; // which only matters when more bits are needed
    else if (handler->manager.msg_code == JWRN_HIT_MARKER && handler->fileEnded)
        fail(state);
}

void limitScans(j_common_ptr state) {
    if (reinterpret_cast<j_decompress_ptr>(state)->input_scan_number > kMostScans)
        fail(state);
}

jpeg_error_mgr* prepare(ErrorHandler& handler) {
    jpeg_std_error(&handler.manager);
    handler.manager.error_exit = fail;
    handler.manager.emit_message = onMessage;
    return &handler.manager;
}

class Decoder {
public:
    explicit Decoder(std::FILE* stream) : m_stream(stream) { m_state.err = prepare(m_errors); }
    Decoder(Decoder const&) = delete;
    Decoder& operator=(Decoder const&) = delete;
    ~Decoder() { jpeg_destroy_decompress(&m_state); }

    /// Tells the size and the kind of the pixels.
    JpegResult readHeader(JpegPicture& picture) {
        if (setjmp(m_errors.failed) != 0) // NOLINT(cert-err52-cpp)
            return JpegResult::Failed;
        jpeg_create_decompress(&m_state);
        jpeg_stdio_src(&m_state, m_stream);
        jpeg_read_header(&m_state, TRUE);
        picture.width = static_cast<int>(m_state.image_width);
        picture.height = static_cast<int>(m_state.image_height);
        switch (m_state.jpeg_color_space) {
        case JCS_GRAYSCALE:
            picture.bytesPerPixel = 1;
            m_state.out_color_space = JCS_GRAYSCALE;
            return JpegResult::Done;
        case JCS_RGB:
        case JCS_YCbCr:
            picture.bytesPerPixel = 4;
            m_state.out_color_space = JCS_EXT_BGRA;
            return JpegResult::Done;
        default:
            return JpegResult::UnsupportedColorSpace;
        }
    }

    /// Decodes all rows into memory for all bytes of the picture.
    JpegResult readRows(JpegPicture const& picture, unsigned char* bytes) {
        if (setjmp(m_errors.failed) != 0) // NOLINT(cert-err52-cpp)
            return JpegResult::Failed;
        m_progress.progress_monitor = limitScans;
        m_state.progress = &m_progress;
        jpeg_start_decompress(&m_state);
        while (m_state.output_scanline < m_state.output_height) {
            JSAMPROW row = bytes + picture.rowSize() * m_state.output_scanline;
            jpeg_read_scanlines(&m_state, &row, 1);
        }
        return JpegResult::Done; // whatever follows the last row, or fails to
    }

private:
    std::FILE* m_stream;
    ErrorHandler m_errors{};
    jpeg_progress_mgr m_progress{};
    jpeg_decompress_struct m_state{};
};

/// Takes what the encoder gives, and drops it.
struct Drain {
    jpeg_destination_mgr manager{};
    std::array<JOCTET, 4096> bytes{};
};

void startDrain(j_compress_ptr state) {
    auto* const drain = reinterpret_cast<Drain*>(state->dest);
    drain->manager.next_output_byte = drain->bytes.data();
    drain->manager.free_in_buffer = drain->bytes.size();
}

boolean emptyDrain(j_compress_ptr state) {
    startDrain(state);
    return TRUE;
}

void endDrain(j_compress_ptr /*state*/) {}

class Encoder {
public:
    Encoder() {
        m_state.err = prepare(m_errors);
        m_drain.manager.init_destination = startDrain;
        m_drain.manager.empty_output_buffer = emptyDrain;
        m_drain.manager.term_destination = endDrain;
    }
    Encoder(Encoder const&) = delete;
    Encoder& operator=(Encoder const&) = delete;
    ~Encoder() { jpeg_destroy_compress(&m_state); }

    bool encode(JpegPicture const& picture, unsigned char* bytes) {
        if (setjmp(m_errors.failed) != 0) // NOLINT(cert-err52-cpp)
            return false;
        jpeg_create_compress(&m_state);
        m_state.dest = &m_drain.manager;
        m_state.image_width = static_cast<JDIMENSION>(picture.width);
        m_state.image_height = static_cast<JDIMENSION>(picture.height);
        m_state.input_components = 3;
        m_state.in_color_space = JCS_EXT_BGR;
        jpeg_set_defaults(&m_state);
        jpeg_start_compress(&m_state, TRUE);
        while (m_state.next_scanline < m_state.image_height) {
            JSAMPROW row = bytes + picture.rowSize() * m_state.next_scanline;
            jpeg_write_scanlines(&m_state, &row, 1);
        }
        jpeg_finish_compress(&m_state);
        return true;
    }

private:
    ErrorHandler m_errors{};
    Drain m_drain;
    jpeg_compress_struct m_state{};
};

} // namespace

JpegResult decodeJpeg(std::string const& path, JpegPicture& picture,
                      std::function<unsigned char*(JpegPicture const&)> const& takeRoom) {
    Source source(path);
    Stream const stream = source.isOpen() ? source.toStream() : nullptr;
    if (stream == nullptr)
        return JpegResult::Failed;
    Decoder decoder(stream.get());
    JpegResult result = decoder.readHeader(picture);
    if (result == JpegResult::Done)
        result = checkJpegSize(picture, source.length());
    return result == JpegResult::Done ? decoder.readRows(picture, takeRoom(picture)) : result;
}

bool encodeJpeg(JpegPicture const& picture, unsigned char* bytes) { return Encoder().encode(picture, bytes); }

} // namespace Zel::platform
