// What tells one file of the machine from every other one, whatever it is called.
#pragma once

#include <filesystem>
#include <string>

namespace inspector::device {

// The same for every path that leads to the file and for as long as it lives, also after it was renamed; its
// copy is another file. ASCII. Its path where the file system knows no better, and when it is not there.
std::string IdentityOf(const std::filesystem::path& file);

}  // namespace inspector::device
