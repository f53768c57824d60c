// What tells one file of the machine from every other one, whatever it is called.
#pragma once

#include <filesystem>
#include <string>

namespace inspector::device {

// The same for every path that leads to the file and for as long as it lives, also after it was renamed; its
// copy is another file. ASCII. Its whole path where the file system does not know when a file was made, and
// when it is not there. Some cards number their files anew each time they are put in.
std::string IdentityOf(const std::filesystem::path& file);

// Whether both lead to one file or folder. Of what is not there, whether both are one name, in whatever case:
// the device finds its files by that.
bool IsSamePlace(const std::filesystem::path& one, const std::filesystem::path& other);

// Without links, "." and a slash at the end, whether it is there or not.
std::filesystem::path WholePath(const std::filesystem::path& path);

}  // namespace inspector::device
