#include "testhost/ImageFile.h"

#include <wincodec.h>
#include <windows.h>
#include <wrl/client.h>

#include <algorithm>
#include <cctype>
#include <vector>

using Microsoft::WRL::ComPtr;

namespace testhost {

namespace {

// COM for the duration of one file operation.
class ComScope {
  public:
    ComScope() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ComScope() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }

  private:
    HRESULT result_;
};

std::wstring Wide(const std::string& text) {
    const int length = MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, nullptr, 0);
    std::wstring wide(static_cast<size_t>(std::max(length, 1)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, &wide[0], length);
    wide.resize(wcslen(wide.c_str()));
    return wide;
}

bool Failed(HRESULT hr, const std::string& what, const std::string& path, std::string* error) {
    if (SUCCEEDED(hr)) return false;
    char code[16];
    wsprintfA(code, "0x%08lX", static_cast<unsigned long>(hr));
    *error = "cannot " + what + " " + path + " (" + code + ")";
    return true;
}

ComPtr<IWICImagingFactory> Factory() {
    ComPtr<IWICImagingFactory> factory;
    CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                     reinterpret_cast<void**>(factory.GetAddressOf()));
    return factory;
}

bool HasAlpha(IWICImagingFactory* factory, const WICPixelFormatGUID& format) {
    ComPtr<IWICComponentInfo> info;
    ComPtr<IWICPixelFormatInfo2> formatInfo;
    BOOL alpha = FALSE;
    if (FAILED(factory->CreateComponentInfo(format, &info)) ||
        FAILED(info->QueryInterface(IID_IWICPixelFormatInfo2,
                                    reinterpret_cast<void**>(formatInfo.GetAddressOf()))) ||
        FAILED(formatInfo->SupportsTransparency(&alpha))) {
        return false;
    }
    return alpha != FALSE;
}

// The first frame of a file as 32-bit BGRA rows.
struct Decoded {
    UINT width = 0;
    UINT height = 0;
    bool alpha = false;
    std::vector<uint8_t> bgra;
};

bool Decode(const std::string& path, Decoded* decoded, std::string* error) {
    if (GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        *error = "no such file: " + path;
        return false;
    }
    ComPtr<IWICImagingFactory> factory = Factory();
    if (!factory) {
        *error = "the Windows Imaging Component is not available";
        return false;
    }
    ComPtr<IWICBitmapDecoder> decoder;
    ComPtr<IWICBitmapFrameDecode> frame;
    ComPtr<IWICBitmapSource> converted;
    WICPixelFormatGUID format;
    if (Failed(factory->CreateDecoderFromFilename(Wide(path).c_str(), nullptr, GENERIC_READ,
                                                  WICDecodeMetadataCacheOnDemand, &decoder),
               "read the image", path, error) ||
        Failed(decoder->GetFrame(0, &frame), "decode", path, error) ||
        Failed(frame->GetPixelFormat(&format), "decode", path, error) ||
        Failed(frame->GetSize(&decoded->width, &decoded->height), "decode", path, error) ||
        Failed(WICConvertBitmapSource(GUID_WICPixelFormat32bppBGRA, frame.Get(), &converted),
               "convert", path, error)) {
        return false;
    }
    decoded->alpha = HasAlpha(factory.Get(), format);
    const UINT stride = decoded->width * 4;
    decoded->bgra.resize(static_cast<size_t>(stride) * decoded->height);
    return !Failed(converted->CopyPixels(nullptr, stride, static_cast<UINT>(decoded->bgra.size()),
                                         decoded->bgra.data()),
                   "decode", path, error);
}

bool HasExtension(const std::string& path, const char* extension) {
    const std::string ext(extension);
    if (path.size() < ext.size()) return false;
    return std::equal(ext.rbegin(), ext.rend(), path.rbegin(),
                      [](char a, char b) { return a == std::tolower(static_cast<uint8_t>(b)); });
}

}  // namespace

bool ReadImageFile(const std::string& path, Image* image, std::string* error) {
    ComScope com;
    Decoded decoded;
    if (!Decode(path, &decoded, error)) return false;
    const int planes = decoded.alpha ? 4 : 3;
    *image = Image(static_cast<int>(decoded.width), static_cast<int>(decoded.height), planes);
    const uint8_t* p = decoded.bgra.data();
    for (int y = 0; y < image->Height(); ++y) {
        for (int x = 0; x < image->Width(); ++x, p += 4) {
            image->SetPixel(x, y, {p[2], p[1], p[0], p[3]});
        }
    }
    return true;
}

bool ReadMaskFile(const std::string& path, Image* image, std::string* error) {
    ComScope com;
    Decoded decoded;
    if (!Decode(path, &decoded, error)) return false;
    if (static_cast<int>(decoded.width) != image->Width() ||
        static_cast<int>(decoded.height) != image->Height()) {
        *error = "the mask " + path + " is " + std::to_string(decoded.width) + "x" +
                 std::to_string(decoded.height) + " but the image is " +
                 std::to_string(image->Width()) + "x" + std::to_string(image->Height());
        return false;
    }
    std::vector<uint8_t>& mask = image->Mask();
    mask.assign(static_cast<size_t>(decoded.width) * decoded.height, 0);
    for (size_t i = 0; i < mask.size(); ++i) {
        const uint8_t* p = &decoded.bgra[i * 4];
        mask[i] = (p[0] | p[1] | p[2]) != 0 ? 255 : 0;
    }
    return true;
}

bool WriteImageFile(const std::string& path, const Image& image, std::string* error) {
    ComScope com;
    ComPtr<IWICImagingFactory> factory = Factory();
    if (!factory) {
        *error = "the Windows Imaging Component is not available";
        return false;
    }
    const bool jpeg = HasExtension(path, ".jpg") || HasExtension(path, ".jpeg");
    const bool gray = image.Planes() < 3;
    const bool alpha = image.Planes() == 4 && !jpeg;
    const int channels = gray ? 1 : (alpha ? 4 : 3);
    WICPixelFormatGUID format =
        gray ? GUID_WICPixelFormat8bppGray
             : (alpha ? GUID_WICPixelFormat32bppBGRA : GUID_WICPixelFormat24bppBGR);
    const UINT stride = static_cast<UINT>(image.Width() * channels + 3) & ~3u;
    std::vector<uint8_t> rows(static_cast<size_t>(stride) * static_cast<size_t>(image.Height()));
    const int shift = image.Depth() == 16 ? 8 : 0;
    static const int kBgrOrder[4] = {2, 1, 0, 3};
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            uint8_t* p = &rows[static_cast<size_t>(y) * stride + static_cast<size_t>(x * channels)];
            for (int c = 0; c < channels; ++c) {
                const int plane = gray ? 0 : kBgrOrder[c];
                p[c] = static_cast<uint8_t>(image.Sample(x, y, plane) >> shift);
            }
        }
    }

    ComPtr<IWICStream> stream;
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    ComPtr<IPropertyBag2> properties;
    const WICPixelFormatGUID wanted = format;
    if (Failed(factory->CreateStream(&stream), "write", path, error) ||
        Failed(stream->InitializeFromFilename(Wide(path).c_str(), GENERIC_WRITE), "create", path,
               error) ||
        Failed(factory->CreateEncoder(jpeg ? GUID_ContainerFormatJpeg : GUID_ContainerFormatPng,
                                      nullptr, &encoder),
               "encode", path, error) ||
        Failed(encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache), "encode", path, error) ||
        Failed(encoder->CreateNewFrame(&frame, &properties), "encode", path, error) ||
        Failed(frame->Initialize(properties.Get()), "encode", path, error) ||
        Failed(frame->SetSize(static_cast<UINT>(image.Width()), static_cast<UINT>(image.Height())),
               "encode", path, error) ||
        Failed(frame->SetPixelFormat(&format), "encode", path, error)) {
        return false;
    }
    if (!IsEqualGUID(format, wanted)) {
        *error = "the encoder for " + path + " does not take this pixel format";
        return false;
    }
    return !Failed(frame->WritePixels(static_cast<UINT>(image.Height()), stride,
                                      static_cast<UINT>(rows.size()), rows.data()),
                   "encode", path, error) &&
           !Failed(frame->Commit(), "encode", path, error) &&
           !Failed(encoder->Commit(), "write", path, error);
}

}  // namespace testhost
