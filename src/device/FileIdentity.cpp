#include "device/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <system_error>

namespace inspector::device {

std::string IdentityOf(const std::filesystem::path& file) {
  struct statx facts {};
  const bool isKnown = statx(AT_FDCWD, file.c_str(), 0, STATX_INO | STATX_BTIME, &facts) == 0 &&
                       (facts.stx_mask & STATX_INO) != 0;
  if (!isKnown) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::weakly_canonical(file, error);
    return error ? file.string() : whole.string();
  }
  // A number is given again once its file is gone; the moment of birth is not.
  std::string identity = std::to_string(facts.stx_ino);
  if ((facts.stx_mask & STATX_BTIME) != 0)
    identity += "-" + std::to_string(facts.stx_btime.tv_sec) + "." + std::to_string(facts.stx_btime.tv_nsec);
  return identity;
}

}  // namespace inspector::device
