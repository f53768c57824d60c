// The device's registry: keys with string and binary values, kept in one TOML file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "device/Files.h"
#include "device/Text.h"

namespace inspector::device {

// Keys are written with their hive, as in "HKEY_USERS\.Default\Software\Pellory\Inspector". Each key is a
// table of the file, each value a string in it; a binary value is a string of hexadecimal digits. Keys and
// values compare without regard to case. The file is read at every Read and rewritten whole, beside and
// renamed, at every Write, so that a person may edit it; what else it holds stays, except comments. For one
// thread.
class Registry {
public:
  Registry(Files& files, std::filesystem::path file);

  // Nothing when the value is missing or no string, or when the file cannot be understood (LastError).
  std::optional<Text> Read(const Text& key, const Text& value) const;
  std::optional<std::vector<std::uint8_t>> ReadBinary(const Text& key, const Text& value) const;

  // False when the file cannot be written, or holds something that is no TOML (which is then left alone);
  // LastError says which. Names with an apostrophe or a tab may be refused. A value that is there already is
  // not written again.
  bool Write(const Text& key, const Text& value, const Text& content);
  bool WriteBinary(const Text& key, const Text& value, const std::vector<std::uint8_t>& content);

  // Makes the key when it is missing. False when that fails, when the file is there but is no TOML, or when
  // something else than a table has the key's name. `LastError` says why.
  bool Open(const Text& key);
  // Empty when the last call went well; else names the file and what to do.
  const Text& LastError() const { return m_LastError; }
  const std::filesystem::path& Path() const { return m_File; }

private:
  bool FailNoTable(const Text& key);
  bool Store(const std::optional<std::string>& lines);

  Files& m_Files;
  std::filesystem::path m_File;
  mutable Text m_LastError;
};

}  // namespace inspector::device
