#pragma once

#include <string>
#include <string_view>

#include "base/status.h"
#include "netgraph/canvas.h"

namespace tarn {

// A size of a picture in pixels as it is typed: "800 x 600", "800x600", "800,600" or "800 600". In
// whole numbers, within kSmallestPicture and kLargestPicture.
Status ParsePictureSize(std::string_view text, Size& size);

// "800 x 600": the nearest size that a picture may have.
std::string PictureSizeText(const Size& size);

enum class PictureKind { kPng, kSvg };

// By the extension of a file's name, in any case: ".png" or ".svg". kPictureKindUnknown for others.
Status PictureKindOf(std::string_view path, PictureKind& kind);

}  // namespace tarn
