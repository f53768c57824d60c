// What kind of picture a file holds.
#pragma once

#include <string_view>

namespace inspector::reports {

// So many bytes from the beginning tell.
inline constexpr std::size_t kSignatureBytes = 12;

// "image/jpeg", by the first bytes and not by the name; empty for what browsers and word processors do not
// know.
inline std::string_view MediaType(std::string_view begin) {
  if (begin.starts_with("\xFF\xD8\xFF")) return "image/jpeg";
  if (begin.starts_with("\x89PNG\r\n")) return "image/png";
  if (begin.starts_with("GIF8")) return "image/gif";
  if (begin.starts_with("BM")) return "image/bmp";
  if (begin.size() >= kSignatureBytes && begin.starts_with("RIFF") && begin.substr(8, 4) == "WEBP")
    return "image/webp";
  return {};
}

}  // namespace inspector::reports
