#include "device/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <system_error>

#include "device/Text.h"

namespace inspector::device {

constexpr int kLinksFollowed = 40;  // as many as the host itself follows

std::filesystem::path WholePath(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::path named =
      path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
  const std::filesystem::path absolute = std::filesystem::absolute(named, error);
  if (error) return named;
  std::filesystem::path whole = std::filesystem::weakly_canonical(absolute, error);
  if (error) return named;
  // A link that leads nowhere: what is written to it appears where it leads.
  for (int n = 0; n < kLinksFollowed && std::filesystem::is_symlink(whole, error); ++n) {
    const std::filesystem::path next = whole.parent_path() / std::filesystem::read_symlink(whole, error);
    whole = std::filesystem::weakly_canonical(next, error);
  }
  return whole;
}

// A look that is cheap: only a link, or a path that ends in a slash or in dots, can end in another name than
// it says.
static bool MayShareName(const std::filesystem::path& one, const std::filesystem::path& other) {
  const auto saysItsName = [](const std::filesystem::path& path) {
    struct stat facts {};
    const std::filesystem::path name = path.filename();
    return !name.empty() && name != "." && name != ".." &&
           (lstat(path.c_str(), &facts) != 0 || !S_ISLNK(facts.st_mode));
  };
  return !saysItsName(one) || !saysItsName(other) ||
         EqualIgnoringCase(FromUtf8(one.filename().native()), FromUtf8(other.filename().native()));
}

bool IsSamePlace(const std::filesystem::path& one, const std::filesystem::path& other) {
  struct stat first {};
  struct stat second {};
  if (stat(one.c_str(), &first) == 0 && stat(other.c_str(), &second) == 0)
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
  return MayShareName(one, other) &&
         EqualIgnoringCase(FromUtf8(WholePath(one).native()), FromUtf8(WholePath(other).native()));
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
