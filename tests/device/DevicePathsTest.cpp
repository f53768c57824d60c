#include "device/DevicePaths.h"

#include "support/TestSupport.h"

namespace inspector::device {
namespace {

namespace fs = std::filesystem;

class DevicePathsTest : public testing::Test {
protected:
  DevicePathsTest() {
    m_Folder.Put("outside.jpg");
    for (const char* name :
         {"My Documents/Inspection_Data.cdb", "My Documents/\xC3\x89tude.rtf", "Photos/Roof.jpg",
          "Photos/ROOF.JPG", "Photos/roof.JPG", "photos/only here.jpg", "C:/x.jpg", "bad \xFF.jpg"})
      m_Folder.Put(fs::path("device") / name);
    fs::create_symlink("nowhere", m_Folder / "device/Dangling");
  }

  TemporaryFolder m_Folder;
  DevicePaths m_Paths{m_Folder / "device"};
};

TEST_F(DevicePathsTest, DevicePathsLeadBelowTheRoot) {
  const std::pair<const char16_t*, const char*> kCases[] = {
      {u"\\My Documents\\Inspection_Data.cdb", "My Documents/Inspection_Data.cdb"},
      {u"/my documents\\INSPECTION_data.CDB", "My Documents/Inspection_Data.cdb"},
      {u"my documents\\\u00E9TUDE.RTF", "My Documents/\xC3\x89tude.rtf"},
      // What is missing keeps its spelling, below the folder that is found.
      {u"\\MY DOCUMENTS\\New Report.rtf", "My Documents/New Report.rtf"},
      {u"\\No Such\\Deeper\\File.txt", "No Such/Deeper/File.txt"},
      // The exact spelling wins, else the first in ascending order.
      {u"\\Photos\\roof.JPG", "Photos/roof.JPG"},
      {u"\\photos\\only here.jpg", "photos/only here.jpg"},
      {u"\\Photos\\rOOF.jpg", "Photos/ROOF.JPG"},
      {u"\\DANGLING", "Dangling"},
      {u"\\bad \uFFFD.JPG", "bad \xFF.jpg"},
      // Dots are followed, but never above the root.
      {u"\\..\\..\\outside.jpg", "outside.jpg"},
      {u"\\Photos\\..\\.\\..\\my documents\\\\inspection_data.cdb", "My Documents/Inspection_Data.cdb"},
      {u"..", ""},
      {u"", ""},
      {u"\\My Documents\\", "My Documents"},
      {u"\\Photos\\...", "Photos/..."},
      // No drives: a folder of that name.
      {u"C:\\X.JPG", "C:/x.jpg"},
      {u"D:\\x.jpg", "D:/x.jpg"},
      // A file is no folder.
      {u"\\c:\\x.jpg\\y", "C:/x.jpg/y"}};
  for (const auto& [device, host] : kCases)
    EXPECT_EQ(m_Paths.Resolve(device), *host == 0 ? m_Paths.Root() : m_Paths.Root() / host) << ToUtf8(device);
}

TEST_F(DevicePathsTest, NamesThatNoFileCanHaveDoNoHarm) {
  EXPECT_FALSE(fs::exists(m_Paths.Resolve(Text(u"\\Photos\\Roof.jpg\0.txt", 20))));
  EXPECT_EQ(m_Paths.Resolve(u"\\a\x01\nb"), m_Paths.Root() / "a\x01\nb");

  EXPECT_EQ(m_Paths.Resolve(u"\\photos\\" + Text(5000, u'x')),
            m_Paths.Root() / "photos" / std::string(5000, 'x'));
  EXPECT_EQ(m_Paths.Resolve(Text{u'\\', 0xD800}), m_Paths.Root() / "\xEF\xBF\xBD");
}

TEST_F(DevicePathsTest, APersonMayTypeHostPaths) {
  const fs::path outside = m_Folder / "outside.jpg";
  const Text typed = FromUtf8(outside.native());
  const fs::path roof = m_Paths.Root() / "Photos/Roof.jpg";
  EXPECT_EQ(m_Paths.ResolveTyped(typed), outside);
  EXPECT_EQ(m_Paths.ResolveTyped(u"/Photos/Roof.jpg"), "/Photos/Roof.jpg");
  EXPECT_EQ(m_Paths.ResolveTyped(u"\\PHOTOS\\Roof.jpg"), roof);
  EXPECT_EQ(m_Paths.ResolveTyped(u"../report.rtf"), fs::current_path() / "../report.rtf");
  EXPECT_EQ(m_Paths.ResolveTyped(u""), fs::path());
  EXPECT_EQ(m_Paths.ResolveStored(typed), outside);
  EXPECT_EQ(m_Paths.ResolveStored(u"PHOTOS/Roof.jpg"), roof);
  EXPECT_EQ(m_Paths.ResolveStored(u""), fs::path());
  EXPECT_EQ(m_Paths.ResolvePicture(typed), outside);
  EXPECT_EQ(m_Paths.ResolvePicture(u"/Photos/Roof.jpg"), roof);
  EXPECT_EQ(m_Paths.ResolvePicture(u"/usr"), m_Paths.Root() / "usr") << "a folder is no picture";
  EXPECT_EQ(m_Paths.ResolvePicture(u"Photos\\Roof.jpg"), roof);
  EXPECT_EQ(m_Paths.ResolvePicture(u"\\..\\outside.jpg"), m_Paths.Root() / "outside.jpg");
}

}  // namespace
}  // namespace inspector::device
