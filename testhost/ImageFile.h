// Picture files for the test host, through the Windows Imaging Component.
#pragma once

#include <string>

#include "testhost/Image.h"

namespace testhost {

// Reads any format the imaging component knows (PNG, JPEG, BMP...) as an
// 8-bit RGB image, with a fourth plane when the file has an alpha channel.
bool ReadImageFile(const std::string& path, Image* image, std::string* error);
// Reads a selection mask into `image` (same size required): every pixel
// whose colour is not black becomes selected (255), the others 0.
bool ReadMaskFile(const std::string& path, Image* image, std::string* error);
// Writes an 8-bit image (16-bit samples are cut to their high byte): RGB, or
// RGBA with 4 planes, or gray with fewer than 3. JPEG when the name ends in
// .jpg or .jpeg, PNG otherwise.
bool WriteImageFile(const std::string& path, const Image& image, std::string* error);

}  // namespace testhost
