// JPEG by the Windows Imaging Component. COM is never initialised here: without the caller's doing so, the
// first step fails.

#include "platform/jpeg_size.h"
#include "platform/path_parts.h"
#include "platform/platform.h"
#include "platform/windows/com_pointer.h"

#include <windows.h>

#include <limits>
#include <wincodec.h>

namespace Zel::platform {
namespace {

bool createFactory(ComPointer<IWICImagingFactory>& factory) {
    return SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_IWICImagingFactory, reinterpret_cast<void**>(factory.receive())));
}

/// The name in the code page of the process, as every other call takes it. Empty when it cannot be told.
std::wstring wide(std::string const& text) {
    if (hasZeroByte(text))
        return {};
    auto const length = static_cast<int>(text.size());
    std::wstring result(text.size(), L'\0'); // no code page needs more units than bytes
    int const units = MultiByteToWideChar(CP_ACP, 0, text.data(), length, result.data(), length);
    result.resize(static_cast<std::size_t>(units));
    return result;
}

} // namespace

JpegResult decodeJpeg(std::string const& path, JpegPicture& picture,
                      std::function<unsigned char*(JpegPicture const&)> const& takeRoom) {
    ComPointer<IWICImagingFactory> factory;
    ComPointer<IWICBitmapDecoder> decoder;
    ComPointer<IWICBitmapFrameDecode> frame;
    if (!createFactory(factory) ||
        FAILED(factory->CreateDecoderFromFilename(wide(path).c_str(), nullptr, GENERIC_READ,
                                                  WICDecodeMetadataCacheOnDemand, decoder.receive())) ||
        FAILED(decoder->GetFrame(0, frame.receive())))
        return JpegResult::Failed;

    UINT width = 0;
    UINT height = 0;
    WICPixelFormatGUID format{};
    frame->GetSize(&width, &height);
    frame->GetPixelFormat(&format);
    constexpr UINT kLargestSide = std::numeric_limits<std::int32_t>::max();
    if (width > kLargestSide || height > kLargestSide)
        return JpegResult::Failed;
    picture.width = static_cast<int>(width);
    picture.height = static_cast<int>(height);
    if (IsEqualGUID(format, GUID_WICPixelFormat8bppGray) != 0)
        picture.bytesPerPixel = 1;
    else if (IsEqualGUID(format, GUID_WICPixelFormat24bppBGR) != 0)
        picture.bytesPerPixel = 3;
    else
        return JpegResult::UnsupportedColorSpace;
    JpegResult const size = checkJpegSize(picture, Source(path).length());
    if (size != JpegResult::Done)
        return size;

    if (picture.size() > std::numeric_limits<UINT>::max())
        return JpegResult::Failed;
    HRESULT const copied = frame->CopyPixels(nullptr, static_cast<UINT>(picture.rowSize()),
                                             static_cast<UINT>(picture.size()), takeRoom(picture));
    return SUCCEEDED(copied) ? JpegResult::Done : JpegResult::Failed;
}

/// The stream is bound to nothing, so what the encoder gives goes nowhere; one that refuses such a stream
/// fails.
bool encodeJpeg(JpegPicture const& picture, unsigned char* bytes) {
    ComPointer<IWICImagingFactory> factory;
    ComPointer<IWICStream> stream;
    ComPointer<IWICBitmapEncoder> encoder;
    ComPointer<IWICBitmapFrameEncode> frame;
    ComPointer<IPropertyBag2> options;
    auto const width = static_cast<UINT>(picture.width);
    auto const height = static_cast<UINT>(picture.height);
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    if (picture.size() > std::numeric_limits<UINT>::max())
        return false;
    return createFactory(factory) && SUCCEEDED(factory->CreateStream(stream.receive())) &&
           SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatJpeg, nullptr, encoder.receive())) &&
           SUCCEEDED(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache)) &&
           SUCCEEDED(encoder->CreateNewFrame(frame.receive(), options.receive())) &&
           SUCCEEDED(frame->Initialize(options.get())) && SUCCEEDED(frame->SetSize(width, height)) &&
           SUCCEEDED(frame->SetPixelFormat(&format)) &&
           SUCCEEDED(frame->WritePixels(height, width * 3, static_cast<UINT>(picture.size()), bytes)) &&
           SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

} // namespace Zel::platform
