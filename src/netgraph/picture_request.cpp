#include "netgraph/picture_request.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fmt/printf.h>

#include "base/text_numbers.h"
#include "netgraph/graph_file.h"
#include "netgraph/messages.h"

namespace tarn {
namespace {

void SkipSpace(std::string_view& text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
}

// A number that begins with a digit, and what blanks are about it.
bool TakeLength(std::string_view& text, double& length) {
  SkipSpace(text);
  int32_t pixels = 0;
  const bool digit = !text.empty() && text.front() >= '0' && text.front() <= '9';
  if (!digit || !ScanInt(text, pixels)) return false;
  length = pixels;
  SkipSpace(text);
  return true;
}

bool TakeSize(std::string_view text, Size& size) {
  constexpr std::string_view kSeparators = "xX,";
  if (!TakeLength(text, size.width) || text.empty()) return false;
  if (kSeparators.find(text.front()) != std::string_view::npos) text.remove_prefix(1);
  return TakeLength(text, size.height) && text.empty();
}

bool EndsWithExtension(std::string_view path, std::string_view extension) {
  if (path.size() <= extension.size()) return false;
  const char before = path[path.size() - extension.size() - 1];
  if (before == '/' || before == '\\') return false;
  const std::string_view end = path.substr(path.size() - extension.size());
  return std::ranges::equal(end, extension, [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + ('a' - 'A')) : a) == b;
  });
}

Size NearestAllowed(const Size& size) {
  return {std::clamp(size.width, kSmallestPicture.width, kLargestPicture.width),
          std::clamp(size.height, kSmallestPicture.height, kLargestPicture.height)};
}

}  // namespace

Status ParsePictureSize(std::string_view text, Size& size) {
  Size read;
  if (TakeSize(text, read)) {
    const Size allowed = NearestAllowed(read);
    if (allowed.width == read.width && allowed.height == read.height) {
      size = read;
      return {};
    }
  }
  return Status::Failure(fmt::sprintf(kPictureSizeInvalid.data(), PictureSizeText(kSmallestPicture),
                                      PictureSizeText(kLargestPicture)));
}

std::string PictureSizeText(const Size& size) {
  const Size allowed = NearestAllowed(size);
  return fmt::sprintf("%d x %d", std::lround(allowed.width), std::lround(allowed.height));
}

Status PictureKindOf(std::string_view path, PictureKind& kind) {
  const bool svg = EndsWithExtension(path, ".svg");
  if (!svg && !EndsWithExtension(path, ".png")) return Status::Failure(kPictureKindUnknown);
  kind = svg ? PictureKind::kSvg : PictureKind::kPng;
  return {};
}

}  // namespace tarn
