// A file of the host that appears under its name only when it is whole.
#pragma once

#include <memory>
#include <vector>

#include "device/Files.h"

namespace inspector::device {

// The bytes go into a file without a name in the target's folder, so that a killed run leaves nothing behind;
// where the file system has no such files, into a hidden one beside the target. At Commit they are synced,
// get a hidden name and are renamed over the target, whose permissions (and owner, where that is allowed)
// they take over. Hidden files that a killed run left are removed when the same target is written again.
//
// A target that is a symbolic link is followed: the link stays, what it points at is replaced. Folders that
// are missing above the target are made, and removed again when nothing is committed.
class HostOutputFile : public OutputFile {
public:
  enum class Staging { Unnamed, Hidden };

  explicit HostOutputFile(const std::filesystem::path& target, Staging staging = Staging::Unnamed);
  ~HostOutputFile() override;
  HostOutputFile(const HostOutputFile&) = delete;
  HostOutputFile& operator=(const HostOutputFile&) = delete;

  // Any failure stays: what is written after it, and Commit, fail as well.
  bool Write(std::string_view bytes) override;
  bool Commit() override;
  std::string Error() const override { return m_Error; }

private:
  enum class State { Open, Failed, Committed };

  bool Fail(int error);
  bool Prepare(const std::filesystem::path& target);
  bool MakeFolders(const std::filesystem::path& folder);
  bool OpenStaging(Staging staging);
  bool OpenHidden();
  bool WriteThrough(std::string_view bytes);
  bool Flush();
  bool TakeOverPermissions();
  bool GiveHiddenName();
  bool SyncFolders();
  void Discard();

  std::filesystem::path m_Folder;
  std::string m_Name;                                // of the target, inside m_Folder
  std::string m_HiddenName;                          // empty while the file has no name
  std::vector<std::filesystem::path> m_MadeFolders;  // outermost first
  int m_FolderDescriptor = -1;
  int m_Descriptor = -1;
  std::unique_ptr<char[]> m_Buffer;
  std::size_t m_Buffered = 0;
  std::uint64_t m_Unstarted = 0;  // bytes written since the disk was last told to begin
  State m_State = State::Open;
  std::string m_Error;
};

}  // namespace inspector::device
