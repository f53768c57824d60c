#include "device/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <system_error>

namespace inspector::device {

std::filesystem::path WholePath(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::path named =
      path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
  std::filesystem::path whole =
      std::filesystem::weakly_canonical(std::filesystem::absolute(named, error), error);
  return error ? named : whole;
}

std::string IdentityOf(const std::filesystem::path& file) {
  struct statx facts {};
  constexpr unsigned kNeeded = STATX_INO | STATX_BTIME;
  const bool isKnown =
      statx(AT_FDCWD, file.c_str(), 0, kNeeded, &facts) == 0 && (facts.stx_mask & kNeeded) == kNeeded;
  if (!isKnown) return WholePath(file).string();
  // A number is given again once its file is gone; the moment of birth is not.
  return std::to_string(facts.stx_ino) + "-" + std::to_string(facts.stx_btime.tv_sec) + "." +
         std::to_string(facts.stx_btime.tv_nsec);
}

}  // namespace inspector::device
