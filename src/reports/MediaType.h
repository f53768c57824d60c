// What kind of picture a file holds.
#pragma once

#include <string_view>

#include "device/Files.h"

namespace inspector::reports {

// So many bytes from the beginning tell.
inline constexpr std::size_t kSignatureBytes = 12;

inline constexpr std::string_view kPhotograph = "image/jpeg";

// "image/jpeg", by the first bytes and not by the name; empty for what browsers and word processors do not
// know.
inline std::string_view MediaType(std::string_view begin) {
  if (begin.starts_with("\xFF\xD8\xFF")) return kPhotograph;
  if (begin.starts_with("\x89PNG\r\n")) return "image/png";
  if (begin.starts_with("GIF8")) return "image/gif";
  if (begin.starts_with("BM")) return "image/bmp";
  if (begin.size() >= kSignatureBytes && begin.starts_with("RIFF") && begin.substr(8, 4) == "WEBP")
    return "image/webp";
  return {};
}

// Takes the first bytes of a file that was just opened.
inline bool IsPicture(device::InputFile& file) {
  char begin[kSignatureBytes];
  const std::int64_t count = file.Read(begin, sizeof begin);
  return count > 0 && !MediaType({begin, static_cast<std::size_t>(count)}).empty();
}

}  // namespace inspector::reports
